#include <QAccessible>
#include <QComboBox>
#include <QMenu>

#include "ControllerFixture.h"
#include "TestRows.h"

namespace {

using vantrel::DisplayStateDiskSpace;
using vantrel::DisplayStateFilmLength;
using vantrel::DisplayStateNumber;
using vantrel::DisplayStateTime;

// A menu like the application's: one checkable item per value, tagged with it.
std::unique_ptr<QMenu> taggedMenu(std::initializer_list<int> tags) {
    auto menu = std::make_unique<QMenu>();
    for (int tag : tags) {
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

struct ViewRow {
    const char* name;
    int state;
    bool results, disk, film, keys;
};

class DisplayStates : public ControllerFixture, public testing::WithParamInterface<ViewRow> {};

TEST_P(DisplayStates, ShowTheirOwnViews) {
    const ViewRow& row = GetParam();
    auto& calc = start();
    auto menu = taggedMenu({-2, -1, 0, 1});
    calc.setDisplayModeMenu(menu.get());
    QAction choice;
    choice.setProperty("tag", row.state);
    calc.changeDisplayMode(&choice);
    const bool shown[] = {
        ui().resultField->isVisible(),     ui().resultDiskSpaceField2->isVisible(),
        ui().commentTF1->isVisible(),      ui().diskSpacePupUpView->isVisible(),
        ui().filmResultField->isVisible(), ui().filmLengthView->isVisible(),
        ui().buttonView->isVisible()};
    const bool expected[] = {row.results, row.disk, row.disk, row.disk,
                             row.film,    row.film, row.keys};
    EXPECT_TRUE(std::equal(std::begin(shown), std::end(shown), std::begin(expected)));
    EXPECT_EQ(checkedTags(menu.get()), QList<int>{row.state});
    EXPECT_EQ(calc.displayButtonState(), row.state);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Views, DisplayStates, testing::Values(
    ViewRow{"time", DisplayStateTime, true, false, false, true},
    ViewRow{"number", DisplayStateNumber, true, false, false, true},
    ViewRow{"disk_space", DisplayStateDiskSpace, false, true, false, false},
    ViewRow{"film_length", DisplayStateFilmLength, false, false, true, false}),
    rowName<ViewRow>);
// clang-format on

using Display = ControllerFixture;

TEST_F(Display, RateButtonStepsThroughAllCodesInOrder) {
    auto& calc = start();
    auto menu = taggedMenu({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    calc.setDisplayFrameRateMenu(menu.get());
    type("48");
    QList<int> engineCodes;
    QStringList results;
    for (int click = 0; click < 13; ++click) {
        QTest::mouseClick(ui().displayButton24, Qt::LeftButton);
        engineCodes << calc.calculator().fps();
        results << ui().resultField->text();
        EXPECT_EQ(checkedTags(menu.get()), QList<int>{calc.displayFrameRateState()});
        EXPECT_EQ(ui().fpsPopUp->currentData().toInt(), calc.displayFrameRateState());
    }
    EXPECT_EQ(engineCodes, (QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0}));
    EXPECT_EQ(results.join(' '),
              "00:00:01.23 00:00:01.18 00:00:02.00 00:00:01.18 00:00:02.00 "
              "00:00:01.18 00:00:01.00 00:00:00.48 00:00:00.48 00:00:00.48 "
              "00:00:01.00 00:00:00.48 00:00:02.00");
}

// The pop-up's positions skip its separators; a tag that is no rate never reaches the engine.
TEST_F(Display, PopUpPositionsMapToCodes) {
    auto& calc = start();
    EXPECT_FALSE(ui().fpsPopUp->itemData(5).isValid());
    const std::pair<int, int> positions[] = {{0, 3},  {4, 2},   {5, 2},   {7, 6},
                                             {8, 6},  {9, 7},   {11, 10}, {12, 9},
                                             {13, 9}, {14, 11}, {15, 12}, {1, 0}};
    for (const auto& [position, code] : positions) {
        ui().fpsPopUp->setCurrentIndex(position);
        calc.changeDisplayFrameRate(ui().fpsPopUp);
        EXPECT_EQ(calc.calculator().fps(), code) << "position " << position;
    }
    QAction foreign;
    foreign.setProperty("tag", 13);
    calc.changeDisplayFrameRate(&foreign);
    EXPECT_EQ(calc.calculator().fps(), vantrel::DisplayState24fps);
}

// Ctrl+T checks the active item before it reaches the calculator; the check must stay.
TEST_F(Display, ModeItemsFollowTheActiveReading) {
    auto& calc = start();
    auto menu = taggedMenu({0, 1});
    calc.setDisplayCalcModeMenu(menu.get());
    QAction* pt = menu->actions()[1];
    pt->setChecked(true);
    pt->trigger();
    calc.toggleCalcMode(pt);
    EXPECT_EQ(checkedTags(menu.get()), QList<int>{1});
    QTest::mouseClick(ui().modeButton, Qt::LeftButton);
    EXPECT_EQ(checkedTags(menu.get()), QList<int>{0});
    EXPECT_EQ(ui().resultField2->palette().color(QPalette::Text), QColor(55, 63, 70));
    EXPECT_EQ(ui().resultField->palette().color(QPalette::Text), QColor(207, 208, 197));
}

TEST_F(Display, SideCalculatorsFollowTheInputAndPasteToTheLog) {
    auto& calc = start();
    calc.setResolutionIndex(4);
    calc.setBitDepthIndex(1);
    type("1500");
    EXPECT_EQ(ui().resultDiskSpaceField->text(), "14.6 GB");
    EXPECT_EQ(ui().resultTransferTimeField2->text(), "24.3 min");
    ui().filmPopUpButton->setCurrentIndex(4);
    EXPECT_EQ(calc.filmLengthPT(), "28.85 m");
    calc.pasteDiskSpaceToLog(nullptr);
    calc.pasteFilmLengthToLog(nullptr);
    EXPECT_EQ(log(),
              "1500 frame(s) approximate\n     14.6 GB as RGB 10 bit, 2K, 1.85:1\n"
              "     24.3 min over 100 MBit Ethernet (~10 MByte/sec)\n"
              "1500 frame(s) approximate\n     28.85 m as 35 mm 4 perf\n");
    EXPECT_TRUE(calc.logExpanded());
    EXPECT_EQ(calc.expressionHistory().entries(), QStringList{"1500"});
    ui().systemPopUpButton->setCurrentIndex(1);
    EXPECT_EQ(ui().filmResultField2->text(), "93.75 ft");
}

TEST_F(Display, TimecodeNotationIsChosenStoredAndRestored) {
    settings().setValue("TimecodeNotation", "smpte");
    auto& calc = start();
    EXPECT_EQ(ui().resultField->text(), "00:00:00:00");
    QAction classic;
    QAction smpte;
    classic.setProperty("tag", 0);
    smpte.setProperty("tag", 1);
    calc.setTimecodeNotationItems({&classic, &smpte});
    EXPECT_TRUE(smpte.isChecked() && !classic.isChecked());
    type("01:00:00:00*2");
    pressReturn();
    EXPECT_EQ(log(), "01:00:00:00|24*2 = 02:00:00:00|24 (PT)\n");
    calc.changeTimecodeNotation(&classic);
    EXPECT_EQ(ui().resultField->text(), "02:00:00.00");
    EXPECT_TRUE(classic.isChecked() && !smpte.isChecked());
    settings().sync();
    EXPECT_EQ(settings().value("TimecodeNotation").toString(), "classic");
    // Anything but "smpte" reads as classic.
    settings().setValue("TimecodeNotation", "SMPTE");
    EXPECT_EQ(start().timecodeNotation(), vantrel::TimecodeNotation::Classic);
}

// Screen readers: every control says what it is and does, the keyboard visits the controls in the
// order they are laid out, and the result fields hand their text to the reader.
TEST_F(Display, ScreenReadersFindNamedControlsInLayoutOrder) {
    auto& calc = start();
    for (QWidget* widget : calc.calcWindow()->findChildren<QWidget*>()) {
        const bool control = qobject_cast<QAbstractButton*>(widget) ||
                             qobject_cast<QComboBox*>(widget) || qobject_cast<QLineEdit*>(widget) ||
                             qobject_cast<QPlainTextEdit*>(widget);
        if (!control || widget->objectName().isEmpty()) continue;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty())
            << widget->objectName().toStdString();
        EXPECT_FALSE(accessible->text(QAccessible::Description).isEmpty())
            << widget->objectName().toStdString();
    }
    QPoint previous(-1, -1);
    for (QWidget* widget = ui().displayButton->nextInFocusChain(); widget != ui().displayButton;
         widget = widget->nextInFocusChain()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisible()) continue;
        const QPoint place = widget->mapTo(calc.calcWindow(), QPoint());
        const bool sameRow = std::abs(place.y() - previous.y()) < 12;
        EXPECT_TRUE(sameRow ? place.x() > previous.x() : place.y() > previous.y())
            << widget->objectName().toStdString();
        previous = place;
    }
    QAction rate;
    rate.setProperty("tag", vantrel::DisplayState29drop);
    calc.changeDisplayFrameRate(&rate);
    EXPECT_EQ(ui().displayButton24->accessibleName(), "Rate: 29.97 fps drop frame");
    calc.setDisplayCalcModeTime(false);
    EXPECT_EQ(ui().modeButton->accessibleName(), "Mode: PF, rate suffixes as frames");
    type("12");
    for (QLineEdit* field : {ui().resultField, ui().resultField2}) {
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(field);
        ASSERT_TRUE(accessible->textInterface());
        EXPECT_EQ(accessible->textInterface()->text(0, 11), "00:00:00.12");
    }
}

}  // namespace
