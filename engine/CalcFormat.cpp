// Calc: writing frame counts as timestamps and normalising the timestamps that the user typed.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "Calc.h"
#include "FrameRate.h"
#include "NumberText.h"
#include "TimestampText.h"

namespace vantrel {

namespace {

// The possessive "?+" groups make this find only timestamps with two colons: "12:34" and
// "0:30.00" are never rewritten, while "::5" is. Three frame digits are read where the grammar
// takes them: before the suffix of a rate of 120 labels a second, or at such a current rate.
const Regex& fullFormPattern(FrameField field) {
    static const Regex twoDigits(
        R"(0*((\d{0,2}:)?+\d{0,2})?+:\d{1,2}(\.(?:\d{3}(?=\|(?:119[dn]|120))|\d{1,2}))"
        R"((\|(?:100|119[dn]|120|\d{2,2}(d|n)?))?+)?+)");
    static const Regex threeDigits(
        R"(0*((\d{0,2}:)?+\d{0,2})?+:\d{1,2}(\.\d{1,3}(\|(?:100|119[dn]|120|\d{2,2}(d|n)?))?+)?+)");
    return field == FrameField::TwoDigits ? twoDigits : threeDigits;
}

const Regex& shortFormPattern() {
    static const Regex pattern(R"(\b0\d{2,8}(\|(?:100|119[dn]|120|\d{1,2}(d|n)?))?)");
    return pattern;
}

// Frame fields have three digits at the rates of 120 labels a second, two elsewhere.
std::size_t frameDigitsOf(const FrameRate* rate) {
    return static_cast<std::size_t>(rate ? frameDigits(*rate) : 2);
}

// Beyond this many frames the hour field would no longer fit a 64-bit integer.
constexpr double kLargestSplittableCount = 1e18;

std::string suffixOfCode(int code) {
    const FrameRate* rate = frameRateForCode(code);
    return rate ? std::string(rate->suffix) : std::string();
}

}  // namespace

std::string Calc::stringFromFramecount(double framecount) const {
    using number_text::twoDigits;
    if (std::isnan(framecount)) return "NaN";
    const bool negative = framecount < 0;
    const std::string sign = negative ? "-" : "";
    double v = negative ? -framecount : framecount;
    v = dropFCfromRealFC(v, m_fps);
    if (!(v < kLargestSplittableCount)) return sign + "∞";

    const double nominal = std::floor(m_framerate + 0.5);
    const double s = v / nominal;
    const double a = std::fmod(s, 3600.0);
    const double b = std::fmod(a, 60.0);
    const double c = std::fmod(b, 1.0);
    // The frame field is rounded on its own and never carried into the seconds.
    const auto frames = static_cast<std::int64_t>(std::floor(nominal * c + 0.5));
    const auto seconds = static_cast<std::int64_t>(b - c);
    const auto minutes = static_cast<std::int64_t>((a - b) / 60.0);
    const auto hours = static_cast<std::int64_t>((s - a) / 3600.0);
    const FrameRate* rate = frameRateForCode(m_fps);
    return sign + twoDigits(hours) + ":" + twoDigits(minutes) + ":" + twoDigits(seconds) +
           frameSeparator(rate) + number_text::paddedDigits(frames, frameDigitsOf(rate));
}

char Calc::frameSeparator(const FrameRate* rate) const {
    if (m_notation == TimecodeNotation::Classic) return '.';
    return rate && rate->dropFrame != DropFrame::None ? ';' : ':';
}

std::string Calc::beautifyExpression(std::string_view expression) const {
    const std::string compact =
        timestamp_text::withoutSpaces(timestamp_text::classicFromSmpte(expression, frameField()));
    // Where the full forms went: a three-digit frame field ("00:00:00.005|120") must not be read
    // again as a short form. Two-digit fields never could be.
    std::vector<TextRange> written;
    std::size_t before = 0;
    std::size_t after = 0;
    const std::string fullForms =
        fullFormPattern(frameField()).replaceAll(compact, [&](const RegexMatch& match) {
            std::string fullForm = beautifyTimestamp(match);
            const TextRange range = match.range();
            written.push_back({range.location - before + after, fullForm.size()});
            before += range.length;
            after += fullForm.size();
            return fullForm;
        });
    return shortFormPattern().replaceAll(fullForms, [&](const RegexMatch& match) {
        const std::size_t start = match.range().location;
        const bool insideFullForm = std::any_of(written.begin(), written.end(), [start](auto r) {
            return start >= r.location && start < r.location + r.length;
        });
        return insideFullForm ? std::string(match.matchedString()) : beautifyShortTimestamp(match);
    });
}

std::string Calc::beautifyTimestamp(const RegexMatch& match) const {
    return beautifyTimestampString(match.matchedString());
}

std::string Calc::beautifyShortTimestamp(const RegexMatch& match) const {
    return beautifyShortTimestampString(match.matchedString());
}

std::string Calc::beautifyTimestampString(std::string_view timestamp) const {
    using number_text::twoDigits;
    // Slot 0 takes a typed suffix's digits, 1 frames, 2 seconds, 3 minutes, 4 hours. Values are
    // neither limited nor carried: 0:0:75 stays 75 seconds.
    std::array<int, 5> slots{};
    std::string rateText = suffixOfCode(m_fps);
    std::size_t slot = 2;
    if (timestamp.find('.') != std::string_view::npos) {
        slot = 1;
        if (const auto bar = timestamp.find('|'); bar != std::string_view::npos) {
            slot = 0;
            rateText = timestamp.substr(bar + 1);
        }
    }
    const auto runs = timestamp_text::digitRuns(timestamp);
    for (auto run = runs.rbegin(); run != runs.rend() && slot < slots.size(); ++run, ++slot) {
        slots[slot] = number_text::digitRunAsInt(*run);
    }
    const FrameRate* rate = frameRateForSuffix(rateText);
    return twoDigits(slots[4]) + ":" + twoDigits(slots[3]) + ":" + twoDigits(slots[2]) +
           frameSeparator(rate) + number_text::paddedDigits(slots[1], frameDigitsOf(rate)) + "|" +
           rateText;
}

std::string Calc::beautifyShortTimestampString(std::string_view timestamp) const {
    return beautifyTimestampString(timestamp_text::shortFormAsFullForm(timestamp, 8));
}

}  // namespace vantrel
