#pragma once

#include <array>
#include <string_view>

#include "DisplayState.h"

namespace vantrel {

/// The real rate of the two 23.97 codes. Not the double nearest to 23.97 but 468 units in the last
/// place above it (bits 4037F851EB85208C); used for both the rate and the divisor of 23.97 reads.
inline constexpr double kRate23_97 = 23.97000000000166;
inline constexpr double kRate29_97 = 29.97;
inline constexpr double kRate47_952 = 47.952;
inline constexpr double kRate59_94 = 59.94;

/// Drop-frame counting skips labels at the start of every minute except every tenth: 00 and 01
/// at 23.976 and 29.97, 00 to 03 at 59.94.
enum class DropFrame { None, Variant23, Variant29, Variant59 };

/// Everything a frame-rate code brings: its suffix text ("|25"), the framerate that setFps()
/// stores, the nominal rate that timestamps are split with, the real rate by which the PT reading
/// turns a suffixed timestamp into time, and its drop-frame counting.
struct FrameRate {
    int code;
    std::string_view suffix;
    double framerate;
    int nominal;
    double realRate;
    DropFrame dropFrame;
};

inline constexpr std::array<FrameRate, 13> kFrameRates{{
    {DisplayState24fps, "24", 24.0, 24, 24.0, DropFrame::None},
    {DisplayState25fps, "25", 25.0, 25, 25.0, DropFrame::None},
    {DisplayState30fps, "30", 30.0, 30, 30.0, DropFrame::None},
    {DisplayState23drop, "23d", 24.0, 24, kRate23_97, DropFrame::Variant23},
    {DisplayState29drop, "29d", 30.0, 30, kRate29_97, DropFrame::Variant29},
    {DisplayState23nondrop, "23n", kRate23_97, 24, kRate23_97, DropFrame::None},
    {DisplayState29nondrop, "29n", kRate29_97, 30, kRate29_97, DropFrame::None},
    {DisplayState48fps, "48", 48.0, 48, 48.0, DropFrame::None},
    {DisplayState50fps, "50", 50.0, 50, 50.0, DropFrame::None},
    {DisplayState60fps, "60", 60.0, 60, 60.0, DropFrame::None},
    {DisplayState59drop, "59d", 60.0, 60, kRate59_94, DropFrame::Variant59},
    {DisplayState47nondrop, "47n", kRate47_952, 48, kRate47_952, DropFrame::None},
    {DisplayState59nondrop, "59n", kRate59_94, 60, kRate59_94, DropFrame::None},
}};

/// The row of a code, or nullptr for a value that is not one of the thirteen codes.
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
