#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Grammar.h"
#include "Regex.h"

// Text steps shared by the timestamp formatter and the timestamp readers.
namespace vantrel::timestamp_text {

/// The text with every space character removed (other white space stays).
std::string withoutSpaces(std::string_view text);

/// The maximal runs of ASCII digits, left to right.
std::vector<std::string_view> digitRuns(std::string_view text);

/// A short form ("0123|29d") rewritten as hh:mm:ss.ff with its suffix, after padding it on the
/// left with the given number of zeros: the last eight characters before the "|" are read from
/// the right in pairs as frames, seconds, minutes and hours.
std::string shortFormAsFullForm(std::string_view shortForm, std::size_t padding);

/// The text with every timestamp in SMPTE notation, four groups of one or two digits separated by
/// ":" or ";" ("01:00:10:12", "01;00;10;12|29d"), written in the classic full form
/// ("01:00:10.12"). Only separators change, so every position in the result is the position of
/// the same character in the text the user typed, and a colouring of one fits the other. The
/// frame group may have three digits where the grammar takes them: before the suffix of a rate of
/// 120 labels a second, and anywhere with the three-digit frame field.
std::string classicFromSmpte(std::string_view text, FrameField field = FrameField::TwoDigits);

/// Whether the text starts with the rate suffix of a rate whose frame field has three digits.
bool startsWithThreeDigitSuffix(std::string_view text);

/// The first full form at or after `from` that normalising rewrites, as the pattern
/// 0*((\d{0,2}:)?+\d{0,2})?+:\d{1,2}(\.FRAMES(\|(?:100|119[dn]|120|\d{2,2}(d|n)?))?+)?+ finds it,
/// FRAMES being \d{3}(?=\|(?:119[dn]|120))|\d{1,2} for two-digit frame fields, \d{1,3} for
/// three. The possessive groups make it a timestamp with two colons: "12:34" and "0:30.00" are
/// never found, "::5" and "1:2:3" are.
std::optional<TextRange> nextFullForm(std::string_view text, std::size_t from, FrameField field);

/// The first short form at or after `from`, as \b0\d{2,8}(\|(?:100|119[dn]|120|\d{1,2}(d|n)?))?
/// finds it: a 0 that starts a word, two to eight more digits and the rate suffix typed after them.
std::optional<TextRange> nextShortForm(std::string_view text, std::size_t from);

}  // namespace vantrel::timestamp_text
