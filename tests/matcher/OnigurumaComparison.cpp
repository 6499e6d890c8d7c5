#include "OnigurumaComparison.h"

#include <array>
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
                                                          FrameField field, Mode mode) {
    // Enough for the simplest texts only: most searches hand over, at all kinds of points.
    constexpr std::size_t kTinyBudget = 40;
    const auto copies = [](std::size_t budget) {
        return std::array<GrammarMatcher, 4>{
            GrammarMatcher(grammarText(Flavour::PT, FrameField::TwoDigits), budget),
            GrammarMatcher(grammarText(Flavour::PF, FrameField::TwoDigits), budget),
            GrammarMatcher(grammarText(Flavour::PT, FrameField::ThreeDigits), budget),
            GrammarMatcher(grammarText(Flavour::PF, FrameField::ThreeDigits), budget)};
    };
    static const auto polynomial = copies(0);
    static const auto handOver = copies(kTinyBudget);
    const std::size_t index =
        (flavour == Flavour::PT ? 0u : 1u) + (field == FrameField::TwoDigits ? 0u : 2u);
    const std::pair<const char*, const GrammarMatcher*> setUps[]{
        {"as the engine uses it", &grammarMatcher(flavour, field)},
        {"polynomial method alone", &polynomial[index]},
        {"hand-over after a few steps", &handOver[index]}};

    bool gaveUp = false;
    const Regex& reference = grammar(flavour, field);
    const auto expected = mode == Mode::Search ? reference.search(text, gaveUp)
                                               : reference.matchAtStart(text, gaveUp);
    if (gaveUp) return Outcome::ReferenceGaveUp;
    const std::string expectedWalk = walkOf(expected);
    for (const auto& [name, matcher] : setUps) {
        const std::string actualWalk =
            walkOf(mode == Mode::Search ? matcher->search(text) : matcher->matchAtStart(text));
        if (actualWalk == expectedWalk) continue;
        m_difference = std::string(mode == Mode::Search ? "search" : "match at start") + " in " +
                       (index % 2 == 0 ? "PT" : "PF") + (index < 2 ? "" : " (three-digit frames)") +
                       " of \"" + escaped(text) + "\", grammar matcher " + name +
                       "\nOniguruma:       " + expectedWalk + "\ngrammar matcher: " + actualWalk;
        return Outcome::Different;
    }
    m_matchedWholeText = expected && expected->range().length == text.size();
    return expected ? Outcome::SameMatch : Outcome::NoMatchInEither;
}

}  // namespace vantrel::matcher_tests
