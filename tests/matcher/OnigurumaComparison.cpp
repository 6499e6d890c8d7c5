#include "OnigurumaComparison.h"

#include <cstdio>

#include "GrammarMatcher.h"

namespace vantrel::matcher_tests {

namespace {

// The text with its bytes escaped where they are not printable ASCII, for reports.
std::string escaped(std::string_view text) {
    std::string result;
    char hex[5];
    for (const char c : text) {
        if (c >= 0x20 && c < 0x7f && c != '\\') {
            result += c;
        } else {
            std::snprintf(hex, sizeof hex, "\\x%02x",
                          static_cast<unsigned>(static_cast<unsigned char>(c)));
            result += hex;
        }
    }
    return result;
}

}  // namespace

void WalkText::visitAtFirstCapture(const Capture& capture) {
    m_text += "; " + std::string(capture.groupName) + " " + std::to_string(capture.level) + " [" +
              escaped(capture.text) + "]";
    if (!m_treeOnly) {
        m_text += " at " + std::to_string(capture.range.location) + "+" +
                  std::to_string(capture.range.length);
    }
}

void WalkText::visitAtLastCapture(const Capture& capture) {
    if (!m_treeOnly) m_text += "; end of " + std::string(capture.groupName);
}

OnigurumaComparison::Outcome OnigurumaComparison::compare(std::string_view text, Flavour flavour,
                                                          Mode mode) {
    // Enough for the simplest texts only: most searches hand over, at all kinds of points.
    constexpr std::size_t kTinyBudget = 40;
    static const GrammarMatcher polynomial[]{GrammarMatcher(grammarText(Flavour::PT), 0),
                                             GrammarMatcher(grammarText(Flavour::PF), 0)};
    static const GrammarMatcher handOver[]{GrammarMatcher(grammarText(Flavour::PT), kTinyBudget),
                                           GrammarMatcher(grammarText(Flavour::PF), kTinyBudget)};
    const int index = flavour == Flavour::PT ? 0 : 1;
    const std::pair<const char*, const GrammarMatcher*> setUps[]{
        {"as the engine uses it", &grammarMatcher(flavour)},
        {"polynomial method alone", &polynomial[index]},
        {"hand-over after a few steps", &handOver[index]}};

    bool gaveUp = false;
    const Regex& reference = grammar(flavour);
    const auto expected = mode == Mode::Search ? reference.search(text, gaveUp)
                                               : reference.matchAtStart(text, gaveUp);
    if (gaveUp) return Outcome::ReferenceGaveUp;
    const std::string expectedWalk = walkOf(expected);
    for (const auto& [name, matcher] : setUps) {
        const std::string actualWalk =
            walkOf(mode == Mode::Search ? matcher->search(text) : matcher->matchAtStart(text));
        if (actualWalk == expectedWalk) continue;
        m_difference = std::string(mode == Mode::Search ? "search" : "match at start") + " in " +
                       (index == 0 ? "PT" : "PF") + " of \"" + escaped(text) +
                       "\", grammar matcher " + name + "\nOniguruma:       " + expectedWalk +
                       "\ngrammar matcher: " + actualWalk;
        return Outcome::Different;
    }
    m_matchedWholeText = expected && expected->range().length == text.size();
    return expected ? Outcome::SameMatch : Outcome::NoMatchInEither;
}

}  // namespace vantrel::matcher_tests
