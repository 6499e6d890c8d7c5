#pragma once

#include <iosfwd>
#include <string>

#include "Calc.h"

namespace vantrel {

/// vantrel-calc --edl: reads the EDL in the file ("-" for the input) at the current code and
/// writes its report, as tab-separated lines or one JSON object a line; unreadable lines go to
/// `errors` with their line number. Returns the exit status: 0 when every line was read, 1 when
/// some were not or the file holds no event, 2 when the file cannot be read.
int printEdlReport(const std::string& file, int currentCode, TimecodeNotation notation, bool json,
                   std::istream& input, std::ostream& output, std::ostream& errors);

}  // namespace vantrel
