#include <QApplication>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QMouseEvent>
#include <QSizeGrip>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include "ControllerFixture.h"
#include "LogFile.h"
#include "NamedImages.h"
#include "TestRows.h"

namespace {

class WindowToggle : public ControllerFixture {
protected:
    int heightAfterToggle() {
        controller->changeWindow(nullptr);
        QTest::qWait(450);
        return controller->calcWindow()->height();
    }
};

// The first toggle opens to 500 keeping the top edge; the next collapse remembers a dragged
// height, even when toggles come during the animation; a drag near either height snaps to it once
// the height has settled.
TEST_F(WindowToggle, OpensCollapsesAndRemembersTheDraggedHeight) {
    auto& calc = start();
    const int top = calc.calcWindow()->geometry().top();
    EXPECT_FALSE(ui().saveButton->isEnabled());
    EXPECT_EQ(heightAfterToggle(), 500);
    EXPECT_EQ(calc.calcWindow()->geometry().top(), top);
    EXPECT_TRUE(ui().saveButton->isEnabled() && ui().clearButton->isEnabled());
    calc.calcWindow()->resize(calc.calcWindow()->width(), 400);
    QTest::qWait(50);
    EXPECT_EQ(calc.calcWindow()->height(), 400);
    for (int toggle = 0; toggle < 3; ++toggle) {
        calc.changeWindow(nullptr);
        QTest::qWait(60);
    }
    QTest::qWait(400);
    EXPECT_EQ(calc.calcWindow()->height(), 252);
    EXPECT_EQ(calc.storedHeight(), 400.0);
    EXPECT_FALSE(ui().clearButton->isEnabled());
    EXPECT_EQ(heightAfterToggle(), 400);
    // A drag that ends from 276 to 317 snaps open to 317, one below 276 snaps shut.
    for (const auto& [dragged, snapped] : {std::pair{276, 317}, {275, 252}}) {
        calc.calcWindow()->resize(calc.calcWindow()->width(), dragged);
        QTest::qWait(vantrel::TSCController::kSettleMilliseconds + 100);
        EXPECT_EQ(calc.calcWindow()->height(), snapped);
        EXPECT_EQ(calc.logExpanded() && ui().saveButton->isEnabled(), snapped == 317);
    }
}

// A height the window manager sets in one step, or overrides during a drag, is settled as a drag
// ending there; quitting during the animation keeps the height it was going to.
TEST_F(WindowToggle, SettlesOneStepHeightsAndQuitsAtTheAnimationsEnd) {
    auto& calc = start();
    calc.calcWindow()->showMaximized();
    QTest::qWait(vantrel::TSCController::kSettleMilliseconds + 150);
    EXPECT_TRUE(calc.logExpanded() && ui().saveButton->isEnabled());
    EXPECT_EQ(ui().calcLog->focusPolicy(), Qt::StrongFocus);
    calc.calcWindow()->showNormal();
    calc.calcWindow()->resize(calc.calcWindow()->width(), 252);
    QTest::qWait(vantrel::TSCController::kSettleMilliseconds + 150);
    EXPECT_FALSE(calc.logExpanded() || ui().saveButton->isEnabled());
    EXPECT_EQ(ui().calcLog->focusPolicy(), Qt::NoFocus);
    calc.changeWindow(nullptr);
    QTest::qWait(60);
    QMetaObject::invokeMethod(qApp, "aboutToQuit", Qt::DirectConnection);
    EXPECT_EQ(start().calcWindow()->height(), 500);
}

// The drawn corner is a size grip, and a drag on it snaps as any drag of the height.
TEST_F(WindowToggle, ResizeCornerDragsAndSnaps) {
    auto& calc = start();
    auto* grip = ui().resizeImage->findChild<QSizeGrip*>();
    ASSERT_TRUE(grip);
    const QPoint centre = grip->rect().center();
    QTest::mousePress(grip, Qt::LeftButton, {}, centre);
    QMouseEvent move(QEvent::MouseMove, centre + QPoint(0, 40),
                     grip->mapToGlobal(centre + QPoint(0, 40)), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(grip, &move);
    QTest::mouseRelease(grip, Qt::LeftButton, {}, centre + QPoint(0, 40));
    QTest::qWait(vantrel::TSCController::kSettleMilliseconds + 100);
    EXPECT_EQ(calc.calcWindow()->height(), 317);
    EXPECT_TRUE(calc.logExpanded());
}

TEST_F(WindowToggle, FrameIsRestoredAtTheNextStart) {
    auto& calc = start();
    heightAfterToggle();
    calc.calcWindow()->move(40, 60);
    QTest::qWait(50);
    const QRect frame = calc.calcWindow()->geometry();
    auto& restarted = start();
    QTest::qWait(50);
    EXPECT_EQ(restarted.calcWindow()->geometry(), frame);
    EXPECT_EQ(restarted.storedHeight(), 252.0);
    EXPECT_FALSE(restarted.logExpanded());
}

QByteArray contents(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return "<missing>";
    return file.readAll();
}

struct EncodingRow {
    const char* name;
    QString text;
    QByteArray bytes;
};

class MacRomanEncoding : public testing::TestWithParam<EncodingRow> {};

TEST_P(MacRomanEncoding, WritesAppleBytes) {
    QTemporaryDir dir;
    const QString path = dir.filePath("log.txt");
    ASSERT_TRUE(vantrel::writeLogFile(path, GetParam().text));
    EXPECT_EQ(contents(path), GetParam().bytes);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(LogFile, MacRomanEncoding, testing::Values(
    EncodingRow{"infinity", QStringLiteral("1 = ∞|24 (PT)\n"), QByteArray("1 = \xB0|24 (PT)\n")},
    EncodingRow{"increment_sign", QStringLiteral("∆"), QByteArray("\xC6")},
    EncodingRow{"apple_logo", QString(QChar(0xF8FF)), QByteArray("\xF0")},
    EncodingRow{"umlaut_and_euro", QStringLiteral("ä€"), QByteArray("\x8A\xDB")},
    EncodingRow{"empty", QString(), QByteArray()}),
    rowName<EncodingRow>);
// clang-format on

class LogSaving : public ControllerFixture {
protected:
    QTemporaryDir dir;
};

// The file is the text as the user sees it, wrapped lines whole, and always of type .txt.
TEST_F(LogSaving, SavesTheLogAndRemembersThePath) {
    auto& calc = start();
    type("9999999999");
    pressReturn();
    calc.savePanelDidEnd(dir.filePath("out.csv"), 1);
    EXPECT_EQ(contents(dir.filePath("out.csv.txt")), QByteArray("9999999999 = \xB0|24 (PT)\n"));
    EXPECT_FALSE(QFile::exists(dir.filePath("out.csv")));
    settings().sync();
    EXPECT_EQ(settings().value("SaveLogFilePath").toString(), dir.filePath("out.csv.txt"));
    calc.changeWindow(nullptr);
    QTest::qWait(400);
    const QString line = QStringLiteral("00:42:17.03|24+00:18:02.11|24+00:18:02.11|24+00:18:02.11");
    ui().calcLog->setPlainText(line + QStringLiteral("\u2028x"));
    EXPECT_GT(ui().calcLog->document()->firstBlock().layout()->lineCount(), 2);
    calc.savePanelDidEnd(dir.filePath("wrapped.txt"), 1);
    EXPECT_EQ(contents(dir.filePath("wrapped.txt")), line.toLatin1() + "\nx");
}

TEST_F(LogSaving, FailuresLeaveFileAndPathAlone) {
    settings().setValue("SaveLogFilePath", "/earlier/log.txt");
    auto& calc = start();
    const QString path = dir.filePath("kept.txt");
    {
        QFile existing(path);
        ASSERT_TRUE(existing.open(QIODevice::WriteOnly));
        existing.write("old");
    }
    ui().calcLog->setPlainText(QStringLiteral("漢字"));
    calc.savePanelDidEnd(path, 1);
    EXPECT_EQ(contents(path), QByteArray("old"));
    ui().calcLog->setPlainText(QStringLiteral("fine"));
    calc.savePanelDidEnd(dir.filePath("no/such/folder/log.txt"), 1);
    calc.savePanelDidEnd(path, 0);
    EXPECT_EQ(contents(path), QByteArray("old"));
    settings().sync();
    EXPECT_EQ(settings().value("SaveLogFilePath").toString(), "/earlier/log.txt");
}

TEST_F(LogSaving, HelpOpensInAWindowOfItsOwnWithoutABrowser) {
    auto& calc = start();
    QUrl opened;
    calc.setUrlOpener([&opened](const QUrl& url) {
        opened = url;
        return false;
    });
    calc.openExpressionHelp(nullptr);
    ASSERT_TRUE(calc.helpWindow() && calc.helpWindow()->isVisible());
    EXPECT_EQ(calc.helpWindow()->source(), opened);
    EXPECT_EQ(opened.fragment(), "expressions");
    EXPECT_FALSE(calc.helpWindow()->toPlainText().contains("TC 24"));  // no loose SVG labels
    // The drawing of the window is a picture of its own size.
    const QImage figure = calc.helpWindow()
                              ->document()
                              ->resource(QTextDocument::ImageResource, QUrl("vantrel-drawing:1"))
                              .value<QImage>();
    EXPECT_EQ(figure.size() / figure.devicePixelRatio(), QSize(560, 560));
}

// The pictures drawn while building are what their SVGs draw at the sizes the window asks for: its
// own, twice that, and the icon's listed sides. Compared without premultiplied alpha, as stored.
TEST(Pictures, DrawnAheadAsTheirSvgsDraw) {
    struct Row {
        QString folder;
        QString name;
        QSize size;
    };
    for (const Row& row :
         {Row{"images", "DisplayButton29d", {44, 22}}, Row{"images", "DisplayButton29n", {88, 44}},
          Row{"images", "MiniResizeDark", {16, 16}}, Row{"icons", "com.glessik.Vantrel", {22, 22}},
          Row{"icons", "com.glessik.Vantrel", {128, 128}}}) {
        QImageReader svg(QStringLiteral(":/%1/%2.svg").arg(row.folder, row.name));
        svg.setScaledSize(row.size);
        const QIcon icon =
            row.folder == "icons" ? vantrel::applicationIcon() : vantrel::namedImage(row.name);
        EXPECT_EQ(icon.pixmap(row.size).toImage().convertToFormat(QImage::Format_ARGB32),
                  svg.read().convertToFormat(QImage::Format_ARGB32))
            << qPrintable(row.name) << " " << row.size.width();
    }
}

}  // namespace
