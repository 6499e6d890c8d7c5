#include "Calc.h"

#include <cmath>
#include <cstdint>

#include "FrameRate.h"

namespace vantrel {

namespace {

// One drop-frame scheme: within every block of ten minutes, the first `dropped` labels of each
// minute are skipped, except in the first minute of the block. Every other figure follows.
struct DropScheme {
    std::int64_t labelsPerMinute;
    std::int64_t dropped;

    constexpr std::int64_t labelsPerTenMinutes() const { return 10 * labelsPerMinute; }
    constexpr std::int64_t realPerMinute() const { return labelsPerMinute - dropped; }
    constexpr std::int64_t droppedPerTenMinutes() const { return 9 * dropped; }
    constexpr std::int64_t realPerTenMinutes() const {
        return labelsPerTenMinutes() - droppedPerTenMinutes();
    }
};

constexpr DropScheme kDrop23{1440, 2};
constexpr DropScheme kDrop29{1800, 2};
constexpr DropScheme kDrop59{3600, 4};
constexpr DropScheme kDrop119{7200, 8};

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
    const std::int64_t blocks = n / scheme.realPerTenMinutes();
    const std::int64_t rest = n % scheme.realPerTenMinutes();
    n += scheme.droppedPerTenMinutes() * blocks;
    if (rest > scheme.dropped) {
        n += scheme.dropped * ((rest - scheme.dropped - 1) / scheme.realPerMinute());
    }
    return static_cast<double>(n - 1);
}

double realFromDrop(double dropCount, const DropScheme& scheme) {
    if (!convertible(dropCount)) return dropCount;
    std::int64_t n = countFromOne(dropCount);
    const std::int64_t blocks = n / scheme.labelsPerTenMinutes();
    const std::int64_t rest = n % scheme.labelsPerTenMinutes();
    n -= scheme.droppedPerTenMinutes() * blocks;
    const std::int64_t intoMinutes = rest - scheme.dropped;
    if (intoMinutes > 0) {
        n -= scheme.dropped * (intoMinutes / scheme.labelsPerMinute);
        // A skipped label reads as the last real frame before it: the minute's last label is
        // followed by `dropped` skipped ones, all but the last of which still need stepping back.
        const std::int64_t intoMinute = intoMinutes % scheme.labelsPerMinute;
        const std::int64_t firstSkipped = scheme.labelsPerMinute - scheme.dropped;
        if (intoMinute > firstSkipped) n -= intoMinute - firstSkipped;
    }
    return static_cast<double>(n - 1);
}

// The drop-frame scheme of a frame-rate code, or nullptr for a code without one.
const DropScheme* schemeOfCode(int code) {
    const FrameRate* rate = frameRateForCode(code);
    if (!rate) return nullptr;
    switch (rate->dropFrame) {
        case DropFrame::Variant23:
            return &kDrop23;
        case DropFrame::Variant29:
            return &kDrop29;
        case DropFrame::Variant59:
            return &kDrop59;
        case DropFrame::Variant119:
            return &kDrop119;
        case DropFrame::None:
            break;
    }
    return nullptr;
}

}  // namespace

Calc::Calc() {
    _stack.reserve(10);
}

void Calc::setFps(int code) {
    m_fps = code;
    if (const FrameRate* rate = frameRateForCode(code)) m_framerate = rate->framerate;
}

FrameField Calc::frameField() const {
    const FrameRate* rate = frameRateForCode(m_fps);
    return rate && frameDigits(*rate) == 3 ? FrameField::ThreeDigits : FrameField::TwoDigits;
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

double Calc::dropFCfrom59realFC(double realFrameCount) {
    return dropFromReal(realFrameCount, kDrop59);
}

double Calc::realFCfrom59dropFC(double dropFrameCount) {
    return realFromDrop(dropFrameCount, kDrop59);
}

double Calc::dropFCfromRealFC(double realFrameCount, int code) {
    const DropScheme* scheme = schemeOfCode(code);
    return scheme ? dropFromReal(realFrameCount, *scheme) : realFrameCount;
}

double Calc::realFCfromDropFC(double dropFrameCount, int code) {
    const DropScheme* scheme = schemeOfCode(code);
    return scheme ? realFromDrop(dropFrameCount, *scheme) : dropFrameCount;
}

}  // namespace vantrel
