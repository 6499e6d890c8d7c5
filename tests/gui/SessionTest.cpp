#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QMenu>
#include <QMetaEnum>
#include <QMimeData>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>
#include <functional>
#include <map>

#include "ControllerFixture.h"
#include "TestRows.h"
#include "Units.h"

namespace {

using namespace vantrel;

// A session as the user plays it: typed characters, "\n" for Return, and {step} for anything
// else. A row checks what it names; nullptr leaves it unchecked.
struct SessionRow {
    const char* name;
    const char* script;
    const char* fields;  // input field, PT result, PF result, joined by " ~ "
    const char* log;
    const char* history;          // entries, oldest first, joined by ","
    const char* state = nullptr;  // which of "log reset clean pt" hold
};

class Session : public ControllerFixture, public testing::WithParamInterface<SessionRow> {
protected:
    // Steps: {click BUTTON} by object name, {focus REASON} for the input field losing the focus
    // (Popup, Tab, ...), {pick N} for the history menu's item N, {display N} and {rate N} for the
    // menu item tagged N, {gauge N} for gauge row N, {sampleRate HZ}, {open FILE} and {drop FILE}
    // for an EDL of the golden files opened from the menu or dropped on the log, and the named
    // ones below.
    void step(const QString& name) {
        const QString argument = name.section(' ', 1);
        const auto tag = [](int value) {
            static QAction item;
            item.setProperty("tag", value);
            return &item;
        };
        if (name.startsWith("click ")) {
            auto* button = controller->calcWindow()->findChild<QAbstractButton*>(argument);
            ASSERT_TRUE(button) << argument.toStdString();
            QTest::mouseClick(button, Qt::LeftButton);
        } else if (name.startsWith("focus ")) {
            const QByteArray reason = argument.toLatin1() + "FocusReason";
            QFocusEvent focusOut(QEvent::FocusOut,
                                 static_cast<Qt::FocusReason>(
                                     QMetaEnum::fromType<Qt::FocusReason>().keyToValue(reason)));
            QApplication::sendEvent(ui().inputField, &focusOut);
        } else if (name.startsWith("display ")) {
            controller->changeDisplayMode(tag(argument.toInt()));
        } else if (name.startsWith("rate ")) {
            controller->changeDisplayFrameRate(tag(argument.toInt()));
        } else if (name.startsWith("gauge ")) {
            controller->setFeetGauge(units::kGauges.at(argument.toUInt()));
        } else if (name.startsWith("sampleRate ")) {
            controller->setSampleRate(argument.toInt());
        } else if (name.startsWith("keys ")) {
            // {keys WIDGET TEXT}: TEXT typed while WIDGET has the focus, "~" standing for Return.
            auto* widget =
                controller->calcWindow()->findChild<QWidget*>(argument.section(' ', 0, 0));
            ASSERT_TRUE(widget) << argument.toStdString();
            for (const QChar c : argument.section(' ', 1)) {
                widget->setFocus();
                if (c == '~')
                    QTest::keyClick(widget, Qt::Key_Return);
                else
                    QTest::keyClicks(widget, QString(c));
            }
        } else if (name == "longSum") {
            ui().inputField->setText(QStringLiteral("1") + QStringLiteral("+1").repeated(1000));
        } else if (name == "historyFits") {
            // The history menu stays narrower than a window; its items show the whole entry
            // in their tooltip.
            controller->showMenu(ui().historyButton);
            QMenu* menu = ui().historyButton->menu();
            menu->hide();
            EXPECT_LT(menu->sizeHint().width(), 600);
            type(menu->actions()[1]->toolTip().size() == 2001 ? "ok" : "truncated");
        } else if (name == "hangs") {
            // A wrapped line of an indented log entry starts under the text, not the spaces.
            QTextDocument* log = ui().calcLog->document();
            log->documentLayout()->documentSize();
            QString verdict = QStringLiteral("nowrap");
            for (QTextBlock block = log->begin(); block.isValid(); block = block.next()) {
                const QTextLayout* layout = block.layout();
                if (!block.text().startsWith(' ') || layout->lineCount() < 2) continue;
                const int spaces =
                    static_cast<int>(block.text().indexOf(QRegularExpression("\\S")));
                verdict = qFuzzyCompare(layout->lineAt(1).x(), layout->lineAt(0).cursorToX(spaces))
                              ? QStringLiteral("hangs")
                              : QStringLiteral("flush");
            }
            type(verdict);
        } else if (name.startsWith("open ")) {
            controller->openTimelineFile(QStringLiteral(QT_TESTCASE_SOURCEDIR "/golden/") +
                                         argument);
        } else if (name.startsWith("drop ")) {
            QMimeData data;
            data.setUrls(
                {QUrl::fromLocalFile(QStringLiteral(QT_TESTCASE_SOURCEDIR "/golden/") + argument)});
            QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton,
                                  Qt::NoModifier);
            QApplication::sendEvent(ui().calcLog->viewport(), &enter);
            QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(ui().calcLog->viewport(), &drop);
        } else if (name.startsWith("pick ")) {
            controller->showMenu(ui().historyButton);
            ui().historyButton->menu()->hide();
            ui().historyButton->menu()->actions()[argument.toInt()]->trigger();
        } else if (name.startsWith("esc")) {
            // Through the window, as the keyboard delivers it;
            // {esc POPUP} presses it on that pop-up's open list.
            QApplication::setActiveWindow(controller->calcWindow());
            ASSERT_TRUE(QTest::qWaitForWindowActive(controller->calcWindow()));
            QWindow* target = controller->calcWindow()->windowHandle();
            if (!argument.isEmpty()) {
                auto* popUp = controller->calcWindow()->findChild<QComboBox*>(argument);
                popUp->showPopup();
                target = popUp->view()->window()->windowHandle();
                ASSERT_TRUE(QTest::qWaitForWindowExposed(target));
            }
            QTest::keyClick(target, Qt::Key_Escape);
        } else if (name == "note") {
            ui().calcLog->moveCursor(QTextCursor::Start);
            ui().calcLog->insertPlainText("note ");
        } else {
            const std::map<QString, std::function<void()>> steps{
                {"clear",
                 [this] {
                     ui().inputField->selectAll();
                     QTest::keyClick(ui().inputField, Qt::Key_Delete);
                 }},
                {"end", [this] { ui().inputField->moveCursorToEnd(); }},
                {"pf", [&] { controller->toggleCalcMode(tag(0)); }},
                {"smpte", [&] { controller->changeTimecodeNotation(tag(1)); }},
                {"classic", [&] { controller->changeTimecodeNotation(tag(0)); }},
                {"exact", [this] { controller->setExactRates(true); }},
                {"undoLog",
                 [this] { QTest::keyClick(ui().calcLog, Qt::Key_Z, Qt::ControlModifier); }},
                {"2K10bit",
                 [this] {
                     controller->setResolutionIndex(4);
                     controller->setBitDepthIndex(1);
                 }},
                {"ntsc", [this] { controller->setResolutionIndex(1); }},
                {"palYuv8Modem",
                 [this] {
                     controller->setResolutionIndex(0);
                     controller->setBitDepthIndex(6);
                     controller->setTransferSpeedIndex(0);
                 }},
                {"35mm4perf", [this] { ui().filmPopUpButton->setCurrentIndex(4); }},
                {"feet", [this] { ui().systemPopUpButton->setCurrentIndex(1); }},
                {"disk", [this] { controller->pasteDiskSpaceToLog(nullptr); }},
                {"film", [this] { controller->pasteFilmLengthToLog(nullptr); }}};
            ASSERT_TRUE(steps.contains(name)) << name.toStdString();
            steps.at(name)();
        }
    }

    void play(const QString& script) {
        for (qsizetype at = 0; at < script.size();) {
            const qsizetype next = script.indexOf(QRegularExpression("[{\n]"), at);
            if (next != at) {
                type(script.mid(at, next < 0 ? -1 : next - at));
                at = next < 0 ? script.size() : next;
            } else if (script[at] == '\n') {
                pressReturn();
                ++at;
            } else {
                const qsizetype close = script.indexOf('}', at);
                step(script.mid(at + 1, close - at - 1));
                at = close + 1;
            }
        }
    }

    QString state() {
        QStringList held;
        if (controller->logExpanded()) held << "log";
        if (ui().resetButton->isEnabled()) held << "reset";
        if (controller->isClean()) held << "clean";
        if (controller->displayCalcModeTime()) held << "pt";
        return held.join(' ');
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
    check(state(), row.state);
}

const char* const any = nullptr;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Scripts, Session, testing::Values(
    SessionRow{"typing_is_read_lazily", "1+", "1+ ~ 00:00:00.01 ~ 00:00:00.01", "", "", "reset pt"},
    SessionRow{"return_logs_one_line", "01:00:00.00|25*2\n", "01:00:00.00|25*2 ~ 02:00:00.00 ~ 02:05:00.00", "01:00:00.00|25*2 = 02:00:00.00|24 (PT)\n", "01:00:00.00|25*2", "log reset clean pt"},
    SessionRow{"finished_text_is_replaced", "1\n4", "4 ~ 00:00:00.04 ~ 00:00:00.04", any, any, "log reset pt"},
    SessionRow{"second_return_logs_nothing", "1+2\n\n{end}+3\n", any, "1+2 = 00:00:00.03|24 (PT)\n1+2+3 = 00:00:00.06|24 (PT)\n", "1+2,1+2+3"},
    SessionRow{"pf_logs_pf", "{pf}00:00:01.00|25\n", "00:00:01.00|25 ~ 00:00:01.00 ~ 00:00:01.01", "00:00:01.00|25 = 00:00:01.01|24 (PF)\n", any, "log reset clean"},
    SessionRow{"rejected_enters_history_only", "2\n{clear}1+\n", "1+ ~ 00:00:00.01 ~ 00:00:00.01", "2 = 00:00:00.02|24 (PT)\n", "2,1+", "log reset clean pt"},
    SessionRow{"operator_keys_append", "12{click divideButton}{click multiplyButton}{click subtractButton}{click addButton}", "12/*-+ ~ 00:00:00.12 ~ 00:00:00.12", any, any},
    SessionRow{"show_button_reads_again", "12\n{click showResultButton}", "12 ~ 00:00:00.12 ~ 00:00:00.12", any, any, "log reset pt"},
    SessionRow{"reset_clears_all", "1+2\n{click resetButton}", " ~ 00:00:00.00 ~ 00:00:00.00", "", "1+2", "log clean pt"},
    SessionRow{"escape_on_empty_log", "9{esc}", " ~ 00:00:00.00 ~ 00:00:00.00", "", "", "clean pt"},
    SessionRow{"escape_closing_a_popup_list", "1+2{esc fpsPopUp}", "1+2 ~ 00:00:00.03 ~ 00:00:00.03", any, any},
    SessionRow{"escape_keeps_log", "1+2\n4{esc}\n", " ~ 00:00:00.00 ~ 00:00:00.00", "1+2 = 00:00:00.03|24 (PT)\n", "1+2", "log reset clean pt"},
    SessionRow{"reset_undone_in_log", "1+2\n{click resetButton}{undoLog}", any, "1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"clear_button_undone", "1+2\n{click clearButton}{undoLog}", any, "1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"popup_keeps_editing", "1+2\n{focus Popup}\n", any, "1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"menu_bar_keeps_editing", "1+2\n{focus MenuBar}\n", any, "1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"other_window_keeps_editing", "1+2\n{focus ActiveWindow}\n", any, "1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"tab_ends_editing", "1+2\n{focus Tab}\n", any, "1+2 = 00:00:00.03|24 (PT)\n1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"log_after_users_edits", "1\n{note}{clear}2\n", any, "note 1 = 00:00:00.01|24 (PT)\n2 = 00:00:00.02|24 (PT)\n", any},
    SessionRow{"mode_button_flips_reading", "1\n{click modeButton}\n", any, "1 = 00:00:00.01|24 (PT)\n1 = 00:00:00.01|24 (PF)\n", any, "log reset clean"},
    SessionRow{"display_number", "{click displayButton}", " ~ 0 ~ 0", any, any},
    SessionRow{"display_change_unsettles", "1\n{click displayButton}", any, any, any, "log reset pt"},
    SessionRow{"feet_logs_feet", "{rate 5}{display 2}01:00:00:00\n", "01:00:00:00 ~ 5400+00 ~ 5400+00", "01:00:00.00|23n = 5400+00ft|23n 35mm-4perf (PT)\n", any},
    SessionRow{"feet_at_3perf", "{display 2}{gauge 1}1828", "1828 ~ 85+14.1 ~ 85+14.1", any, any},
    SessionRow{"samples_at_44k", "{rate 4}{display 3}{sampleRate 44100}5\n", "5 ~ 7357 ~ 7357", "5 = 7357smp|29d 44.1kHz (PT)\n", any},
    SessionRow{"rational_logs_its_s", "{rate 5}{display 5}1\n", "1 ~ 1001/24000s ~ 1001/24000s", "1 = 1001/24000s|23n (PT)\n", any},
    SessionRow{"ticks_log_tk", "{display 6}01:00:00:00+1/48s\n", "01:00:00:00+1/48s ~ 914468184000000 ~ 914468184000000", "01:00:00.00|24+1/48s = 914468184000000tk|24 (PT)\n", any},
    SessionRow{"real_time_placeholder", "{display 4}1+", "1+ ~ 00:00:00.042 ~ 00:00:00.042", any, any},
    SessionRow{"real_time_empty", "{rate 19}{display 4}", " ~ 00:00:00.000 ~ 00:00:00.000", any, any},
    SessionRow{"unit_display_button_goes_to_disk", "{display 3}{click displayButton}", " ~ 00:00:00.00 ~ 00:00:00.00", any, any},
    SessionRow{"exact_rates_pt", "{exact}{display 1}01:00:00.00|23n", "01:00:00.00|23n ~ 86486 ~ 86400", any, any},
    SessionRow{"long_history_entry_fits", "{longSum}\n{clear}{historyFits}", "ok ~ 00:00:00.00 ~ 00:00:00.00", any, any},
    SessionRow{"typing_on_buttons_reaches_the_input", "1{keys addButton +2~}", "1+2 ~ 00:00:00.03 ~ 00:00:00.03", "1+2 = 00:00:00.03|24 (PT)\n", any, "log reset clean pt"},
    SessionRow{"typing_on_the_rate_popup", "1{keys fpsPopUp +2~}", "1+2 ~ 00:00:00.03 ~ 00:00:00.03", "1+2 = 00:00:00.03|24 (PT)\n", any},
    SessionRow{"tab_leaves_the_log", "1\n{keys calcLog \t}", any, "1 = 00:00:00.01|24 (PT)\n", any},
    SessionRow{"typing_on_a_result_field", "1\n{keys resultField2 *3}", "1*3 ~ 00:00:00.03 ~ 00:00:00.03", any, any},
    SessionRow{"edl_summary_line_and_running_time", "{rate 6}{open demo-cut-29d.edl}", "00:00:22.16|29d ~ 00:00:22.16 ~ 00:00:22.16", "EDL demo-cut-29d.edl: 5 events at 29d, running time 00:00:22.16 (676 frames)\n", "", "log reset pt"},
    SessionRow{"edl_at_25_reads_its_drop_frame", "{rate 1}{open cut-29d.edl}", "00:14:17.16|29d ~ 00:14:17.13 ~ 00:17:08.00", "EDL cut-29d.edl: 219 events at 29d, running time 00:14:17.16 (25,700 frames)\n", "", "log reset pt"},
    SessionRow{"edl_dropped_on_the_log", "{rate 1}1\n{drop cut-25.edl}", "00:05:09.20|25 ~ 00:05:09.20 ~ 00:05:09.20", any, any},
    SessionRow{"ale_total_of_its_clips", "{rate 5}{open timeline-ale-2398.ale}", "00:01:43.23|23n ~ 00:01:43.23 ~ 00:01:43.23", "ALE timeline-ale-2398.ale: 10 clips at 23n, total 00:01:43.23 (2,495 frames)\n", "", "log reset pt"},
    SessionRow{"fcpxml_states_its_rate", "{rate 1}{open timeline-fcpxml-25.fcpxml}", "00:00:56.15|25 ~ 00:00:56.15 ~ 00:00:56.15", "FCPXML timeline-fcpxml-25.fcpxml: 12 events at 25, running time 00:00:56.15 (1,415 frames)\n", "", "log reset pt"},
    SessionRow{"not_an_edl_keeps_the_input_and_the_log", "1+{open edl-29d.in}", "1+ ~ 00:00:00.01 ~ 00:00:00.01", "", any},
    SessionRow{"smpte_in_and_out", "{smpte}01:00:00:00*2\n", "01:00:00:00*2 ~ 02:00:00:00 ~ 02:00:00:00", "01:00:00:00|24*2 = 02:00:00:00|24 (PT)\n", any},
    SessionRow{"classic_redisplays", "{smpte}01:00:00:00*2\n{classic}", "01:00:00:00*2 ~ 02:00:00.00 ~ 02:00:00.00", any, any},
    SessionRow{"side_calculators_paste", "{2K10bit}{35mm4perf}1500{disk}{film}", any, "1500 frame(s) approximate\n     14.6 GB as RGB 10 bit, 2K, 1.85:1\n     24.3 min over 100 MBit Ethernet (~10 MByte/sec)\n1500 frame(s) approximate\n     28.85 m as 35 mm 4 perf\n", "1500", "log reset pt"},
    SessionRow{"wrapped_entries_hang", "{2K10bit}1500{disk}{clear}{hangs}", "hangs ~ 00:00:00.00 ~ 00:00:00.00", any, any},
    SessionRow{"ntsc_names_no_ratio", "{ntsc}2{disk}", any, "2 frame(s) approximate\n     2.4 MB as RGB 8 bit, NTSC\n     0.24 sec over 100 MBit Ethernet (~10 MByte/sec)\n", any},
    SessionRow{"pal_names_no_ratio", "{palYuv8Modem}25{disk}", any, "25 frame(s) approximate\n     22.2 MB as YUV 4:2:2 8 bit, PAL\n     46.2 min over Slow Internet - Modem (~8 KByte/sec)\n", any},
    SessionRow{"film_in_feet", "{35mm4perf}{feet}1500{film}", any, "1500 frame(s) approximate\n     93.75 ft as 35 mm 4 perf\n", any},
    SessionRow{"rejected_paste_writes_nothing", "1+{film}", any, "", "1+", "reset pt"},
    SessionRow{"history_remembers_once", "1+2\n{clear}3\n{clear}1+2\n{pick 1}", "3 ~ 00:00:00.03 ~ 00:00:00.03", any, "1+2,3", "log reset pt"},
    SessionRow{"picked_entry_unsettles", "1+2\n{click resetButton}{pick 1}", "1+2 ~ 00:00:00.03 ~ 00:00:00.03", any, any, "log reset pt"}),
    rowName<SessionRow>);
// clang-format on

using Entry = ControllerFixture;

// Black up to where the lazy reading stops, red behind it, counted in characters, not bytes.
TEST_F(Entry, ColoursWhatIsReadBlackAndTheRestRed) {
    start();
    ui().inputField->setPlainText(QStringLiteral("é12+"));
    const auto formats = ui().inputField->document()->firstBlock().layout()->formats();
    ASSERT_EQ(formats.size(), 3);
    EXPECT_EQ(formats[1].start, 1);
    EXPECT_EQ(formats[1].length, 2);
    EXPECT_EQ(formats[1].format.foreground().color(), QColor(Qt::black));
    EXPECT_EQ(formats[2].format.foreground().color(), QColor(Qt::red));
}

TEST_F(Entry, HistoryIsOnDiskAtOnceAndItsMenuBuiltAnew) {
    QStringList stored;
    for (int i = 0; i < 125; ++i) stored << QString::number(i + 1);
    settings().setValue("CalculatorExpressionHistory", stored);
    auto& calc = start();
    calc.showMenu(ui().historyButton);
    QMenu* menu = ui().historyButton->menu();
    menu->hide();
    EXPECT_EQ(menu->actions().size(), 123);
    EXPECT_EQ(menu->actions()[1]->font().pointSizeF(), 10.0);
    EXPECT_FALSE(menu->separatorsCollapsible());
    EXPECT_EQ(settings().value("CalculatorExpressionHistory").toStringList().size(), 125);
    type("1:0:5");
    pressReturn();
    settings().sync();  // reads what is on disk now
    const QStringList written = settings().value("CalculatorExpressionHistory").toStringList();
    EXPECT_EQ(written.size(), 121);
    EXPECT_EQ(calc.lines(), 1);
    EXPECT_EQ(written.last(), "01:00:05.00|24");
    calc.clearExpressionHistory(nullptr);
    // A long press on the button opens the menu without going through showMenu().
    menu->popup(QPoint());
    menu->hide();
    EXPECT_EQ(menu->actions().size(), 3);
    EXPECT_FALSE(menu->actions().last()->isEnabled());
    // Clearing is forgotten at the next start.
    EXPECT_EQ(start().expressionHistory().entries().size(), 121);
}

// A menu like the application's: one checkable item per value, tagged with it.
std::unique_ptr<QMenu> taggedMenu(int count, int first = 0) {
    auto menu = std::make_unique<QMenu>();
    for (int tag = first; tag < first + count; ++tag) {
        QAction* item = menu->addAction(QString::number(tag));
        item->setProperty("tag", tag);
        item->setCheckable(true);
    }
    return menu;
}

QList<int> checkedTags(QMenu* menu) {
    QList<int> tags;
    for (QAction* item : menu->actions()) {
        if (item->isChecked()) tags << item->property("tag").toInt();
    }
    return tags;
}

using Display = ControllerFixture;

// Each display state shows its own views and checks its own menu item. Ctrl+T checks the active
// mode's item before it reaches the calculator; the check must stay.
TEST_F(Display, ViewsAndMenusFollowTheStateAndReading) {
    auto& calc = start();
    auto menu = taggedMenu(4, -2);
    calc.setDisplayModeMenu(menu.get());
    // The display button steps from time to number, disk space, film length and back.
    for (const auto& [state, views] : {std::pair{DisplayStateNumber, "results keys"},
                                       {DisplayStateDiskSpace, "disk-field comment disk"},
                                       {DisplayStateFilmLength, "film-field film"},
                                       {DisplayStateTime, "results keys"}}) {
        QTest::mouseClick(ui().displayButton, Qt::LeftButton);
        QStringList shown;
        for (const auto& [view, widget] : std::initializer_list<std::pair<QString, QWidget*>>{
                 {"results", ui().resultField},
                 {"disk-field", ui().resultDiskSpaceField2},
                 {"comment", ui().commentTF1},
                 {"disk", ui().diskSpacePupUpView},
                 {"film-field", ui().filmResultField},
                 {"film", ui().filmLengthView},
                 {"keys", ui().buttonView}}) {
            if (widget->isVisible()) shown << view;
        }
        EXPECT_EQ(shown.join(' '), views);
        EXPECT_EQ(checkedTags(menu.get()), QList<int>{state});
    }
    auto modes = taggedMenu(2);
    calc.setDisplayCalcModeMenu(modes.get());
    QAction* pt = modes->actions()[1];
    pt->setChecked(true);
    pt->trigger();
    calc.toggleCalcMode(pt);
    EXPECT_EQ(checkedTags(modes.get()), QList<int>{1});
    QTest::mouseClick(ui().modeButton, Qt::LeftButton);
    EXPECT_EQ(checkedTags(modes.get()), QList<int>{0});
    EXPECT_EQ(ui().resultField2->palette().color(QPalette::Text), QColor(55, 63, 70));
    EXPECT_EQ(ui().resultField->palette().color(QPalette::Text), QColor(207, 208, 197));
}

TEST_F(Display, RateButtonAndPopUpReachEveryCode) {
    auto& calc = start();
    auto menu = taggedMenu(20);
    calc.setDisplayFrameRateMenu(menu.get());
    type("48");
    QStringList results;
    // The button steps among the classic seven, also from a rate chosen elsewhere.
    for (int code = 0; code < 20; ++code) {
        QAction chosen;
        chosen.setProperty("tag", code);
        calc.changeDisplayFrameRate(&chosen);
        results << ui().resultField->text();
        QTest::mouseClick(ui().displayButton24, Qt::LeftButton);
        EXPECT_EQ(calc.calculator().fps(), (code + 1) % 7);
        EXPECT_EQ(checkedTags(menu.get()), QList<int>{(code + 1) % 7});
        EXPECT_EQ(ui().fpsPopUp->currentData().toInt(), (code + 1) % 7);
    }
    EXPECT_EQ(results.join(' '),
              "00:00:02.00 00:00:01.23 00:00:01.18 00:00:02.00 00:00:01.18 00:00:02.00 "
              "00:00:01.18 00:00:01.00 00:00:00.48 00:00:00.48 00:00:00.48 00:00:01.00 "
              "00:00:00.48 00:00:00.48 00:00:00.48 00:00:00.48 00:00:00.48 00:00:00.048 "
              "00:00:00.048 00:00:00.048");
    // Choosing a separator of the pop-up keeps the rate; a tag that is no rate never reaches
    // the engine.
    const std::pair<int, int> positions[] = {{0, 3},   {4, 2},   {5, 2},   {7, 6},   {9, 7},
                                             {11, 10}, {12, 9},  {13, 9},  {14, 11}, {15, 12},
                                             {16, 12}, {17, 13}, {18, 15}, {19, 14}, {20, 16},
                                             {21, 18}, {22, 17}, {23, 19}, {1, 0}};
    for (const auto& [position, code] : positions) {
        ui().fpsPopUp->setCurrentIndex(position);
        calc.changeDisplayFrameRate(ui().fpsPopUp);
        EXPECT_EQ(calc.calculator().fps(), code) << "position " << position;
    }
    QAction foreign;
    foreign.setProperty("tag", 20);
    calc.changeDisplayFrameRate(&foreign);
    EXPECT_EQ(calc.calculator().fps(), DisplayState24fps);
}

// Screen readers: every control says what it is and does, the keyboard visits the visible
// controls in the order they are laid out, and the result fields hand their text to the reader.
TEST_F(Display, ScreenReadersFindNamedControlsInLayoutOrder) {
    auto& calc = start();
    for (QWidget* widget : calc.calcWindow()->findChildren<QWidget*>()) {
        const bool control = qobject_cast<QAbstractButton*>(widget) ||
                             qobject_cast<QComboBox*>(widget) || qobject_cast<QLineEdit*>(widget) ||
                             qobject_cast<QPlainTextEdit*>(widget) ||
                             qobject_cast<QTextEdit*>(widget);
        if (!control || widget->objectName().isEmpty()) continue;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty() ||
                     accessible->text(QAccessible::Description).isEmpty())
            << widget->objectName().toStdString();
    }
    QPoint previous(-1, -1);
    for (QWidget* widget = ui().displayButton->nextInFocusChain(); widget != ui().displayButton;
         widget = widget->nextInFocusChain()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisible()) continue;
        const QPoint place = widget->mapTo(calc.calcWindow(), QPoint());
        // Below the collapsed window nothing takes the focus, however often Tab is pressed.
        EXPECT_TRUE(place.y() < calc.calcWindow()->height() || !widget->isEnabled())
            << widget->objectName().toStdString();
        const bool sameRow = std::abs(place.y() - previous.y()) < 12;
        EXPECT_TRUE(sameRow ? place.x() > previous.x() : place.y() > previous.y())
            << widget->objectName().toStdString();
        previous = place;
    }
    QAction rate;
    rate.setProperty("tag", DisplayState29drop);
    calc.changeDisplayFrameRate(&rate);
    EXPECT_EQ(ui().displayButton24->accessibleName(), "Rate: 29.97 fps drop frame");
    calc.setDisplayCalcModeTime(false);
    EXPECT_EQ(ui().modeButton->accessibleName(), "Mode: PF, rate suffixes as frames");
    type("12");
    QAccessibleInterface* result = QAccessible::queryAccessibleInterface(ui().resultField2);
    ASSERT_TRUE(result->textInterface());
    EXPECT_EQ(result->textInterface()->text(0, 11), "00:00:00.12");
}

// The results copy as their fields show them, from the Edit menu and from the input's copy key
// with nothing selected; a column pasted into the input is its sum, and one undo takes it back.
TEST_F(Session, CopiesResultsAndSumsAPastedColumn) {
    auto& calc = start();
    QAction rate;
    rate.setProperty("tag", DisplayState25fps);
    calc.changeDisplayFrameRate(&rate);
    calc.setDisplayCalcModeTime(true);
    type("00:00:01.00|24");
    QClipboard* clipboard = QApplication::clipboard();
    calc.copyResult(nullptr);
    EXPECT_EQ(clipboard->text(), "00:00:01.00");
    calc.copyOtherReading(nullptr);
    EXPECT_EQ(clipboard->text(), "00:00:00.24");
    clipboard->clear();
    QTest::keyClick(ui().inputField, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard->text(), "00:00:01.00");
    QTest::keyClick(ui().inputField, Qt::Key_Home, Qt::ShiftModifier);
    QTest::keyClick(ui().inputField, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard->text(), "00:00:01.00|24");
    calc.setDisplayCalcModeTime(false);
    calc.copyResult(nullptr);
    EXPECT_EQ(clipboard->text(), "00:00:00.24");

    clipboard->setText("00:00:10:00\r\n00:00:05:12\r\n00:00:02:12\r\n");
    QTest::keyClick(ui().inputField, Qt::Key_End);
    QTest::keyClicks(ui().inputField, " + ");
    QTest::keyClick(ui().inputField, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(ui().inputField->text(), "00:00:01.00|24 + 00:00:10:00 + 00:00:05:12 + 00:00:02:12");
    EXPECT_EQ(ui().resultField2->text(), "00:00:18.23");
    QTest::keyClick(ui().inputField, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(ui().inputField->text(), "00:00:01.00|24 + ");
}

// The 24-hour clock, chosen in the menu and found again at the next start: time results wrap,
// frame numbers stay signed.
TEST_F(Session, WrapsAt24HoursOnRequestAndRemembersIt) {
    start().setWrapsAt24Hours(true);
    QAction rate;
    rate.setProperty("tag", DisplayState29drop);
    controller->changeDisplayFrameRate(&rate);
    type("00:00:00;00 - 1");
    EXPECT_EQ(ui().resultField->text(), "23:59:59.29");
    QAction number;
    number.setProperty("tag", DisplayStateNumber);
    controller->changeDisplayMode(&number);
    EXPECT_EQ(ui().resultField->text(), "-1");
    controller.reset();
    EXPECT_TRUE(start().wrapsAt24Hours());
    controller->setWrapsAt24Hours(false);
    controller.reset();
    EXPECT_FALSE(start().wrapsAt24Hours());
}

// In a narrow log a long calculation wraps at blanks and between operands, never inside a
// timecode and its rate suffix; what is saved or copied has no marks of the wrapping.
TEST_F(Session, LogWrapsBetweenValuesOnly) {
    auto& calc = start();
    calc.changeWindow(nullptr);
    QTest::qWait(450);
    calc.calcWindow()->resize(300, calc.calcWindow()->height());
    QAction rate;
    rate.setProperty("tag", DisplayState25fps);
    calc.changeDisplayFrameRate(&rate);
    type(QStringLiteral("01:00:10.00|24+00:00:05.00|24*2+00:00:01.12|30-00:00:00.05|24"));
    pressReturn();
    QTextDocument* document = ui().calcLog->document();
    document->documentLayout()->documentSize();
    const QTextBlock block = document->firstBlock();
    ASSERT_GT(block.layout()->lineCount(), 1);
    static const QRegularExpression value(
        QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\x{2060}?\\|"));
    for (int line = 1; line < block.layout()->lineCount(); ++line) {
        const QString rest = block.text().mid(block.layout()->lineAt(line).textStart());
        // Each line starts at a value, an operator's operand or the reading, never at a suffix.
        EXPECT_FALSE(rest.startsWith(QStringLiteral("24")) &&
                     !rest.startsWith(QStringLiteral("24+")) &&
                     block.text().at(block.layout()->lineAt(line).textStart() - 2) == u'|')
            << rest.toStdString();
        EXPECT_TRUE(value.match(rest).hasMatch() || rest.startsWith(QStringLiteral("= ")) ||
                    rest.startsWith(QStringLiteral("(P")))
            << rest.toStdString();
    }
    EXPECT_EQ(
        log(),
        "01:00:10.00|24+00:00:05.00|24*2+00:00:01.12|30-00:00:00.05|24 = 01:00:21.05|25 (PT)\n");
}

}  // namespace
