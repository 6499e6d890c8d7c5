#include "OnigurumaComparison.h"

#include <array>
#include <cstdio>
#include <optional>

#include "GrammarMatcher.h"

namespace vantrel::matcher_tests {

struct OnigurumaComparison::SetUp {
    const char* name;
    std::array<const GrammarMatcher*, 2> matchers;
};

void CaptureWalk::record(bool entering, const Capture& capture) {
    m_events.push_back({entering, capture.groupName, capture.text, capture.level, capture.range});
}

namespace {

struct Result {
    bool matched = false;
    TextRange range;
    std::vector<CaptureEvent> walk;
};

template <typename Match>
Result resultOf(const std::optional<Match>& match) {
    Result result;
    if (!match) return result;
    result.matched = true;
    result.range = match->range();
    CaptureWalk walk;
    match->acceptVisitor(walk);
    result.walk = walk.events();
    return result;
}

std::string describe(const Result& result) {
    if (!result.matched) return "no match\n";
    std::string text = "match at " + std::to_string(result.range.location) + "+" +
                       std::to_string(result.range.length) + ":";
    for (const CaptureEvent& event : result.walk) {
        if (event.entering) {
            text += " [" + std::string(event.groupName) + " " + std::to_string(event.level) +
                    " \"" + escaped(event.text) + "\"]";
        }
    }
    return text + "\n";
}

// Enough for the simplest texts only: most searches hand over, at all kinds of points.
constexpr std::size_t kTinyBudget = 40;

const GrammarMatcher& ownedMatcher(Flavour flavour, std::size_t steps) {
    static const GrammarMatcher ptPolynomial(grammarText(Flavour::PT), 0);
    static const GrammarMatcher pfPolynomial(grammarText(Flavour::PF), 0);
    static const GrammarMatcher ptHandOver(grammarText(Flavour::PT), kTinyBudget);
    static const GrammarMatcher pfHandOver(grammarText(Flavour::PF), kTinyBudget);
    if (steps == 0) return flavour == Flavour::PT ? ptPolynomial : pfPolynomial;
    return flavour == Flavour::PT ? ptHandOver : pfHandOver;
}

}  // namespace

OnigurumaComparison::OnigurumaComparison()
    : m_setUps{
          {"as the engine uses it", {&grammarMatcher(Flavour::PT), &grammarMatcher(Flavour::PF)}},
          {"polynomial method alone",
           {&ownedMatcher(Flavour::PT, 0), &ownedMatcher(Flavour::PF, 0)}},
          {"hand-over after a few steps",
           {&ownedMatcher(Flavour::PT, kTinyBudget), &ownedMatcher(Flavour::PF, kTinyBudget)}},
      } {}

OnigurumaComparison::~OnigurumaComparison() = default;

OnigurumaComparison::Outcome OnigurumaComparison::compare(std::string_view text, Flavour flavour,
                                                          Mode mode) {
    const Regex& reference = grammar(flavour);
    bool gaveUp = false;
    const Result expected = mode == Mode::Search ? resultOf(reference.search(text, gaveUp))
                                                 : resultOf(reference.matchAtStart(text, gaveUp));
    if (gaveUp) return Outcome::ReferenceGaveUp;
    const std::size_t index = flavour == Flavour::PT ? 0 : 1;
    for (const SetUp& setUp : m_setUps) {
        const GrammarMatcher& matcher = *setUp.matchers[index];
        const Result actual = mode == Mode::Search ? resultOf(matcher.search(text))
                                                   : resultOf(matcher.matchAtStart(text));
        if (expected.matched == actual.matched && expected.range == actual.range &&
            expected.walk == actual.walk) {
            continue;
        }
        m_difference = std::string(mode == Mode::Search ? "search" : "match at start") + " in " +
                       (flavour == Flavour::PT ? "PT" : "PF") + " of \"" + escaped(text) +
                       "\", grammar matcher " + setUp.name + "\nOniguruma: " + describe(expected) +
                       "grammar matcher: " + describe(actual);
        return Outcome::Different;
    }
    m_matchedWholeText = expected.matched && expected.range.length == text.size();
    return expected.matched ? Outcome::SameMatch : Outcome::NoMatchInEither;
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\\' || c == '"') {
            result += '\\';
            result += c;
        } else if (byte >= 0x20 && byte < 0x7f) {
            result += c;
        } else {
            char hex[5];
            std::snprintf(hex, sizeof hex, "\\x%02x", byte);
            result += hex;
        }
    }
    return result;
}

}  // namespace vantrel::matcher_tests
