#include <QComboBox>
#include <QStyleOptionComboBox>

#include "ControllerFixture.h"
#include "TestRows.h"

namespace {

struct StartRow {
    const char* name;
    std::vector<std::pair<const char*, QVariant>> stored;
    std::array<int, 6> expected;  // resolution, bit depth, aspect, transfer speed, film, system
    bool aspectRatioEnabled;
};

class StartUp : public ControllerFixture, public testing::WithParamInterface<StartRow> {};

TEST_P(StartUp, RestoresTheStoredChoices) {
    for (const auto& [key, value] : GetParam().stored) settings().setValue(key, value);
    auto& calc = start();
    const std::array<int, 6> indexes{calc.resolutionIndex(),  calc.bitDepthIndex(),
                                     calc.aspectRatioIndex(), calc.transferSpeedIndex(),
                                     calc.filmIndex(),        calc.systemIndex()};
    EXPECT_EQ(indexes, GetParam().expected);
    EXPECT_EQ(ui().aspectRatioPopUpButton->isEnabled(), GetParam().aspectRatioEnabled);
    EXPECT_TRUE(calc.displayCalcModeTime());
    EXPECT_EQ(calc.storedHeight(), 252.0);
    EXPECT_EQ(calc.calcWindow()->height(), 252);
    // A stored row outside the table is kept, and the pop-up then shows no item.
    const int resolution = GetParam().expected[0];
    EXPECT_EQ(ui().resolutionPopUpButton->currentIndex(),
              resolution >= 0 && resolution < 7 ? resolution : -1);
}

INSTANTIATE_TEST_SUITE_P(
    Preferences, StartUp,
    testing::Values(
        StartRow{"first_start", {}, {3, 0, 2, 4, 0, 0}, true},
        StartRow{"resolution_only", {{"CalcResolutionIndex", 1}}, {1, 0, 0, 0, 0, 0}, false},
        StartRow{"keys_without_resolution",
                 {{"CalcBitDepthIndex", 5}, {"CalcFilmIndex", 2}},
                 {3, 0, 2, 4, 0, 0},
                 true},
        StartRow{"all_keys",
                 {{"CalcResolutionIndex", 6},
                  {"CalcBitDepthIndex", 9},
                  {"CalcAspectRatioIndex", 3},
                  {"CalcTransferSpeedIndex", 7},
                  {"CalcFilmIndex", 5},
                  {"CalcSystemIndex", 1}},
                 {6, 9, 3, 7, 5, 1},
                 true},
        StartRow{"wrong_type_reads_zero",
                 {{"CalcResolutionIndex", "abc"}, {"CalcFilmIndex", QStringList{"x"}}},
                 {0, 0, 0, 0, 0, 0},
                 false},
        StartRow{"out_of_range_kept", {{"CalcResolutionIndex", 99}}, {99, 0, 0, 0, 0, 0}, true},
        StartRow{"negative_kept", {{"CalcResolutionIndex", -4}}, {-4, 0, 0, 0, 0, 0}, true}),
    rowName<StartRow>);

TEST_F(ControllerFixture, FirstStartWritesOnlyTheChangedKeys) {
    start();
    EXPECT_EQ(settings().value("CalcResolutionIndex").toInt(), 3);
    EXPECT_EQ(settings().value("CalcAspectRatioIndex").toInt(), 2);
    EXPECT_EQ(settings().value("CalcTransferSpeedIndex").toInt(), 4);
    EXPECT_FALSE(settings().contains("CalcBitDepthIndex"));
    EXPECT_FALSE(settings().contains("CalcFilmIndex"));
    EXPECT_FALSE(settings().contains("CalcSystemIndex"));
}

TEST_F(ControllerFixture, SettersWriteOnlyOnAChange) {
    auto& calc = start();
    settings().remove("CalcResolutionIndex");
    calc.setResolutionIndex(3);
    settings().sync();
    EXPECT_FALSE(settings().contains("CalcResolutionIndex"));
    calc.setResolutionIndex(2);
    settings().sync();
    EXPECT_EQ(settings().value("CalcResolutionIndex").toInt(), 2);
    EXPECT_FALSE(ui().aspectRatioPopUpButton->isEnabled());
}

TEST_F(ControllerFixture, PopUpChoicesAreStored) {
    start();
    ui().filmPopUpButton->setCurrentIndex(4);
    ui().transferSpeedPopUpButton->setCurrentIndex(6);
    settings().sync();
    EXPECT_EQ(settings().value("CalcFilmIndex").toInt(), 4);
    EXPECT_EQ(settings().value("CalcTransferSpeedIndex").toInt(), 6);
}

TEST_F(ControllerFixture, FrameRatePopUpStartsAt24WithASeparator) {
    start();
    vantrel::CompactComboBox* popUp = ui().fpsPopUp;
    EXPECT_EQ(popUp->currentData().toInt(), vantrel::DisplayState24fps);
    EXPECT_EQ(popUp->currentIndex(), 1);
    EXPECT_FALSE(popUp->itemData(5).isValid());
    // The closed pop-up shows every rate's caption whole.
    QStyleOptionComboBox option;
    option.initFrom(popUp);
    const QRect field = popUp->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                       QStyle::SC_ComboBoxEditField, popUp);
    for (int position = 0; position < popUp->count(); ++position) {
        const QString caption = popUp->compactCaption(position);
        EXPECT_LE(popUp->fontMetrics().horizontalAdvance(caption), field.width())
            << caption.toStdString();
    }
}

}  // namespace
