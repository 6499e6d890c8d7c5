#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "GrammarMatch.h"
#include "GrammarPattern.h"

namespace vantrel {

/// Matches the calculator's grammar text as Oniguruma does (Ruby syntax, capture history,
/// ONIG_OPTION_CAPTURE_GROUP, ASCII), with the same first match and the same capture tree, but in
/// polynomial time and without any bound on the effort. A search first backtracks as Oniguruma
/// would, for a few thousand steps (Backtracker): what people type is nearly always matched within
/// them. Beyond, it carries on with the polynomial method (EndStreams), which works out each part
/// of the grammar at most once per start position, where backtracking repeats the work at every
/// level of parentheses. It reads the grammar text itself (see GrammarPattern for what it
/// understands); the texts it searches are read byte by byte, like Regex.
class GrammarMatcher {
public:
    /// Backtracking steps tried before switching to the polynomial method, for texts of up to
    /// kCharactersPerBudget characters; longer texts get as many more for each such stretch.
    static constexpr std::size_t kBacktrackingSteps = 4096;
    static constexpr std::size_t kCharactersPerBudget = 512;

    /// Reads the grammar; throws std::invalid_argument for text it does not understand.
    /// `backtrackingSteps` sets how long a search tries plain backtracking (the fastest method for
    /// what people usually type) before it goes on with the polynomial method; 0 uses the
    /// polynomial method alone. Both give the same results; the tests check each and the hand-over.
    explicit GrammarMatcher(std::string_view grammarText,
                            std::size_t backtrackingSteps = kBacktrackingSteps);

    /// The first match, trying each start position from the left, as Regex::search() finds it.
    std::optional<GrammarMatch> search(std::string_view text) const;
    /// The match that starts at position 0, if any, as Regex::matchAtStart() finds it.
    std::optional<GrammarMatch> matchAtStart(std::string_view text) const;

    const GrammarPattern& pattern() const { return m_pattern; }

private:
    std::optional<GrammarMatch> find(std::string_view text, bool anchored) const;

    GrammarPattern m_pattern;
    std::size_t m_backtrackingSteps;
};

}  // namespace vantrel
