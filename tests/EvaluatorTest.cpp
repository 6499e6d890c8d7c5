#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "Calc.h"
#include "TestRows.h"

using namespace vantrel;

namespace {

struct EvalRow {
    const char* name;
    int code;
    const char* expression;
    int displayMode;
    std::optional<std::string> eager;
    std::optional<std::string> lazy;
    TimecodeNotation notation = TimecodeNotation::Classic;
};

class Evaluation : public testing::TestWithParam<EvalRow> {};

TEST_P(Evaluation, FormatsForTheDisplayMode) {
    const EvalRow& row = GetParam();
    Calc calc;
    calc.setFps(row.code);
    calc.setTimecodeNotation(row.notation);
    EXPECT_EQ(calc.evalPT(row.expression, row.displayMode), row.eager);
    EXPECT_EQ(calc.lazyevalPT(row.expression, row.displayMode), row.lazy);
}

const std::nullopt_t none = std::nullopt;
const std::string kFourHundredNines(400, '9');

// clang-format off
INSTANTIATE_TEST_SUITE_P(Examples, Evaluation, testing::Values(
    EvalRow{"sum_as_time", 1, "1+2", DisplayStateTime, "00:00:00.03", "00:00:00.03"},
    EvalRow{"sum_as_number", 1, "1+2", DisplayStateNumber, "3", "3"},
    EvalRow{"single_number", 1, "12345", DisplayStateNumber, "12345", "12345"},
    EvalRow{"half_to_even_up", 1, "7/2", DisplayStateNumber, "4", "4"},
    EvalRow{"half_to_even_down", 1, "5/2", DisplayStateNumber, "2", "2"},
    EvalRow{"negative", 1, "1-2", DisplayStateNumber, "-1", "-1"},
    EvalRow{"single_precision", 1, "16777217", DisplayStateNumber, "16777216", "16777216"},
    EvalRow{"narrows_past_number_bound", 1, "999999999", DisplayStateNumber, "∞", "1000000000"},
    EvalRow{"lazy_number_bound", 1, "1234567890", DisplayStateNumber, "∞", "1234567936"},
    EvalRow{"beyond_both_number_bounds", 1, "9999999999", DisplayStateNumber, "∞", "∞"},
    EvalRow{"below_number_bound", 1, "1-1000000000", DisplayStateNumber, "-∞", "-1000000000"},
    EvalRow{"time_bound_formats", 1, "86400745", DisplayStateTime, "960:00:29.19", "960:00:29.19"},
    EvalRow{"time_bound_narrowed_past", 1, "86400749", DisplayStateTime, "∞", "∞"},
    EvalRow{"time_below_bound", 1, "1-86400749", DisplayStateTime, "-∞", "-∞"},
    EvalRow{"disk_space_shows_time", 1, "90000", DisplayStateDiskSpace, "01:00:00.00", "01:00:00.00"},
    EvalRow{"film_length", 1, "1500", DisplayStateFilmLength, "28.85 m", "28.85 m"},
    EvalRow{"film_lower_bound", 1, "1-5200006", DisplayStateFilmLength, "-∞", "-∞"},
    EvalRow{"film_within_lower_bound", 1, "1-5200001", DisplayStateFilmLength, "-99999.90 m", "-99999.90 m"},
    EvalRow{"film_upper_bound", 1, "52000010", DisplayStateFilmLength, "∞", "∞"},
    EvalRow{"division_by_zero", 1, "01:00:00.00|25/(1-1)", DisplayStateNumber, "∞", "∞"},
    EvalRow{"division_by_zero_film", 1, "01:00:00.00|25/(1-1)", DisplayStateFilmLength, "∞", "∞"},
    EvalRow{"zero_by_zero_time", 1, "00/(1-1)", DisplayStateTime, "NaN", "NaN"},
    EvalRow{"zero_by_zero_number", 1, "00/(1-1)", DisplayStateNumber, "NaN", "NaN"},
    EvalRow{"huge_drop_frame_count", 4, "99999999999999|29d", DisplayStateNumber, "∞", "∞"},
    EvalRow{"digits_beyond_double", 1, kFourHundredNines.c_str(), DisplayStateNumber, "∞", "∞"},
    EvalRow{"scalar_first_product", 1, "2*3*01:00:00.00|25*4", DisplayStateNumber, "2160000", "2160000"},
    EvalRow{"division_after_scalar_product", 1, "3*01:00:00.00/2", DisplayStateNumber, none, "270000"},
    EvalRow{"frame_count_needs_two_digits", 1, "5|25", DisplayStateNumber, none, "5"},
    EvalRow{"duration_sum", 1, "01:00:10.12|25+00:00:05.00", DisplayStateTime, "01:00:15.12", "01:00:15.12"},
    EvalRow{"drop_frame_hour", 4, "01:00:00.00*2", DisplayStateTime, "02:00:00.00", "02:00:00.00"},
    EvalRow{"smpte_disk_space_drop", 4, "107892", DisplayStateDiskSpace, "01:00:00;00", "01:00:00;00", TimecodeNotation::Smpte},
    EvalRow{"smpte_leaves_numbers", 1, "1+2", DisplayStateNumber, "3", "3", TimecodeNotation::Smpte},
    EvalRow{"smpte_bound_sign", 1, "86400749", DisplayStateTime, "∞", "∞", TimecodeNotation::Smpte}),
    rowName<EvalRow>);
// clang-format on

// A timestamp in SMPTE notation reads exactly as the classic form with the same digits, eagerly
// and lazily, in both readings; a text that is not one stays unread.
struct SmpteRow {
    const char* name;
    int code;
    const char* smpte;
    const char* classic;
    bool accepted = true;
};

class SmpteNotation : public testing::TestWithParam<SmpteRow> {};

TEST_P(SmpteNotation, ReadsAsTheClassicForm) {
    const SmpteRow& row = GetParam();
    Calc calc;
    calc.setFps(row.code);
    EXPECT_EQ(calc.evalPTToFrames(row.classic).has_value(), row.accepted);
    EXPECT_EQ(calc.evalPTToFrames(row.smpte), calc.evalPTToFrames(row.classic));
    EXPECT_EQ(calc.evalPFToFrames(row.smpte), calc.evalPFToFrames(row.classic));
    EXPECT_EQ(calc.lazyevalPTToFrames(row.smpte), calc.lazyevalPTToFrames(row.classic));
    EXPECT_EQ(calc.lazyevalPFToFrames(row.smpte), calc.lazyevalPFToFrames(row.classic));
    EXPECT_EQ(calc.beautifyExpression(row.smpte), calc.beautifyExpression(row.classic));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Forms, SmpteNotation, testing::Values(
    SmpteRow{"colons_at_25", 1, "01:00:10:12", "01:00:10.12"},
    SmpteRow{"suffix_other_rate", 1, "01:00:10:12|24", "01:00:10.12|24"},
    SmpteRow{"single_digits", 0, "1:2:3:4", "1:2:3.4"},
    SmpteRow{"drop_minute", 4, "00:01:00;02", "00:01:00.02"},
    SmpteRow{"drop_skipped_label", 4, "00:01:00;00", "00:01:00.00"},
    SmpteRow{"semicolons_ten_minutes", 4, "00;10;00;00|29d", "00:10:00.00|29d"},
    SmpteRow{"semicolon_picks_no_rate", 1, "00:01:00;02", "00:01:00.02"},
    SmpteRow{"drop23_suffix_at_30", 2, "00:01:00;02|23d", "00:01:00.02|23d"},
    SmpteRow{"mixed_separators_at_23n", 5, "01;00:00;00|24", "01:00:00.00|24"},
    SmpteRow{"sum_with_blanks", 1, " 01:00:10:12 + 00:00:05:00 ", " 01:00:10.12 + 00:00:05.00 "},
    SmpteRow{"edl_duration", 4, "(01:00:22;15-01:00:00;00)*2", "(01:00:22.15-01:00:00.00)*2"},
    SmpteRow{"five_groups_unread", 1, "1:01:00:10:12", "1:01:00:10:12", false},
    SmpteRow{"frames_with_point_unread", 1, "01:00:10:12.5", "01:00:10:12.5", false},
    SmpteRow{"three_digit_group_unread", 1, "001:00:10:12", "001:00:10:12", false},
    SmpteRow{"two_groups_unread", 1, "10;12", "10;12", false}),
    rowName<SmpteRow>);
// clang-format on

TEST(Evaluator, RejectedTextKeepsTheCachedResults) {
    Calc calc;
    calc.setFps(DisplayState25fps);
    ASSERT_TRUE(calc.evalPT("00:00:01.00|24", DisplayStateTime));
    ASSERT_TRUE(calc.evalPF("00:00:01.00|24", DisplayStateTime));
    EXPECT_FALSE(calc.evalPT("3*01:00:00.00/2", DisplayStateTime));
    EXPECT_FALSE(calc.evalPF("5|25", DisplayStateTime));
    EXPECT_EQ(calc.cachedResultPT(), 25.0f);
    EXPECT_EQ(calc.cachedResultPF(), 24.0f);
}

TEST(Evaluator, CachesTheNarrowedValueOfEachReading) {
    Calc calc;
    ASSERT_TRUE(calc.evalPT("16777217", DisplayStateNumber));
    EXPECT_EQ(calc.cachedResultPT(), 16777216.0f);
    EXPECT_EQ(calc.cachedResultPF(), 0.0f);
    ASSERT_TRUE(calc.lazyevalPF("x 12 y", DisplayStateNumber));
    EXPECT_EQ(calc.cachedResultPF(), 12.0f);
}

TEST(Evaluator, FramesBeforeNarrowing) {
    Calc calc;
    EXPECT_EQ(calc.evalPTToFrames("16777217"), 16777217.0);
    EXPECT_EQ(calc.evalPFToFrames("1/4"), 0.25);
}

TEST(Evaluator, LeavesTheStackEmpty) {
    Calc calc;
    for (const char* expression : {"1+2*3", "2*3*01:00:00.00|25*4", "1+", "abc", "(1+(2-3))*4"}) {
        (void)calc.evalPT(expression, DisplayStateTime);
        (void)calc.lazyevalPF(expression, DisplayStateTime);
        EXPECT_EQ(calc.pop(), std::nullopt) << expression;
    }
}

}  // namespace
