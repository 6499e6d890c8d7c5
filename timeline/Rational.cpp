#include "Rational.h"

#include <charconv>
#include <limits>
#include <numeric>

namespace vantrel::timeline {

namespace {

// Products of two 64-bit numbers of a long timeline need more room before they are reduced.
__extension__ using Wide = __int128;

Rational reduced(Wide numerator, Wide denominator) {
    if (denominator < 0) numerator = -numerator, denominator = -denominator;
    Wide a = numerator < 0 ? -numerator : numerator;
    Wide b = denominator;
    while (b != 0) {
        const Wide rest = a % b;
        a = b;
        b = rest;
    }
    if (a > 1) numerator /= a, denominator /= a;
    // Beyond 64 bits no time of a real cut lies. A denominator that large is a fraction finer
    // than any frame: scaled down, it keeps its value to far less than a frame. A numerator that
    // large is a place beyond any cut: the largest value stands for it, and the reader's check of
    // its places turns it away.
    constexpr Wide kLargest = std::numeric_limits<std::int64_t>::max();
    if (denominator > kLargest) {
        const Wide scale = denominator / kLargest + 1;
        return reduced((numerator + (numerator < 0 ? -scale / 2 : scale / 2)) / scale,
                       denominator / scale);
    }
    if (numerator > kLargest || numerator < -kLargest) {
        return {numerator < 0 ? -std::numeric_limits<std::int64_t>::max()
                              : std::numeric_limits<std::int64_t>::max(),
                1};
    }
    return {static_cast<std::int64_t>(numerator), static_cast<std::int64_t>(denominator)};
}

std::optional<std::int64_t> integer(std::string_view digits) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return value;
}

}  // namespace

Rational fraction(std::int64_t numerator, std::int64_t denominator) {
    return reduced(numerator, denominator);
}

Rational operator+(Rational a, Rational b) {
    return reduced(Wide(a.numerator) * b.denominator + Wide(b.numerator) * a.denominator,
                   Wide(a.denominator) * b.denominator);
}

Rational operator-(Rational a, Rational b) {
    return reduced(Wide(a.numerator) * b.denominator - Wide(b.numerator) * a.denominator,
                   Wide(a.denominator) * b.denominator);
}

Rational operator*(Rational a, Rational b) {
    return reduced(Wide(a.numerator) * b.numerator, Wide(a.denominator) * b.denominator);
}

std::int64_t Rational::rounded() const {
    // floor(n/d + 1/2) = floor((2n + d) / 2d), with floor towards minus infinity.
    const Wide top = 2 * Wide(numerator) + denominator;
    const Wide bottom = 2 * Wide(denominator);
    Wide quotient = top / bottom;
    if (top % bottom != 0 && top < 0) --quotient;
    return static_cast<std::int64_t>(quotient);
}

std::optional<Rational> parseRational(std::string_view text) {
    if (text.ends_with('s')) text.remove_suffix(1);
    const auto slash = text.find('/');
    const auto numerator = integer(text.substr(0, slash));
    if (!numerator) return std::nullopt;
    if (slash == std::string_view::npos) return fraction(*numerator, 1);
    const auto denominator = integer(text.substr(slash + 1));
    if (!denominator || *denominator == 0) return std::nullopt;
    return fraction(*numerator, *denominator);
}

}  // namespace vantrel::timeline
