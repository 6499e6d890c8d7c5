#include "TimestampText.h"

#include <algorithm>
#include <array>
#include <optional>

#include "FrameRate.h"

namespace vantrel::timestamp_text {

namespace {

constexpr auto npos = std::string_view::npos;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isSmpteSeparator(char c) {
    return c == ':' || c == ';';
}

// A character that makes a neighbouring run of digits part of a longer timestamp or a number, so
// that "1:01:00:10:12" and "01:00:10:12.5" are left alone rather than read in part.
bool joinsDigits(char c) {
    return isDigit(c) || isSmpteSeparator(c) || c == '.';
}

// The end of a group of one up to `longest` digits that starts at the position, or npos.
std::size_t digitGroupEnd(std::string_view text, std::size_t position, std::size_t longest) {
    std::size_t end = position;
    while (end < text.size() && end - position <= longest && isDigit(text[end])) ++end;
    const std::size_t length = end - position;
    return length >= 1 && length <= longest ? end : npos;
}

// The end of the frame group that starts at the position, or npos.
std::size_t frameGroupEnd(std::string_view text, std::size_t position, FrameField field) {
    const std::size_t end = digitGroupEnd(text, position, 3);
    if (end == npos || end - position < 3) return end;
    const bool threeDigits =
        field == FrameField::ThreeDigits || startsWithThreeDigitSuffix(text.substr(end));
    return threeDigits ? end : npos;
}

// Where the three separators of an SMPTE timestamp starting at the position are, if one does.
std::optional<std::array<std::size_t, 3>> smpteSeparators(std::string_view text,
                                                          std::size_t position, FrameField field) {
    if (position > 0 && joinsDigits(text[position - 1])) return std::nullopt;
    std::array<std::size_t, 3> separators{};
    std::size_t end = position;
    for (std::size_t group = 0; group < 4; ++group) {
        end = group == 3 ? frameGroupEnd(text, end, field) : digitGroupEnd(text, end, 2);
        if (end == npos) return std::nullopt;
        if (group == 3) break;
        if (end == text.size() || !isSmpteSeparator(text[end])) return std::nullopt;
        separators[group] = end++;
    }
    if (end < text.size() && joinsDigits(text[end])) return std::nullopt;
    return separators;
}

bool isAt(std::string_view text, std::size_t position, char c) {
    return position < text.size() && text[position] == c;
}

bool isDigitAt(std::string_view text, std::size_t position) {
    return position < text.size() && isDigit(text[position]);
}

// The position after at most `most` digits from the position.
std::size_t afterDigits(std::string_view text, std::size_t position, std::size_t most) {
    std::size_t end = position;
    while (end - position < most && isDigitAt(text, end)) ++end;
    return end;
}

bool isWordCharacter(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

// After a rate suffix that starts at the position, as "\|(?:100|119[dn]|120|\d{W}(d|n)?)" reads
// it with W digits taken `fewestDigits` to two; the position itself where there is none. The
// alternatives are tried in that order and the first that fits is taken, "|1190" reading "|11".
std::size_t afterSuffix(std::string_view text, std::size_t position, std::size_t fewestDigits) {
    if (!isAt(text, position, '|')) return position;
    const std::string_view rest = text.substr(position + 1);
    const std::size_t start = position + 1;
    if (rest.starts_with("100") || rest.starts_with("120")) return start + 3;
    if (rest.starts_with("119d") || rest.starts_with("119n")) return start + 4;
    std::size_t end = afterDigits(text, start, 2);
    if (end - start < fewestDigits) return position;
    if (isAt(text, end, 'd') || isAt(text, end, 'n')) ++end;
    return end;
}

// After the frames and the suffix of a full form, when the frames' point is at the position.
std::size_t afterFrames(std::string_view text, std::size_t point, FrameField field) {
    if (!isAt(text, point, '.') || !isDigitAt(text, point + 1)) return point;
    std::size_t end = afterDigits(text, point + 1, 3);
    // Two-digit fields take a third digit only before a suffix whose rate has three.
    if (field == FrameField::TwoDigits &&
        !(end - point == 4 && startsWithThreeDigitSuffix(text.substr(end)))) {
        end = afterDigits(text, point + 1, 2);
    }
    return afterSuffix(text, end, 2);
}

}  // namespace

std::string withoutSpaces(std::string_view text) {
    std::string copy(text);
    copy.erase(std::remove(copy.begin(), copy.end(), ' '), copy.end());
    return copy;
}

// By hand rather than by pattern: every timestamp read on every key goes through here.
std::vector<std::string_view> digitRuns(std::string_view text) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    std::vector<std::string_view> runs;
    runs.reserve(5);  // hours, minutes, seconds, frames and a rate's digits
    for (std::size_t at = 0; at < text.size();) {
        if (!isDigit(text[at])) {
            ++at;
            continue;
        }
        const std::size_t begin = at;
        while (at < text.size() && isDigit(text[at])) ++at;
        runs.push_back(text.substr(begin, at - begin));
    }
    return runs;
}

std::string shortFormAsFullForm(std::string_view shortForm, std::size_t padding) {
    std::string padded(padding, '0');
    padded.append(shortForm);
    // The padding keeps p - 8 inside the text for every padding of eight zeros or more.
    const std::size_t p = std::min(padded.find('|'), padded.size());
    std::string fullForm = padded.substr(p - 8, 2) + ":" + padded.substr(p - 6, 2) + ":" +
                           padded.substr(p - 4, 2) + "." + padded.substr(p - 2, 2);
    fullForm.append(padded.substr(p));
    return fullForm;
}

bool startsWithThreeDigitSuffix(std::string_view text) {
    if (!text.starts_with('|')) return false;
    return std::any_of(kFrameRates.begin(), kFrameRates.end(), [text](const FrameRate& rate) {
        return frameDigits(rate) == 3 && text.substr(1).starts_with(rate.suffix);
    });
}

std::string classicFromSmpte(std::string_view text, FrameField field) {
    std::string classic(text);
    std::size_t position = 0;
    while (position < text.size()) {
        if (!isDigit(text[position])) {
            ++position;
            continue;
        }
        if (const auto separators = smpteSeparators(text, position, field)) {
            classic[(*separators)[0]] = ':';
            classic[(*separators)[1]] = ':';
            classic[(*separators)[2]] = '.';
            position = (*separators)[2];
        }
        while (position < text.size() && !isDigit(text[position])) ++position;
        while (position < text.size() && isDigit(text[position])) ++position;
    }
    return classic;
}

std::optional<TextRange> nextFullForm(std::string_view text, std::size_t from, FrameField field) {
    // Past the leading zeros (0*) and the end of the digits they lead; both only move on, so the
    // search stays linear however long a run of digits is.
    std::size_t pastZeros = from;
    std::size_t digitsEnd = from;
    for (std::size_t start = from; start < text.size(); ++start) {
        pastZeros = std::max(pastZeros, start);
        while (isAt(text, pastZeros, '0')) ++pastZeros;
        digitsEnd = std::max(digitsEnd, start);
        while (isDigitAt(text, digitsEnd)) ++digitsEnd;
        // The first group, never given back, takes up to two digits and a colon: the one after
        // the digits. With fewer zeros taken it would only start further back in the same digits.
        if (digitsEnd - pastZeros > 2 || !isAt(text, digitsEnd, ':')) continue;
        const std::size_t secondColon = afterDigits(text, digitsEnd + 1, 2);
        if (!isAt(text, secondColon, ':') || !isDigitAt(text, secondColon + 1)) continue;
        const std::size_t seconds = afterDigits(text, secondColon + 1, 2);
        return TextRange{start, afterFrames(text, seconds, field) - start};
    }
    return std::nullopt;
}

std::optional<TextRange> nextShortForm(std::string_view text, std::size_t from) {
    for (std::size_t start = from; start < text.size(); ++start) {
        if (text[start] != '0' || (start > 0 && isWordCharacter(text[start - 1]))) continue;
        const std::size_t digitsEnd = afterDigits(text, start + 1, 8);
        if (digitsEnd - start < 3) continue;
        return TextRange{start, afterSuffix(text, digitsEnd, 1) - start};
    }
    return std::nullopt;
}

}  // namespace vantrel::timestamp_text
