#include <gtest/gtest.h>

#include "Calc.h"
#include "TestRows.h"

using namespace vantrel;

namespace {

struct ReadRow {
    const char* name;
    const char* text;
    int code;
    double pt;
    double pf;
};

class TimestampReading : public testing::TestWithParam<ReadRow> {
protected:
    // Short forms start with "0" and carry no colon: they go to the short readers.
    static bool isShortForm(std::string_view text) {
        const auto start = text.find_first_not_of(" \t");
        return text.find(':') == std::string_view::npos && text.substr(start).starts_with('0');
    }
};

TEST_P(TimestampReading, ReadsBothReadings) {
    const ReadRow& row = GetParam();
    Calc calc;
    calc.setFps(row.code);
    const bool shortForm = isShortForm(row.text);
    const double pt = shortForm ? calc.framecountPTFromShortString(row.text)
                                : calc.framecountPTFromString(row.text);
    const double pf = shortForm ? calc.framecountPFFromShortString(row.text)
                                : calc.framecountPFFromString(row.text);
    EXPECT_NEAR(pt, row.pt, 1e-7);
    EXPECT_NEAR(pf, row.pf, 1e-7);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Examples, TimestampReading, testing::Values(
    ReadRow{"suffix_24_at_25", "00:00:01.00|24", 1, 25, 24},
    ReadRow{"no_suffix_at_25", "00:00:01.00", 1, 25, 25},
    ReadRow{"frame_count_own_rate", "123|25", 1, 123, 123},
    ReadRow{"frame_count_at_24", "123|25", 0, 118.08, 123},
    ReadRow{"drop_suffix_at_25", "00:01:00.02|29d", 1, 1800 * 25 / 29.97, 1800},
    ReadRow{"drop_frame_count_at_25", "2000|29d", 1, 1998 * 25 / 29.97, 1998},
    ReadRow{"drop_code_no_suffix", "00:01:00.02", 4, 1800, 1800},
    ReadRow{"drop_suffix_at_drop_code", "00:00:16.20|29d", 4, 501, 500},
    ReadRow{"drop_code_plain", "00:00:16.20", 4, 500, 500},
    ReadRow{"suffix_30_at_29d", "01:00:00.00|30", 4, 107892, 108000},
    ReadRow{"suffix_29d_at_29d", "01:00:00.00|29d", 4, 107892, 107892},
    ReadRow{"suffix_24_at_23n", "01:00:00.00|24", 5, 86292.000000006, 86400},
    ReadRow{"suffix_23n_at_23n", "01:00:00.00|23n", 5, 86400, 86400},
    ReadRow{"minutes_seconds", "1:00", 0, 1440, 1440},
    ReadRow{"seconds_and_frames", "00:10.00", 1, 250, 250},
    ReadRow{"colon_seconds", ":5", 1, 125, 125},
    ReadRow{"worked_example", "01:02:03.04", 1, 93079, 93079},
    ReadRow{"blanks_around", "  01:00:00.00|25 ", 1, 90000, 90000},
    ReadRow{"tab_after_suffix", "01:00:00.00|24\t", 1, 90000, 86400},
    ReadRow{"short_with_suffix", "0123|24", 1, 47 * 25 / 24.0, 47},
    ReadRow{"short_plain", "0123", 1, 48, 48},
    ReadRow{"short_blank_before", " 0123", 1, 48, 48},
    ReadRow{"short_one_hour", "01000000|25", 0, 86400, 90000},
    ReadRow{"short_two_digits", "05", 1, 5, 5},
    ReadRow{"short_drop", "012345678|29d", 4, 1357601, 1357600},
    ReadRow{"no_digits", "::", 1, 0, 0},
    ReadRow{"suffix_50_at_25", "01:00:00.00|50", 1, 90000, 180000},
    ReadRow{"suffix_59d_at_25", "01:00:00.00|59d", 1, 90000, 215784},
    ReadRow{"suffix_47n_at_24", "01:00:00.00|47n", 0, 86486.4864864865, 172800},
    ReadRow{"drop59_minute_at_59d", "00:01:00.04|59d", 10, 3600, 3600},
    ReadRow{"drop59_code_no_suffix", "00:10:00.00", 10, 35964, 35964},
    ReadRow{"suffix_59n_at_60", "00:00:01.00|59n", 9, 60.06006006006, 60}),
    rowName<ReadRow>);
// clang-format on

}  // namespace
