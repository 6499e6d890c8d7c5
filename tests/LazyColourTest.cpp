#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "Calc.h"
#include "TestRows.h"

using namespace vantrel;

namespace {

struct ColourRow {
    const char* name;
    const char* input;
    std::vector<ColouredSpan> spans;
    std::optional<std::string> lazyFrames;
};

class LazyColouring : public testing::TestWithParam<ColourRow> {};

TEST_P(LazyColouring, BlackIsExactlyWhatLazyEvaluationReads) {
    const ColourRow& row = GetParam();
    Calc calc;
    calc.setFps(DisplayState25fps);
    EXPECT_EQ(calc.colorizeLazyEvaluatedString(row.input), row.spans);
    EXPECT_EQ(calc.lazyevalPT(row.input, DisplayStateNumber), row.lazyFrames);
    EXPECT_EQ(calc.lazyevalPF(row.input, DisplayStateNumber), row.lazyFrames);
}

constexpr SpanColour black = SpanColour::Black;
constexpr SpanColour red = SpanColour::Red;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Examples, LazyColouring, testing::Values(
    ColourRow{"trailing_operator", "1+", {{"1", black}, {"+", red}}, "1"},
    ColourRow{"leading_minus", "-1", {{"-", red}, {"1", black}}, "1"},
    ColourRow{"short_frame_count", "5|25", {{"5", black}, {"|25", red}}, "5"},
    ColourRow{"leading_zero_number", "0*5", {{"0*", red}, {"5", black}}, "5"},
    ColourRow{"division_after_product", "3*01:00:00.00/2", {{"3*01:00:00.00", black}, {"/2", red}}, "270000"},
    ColourRow{"blanks_belong_to_number", "x 12 y", {{"x", red}, {" 12 ", black}, {"y", red}}, "12"},
    ColourRow{"no_number", "abc", {{"abc", red}}, std::nullopt},
    ColourRow{"empty", "", {}, std::nullopt},
    ColourRow{"whole_expression", "01:00:00.00|25*2", {{"01:00:00.00|25*2", black}}, "180000"},
    ColourRow{"non_ascii_around", "é12€", {{"é", red}, {"12", black}, {"€", red}}, "12"},
    ColourRow{"smpte_partly_typed", "01:00:10:1", {{"01:00:10:1", black}}, "90251"},
    ColourRow{"smpte_frames_not_yet_typed", "01:00:10:", {{"01:00:10", black}, {":", red}}, "90250"},
    ColourRow{"not_smpte_point_after", "01:00:10:12.5", {{"01:00:10", black}, {":12.5", red}}, "90250"},
    ColourRow{"smpte_then_operator", "x01;00;10;12|25+", {{"x", red}, {"01;00;10;12|25", black}, {"+", red}}, "90262"}),
    rowName<ColourRow>);
// clang-format on

}  // namespace
