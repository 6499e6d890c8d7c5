#include "CompileEachCallKeystroke.h"

#include "Regex.h"

namespace vantrel::bench {

void CompileEachCallKeystroke::type(std::string_view text) {
    colorize(text);
    m_resultPT = lazyEvaluate(text, Flavour::PT);
    m_resultPF = lazyEvaluate(text, Flavour::PF);
}

void CompileEachCallKeystroke::colorize(std::string_view text) {
    m_spans.clear();
    const Regex pattern(grammarText(Flavour::PT));
    const auto match = pattern.search(text);
    if (!match) {
        addSpan(text, SpanColour::Red);
        return;
    }
    addSpan(match->prematchString(), SpanColour::Red);
    addSpan(match->matchedString(), SpanColour::Black);
    addSpan(match->postmatchString(), SpanColour::Red);
}

std::optional<std::string> CompileEachCallKeystroke::lazyEvaluate(std::string_view text,
                                                                  Flavour flavour) {
    const Regex pattern(grammarText(flavour));
    const auto match = pattern.search(text);
    if (!match) return std::nullopt;
    match->acceptVisitor(m_calc);
    // The walk leaves exactly one value on the stack: the result.
    const auto frames = m_calc.pop();
    if (!frames) return std::nullopt;
    return m_calc.stringFromFramecount(*frames);
}

void CompileEachCallKeystroke::addSpan(std::string_view text, SpanColour colour) {
    if (!text.empty()) m_spans.push_back({std::string(text), colour});
}

}  // namespace vantrel::bench
