// Calc: evaluating expressions by walking the grammar's capture tree with a value stack, eagerly
// (the whole text must match) and lazily (the first match anywhere, while the user types).

#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "Calc.h"
#include "FloatNarrowing.h"
#include "FrameRate.h"
#include "NumberText.h"

namespace vantrel {

namespace {

using Reduction = void (Calc::*)(const Capture&);

// Each history group of the grammar names the reduction that runs when the walk leaves it.
constexpr std::array<std::pair<std::string_view, Reduction>, 12> kReductions{{
    {"z2", &Calc::reduce_z2},
    {"ts1PT", &Calc::reduce_ts1PT},
    {"ts2PT", &Calc::reduce_ts2PT},
    {"ts1PF", &Calc::reduce_ts1PF},
    {"ts2PF", &Calc::reduce_ts2PF},
    {"tss1", &Calc::reduce_tss1},
    {"tss2", &Calc::reduce_tss2},
    {"tsm1", &Calc::reduce_tsm1},
    {"tsm2", &Calc::reduce_tsm2},
    {"tsm3", &Calc::reduce_tsm3},
    {"zm1", &Calc::reduce_zm1},
    {"zm2", &Calc::reduce_zm2},
}};

// Display bounds in frames: beyond them a result shows "∞" or "-∞".
constexpr double kTimeBound = 86400750.0;
constexpr double kNumberBound = 999999999.0;
constexpr double kLazyNumberBound = 9999999999.0;
constexpr float kFilmUpperBound = 52000000.0f;
constexpr float kFilmLowerBound = -5200004.0f;
constexpr double kMetresPerFrame = 0.01923075;

}  // namespace

void Calc::push(double value) {
    _stack.push_back(value);
}

std::optional<double> Calc::pop() {
    if (_stack.empty()) return std::nullopt;
    const double value = _stack.back();
    _stack.pop_back();
    return value;
}

void Calc::visitAtFirstCapture(const Capture&) {}

void Calc::visitAtLastCapture(const Capture& capture) {
    std::string_view group = capture.groupName;
    // One match serves both readings: in the PF reading the timestamp groups are read under the
    // names the PF copy of the grammar gives them.
    if (m_walkFlavour == Flavour::PF) {
        if (group == "ts1PT") group = "ts1PF";
        if (group == "ts2PT") group = "ts2PF";
    }
    for (const auto& [name, reduction] : kReductions) {
        if (name == group) {
            (this->*reduction)(capture);
            return;
        }
    }
}

// A number leaf is read when it is pushed rather than when it is consumed: the value is the same.
void Calc::reduce_z2(const Capture& capture) {
    push(number_text::leadingNumber(capture.text));
}

void Calc::reduce_ts1PT(const Capture& capture) {
    push(framecountPTFromShortString(capture.text));
}

void Calc::reduce_ts2PT(const Capture& capture) {
    push(framecountPTFromString(capture.text));
}

void Calc::reduce_ts1PF(const Capture& capture) {
    push(framecountPFFromShortString(capture.text));
}

void Calc::reduce_ts2PF(const Capture& capture) {
    push(framecountPFFromString(capture.text));
}

template <typename Operation>
void Calc::reduceBinary(Operation operation) {
    const double b = pop().value_or(0.0);
    const double a = pop().value_or(0.0);
    push(operation(a, b));
}

void Calc::reduce_tss1(const Capture&) {
    reduceBinary(std::plus<>());
}
void Calc::reduce_tss2(const Capture&) {
    reduceBinary(std::minus<>());
}
void Calc::reduce_tsm1(const Capture&) {
    reduceBinary(std::multiplies<>());
}
void Calc::reduce_tsm2(const Capture&) {
    reduceBinary(std::multiplies<>());
}
void Calc::reduce_tsm3(const Capture&) {
    reduceBinary(std::divides<>());
}
void Calc::reduce_zm1(const Capture&) {
    reduceBinary(std::multiplies<>());
}
void Calc::reduce_zm2(const Capture&) {
    reduceBinary(std::divides<>());
}

std::optional<double> Calc::evalToFrames(std::string_view typed, Flavour flavour, Extent extent) {
    const auto& match = m_lastMatch.of(typed, extent == Extent::WholeText, frameField());
    if (!match) return std::nullopt;
    if (extent == Extent::WholeText && match->range().length != typed.size()) return std::nullopt;
    _stack.clear();
    m_walkFlavour = flavour;
    match->acceptVisitor(*this);
    const auto value = pop();
    _stack.clear();
    return value;
}

// 0/0 (as in 00/(1-1)) has no value: it passes both bound tests and every display mode shows
// "NaN" for it rather than a made-up number.
std::string Calc::resultText(double wide, int displayMode, Extent extent) const {
    if (std::isnan(wide)) return "NaN";
    if (displayMode == DisplayStateTime || displayMode == DisplayStateDiskSpace) {
        // On the 24-hour clock every finite count has a time of day.
        const double shown = std::isfinite(wide) ? onTheClock(wide) : wide;
        if (shown > kTimeBound) return "∞";
        if (shown < -kTimeBound) return "-∞";
        return stringFromFramecount(shown);
    }
    if (displayMode == DisplayStateFilmLength) {
        const float value = narrowedToFloat(wide);
        if (value > kFilmUpperBound) return "∞";
        if (value < kFilmLowerBound) return "-∞";
        return number_text::fixed(wide * kMetresPerFrame, 2) + " m";
    }
    const double bound = extent == Extent::WholeText ? kNumberBound : kLazyNumberBound;
    if (wide > bound) return "∞";
    if (wide < -bound) return "-∞";
    return number_text::fixed(wide, 0);
}

std::optional<std::string> Calc::evalToText(std::string_view expression, Flavour flavour,
                                            Extent extent, int displayMode) {
    const auto frames = evalToFrames(expression, flavour, extent);
    if (!frames) return std::nullopt;
    const double value = keptResult(*frames);
    (flavour == Flavour::PT ? m_cachedResultPT : m_cachedResultPF) = narrowedToFloat(*frames);
    (flavour == Flavour::PT ? m_cachedFramesPT : m_cachedFramesPF) = value;
    return resultText(value, displayMode, extent);
}

double Calc::keptResult(double frames) const {
    const FrameRate* rate = frameRateForCode(m_fps);
    const bool classic = !rate || rate->code < kClassicRateCount;
    return classic ? narrowedToFloat(frames) : frames;
}

double Calc::onTheClock(double frames) const {
    if (!m_wrapsAt24Hours || !frameRateForCode(m_fps)) return frames;
    const double day = framesPerDay(m_fps);
    // Whole frames, so that the fraction a frame count may carry cannot round up to 24 hours.
    double wrapped = std::fmod(std::floor(frames + 0.5), day);
    if (wrapped < 0) wrapped += day;
    return wrapped;
}

double Calc::framesPerDay(int code) {
    const FrameRate* rate = frameRateForCode(code);
    return rate ? realFCfromDropFC(86400.0 * rate->nominal, code) : 0.0;
}

std::optional<double> Calc::evalPTToFrames(std::string_view expression) {
    return evalToFrames(expression, Flavour::PT, Extent::WholeText);
}

std::optional<double> Calc::evalPFToFrames(std::string_view expression) {
    return evalToFrames(expression, Flavour::PF, Extent::WholeText);
}

std::optional<std::string> Calc::evalPT(std::string_view expression, int displayMode) {
    return evalToText(expression, Flavour::PT, Extent::WholeText, displayMode);
}

std::optional<std::string> Calc::evalPF(std::string_view expression, int displayMode) {
    return evalToText(expression, Flavour::PF, Extent::WholeText, displayMode);
}

std::optional<double> Calc::lazyevalPTToFrames(std::string_view expression) {
    return evalToFrames(expression, Flavour::PT, Extent::FirstMatch);
}

std::optional<double> Calc::lazyevalPFToFrames(std::string_view expression) {
    return evalToFrames(expression, Flavour::PF, Extent::FirstMatch);
}

std::optional<std::string> Calc::lazyevalPT(std::string_view expression, int displayMode) {
    return evalToText(expression, Flavour::PT, Extent::FirstMatch, displayMode);
}

std::optional<std::string> Calc::lazyevalPF(std::string_view expression, int displayMode) {
    return evalToText(expression, Flavour::PF, Extent::FirstMatch, displayMode);
}

// The grammar reads the classic form of the input, which has the input's length, so the matched
// range cuts the text as typed, SMPTE separators and all.
std::vector<ColouredSpan> Calc::colorizeLazyEvaluatedString(std::string_view input) const {
    std::vector<ColouredSpan> spans;
    const auto addSpan = [&spans](std::string_view text, SpanColour colour) {
        if (!text.empty()) spans.push_back({std::string(text), colour});
    };
    const auto& match = m_lastMatch.of(input, false, frameField());
    if (!match) {
        addSpan(input, SpanColour::Red);
        return spans;
    }
    const TextRange range = match->range();
    addSpan(input.substr(0, range.location), SpanColour::Red);
    addSpan(input.substr(range.location, range.length), SpanColour::Black);
    addSpan(input.substr(range.location + range.length), SpanColour::Red);
    return spans;
}

}  // namespace vantrel
