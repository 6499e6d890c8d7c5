#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Grammar.h"
#include "Regex.h"

namespace vantrel::matcher_tests {

/// Writes a capture walk as text: each node on entry as "name level [text]", and, unless only
/// the tree is asked for, its range and its exit, so that equal walks give equal texts.
class WalkText : public CaptureVisitor {
public:
    explicit WalkText(bool treeOnly) : m_treeOnly(treeOnly) {}
    void visitAtFirstCapture(const Capture& capture) override;
    void visitAtLastCapture(const Capture& capture) override;
    const std::string& text() const { return m_text; }

private:
    bool m_treeOnly;
    std::string m_text;
};

/// A match, Oniguruma's or the grammar matcher's, as text: its range and its walk, or "none".
template <typename Match>
std::string walkOf(const std::optional<Match>& match, bool treeOnly = false) {
    if (!match) return treeOnly ? "" : "none";
    WalkText walk(treeOnly);
    match->acceptVisitor(walk);
    const TextRange range = match->range();
    if (treeOnly) return walk.text().substr(std::min<std::size_t>(2, walk.text().size()));
    return std::to_string(range.location) + "+" + std::to_string(range.length) + walk.text();
}

/// Runs one text through Oniguruma (the Regex of the grammar) and through the grammar matcher in
/// three set-ups: as the engine uses it (backtracking first, polynomial method when that takes
/// too long), with the polynomial method alone, and with a backtracking budget so small that the
/// hand-over happens in the middle of nearly every search. Oniguruma's answer does not count when
/// its effort bound cut the search short.
class OnigurumaComparison {
public:
    enum class Mode { Search, MatchAtStart };
    enum class Outcome { NoMatchInEither, SameMatch, ReferenceGaveUp, Different };

    Outcome compare(std::string_view text, Flavour flavour, FrameField field, Mode mode);

    /// Whether the last SameMatch covered the whole text.
    bool matchedWholeText() const { return m_matchedWholeText; }
    /// What differed in the last comparison whose outcome was Different, for the failure report.
    const std::string& difference() const { return m_difference; }

private:
    bool m_matchedWholeText = false;
    std::string m_difference;
};

}  // namespace vantrel::matcher_tests
