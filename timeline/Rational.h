#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// Exact fractions for the times timeline files write as fractions of a second ("1001/24000s" in
// FCPXML) or as counts at another rate: a cut's places are worked out without floating point and
// rounded to whole frames once, at the end.
namespace vantrel::timeline {

struct Rational {
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;  // always positive; the fraction in lowest terms

    friend Rational operator+(Rational a, Rational b);
    friend Rational operator-(Rational a, Rational b);
    friend Rational operator*(Rational a, Rational b);
    friend bool operator==(Rational a, Rational b) = default;

    /// The nearest whole number, halves upward.
    std::int64_t rounded() const;
    bool isWhole() const { return denominator == 1; }
};

/// The fraction num/den in lowest terms; den must not be 0.
Rational fraction(std::int64_t numerator, std::int64_t denominator);

/// "1001/24000s", "3600s", "0s", "-2s" (the "s" optional) as a fraction, or nothing.
std::optional<Rational> parseRational(std::string_view text);

}  // namespace vantrel::timeline
