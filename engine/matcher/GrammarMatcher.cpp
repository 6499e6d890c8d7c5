#include "GrammarMatcher.h"

#include <cstdint>
#include <stdexcept>

#include "Backtracker.h"
#include "EndStreams.h"

namespace vantrel {

GrammarMatcher::GrammarMatcher(std::string_view grammarText, std::size_t backtrackingSteps)
    : m_pattern(grammarText), m_backtrackingSteps(backtrackingSteps) {}

std::optional<GrammarMatch> GrammarMatcher::search(std::string_view text) const {
    return find(text, false);
}

std::optional<GrammarMatch> GrammarMatcher::matchAtStart(std::string_view text) const {
    return find(text, true);
}

std::optional<GrammarMatch> GrammarMatcher::find(std::string_view text, bool anchored) const {
    // Positions are kept in 32 bits; the calculator's texts are a few thousand bytes at most.
    if (text.size() >= UINT32_MAX) throw std::length_error("text too long for the grammar matcher");
    const auto last = static_cast<std::uint32_t>(anchored ? 0 : text.size());
    std::uint32_t start = 0;
    // Plain backtracking finds what people usually type fastest. The start positions it has ruled
    // out stay ruled out: both methods try the same ways in the same order, and the polynomial
    // one only skips ways that cannot change the outcome (EndStreams.cpp).
    if (m_backtrackingSteps > 0) {
        const std::size_t steps = m_backtrackingSteps * (1 + text.size() / kCharactersPerBudget);
        Backtracker backtracker(m_pattern, text, steps);
        for (; start <= last; ++start) {
            const Backtracker::Outcome outcome = backtracker.matchAt(start);
            if (outcome == Backtracker::Outcome::Match) {
                return GrammarMatch(m_pattern, text, backtracker.records());
            }
            if (outcome == Backtracker::Outcome::OutOfSteps) break;
        }
    }
    if (start > last) return std::nullopt;
    EndStreams streams(m_pattern, text);
    for (; start <= last; ++start) {
        if (auto captures = streams.firstMatch(m_pattern.root(), start)) {
            return GrammarMatch(m_pattern, text, std::move(*captures));
        }
    }
    return std::nullopt;
}

}  // namespace vantrel
