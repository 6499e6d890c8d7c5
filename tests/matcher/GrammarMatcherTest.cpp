#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Calc.h"
#include "Grammar.h"
#include "GrammarExamples.h"
#include "GrammarMatcher.h"
#include "OnigurumaComparison.h"
#include "Regex.h"

namespace vantrel::matcher_tests {

namespace {

constexpr std::array<Flavour, 2> kFlavours{Flavour::PT, Flavour::PF};

// Table rows carry a `name` that names the test and stands for the row in GoogleTest's output.
template <typename Row>
std::string nameOf(const testing::TestParamInfo<Row>& row) {
    return row.param.name;
}

template <typename Row>
requires requires(const Row& row) {
    row.name;
}
void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

bool acceptedAsWhole(std::string_view text, Flavour flavour) {
    const auto match = grammarMatcher(flavour).matchAtStart(text);
    return match && match->range().length == text.size();
}

class AcceptedExamples : public testing::TestWithParam<std::string_view> {};

TEST_P(AcceptedExamples, MatchAsAWhole) {
    for (const Flavour flavour : kFlavours) EXPECT_TRUE(acceptedAsWhole(GetParam(), flavour));
}

INSTANTIATE_TEST_SUITE_P(Grammar, AcceptedExamples, testing::ValuesIn(kAcceptedExamples));

class RejectedExamples : public testing::TestWithParam<std::string_view> {};

TEST_P(RejectedExamples, DoNotMatchAsAWhole) {
    for (const Flavour flavour : kFlavours) EXPECT_FALSE(acceptedAsWhole(GetParam(), flavour));
}

INSTANTIATE_TEST_SUITE_P(Grammar, RejectedExamples, testing::ValuesIn(kRejectedExamples));

// The walk as "name level [text]" lines, one per node on entry.
std::vector<std::string> treeOf(std::string_view text, Flavour flavour) {
    std::vector<std::string> lines;
    const auto match = grammarMatcher(flavour).search(text);
    if (!match) return lines;
    CaptureWalk walk;
    match->acceptVisitor(walk);
    for (const CaptureEvent& event : walk.events()) {
        if (event.entering) {
            lines.push_back(std::string(event.groupName) + " " + std::to_string(event.level) +
                            " [" + std::string(event.text) + "]");
        }
    }
    return lines;
}

struct TreeRow {
    const char* name;
    const char* text;
    Flavour flavour;
    std::vector<std::string> tree;
};

class CaptureTrees : public testing::TestWithParam<TreeRow> {};

TEST_P(CaptureTrees, FollowBacktrackingOrder) {
    EXPECT_EQ(treeOf(GetParam().text, GetParam().flavour), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    Grammar, CaptureTrees,
    testing::Values(
        // The scalar-first product takes the timestamp and all scalars behind it.
        TreeRow{"timestamp_product_after_scalars",
                "2*3*01:00:00.00|25*4",
                Flavour::PT,
                {" 0 [2*3*01:00:00.00|25*4]", "z2 1 [2]", "tsm1 1 [*3*01:00:00.00|25*4]",
                 "tsm2 2 [*3]", "z2 3 [3]", "ts2PT 2 [01:00:00.00|25]", "tsm2 2 [*4]", "z2 3 [4]"}},
        // The parenthesised term is a timestamp operand: captures inside it nest one level down
        // per parenthesis of operations, not per call.
        TreeRow{
            "parenthesised_term",
            "1+(2-3)",
            Flavour::PT,
            {" 0 [1+(2-3)]", "z2 1 [1]", "tss1 1 [+(2-3)]", "z2 2 [2]", "tss2 2 [-3]", "z2 3 [3]"}},
        TreeRow{"short_and_full_form",
                "0123 - 1:00",
                Flavour::PF,
                {" 0 [0123 - 1:00]", "ts1PF 1 [0123]", "tss2 1 [- 1:00]", "ts2PF 2 [ 1:00]"}},
        // The first match stops before the division, which that form of product cannot take.
        TreeRow{
            "first_match_stops_before_division",
            "3*01:00:00.00/2",
            Flavour::PT,
            {" 0 [3*01:00:00.00]", "z2 1 [3]", "tsm1 1 [*01:00:00.00]", "ts2PT 2 [01:00:00.00]"}},
        // A search starts where the first match is, not at the first character.
        TreeRow{"match_behind_unreadable_start",
                "-x 12|25",
                Flavour::PT,
                {" 0 [ 12|25]", "ts2PT 1 [ 12|25]"}},
        TreeRow{"empty_parentheses", "()", Flavour::PT, {}}),
    nameOf<TreeRow>);

TEST(GrammarMatcher, NumbersAndNamesGroupsAsOniguruma) {
    for (const Flavour flavour : kFlavours) {
        const GrammarPattern& pattern = grammarMatcher(flavour).pattern();
        EXPECT_EQ(pattern.groupCount(), 30u);
        for (std::uint32_t group = 0; group <= 32; ++group) {
            EXPECT_EQ(pattern.groupName(group), grammar(flavour).groupName(static_cast<int>(group)))
                << group;
        }
    }
}

// Deep parentheses are where backtracking gives up; here every depth must give the full answer.
TEST(GrammarMatcher, EvaluatesThousandsOfNestedParentheses) {
    constexpr std::size_t depth = 3000;
    std::string closed;
    for (std::size_t i = 0; i < depth; ++i) closed += "1+(";
    closed += "1" + std::string(depth, ')');
    Calc calc;
    EXPECT_EQ(calc.evalPT(closed, DisplayStateNumber), std::to_string(depth + 1));
    // Unclosed, every level fails until the sum behind the last parenthesis.
    const std::string unclosed = std::string(depth, '(') + "1+2";
    EXPECT_EQ(calc.lazyevalPF(unclosed, DisplayStateNumber), "3");
    const auto match = grammarMatcher(Flavour::PT).search(unclosed);
    ASSERT_TRUE(match);
    EXPECT_EQ(match->range(), (TextRange{depth, 3}));
}

// The hardest shape known for backtracking at every level: a timestamp product and a sum.
TEST(GrammarMatcher, EvaluatesDeepTimestampProducts) {
    constexpr int depth = 40;
    std::string text;
    for (int i = 0; i < depth; ++i) text += "00:00:00.01|25*2+(";
    text += "1" + std::string(depth, ')');
    Calc calc;
    calc.setFps(DisplayState25fps);
    EXPECT_EQ(calc.evalPT(text, DisplayStateNumber), std::to_string(2 * depth + 1));
}

// Chains as long as the text, through calls and through captures: neither method may recurse on
// the call stack, which a hundred thousand levels would overflow.
struct ChainRow {
    const char* name;
    const char* pattern;
    const char* opening;
    const char* middle;
    const char* closing;
    std::size_t captures;
};

class LongChains : public testing::TestWithParam<ChainRow> {};

TEST_P(LongChains, MatchWithoutRecursion) {
    constexpr std::size_t depth = 100'000;
    const ChainRow& row = GetParam();
    std::string text;
    for (std::size_t i = 0; i < depth; ++i) text += row.opening;
    text += row.middle;
    for (std::size_t i = 0; i < depth; ++i) text += row.closing;
    for (const std::size_t steps : {std::size_t{0}, GrammarMatcher::kBacktrackingSteps}) {
        const GrammarMatcher matcher(row.pattern, steps);
        const auto match = matcher.search(text);
        ASSERT_TRUE(match) << steps;
        EXPECT_EQ(match->range(), (TextRange{0, text.size()})) << steps;
        EXPECT_EQ(match->captures().size(), 1 + row.captures * depth) << steps;
        EXPECT_EQ(match->captures().back().level, row.captures * depth) << steps;
    }
}

INSTANTIATE_TEST_SUITE_P(Rules, LongChains,
                         testing::Values(ChainRow{"calls_behind_parentheses",
                                                  "\\g<x>(?<x>\\(\\g<x>|a){0}", "(", "a", "", 0},
                                         ChainRow{"captures_inside_parentheses",
                                                  "\\g<x>(?<x>\\((?@<o>\\g<x>)\\)|a){0}", "(", "a",
                                                  ")", 1}),
                         nameOf<ChainRow>);

// Small patterns that isolate one rule of backtracking each, checked against Oniguruma itself.
struct PatternRow {
    const char* name;
    const char* pattern;
    std::vector<const char*> texts;
};

class SmallPatterns : public testing::TestWithParam<PatternRow> {};

template <typename Match>
std::string outcome(const std::optional<Match>& match) {
    if (!match) return "none";
    CaptureWalk walk;
    match->acceptVisitor(walk);
    std::string text =
        std::to_string(match->range().location) + "+" + std::to_string(match->range().length);
    for (const CaptureEvent& event : walk.events()) {
        text += (event.entering ? " <" : " >") + std::string(event.groupName) + ":" +
                std::string(event.text) + "@" + std::to_string(event.level);
    }
    return text;
}

TEST_P(SmallPatterns, MatchAsOniguruma) {
    const Regex reference(GetParam().pattern);
    const GrammarMatcher matcher(GetParam().pattern);
    for (const char* text : GetParam().texts) {
        EXPECT_EQ(outcome(matcher.search(text)), outcome(reference.search(text))) << text;
        EXPECT_EQ(outcome(matcher.matchAtStart(text)), outcome(reference.matchAtStart(text)))
            << text;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rules, SmallPatterns,
    testing::Values(
        PatternRow{"alternatives_in_written_order",
                   "(?@<x>a|ab)(?@<y>b|bc)c?",
                   {"abc", "abbc", "ab", "xabcx", "a"}},
        PatternRow{
            "greedy_star_gives_back", "(?@<x>a)*(?@<y>ab)?b", {"aaab", "ab", "b", "aab", "aaa"}},
        PatternRow{"interval_tries_most_first",
                   "(?@<x>\\d{0,2}):?(?@<y>\\d{1,3})",
                   {"1234", "12:345", "1", "12", "123456", ":1"}},
        PatternRow{"calls_reentered_on_backtracking",
                   "\\g<p>(?@<e>e)(?<p>(?@<a>a)|(?@<b>a)\\g<p>|(?@<c>aa)){0}",
                   {"ae", "aae", "aaae", "aaaae", "aaaa"}},
        PatternRow{"history_inside_recursive_calls",
                   "\\g<s>(?<s>(?@<n>\\d)(?:(?@<p>\\+\\g<t>))*){0}(?<t>\\(\\g<s>\\)|(?@<d>\\d)){0}",
                   {"1+(2+(3))", "1+(2+(3)", "1+2+3", "(1)", "1+(2+3)+4", "x1+(((2)))"}},
        PatternRow{"empty_definitions_match_nothing_in_place",
                   "(?<a>x){0}y\\g<a>(?@<h>y){0}",
                   {"yx", "xy", "y", "yxy"}},
        PatternRow{"history_only_up_to_group_31",
                   "()()()()()()()()()()()()()()()()()()()()()()()()()()()()()(?@<h>a)(?@<i>b)",
                   {"ab", "xab"}},
        PatternRow{"classes_ranges_and_escapes",
                   "[1-3a\\d]+(?@<w>\\s*)[\\-+*/|.]",
                   {"13a \t-", "99\n/", "4|", "a.", "x \v+", "1\f*"}}),
    nameOf<PatternRow>);

struct BadPatternRow {
    const char* name;
    const char* pattern;
};

class UnsupportedPatterns : public testing::TestWithParam<BadPatternRow> {};

TEST_P(UnsupportedPatterns, AreRefused) {
    EXPECT_THROW(GrammarMatcher{GetParam().pattern}, std::invalid_argument);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, UnsupportedPatterns,
    testing::Values(BadPatternRow{"lazy_quantifier", "a*?"},
                    BadPatternRow{"possessive_quantifier", "a*+"},
                    BadPatternRow{"look_ahead", "(?=a)b"},
                    BadPatternRow{"back_reference", "(a)\\1"},
                    BadPatternRow{"unclosed_group", "(a"}, BadPatternRow{"unopened_group", "a)"},
                    BadPatternRow{"unclosed_class", "[ab"}, BadPatternRow{"negated_class", "[^a]"},
                    BadPatternRow{"any_character", "a.b"}, BadPatternRow{"anchor", "^a"},
                    BadPatternRow{"undefined_call", "\\g<x>"},
                    BadPatternRow{"left_recursion", "\\g<x>(?<x>\\g<x>a|b){0}"},
                    BadPatternRow{"repeated_empty_part", "(?:a?)*"},
                    BadPatternRow{"definition_given_twice", "(?<x>a)(?<x>b)"},
                    BadPatternRow{"interval_wrong_way_round", "a{3,2}"}),
    nameOf<BadPatternRow>);

}  // namespace

}  // namespace vantrel::matcher_tests
