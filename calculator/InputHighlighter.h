#pragma once

#include <QSyntaxHighlighter>

#include "Units.h"

namespace vantrel {

class Calc;

/// Colours the expression input with the engine's own lazy match: the part it evaluates black,
/// the rest red. Using the engine's matcher means the colours can never disagree with the result;
/// unit literals are read as the results read them, at the unit choices of the moment.
class InputHighlighter : public QSyntaxHighlighter {
    Q_OBJECT

public:
    InputHighlighter(const Calc& calculator, const units::UnitChoice& unitChoice,
                     QTextDocument* document);

protected:
    void highlightBlock(const QString& text) override;

private:
    const Calc& m_calculator;
    const units::UnitChoice& m_unitChoice;
};

}  // namespace vantrel
