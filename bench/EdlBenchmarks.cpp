// Reading and summing a long edit decision list, as vantrel-calc --edl and Open EDL… do.

#include <benchmark/benchmark.h>

#include <string>

#include "Calc.h"
#include "CutReport.h"
#include "CutSummary.h"
#include "EdlReader.h"

namespace {

// A cut of `events` one-second events at 29.97 drop frame, with a clip-name comment each, as
// editing systems write it (CRLF).
std::string longCut(int events) {
    vantrel::Calc writer;
    writer.setFps(vantrel::DisplayState29drop);
    writer.setTimecodeNotation(vantrel::TimecodeNotation::Smpte);
    std::string cut = "TITLE: LONG CUT\r\nFCM: DROP FRAME\r\n";
    for (int event = 0; event < events; ++event) {
        const double in = 107892.0 + 30.0 * event;
        cut += std::to_string(event + 1) + "  A001C001 V     C        00:00:00;00 00:00:01;00 " +
               writer.stringFromFramecount(in) + " " + writer.stringFromFramecount(in + 30) +
               "\r\n* FROM CLIP NAME:  A001C001.mov\r\n";
    }
    return cut;
}

void BM_ReadAndSummariseEdl(benchmark::State& state) {
    const std::string cut = longCut(static_cast<int>(state.range(0)));
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

BENCHMARK(BM_ReadAndSummariseEdl)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
