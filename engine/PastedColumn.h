#pragma once

#include <string>
#include <string_view>

namespace vantrel {

/// What a paste into the expression field becomes. A column copied from a spreadsheet, a marker
/// list or an EDL tool (several lines) is the sum of its lines: each non-empty line, trimmed, is
/// one operand, and a line of several tab-separated fields gives its first timecode (or, without
/// one, its first field). A single row of tab-separated fields is the sum of its fields. Anything
/// else, an expression written over several lines among it, comes in as it is, its line breaks
/// and tabs as blanks.
std::string pastedExpression(std::string_view pasted);

}  // namespace vantrel
