// TSCController: the result log, its file and the help page about expressions.

#include <QApplication>
#include <QFileDialog>
#include <QMainWindow>
#include <QUrl>

#include "HelpPage.h"
#include "LogFile.h"
#include "TSCController.h"
#include "ui_Calculator.h"

namespace vantrel {

void TSCController::clearLog(QObject*) {
    m_ui->calcLog->clear();
}

void TSCController::saveLogFile(QObject*) {
    auto* dialog = new QFileDialog(m_window, tr("Save Log"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilter(tr("Text files (*.txt)"));
    dialog->setDefaultSuffix(QStringLiteral("txt"));
    if (const auto lastPath = m_preferences.string(QStringLiteral("SaveLogFilePath"))) {
        dialog->selectFile(*lastPath);
    }
    connect(dialog, &QFileDialog::finished, this, [this, dialog](int result) {
        const QStringList files = dialog->selectedFiles();
        savePanelDidEnd(files.value(0), result == QDialog::Accepted ? 1 : 0);
    });
    dialog->open();
}

void TSCController::savePanelDidEnd(const QString& fileName, int returnCode) {
    if (returnCode != 1) return;
    // Blocks are separated by paragraph separators inside the document; the file has line feeds.
    QString text = m_ui->calcLog->document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    if (fileName.isEmpty() || !writeLogFile(fileName, text)) {
        QApplication::beep();
        return;
    }
    m_preferences.setValue(QStringLiteral("SaveLogFilePath"), fileName);
}

void TSCController::openExpressionHelp(QObject*) {
    const std::optional<QUrl> page = helpPageUrl(QStringLiteral("expressions"));
    if (!page || !m_openUrl(*page)) QApplication::beep();
}

void TSCController::pasteInfo(QObject*) {}

}  // namespace vantrel
