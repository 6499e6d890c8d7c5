// TSCController: a cut opened from the File menu or dropped on the window. It opens in a window of
// its own beside the calculator; the log keeps one line of it and the input its running time, at
// the cut's own rate, to go on calculating with.

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMainWindow>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QStringEncoder>

#include "CutReport.h"
#include "CutWindow.h"
#include "FrameRate.h"
#include "QtText.h"
#include "TSCController.h"
#include "TimelineReader.h"
#include "ui_Calculator.h"

namespace vantrel {

namespace {

// The extensions of the files a cut comes in; the content decides how each is read.
const QStringList kCutExtensions{QStringLiteral("edl"),     QStringLiteral("fcpxml"),
                                 QStringLiteral("fcpxmld"), QStringLiteral("xml"),
                                 QStringLiteral("otio"),    QStringLiteral("ale")};

// The first local file of a drop that looks like a cut, or an empty text.
QString droppedCut(const QMimeData* data) {
    if (!data || !data->hasUrls()) return {};
    for (const QUrl& url : data->urls()) {
        const QString file = url.toLocalFile();
        if (url.isLocalFile() &&
            kCutExtensions.contains(QFileInfo(file).suffix(), Qt::CaseInsensitive)) {
            return file;
        }
    }
    return {};
}

// The log is saved in Mac OS Roman, and one character outside it would keep the whole log from
// being saved: a file name's other characters are written as "?" there.
QString savableInLog(const QString& text) {
    QString savable;
    for (const QChar c : text) {
        QStringEncoder encoder("macintosh");
        (void)encoder.encode(QString(c));
        savable += encoder.hasError() || c.isSurrogate() ? QChar(u'?') : c;
    }
    return savable;
}

// Beside the calculator, on the side with more room, narrowed to that room down to a width that
// still shows the table; on a small screen it overlaps the calculator rather than leave the screen.
QRect besideCalculator(const QWidget* calculator, QSize size) {
    constexpr int kSpacing = 12;
    constexpr int kNarrowest = 560;
    const QRect frame = calculator->frameGeometry();
    const QRect screen = calculator->screen()->availableGeometry();
    const int roomRight = screen.right() - frame.right() - kSpacing;
    const int roomLeft = frame.left() - screen.left() - kSpacing;
    const bool right = roomRight >= roomLeft;
    const int room = right ? roomRight : roomLeft;
    size = size.boundedTo(screen.size() - QSize(0, 40));
    if (room >= kNarrowest) size.setWidth(std::min(size.width(), room));
    int x = right ? frame.right() + kSpacing : frame.left() - kSpacing - size.width();
    x = std::clamp(x, screen.left(), std::max(screen.left(), screen.right() - size.width()));
    const int y = std::clamp(frame.top(), screen.top(),
                             std::max(screen.top(), screen.bottom() - size.height() - 30));
    return {QPoint(x, y), size};
}

}  // namespace

void TSCController::openTimeline(QObject*) {
    auto* dialog = new QFileDialog(m_window, tr("Open Timeline"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters(
        {tr("Timelines (*.edl *.EDL *.fcpxml *.xml *.otio *.ale *.ALE)"),
         tr("Edit decision lists (*.edl *.EDL)"), tr("Final Cut Pro X (*.fcpxml)"),
         tr("Final Cut Pro 7, Premiere Pro, Resolve XML (*.xml)"), tr("OpenTimelineIO (*.otio)"),
         tr("Avid Log Exchange (*.ale *.ALE)"), tr("All files (*)")});
    connect(dialog, &QFileDialog::fileSelected, this, &TSCController::openTimelineFile);
    dialog->open();
}

void TSCController::openTimelineFile(const QString& fileName) {
    // A Final Cut Pro bundle (.fcpxmld) is a folder that holds the XML as Info.fcpxml.
    QFile file(QFileInfo(fileName).isDir() ? fileName + QStringLiteral("/Info.fcpxml") : fileName);
    const QString name = QFileInfo(fileName).fileName();
    if (!file.open(QIODevice::ReadOnly)) {
        QMessageBox::warning(m_window, tr("Open Timeline"),
                             tr("%1 cannot be read: %2.").arg(name, file.errorString()));
        return;
    }
    const QByteArray bytes = file.readAll();
    timeline::Cut cut = timeline::readTimeline(
        std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())),
        {timeline::RateOrigin::CurrentRate, m_displayFrameRateState});
    if (cut.events.empty()) return showNoEvents(name, cut);
    auto table = std::make_shared<const timeline::EventTable>(std::move(cut), timecodeNotation());
    Calc writer;
    writer.setTimecodeNotation(timecodeNotation());
    appendToLog(savableInLog(qText(timeline::summaryLine(table->cut().format, name.toStdString(),
                                                         table->cut(), table->summary(), writer))) +
                u'\n');
    m_ui->resetButton->setEnabled(true);
    // The running time at the cut's own rate, to go on calculating with.
    writer.setFps(table->cut().rateCode());
    const FrameRate& rate = *frameRateForCode(table->cut().rateCode());
    m_ui->inputField->setText(
        qText(writer.stringFromFramecount(table->summary().runningTime())) + u'|' +
        QLatin1String(rate.suffix.data(), static_cast<qsizetype>(rate.suffix.size())));
    m_ui->inputField->moveCursorToEnd();
    if (!m_logExpanded) changeWindow(this);
    showCutWindow(fileName, std::move(table));
}

void TSCController::showCutWindow(const QString& fileName,
                                  std::shared_ptr<const timeline::EventTable> table) {
    // The same file opened again replaces its window: it may have changed on disk.
    for (const QPointer<CutWindow>& open : m_cutWindows) {
        if (open && open->filePath() == fileName) open->close();
    }
    m_cutWindows.removeAll(nullptr);
    auto* window = new CutWindow(fileName, std::move(table));
    m_cutWindows.append(window);
    const QRect place = besideCalculator(m_window, window->size());
    window->resize(place.size());
    window->move(place.topLeft());
    window->show();
    window->raise();
    window->activateWindow();
}

// A file without a single event gets one message and changes nothing: no line in the log, the
// input as it was.
void TSCController::showNoEvents(const QString& name, const timeline::Cut& cut) {
    auto* message = new QMessageBox(QMessageBox::Warning, tr("Open Timeline"),
                                    tr("%1 holds no events.").arg(name), QMessageBox::Ok, m_window);
    message->setAttribute(Qt::WA_DeleteOnClose);
    // The reader's own sentence where it has one: binary data, not well-formed XML, an FCPXML
    // version it does not know, an ALE without its rate.
    const bool unreadable =
        !cut.problems.empty() && cut.problems.front().kind == timeline::ProblemKind::Unreadable;
    message->setInformativeText(unreadable ? qText(cut.problems.front().message) + u'.'
                                           : tr("No line of it reads as an event of a cut."));
    QString details;
    for (const timeline::Problem& problem : cut.problems) {
        details += qText(timeline::problemText(problem)) + u'\n';
    }
    if (!details.isEmpty()) message->setDetailedText(details);
    message->open();
}

bool TSCController::acceptTimelineDrop(QEvent* event) {
    if (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove) {
        auto* drag = static_cast<QDragMoveEvent*>(event);
        if (droppedCut(drag->mimeData()).isEmpty()) return false;
        drag->acceptProposedAction();
        return true;
    }
    if (event->type() == QEvent::Drop) {
        auto* drop = static_cast<QDropEvent*>(event);
        const QString fileName = droppedCut(drop->mimeData());
        if (fileName.isEmpty()) return false;
        drop->acceptProposedAction();
        openTimelineFile(fileName);
        return true;
    }
    return false;
}

}  // namespace vantrel
