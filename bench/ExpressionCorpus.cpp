#include "ExpressionCorpus.h"

#include <cstddef>
#include <string_view>

namespace vantrel::bench {

namespace {

// Long enough to pass through every kind of token: suffixes of both drop-frame families, a short
// form, a parenthesised sum, a product and a division.
constexpr std::string_view kLongExpression =
    "(01:00:10.12|25 + 00:42:17.03|29d) * 2 - 0123|23n + 00:10:00.00 / 4";

// One piece of a long expression; pieces are joined by " + ".
constexpr std::string_view kLongPiece = "01:00:10.12|25 + (00:00:05.00 * 2 - 0123) + 125|25 / 4";

std::vector<std::string> prefixesOf(std::string_view text) {
    std::vector<std::string> prefixes;
    for (std::size_t length = 1; length <= text.size(); ++length) {
        prefixes.emplace_back(text.substr(0, length));
    }
    return prefixes;
}

std::string repeated(std::string_view piece, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text.append(piece);
    return text;
}

}  // namespace

const std::vector<std::string>& editorExpressions() {
    static const std::vector<std::string> expressions{
        "01:00:00.00|25",
        "00:02:30.12",
        "01:00:10.12|25 + 00:00:05.00",
        "0123",
        "012345|29d",
        "123|25",
        "1440|24 + 00:00:10.00|25",
        "00:22:30.00|29d + 00:21:58.12|29d + 00:23:01.05|29d",
        "00:11:45.10|23n * 6",
        "3 * 00:18:20.00",
        "01:30:00.00 / 4",
        "(00:10:00.00 + 00:05:12.10) * 2",
        "01:00:00.00|25 - 00:59:59.24|25",
        "0100000 + 0030000 - 0000112",
        "(01:00:00.00|25 + 00:30:00.00|25) / 3",
        "2 * (00:01:00.00|24 + 00:00:30.00|25) - 0100|23d",
        "5 * 00:00:30.00|29n + 00:12:00.00|30",
        "01:00:00.00|25*",
        "00:10:00.00 + (00:05:00.",
        "0123|29",
        "00:00:10.00 + 00:0",
    };
    return expressions;
}

const std::vector<std::string>& typingPrefixes() {
    static const std::vector<std::string> prefixes = prefixesOf(kLongExpression);
    return prefixes;
}

std::string longExpression(std::size_t length, Closing closing) {
    std::string text = closing == Closing::Unclosed ? "(" : "";
    text.append(kLongPiece);
    while (text.size() + 3 + kLongPiece.size() <= length) {
        text.append(" + ");
        text.append(kLongPiece);
    }
    return text;
}

std::string nestedExpression(int depth, Closing closing) {
    const std::string tail = closing == Closing::Closed ? repeated(")", depth) : std::string();
    return repeated("1+(", depth) + "1" + tail;
}

std::string repeatedPaste(std::string_view unit, std::size_t length) {
    return repeated(unit, static_cast<int>(length / unit.size()));
}

std::string closedNestingPaste(std::size_t length) {
    const std::size_t depth = (length - 1) / 4;
    return std::string(depth, '(') + "1" + repeated("+1)", static_cast<int>(depth));
}

}  // namespace vantrel::bench
