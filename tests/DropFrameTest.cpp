#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "Calc.h"
#include "TestRows.h"

using vantrel::Calc;

namespace {

struct DropRow {
    const char* name;
    int variant;
    double real;
    double drop;
};

class DropFrameReference : public testing::TestWithParam<DropRow> {};

using Conversion = double (*)(double);

std::pair<Conversion, Conversion> conversionsOf(int variant) {
    if (variant == 59) return {Calc::dropFCfrom59realFC, Calc::realFCfrom59dropFC};
    if (variant == 29) return {Calc::dropFCfrom29realFC, Calc::realFCfrom29dropFC};
    return {Calc::dropFCfrom23realFC, Calc::realFCfrom23dropFC};
}

// Real frame count and drop frame count agree at each boundary, both ways.
TEST_P(DropFrameReference, ConvertsBothWays) {
    const DropRow& row = GetParam();
    const auto [toDrop, toReal] = conversionsOf(row.variant);
    EXPECT_EQ(toDrop(row.real), row.drop);
    EXPECT_EQ(toReal(row.drop), row.real);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Boundaries, DropFrameReference, testing::Values(
    DropRow{"v29_last_frame_of_minute_0", 29, 1799, 1799},
    DropRow{"v29_first_frame_of_minute_1", 29, 1800, 1802},
    DropRow{"v29_end_of_first_block", 29, 17981, 17999},
    DropRow{"v29_ten_minutes", 29, 17982, 18000},
    DropRow{"v29_one_hour", 29, 107892, 108000},
    DropRow{"v23_last_frame_of_minute_0", 23, 1439, 1439},
    DropRow{"v23_first_frame_of_minute_1", 23, 1440, 1442},
    DropRow{"v23_ten_minutes", 23, 14382, 14400},
    DropRow{"v23_one_hour", 23, 86292, 86400},
    DropRow{"v59_last_frame_of_minute_0", 59, 3599, 3599},
    DropRow{"v59_first_frame_of_minute_1", 59, 3600, 3604},
    DropRow{"v59_end_of_first_block", 59, 35963, 35999},
    DropRow{"v59_ten_minutes", 59, 35964, 36000},
    DropRow{"v59_one_hour", 59, 215784, 216000},
    DropRow{"v59_05_01_30_03", 59, 1084319, 1085403}),
    rowName<DropRow>);
// clang-format on

struct OneWayRow {
    const char* name;
    double (*convert)(double);
    double input;
    double expected;
};

class DropFrameOneWay : public testing::TestWithParam<OneWayRow> {};

TEST_P(DropFrameOneWay, Converts) {
    EXPECT_EQ(GetParam().convert(GetParam().input), GetParam().expected);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(SkippedLabelsAndRounding, DropFrameOneWay, testing::Values(
    OneWayRow{"v29_skipped_label_00", Calc::realFCfrom29dropFC, 1800, 1799},
    OneWayRow{"v29_skipped_label_01", Calc::realFCfrom29dropFC, 1801, 1799},
    OneWayRow{"v29_first_label_after_skip", Calc::realFCfrom29dropFC, 1802, 1800},
    OneWayRow{"v23_skipped_label_00", Calc::realFCfrom23dropFC, 1440, 1439},
    OneWayRow{"v23_skipped_label_01", Calc::realFCfrom23dropFC, 1441, 1439},
    OneWayRow{"v23_first_label_after_skip", Calc::realFCfrom23dropFC, 1442, 1440},
    OneWayRow{"v59_skipped_label_00", Calc::realFCfrom59dropFC, 3600, 3599},
    OneWayRow{"v59_skipped_label_03", Calc::realFCfrom59dropFC, 3603, 3599},
    OneWayRow{"v59_first_label_after_skip", Calc::realFCfrom59dropFC, 3604, 3600},
    OneWayRow{"v59_skipped_in_minute_2", Calc::realFCfrom59dropFC, 7202, 7195},
    OneWayRow{"half_rounds_up", Calc::dropFCfrom29realFC, 1799.5, 1802},
    OneWayRow{"below_half_rounds_down", Calc::dropFCfrom29realFC, 1799.49, 1799},
    OneWayRow{"drop_half_rounds_up", Calc::realFCfrom29dropFC, 1801.5, 1800},
    OneWayRow{"beyond_32_bits", Calc::dropFCfrom29realFC, 3000000000.0, 3003003004.0}),
    rowName<OneWayRow>);
// clang-format on

// Over a whole day at 59.94: every real frame gets a label that is never a skipped one, the
// labels climb by one frame at a time, and reading the label back gives the frame.
TEST(DropFrame, RoundTripsEveryWholeFrameOfTheFirstDay) {
    struct Variant {
        double (*toDrop)(double);
        double (*toReal)(double);
        std::int64_t labelsPerMinute, dropped;
    };
    const Variant variants[] = {{Calc::dropFCfrom23realFC, Calc::realFCfrom23dropFC, 1440, 2},
                                {Calc::dropFCfrom29realFC, Calc::realFCfrom29dropFC, 1800, 2},
                                {Calc::dropFCfrom59realFC, Calc::realFCfrom59dropFC, 3600, 4}};
    for (const Variant& v : variants) {
        const int day = static_cast<int>(24 * 600 * (10 * v.labelsPerMinute - 9 * v.dropped) / 10);
        for (int x = 0; x < day; ++x) {
            const auto label = static_cast<std::int64_t>(v.toDrop(x));
            const std::int64_t minute = label / v.labelsPerMinute;
            ASSERT_FALSE(label % v.labelsPerMinute < v.dropped && minute % 10 != 0) << x;
            ASSERT_EQ(v.toReal(static_cast<double>(label)), x) << v.labelsPerMinute << " at " << x;
        }
    }
}

TEST(DropFrame, PassesValuesWithoutAWholeFrameThrough) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(std::isnan(Calc::dropFCfrom29realFC(nan)));
    EXPECT_TRUE(std::isnan(Calc::realFCfrom23dropFC(nan)));
    EXPECT_EQ(Calc::dropFCfrom23realFC(infinity), infinity);
    EXPECT_EQ(Calc::realFCfrom29dropFC(1e300), 1e300);
}

TEST(FrameRate, SetFpsStoresTheRateOfEachCode) {
    const double expected[] = {24.0, 25.0, 30.0, 24.0,   30.0, 23.97000000000166, 29.97, 48.0,
                               50.0, 60.0, 60.0, 47.952, 59.94};
    Calc calc;
    EXPECT_EQ(calc.fps(), vantrel::DisplayState24fps);  // a new engine runs at 24
    EXPECT_EQ(calc.framerate(), 24.0);
    for (int code = 0; code < 13; ++code) {
        calc.setFps(code);
        EXPECT_EQ(calc.fps(), code);
        EXPECT_EQ(calc.framerate(), expected[code]) << "code " << code;
    }
    calc.setFps(vantrel::DisplayState23nondrop);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(calc.framerate()), 0x4037F851EB85208Cu);
}

TEST(FrameRate, UnknownCodeKeepsTheRate) {
    Calc calc;
    calc.setFps(vantrel::DisplayState29nondrop);
    calc.setFps(13);  // the first value after the thirteen codes
    EXPECT_EQ(calc.fps(), 13);
    EXPECT_EQ(calc.framerate(), 29.97);
}

}  // namespace
