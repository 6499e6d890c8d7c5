#pragma once

#include <string_view>

// What a result text may look like in each display mode, so that the fuzzer notices when the
// display would show something that is neither a value nor one of the agreed placeholders.
namespace vantrel::fuzz::result_text_shape {

/// True when the text is "NaN", "∞" or "-∞", or, with an optional leading "-": for time and disk
/// space a timestamp with two or more hour digits ("01:00:00.00", "1234:05:06.07"), for numbers a
/// run of digits, for film length digits, a point, two digits and " m".
bool fitsDisplayMode(std::string_view text, int displayMode);

}  // namespace vantrel::fuzz::result_text_shape
