#include <QFile>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextLayout>

#include "ControllerFixture.h"
#include "LogFile.h"
#include "TestRows.h"

namespace {

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

INSTANTIATE_TEST_SUITE_P(
    LogFile, MacRomanEncoding,
    testing::Values(EncodingRow{"infinity", QStringLiteral("1 = ∞|24 (PT)\n"),
                                QByteArray("1 = \xB0|24 (PT)\n")},
                    EncodingRow{"increment_sign", QStringLiteral("∆"), QByteArray("\xC6")},
                    EncodingRow{"apple_logo", QString(QChar(0xF8FF)), QByteArray("\xF0")},
                    EncodingRow{"umlaut_and_euro", QStringLiteral("ä€"), QByteArray("\x8A\xDB")},
                    EncodingRow{"empty", QString(), QByteArray()}),
    rowName<EncodingRow>);

class LogSaving : public ControllerFixture {
protected:
    QTemporaryDir dir;
};

TEST_F(LogSaving, SavesTheLogAndRemembersThePath) {
    auto& calc = start();
    type("9999999999");
    pressReturn();
    const QString path = dir.filePath("session.txt");
    calc.savePanelDidEnd(path, 1);
    EXPECT_EQ(contents(path), QByteArray("9999999999 = \xB0|24 (PT)\n"));
    settings().sync();
    EXPECT_EQ(settings().value("SaveLogFilePath").toString(), path);
}

TEST_F(LogSaving, LineBreaksAndTheTextTypeAsTheUserSeesThem) {
    auto& calc = start();
    ui().calcLog->setPlainText(QStringLiteral("a\u2028b"));
    calc.savePanelDidEnd(dir.filePath("out.csv"), 1);
    EXPECT_EQ(contents(dir.filePath("out.csv.txt")), QByteArray("a\nb"));
    EXPECT_FALSE(QFile::exists(dir.filePath("out.csv")));
}

TEST_F(LogSaving, LongLinesWrapOnScreenOnly) {
    auto& calc = start();
    calc.changeWindow(nullptr);
    QTest::qWait(400);
    const QString line =
        QStringLiteral("00:42:17.03|24+00:18:02.11|24+00:18:02.11|24+00:18:02.11|24");
    ui().calcLog->setPlainText(line);
    EXPECT_GT(ui().calcLog->document()->firstBlock().layout()->lineCount(), 1);
    const QString path = dir.filePath("wrapped.txt");
    calc.savePanelDidEnd(path, 1);
    EXPECT_EQ(contents(path), line.toLatin1());
}

TEST_F(LogSaving, EmptyLogGivesAnEmptyFile) {
    auto& calc = start();
    const QString path = dir.filePath("empty.txt");
    calc.savePanelDidEnd(path, 1);
    EXPECT_EQ(contents(path), QByteArray());
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

TEST_F(LogSaving, ClearingKeepsTheLogCollapsed) {
    auto& calc = start();
    calc.clearLog(nullptr);
    EXPECT_EQ(log(), "");
    EXPECT_FALSE(calc.logExpanded());
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
}

}  // namespace
