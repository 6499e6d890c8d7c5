#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Calc.h"
#include "FuzzCase.h"

namespace vantrel::fuzz {

/// Puts one fuzz case through everything the window does with a text (colouring, lazy and eager
/// evaluation in both readings, beautifying) and checks what must hold whatever the text. The
/// checks hold in release builds too: a violation is written to stderr and stops the process
/// with a trap, which libFuzzer records as a crash together with the input.
class EngineInvariants {
public:
    EngineInvariants(Calc& calc, const FuzzCase& fuzzCase);

    void check();

    /// The member functions of one reading, PT or PF.
    struct Reading;

private:
    void checkColouring();
    void checkReading(const Reading& reading);
    std::optional<double> checkedFrames(std::optional<double> (Calc::*evaluate)(std::string_view));
    void checkText(const Reading& reading,
                   std::optional<std::string> (Calc::*evaluate)(std::string_view, int),
                   const std::optional<double>& frames);
    void checkBeautified();
    void requireEmptyStack();
    void require(bool holds, std::string_view what) const;

    Calc& m_calc;
    const FuzzCase& m_case;
    std::optional<std::string> m_blackSpan;
    // Where the checks are, for the report of a violation.
    std::string_view m_stage;
};

}  // namespace vantrel::fuzz
