#pragma once

#include <array>
#include <string_view>

#include "DisplayState.h"

namespace vantrel {

/// The real rate of the two 23.97 codes. Not the double nearest to 23.97 but 468 units in the last
/// place above it (bits 4037F851EB85208C); used for both the rate and the divisor of 23.97 reads.
inline constexpr double kRate23_97 = 23.97000000000166;
inline constexpr double kRate29_97 = 29.97;

enum class DropFrame { None, Variant23, Variant29 };

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

inline constexpr std::array<FrameRate, 7> kFrameRates{{
    {DisplayState24fps, "24", 24.0, 24, 24.0, DropFrame::None},
    {DisplayState25fps, "25", 25.0, 25, 25.0, DropFrame::None},
    {DisplayState30fps, "30", 30.0, 30, 30.0, DropFrame::None},
    {DisplayState23drop, "23d", 24.0, 24, kRate23_97, DropFrame::Variant23},
    {DisplayState29drop, "29d", 30.0, 30, kRate29_97, DropFrame::Variant29},
    {DisplayState23nondrop, "23n", kRate23_97, 24, kRate23_97, DropFrame::None},
    {DisplayState29nondrop, "29n", kRate29_97, 30, kRate29_97, DropFrame::None},
}};

/// The row of a code, or nullptr for a value that is not one of the seven codes.
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
