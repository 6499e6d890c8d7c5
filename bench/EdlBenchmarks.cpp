// Reading and summing a long edit decision list, as vantrel-calc --edl does: linear in the events.

#include <benchmark/benchmark.h>

#include <string>

#include "Calc.h"
#include "CutReport.h"
#include "CutSummary.h"
#include "EdlReader.h"
#include "LongCut.h"

namespace {

void BM_ReadAndSummariseEdl(benchmark::State& state) {
    const std::string cut = vantrel::bench::longCut(static_cast<int>(state.range(0)));
    vantrel::Calc writer;
    for (auto _ : state) {
        const auto read = vantrel::timeline::readEdl(
            cut, {vantrel::timeline::RateOrigin::GivenRate, vantrel::DisplayState29nondrop});
        const auto summary = vantrel::timeline::summarise(read);
        benchmark::DoNotOptimize(vantrel::timeline::reportRows(read, summary, writer));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

}  // namespace

BENCHMARK(BM_ReadAndSummariseEdl)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
