#include <QApplication>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextLayout>
#include <QWindow>
#include <functional>

#include "ControllerFixture.h"

namespace {

using Entry = ControllerFixture;

TEST_F(Entry, ReturnLogsOneLineAndOpensTheLog) {
    start();
    type("01:00:00.00|25*2");
    pressReturn();
    EXPECT_EQ(log(), "01:00:00.00|25*2 = 02:00:00.00|24 (PT)\n");
    EXPECT_EQ(ui().resultField->text(), "02:00:00.00");
    EXPECT_EQ(ui().resultField2->text(), "02:05:00.00");
    EXPECT_TRUE(controller->logExpanded());
    EXPECT_TRUE(ui().resetButton->isEnabled());
    // The finished text stays selected, so the next one typed replaces it.
    type("4");
    EXPECT_EQ(ui().inputField->text(), "4");
    EXPECT_EQ(ui().resultField->text(), "00:00:00.04");
}

TEST_F(Entry, SecondReturnWithoutAChangeLogsNothing) {
    start();
    type("1+2");
    pressReturn();
    pressReturn();
    EXPECT_EQ(log(), "1+2 = 00:00:00.03|24 (PT)\n");
    EXPECT_EQ(controller->lines(), 1);
    ui().inputField->moveCursorToEnd();
    type("+3");
    pressReturn();
    EXPECT_EQ(log(), "1+2 = 00:00:00.03|24 (PT)\n1+2+3 = 00:00:00.06|24 (PT)\n");
}

TEST_F(Entry, PFModeLogsThePFReading) {
    auto& calc = start();
    calc.setDisplayCalcModeTime(false);
    type("00:00:01.00|25");
    pressReturn();
    EXPECT_EQ(log(), "00:00:01.00|25 = 00:00:01.01|24 (PF)\n");
    EXPECT_EQ(ui().resultField->text(), "00:00:01.00");
}

TEST_F(Entry, RejectedExpressionStillEntersTheHistory) {
    auto& calc = start();
    type("2");
    pressReturn();
    clearInput();
    type("1+");
    pressReturn();
    EXPECT_EQ(log(), "2 = 00:00:00.02|24 (PT)\n");
    EXPECT_EQ(ui().resultField->text(), "00:00:00.01");
    EXPECT_EQ(calc.expressionHistory().entries(), (QStringList{"2", "1+"}));
    EXPECT_EQ(calc.lines(), 2);
    EXPECT_TRUE(calc.isClean());
}

TEST_F(Entry, LazyResultsFollowEveryKey) {
    start();
    type("abc");
    EXPECT_EQ(ui().resultField->text(), "00:00:00.00");
    EXPECT_EQ(ui().resultField2->text(), "00:00:00.00");
    clearInput();
    type("48+");
    EXPECT_EQ(ui().resultField->text(), "00:00:02.00");
    EXPECT_FALSE(controller->isClean());
}

TEST_F(Entry, ColoursTheMatchedPartBlackAndTheRestRed) {
    start();
    type("1+");
    const QVector<QTextLayout::FormatRange> formats =
        ui().inputField->document()->firstBlock().layout()->formats();
    ASSERT_EQ(formats.size(), 2);
    EXPECT_EQ(formats[0].start, 0);
    EXPECT_EQ(formats[0].length, 1);
    EXPECT_EQ(formats[0].format.foreground().color(), QColor(Qt::black));
    EXPECT_EQ(formats[1].start, 1);
    EXPECT_EQ(formats[1].format.foreground().color(), QColor(Qt::red));
    EXPECT_EQ(ui().inputField->text(), "1+");
}

TEST_F(Entry, ColourSpansCountCharactersNotBytes) {
    start();
    ui().inputField->setPlainText(QStringLiteral("é12"));
    const auto formats = ui().inputField->document()->firstBlock().layout()->formats();
    ASSERT_EQ(formats.size(), 2);
    EXPECT_EQ(formats[1].start, 1);
    EXPECT_EQ(formats[1].length, 2);
}

TEST_F(Entry, OperatorButtonsAppendWithoutReevaluating) {
    start();
    type("12");
    const char* expected[] = {"12", "12/", "12/*", "12/*-", "12/*-+"};
    QToolButton* keys[] = {ui().divideButton, ui().multiplyButton, ui().subtractButton,
                           ui().addButton};
    for (int tag = 1; tag <= 4; ++tag) {
        QTest::mouseClick(keys[tag - 1], Qt::LeftButton);
        EXPECT_EQ(ui().inputField->text(), expected[tag]);
        EXPECT_EQ(ui().inputField->textCursor().position(), ui().inputField->text().size());
    }
    EXPECT_EQ(ui().resultField->text(), "00:00:00.12");
}

TEST_F(Entry, TagZeroButtonShowsTheLazyResults) {
    auto& calc = start();
    type("12");
    ui().inputField->setPlainText("24");
    QTest::mouseClick(ui().showResultButton, Qt::LeftButton);
    EXPECT_EQ(ui().resultField->text(), "00:00:01.00");
    EXPECT_FALSE(calc.isClean());
}

TEST_F(Entry, ResetClearsInputResultsAndLog) {
    auto& calc = start();
    type("1+2");
    pressReturn();
    QTest::mouseClick(ui().resetButton, Qt::LeftButton);
    EXPECT_EQ(log(), "");
    EXPECT_EQ(ui().inputField->text(), "");
    EXPECT_EQ(ui().resultField->text(), "00:00:00.00");
    EXPECT_EQ(ui().resultField2->text(), "00:00:00.00");
    EXPECT_FALSE(ui().resetButton->isEnabled());
    EXPECT_TRUE(calc.isClean());
    EXPECT_EQ(calc.lines(), 0);
}

TEST_F(Entry, EscapeClearsTheEntryAndKeepsTheLog) {
    auto& calc = start();
    QApplication::setActiveWindow(calc.calcWindow());
    ASSERT_TRUE(QTest::qWaitForWindowActive(calc.calcWindow()));
    type("9");
    QTest::keyClick(calc.calcWindow()->windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(ui().resetButton->isEnabled());  // nothing left to reset
    type("1+2");
    pressReturn();
    type("4");
    // Through the window, as the keyboard delivers it, so the window's shortcuts apply.
    QTest::keyClick(calc.calcWindow()->windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(ui().inputField->text(), "");
    EXPECT_EQ(ui().resultField->text(), "00:00:00.00");
    pressReturn();
    EXPECT_EQ(log(), "1+2 = 00:00:00.03|24 (PT)\n");
    EXPECT_EQ(calc.expressionHistory().entries(), QStringList{"1+2"});
    EXPECT_TRUE(ui().resetButton->isEnabled());
}

// However the log was emptied, Ctrl+Z in the log brings it back.
class LogEmptying
    : public ControllerFixture,
      public testing::WithParamInterface<std::function<void(vantrel::TSCController&)>> {};

TEST_P(LogEmptying, IsUndoneInTheLog) {
    auto& calc = start();
    type("1+2");
    pressReturn();
    GetParam()(calc);
    ASSERT_EQ(log(), "");
    QTest::keyClick(ui().calcLog, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(log(), "1+2 = 00:00:00.03|24 (PT)\n");
}

INSTANTIATE_TEST_SUITE_P(Ways, LogEmptying,
                         testing::Values([](vantrel::TSCController& calc) { calc.reset(nullptr); },
                                         [](vantrel::TSCController& calc) {
                                             calc.clearLog(nullptr);
                                         },
                                         [](vantrel::TSCController& calc) {
                                             QTest::mouseClick(calc.ui().clearButton,
                                                               Qt::LeftButton);
                                         }));

// Only handing the keyboard to another control ends the editing; a menu, a pop-up or another
// window does not, so Return after it does not log the same expression again.
class FocusLoss : public ControllerFixture, public testing::WithParamInterface<Qt::FocusReason> {};

TEST_P(FocusLoss, EndsEditingOnlyWhenTheKeyboardMovesOn) {
    start();
    type("1+2");
    pressReturn();
    QFocusEvent focusOut(QEvent::FocusOut, GetParam());
    QApplication::sendEvent(ui().inputField, &focusOut);
    pressReturn();
    const bool ended = GetParam() == Qt::TabFocusReason || GetParam() == Qt::MouseFocusReason;
    EXPECT_EQ(controller->lines(), ended ? 2 : 1);
}

INSTANTIATE_TEST_SUITE_P(Reasons, FocusLoss,
                         testing::Values(Qt::PopupFocusReason, Qt::MenuBarFocusReason,
                                         Qt::ActiveWindowFocusReason, Qt::TabFocusReason,
                                         Qt::MouseFocusReason));

TEST_F(Entry, LogLinesGoAfterTheUsersOwnEdits) {
    start();
    type("1");
    pressReturn();
    ui().calcLog->moveCursor(QTextCursor::Start);
    ui().calcLog->insertPlainText("note ");
    clearInput();
    type("2");
    pressReturn();
    EXPECT_EQ(log(), "note 1 = 00:00:00.01|24 (PT)\n2 = 00:00:00.02|24 (PT)\n");
}

TEST_F(Entry, FinishedExpressionIsOnDiskAtOnce) {
    start();
    type("1:0:5");
    pressReturn();
    QSettings fresh(QStringLiteral("Glessik"), QStringLiteral("Vantrel"));
    EXPECT_EQ(fresh.value("CalculatorExpressionHistory").toStringList(),
              QStringList{"01:00:05.00|24"});
}

}  // namespace
