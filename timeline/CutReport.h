#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Calc.h"
#include "Cut.h"
#include "CutSummary.h"

// The cut as text: the rows vantrel-calc prints, the problem lines, and the one line the
// calculator's log keeps of an opened file. Timecodes are written by the engine at the cut's rate.
namespace vantrel::timeline {

/// The report as lines of fields: first "rate" (the code and why), then "event", "track", "gap"
/// or "overlap", and last "total", with timecodes in the writer's notation.
std::vector<std::vector<std::string>> reportRows(const Cut& cut, const Summary& summary,
                                                 Calc& writer);

/// "line 12: '01:61:00:00' has more than 59 minutes or seconds: 'text'"; a warning says so
/// after its line number.
std::string problemText(const Problem& problem);

/// "EDL cut.edl: 215 events at 23n, running time 00:13:35.00 (19,560 frames)".
std::string summaryLine(std::string_view format, std::string_view fileName, const Cut& cut,
                        const Summary& summary, Calc& writer);

/// 19560 as "19,560".
std::string groupedDigits(double count);

}  // namespace vantrel::timeline
