#include "InputHighlighter.h"

#include "Calc.h"

namespace vantrel {

InputHighlighter::InputHighlighter(const Calc& calculator, QTextDocument* document)
    : QSyntaxHighlighter(document), m_calculator(calculator) {}

void InputHighlighter::highlightBlock(const QString& text) {
    const std::string utf8 = text.toStdString();
    int start = 0;
    for (const ColouredSpan& span : m_calculator.colorizeLazyEvaluatedString(utf8)) {
        // The engine counts bytes of UTF-8; the editor counts UTF-16 units.
        const auto length = static_cast<int>(QString::fromStdString(span.text).size());
        setFormat(start, length,
                  span.colour == SpanColour::Black ? QColor(Qt::black) : QColor(Qt::red));
        start += length;
    }
}

}  // namespace vantrel
