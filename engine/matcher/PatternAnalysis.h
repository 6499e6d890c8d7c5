#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "GrammarPattern.h"

namespace vantrel {

/// Refuses a grammar text: throws std::invalid_argument naming the offset and what is wrong.
[[noreturn]] void refusePattern(std::size_t offset, std::string_view what);

/// What the matchers need to know of a pattern once its parts are read: which parts can match the
/// empty text, which then still capture, which characters each can begin with and which text, which
/// runs never give back, and how many parentheses each part leaves open. It also refuses what a
/// matcher could not follow as Oniguruma does: repeated parts that can match nothing, and
/// definitions that call themselves before reading anything.
class PatternAnalysis {
public:
    /// `offsets` holds, for each part, where its text begins, for the messages.
    PatternAnalysis(GrammarPattern& pattern, const std::vector<std::size_t>& offsets)
        : m_pattern(pattern), m_offsets(offsets) {}

    /// Fills the pattern's tables, or throws std::invalid_argument.
    void run();

private:
    void findNullableParts();
    void findCapturesWhenEmpty();
    bool capturesWhenEmpty(const PatternNode& part) const;
    void findFirstCharacters();
    std::bitset<256> firstCharacters(const PatternNode& part) const;
    bool nullable(const PatternNode& part) const;
    void findRunsThatTakeAll();
    void findBracketBalances();
    void findLiteralPrefixes();
    void rejectEmptyRepetitions() const;
    std::vector<std::uint32_t> enteredWithoutReading(const PatternNode& part) const;
    void rejectLeftRecursion() const;

    GrammarPattern& m_pattern;
    const std::vector<std::size_t>& m_offsets;
    std::vector<bool> m_nullable;
};

}  // namespace vantrel
