#include "Calc.h"

#include <cmath>
#include <cstdint>

#include "FrameRate.h"

namespace vantrel {

namespace {

// Frames per ten-minute block and per dropping minute: real frames (A, B) and labels (C, D).
struct DropScheme {
    std::int64_t realPerTenMinutes;
    std::int64_t realPerMinute;
    std::int64_t labelsPerTenMinutes;
    std::int64_t labelsPerMinute;
};

constexpr DropScheme kDrop29{17982, 1798, 18000, 1800};
constexpr DropScheme kDrop23{14382, 1438, 14400, 1440};

// Counts are whole frames in 64-bit integers. Beyond 2^53 a double no longer holds every whole
// number, and nothing that large is ever displayed, so such counts (and NaN, infinities) are
// passed through instead of being converted out of range.
constexpr double kLargestExactCount = 9007199254740992.0;

bool convertible(double count) {
    return std::fabs(count) < kLargestExactCount;
}

// Rounds to the nearest whole frame, halves upward, and counts from 1.
std::int64_t countFromOne(double count) {
    return static_cast<std::int64_t>(count + 0.5) + 1;
}

double dropFromReal(double realCount, const DropScheme& scheme) {
    if (!convertible(realCount)) return realCount;
    std::int64_t n = countFromOne(realCount);
    const std::int64_t blocks = n / scheme.realPerTenMinutes;
    const std::int64_t rest = n % scheme.realPerTenMinutes;
    n += 18 * blocks;
    if (rest > 2) n += 2 * ((rest - 3) / scheme.realPerMinute);
    return static_cast<double>(n - 1);
}

double realFromDrop(double dropCount, const DropScheme& scheme) {
    if (!convertible(dropCount)) return dropCount;
    std::int64_t n = countFromOne(dropCount);
    const std::int64_t blocks = n / scheme.labelsPerTenMinutes;
    const std::int64_t rest = n % scheme.labelsPerTenMinutes;
    n -= 18 * blocks;
    const std::int64_t intoMinutes = rest - 2;
    if (intoMinutes > 0) {
        n -= 2 * (intoMinutes / scheme.labelsPerMinute);
        // The last label of a minute is followed by two skipped ones: step back onto it.
        if (intoMinutes % scheme.labelsPerMinute == scheme.labelsPerMinute - 1) n -= 1;
    }
    return static_cast<double>(n - 1);
}

}  // namespace

Calc::Calc() {
    _stack.reserve(10);
}

void Calc::setFps(int code) {
    m_fps = code;
    if (const FrameRate* rate = frameRateForCode(code)) m_framerate = rate->framerate;
}

double Calc::dropFCfrom29realFC(double realFrameCount) {
    return dropFromReal(realFrameCount, kDrop29);
}

double Calc::realFCfrom29dropFC(double dropFrameCount) {
    return realFromDrop(dropFrameCount, kDrop29);
}

double Calc::dropFCfrom23realFC(double realFrameCount) {
    return dropFromReal(realFrameCount, kDrop23);
}

double Calc::realFCfrom23dropFC(double dropFrameCount) {
    return realFromDrop(dropFrameCount, kDrop23);
}

}  // namespace vantrel
