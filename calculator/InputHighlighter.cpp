#include "InputHighlighter.h"

#include "Calc.h"
#include "UnitReading.h"

namespace vantrel {

InputHighlighter::InputHighlighter(const Calc& calculator, const units::UnitChoice& unitChoice,
                                   QTextDocument* document)
    : QSyntaxHighlighter(document), m_calculator(calculator), m_unitChoice(unitChoice) {}

void InputHighlighter::highlightBlock(const QString& text) {
    const std::string utf8 = text.toStdString();
    int start = 0;
    const units::UnitReading reading(utf8, m_calculator.fps(), m_unitChoice);
    for (const ColouredSpan& span : reading.colouredSpans(m_calculator)) {
        // The engine counts bytes of UTF-8; the editor counts UTF-16 units.
        const auto length = static_cast<int>(QString::fromStdString(span.text).size());
        setFormat(start, length,
                  span.colour == SpanColour::Black ? QColor(Qt::black) : QColor(Qt::red));
        start += length;
    }
}

}  // namespace vantrel
