#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Calc.h"
#include "Units.h"

namespace vantrel::units {

/// An expression as typed, with values in the other units written as unit literals: feet+frames
/// "5400+00ft" (also "12ft", and "85+14.1ft" with 3-perf's place, which the foot implies), audio
/// samples "8008smp", real time "01:00:03.600rt" (also "3.6rt", "1:30rt"), seconds as FCPXML
/// writes them "1001/24000s" (whole: "3600s") and Premiere ticks "10594584000tk". Each literal
/// counts as the nearest whole frame at the current rate, gauge and sample rate, and the engine
/// reads the text with each literal replaced by that frame count as a plain number. A text
/// without literals is read exactly as typed. Where the literals were is kept, so that the
/// engine's colouring and tidying fit the text as typed.
class UnitReading {
public:
    UnitReading(std::string_view typed, int rateCode, const UnitChoice& choice);

    /// What the engine reads.
    const std::string& text() const { return m_text; }
    /// The typed text in the engine's colours: a literal is black where its frame count is.
    std::vector<ColouredSpan> colouredSpans(const Calc& calc) const;
    /// The typed text tidied as the engine tidies expressions, each literal kept as typed.
    std::string beautified(const Calc& calc) const;

private:
    struct Literal {
        TextRange typed;
        TextRange read;
    };

    /// The position in the typed text of a position in the text read; one inside a literal's
    /// frame count stands for the literal's end.
    std::size_t typedPosition(std::size_t readPosition) const;

    std::string m_typed;
    std::string m_text;
    std::vector<Literal> m_literals;
};

}  // namespace vantrel::units
