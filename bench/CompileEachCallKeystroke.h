#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Calc.h"
#include "Grammar.h"

namespace vantrel::bench {

/// The keystroke work of the window done the naive way: the grammar is compiled afresh for the
/// colouring and for each reading, then searched and walked. It exists only to show, next to the
/// real keystroke path, what compiling the grammar once saves.
class CompileEachCallKeystroke {
public:
    /// Colours the text and evaluates it lazily in both readings: three compiles, three searches.
    void type(std::string_view text);

    const std::vector<ColouredSpan>& spans() const { return m_spans; }
    const std::optional<std::string>& resultPT() const { return m_resultPT; }
    const std::optional<std::string>& resultPF() const { return m_resultPF; }

private:
    void colorize(std::string_view text);
    std::optional<std::string> lazyEvaluate(std::string_view text, Flavour flavour);
    void addSpan(std::string_view text, SpanColour colour);

    // Serves as the capture visitor, so the walk does the same reductions as the real path.
    Calc m_calc;
    std::vector<ColouredSpan> m_spans;
    std::optional<std::string> m_resultPT;
    std::optional<std::string> m_resultPF;
};

}  // namespace vantrel::bench
