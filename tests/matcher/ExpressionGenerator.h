#pragma once

#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

namespace vantrel::matcher_tests {

/// Texts for comparing the grammar matcher with Oniguruma, reproducible from a seed: expressions
/// built from every kind of operand (full-form timestamps with and without rate suffix, short
/// forms, frame counts with rate, plain numbers including "1."), the four operators, blanks and
/// other white space, and parentheses nested a few levels deep; the grammar's examples; deep
/// chains of parentheses; all of these cut short or disturbed; and runs of random bytes.
class ExpressionGenerator {
public:
    explicit ExpressionGenerator(std::uint64_t seed) : m_state(seed) {}

    std::string next();

private:
    std::uint32_t below(std::uint32_t bound);
    bool chance(std::uint32_t percent) { return below(100) < percent; }
    char pick(std::string_view characters);
    std::string pickText(const auto& texts) {
        return std::string(texts[below(static_cast<std::uint32_t>(std::size(texts)))]);
    }

    std::string expression(int depth);
    std::string term(int depth);
    std::string operand();
    std::string fullForm();
    std::string number();
    std::string digits(std::uint32_t count);
    std::string suffix() { return chance(90) ? pickText(kSuffixes) : pickText(kBadSuffixes); }
    std::string nestedChain();
    std::string randomBytes();
    std::string disturbed(std::string text);

    static constexpr std::string_view kSuffixes[]{"|24",  "|25",  "|30", "|23d", "|29d",
                                                  "|23n", "|29n", "|48", "|50",  "|60",
                                                  "|59d", "|47n", "|59n"};
    // Near misses of a suffix: wrong case, too short, doubled, unknown, bare bar.
    static constexpr std::string_view kBadSuffixes[]{"|23N", "|2",  "|24|25", "|99",
                                                     "|",    "|29", "|25d",   "|59"};
    static constexpr std::string_view kBlanks[]{"", "", "", " ", " ", "\t", "  ", "\n", "\r\v\f"};

    std::uint64_t m_state;
};

}  // namespace vantrel::matcher_tests
