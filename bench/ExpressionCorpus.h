#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// The texts the benchmarks feed to the engine: what film editors type, the same thing caught
// keystroke by keystroke, and nested parentheses of a chosen depth.
namespace vantrel::bench {

/// Expressions as they appear in the input field while editing: timestamps with and without rate
/// suffixes, short forms, frame counts with rate, sums, products, divisions, parentheses, and
/// texts the user has not finished typing.
const std::vector<std::string>& editorExpressions();

/// Every prefix of one long expression, shortest first, as the field holds it after each key.
const std::vector<std::string>& typingPrefixes();

enum class Closing { Closed, Unclosed };

/// "1+(" repeated depth times, then "1", then, when closed, ")" repeated depth times.
std::string nestedExpression(int depth, Closing closing);

/// The unit repeated as often as it fits in `length` characters: a long paste of one shape.
std::string repeatedPaste(std::string_view unit, std::size_t length);

/// "((…(1+1)+1…)+1)" of at most `length` characters: the costliest closed shape to paste.
std::string closedNestingPaste(std::size_t length);

/// A long expression of about `length` characters: sums, products and divisions of timestamps,
/// short forms, frame counts and numbers, with parentheses one level deep. Unclosed, it starts
/// with a parenthesis that is never closed, as while the user is still typing.
std::string longExpression(std::size_t length, Closing closing);

}  // namespace vantrel::bench
