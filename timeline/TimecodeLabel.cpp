#include "TimecodeLabel.h"

#include <array>

#include "Calc.h"
#include "FrameRate.h"

namespace vantrel::timeline {

std::optional<LabelFields> labelFields(std::string_view text) {
    std::array<int, 4> fields{};
    std::size_t field = 0;
    std::size_t digits = 0;
    bool semicolon = false;
    for (const char c : text) {
        if (c >= '0' && c <= '9') {
            if (++digits > 3) return std::nullopt;
            fields[field] = fields[field] * 10 + (c - '0');
        } else if ((c == ':' || c == ';' || c == '.') && digits > 0 && field < 3) {
            semicolon = semicolon || c == ';';
            ++field;
            digits = 0;
        } else {
            return std::nullopt;
        }
    }
    if (field != 3 || digits == 0) return std::nullopt;
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
