#include "UnitReading.h"

#include <charconv>
#include <cstdint>

#include "FrameRate.h"
#include "Regex.h"

namespace vantrel::units {

namespace {

// A literal stands alone: no digit, letter, point, colon or suffix bar runs into it, and no
// letter follows its unit. Field widths keep every count within 64-bit arithmetic.
const Regex& literalPattern() {
    static const Regex pattern(R"((?<![\w.:;|])(?:\d{1,7}(?:\+\d{1,2}(?:\.[123])?)?ft|\d{1,12}smp|)"
                               R"((?:(?:\d{1,4}:)?\d{1,2}:)?\d{1,6}(?:\.\d{1,3})?rt|)"
                               R"(\d{1,12}(?:/0{0,8}[1-9]\d{0,8})?s|\d{1,18}tk)(?![A-Za-z]))");
    return pattern;
}

std::int64_t digits(std::string_view text) {
    std::int64_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

// numerator / denominator, rounded to the nearest whole number, halves upward.
std::int64_t rounded(std::int64_t numerator, std::int64_t denominator) {
    return (2 * numerator + denominator) / (2 * denominator);
}

std::int64_t feetFrames(std::string_view body, const Gauge& gauge) {
    const auto plus = body.find('+');
    const std::int64_t foot = digits(body.substr(0, plus));
    const std::int64_t firstFrame =
        (foot * gauge.perfsPerFoot + gauge.perfsPerFrame - 1) / gauge.perfsPerFrame;
    if (plus == std::string_view::npos) return firstFrame;
    // The 3-perf place after the frames follows from the foot; it adds nothing.
    return firstFrame + digits(body.substr(plus + 1, body.find('.') - plus - 1));
}

// "01:00:03.600" in milliseconds: the fraction is read as a decimal fraction of a second.
std::int64_t milliseconds(std::string_view body) {
    const auto point = body.find('.');
    std::int64_t fraction = 0;
    if (point != std::string_view::npos) {
        std::string thousandths(body.substr(point + 1));
        thousandths.resize(3, '0');
        fraction = digits(thousandths);
    }
    std::int64_t seconds = 0;
    for (std::string_view rest = body.substr(0, point); !rest.empty();) {
        const auto colon = rest.find(':');
        seconds = seconds * 60 + digits(rest.substr(0, colon));
        rest = colon == std::string_view::npos ? std::string_view() : rest.substr(colon + 1);
    }
    return seconds * 1000 + fraction;
}

std::int64_t framesOf(std::string_view literal, int rateCode, const UnitChoice& choice) {
    const FrameRate* rate = frameRateForCode(rateCode);
    const ExactRate exact = rate ? rate->exact : kFrameRates.front().exact;
    if (literal.ends_with("ft")) {
        return feetFrames(literal.substr(0, literal.size() - 2), *choice.gauge);
    }
    if (literal.ends_with("smp")) {
        return rounded(digits(literal.substr(0, literal.size() - 3)) * exact.numerator,
                       std::int64_t{choice.sampleRate} * exact.denominator);
    }
    if (literal.ends_with("rt")) {
        return rounded(milliseconds(literal.substr(0, literal.size() - 2)) * exact.numerator,
                       1000 * exact.denominator);
    }
    if (literal.ends_with("tk")) {
        // Up to 10^18 ticks times a rate's numerator needs more than 64 bits.
        __extension__ using Wide = __int128;
        const Wide ticks = digits(literal.substr(0, literal.size() - 2));
        const Wide perFrame = Wide{kTicksPerSecond} * exact.denominator;
        return static_cast<std::int64_t>((2 * ticks * exact.numerator + perFrame) / (2 * perFrame));
    }
    // Seconds, whole or as a fraction, as FCPXML writes them: "1001/24000s", "3600s".
    const std::string_view seconds = literal.substr(0, literal.size() - 1);
    const auto slash = seconds.find('/');
    const std::int64_t denominator =
        slash == std::string_view::npos
            ? 1
            : std::max<std::int64_t>(digits(seconds.substr(slash + 1)), 1);
    return rounded(digits(seconds.substr(0, slash)) * exact.numerator,
                   denominator * exact.denominator);
}

bool mayHoldLiterals(std::string_view typed) {
    return typed.find("ft") != std::string_view::npos ||
           typed.find('s') != std::string_view::npos ||
           typed.find("rt") != std::string_view::npos || typed.find("tk") != std::string_view::npos;
}

}  // namespace

UnitReading::UnitReading(std::string_view typed, int rateCode, const UnitChoice& choice)
    : m_typed(typed) {
    if (!mayHoldLiterals(typed)) {
        m_text = m_typed;
        return;
    }
    std::size_t typedBefore = 0;
    std::size_t readBefore = 0;
    m_text = literalPattern().replaceAll(m_typed, [&](const RegexMatch& match) {
        const std::int64_t frames = framesOf(match.matchedString(), rateCode, choice);
        // A plain number never starts with 0; no frames read as the short form 00.
        std::string count = frames == 0 ? "00" : std::to_string(frames);
        const TextRange typedRange = match.range();
        const std::size_t readLocation = typedRange.location - typedBefore + readBefore;
        m_literals.push_back({typedRange, {readLocation, count.size()}});
        typedBefore = typedRange.location + typedRange.length;
        readBefore = readLocation + count.size();
        return count;
    });
}

std::size_t UnitReading::typedPosition(std::size_t readPosition) const {
    std::size_t typedPosition = readPosition;
    for (const Literal& literal : m_literals) {
        const std::size_t readEnd = literal.read.location + literal.read.length;
        if (readPosition <= literal.read.location) break;
        if (readPosition < readEnd) return literal.typed.location + literal.typed.length;
        typedPosition = readPosition - readEnd + literal.typed.location + literal.typed.length;
    }
    return typedPosition;
}

std::vector<ColouredSpan> UnitReading::colouredSpans(const Calc& calc) const {
    std::vector<ColouredSpan> spans = calc.colorizeLazyEvaluatedString(m_text);
    if (m_literals.empty()) return spans;
    std::size_t readPosition = 0;
    std::size_t typedStart = 0;
    for (ColouredSpan& span : spans) {
        readPosition += span.text.size();
        const std::size_t typedEnd = typedPosition(readPosition);
        span.text = m_typed.substr(typedStart, typedEnd - typedStart);
        typedStart = typedEnd;
    }
    std::erase_if(spans, [](const ColouredSpan& span) { return span.text.empty(); });
    return spans;
}

std::string UnitReading::beautified(const Calc& calc) const {
    std::string tidied;
    std::size_t stretchStart = 0;
    for (const Literal& literal : m_literals) {
        tidied += calc.beautifyExpression(
            std::string_view(m_typed).substr(stretchStart, literal.typed.location - stretchStart));
        tidied += literal.typed.in(m_typed);
        stretchStart = literal.typed.location + literal.typed.length;
    }
    return tidied + calc.beautifyExpression(std::string_view(m_typed).substr(stretchStart));
}

}  // namespace vantrel::units
