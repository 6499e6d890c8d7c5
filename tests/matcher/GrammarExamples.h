#pragma once

#include <array>
#include <string_view>

namespace vantrel::matcher_tests {

// clang-format off
/// Texts the grammar accepts as a whole.
inline constexpr std::array<std::string_view, 33> kAcceptedExamples{
    "1+2", " 1 + 2 ", "2*3", "6/4", "12345", "1.", "01:00:00.00|25*2", "2*3*01:00:00.00|25*4",
    "2-01:00:00.00", "01:00:00.00|25 - 00:00:01.00", "01:00:00.00+01:00:00.00", "01:00:00.00*3/2",
    "00:00:10.00/2", "(1+2)*3", "( 1+2 )", "((1))", "2* (3)", "(1) /2", "(2*01:00:00.00)/4",
    "2*(01:00:00.00+1)", ":12", "1:00", "1:2:3.4", "1:00.5|25", "0001:00:00.00", "01:00:00.00|29d",
    "12|25", "100|25", "0100", "00|25", "0100|25*2", "00/(1-1)", "1\t+\t2"};

/// Texts whose first match is shorter than the text, or that have no match at all.
inline constexpr std::array<std::string_view, 26> kRejectedExamples{
    "5|25", "0123456789", "01:00:00|25", "01:00:00.00 |25", "01:00:00.00|23N", "01:00:00.00|24|25",
    "1:2:3:4.5", "01:00:00.00*01:00:00.00", "01:00:00.00/01:00:00.00", "3*01:00:00.00/2", "2*(4)/3",
    "1 * (2) / 3", "2/ (3)", "2/(3) ", "0.5", "2*0.5", ".5", "0*5", "-1", "1--1", "1+", "1.5.5",
    "1e5", "1,5", "()", ""};
// clang-format on

}  // namespace vantrel::matcher_tests
