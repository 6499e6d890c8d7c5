#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "DisplayState.h"

namespace vantrel {

/// The real rate of the two 23.97 codes. Not the double nearest to 23.97 but 468 units in the last
/// place above it (bits 4037F851EB85208C); used for both the rate and the divisor of 23.97 reads.
inline constexpr double kRate23_97 = 23.97000000000166;
inline constexpr double kRate29_97 = 29.97;
inline constexpr double kRate47_952 = 47.952;
inline constexpr double kRate59_94 = 59.94;
// The high frame rates slowed by 1.001 take their exact rational rates.
inline constexpr double kRate95_904 = 96000.0 / 1001.0;
inline constexpr double kRate119_88 = 120000.0 / 1001.0;

/// Drop-frame counting skips labels at the start of every minute except every tenth: 00 and 01
/// at 23.976 and 29.97, 00 to 03 at 59.94, 00 to 07 at 119.88.
enum class DropFrame { None, Variant23, Variant29, Variant59, Variant119 };

/// A rate as the exact fraction editing systems use: 24000/1001 for 23.976.
struct ExactRate {
    std::int64_t numerator;
    std::int64_t denominator;
    constexpr double value() const {
        return static_cast<double>(numerator) / static_cast<double>(denominator);
    }
};

/// Everything a frame-rate code brings: its suffix text ("|25"), the framerate that setFps()
/// stores, the nominal rate that timestamps are split with, the real rate by which the PT reading
/// turns a suffixed timestamp into time, its drop-frame counting, and its exact rate, which the
/// unit displays always use and the PT reading uses when asked to.
struct FrameRate {
    int code;
    std::string_view suffix;
    double framerate;
    int nominal;
    double realRate;
    DropFrame dropFrame;
    ExactRate exact;
};

inline constexpr std::array<FrameRate, 20> kFrameRates{{
    {DisplayState24fps, "24", 24.0, 24, 24.0, DropFrame::None, {24, 1}},
    {DisplayState25fps, "25", 25.0, 25, 25.0, DropFrame::None, {25, 1}},
    {DisplayState30fps, "30", 30.0, 30, 30.0, DropFrame::None, {30, 1}},
    {DisplayState23drop, "23d", 24.0, 24, kRate23_97, DropFrame::Variant23, {24000, 1001}},
    {DisplayState29drop, "29d", 30.0, 30, kRate29_97, DropFrame::Variant29, {30000, 1001}},
    {DisplayState23nondrop, "23n", kRate23_97, 24, kRate23_97, DropFrame::None, {24000, 1001}},
    {DisplayState29nondrop, "29n", kRate29_97, 30, kRate29_97, DropFrame::None, {30000, 1001}},
    {DisplayState48fps, "48", 48.0, 48, 48.0, DropFrame::None, {48, 1}},
    {DisplayState50fps, "50", 50.0, 50, 50.0, DropFrame::None, {50, 1}},
    {DisplayState60fps, "60", 60.0, 60, 60.0, DropFrame::None, {60, 1}},
    {DisplayState59drop, "59d", 60.0, 60, kRate59_94, DropFrame::Variant59, {60000, 1001}},
    {DisplayState47nondrop, "47n", kRate47_952, 48, kRate47_952, DropFrame::None, {48000, 1001}},
    {DisplayState59nondrop, "59n", kRate59_94, 60, kRate59_94, DropFrame::None, {60000, 1001}},
    {DisplayState72fps, "72", 72.0, 72, 72.0, DropFrame::None, {72, 1}},
    {DisplayState96fps, "96", 96.0, 96, 96.0, DropFrame::None, {96, 1}},
    {DisplayState95nondrop, "95n", kRate95_904, 96, kRate95_904, DropFrame::None, {96000, 1001}},
    {DisplayState100fps, "100", 100.0, 100, 100.0, DropFrame::None, {100, 1}},
    {DisplayState119nondrop,
     "119n",
     kRate119_88,
     120,
     kRate119_88,
     DropFrame::None,
     {120000, 1001}},
    {DisplayState119drop, "119d", 120.0, 120, kRate119_88, DropFrame::Variant119, {120000, 1001}},
    {DisplayState120fps, "120", 120.0, 120, 120.0, DropFrame::None, {120, 1}},
}};

/// The seven classic codes come first, 0 to 6.
inline constexpr int kClassicRateCount = 7;

/// Frame labels reach 100 only at the rates of 120 labels a second; only there is the frame field
/// of a timecode three digits long, so that every other rate reads and writes what it always did.
constexpr int frameDigits(const FrameRate& rate) {
    return rate.nominal > 100 ? 3 : 2;
}

/// The row of a code, or nullptr for a value that is not a frame-rate code.
constexpr const FrameRate* frameRateForCode(int code) {
    for (const auto& rate : kFrameRates) {
        if (rate.code == code) return &rate;
    }
    return nullptr;
}

/// The row whose suffix text equals the text exactly, or nullptr.
constexpr const FrameRate* frameRateForSuffix(std::string_view suffix) {
    for (const auto& rate : kFrameRates) {
        if (rate.suffix == suffix) return &rate;
    }
    return nullptr;
}

}  // namespace vantrel
