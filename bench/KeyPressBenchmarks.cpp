// Key press to result on screen in the real calculator window: a key event goes into the input
// field, the field colours the text, the controller shows both lazy readings, and the result
// fields repaint. Measured in-process, so nothing but Vantrel's own work is timed.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QTest>
#include <QTextCursor>
#include <memory>
#include <string>

#include "ExpressionCorpus.h"
#include "TSCController.h"
#include "ui_Calculator.h"

namespace {

using vantrel::TSCController;

std::unique_ptr<TSCController> shownCalculator() {
    auto calc = std::make_unique<TSCController>();
    calc->initialize();
    calc->calcWindow()->show();
    (void)QTest::qWaitForWindowExposed(calc->calcWindow());
    return calc;
}

// One more key at the end of the text, then the result fields painted.
void pressKey(TSCController& calc, char key) {
    QTest::keyClick(calc.ui().inputField, key);
    calc.ui().resultField->repaint();
    calc.ui().resultField2->repaint();
}

void placeText(TSCController& calc, const std::string& text) {
    calc.ui().inputField->setPlainText(QString::fromStdString(text));
    calc.ui().inputField->moveCursorToEnd();
}

// Each corpus expression typed after a text already in the field: "+" then a digit.
void BM_KeyPress_TypicalCorpus(benchmark::State& state) {
    auto calc = shownCalculator();
    const auto& corpus = vantrel::bench::editorExpressions();
    std::size_t next = 0;
    for (auto _ : state) {
        state.PauseTiming();
        placeText(*calc, corpus[next++ % corpus.size()]);
        state.ResumeTiming();
        pressKey(*calc, '1');
    }
}
BENCHMARK(BM_KeyPress_TypicalCorpus)->Unit(benchmark::kMicrosecond);

// A long paste, then one more key: unclosed or closed nested parentheses (the costliest shapes)
// or a sum of timecodes (the running time of a cut).
void keyAfterPaste(benchmark::State& state, const std::string& text) {
    auto calc = shownCalculator();
    for (auto _ : state) {
        state.PauseTiming();
        placeText(*calc, text);
        state.ResumeTiming();
        pressKey(*calc, '1');
    }
}
void BM_KeyPress_NestedPaste(benchmark::State& state) {
    keyAfterPaste(state,
                  vantrel::bench::repeatedPaste("(1+", static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(BM_KeyPress_NestedPaste)->Arg(10000)->Arg(32766)->Unit(benchmark::kMillisecond);

// Closed nesting, one key short of the field's length.
void BM_KeyPress_ClosedNestingPaste(benchmark::State& state) {
    keyAfterPaste(state,
                  vantrel::bench::closedNestingPaste(static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(BM_KeyPress_ClosedNestingPaste)->Arg(10000)->Arg(32766)->Unit(benchmark::kMillisecond);

void BM_KeyPress_TimecodeSumPaste(benchmark::State& state) {
    keyAfterPaste(state, vantrel::bench::repeatedPaste("01:00:00.00|25+",
                                                       static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(BM_KeyPress_TimecodeSumPaste)->Arg(32766)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
