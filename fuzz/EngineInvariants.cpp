#include "EngineInvariants.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <type_traits>

#include "ResultTextShape.h"

namespace vantrel::fuzz {

struct EngineInvariants::Reading {
    std::string_view name;
    std::optional<double> (Calc::*eagerFrames)(std::string_view);
    std::optional<double> (Calc::*lazyFrames)(std::string_view);
    std::optional<std::string> (Calc::*eagerText)(std::string_view, int);
    std::optional<std::string> (Calc::*lazyText)(std::string_view, int);
    float (Calc::*cachedResult)() const;
};

namespace {

constexpr std::array<EngineInvariants::Reading, 2> kReadings{{
    {"PT", &Calc::evalPTToFrames, &Calc::lazyevalPTToFrames, &Calc::evalPT, &Calc::lazyevalPT,
     &Calc::cachedResultPT},
    {"PF", &Calc::evalPFToFrames, &Calc::lazyevalPFToFrames, &Calc::evalPF, &Calc::lazyevalPF,
     &Calc::cachedResultPF},
}};

// Two evaluations of one match must agree to the bit; NaN, which equals nothing, agrees with NaN.
template <typename Floating>
bool sameValue(Floating a, Floating b) {
    using Bits = std::conditional_t<sizeof(Floating) == 8, std::uint64_t, std::uint32_t>;
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return std::bit_cast<Bits>(a) == std::bit_cast<Bits>(b);
}

// The cached result is the frame count in single precision; beyond the float range it is the
// infinity of its sign, as IEEE rounding gives it.
float inSinglePrecision(double frames) {
    constexpr double largest = std::numeric_limits<float>::max();
    if (frames > largest) return std::numeric_limits<float>::infinity();
    if (frames < -largest) return -std::numeric_limits<float>::infinity();
    return static_cast<float>(frames);
}

void printHex(std::string_view bytes) {
    for (const char byte : bytes) std::fprintf(stderr, "%02x", static_cast<unsigned char>(byte));
    std::fprintf(stderr, "\n");
}

}  // namespace

EngineInvariants::EngineInvariants(Calc& calc, const FuzzCase& fuzzCase)
    : m_calc(calc), m_case(fuzzCase) {}

void EngineInvariants::check() {
    checkColouring();
    for (const Reading& reading : kReadings) checkReading(reading);
    checkBeautified();
}

void EngineInvariants::checkColouring() {
    m_stage = "colouring";
    const auto spans = m_calc.colorizeLazyEvaluatedString(m_case.expression());
    std::string joined;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        require(!spans[i].text.empty(), "no span is empty");
        require(i == 0 || spans[i].colour != spans[i - 1].colour, "neighbouring spans differ");
        joined += spans[i].text;
        if (spans[i].colour != SpanColour::Black) continue;
        require(!m_blackSpan, "at most one span is black");
        m_blackSpan = spans[i].text;
    }
    require(joined == m_case.expression(), "the spans put together give the input");
}

void EngineInvariants::checkReading(const Reading& reading) {
    m_stage = reading.name;
    const auto eager = checkedFrames(reading.eagerFrames);
    const auto lazy = checkedFrames(reading.lazyFrames);
    require(lazy.has_value() == m_blackSpan.has_value(),
            "a lazy result exactly when the colouring has a black span");
    if (eager) {
        require(lazy && sameValue(*eager, *lazy), "an eager result is also the lazy result");
        require(m_blackSpan == m_case.expression(), "an eager result colours the whole text black");
    }
    checkText(reading, reading.eagerText, eager);
    checkText(reading, reading.lazyText, lazy);
}

std::optional<double> EngineInvariants::checkedFrames(
    std::optional<double> (Calc::*evaluate)(std::string_view)) {
    const auto frames = (m_calc.*evaluate)(m_case.expression());
    requireEmptyStack();
    return frames;
}

void EngineInvariants::checkText(const Reading& reading,
                                 std::optional<std::string> (Calc::*evaluate)(std::string_view,
                                                                              int),
                                 const std::optional<double>& frames) {
    const auto text = (m_calc.*evaluate)(m_case.expression(), m_case.displayMode());
    requireEmptyStack();
    require(text.has_value() == frames.has_value(), "a result text exactly when a frame count");
    if (!text) return;
    require(result_text_shape::fitsDisplayMode(*text, m_case.displayMode()),
            "the result text has the shape of its display mode");
    require(sameValue((m_calc.*reading.cachedResult)(), inSinglePrecision(*frames)),
            "the cached result is the frame count in single precision");
}

void EngineInvariants::checkBeautified() {
    m_stage = "beautify";
    const std::string beautified = m_calc.beautifyExpression(m_case.expression());
    require(beautified.find(' ') == std::string::npos, "the beautified text has no spaces");
}

void EngineInvariants::requireEmptyStack() {
    require(!m_calc.pop().has_value(), "the value stack is empty after an evaluation");
}

void EngineInvariants::require(bool holds, std::string_view what) const {
    if (holds) return;
    std::fprintf(stderr, "Vantrel invariant violated (%.*s, rate code %d, display mode %d): %.*s\n",
                 static_cast<int>(m_stage.size()), m_stage.data(), m_case.rateCode(),
                 m_case.displayMode(), static_cast<int>(what.size()), what.data());
    std::fprintf(stderr, "expression bytes: ");
    printHex(m_case.expression());
    __builtin_trap();
}

}  // namespace vantrel::fuzz
