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

// Replaces every range that `next` finds, left to right and without overlap, by what `replacement`
// makes of it.
template <typename Next, typename Replacement>
std::string replaceEach(std::string_view text, Next next, Replacement replacement) {
    std::string result;
    std::size_t copied = 0;
    for (auto found = next(text, 0); found; found = next(text, copied)) {
        result.append(text.substr(copied, found->location - copied));
        result.append(replacement(*found));
        copied = found->location + found->length;
    }
    result.append(text.substr(copied));
    return result;
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
    const auto nextFullForm = [field = frameField()](std::string_view text, std::size_t from) {
        return timestamp_text::nextFullForm(text, from, field);
    };
    const std::string fullForms = replaceEach(compact, nextFullForm, [&](TextRange found) {
        std::string fullForm = beautifyTimestamp(compact, found);
        written.push_back({found.location - before + after, fullForm.size()});
        before += found.length;
        after += fullForm.size();
        return fullForm;
    });
    return replaceEach(fullForms, timestamp_text::nextShortForm, [&](TextRange found) {
        const std::size_t start = found.location;
        const bool insideFullForm = std::any_of(written.begin(), written.end(), [start](auto r) {
            return start >= r.location && start < r.location + r.length;
        });
        return insideFullForm ? std::string(found.in(fullForms))
                              : beautifyShortTimestamp(fullForms, found);
    });
}

std::string Calc::beautifyTimestamp(std::string_view text, TextRange found) const {
    return beautifyTimestampString(found.in(text));
}

std::string Calc::beautifyShortTimestamp(std::string_view text, TextRange found) const {
    return beautifyShortTimestampString(found.in(text));
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
