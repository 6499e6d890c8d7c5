#include "TimecodeLabel.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "Calc.h"
#include "FrameRate.h"

namespace vantrel::timeline {

std::optional<LabelFields> labelFields(std::string_view text) {
    std::array<int, 4> fields{};
    bool semicolon = false;
    std::size_t at = 0;
    for (std::size_t field = 0; field < 4; ++field) {
        const std::size_t end = std::min(text.find_first_of(":;.", at), text.size());
        const std::string_view digits = text.substr(at, end - at);
        if (digits.empty() || digits.size() > 3 ||
            !std::all_of(digits.begin(), digits.end(),
                         [](char c) { return c >= '0' && c <= '9'; })) {
            return std::nullopt;
        }
        std::from_chars(digits.data(), digits.data() + digits.size(), fields[field]);
        if (field < 3 && end == text.size()) return std::nullopt;
        if (field == 3 && end != text.size()) return std::nullopt;
        semicolon = semicolon || (end < text.size() && text[end] == ';');
        at = end + 1;
    }
    return LabelFields{fields[0], fields[1], fields[2], fields[3], semicolon};
}

LabelReading framesOfLabel(std::string_view text, int code) {
    const auto quoted = [text] { return "'" + std::string(text) + "'"; };
    const auto fields = labelFields(text);
    if (!fields) return {0, quoted() + " is not a timecode"};
    if (fields->minutes > 59 || fields->seconds > 59) {
        return {0, quoted() + " has more than 59 minutes or seconds"};
    }
    const FrameRate& rate = *frameRateForCode(code);
    if (fields->frames >= rate.nominal) {
        return {0, quoted() + " has frame " + std::to_string(fields->frames) + " at " +
                       std::to_string(rate.nominal) + " frames a second"};
    }
    const double label =
        ((fields->hours * 60.0 + fields->minutes) * 60.0 + fields->seconds) * rate.nominal +
        fields->frames;
    const double real = Calc::realFCfromDropFC(label, code);
    if (Calc::dropFCfromRealFC(real, code) != label) {
        return {0, quoted() + " is a label that drop-frame counting skips"};
    }
    return {real, {}};
}

}  // namespace vantrel::timeline
