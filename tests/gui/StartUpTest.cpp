#include <QApplication>
#include <QComboBox>
#include <QStyleOptionComboBox>
#include <optional>

#include "ControllerFixture.h"
#include "TestRows.h"

namespace {

constexpr const char* kIndexKeys[]{"CalcResolutionIndex",  "CalcBitDepthIndex",
                                   "CalcAspectRatioIndex", "CalcTransferSpeedIndex",
                                   "CalcFilmIndex",        "CalcSystemIndex"};

struct StartRow {
    const char* name;
    std::vector<std::pair<const char*, QVariant>> stored;
    std::array<int, 6> expected;  // resolution, bit depth, aspect, transfer speed, film, system
    bool aspectRatioEnabled;
    std::optional<std::array<int, 6>> shown = std::nullopt;  // the pop-ups' rows, when not these
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
    EXPECT_TRUE(ui().pasteButton->isHidden() && !ui().pasteButton->isEnabled());
    // A stored row outside its table is kept, and its pop-up shows the first start's row.
    const std::array<int, 6> shown{
        ui().resolutionPopUpButton->currentIndex(),  ui().bitDepthPopUpButton->currentIndex(),
        ui().aspectRatioPopUpButton->currentIndex(), ui().transferSpeedPopUpButton->currentIndex(),
        ui().filmPopUpButton->currentIndex(),        ui().systemPopUpButton->currentIndex()};
    EXPECT_EQ(shown, GetParam().shown.value_or(GetParam().expected));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Preferences, StartUp, testing::Values(
    StartRow{"first_start", {}, {3, 0, 2, 4, 0, 0}, true},
    StartRow{"resolution_only", {{"CalcResolutionIndex", 1}}, {1, 0, 0, 0, 0, 0}, false},
    StartRow{"keys_without_resolution", {{"CalcBitDepthIndex", 5}, {"CalcFilmIndex", 2}}, {3, 0, 2, 4, 0, 0}, true},
    StartRow{"all_keys", {{"CalcResolutionIndex", 6}, {"CalcBitDepthIndex", 9}, {"CalcAspectRatioIndex", 3}, {"CalcTransferSpeedIndex", 7}, {"CalcFilmIndex", 5}, {"CalcSystemIndex", 1}}, {6, 9, 3, 7, 5, 1}, true},
    StartRow{"wrong_type_reads_zero", {{"CalcResolutionIndex", "abc"}, {"CalcFilmIndex", QStringList{"x"}}}, {0, 0, 0, 0, 0, 0}, false},
    StartRow{"negative_kept", {{"CalcResolutionIndex", -4}}, {-4, 0, 0, 0, 0, 0}, true, std::array{3, 0, 0, 0, 0, 0}},
    StartRow{"every_key_out_of_range", {{"CalcResolutionIndex", 7}, {"CalcBitDepthIndex", 10}, {"CalcAspectRatioIndex", -1}, {"CalcTransferSpeedIndex", 8}, {"CalcFilmIndex", 6}, {"CalcSystemIndex", 2}}, {7, 10, -1, 8, 6, 2}, true, std::array{3, 0, 2, 4, 0, 0}}),
    rowName<StartRow>);
// clang-format on

// The side calculators and their log entries read an index outside its table as the first start's
// row: the same figures and entries as a first start gives.
TEST_F(ControllerFixture, OutOfRangeChoicesBehaveAsAFirstStart) {
    const auto figuresAndLog = [this] {
        auto& calc = start();
        type("1500");
        calc.pasteDiskSpaceToLog(nullptr);
        calc.pasteFilmLengthToLog(nullptr);
        return QStringList{calc.diskSpacePT(), calc.transferTimePF(), calc.filmLengthPT(), log()};
    };
    const QStringList firstStart = figuresAndLog();
    settings().clear();
    for (const char* key : kIndexKeys) settings().setValue(key, 77);
    EXPECT_EQ(figuresAndLog(), firstStart);
}

// The unit displays' choices come back after a restart; a stored value that is none of them reads
// as the first start's.
TEST_F(ControllerFixture, UnitChoicesComeBack) {
    for (const auto& [gauge, sampleRate, exact] :
         {std::tuple{"16mm", 96000, 1}, {"70mm", 22050, 0}}) {
        settings().setValue("FeetFramesGauge", gauge);
        settings().setValue("AudioSampleRate", sampleRate);
        settings().setValue("ExactNTSCRates", exact);
        auto& calc = start();
        const bool known = exact == 1;
        EXPECT_EQ(calc.unitChoice().gauge->name, known ? "16mm" : "35mm-4perf");
        EXPECT_EQ(calc.unitChoice().sampleRate, known ? 96000 : 48000);
        EXPECT_EQ(calc.calculator().exactRates(), known);
    }
    start().setSampleRate(44100);
    EXPECT_EQ(settings().value("AudioSampleRate").toInt(), 44100);
}

// A first start stores the rows it chose; later only a change is written.
TEST_F(ControllerFixture, ChoicesAreStoredOnlyWhenTheyChange) {
    auto& calc = start();
    settings().sync();
    QStringList stored;
    for (const char* key : kIndexKeys) {
        if (settings().contains(key)) stored << settings().value(key).toString();
    }
    EXPECT_EQ(stored.join(","), "3,2,4");
    settings().remove("CalcResolutionIndex");
    calc.setResolutionIndex(3);
    ui().filmPopUpButton->setCurrentIndex(4);
    settings().sync();
    EXPECT_FALSE(settings().contains("CalcResolutionIndex"));
    EXPECT_EQ(settings().value("CalcFilmIndex").toInt(), 4);
    calc.setResolutionIndex(2);
    settings().sync();
    EXPECT_EQ(settings().value("CalcResolutionIndex").toInt(), 2);
    EXPECT_FALSE(ui().aspectRatioPopUpButton->isEnabled());
}

// The notation is stored as "smpte" or "classic"; anything else reads as classic.
TEST_F(ControllerFixture, TimecodeNotationIsStoredAndRestored) {
    settings().setValue("TimecodeNotation", "smpte");
    auto& calc = start();
    EXPECT_EQ(ui().resultField->text(), "00:00:00:00");
    QAction classic;
    QAction smpte;
    classic.setProperty("tag", 0);
    smpte.setProperty("tag", 1);
    calc.setTimecodeNotationItems({&classic, &smpte});
    EXPECT_TRUE(smpte.isChecked() && !classic.isChecked());
    calc.changeTimecodeNotation(&classic);
    EXPECT_TRUE(classic.isChecked() && !smpte.isChecked());
    EXPECT_EQ(settings().value("TimecodeNotation").toString(), "classic");
    settings().setValue("TimecodeNotation", "SMPTE");
    EXPECT_EQ(start().timecodeNotation(), vantrel::TimecodeNotation::Classic);
}

// Every closed pop-up shows each of its captions whole, even with the font at 150 %.
TEST_F(ControllerFixture, CaptionsFitTheirPopUps) {
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    QApplication::setFont(font);
    auto& calc = start();
    for (const int state : {vantrel::DisplayStateDiskSpace, vantrel::DisplayStateFilmLength}) {
        QAction choice;
        choice.setProperty("tag", state);
        calc.changeDisplayMode(&choice);
        QApplication::processEvents();
        for (QComboBox* popUp : calc.calcWindow()->findChildren<QComboBox*>()) {
            if (!popUp->isVisible()) continue;
            auto* compact = qobject_cast<vantrel::CompactComboBox*>(popUp);
            QStyleOptionComboBox option;
            option.initFrom(popUp);
            const QRect field = popUp->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                               QStyle::SC_ComboBoxEditField, popUp);
            for (int position = 0; position < popUp->count(); ++position) {
                const QString caption =
                    compact ? compact->compactCaption(position) : popUp->itemText(position);
                EXPECT_LE(popUp->fontMetrics().horizontalAdvance(caption), field.width())
                    << popUp->objectName().toStdString() << ": " << caption.toStdString();
            }
        }
    }
    QApplication::setFont(QFont());
}

}  // namespace
