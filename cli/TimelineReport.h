#pragma once

#include <iosfwd>
#include <string>

#include "Calc.h"
#include "RateChoice.h"

namespace vantrel {

/// vantrel-calc --edl: reads the cut in the file ("-" for the input) at the rate the file and the
/// request call for, and writes its report, as tab-separated lines or one JSON object a line;
/// problems go to `errors` with their line numbers. Returns the exit status: 0 when every event
/// was read, 1 when one could not be, when the file holds none or when a given rate cannot hold
/// its labels (then nothing is reported), 2 when the file cannot be read.
int printTimelineReport(const std::string& file, const timeline::RateRequest& request,
                        TimecodeNotation notation, bool json, std::istream& input,
                        std::ostream& output, std::ostream& errors);

}  // namespace vantrel
