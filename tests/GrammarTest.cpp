#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Calc.h"
#include "Grammar.h"
#include "Regex.h"

using namespace vantrel;

namespace {

class AcceptedExpressions : public testing::TestWithParam<const char*> {};

TEST_P(AcceptedExpressions, EvaluateInBothReadings) {
    Calc calc;
    calc.setFps(DisplayState25fps);
    EXPECT_TRUE(calc.evalPT(GetParam(), DisplayStateTime).has_value());
    EXPECT_TRUE(calc.evalPF(GetParam(), DisplayStateTime).has_value());
}

INSTANTIATE_TEST_SUITE_P(Grammar, AcceptedExpressions,
                         testing::Values("1+2", " 1 + 2 ", "2*3", "6/4", "12345", "1.",
                                         "01:00:00.00|25*2", "2*3*01:00:00.00|25*4",
                                         "2-01:00:00.00", "01:00:00.00|25 - 00:00:01.00",
                                         "01:00:00.00+01:00:00.00", "01:00:00.00*3/2",
                                         "00:00:10.00/2", "(1+2)*3", "( 1+2 )", "((1))", "2* (3)",
                                         "(1) /2", "(2*01:00:00.00)/4", "2*(01:00:00.00+1)", ":12",
                                         "1:00", "1:2:3.4", "1:00.5|25", "0001:00:00.00",
                                         "01:00:00.00|29d", "12|25", "100|25", "0100", "00|25",
                                         "0100|25*2", "00/(1-1)", "1\t+\t2"));

class RejectedExpressions : public testing::TestWithParam<const char*> {};

TEST_P(RejectedExpressions, GiveNoResult) {
    Calc calc;
    calc.setFps(DisplayState25fps);
    EXPECT_FALSE(calc.evalPT(GetParam(), DisplayStateTime).has_value());
    EXPECT_FALSE(calc.evalPF(GetParam(), DisplayStateNumber).has_value());
}

INSTANTIATE_TEST_SUITE_P(Grammar, RejectedExpressions,
                         testing::Values("5|25", "0123456789", "01:00:00|25", "01:00:00.00 |25",
                                         "01:00:00.00|23N", "01:00:00.00|24|25", "1:2:3:4.5",
                                         "01:00:00.00*01:00:00.00", "01:00:00.00/01:00:00.00",
                                         "3*01:00:00.00/2", "2*(4)/3", "1 * (2) / 3", "2/ (3)",
                                         "2/(3) ", "0.5", "2*0.5", ".5", "0*5", "-1", "1--1", "1+",
                                         "1.5.5", "1e5", "1,5", "()", ""));

// Records the capture tree in walk order as "name level text" lines.
class TreeRecorder : public CaptureVisitor {
public:
    void visitAtFirstCapture(const Capture& capture) override {
        lines.push_back(std::string(capture.groupName) + " " + std::to_string(capture.level) +
                        " [" + std::string(capture.text) + "]");
    }
    void visitAtLastCapture(const Capture&) override {}
    std::vector<std::string> lines;
};

std::vector<std::string> treeOf(std::string_view text, Flavour flavour) {
    TreeRecorder recorder;
    const auto match = grammar(flavour).search(text);
    if (match) match->acceptVisitor(recorder);
    return recorder.lines;
}

struct TreeRow {
    const char* text;
    std::vector<std::string> tree;
};

class CaptureTrees : public testing::TestWithParam<TreeRow> {};

TEST_P(CaptureTrees, MatchBacktrackingOrder) {
    EXPECT_EQ(treeOf(GetParam().text, Flavour::PT), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    Grammar, CaptureTrees,
    testing::Values(
        TreeRow{"2*3*01:00:00.00|25*4",
                {" 0 [2*3*01:00:00.00|25*4]", "z2 1 [2]", "tsm1 1 [*3*01:00:00.00|25*4]",
                 "tsm2 2 [*3]", "z2 3 [3]", "ts2PT 2 [01:00:00.00|25]", "tsm2 2 [*4]", "z2 3 [4]"}},
        TreeRow{" 1 + 2 ", {" 0 [ 1 + 2 ]", "z2 1 [ 1 ]", "tss1 1 [+ 2 ]", "z2 2 [ 2 ]"}},
        TreeRow{"(1+2)*3",
                {" 0 [(1+2)*3]", "z2 1 [1]", "tss1 1 [+2]", "z2 2 [2]", "tsm2 1 [*3]", "z2 2 [3]"}},
        TreeRow{"0123 - 1:00",
                {" 0 [0123 - 1:00]", "ts1PT 1 [0123]", "tss2 1 [- 1:00]", "ts2PT 2 [ 1:00]"}},
        TreeRow{
            "3*01:00:00.00/2",
            {" 0 [3*01:00:00.00]", "z2 1 [3]", "tsm1 1 [*01:00:00.00]", "ts2PT 2 [01:00:00.00]"}}));

TEST(Grammar, PFCopyDiffersOnlyInTimestampGroupNames) {
    EXPECT_EQ(treeOf("0123+12|25", Flavour::PF),
              (std::vector<std::string>{" 0 [0123+12|25]", "ts1PF 1 [0123]", "tss1 1 [+12|25]",
                                        "ts2PF 2 [12|25]"}));
    std::string pf = grammarText(Flavour::PF);
    EXPECT_EQ(pf.size(), kGrammarPT.size());
    // The six HD rates follow the classic seven in each of the three suffix lists; without them
    // the grammar is the classic text, character for character in length.
    std::string classic(kGrammarPT);
    const std::string hdSuffixes = R"(|(?:\|48)|(?:\|50)|(?:\|60)|(?:\|59d)|(?:\|47n)|(?:\|59n))";
    for (auto at = classic.find(hdSuffixes); at != std::string::npos;
         at = classic.find(hdSuffixes)) {
        EXPECT_EQ(classic.substr(at - 9, 9), R"((?:\|29n))");
        classic.erase(at, hdSuffixes.size());
    }
    EXPECT_EQ(classic.size(), 763u);
}

std::string nested(int depth, std::string_view open, std::string_view close) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += open;
    text += "1";
    for (int i = 0; i < depth; ++i) text += close;
    return text;
}

// Deep parentheses cost Oniguruma three to nine times as much per level, depending on what each
// level holds; the engine must give the right values for the plainest shapes at nine levels and
// the costliest ones we know at five, as it did when it matched with Oniguruma.
TEST(Grammar, DeepParenthesesStillMatch) {
    Calc calc;
    for (int depth = 1; depth <= 9; ++depth) {
        EXPECT_EQ(calc.evalPT(nested(depth, "(", ")"), DisplayStateNumber), "1") << depth;
        EXPECT_EQ(calc.evalPT(nested(depth, "1+(", ")"), DisplayStateNumber),
                  std::to_string(depth + 1))
            << depth;
        EXPECT_EQ(calc.evalPT(nested(depth, "2*(", ")"), DisplayStateNumber),
                  std::to_string(1 << depth))
            << depth;
        EXPECT_EQ(calc.lazyevalPT(nested(depth, "1+(", ""), DisplayStateNumber), "1") << depth;
    }
    calc.setFps(DisplayState25fps);
    EXPECT_EQ(calc.evalPT(nested(6, "(1)+(", ")"), DisplayStateNumber), "7");
    EXPECT_EQ(calc.evalPT(nested(5, "00:00:00.01|25*2+(", ")"), DisplayStateNumber), "11");
    EXPECT_EQ(calc.evalPT(nested(4, "(2*(", "))"), DisplayStateNumber), "16");
}

TEST(Grammar, EngineMatchesBeyondOnigurumasEffortBound) {
    // Eight levels with a timestamp product at each need tens of millions of backtracking steps:
    // Oniguruma gives up, the engine's own grammar matcher does not.
    const std::string costly = nested(8, "01:00:00.00|25*2+(", ")*2");
    bool stoppedByBound = false;
    EXPECT_FALSE(grammar(Flavour::PT).search(costly, stoppedByBound).has_value());
    EXPECT_TRUE(stoppedByBound);
    Calc calc;
    EXPECT_TRUE(calc.evalPT(costly, DisplayStateTime).has_value());
    EXPECT_EQ(calc.colorizeLazyEvaluatedString(costly),
              (std::vector<ColouredSpan>{{costly, SpanColour::Black}}));
}

}  // namespace
