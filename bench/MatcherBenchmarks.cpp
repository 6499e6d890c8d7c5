// The grammar matcher beside Oniguruma on the same texts: one search and a walk of its capture
// tree, as the engine does for each reading. Names end in _GrammarMatcher or _Oniguruma so that
// bench/plot-growth.py can put the two side by side.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "ExpressionCorpus.h"
#include "Grammar.h"
#include "GrammarMatcher.h"
#include "Regex.h"

namespace {

using vantrel::bench::Closing;

// Counts the nodes, so that the walk cannot be optimised away.
class CountingVisitor : public vantrel::CaptureVisitor {
public:
    void visitAtFirstCapture(const vantrel::Capture&) override { ++nodes; }
    void visitAtLastCapture(const vantrel::Capture&) override {}
    std::size_t nodes = 0;
};

// The length of the match, or 0 for none; with Oniguruma also none when it gave up.
template <typename Match>
std::size_t searchAndWalk(const std::optional<Match>& match) {
    if (!match) return 0;
    CountingVisitor visitor;
    match->acceptVisitor(visitor);
    benchmark::DoNotOptimize(visitor.nodes);
    return match->range().length;
}

std::size_t ours(const std::string& text) {
    return searchAndWalk(vantrel::grammarMatcher(vantrel::Flavour::PT).search(text));
}

std::size_t oniguruma(const std::string& text) {
    return searchAndWalk(vantrel::grammar(vantrel::Flavour::PT).search(text));
}

using Engine = std::size_t (*)(const std::string&);

void corpus(benchmark::State& state, Engine engine) {
    const auto& texts = vantrel::bench::editorExpressions();
    for (auto _ : state) {
        for (const auto& text : texts) benchmark::DoNotOptimize(engine(text));
    }
    state.counters["per_expression"] = benchmark::Counter(
        static_cast<double>(texts.size()),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// The matched_chars counter shows a search that Oniguruma's effort bound cut short as 0. Every
// search starts afresh: the grammar matcher keeps what it worked out for the last text as far as
// the next one agrees with it, which would make searching one text again nearly free, so the
// text takes turns with a copy behind a blank, which agrees with it nowhere and costs the same.
void oneText(benchmark::State& state, Engine engine, const std::string& text) {
    const std::string texts[] = {text, " " + text};
    std::size_t matched = 0;
    std::size_t turn = 0;
    for (auto _ : state) {
        matched = engine(texts[turn++ % 2]);
        benchmark::DoNotOptimize(matched);
    }
    state.counters["chars"] = static_cast<double>(text.size());
    state.counters["matched_chars"] = static_cast<double>(matched);
}

void depth(benchmark::State& state, Engine engine, Closing closing) {
    oneText(state, engine,
            vantrel::bench::nestedExpression(static_cast<int>(state.range(0)), closing));
}

void length(benchmark::State& state, Engine engine, Closing closing) {
    oneText(state, engine,
            vantrel::bench::longExpression(static_cast<std::size_t>(state.range(0)), closing));
}

void BM_Corpus_GrammarMatcher(benchmark::State& state) {
    corpus(state, ours);
}
void BM_Corpus_Oniguruma(benchmark::State& state) {
    corpus(state, oniguruma);
}
void BM_Depth_Closed_GrammarMatcher(benchmark::State& state) {
    depth(state, ours, Closing::Closed);
}
void BM_Depth_Closed_Oniguruma(benchmark::State& state) {
    depth(state, oniguruma, Closing::Closed);
}
void BM_Depth_Unclosed_GrammarMatcher(benchmark::State& state) {
    depth(state, ours, Closing::Unclosed);
}
void BM_Depth_Unclosed_Oniguruma(benchmark::State& state) {
    depth(state, oniguruma, Closing::Unclosed);
}
void BM_Length_Closed_GrammarMatcher(benchmark::State& state) {
    length(state, ours, Closing::Closed);
}
void BM_Length_Closed_Oniguruma(benchmark::State& state) {
    length(state, oniguruma, Closing::Closed);
}
void BM_Length_Unclosed_GrammarMatcher(benchmark::State& state) {
    length(state, ours, Closing::Unclosed);
}
void BM_Length_Unclosed_Oniguruma(benchmark::State& state) {
    length(state, oniguruma, Closing::Unclosed);
}

// Oniguruma finishes nine levels of this shape within its effort bound and no more.
constexpr int kDeepestForOniguruma = 9;
constexpr int kDeepest = 30;

void lengths(benchmark::internal::Benchmark* benchmark) {
    for (const int chars : {125, 250, 500, 1000, 2000, 4000, 10000}) benchmark->Arg(chars);
}

}  // namespace

BENCHMARK(BM_Corpus_GrammarMatcher)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Corpus_Oniguruma)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Depth_Closed_GrammarMatcher)->DenseRange(1, kDeepest)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Depth_Closed_Oniguruma)
    ->DenseRange(1, kDeepestForOniguruma)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Depth_Unclosed_GrammarMatcher)->DenseRange(1, kDeepest)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Depth_Unclosed_Oniguruma)
    ->DenseRange(1, kDeepestForOniguruma)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Length_Closed_GrammarMatcher)->Apply(lengths)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Length_Closed_Oniguruma)->Apply(lengths)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Length_Unclosed_GrammarMatcher)->Apply(lengths)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Length_Unclosed_Oniguruma)->Apply(lengths)->Unit(benchmark::kMicrosecond);
