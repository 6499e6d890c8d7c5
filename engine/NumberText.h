#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Numbers to and from text, the same on every desktop: nothing here reads the process locale,
// so a German or French session still shows 28.85 m and reads 2.5 as two and a half.
namespace vantrel::number_text {

/// The value with a fixed number of decimals, rounded as printf("%.*f") does in the C locale
/// (an exact half goes to the even neighbour). NaN gives "NaN", infinities "∞" and "-∞".
std::string fixed(double value, int decimals);

/// The integer with at least `width` digits, as printf("%.*d"): 5 at width 3 gives "005".
std::string paddedDigits(std::int64_t value, std::size_t width);

/// The integer with at least two digits, as printf("%2.2d"): 5 gives "05", 123 gives "123".
std::string twoDigits(std::int64_t value);

/// The longest leading decimal number after leading white space, as strtod reads it in the C
/// locale but without exponents; "1." reads 1. No number reads 0; one too large reads +infinity.
double leadingNumber(std::string_view text);

/// A run of ASCII digits as a double; one too large for a double reads +infinity.
double digitRun(std::string_view digits);

/// A run of ASCII digits as an int, saturating at the largest int.
int digitRunAsInt(std::string_view digits);

}  // namespace vantrel::number_text
