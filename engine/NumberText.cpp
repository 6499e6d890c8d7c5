#include "NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace vantrel::number_text {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The decimal number at the start of text: digits, then optionally "." and digits.
std::string_view decimalPrefix(std::string_view text) {
    std::size_t end = 0;
    while (end < text.size() && isDigit(text[end])) ++end;
    const bool hasIntegerDigits = end > 0;
    if (end < text.size() && text[end] == '.') {
        std::size_t fraction = end + 1;
        while (fraction < text.size() && isDigit(text[fraction])) ++fraction;
        if (hasIntegerDigits || fraction > end + 1) end = fraction;
    }
    return text.substr(0, end);
}

double readDecimal(std::string_view decimal) {
    if (decimal.empty()) return 0.0;
    double value = 0.0;
    const auto result = std::from_chars(decimal.data(), decimal.data() + decimal.size(), value,
                                        std::chars_format::fixed);
    if (result.ec == std::errc::result_out_of_range) {
        // Too many digits for a double overflow to infinity (the evaluator then shows "∞"); a
        // text of zeros and a tiny fraction cannot underflow here since we read no exponents.
        return std::numeric_limits<double>::infinity();
    }
    return value;
}

}  // namespace

std::string fixed(double value, int decimals) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value > 0 ? "∞" : "-∞";
    // The longest fixed text of a double is 309 integer digits, a sign, a point and the decimals.
    std::array<char, 330> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    return std::string(buffer.data(), result.ptr);
}

std::string paddedDigits(std::int64_t value, std::size_t width) {
    std::array<char, 24> buffer{};
    char* begin = buffer.data();
    const auto result = std::to_chars(begin, begin + buffer.size(), value);
    std::string digits(begin, result.ptr);
    const bool negative = value < 0;
    const std::size_t digitCount = digits.size() - (negative ? 1 : 0);
    if (digitCount < width) digits.insert(negative ? 1 : 0, width - digitCount, '0');
    return digits;
}

std::string twoDigits(std::int64_t value) {
    return paddedDigits(value, 2);
}

double leadingNumber(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size() && isBlank(text[start])) ++start;
    return readDecimal(decimalPrefix(text.substr(start)));
}

double digitRun(std::string_view digits) {
    return readDecimal(digits);
}

int digitRunAsInt(std::string_view digits) {
    int value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec == std::errc::result_out_of_range) return std::numeric_limits<int>::max();
    return value;
}

}  // namespace vantrel::number_text
