#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "GrammarPattern.h"

namespace vantrel::matcher_tests {

/// Texts for comparing the grammar matcher with Oniguruma, reproducible from a seed: random walks
/// through the grammar itself (so every operand form, suffix, operator and white space it knows
/// turns up, nested a few levels deep), the grammar's examples, deep chains of parentheses, all of
/// these cut short or disturbed, and runs of random bytes; and the text before with a key or two
/// pressed.
class ExpressionGenerator {
public:
    explicit ExpressionGenerator(std::uint64_t seed);

    std::string next();

private:
    std::uint32_t below(std::size_t bound);
    bool chance(std::uint32_t percent) { return below(100) < percent; }
    char pick(std::string_view characters) { return characters[below(characters.size())]; }
    std::string fresh();
    std::string typedOn(std::string text);
    bool walk(std::uint32_t part, int calls, std::string& text);
    std::string nestedChain();
    std::string disturbed(std::string text);

    std::uint64_t m_state;
    GrammarPattern m_grammar;
    std::string m_last;
};

}  // namespace vantrel::matcher_tests
