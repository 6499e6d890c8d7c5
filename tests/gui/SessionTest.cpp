#include <QApplication>
#include <QMenu>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextLayout>
#include <QWindow>
#include <functional>
#include <map>

#include "ControllerFixture.h"
#include "TestRows.h"

namespace {

// A session as the user plays it: typed characters, "\n" for Return, and {step} for anything
// else. A row checks what it names; nullptr leaves a field unchecked.
struct SessionRow {
    const char* name;
    const char* script;
    const char* fields;  // input field, PT result, PF result, joined by " ~ "
    const char* log;
    const char* history;  // entries, oldest first, joined by ","
};

class Session : public ControllerFixture, public testing::WithParamInterface<SessionRow> {
protected:
    void play(const QString& script) {
        const std::map<QString, std::function<void()>> steps{
            {"clear", [this] { clearInput(); }},
            {"end", [this] { ui().inputField->moveCursorToEnd(); }},
            {"esc", [this] { QTest::keyClick(window(), Qt::Key_Escape); }},
            {"pf", [this] { controller->setDisplayCalcModeTime(false); }},
            {"reset", [this] { QTest::mouseClick(ui().resetButton, Qt::LeftButton); }},
            {"clearLog", [this] { controller->clearLog(nullptr); }},
            {"clearButton", [this] { QTest::mouseClick(ui().clearButton, Qt::LeftButton); }},
            {"undoLog", [this] { QTest::keyClick(ui().calcLog, Qt::Key_Z, Qt::ControlModifier); }},
            {"note",
             [this] {
                 ui().calcLog->moveCursor(QTextCursor::Start);
                 ui().calcLog->insertPlainText("note ");
             }},
            {"mode", [this] { QTest::mouseClick(ui().modeButton, Qt::LeftButton); }},
            {"display", [this] { QTest::mouseClick(ui().displayButton, Qt::LeftButton); }},
            {"div", [this] { QTest::mouseClick(ui().divideButton, Qt::LeftButton); }},
            {"mul", [this] { QTest::mouseClick(ui().multiplyButton, Qt::LeftButton); }},
            {"sub", [this] { QTest::mouseClick(ui().subtractButton, Qt::LeftButton); }},
            {"add", [this] { QTest::mouseClick(ui().addButton, Qt::LeftButton); }},
            {"set24", [this] { ui().inputField->setPlainText("24"); }},
            {"show", [this] { QTest::mouseClick(ui().showResultButton, Qt::LeftButton); }},
            {"disk", [this] { controller->pasteDiskSpaceToLog(nullptr); }},
            {"film", [this] { controller->pasteFilmLengthToLog(nullptr); }},
            {"popupFocus", [this] { loseFocus(Qt::PopupFocusReason); }},
            {"menuFocus", [this] { loseFocus(Qt::MenuBarFocusReason); }},
            {"windowFocus", [this] { loseFocus(Qt::ActiveWindowFocusReason); }},
            {"tabFocus", [this] { loseFocus(Qt::TabFocusReason); }},
            {"mouseFocus", [this] { loseFocus(Qt::MouseFocusReason); }},
            {"history", [this] { openHistory(); }},
            {"pick1", [this] { openHistory()[1]->trigger(); }},
            {"pick2", [this] { openHistory()[2]->trigger(); }},
        };
        for (qsizetype at = 0; at < script.size();) {
            if (script[at] == '{') {
                const qsizetype close = script.indexOf('}', at);
                const QString step = script.mid(at + 1, close - at - 1);
                ASSERT_TRUE(steps.contains(step)) << step.toStdString();
                steps.at(step)();
                at = close + 1;
            } else if (script[at] == '\n') {
                pressReturn();
                ++at;
            } else {
                const qsizetype next = script.indexOf(QRegularExpression("[{\n]"), at);
                type(script.mid(at, next < 0 ? -1 : next - at));
                at = next < 0 ? script.size() : next;
            }
        }
    }

    // Through the window, as the keyboard delivers it, so the window's shortcuts apply.
    QWindow* window() {
        QApplication::setActiveWindow(controller->calcWindow());
        EXPECT_TRUE(QTest::qWaitForWindowActive(controller->calcWindow()));
        return controller->calcWindow()->windowHandle();
    }

    void loseFocus(Qt::FocusReason reason) {
        QFocusEvent focusOut(QEvent::FocusOut, reason);
        QApplication::sendEvent(ui().inputField, &focusOut);
    }

    QList<QAction*> openHistory() {
        controller->showMenu(ui().historyButton);
        ui().historyButton->menu()->hide();
        return ui().historyButton->menu()->actions();
    }
};

TEST_P(Session, ShowsLogsAndRemembers) {
    const SessionRow& row = GetParam();
    auto& calc = start();
    play(QString::fromUtf8(row.script));
    const QStringList fields{ui().inputField->text(), ui().resultField->text(),
                             ui().resultField2->text()};
    const auto check = [](const QString& actual, const char* expected) {
        if (expected) {
            EXPECT_EQ(actual, QString::fromUtf8(expected));
        }
    };
    check(fields.join(" ~ "), row.fields);
    check(log(), row.log);
    check(calc.expressionHistory().entries().join(","), row.history);
}

const char* const any = nullptr;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Scripts, Session, testing::Values(
    SessionRow{"return_logs_one_line", "01:00:00.00|25*2\n", "01:00:00.00|25*2 ~ 02:00:00.00 ~ 02:05:00.00", "01:00:00.00|25*2 = 02:00:00.00|24 (PT)\n", "01:00:00.00|25*2"},
    SessionRow{"finished_text_is_replaced", "1\n4", "4 ~ 00:00:00.04 ~ 00:00:00.04", any, any},
    SessionRow{"second_return_logs_nothing", "1+2\n\n{end}+3\n", any, "1+2 = 00:00:00.03|24 (PT)\n1+2+3 = 00:00:00.06|24 (PT)\n", "1+2,1+2+3"},
    SessionRow{"pf_logs_pf", "{pf}00:00:01.00|25\n", "00:00:01.00|25 ~ 00:00:01.00 ~ 00:00:01.01", "00:00:01.00|25 = 00:00:01.01|24 (PF)\n", any},
    SessionRow{"rejected_enters_history_only", "2\n{clear}1+\n", "1+ ~ 00:00:00.01 ~ 00:00:00.01", "2 = 00:00:00.02|24 (PT)\n", "2,1+"},
    SessionRow{"unreadable_shows_zero", "abc", "abc ~ 00:00:00.00 ~ 00:00:00.00", "", ""},
    SessionRow{"lazy_follows_keys", "48+", "48+ ~ 00:00:02.00 ~ 00:00:02.00", any, any},
    SessionRow{"operator_keys_append", "12{div}{mul}{sub}{add}", "12/*-+ ~ 00:00:00.12 ~ 00:00:00.12", any, any},
    SessionRow{"show_button_reads_again", "12{set24}{show}", "24 ~ 00:00:01.00 ~ 00:00:01.00", any, any},
    SessionRow{"reset_clears_all", "1+2\n{reset}", " ~ 00:00:00.00 ~ 00:00:00.00", "", "1+2"},
    SessionRow{"escape_keeps_log", "9{esc}1+2\n4{esc}\n", " ~ 00:00:00.00 ~ 00:00:00.00", "1+2 = 00:00:00.03|24 (PT)\n", "1+2"},
    SessionRow{"reset_undone_in_log", "1+2\n{reset}{undoLog}", any, "1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"clear_undone_in_log", "1+2\n{clearLog}{undoLog}", any, "1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"clear_button_undone", "1+2\n{clearButton}{undoLog}", any, "1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"popup_keeps_editing", "1+2\n{popupFocus}\n", any, "1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"menu_keeps_editing", "1+2\n{menuFocus}\n", any, "1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"window_keeps_editing", "1+2\n{windowFocus}\n", any, "1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"tab_ends_editing", "1+2\n{tabFocus}\n", any, "1+2 = 00:00:00.03|24 (PT)\n1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"mouse_ends_editing", "1+2\n{mouseFocus}\n", any, "1+2 = 00:00:00.03|24 (PT)\n1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"log_after_users_edits", "1\n{note}{clear}2\n", any, "note 1 = 00:00:00.01|24 (PT)\n2 = 00:00:00.02|24 (PT)\n", any},
    SessionRow{"mode_button_flips_reading", "1\n{mode}\n", any, "1 = 00:00:00.01|24 (PT)\n1 = 00:00:00.01|24 (PF)\n", any},
    SessionRow{"display_number", "{display}", " ~ 0 ~ 0", any, any},
    SessionRow{"display_disk_space", "12{display}{display}", "12 ~ 00:00:00.12 ~ 00:00:00.12", any, any},
    SessionRow{"rejected_paste_writes_nothing", "1+{film}", any, "", "1+"},
    SessionRow{"history_remembers_once", "1+2\n{clear}3\n{clear}1+2\n{pick1}", "3 ~ 00:00:00.03 ~ 00:00:00.03", any, "1+2,3"},
    SessionRow{"history_entry_into_input", "01:00:00.00|25*2\n{clear}5&6\n{pick2}", "01:00:00.00|25*2 ~ 02:00:00.00 ~ 02:05:00.00", any, any}),
    rowName<SessionRow>);
// clang-format on

using Entry = ControllerFixture;

TEST_F(Entry, ReturnOpensTheLogAndLeavesTheTextSelected) {
    auto& calc = start();
    type("1+");
    const auto formats = ui().inputField->document()->firstBlock().layout()->formats();
    ASSERT_EQ(formats.size(), 2);
    EXPECT_EQ(formats[0].format.foreground().color(), QColor(Qt::black));
    EXPECT_EQ(formats[1].start, 1);
    EXPECT_EQ(formats[1].format.foreground().color(), QColor(Qt::red));
    clearInput();
    type("1+2");
    EXPECT_FALSE(calc.isClean());
    pressReturn();
    EXPECT_TRUE(calc.logExpanded());
    EXPECT_TRUE(ui().resetButton->isEnabled());
    EXPECT_TRUE(calc.isClean());
    EXPECT_EQ(calc.lines(), 1);
    QTest::mouseClick(ui().resetButton, Qt::LeftButton);
    EXPECT_FALSE(ui().resetButton->isEnabled());
    EXPECT_EQ(calc.lines(), 0);
}

// Colour spans count characters, not UTF-8 bytes.
TEST_F(Entry, ColoursCharactersNotBytes) {
    start();
    ui().inputField->setPlainText(QStringLiteral("é12"));
    const auto formats = ui().inputField->document()->firstBlock().layout()->formats();
    ASSERT_EQ(formats.size(), 2);
    EXPECT_EQ(formats[1].start, 1);
    EXPECT_EQ(formats[1].length, 2);
}

TEST_F(Entry, FinishedExpressionIsOnDiskAtOnce) {
    start();
    type("1:0:5");
    pressReturn();
    QSettings fresh(QStringLiteral("Glessik"), QStringLiteral("Vantrel"));
    EXPECT_EQ(fresh.value("CalculatorExpressionHistory").toStringList(),
              QStringList{"01:00:05.00|24"});
}

TEST_F(Entry, HistoryMenuIsBuiltAnewAndTrimmedTo120) {
    QStringList stored;
    for (int i = 0; i < 125; ++i) stored << QString::number(i + 1);
    settings().setValue("CalculatorExpressionHistory", stored);
    auto& calc = start();
    calc.showMenu(ui().historyButton);
    QMenu* menu = ui().historyButton->menu();
    menu->hide();
    EXPECT_EQ(menu->actions().size(), 123);
    EXPECT_EQ(menu->actions()[1]->data().toString(), "125");
    EXPECT_EQ(menu->actions()[1]->font().pointSizeF(), 10.0);
    EXPECT_FALSE(menu->separatorsCollapsible());
    EXPECT_EQ(menu->actions().last()->text(), "Clear History");
    settings().sync();
    EXPECT_EQ(settings().value("CalculatorExpressionHistory").toStringList().size(), 125);
    type("999");
    pressReturn();
    settings().sync();
    EXPECT_EQ(settings().value("CalculatorExpressionHistory").toStringList().size(), 121);
    calc.clearExpressionHistory(nullptr);
    // A long press on the button opens the menu without going through showMenu().
    menu->popup(QPoint());
    menu->hide();
    EXPECT_EQ(menu->actions().size(), 3);
    EXPECT_FALSE(menu->actions().last()->isEnabled());
    // Clearing is forgotten at the next start.
    EXPECT_EQ(start().expressionHistory().entries().size(), 121);
}

}  // namespace
