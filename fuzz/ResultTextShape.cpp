#include "ResultTextShape.h"

#include <cstddef>

#include "DisplayState.h"

namespace vantrel::fuzz::result_text_shape {

namespace {

constexpr std::size_t kUnlimited = std::string_view::npos;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Each take* consumes its piece from the front of text and tells whether it was there.
bool takeDigits(std::string_view& text, std::size_t minimum, std::size_t maximum) {
    std::size_t count = 0;
    while (count < text.size() && isDigit(text[count])) ++count;
    if (count < minimum || count > maximum) return false;
    text.remove_prefix(count);
    return true;
}

bool takeText(std::string_view& text, std::string_view expected) {
    if (!text.starts_with(expected)) return false;
    text.remove_prefix(expected.size());
    return true;
}

void takeSign(std::string_view& text) {
    takeText(text, "-");
}

bool isPlaceholder(std::string_view text) {
    return text == "NaN" || text == "∞" || text == "-∞";
}

bool isTimestamp(std::string_view text) {
    takeSign(text);
    return takeDigits(text, 2, kUnlimited) && takeText(text, ":") && takeDigits(text, 2, 2) &&
           takeText(text, ":") && takeDigits(text, 2, 2) && takeText(text, ".") &&
           takeDigits(text, 2, 2) && text.empty();
}

bool isWholeNumber(std::string_view text) {
    takeSign(text);
    return takeDigits(text, 1, kUnlimited) && text.empty();
}

bool isFilmLength(std::string_view text) {
    takeSign(text);
    return takeDigits(text, 1, kUnlimited) && takeText(text, ".") && takeDigits(text, 2, 2) &&
           takeText(text, " m") && text.empty();
}

}  // namespace

bool fitsDisplayMode(std::string_view text, int displayMode) {
    if (isPlaceholder(text)) return true;
    if (displayMode == DisplayStateNumber) return isWholeNumber(text);
    if (displayMode == DisplayStateFilmLength) return isFilmLength(text);
    return isTimestamp(text);
}

}  // namespace vantrel::fuzz::result_text_shape
