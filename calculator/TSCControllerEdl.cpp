// TSCController: an edit decision list opened from the File menu or dropped on the window. Its
// report goes into the log as ordinary lines, and its running time into the input field, where
// the user can go on calculating with it.

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMimeData>

#include "Edl.h"
#include "FrameRate.h"
#include "TSCController.h"
#include "ui_Calculator.h"

namespace vantrel {

namespace {

// The first local file of a drop that looks like an EDL, or an empty text.
QString droppedEdl(const QMimeData* data) {
    if (!data || !data->hasUrls()) return {};
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile() &&
            url.toLocalFile().endsWith(QLatin1String(".edl"), Qt::CaseInsensitive)) {
            return url.toLocalFile();
        }
    }
    return {};
}

QString joined(const std::vector<std::string>& fields) {
    QStringList parts;
    for (const std::string& field : fields) parts << QString::fromStdString(field);
    return parts.join(QStringLiteral("  "));
}

}  // namespace

void TSCController::openEdl(QObject*) {
    auto* dialog = new QFileDialog(m_window, tr("Open EDL"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters({tr("Edit decision lists (*.edl *.EDL)"), tr("All files (*)")});
    connect(dialog, &QFileDialog::fileSelected, this, &TSCController::readEdlFile);
    dialog->open();
}

void TSCController::readEdlFile(const QString& fileName) {
    QFile file(fileName);
    const QString name = QFileInfo(fileName).fileName();
    if (!file.open(QIODevice::ReadOnly)) {
        appendToLog(tr("EDL %1 cannot be read: %2\n").arg(name, file.errorString()));
        QApplication::beep();
        return;
    }
    const QByteArray bytes = file.readAll();
    const edl::Cut cut =
        edl::read(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())),
                  m_displayFrameRateState);
    const FrameRate& rate = *frameRateForCode(cut.rateCode);
    const QString suffix =
        QString::fromLatin1(rate.suffix.data(), static_cast<qsizetype>(rate.suffix.size()));
    const QString events =
        cut.events.size() == 1 ? tr("1 event") : tr("%1 events").arg(cut.events.size());
    QString report =
        tr("EDL %1%2: %3 at %4\n")
            .arg(name,
                 cut.title.empty() ? QString()
                                   : QStringLiteral(", ") + QString::fromStdString(cut.title),
                 events, suffix);
    for (const edl::Problem& problem : cut.problems) {
        report += QStringLiteral("  ") + QString::fromStdString(edl::problemText(problem)) + u'\n';
    }
    if (cut.problemCount > cut.problems.size()) {
        report +=
            tr("  %1 more lines could not be read\n").arg(cut.problemCount - cut.problems.size());
    }
    if (cut.events.empty()) {
        appendToLog(report);
        QApplication::beep();
        return;
    }
    Calc writer;
    writer.setTimecodeNotation(timecodeNotation());
    const edl::Summary summary = edl::summarise(cut);
    for (const auto& row : edl::reportRows(cut, summary, writer)) report += joined(row) + u'\n';
    appendToLog(report);
    m_ui->resetButton->setEnabled(true);
    // The running time at the cut's own rate, to go on calculating with.
    m_ui->inputField->setText(
        QString::fromStdString(writer.stringFromFramecount(summary.runningTime())) + u'|' + suffix);
    m_ui->inputField->moveCursorToEnd();
    if (!m_logExpanded) changeWindow(this);
}

bool TSCController::acceptEdlDrop(QEvent* event) {
    if (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove) {
        auto* drag = static_cast<QDragMoveEvent*>(event);
        if (droppedEdl(drag->mimeData()).isEmpty()) return false;
        drag->acceptProposedAction();
        return true;
    }
    if (event->type() == QEvent::Drop) {
        auto* drop = static_cast<QDropEvent*>(event);
        const QString fileName = droppedEdl(drop->mimeData());
        if (fileName.isEmpty()) return false;
        drop->acceptProposedAction();
        readEdlFile(fileName);
        return true;
    }
    return false;
}

}  // namespace vantrel
