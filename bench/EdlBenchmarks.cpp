// Reading and summing long cuts, as vantrel-calc --timeline does: linear in the events.

#include <benchmark/benchmark.h>

#include <string>

#include "Calc.h"
#include "CutReport.h"
#include "CutSummary.h"
#include "EdlReader.h"
#include "LongCut.h"
#include "TimelineReader.h"

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

// FCPXML and xmeml through pugixml, recognised from their content as vantrel-calc does.
template <std::string (*Write)(int)>
void BM_ReadAndSummariseTimeline(benchmark::State& state) {
    const std::string file = Write(static_cast<int>(state.range(0)));
    vantrel::Calc writer;
    for (auto _ : state) {
        const auto read = vantrel::timeline::readTimeline(file, {});
        const auto summary = vantrel::timeline::summarise(read);
        benchmark::DoNotOptimize(vantrel::timeline::reportRows(read, summary, writer));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

}  // namespace

BENCHMARK(BM_ReadAndSummariseTimeline<vantrel::bench::longFcpxml>)
    ->Name("BM_ReadAndSummariseFcpxml")
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadAndSummariseTimeline<vantrel::bench::longXmeml>)
    ->Name("BM_ReadAndSummariseXmeml")
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadAndSummariseEdl)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
