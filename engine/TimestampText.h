#pragma once

#include <string>
#include <string_view>
#include <vector>

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

}  // namespace vantrel::timestamp_text
