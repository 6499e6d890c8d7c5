#include <gtest/gtest.h>

#include <limits>

#include "Calc.h"
#include "TestRows.h"

using namespace vantrel;

namespace {

struct FormatRow {
    const char* name;
    int code;
    double frames;
    const char* expected;
    TimecodeNotation notation = TimecodeNotation::Classic;
};

class StringFromFramecount : public testing::TestWithParam<FormatRow> {};

TEST_P(StringFromFramecount, WritesDisplayTimestamp) {
    Calc calc;
    calc.setFps(GetParam().code);
    calc.setTimecodeNotation(GetParam().notation);
    EXPECT_EQ(calc.stringFromFramecount(GetParam().frames), GetParam().expected);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Examples, StringFromFramecount, testing::Values(
    FormatRow{"one_hour_at_25", 1, 90000, "01:00:00.00"},
    FormatRow{"negative_second_at_30", 2, -30, "-00:00:01.00"},
    FormatRow{"zero", 1, 0, "00:00:00.00"},
    FormatRow{"negative_zero_has_no_sign", 1, -0.0, "00:00:00.00"},
    FormatRow{"drop29_minute_1", 4, 1800, "00:01:00.02"},
    FormatRow{"drop29_ten_minutes", 4, 17982, "00:10:00.00"},
    FormatRow{"drop29_one_hour", 4, 107892, "01:00:00.00"},
    FormatRow{"drop29_negative", 4, -1800, "-00:01:00.02"},
    FormatRow{"drop23_minute_1", 3, 1440, "00:01:00.02"},
    FormatRow{"nondrop23_counts_24", 5, 24, "00:00:01.00"},
    FormatRow{"hours_not_wrapped_at_24", 0, 86400750, "1000:00:31.06"},
    FormatRow{"hours_not_wrapped_at_30", 2, 86400750, "800:00:25.00"},
    FormatRow{"three_digit_hours", 1, 9000000, "100:00:00.00"},
    FormatRow{"fraction_rounds_frame_field_half_up", 1, 12.5, "00:00:00.13"},
    FormatRow{"fraction_not_carried_into_seconds", 2, 29.6, "00:00:00.30"},
    FormatRow{"nan", 1, std::numeric_limits<double>::quiet_NaN(), "NaN"},
    FormatRow{"beyond_any_hour_field", 1, 1e300, "∞"},
    FormatRow{"smpte_one_hour", 1, 90000, "01:00:00:00", TimecodeNotation::Smpte},
    FormatRow{"smpte_negative", 2, -30, "-00:00:01:00", TimecodeNotation::Smpte},
    FormatRow{"smpte_over_a_day", 0, 86400750, "1000:00:31:06", TimecodeNotation::Smpte},
    FormatRow{"smpte_drop29", 4, 1800, "00:01:00;02", TimecodeNotation::Smpte},
    FormatRow{"smpte_drop29_negative", 4, -17982, "-00:10:00;00", TimecodeNotation::Smpte},
    FormatRow{"smpte_drop23", 3, 1440, "00:01:00;02", TimecodeNotation::Smpte},
    FormatRow{"smpte_nondrop29", 6, 1800, "00:01:00:00", TimecodeNotation::Smpte},
    FormatRow{"drop59_reference", 10, 1084319, "05:01:30.03"},
    FormatRow{"smpte_drop59", 10, 3600, "00:01:00;04", TimecodeNotation::Smpte},
    FormatRow{"fifty_one_hour", 8, 180000, "01:00:00.00"},
    FormatRow{"nondrop47_counts_48", 11, 172800, "01:00:00.00"}),
    rowName<FormatRow>);
// clang-format on

struct BeautifyRow {
    const char* name;
    int code;
    const char* typed;
    const char* expected;
    TimecodeNotation notation = TimecodeNotation::Classic;
};

class BeautifyExpression : public testing::TestWithParam<BeautifyRow> {};

TEST_P(BeautifyExpression, NormalisesTimestamps) {
    Calc calc;
    calc.setFps(GetParam().code);
    calc.setTimecodeNotation(GetParam().notation);
    EXPECT_EQ(calc.beautifyExpression(GetParam().typed), GetParam().expected);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Examples, BeautifyExpression, testing::Values(
    BeautifyRow{"already_normal", 1, "01:00:10.12|25", "01:00:10.12|25"},
    BeautifyRow{"adds_current_suffix", 1, "1:0:5", "01:00:05.00|25"},
    BeautifyRow{"keeps_typed_suffix", 1, "1:2:3.4|23n", "01:02:03.04|23n"},
    BeautifyRow{"empty_hour_and_minute", 1, "::5", "00:00:05.00|25"},
    BeautifyRow{"single_colon_with_frames_untouched", 1, "0:30.00", "0:30.00"},
    BeautifyRow{"single_colon_untouched", 1, "12:34", "12:34"},
    BeautifyRow{"short_form", 0, "0123", "00:00:01.23|24"},
    BeautifyRow{"short_form_with_suffix", 1, "0123|29d", "00:00:01.23|29d"},
    BeautifyRow{"short_form_odd_suffix_copied", 1, "0123|2", "00:00:01.23|2"},
    BeautifyRow{"short_form_eight_digits", 1, "012345678", "12:34:56.78|25"},
    BeautifyRow{"expression_without_spaces", 1, "01:00:00.00 + 0100 * 2", "01:00:00.00|25+00:00:01.00|25*2"},
    BeautifyRow{"plain_numbers_stay", 1, "100+0.5", "100+0.5"},
    BeautifyRow{"values_not_carried", 1, "0:0:75", "00:00:75.00|25"},
    BeautifyRow{"leading_zeros_vanish", 1, "0001:00:00.00", "01:00:00.00|25"},
    BeautifyRow{"tabs_are_kept", 1, "1\t+ 2", "1\t+2"},
    BeautifyRow{"smpte_out", 1, "1:0:5 + 0100", "01:00:05:00|25+00:00:01:00|25", TimecodeNotation::Smpte},
    BeautifyRow{"smpte_drop_by_suffix", 1, "01;00;00;00|29d*2", "01:00:00;00|29d*2", TimecodeNotation::Smpte},
    BeautifyRow{"smpte_drop_by_code", 3, "0123", "00:00:01;23|23d", TimecodeNotation::Smpte},
    BeautifyRow{"hd_suffixes_kept", 8, "1:2:3.4|48+0:0:1.2|59d*2-0123|47n+1:0:0.0|59n", "01:02:03.04|48+00:00:01.02|59d*2-00:00:01.23|47n+01:00:00.00|59n"},
    BeautifyRow{"smpte_drop59_suffix", 8, "00:01:00:04|59d+0:0:1.2|60", "00:01:00;04|59d+00:00:01:02|60", TimecodeNotation::Smpte}),
    rowName<BeautifyRow>);
// clang-format on

TEST(BeautifyTimestamp, SuffixFollowsTheCurrentCode) {
    const char* suffixes[] = {"24", "25", "30", "23d", "29d", "23n", "29n",
                              "48", "50", "60", "59d", "47n", "59n"};
    Calc calc;
    for (int code = 0; code < 13; ++code) {
        calc.setFps(code);
        EXPECT_EQ(calc.beautifyTimestampString("1:2:3"),
                  std::string("01:02:03.00|") + suffixes[code]);
    }
}

}  // namespace
