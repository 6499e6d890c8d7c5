#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel::matcher_tests {

/// Texts for comparing the grammar matcher with Oniguruma, reproducible from a seed: expressions
/// of every kind of operand (full-form timestamps with and without rate suffix, short forms,
/// frame counts with rate, plain numbers including "1."), the four operators, white space and
/// parentheses nested a few levels deep; the grammar's examples; deep chains of parentheses; all
/// of these cut short or disturbed; and runs of random bytes.
class ExpressionGenerator {
public:
    explicit ExpressionGenerator(std::uint64_t seed) : m_state(seed) {}

    std::string next();

private:
    std::uint32_t below(std::size_t bound);
    bool chance(std::uint32_t percent) { return below(100) < percent; }
    char pick(std::string_view characters) { return characters[below(characters.size())]; }
    std::string digits(std::uint32_t count);
    std::string blanks();
    std::string suffix();
    std::string expression(int depth);
    std::string operand();
    std::string nestedChain();
    std::string disturbed(std::string text);

    std::uint64_t m_state;
};

}  // namespace vantrel::matcher_tests
