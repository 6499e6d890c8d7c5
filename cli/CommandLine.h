#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace vantrel {

/// vantrel-calc: evaluates each expression argument, or each line of the input when there are
/// none, and writes one line per expression: the PT result, a tab, the PF result. Returns the exit
/// status: 0 when every expression gave both results, 1 when any did not, 2 on a usage error.
int runCommandLine(const std::vector<std::string>& arguments, std::istream& input,
                   std::ostream& output, std::ostream& errors);

}  // namespace vantrel
