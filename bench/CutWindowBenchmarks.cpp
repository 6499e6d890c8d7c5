// A long cut in its window: from the file's bytes to the window on screen with its table and
// picture drawn, and scrolling through it once it is there. In-process and offscreen unless
// QT_QPA_PLATFORM says otherwise, so only Vantrel's and Qt's own work is timed.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <memory>

#include "CutWindow.h"
#include "LongCut.h"
#include "TimelineReader.h"
#include "TimelineStrip.h"

namespace {

using namespace vantrel;

std::unique_ptr<CutWindow> openedWindow(const std::string& bytes) {
    auto table = std::make_shared<const timeline::EventTable>(
        timeline::readTimeline(bytes, {timeline::RateOrigin::CurrentRate, DisplayState29nondrop}),
        TimecodeNotation::Smpte);
    auto window = std::make_unique<CutWindow>(QStringLiteral("long.edl"), std::move(table));
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    window->show();
    (void)QTest::qWaitForWindowExposed(window.get());
    // Everything drawn once, as on screen.
    benchmark::DoNotOptimize(window->grab());
    return window;
}

void BM_OpenCutWindow(benchmark::State& state) {
    const std::string bytes = bench::longCut(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(openedWindow(bytes));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_OpenCutWindow)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

// 10,000-clip FCPXML and xmeml files, from their bytes to the window drawn.
template <std::string (*Write)(int)>
void BM_OpenTimelineWindow(benchmark::State& state) {
    const std::string bytes = Write(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(openedWindow(bytes));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_OpenTimelineWindow<bench::longFcpxml>)
    ->Name("BM_OpenFcpxmlWindow")
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_OpenTimelineWindow<bench::longXmeml>)
    ->Name("BM_OpenXmemlWindow")
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// One page down the table, drawn; then the picture zoomed in a long way and moved by a page.
void BM_ScrollCutWindow(benchmark::State& state) {
    const auto window = openedWindow(bench::longCut(static_cast<int>(state.range(0))));
    QScrollBar* rows = window->eventView()->verticalScrollBar();
    TimelineStrip* strip = window->strip();
    strip->setZoom(200);
    QScrollBar* along = strip->horizontalScrollBar();
    for (auto _ : state) {
        rows->setValue((rows->value() + rows->pageStep()) % rows->maximum());
        window->eventView()->viewport()->repaint();
        along->setValue((along->value() + along->pageStep()) % along->maximum());
        strip->viewport()->repaint();
    }
}
BENCHMARK(BM_ScrollCutWindow)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
