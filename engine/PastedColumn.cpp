#include "PastedColumn.h"

#include <algorithm>
#include <vector>

namespace vantrel {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n\v\f";
    const std::size_t start = text.find_first_not_of(kBlanks);
    if (start == std::string_view::npos) return {};
    return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t at = 0;;) {
        const std::size_t end = text.find(separator, at);
        parts.push_back(text.substr(at, end == std::string_view::npos ? end : end - at));
        if (end == std::string_view::npos) return parts;
        at = end + 1;
    }
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// "01:00:05:00", "1:00", "00:00:10;12|29d": digit groups joined by ':', ';' or '.', at least two
// groups, a rate suffix allowed.
bool isTimecode(std::string_view field) {
    field = field.substr(0, field.find('|'));
    std::size_t groups = 0;
    std::size_t digits = 0;
    for (const char c : field) {
        if (isDigit(c)) {
            ++digits;
        } else if ((c == ':' || c == ';' || c == '.') && digits > 0) {
            ++groups;
            digits = 0;
        } else {
            return false;
        }
    }
    return groups > 0 && digits > 0;
}

bool isNumber(std::string_view field) {
    return !field.empty() && isDigit(field.front()) &&
           field.find_first_not_of("0123456789.") == std::string_view::npos;
}

// A line of tab-separated fields stands for its first timecode; without one, for its first number
// (a frame count), and without that, for its first field.
std::string_view operandOf(std::string_view line) {
    std::string_view number;
    std::string_view first;
    for (const std::string_view field : split(line, '\t')) {
        const std::string_view value = trimmed(field);
        if (isTimecode(value)) return value;
        if (number.empty() && isNumber(value)) number = value;
        if (first.empty()) first = value;
    }
    return number.empty() ? first : number;
}

// A line that carries an operator is part of an expression written over several lines, not a
// value of a column.
bool isValue(std::string_view operand) {
    return operand.find_first_of("+-*/()") == std::string_view::npos;
}

std::string sum(const std::vector<std::string_view>& operands) {
    std::string expression;
    for (const std::string_view operand : operands) {
        if (operand.empty()) continue;
        expression += (expression.empty() ? "" : " + ") + std::string(operand);
    }
    return expression;
}

}  // namespace

std::string pastedExpression(std::string_view pasted) {
    std::vector<std::string_view> lines;
    for (std::string_view line : split(pasted, '\n')) {
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (!trimmed(line).empty()) lines.push_back(line);
    }
    if (lines.size() > 1) {
        std::vector<std::string_view> operands;
        for (const std::string_view line : lines) operands.push_back(operandOf(line));
        if (std::all_of(operands.begin(), operands.end(), isValue)) return sum(operands);
    }
    if (lines.size() == 1 && lines.front().find('\t') != std::string_view::npos) {
        std::vector<std::string_view> fields;
        for (const std::string_view field : split(lines.front(), '\t')) {
            fields.push_back(trimmed(field));
        }
        // A row of values is summed; a row with names or notes among them is a marker list's
        // line, and gives its first timecode.
        const bool values = std::all_of(fields.begin(), fields.end(), [](std::string_view field) {
            return field.empty() || isTimecode(field) || isNumber(field);
        });
        if (values) return sum(fields);
        if (std::any_of(fields.begin(), fields.end(), isTimecode)) {
            return std::string(operandOf(lines.front()));
        }
    }
    std::string text(pasted);
    for (char& c : text) {
        if (c == '\r' || c == '\n' || c == '\t') c = ' ';
    }
    return text;
}

}  // namespace vantrel
