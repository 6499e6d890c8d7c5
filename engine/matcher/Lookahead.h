#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "BracketDepths.h"
#include "GrammarPattern.h"

namespace vantrel {

/// What a part of the pattern can do at a position of the text that the pattern and the text show
/// without any matching: whether it can begin there, how far a run reaches, and the cases where a
/// part's whole list of ends is plain to see. The end streams use it to skip work that would fail
/// at once or that another stream already does.
class Lookahead {
public:
    Lookahead(const GrammarPattern& pattern, std::string_view text)
        : m_pattern(pattern), m_text(text) {}

    /// Whether a non-empty match of the part can begin at the position.
    bool canStart(std::uint32_t part, std::uint32_t start) const {
        return start < m_text.size() &&
               m_pattern.firstCharacters(part)[static_cast<unsigned char>(m_text[start])];
    }
    /// Whether the text at the position goes on as every match of the part must, past the first
    /// character that canStart() looks at: "|25" where a part reads just that suffix. For the
    /// backtracker only: it reads past the next character, further than the end streams note as
    /// read for what they keep from one text to the next.
    bool showsLiteralPrefix(std::uint32_t part, std::uint32_t start) const {
        const std::string& prefix = m_pattern.literalPrefix(part);
        if (prefix.size() < 2) return true;
        if (m_text.size() - start < prefix.size()) return false;
        // A few characters: a call of memcmp would cost more than comparing them here.
        for (std::size_t i = 0; i < prefix.size(); ++i) {
            if (m_text[start + i] != prefix[i]) return false;
        }
        return true;
    }
    /// Whether the part plainly has no match from the position: it cannot begin with the character
    /// there, or it balances its parentheses and the text never comes back to the depth where it
    /// would end. In a text with unclosed parentheses that rules out most parenthesised parts.
    bool plainlyWithoutEnds(std::uint32_t part, std::uint32_t start,
                            const BracketDepths& depths) const {
        const bool nullable = m_pattern.nullable(part);
        if (!nullable && !canStart(part, start)) return true;
        // The depth is worth looking at where a parenthesis opens; elsewhere it hardly ever
        // rules anything out, and this runs for every part tried.
        if (start >= m_text.size() || m_text[start] != '(') return false;
        const std::optional<std::int32_t> balance = m_pattern.bracketBalance(part);
        return balance && !depths.reachable(start, start + (nullable ? 0 : 1), *balance);
    }
    /// How many characters from the position the run takes at the most.
    std::uint32_t runLength(const PatternNode& run, std::uint32_t start) const {
        std::uint32_t length = 0;
        while (length < run.maxCount && start + length < m_text.size() &&
               run.characters[static_cast<unsigned char>(m_text[start + length])]) {
            ++length;
        }
        return length;
    }
    /// True when the list of a sequence's first part at the position is plain to see: no end at
    /// all (`end` left empty), or a single end reached without any capture, such as "\\(" before a
    /// parenthesis, a run that never gives back, or "\\s*" and an optional part where the text
    /// offers neither.
    bool headKnownWithoutWork(const PatternNode& sequence, std::uint32_t start,
                              std::optional<std::uint32_t>& end) const;
    /// The one alternative of a choice that can match at the position, if only one can.
    std::optional<std::uint32_t> soleAlternative(const PatternNode& choice,
                                                 std::uint32_t start) const;

private:
    const GrammarPattern& m_pattern;
    std::string_view m_text;
};

}  // namespace vantrel
