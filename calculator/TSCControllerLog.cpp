// TSCController: the result log, its file and the help page about expressions.

#include <QApplication>
#include <QFileDialog>
#include <QMainWindow>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QUrl>

#include "HelpPage.h"
#include "HelpWindow.h"
#include "LogFile.h"
#include "LogView.h"
#include "TSCController.h"
#include "ui_Calculator.h"

namespace vantrel {

namespace {

// An entry's indented lines (the figures under "frame(s) approximate") keep their indent when
// they wrap: the wrapped part starts under the text, not under the spaces.
void hangIndent(QTextCursor& cursor, const QTextBlock& block, const QFontMetricsF& metrics) {
    const QString text = block.text();
    qsizetype spaces = 0;
    while (spaces < text.size() && text[spaces] == QLatin1Char(' ')) ++spaces;
    if (spaces == 0 || spaces == text.size()) return;
    const qreal indent = metrics.horizontalAdvance(QString(spaces, QLatin1Char(' ')));
    QTextBlockFormat format = block.blockFormat();
    format.setLeftMargin(indent);
    format.setTextIndent(-indent);
    cursor.setPosition(block.position());
    cursor.setBlockFormat(format);
}

}  // namespace

void TSCController::appendToLog(const QString& text) {
    // Always at the very end, after whatever the user typed into the log, without moving the
    // user's own cursor there.
    QTextCursor end(m_ui->calcLog->document());
    end.movePosition(QTextCursor::End);
    const int start = end.position();
    // One step for Ctrl+Z, the indents included.
    end.beginEditBlock();
    end.insertText(LogView::unbreakable(text));
    const QFontMetricsF metrics(m_ui->calcLog->font());
    for (QTextBlock block = m_ui->calcLog->document()->findBlock(start); block.isValid();
         block = block.next()) {
        hangIndent(end, block, metrics);
    }
    end.endEditBlock();
    m_ui->calcLog->verticalScrollBar()->setValue(m_ui->calcLog->verticalScrollBar()->maximum());
}

void TSCController::clearLog(QObject*) {
    emptyLog();
}

// Through a cursor rather than clear(), which would also forget the undo history: Ctrl+Z in the
// log brings back a log emptied by mistake.
void TSCController::emptyLog() {
    QTextCursor all(m_ui->calcLog->document());
    all.select(QTextCursor::Document);
    all.removeSelectedText();
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

void TSCController::savePanelDidEnd(const QString& chosenName, int returnCode) {
    if (returnCode != 1) return;
    // Blocks are separated by paragraph separators inside the document, and Shift+Return puts a
    // line separator; in the file both are the line feeds the user sees.
    QString text = LogView::withoutJoiners(m_ui->calcLog->document()->toRawText());
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    // A log file is a text file whatever the user typed: "out.csv" becomes "out.csv.txt".
    QString fileName = chosenName;
    if (!fileName.isEmpty() && !fileName.endsWith(QLatin1String(".txt"))) {
        fileName += QLatin1String(".txt");
    }
    if (fileName.isEmpty() || !writeLogFile(fileName, text)) {
        QApplication::beep();
        return;
    }
    m_preferences.setValue(QStringLiteral("SaveLogFilePath"), fileName);
}

void TSCController::openExpressionHelp(QObject*) {
    showHelp(QStringLiteral("expressions"));
}

void TSCController::showHelp(const QString& anchor) {
    const std::optional<QUrl> page = helpPageUrl(anchor);
    if (!page) {
        QApplication::beep();
        return;
    }
    if (m_openUrl(*page)) return;
    if (!m_helpWindow) m_helpWindow = new HelpWindow(m_window);
    m_helpWindow->showPage(*page);
}

void TSCController::pasteInfo(QObject*) {}

}  // namespace vantrel
