#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "Calc.h"
#include "Grammar.h"
#include "GrammarExamples.h"
#include "GrammarMatcher.h"
#include "OnigurumaComparison.h"
#include "Regex.h"
#include "TestRows.h"

namespace vantrel::matcher_tests {

namespace {

constexpr std::array<Flavour, 2> kFlavours{Flavour::PT, Flavour::PF};

// An accepted text matches as a whole and has an eager result in both readings; a rejected one
// leaves some of the text unread and has none.
TEST(Grammar, AcceptsAndRejectsItsExamples) {
    Calc calc;
    calc.setFps(DisplayState25fps);
    // Whole match in PT and in PF, eager result in PT and in PF.
    const auto readings = [&](std::string_view text) {
        std::string marks;
        for (const Flavour flavour : kFlavours) {
            const auto match = grammarMatcher(flavour).matchAtStart(text);
            marks += match && match->range().length == text.size() ? '1' : '0';
        }
        marks += calc.evalPT(text, DisplayStateTime) ? '1' : '0';
        return marks + (calc.evalPF(text, DisplayStateNumber) ? '1' : '0');
    };
    for (const auto text : kAcceptedExamples) EXPECT_EQ(readings(text), "1111") << text;
    for (const auto text : kRejectedExamples) EXPECT_EQ(readings(text), "0000") << text;
}

struct TreeRow {
    const char* name;
    const char* text;
    Flavour flavour;
    const char* tree;
};

class CaptureTrees : public testing::TestWithParam<TreeRow> {};

// Both the grammar matcher and Oniguruma give the tree in backtracking order.
TEST_P(CaptureTrees, FollowBacktrackingOrder) {
    const TreeRow& row = GetParam();
    EXPECT_EQ(walkOf(grammarMatcher(row.flavour).search(row.text), true), row.tree);
    EXPECT_EQ(walkOf(grammar(row.flavour).search(row.text), true), row.tree);
}

// Captures inside a parenthesised term nest one level down per parenthesis of operations, not
// per call; the first match stops before a division its product cannot take; a search starts
// where the first match is.
// clang-format off
INSTANTIATE_TEST_SUITE_P(Grammar, CaptureTrees, testing::Values(
    TreeRow{"timestamp_product_after_scalars", "2*3*01:00:00.00|25*4", Flavour::PT, " 0 [2*3*01:00:00.00|25*4]; z2 1 [2]; tsm1 1 [*3*01:00:00.00|25*4]; tsm2 2 [*3]; z2 3 [3]; ts2PT 2 [01:00:00.00|25]; tsm2 2 [*4]; z2 3 [4]"},
    TreeRow{"parenthesised_term", "1+(2-3)", Flavour::PT, " 0 [1+(2-3)]; z2 1 [1]; tss1 1 [+(2-3)]; z2 2 [2]; tss2 2 [-3]; z2 3 [3]"},
    TreeRow{"short_and_full_form", "0123 - 1:00", Flavour::PF, " 0 [0123 - 1:00]; ts1PF 1 [0123]; tss2 1 [- 1:00]; ts2PF 2 [ 1:00]"},
    TreeRow{"first_match_stops_before_division", "3*01:00:00.00/2", Flavour::PT, " 0 [3*01:00:00.00]; z2 1 [3]; tsm1 1 [*01:00:00.00]; ts2PT 2 [01:00:00.00]"},
    TreeRow{"match_behind_unreadable_start", "-x 12|25", Flavour::PT, " 0 [ 12|25]; ts2PT 1 [ 12|25]"},
    TreeRow{"empty_parentheses", "()", Flavour::PT, ""}),
    rowName<TreeRow>);
// clang-format on

// The PF copy differs only in group names (which the differential test compares with Oniguruma's);
// the HD and high rates follow the classic seven in each of the three suffix lists, and the
// three-digit frame field is one alternative before the classic one, optional suffix and all in
// the copy for a current rate of 120 labels a second.
TEST(Grammar, CopiesDifferOnlyInNamesAndAddedRates) {
    EXPECT_EQ(grammarText(Flavour::PF).size(), kGrammarPT.size());
    const std::string threeDigitsAlone = R"((?:\d{3}(?:(?:\|119n)|(?:\|119d)|(?:\|120)))";
    const auto at = kGrammarPT.find(R"(\.)" + threeDigitsAlone + "|");
    ASSERT_NE(at, std::string::npos);
    EXPECT_EQ(grammarText(Flavour::PT, FrameField::ThreeDigits).find(threeDigitsAlone + "?|"),
              at + 2);
    std::string classic(kGrammarPT);
    classic.erase(at + 2, threeDigitsAlone.size() + 1);
    const std::string addedSuffixes =
        R"(|(?:\|48)|(?:\|50)|(?:\|60)|(?:\|59d)|(?:\|47n)|(?:\|59n)|(?:\|72)|(?:\|96))"
        R"(|(?:\|95n)|(?:\|100)|(?:\|119n)|(?:\|119d)|(?:\|120))";
    for (auto suffixes = classic.find(addedSuffixes); suffixes != std::string::npos;
         suffixes = classic.find(addedSuffixes)) {
        EXPECT_EQ(classic.substr(suffixes - 9, 9), R"((?:\|29n))");
        classic.erase(suffixes, addedSuffixes.size());
    }
    // The classic frame field, closed by the parenthesis the three-digit alternative opened.
    EXPECT_NE(classic.find(R"(\.\d{1,2}(?:(?:\|24))"), std::string::npos);
    EXPECT_EQ(classic.size(), 763u + 1u);
}

std::string nested(std::size_t depth, std::string_view open, std::string_view close) {
    std::string text;
    for (std::size_t i = 0; i < depth; ++i) text += open;
    text += "1";
    for (std::size_t i = 0; i < depth; ++i) text += close;
    return text;
}

// Deep nesting is where backtracking gives up; here every depth must give the full answer, also
// beyond the point where Oniguruma stops trying, and as deep as the input field holds, where a
// matcher or evaluator that recursed per level would overflow the stack.
TEST(GrammarMatcher, EvaluatesDeepNesting) {
    Calc calc;
    calc.setFps(DisplayState25fps);
    const std::pair<std::string, const char*> cases[] = {
        {nested(9, "(", ")"), "1"},           {nested(9, "2*(", ")"), "512"},
        {nested(6, "(1)+(", ")"), "7"},       {nested(4, "(2*(", "))"), "16"},
        {nested(10922, "1+(", ")"), "10923"}, {nested(40, "00:00:00.01|25*2+(", ")"), "81"}};
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(calc.evalPT(text, DisplayStateNumber), value) << text.substr(0, 20);
    }
    EXPECT_EQ(calc.lazyevalPT(nested(9, "1+(", ""), DisplayStateNumber), "1");
    // Unclosed, every level fails until the sum behind the last parenthesis.
    // Appended rather than added: GCC 12 takes the sum for an overflow of the literal.
    std::string unclosed(32764, '(');
    unclosed += "1+2";
    EXPECT_EQ(calc.lazyevalPF(unclosed, DisplayStateNumber), "3");
    EXPECT_EQ(grammarMatcher(Flavour::PT).search(unclosed)->range(), (TextRange{32764, 3}));
    const std::string costly = nested(8, "01:00:00.00|25*2+(", ")*2");
    bool stoppedByBound = false;
    EXPECT_FALSE(grammar(Flavour::PT).search(costly, stoppedByBound).has_value());
    EXPECT_TRUE(stoppedByBound);
    EXPECT_EQ(calc.colorizeLazyEvaluatedString(costly),
              (std::vector<ColouredSpan>{{costly, SpanColour::Black}}));
}

// What the matcher rules out before trying must not change what it finds. A part that reads a fixed
// count of parentheses only ends where the text's depth allows it; where the count varies (a class
// holding a parenthesis, a repeated or optional one, alternatives that differ, a repetition of an
// unbalanced part) nothing may be ruled out for it. An alternative is passed over where the text
// does not begin as all its matches do; a prefix shared, optional, repeated, recursive or longer
// than the matcher looks ahead must not hide a match. Texts after the first are typed on by one
// matcher, which keeps only what still holds for them. Both methods: backtracking and without.
TEST(GrammarMatcher, FollowsOnigurumaWherePartsAreRuledOutAhead) {
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {R"(\((?:a|\(b\))*\))", {"((a)"}},
        {R"([()]{2}a)", {"(()a"}},
        {R"(\(+a)", {"x((a"}},
        {R"((?:\(|x)y\))", {"(xy)"}},
        {R"(\(\(?a\))", {"((a)"}},
        {R"((?:\(a)*b)", {"x(a(ab"}},
        {R"((?<p>\((?:\g<p>|a)\)){0}x\g<p>)", {"x((a)x((a))"}},
        {R"(\d{3}a|b)", {"12", "123a"}},
        {R"((?:a|b)\(x*\))", {"a(xx", "a(xx)"}},
        {R"(x(?:ab|ac|a)d)", {"xacd", "xad"}},
        {R"(x(?:a{2,3}c|a{2}b))", {"xaab", "xaaac"}},
        {R"(x(?:(?:ab)?ac|(?:ab)*d))", {"xac", "xababd", "xd"}},
        {R"(x(?:(?@<h>a+)b|ac))", {"xaab"}},
        {R"((?<r>ab\g<r>?c){0}x(?:\g<r>d|abz))", {"xabz", "xababccd"}},
        {R"(x(?:abcdefghij|abcdefghik))", {"xabcdefghik"}}};
    const auto range = [](const auto& match) {
        if (!match) return std::string("none");
        return std::to_string(match->range().location) + "+" +
               std::to_string(match->range().length);
    };
    for (const auto& [pattern, texts] : cases) {
        for (const std::size_t steps : {std::size_t{0}, GrammarMatcher::kBacktrackingSteps}) {
            const GrammarMatcher matcher(pattern, steps);
            for (const std::string& text : texts) {
                EXPECT_EQ(range(matcher.search(text)), range(Regex(pattern).search(text)))
                    << pattern << " in " << text << " with " << steps << " steps";
            }
        }
    }
}

TEST(GrammarMatcher, RefusesWhatItCannotMatchAsOnigurumaWould) {
    for (const char* pattern :
         {"a*?", "a*+", "(?=a)b", "(a)\\1", "(a", "a)", "[ab", "[^a]", "a.b", "^a", "\\g<x>",
          "\\g<x>(?<x>\\g<x>a|b){0}", "(?:a?)*", "(?<x>a)(?<x>b)", "a{3,2}"}) {
        EXPECT_THROW(GrammarMatcher{pattern}, std::invalid_argument) << pattern;
    }
}

}  // namespace

}  // namespace vantrel::matcher_tests
