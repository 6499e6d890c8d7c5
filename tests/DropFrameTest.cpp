#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

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

// Real frame count and drop frame count agree at each boundary, both ways.
TEST_P(DropFrameReference, ConvertsBothWays) {
    const DropRow& row = GetParam();
    const auto toDrop = row.variant == 29 ? Calc::dropFCfrom29realFC : Calc::dropFCfrom23realFC;
    const auto toReal = row.variant == 29 ? Calc::realFCfrom29dropFC : Calc::realFCfrom23dropFC;
    EXPECT_EQ(toDrop(row.real), row.drop);
    EXPECT_EQ(toReal(row.drop), row.real);
}

INSTANTIATE_TEST_SUITE_P(Boundaries, DropFrameReference,
                         testing::Values(DropRow{"v29_last_frame_of_minute_0", 29, 1799, 1799},
                                         DropRow{"v29_first_frame_of_minute_1", 29, 1800, 1802},
                                         DropRow{"v29_end_of_first_block", 29, 17981, 17999},
                                         DropRow{"v29_ten_minutes", 29, 17982, 18000},
                                         DropRow{"v29_one_hour", 29, 107892, 108000},
                                         DropRow{"v23_last_frame_of_minute_0", 23, 1439, 1439},
                                         DropRow{"v23_first_frame_of_minute_1", 23, 1440, 1442},
                                         DropRow{"v23_ten_minutes", 23, 14382, 14400},
                                         DropRow{"v23_one_hour", 23, 86292, 86400}),
                         rowName<DropRow>);

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

INSTANTIATE_TEST_SUITE_P(
    SkippedLabelsAndRounding, DropFrameOneWay,
    testing::Values(OneWayRow{"v29_skipped_label_00", Calc::realFCfrom29dropFC, 1800, 1799},
                    OneWayRow{"v29_skipped_label_01", Calc::realFCfrom29dropFC, 1801, 1799},
                    OneWayRow{"v29_first_label_after_skip", Calc::realFCfrom29dropFC, 1802, 1800},
                    OneWayRow{"v23_skipped_label_00", Calc::realFCfrom23dropFC, 1440, 1439},
                    OneWayRow{"v23_skipped_label_01", Calc::realFCfrom23dropFC, 1441, 1439},
                    OneWayRow{"v23_first_label_after_skip", Calc::realFCfrom23dropFC, 1442, 1440},
                    OneWayRow{"half_rounds_up", Calc::dropFCfrom29realFC, 1799.5, 1802},
                    OneWayRow{"below_half_rounds_down", Calc::dropFCfrom29realFC, 1799.49, 1799},
                    OneWayRow{"drop_half_rounds_up", Calc::realFCfrom29dropFC, 1801.5, 1800},
                    OneWayRow{"beyond_32_bits", Calc::dropFCfrom29realFC, 3000000000.0,
                              3003003004.0}),
    rowName<OneWayRow>);

TEST(DropFrame, RoundTripsEveryWholeFrameOfBothVariants) {
    for (int x = 0; x <= 400000; ++x) {
        const double real = x;
        ASSERT_EQ(Calc::realFCfrom29dropFC(Calc::dropFCfrom29realFC(real)), real) << "29 at " << x;
        ASSERT_EQ(Calc::realFCfrom23dropFC(Calc::dropFCfrom23realFC(real)), real) << "23 at " << x;
    }
}

TEST(DropFrame, NeverYieldsASkippedLabel) {
    for (int x = 0; x <= 400000; ++x) {
        const auto label29 = static_cast<std::int64_t>(Calc::dropFCfrom29realFC(x));
        const auto label23 = static_cast<std::int64_t>(Calc::dropFCfrom23realFC(x));
        const bool skipped29 = label29 % 1800 < 2 && (label29 / 1800) % 10 != 0;
        const bool skipped23 = label23 % 1440 < 2 && (label23 / 1440) % 10 != 0;
        ASSERT_FALSE(skipped29) << x;
        ASSERT_FALSE(skipped23) << x;
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

TEST(FrameRate, NewEngineRunsAt24) {
    const Calc calc;
    EXPECT_EQ(calc.fps(), vantrel::DisplayState24fps);
    EXPECT_EQ(calc.framerate(), 24.0);
}

TEST(FrameRate, SetFpsStoresTheRateOfEachCode) {
    const double expected[] = {24.0, 25.0, 30.0, 24.0, 30.0, 23.97000000000166, 29.97};
    Calc calc;
    for (int code = 0; code < 7; ++code) {
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
    calc.setFps(7);
    EXPECT_EQ(calc.fps(), 7);
    EXPECT_EQ(calc.framerate(), 29.97);
}

}  // namespace
