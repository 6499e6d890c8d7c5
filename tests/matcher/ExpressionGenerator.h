#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel::matcher_tests {

/// Texts for comparing the grammar matcher with Oniguruma, reproducible from a seed: expressions
/// built from every kind of operand (full-form timestamps with and without rate suffix, short
/// forms, frame counts with rate, plain numbers including "1."), the four operators, blanks,
/// tabs and other white space, and parentheses nested a few levels deep; the grammar's examples;
/// all of these cut short or disturbed (unbalanced parentheses, a character dropped, changed or
/// added); and runs of random bytes, non-ASCII and NUL included.
class ExpressionGenerator {
public:
    explicit ExpressionGenerator(std::uint64_t seed) : m_state(seed) {}

    std::string next();

private:
    std::uint64_t random();
    std::uint32_t below(std::uint32_t bound);
    bool chance(std::uint32_t percent) { return below(100) < percent; }
    char pick(std::string_view characters);

    int nestingDepth();
    std::string expression(int depth);
    std::string term(int depth);
    std::string operand();
    std::string fullForm();
    std::string shortForm();
    std::string frameCount();
    std::string number();
    std::string digits(std::uint32_t count);
    std::string field();
    std::string suffix();
    std::string blanks();
    std::string example();
    std::string nestedChain();
    std::string randomBytes();
    std::string disturbed(std::string text);

    std::uint64_t m_state;
};

}  // namespace vantrel::matcher_tests
