#include "Units.h"

#include <cmath>
#include <cstdint>
#include <numeric>

#include "DisplayState.h"
#include "FrameRate.h"
#include "NumberText.h"
#include "UnitReading.h"

namespace vantrel::units {

namespace {

constexpr double kLargestFeet = 9999999.0;
constexpr long double kLargestSamples = 999999999999.0L;
constexpr long double kLargestMilliseconds = 10000.0L * 3600.0L * 1000.0L;
constexpr double kLargestFrames = 1e15;
constexpr double kLargestTicks = 1e18;

// A figure rounded to a whole number on its magnitude, halves upward, written with its sign in
// front, or the overflow sign when the magnitude leaves the range.
template <typename Number, typename Write>
std::string signedFigure(Number value, Number largest, Write write) {
    const bool negative = value < 0;
    const Number whole = std::floor((negative ? -value : value) + Number(0.5));
    if (whole > largest) return negative ? "-∞" : "∞";
    const std::string text = write(whole);
    return negative && whole > 0 ? "-" + text : text;
}

// The code's exact rate; a value that is no code counts at 24 frames a second.
ExactRate exactRateOf(int rateCode) {
    const FrameRate* rate = frameRateForCode(rateCode);
    return rate ? rate->exact : kFrameRates.front().exact;
}

}  // namespace

const Gauge* gaugeNamed(std::string_view name) {
    for (const Gauge& gauge : kGauges) {
        if (gauge.name == name) return &gauge;
    }
    return nullptr;
}

std::string feetAndFrames(double frames, const Gauge& gauge) {
    if (std::isnan(frames)) return "NaN";
    const double framesPerFoot = static_cast<double>(gauge.perfsPerFoot) / gauge.perfsPerFrame;
    return signedFigure(frames, (kLargestFeet + 1.0) * framesPerFoot - 1.0, [&](double whole) {
        const auto frame = static_cast<std::int64_t>(whole);
        const std::int64_t foot = frame * gauge.perfsPerFrame / gauge.perfsPerFoot;
        // The first frame that starts within the foot.
        const std::int64_t first =
            (foot * gauge.perfsPerFoot + gauge.perfsPerFrame - 1) / gauge.perfsPerFrame;
        std::string text = std::to_string(foot) + "+" + number_text::twoDigits(frame - first);
        // Feet of 21, 21 and 22 frames take the places 1, 2 and 3; the first foot is a long one.
        if (gauge.writesPerfOffset) text += "." + std::to_string((foot + 2) % 3 + 1);
        return text;
    });
}

std::string samples(double frames, int rateCode, int sampleRate) {
    if (std::isnan(frames)) return "NaN";
    const ExactRate rate = exactRateOf(rateCode);
    const long double count = static_cast<long double>(frames) * sampleRate * rate.denominator /
                              static_cast<long double>(rate.numerator);
    return signedFigure(count, kLargestSamples, [](long double whole) {
        return std::to_string(static_cast<std::int64_t>(whole));
    });
}

std::string realTime(double frames, int rateCode) {
    if (std::isnan(frames)) return "NaN";
    const ExactRate rate = exactRateOf(rateCode);
    const long double milliseconds = static_cast<long double>(frames) * 1000.0L * rate.denominator /
                                     static_cast<long double>(rate.numerator);
    return signedFigure(std::floor(milliseconds + 0.5L), kLargestMilliseconds - 1.0L,
                        [](long double whole) {
                            const auto ms = static_cast<std::int64_t>(whole);
                            return number_text::twoDigits(ms / 3600000) + ":" +
                                   number_text::twoDigits(ms / 60000 % 60) + ":" +
                                   number_text::twoDigits(ms / 1000 % 60) + "." +
                                   number_text::paddedDigits(ms % 1000, 3);
                        });
}

std::string rationalSeconds(double frames, int rateCode) {
    if (std::isnan(frames)) return "NaN";
    const ExactRate rate = exactRateOf(rateCode);
    return signedFigure(frames, kLargestFrames, [&](double whole) {
        // frames × denominator / numerator seconds, in lowest terms.
        const auto count = static_cast<std::int64_t>(whole);
        const std::int64_t top = count * rate.denominator;
        const std::int64_t divisor = std::gcd(top, rate.numerator);
        const std::int64_t numerator = top / (divisor ? divisor : 1);
        const std::int64_t denominator = rate.numerator / (divisor ? divisor : 1);
        return std::to_string(numerator) +
               (denominator == 1 ? "" : "/" + std::to_string(denominator)) + "s";
    });
}

std::string premiereTicks(double frames, int rateCode) {
    if (std::isnan(frames)) return "NaN";
    const ExactRate rate = exactRateOf(rateCode);
    // Every rate's frame is a whole number of ticks: the tick was chosen for that.
    const std::int64_t ticksPerFrame = kTicksPerSecond / rate.numerator * rate.denominator;
    return signedFigure(frames, kLargestTicks / static_cast<double>(ticksPerFrame),
                        [ticksPerFrame](double whole) {
                            return std::to_string(static_cast<std::int64_t>(whole) * ticksPerFrame);
                        });
}

bool isUnitDisplay(int displayState) {
    return displayState == DisplayStateFeetFrames || displayState == DisplayStateSamples ||
           displayState == DisplayStateRealTime || displayState == DisplayStateRational ||
           displayState == DisplayStateTicks;
}

std::string_view unitMark(int displayState) {
    switch (displayState) {
        case DisplayStateFeetFrames:
            return "ft";
        case DisplayStateSamples:
            return "smp";
        case DisplayStateRealTime:
            return "rt";
        case DisplayStateTicks:
            return "tk";
        default:
            return {};
    }
}

std::string unitChoiceText(int displayState, const UnitChoice& choice) {
    if (displayState == DisplayStateFeetFrames) return std::string(choice.gauge->name);
    if (displayState != DisplayStateSamples) return {};
    const int kilohertz = choice.sampleRate / 1000;
    const int hundreds = choice.sampleRate % 1000 / 100;
    return std::to_string(kilohertz) + (hundreds ? "." + std::to_string(hundreds) : "") + "kHz";
}

std::optional<std::string> unitText(int displayState, double frames, int rateCode,
                                    const UnitChoice& choice) {
    switch (displayState) {
        case DisplayStateFeetFrames:
            return feetAndFrames(frames, *choice.gauge);
        case DisplayStateSamples:
            return samples(frames, rateCode, choice.sampleRate);
        case DisplayStateRealTime:
            return realTime(frames, rateCode);
        case DisplayStateRational:
            return rationalSeconds(frames, rateCode);
        case DisplayStateTicks:
            return premiereTicks(frames, rateCode);
        default:
            return std::nullopt;
    }
}

std::optional<std::string> evaluated(Calc& calc, std::string_view typed, Flavour flavour, bool lazy,
                                     int displayState, const UnitChoice& choice) {
    const UnitReading reading(typed, calc.fps(), choice);
    const std::string& expression = reading.text();
    const bool unit = isUnitDisplay(displayState);
    const int engineMode = unit ? DisplayStateNumber : displayState;
    const bool pt = flavour == Flavour::PT;
    const auto textReading =
        lazy ? (pt ? &Calc::lazyevalPT : &Calc::lazyevalPF) : (pt ? &Calc::evalPT : &Calc::evalPF);
    auto text = (calc.*textReading)(expression, engineMode);
    if (!text || !unit) return text;
    // Evaluated again, now matched already, for the count before its narrowing to a float.
    const auto framesReading = lazy ? (pt ? &Calc::lazyevalPTToFrames : &Calc::lazyevalPFToFrames)
                                    : (pt ? &Calc::evalPTToFrames : &Calc::evalPFToFrames);
    const auto frames = (calc.*framesReading)(expression);
    return unitText(displayState, frames.value_or(0.0), calc.fps(), choice);
}

}  // namespace vantrel::units
