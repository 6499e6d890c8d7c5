#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Calc.h"
#include "Grammar.h"
#include "GrammarExamples.h"
#include "Regex.h"

using namespace vantrel;

namespace {

class AcceptedExpressions : public testing::TestWithParam<std::string_view> {};

TEST_P(AcceptedExpressions, EvaluateInBothReadings) {
    Calc calc;
    calc.setFps(DisplayState25fps);
    EXPECT_TRUE(calc.evalPT(GetParam(), DisplayStateTime).has_value());
    EXPECT_TRUE(calc.evalPF(GetParam(), DisplayStateTime).has_value());
}

INSTANTIATE_TEST_SUITE_P(Grammar, AcceptedExpressions,
                         testing::ValuesIn(matcher_tests::kAcceptedExamples));

class RejectedExpressions : public testing::TestWithParam<std::string_view> {};

TEST_P(RejectedExpressions, GiveNoResult) {
    Calc calc;
    calc.setFps(DisplayState25fps);
    EXPECT_FALSE(calc.evalPT(GetParam(), DisplayStateTime).has_value());
    EXPECT_FALSE(calc.evalPF(GetParam(), DisplayStateNumber).has_value());
}

INSTANTIATE_TEST_SUITE_P(Grammar, RejectedExpressions,
                         testing::ValuesIn(matcher_tests::kRejectedExamples));

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
