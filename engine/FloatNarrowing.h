#pragma once

#include <limits>

namespace vantrel {

/// The double rounded to single precision. Narrowing a double beyond the float range is undefined
/// behaviour in C++, so such values become infinities here, as IEEE rounding would make them;
/// NaN stays NaN.
constexpr float narrowedToFloat(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    if (value > largest) return std::numeric_limits<float>::infinity();
    if (value < -largest) return -std::numeric_limits<float>::infinity();
    return static_cast<float>(value);
}

}  // namespace vantrel
