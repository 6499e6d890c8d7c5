#include "SideCalculators.h"

#include <array>
#include <cmath>

#include "CaptionTables.h"
#include "FloatNarrowing.h"
#include "NumberText.h"

namespace vantrel::side_calculators {

namespace {

constexpr std::array<double, 7> kPixelsPerImage{414720,  378000,   2073600, 1048576,
                                                4194304, 16777216, 37748736};
// Only the square film-scan formats (1K to 6K) are cut down to an aspect ratio. The divisors are
// the rounded ratios the figures have always been computed with, not 4/3 and 16/9.
constexpr int kFirstCroppedResolution = 3;
constexpr std::array<double, 4> kAspectDivisors{1.333333, 1.777777, 1.85, 2.35};
constexpr std::array<double, 8> kBytesPerSecond{8000,     200000,   2000000,   5000000,
                                                10000000, 30000000, 150000000, 300000000};
// Headers, padding and file system overhead on top of the raw image data.
constexpr double kContainerOverhead = 1.07;

struct Unit {
    double below;
    double divisor;
    int decimals;
    const char* name;
};

constexpr std::array<Unit, 5> kStorageUnits{{{1e6, 1e3, 0, "kB"},
                                             {1e9, 1e6, 1, "MB"},
                                             {1e12, 1e9, 1, "GB"},
                                             {1e15, 1e12, 1, "TB"},
                                             {1e18, 1e15, 1, "PB"}}};

constexpr std::array<Unit, 6> kDurationUnits{{{10, 1, 2, "sec"},
                                              {60, 1, 1, "sec"},
                                              {3600, 60, 1, "min"},
                                              {86400, 3600, 1, "h"},
                                              {604800, 86400, 1, "d"},
                                              {604800000, 604800, 1, "wk"}}};

// The first unit whose bound the value stays below; a value past them all, NaN included, is
// shown as the overflow sign alone.
template <std::size_t Count>
std::string withUnit(double value, const std::array<Unit, Count>& ladder) {
    for (const Unit& unit : ladder) {
        if (value < unit.below) {
            return number_text::fixed(value / unit.divisor, unit.decimals) + " " + unit.name;
        }
    }
    return " ∞";
}

template <typename Table>
bool inTable(const Table& table, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < table.size();
}

template <typename Table>
auto at(const Table& table, int index) {
    return table[static_cast<std::size_t>(index)];
}

// A caption for the log; an index from a damaged preferences file has none.
template <typename Table>
std::string caption(const Table& table, int index) {
    return inTable(table, index) ? at(table, index) : "";
}

struct Gauge {
    double lengthPerFrame;
    bool givenInFeet;
};

constexpr std::array<Gauge, 6> kGauges{{{0.0125, true},
                                        {0.025, true},
                                        {0.01538461, false},
                                        {0.046875, true},
                                        {0.0625, true},
                                        {1.0 / 42.0, false}}};
// The foot the film lengths have always been converted with, not the international 3.2808.
constexpr double kFeetPerMetre = 3.249956839979;
constexpr float kLongestFilm = 999999.0f;
constexpr int kFeet = 1;

}  // namespace

std::string storageText(double bytes) {
    return withUnit(bytes, kStorageUnits);
}

std::string durationText(double seconds) {
    return withUnit(seconds, kDurationUnits);
}

DiskFigures diskSpaceAndTransferTime(double frames, const DiskChoice& choice) {
    double pixels =
        inTable(kPixelsPerImage, choice.resolution) ? at(kPixelsPerImage, choice.resolution) : 0.0;
    if (choice.resolution >= kFirstCroppedResolution &&
        inTable(kPixelsPerImage, choice.resolution) &&
        inTable(kAspectDivisors, choice.aspectRatio)) {
        pixels /= at(kAspectDivisors, choice.aspectRatio);
    }
    const double bytesPerPixel = inTable(captions::kBytesPerPixel, choice.bitDepth)
                                     ? at(captions::kBytesPerPixel, choice.bitDepth)
                                     : 0.0;
    const double frameSize = bytesPerPixel * pixels;
    const double bytes = (frameSize * kContainerOverhead) * frames;
    const double seconds = inTable(kBytesPerSecond, choice.transferSpeed)
                               ? bytes / at(kBytesPerSecond, choice.transferSpeed)
                               : 0.0;
    return {storageText(bytes), durationText(seconds)};
}

std::string filmLength(double wide, int film, int system) {
    if (!inTable(kGauges, film)) return "∞";
    const Gauge& gauge = at(kGauges, film);
    const double metres = gauge.givenInFeet ? wide * gauge.lengthPerFrame / kFeetPerMetre
                                            : wide * gauge.lengthPerFrame;
    float length = narrowedToFloat(metres);
    if (system == kFeet) length = narrowedToFloat(static_cast<double>(length) * kFeetPerMetre);
    if (length > -kLongestFilm && length < kLongestFilm) {
        return number_text::fixed(length, 2) + " " + (system == kFeet ? "ft" : "m");
    }
    // NaN frames have no length; like the disk space, they show the overflow sign.
    return length <= -kLongestFilm ? "-∞" : "∞";
}

std::string diskSpaceLogEntry(const std::string& frames, const DiskFigures& figures,
                              const DiskChoice& choice) {
    std::string entry = frames + " frame(s) approximate\n     " + figures.diskSpace + " as " +
                        caption(captions::kBitDepth, choice.bitDepth) + ", " +
                        caption(captions::kResolution, choice.resolution);
    // PAL and NTSC have one fixed picture shape; every other format names its ratio.
    if (choice.resolution != 0 && choice.resolution != 1) {
        entry += ", " + caption(captions::kAspectRatio, choice.aspectRatio);
    }
    return entry + "\n     " + figures.transferTime + " over " +
           caption(captions::kTransferSpeed, choice.transferSpeed) + "\n";
}

std::string filmLengthLogEntry(const std::string& frames, const std::string& length, int film) {
    return frames + " frame(s) approximate\n     " + length + " as " +
           caption(captions::kFilm, film) + "\n";
}

}  // namespace vantrel::side_calculators
