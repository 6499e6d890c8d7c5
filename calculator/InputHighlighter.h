#pragma once

#include <QSyntaxHighlighter>

namespace vantrel {

class Calc;

/// Colours the expression input with the engine's own lazy match: the part it evaluates black,
/// the rest red. Using the engine's matcher means the colours can never disagree with the result.
class InputHighlighter : public QSyntaxHighlighter {
    Q_OBJECT

public:
    InputHighlighter(const Calc& calculator, QTextDocument* document);

protected:
    void highlightBlock(const QString& text) override;

private:
    const Calc& m_calculator;
};

}  // namespace vantrel
