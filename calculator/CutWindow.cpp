#include "CutWindow.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QSaveFile>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTableView>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <numeric>

#include "CloseKeys.h"
#include "CutReport.h"
#include "CutTableModel.h"
#include "FrameRate.h"
#include "QtText.h"
#include "TimelineStrip.h"

namespace vantrel {

namespace {

using Column = timeline::EventTable::Column;

QString plural(std::size_t count, const QString& one, const QString& many) {
    return count == 1 ? one : many.arg(count);
}

// "3 gaps, 1 overlap" over every track.
QString seamCounts(const timeline::Summary& summary) {
    std::size_t gaps = 0;
    std::size_t overlaps = 0;
    for (const auto& track : summary.tracks) {
        for (const auto& seam : track.seams) (seam.isGap() ? gaps : overlaps)++;
    }
    return plural(gaps, CutWindow::tr("1 gap"), CutWindow::tr("%1 gaps")) + QStringLiteral(", ") +
           plural(overlaps, CutWindow::tr("1 overlap"), CutWindow::tr("%1 overlaps"));
}

}  // namespace

CutWindow::CutWindow(const QString& filePath, std::shared_ptr<const timeline::EventTable> table,
                     QWidget* parent)
    : QWidget(parent, Qt::Window), m_filePath(filePath), m_table(std::move(table)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowTitle(QFileInfo(filePath).fileName());
    makeEventView();
    makeStrip();

    auto* bottom = new QWidget;
    auto* bottomLayout = new QHBoxLayout(bottom);
    bottomLayout->setContentsMargins(0, 0, 0, 0);
    QTableView* tracks = makeTrackTable();
    bottomLayout->addWidget(tracks, 3);
    if (!m_table->cut().problems.empty()) bottomLayout->addWidget(makeProblemList(), 2);

    auto* splitter = new QSplitter(Qt::Vertical);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_strip);
    splitter->addWidget(m_eventView);
    splitter->addWidget(bottom);
    splitter->setStretchFactor(1, 1);
    // Every lane and every track's totals in view, up to a point; the events take the rest.
    const int trackRows = tracks->horizontalHeader()->sizeHint().height() +
                          tracks->verticalHeader()->length() + 2 * tracks->frameWidth();
    const int stripHeight = std::min(m_strip->sizeHint().height(), 260);
    const int bottomHeight = std::min(trackRows, 200);
    splitter->setSizes({stripHeight, 680 - stripHeight - bottomHeight, bottomHeight});

    auto* copy = new QPushButton(tr("&Copy Rows"));
    copy->setAccessibleName(tr("Copy the selected rows"));
    connect(copy, &QPushButton::clicked, this, &CutWindow::copySelectedRows);
    auto* save = new QPushButton(tr("&Save as CSV…"));
    save->setAccessibleName(tr("Save the table as CSV"));
    connect(save, &QPushButton::clicked, this, &CutWindow::saveCsv);
    auto* close = new QPushButton(tr("Close"));
    close->setAccessibleName(tr("Close this window"));
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(copy);
    buttons->addWidget(save);
    buttons->addStretch();
    buttons->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(makeHeader());
    layout->addWidget(splitter, 1);
    layout->addLayout(buttons);
    addCommands();
    setTabOrder(m_strip, m_eventView);
    resize(980, 680);
}

QWidget* CutWindow::makeHeader() {
    const timeline::Cut& cut = m_table->cut();
    const timeline::Summary& summary = m_table->summary();
    Calc writer;
    writer.setFps(cut.rateCode());
    writer.setTimecodeNotation(m_table->notation());
    auto* running = new QLabel(qText(writer.stringFromFramecount(summary.runningTime())));
    QFont big = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    big.setPointSizeF(big.pointSizeF() * 2.4);
    big.setBold(true);
    running->setFont(big);
    running->setTextInteractionFlags(Qt::TextSelectableByMouse);

    const QString rate = qText(timeline::rateName(cut.rateCode()));
    const QString code = qText(frameRateForCode(cut.rateCode())->suffix);
    // A clip list has no running time: its clips are summed.
    const QString what = cut.clipList ? tr("Total of the clips") : tr("Running time");
    running->setAccessibleName(what);
    auto* caption = new QLabel(tr("%1, %2 frames. %3 read at %4 (%5), %6.")
                                   .arg(what, qText(timeline::groupedDigits(summary.runningTime())),
                                        qText(cut.format), rate, code, qText(cut.rate.reason())));
    caption->setWordWrap(true);
    caption->setAccessibleName(tr("Rate"));
    QString counts = cut.clipList
                         ? plural(cut.events.size(), tr("1 clip"), tr("%1 clips"))
                         : plural(cut.events.size(), tr("1 event"), tr("%1 events")) + tr(" on ") +
                               plural(summary.tracks.size(), tr("1 track"), tr("%1 tracks")) +
                               QStringLiteral(", ") + seamCounts(summary);
    if (!cut.title.empty()) counts = qText(cut.title) + QStringLiteral(" · ") + counts;
    auto* countsLabel = new QLabel(counts);
    countsLabel->setAccessibleName(tr("Events and tracks"));

    auto* header = new QWidget;
    auto* layout = new QVBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 4);
    layout->setSpacing(2);
    layout->addWidget(running);
    layout->addWidget(caption);
    layout->addWidget(countsLabel);
    return header;
}

void CutWindow::makeEventView() {
    m_model = new CutTableModel(m_table, this);
    m_sorted = new QSortFilterProxyModel(this);
    m_sorted->setSourceModel(m_model);
    m_sorted->setSortRole(CutTableModel::kSortRole);
    m_eventView = new QTableView;
    m_eventView->setModel(m_sorted);
    m_eventView->setAccessibleName(tr("Events"));
    m_eventView->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_eventView->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_eventView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_eventView->setWordWrap(false);
    m_eventView->setAlternatingRowColors(true);
    m_eventView->verticalHeader()->hide();
    // Rows of one height: the view then never measures a row it does not show.
    m_eventView->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_eventView->verticalHeader()->setDefaultSectionSize(m_eventView->fontMetrics().height() + 6);
    m_eventView->horizontalHeader()->setStretchLastSection(true);
    m_eventView->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    m_eventView->setSortingEnabled(true);
    sizeColumns();
}

// Wide enough for the heading and for what the first rows hold; measuring every row of a long
// cut would cost more than the rest of opening it.
void CutWindow::sizeColumns() {
    const QFontMetrics metrics = m_eventView->fontMetrics();
    const std::size_t sample = std::min<std::size_t>(m_table->rowCount(), 400);
    for (std::size_t column = 0; column < timeline::EventTable::kColumnCount; ++column) {
        const auto c = static_cast<Column>(column);
        int width = metrics.horizontalAdvance(qText(timeline::EventTable::heading(c))) + 28;
        for (std::size_t row = 0; row < sample; ++row) {
            width = std::max(width, metrics.horizontalAdvance(qText(m_table->text(row, c))) + 16);
        }
        m_eventView->setColumnWidth(static_cast<int>(column), std::min(width, 320));
    }
}

void CutWindow::makeStrip() {
    m_strip = new TimelineStrip;
    const timeline::Summary& summary = m_table->summary();
    const std::vector<std::size_t> laneOfTrack = m_table->laneOfTrack();
    std::vector<TimelineStrip::Lane> lanes(summary.tracks.size());
    for (std::size_t t = 0; t < lanes.size(); ++t) {
        lanes[laneOfTrack[t]].name = qText(summary.tracks[t].name);
    }
    for (std::size_t row = 0; row < m_table->rowCount(); ++row) {
        const auto kind = m_table->kind(row);
        const auto blockKind =
            kind == timeline::EventTable::RowKind::Event
                ? TimelineStrip::BlockKind::Event
                : (kind == timeline::EventTable::RowKind::Gap ? TimelineStrip::BlockKind::Gap
                                                              : TimelineStrip::BlockKind::Overlap);
        lanes[laneOfTrack[m_table->trackOf(row)]].blocks.push_back(
            {m_table->recordIn(row), m_table->recordOut(row), static_cast<int>(row), blockKind});
    }
    const int code = m_table->cut().rateCode();
    auto writer = std::make_shared<Calc>();
    writer->setFps(code);
    writer->setTimecodeNotation(m_table->notation());
    TimelineStrip::Texts texts;
    texts.label = [table = m_table](int row) {
        const auto r = static_cast<std::size_t>(row);
        const std::string clip = table->text(r, Column::ClipName);
        return qText(clip.empty() ? table->text(r, Column::Reel) : clip);
    };
    texts.timecode = [writer](double frames) {
        return qText(writer->stringFromFramecount(frames));
    };
    m_strip->setLanes(std::move(lanes), summary.recordIn, summary.recordOut,
                      frameRateForCode(code)->nominal, std::move(texts));
    m_strip->setSelectionModel(
        m_eventView->selectionModel(),
        [this](int row) { return m_sorted->mapFromSource(m_model->index(row, 0)); },
        [this](const QModelIndex& index) { return m_sorted->mapToSource(index).row(); });
    // A block chosen in the picture shows its row in the table.
    connect(m_eventView->selectionModel(), &QItemSelectionModel::currentChanged, m_eventView,
            [this](const QModelIndex& current) {
                if (current.isValid()) m_eventView->scrollTo(current);
            });
}

QTableView* CutWindow::makeTrackTable() {
    const auto headings = timeline::EventTable::trackHeadings();
    const auto rows = m_table->trackRows();
    auto* tracks =
        new QTableWidget(static_cast<int>(rows.size()), static_cast<int>(headings.size()));
    tracks->setAccessibleName(tr("Track totals"));
    for (std::size_t column = 0; column < headings.size(); ++column) {
        tracks->setHorizontalHeaderItem(static_cast<int>(column),
                                        new QTableWidgetItem(qText(headings[column])));
    }
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < headings.size(); ++column) {
            auto* item = new QTableWidgetItem(qText(rows[row][column]));
            item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
            if (column > 0) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            tracks->setItem(static_cast<int>(row), static_cast<int>(column), item);
        }
    }
    tracks->verticalHeader()->hide();
    tracks->verticalHeader()->setDefaultSectionSize(tracks->fontMetrics().height() + 6);
    tracks->resizeColumnsToContents();
    return tracks;
}

QWidget* CutWindow::makeProblemList() {
    const timeline::Cut& cut = m_table->cut();
    auto* problems = new QListWidget;
    problems->setAccessibleName(tr("Problems"));
    for (const timeline::Problem& problem : cut.problems) {
        auto* item = new QListWidgetItem(qText(timeline::problemText(problem)));
        item->setToolTip(item->text());
        if (problem.kind != timeline::ProblemKind::Warning)
            item->setForeground(QColor(170, 30, 20));
        problems->addItem(item);
    }
    if (cut.problemCount > cut.problems.size()) {
        problems->addItem(tr("%1 more problems").arg(cut.problemCount - cut.problems.size()));
    }
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* title = new QLabel(tr("Problems (%1)").arg(cut.problemCount));
    title->setBuddy(problems);
    layout->addWidget(title);
    layout->addWidget(problems);
    return box;
}

void CutWindow::addCommands() {
    const auto command = [this](const QList<QKeySequence>& keys, auto slot) {
        auto* action = new QAction(this);
        action->setShortcuts(keys);
        action->setShortcutContext(Qt::WindowShortcut);
        connect(action, &QAction::triggered, this, slot);
        addAction(action);
    };
    command(QKeySequence::keyBindings(QKeySequence::Copy), &CutWindow::copySelectedRows);
    command(QKeySequence::keyBindings(QKeySequence::Save), &CutWindow::saveCsv);
    command(closeWindowKeys() << QKeySequence(Qt::Key_Escape), &QWidget::close);
}

std::size_t CutWindow::sourceRow(int shownRow) const {
    return static_cast<std::size_t>(m_sorted->mapToSource(m_sorted->index(shownRow, 0)).row());
}

std::vector<std::size_t> CutWindow::selectedRows() const {
    QModelIndexList selected = m_eventView->selectionModel()->selectedRows();
    std::sort(selected.begin(), selected.end(),
              [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
    std::vector<std::size_t> rows;
    rows.reserve(static_cast<std::size_t>(selected.size()));
    for (const QModelIndex& index : selected) rows.push_back(sourceRow(index.row()));
    return rows;
}

std::vector<std::size_t> CutWindow::shownRows() const {
    std::vector<std::size_t> rows(static_cast<std::size_t>(m_sorted->rowCount()));
    for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = sourceRow(static_cast<int>(i));
    return rows;
}

void CutWindow::copySelectedRows() {
    const std::vector<std::size_t> rows = selectedRows();
    if (rows.empty()) return;
    QApplication::clipboard()->setText(qText(m_table->tabSeparated(rows)));
}

bool CutWindow::writeCsv(const QString& fileName) const {
    const std::string csv = m_table->commaSeparated(shownRows());
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) return false;
    const auto size = static_cast<qint64>(csv.size());
    if (file.write(csv.data(), size) != size) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

void CutWindow::saveCsv() {
    auto* dialog = new QFileDialog(this, tr("Save as CSV"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("csv"));
    dialog->setNameFilter(tr("Comma-separated values (*.csv)"));
    const QFileInfo source(m_filePath);
    dialog->selectFile(source.dir().filePath(source.completeBaseName() + QStringLiteral(".csv")));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& fileName) {
        if (writeCsv(fileName)) return;
        QMessageBox::warning(this, tr("Save as CSV"),
                             tr("The table could not be written to %1.").arg(fileName));
    });
    dialog->open();
}

}  // namespace vantrel
