#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "SideCalculators.h"
#include "TestRows.h"

using namespace vantrel::side_calculators;

namespace {

struct DiskRow {
    const char* name;
    float frames;
    DiskChoice choice;  // resolution, aspect ratio, bit depth, transfer speed
    const char* diskSpace;
    const char* transferTime;
};

class DiskSpace : public testing::TestWithParam<DiskRow> {};

TEST_P(DiskSpace, ComputesStorageAndTransferTime) {
    const DiskFigures figures = diskSpaceAndTransferTime(GetParam().frames, GetParam().choice);
    EXPECT_EQ(figures.diskSpace, GetParam().diskSpace);
    EXPECT_EQ(figures.transferTime, GetParam().transferTime);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Examples, DiskSpace, testing::Values(
    DiskRow{"no_frames", 0, {3, 2, 0, 4}, "0 kB", "0.00 sec"},
    DiskRow{"two_k_ten_bit", 1500, {4, 2, 1, 4}, "14.6 GB", "24.3 min"},
    DiskRow{"pal_ignores_aspect_ratio", 25, {0, 3, 6, 0}, "22.2 MB", "46.2 min"},
    DiskRow{"hd_ignores_aspect_ratio", 1, {2, 0, 0, 7}, "6.7 MB", "0.02 sec"},
    DiskRow{"negative_duration", -100, {5, 3, 9, 4}, "-1432310 kB", "-143.23 sec"},
    DiskRow{"separator_row_holds_nothing", 1500, {4, 2, 5, 4}, "0 kB", "0.00 sec"},
    DiskRow{"sixteen_by_nine_divisor", 24, {4, 1, 0, 5}, "181.8 MB", "6.06 sec"},
    DiskRow{"beyond_petabytes", 3e11f, {6, 0, 4, 0}, " ∞", " ∞"},
    DiskRow{"nan_frames", std::numeric_limits<float>::quiet_NaN(), {3, 2, 0, 4}, " ∞", " ∞"},
    DiskRow{"resolution_outside_table", 1500, {9, 2, 0, 4}, "0 kB", "0.00 sec"},
    DiskRow{"aspect_outside_table_divides_nothing", 1, {3, -1, 0, 4}, "3.4 MB", "0.34 sec"},
    DiskRow{"speed_outside_table", 1500, {4, 2, 1, 8}, "14.6 GB", "0.00 sec"},
    DiskRow{"bit_depth_outside_table", 1500, {4, 2, 10, 4}, "0 kB", "0.00 sec"}),
    rowName<DiskRow>);
// clang-format on

struct LadderRow {
    const char* name;
    std::string (*text)(double);
    double value;
    const char* expected;
};

class UnitLadders : public testing::TestWithParam<LadderRow> {};

TEST_P(UnitLadders, ChooseTheFirstUnitBelowItsBound) {
    EXPECT_EQ(GetParam().text(GetParam().value), GetParam().expected);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Boundaries, UnitLadders, testing::Values(
    LadderRow{"one_megabyte", storageText, 1e6, "1.0 MB"},
    LadderRow{"just_below_a_megabyte", storageText, 999999, "1000 kB"},
    LadderRow{"terabytes", storageText, 2.5e12, "2.5 TB"},
    LadderRow{"petabytes", storageText, 9.99e17, "999.0 PB"},
    LadderRow{"exabyte_overflows", storageText, 1e18, " ∞"},
    LadderRow{"ten_seconds", durationText, 10, "10.0 sec"},
    LadderRow{"just_below_ten_seconds", durationText, 9.999, "10.00 sec"},
    LadderRow{"one_minute", durationText, 60, "1.0 min"},
    LadderRow{"hours", durationText, 5400, "1.5 h"},
    LadderRow{"days", durationText, 86400, "1.0 d"},
    LadderRow{"weeks", durationText, 604800, "1.0 wk"},
    LadderRow{"thousand_weeks_overflow", durationText, 604800000, " ∞"}),
    rowName<LadderRow>);
// clang-format on

struct FilmRow {
    const char* name;
    float frames;
    int film;
    int system;
    const char* expected;
};

class FilmLength : public testing::TestWithParam<FilmRow> {};

TEST_P(FilmLength, ComputesTheLengthInTheChosenUnit) {
    EXPECT_EQ(filmLength(GetParam().frames, GetParam().film, GetParam().system),
              GetParam().expected);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Examples, FilmLength, testing::Values(
    FilmRow{"super8_m", 1500, 0, 0, "5.77 m"},
    FilmRow{"sixteen_m", 1500, 1, 0, "11.54 m"},
    FilmRow{"sixteen_2perf_m", 1500, 2, 0, "23.08 m"},
    FilmRow{"thirtyfive_m", 1500, 3, 0, "21.63 m"},
    FilmRow{"thirtyfive_4perf_m", 1500, 4, 0, "28.85 m"},
    FilmRow{"seventy_m", 1500, 5, 0, "35.71 m"},
    FilmRow{"super8_ft", 1500, 0, 1, "18.75 ft"},
    FilmRow{"sixteen_ft", 1500, 1, 1, "37.50 ft"},
    FilmRow{"sixteen_2perf_ft", 1500, 2, 1, "75.00 ft"},
    FilmRow{"thirtyfive_ft", 1500, 3, 1, "70.31 ft"},
    FilmRow{"thirtyfive_4perf_ft", 1500, 4, 1, "93.75 ft"},
    FilmRow{"seventy_ft", 1500, 5, 1, "116.07 ft"},
    FilmRow{"one_second_m", 24, 4, 0, "0.46 m"},
    FilmRow{"one_frame_ft", 1, 0, 1, "0.01 ft"},
    FilmRow{"no_frames", 0, 0, 0, "0.00 m"},
    FilmRow{"negative", -100, 4, 1, "-6.25 ft"},
    FilmRow{"too_long", 1e9f, 4, 0, "∞"},
    FilmRow{"too_long_negative", -1e9f, 4, 0, "-∞"},
    FilmRow{"nan", std::numeric_limits<float>::quiet_NaN(), 4, 0, "∞"},
    FilmRow{"gauge_outside_table", 1500, 6, 0, "∞"}),
    rowName<FilmRow>);
// clang-format on

TEST(LogEntries, DiskSpaceNamesTheFormatAndLink) {
    EXPECT_EQ(diskSpaceLogEntry("25", {"22.2 MB", "46.2 min"}, {0, 3, 6, 0}),
              "25 frame(s) approximate\n     22.2 MB as YUV 4:2:2 8 bit, PAL\n"
              "     46.2 min over Slow Internet - Modem (~8 KByte/sec)\n");
    EXPECT_EQ(diskSpaceLogEntry("2", {"0.8 MB", "0.08 sec"}, {1, 3, 0, 4}),
              "2 frame(s) approximate\n     0.8 MB as RGB 8 bit, NTSC\n"
              "     0.08 sec over 100 MBit Ethernet (~10 MByte/sec)\n");
    EXPECT_EQ(diskSpaceLogEntry("1", {"6.7 MB", "0.02 sec"}, {2, 0, 0, 7}),
              "1 frame(s) approximate\n     6.7 MB as RGB 8 bit, 1920x1080, 1.33:1 (4:3)\n"
              "     0.02 sec over 4 GBit FibreChannel (~300 MByte/sec)\n");
}

}  // namespace
