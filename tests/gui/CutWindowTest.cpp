#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QMessageBox>
#include <QSortFilterProxyModel>
#include <QStringDecoder>
#include <QTableView>
#include <QTemporaryDir>

#include "ControllerFixture.h"
#include "CutWindow.h"
#include "TextDecoding.h"
#include "TimelineStrip.h"

namespace {

using namespace vantrel;
using RowKind = timeline::EventTable::RowKind;

class CutWindows : public ControllerFixture {
protected:
    static QList<CutWindow*> openWindows() {
        QList<CutWindow*> windows;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* window = qobject_cast<CutWindow*>(widget); window && window->isVisible())
                windows << window;
        }
        return windows;
    }

    CutWindow* open(const QString& file) {
        controller->openTimelineFile(QStringLiteral(QT_TESTCASE_SOURCEDIR "/golden/") + file);
        const auto windows = openWindows();
        if (windows.size() != 1) return nullptr;
        EXPECT_TRUE(QTest::qWaitForWindowExposed(windows.front()));
        return windows.front();
    }

    static std::size_t firstRowOf(const CutWindow& window, RowKind kind) {
        for (std::size_t row = 0; row < window.table().rowCount(); ++row) {
            if (window.table().kind(row) == kind) return row;
        }
        return 0;
    }

    static void selectRow(CutWindow& window, std::size_t row) {
        auto* sorted = static_cast<QSortFilterProxyModel*>(window.eventView()->model());
        window.eventView()->selectRow(
            sorted->mapFromSource(sorted->sourceModel()->index(static_cast<int>(row), 0)).row());
    }
};

// The window of a cut read at the rate its file needs: the table lists the events with the gaps
// and the overlap as rows of their own, the picture and the table share one selection, and the
// selection copies as tab-separated text.
TEST_F(CutWindows, ShowTheCutAndShareOneSelection) {
    start();
    CutWindow* window = open(QStringLiteral("cut-29d.edl"));
    ASSERT_TRUE(window);
    EXPECT_EQ(window->windowTitle(), QStringLiteral("cut-29d.edl"));
    EXPECT_EQ(window->eventView()->model()->rowCount(), 219 + 3 + 1);
    EXPECT_EQ(window->table().cut().rateCode(), DisplayState29drop);

    // A click on the fifth event's block selects its row.
    TimelineStrip* strip = window->strip();
    const std::size_t fifth = window->table().rowOfEvent(4);
    const QRect block = strip->blockRect(static_cast<int>(fifth));
    ASSERT_FALSE(block.isEmpty());
    QTest::mouseClick(strip->viewport(), Qt::LeftButton, {}, block.center());
    EXPECT_EQ(window->selectedRows(), std::vector<std::size_t>{fifth});
    QTest::keyClick(strip, Qt::Key_Right);
    EXPECT_EQ(window->selectedRows(), std::vector<std::size_t>{window->table().rowOfEvent(5)});

    // A gap chosen in the table is highlighted in the picture and copies as its row.
    const std::size_t gap = firstRowOf(*window, RowKind::Gap);
    const QRect gapBlock = strip->blockRect(static_cast<int>(gap));
    const QImage before = strip->viewport()->grab().toImage();
    selectRow(*window, gap);
    const QImage after = strip->viewport()->grab().toImage();
    EXPECT_NE(before.copy(gapBlock), after.copy(gapBlock));
    QTest::keyClick(window, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), window->table().tabSeparated({gap}));
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(QStringLiteral("gap\t\tV\t\t")));

    // Sorted by duration, the shortest first; the CSV follows the order shown.
    window->eventView()->sortByColumn(6, Qt::AscendingOrder);
    const std::vector<std::size_t> shown = window->shownRows();
    for (std::size_t i = 1; i < shown.size(); ++i) {
        ASSERT_LE(window->table().figure(shown[i - 1], timeline::EventTable::Column::Duration),
                  window->table().figure(shown[i], timeline::EventTable::Column::Duration));
    }
    QTemporaryDir folder;
    const QString csv = folder.filePath(QStringLiteral("cut.csv"));
    ASSERT_TRUE(window->writeCsv(csv));
    QFile written(csv);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll().toStdString(), window->table().commaSeparated(shown));

    // Closing it leaves the calculator as it was.
    const QString input = ui().inputField->text();
    const QString logged = log();
    QTest::keyClick(window, Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_TRUE(openWindows().isEmpty());
    EXPECT_EQ(ui().inputField->text(), input);
    EXPECT_EQ(log(), logged);
}

// Every control of the window has a name for screen readers, and Tab reaches the picture, the
// table and the buttons in the order of the window.
TEST_F(CutWindows, NameEveryControlAndTabThroughThem) {
    start();
    CutWindow* window = open(QStringLiteral("dialect-notes.edl"));
    ASSERT_TRUE(window);
    QStringList reached;
    window->strip()->setFocus();
    QWidget* widget = window->strip();
    for (int step = 0; step < 12 && !reached.contains(widget->accessibleName()); ++step) {
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->metaObject()->className();
        reached << widget->accessibleName();
        widget = widget->nextInFocusChain();
        while (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisibleTo(window)) {
            widget = widget->nextInFocusChain();
        }
    }
    EXPECT_EQ(reached.mid(0, 6),
              (QStringList{"Picture of the cut", "Events", "Track totals", "Copy the selected rows",
                           "Save the table as CSV", "Close this window"}));
}

// Opened twice, a file keeps one window; a file without events opens none and says so.
TEST_F(CutWindows, OneWindowPerFileAndNoneForAFileWithoutEvents) {
    start();
    ASSERT_TRUE(open(QStringLiteral("cut-25.edl")));
    controller->openTimelineFile(QStringLiteral(QT_TESTCASE_SOURCEDIR "/golden/cut-25.edl"));
    QCoreApplication::processEvents();
    EXPECT_EQ(openWindows().size(), 1);
    openWindows().front()->close();

    QTemporaryDir folder;
    QFile binary(folder.filePath(QStringLiteral("noise.edl")));
    ASSERT_TRUE(binary.open(QIODevice::WriteOnly));
    binary.write(
        QByteArray("\x7f"
                   "ELF\x02\x01\x01\0\0\0\0\0\0\0\0\0\x03\0>\0",
                   20));
    binary.close();
    ui().inputField->clear();
    type(QStringLiteral("1+"));
    const QString logged = log();
    controller->openTimelineFile(binary.fileName());
    auto* message = controller->calcWindow()->findChild<QMessageBox*>();
    ASSERT_TRUE(message);
    EXPECT_EQ(message->text(), QStringLiteral("noise.edl holds no events."));
    EXPECT_TRUE(message->informativeText().contains(QStringLiteral("binary data")));
    EXPECT_TRUE(openWindows().isEmpty());
    EXPECT_EQ(ui().inputField->text(), QStringLiteral("1+"));
    EXPECT_EQ(log(), logged);
    message->close();
}

// Every byte of Mac OS Roman reads as Qt's own table of it says, which follows Apple's.
TEST(MacRoman, ReadsEveryByteAsApplesTable) {
    QStringDecoder macintosh("macintosh");
    ASSERT_TRUE(macintosh.isValid());
    for (int byte = 0x80; byte <= 0xFF; ++byte) {
        // Accented letters around it and a CR line end make the file read as Mac Roman.
        const QByteArray bytes = "\x8E\x8E" + QByteArray(1, static_cast<char>(byte)) + "\r";
        const QString expected = macintosh(bytes);
        EXPECT_EQ(QString::fromStdString(timeline::decodeText(bytes.toStdString()).text), expected)
            << byte;
    }
}

}  // namespace
