// How long the engine takes for what the window does on every key, for what it does when the user
// presses Enter, and how both grow with nested parentheses. Each *_Cached benchmark has a
// *_CompileEachCall twin doing the same keystroke work with the grammar compiled on every call.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "Calc.h"
#include "CompileEachCallKeystroke.h"
#include "DisplayState.h"
#include "ExpressionCorpus.h"
#include "Grammar.h"
#include "GrammarMatcher.h"
#include "TimestampText.h"

namespace {

using vantrel::Calc;
using vantrel::DisplayStateTime;
using vantrel::bench::Closing;
using vantrel::bench::CompileEachCallKeystroke;

// Editors cut mostly at 25 fps here; the suffixed timestamps of the corpus bring the other rates.
Calc calcAt25fps() {
    Calc calc;
    calc.setFps(vantrel::DisplayState25fps);
    return calc;
}

// The window's work after a key: colour the field, then show the lazy result of both readings.
void typeCached(Calc& calc, const std::string& text) {
    benchmark::DoNotOptimize(calc.colorizeLazyEvaluatedString(text));
    benchmark::DoNotOptimize(calc.lazyevalPT(text, DisplayStateTime));
    benchmark::DoNotOptimize(calc.lazyevalPF(text, DisplayStateTime));
}

void typeCompilingEachCall(CompileEachCallKeystroke& keystroke, const std::string& text) {
    keystroke.type(text);
    benchmark::DoNotOptimize(keystroke.spans().data());
    benchmark::DoNotOptimize(keystroke.resultPT());
    benchmark::DoNotOptimize(keystroke.resultPF());
}

void evaluateEagerly(Calc& calc, const std::string& text) {
    benchmark::DoNotOptimize(calc.evalPT(text, DisplayStateTime));
    benchmark::DoNotOptimize(calc.evalPF(text, DisplayStateTime));
}

// One iteration handles every text once; the counter turns that into time per text.
void countPerText(benchmark::State& state, const char* name, std::size_t texts) {
    state.counters[name] = benchmark::Counter(
        static_cast<double>(texts),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_Keystroke_Cached(benchmark::State& state) {
    Calc calc = calcAt25fps();
    const auto& texts = vantrel::bench::editorExpressions();
    for (auto _ : state) {
        for (const auto& text : texts) typeCached(calc, text);
    }
    countPerText(state, "per_keystroke", texts.size());
}

void BM_Keystroke_CompileEachCall(benchmark::State& state) {
    CompileEachCallKeystroke keystroke;
    const auto& texts = vantrel::bench::editorExpressions();
    for (auto _ : state) {
        for (const auto& text : texts) typeCompilingEachCall(keystroke, text);
    }
    countPerText(state, "per_keystroke", texts.size());
}

void BM_Typing_Cached(benchmark::State& state) {
    Calc calc = calcAt25fps();
    const auto& prefixes = vantrel::bench::typingPrefixes();
    for (auto _ : state) {
        for (const auto& text : prefixes) typeCached(calc, text);
    }
    countPerText(state, "per_keystroke", prefixes.size());
}

void BM_Typing_CompileEachCall(benchmark::State& state) {
    CompileEachCallKeystroke keystroke;
    const auto& prefixes = vantrel::bench::typingPrefixes();
    for (auto _ : state) {
        for (const auto& text : prefixes) typeCompilingEachCall(keystroke, text);
    }
    countPerText(state, "per_keystroke", prefixes.size());
}

// Where a key of BM_Typing_Cached goes, piece by piece: the SMPTE rewriting of the text, the one
// grammar search, and the colouring and both readings once the search is cached (the formatting
// of the results and their allocations). The three add up to about the whole.
void BM_TypingPart_SmpteRewriting(benchmark::State& state) {
    const auto& prefixes = vantrel::bench::typingPrefixes();
    for (auto _ : state) {
        for (const auto& text : prefixes) {
            benchmark::DoNotOptimize(vantrel::timestamp_text::classicFromSmpte(text));
        }
    }
    countPerText(state, "per_keystroke", prefixes.size());
}

void BM_TypingPart_GrammarSearch(benchmark::State& state) {
    const vantrel::GrammarMatcher& matcher = vantrel::grammarMatcher(vantrel::Flavour::PT);
    const auto& prefixes = vantrel::bench::typingPrefixes();
    for (auto _ : state) {
        for (const auto& text : prefixes) benchmark::DoNotOptimize(matcher.search(text));
    }
    countPerText(state, "per_keystroke", prefixes.size());
}

void BM_TypingPart_ReadingsOfACachedSearch(benchmark::State& state) {
    Calc calc = calcAt25fps();
    const auto& prefixes = vantrel::bench::typingPrefixes();
    for (auto _ : state) {
        for (const auto& text : prefixes) {
            state.PauseTiming();
            benchmark::DoNotOptimize(calc.lazyevalPT(text, DisplayStateTime));
            state.ResumeTiming();
            typeCached(calc, text);
        }
    }
    countPerText(state, "per_keystroke", prefixes.size());
}

void BM_Eager_Cached(benchmark::State& state) {
    Calc calc = calcAt25fps();
    const auto& texts = vantrel::bench::editorExpressions();
    for (auto _ : state) {
        for (const auto& text : texts) evaluateEagerly(calc, text);
    }
    countPerText(state, "per_expression", texts.size());
}

// Keystroke work on one nested text. The black_chars counter is the length of the part the
// grammar took, so a search that failed to finish would show as a shorter match.
void typeNested(benchmark::State& state, Closing closing) {
    Calc calc = calcAt25fps();
    const std::string text =
        vantrel::bench::nestedExpression(static_cast<int>(state.range(0)), closing);
    for (auto _ : state) typeCached(calc, text);
    std::size_t black = 0;
    for (const auto& span : calc.colorizeLazyEvaluatedString(text)) {
        if (span.colour == vantrel::SpanColour::Black) black = span.text.size();
    }
    state.counters["chars"] = static_cast<double>(text.size());
    state.counters["black_chars"] = static_cast<double>(black);
}

double residentMegabytes() {
    std::ifstream statm("/proc/self/statm");
    double size = 0;
    double resident = 0;
    statm >> size >> resident;
    return resident * 4096 / (1 << 20);
}

// Keys typed one after another at the end of a 30,000-character paste of closed nesting, every
// seventh a backspace. The engine keeps what still holds of the text before each key, and starts
// afresh now and then; the counters are the resident memory after the paste and after the keys.
void BM_TypingAfterLongPaste(benchmark::State& state) {
    Calc calc = calcAt25fps();
    std::string text = vantrel::bench::closedNestingPaste(30000);
    typeCached(calc, text);
    state.counters["pasted_MB"] = residentMegabytes();
    constexpr std::string_view keys = "+1*2-3";
    std::size_t key = 0;
    for (auto _ : state) {
        if (++key % 7 == 0) {
            text.pop_back();
        } else {
            text += keys[key % keys.size()];
        }
        typeCached(calc, text);
    }
    state.counters["typed_MB"] = residentMegabytes();
}

void BM_Depth_Closed(benchmark::State& state) {
    typeNested(state, Closing::Closed);
}
void BM_Depth_Unclosed(benchmark::State& state) {
    typeNested(state, Closing::Unclosed);
}

}  // namespace

BENCHMARK(BM_Keystroke_Cached)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Keystroke_CompileEachCall)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Typing_Cached)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Typing_CompileEachCall)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TypingPart_SmpteRewriting)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TypingPart_GrammarSearch)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TypingPart_ReadingsOfACachedSearch)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Eager_Cached)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TypingAfterLongPaste)->Iterations(3000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Depth_Closed)->DenseRange(1, 30)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Depth_Unclosed)->DenseRange(1, 30)->Unit(benchmark::kMicrosecond);
