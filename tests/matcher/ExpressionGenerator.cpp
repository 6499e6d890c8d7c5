#include "ExpressionGenerator.h"

#include <array>

#include "GrammarExamples.h"

namespace vantrel::matcher_tests {

namespace {

constexpr std::string_view kOperators = "++++---****//";
// What the grammar reads, a little else, and bytes it never reads.
constexpr std::string_view kNearAlphabet = "0123456789:.|+-*/() \tdn";

std::string repeated(std::string_view piece, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text.append(piece);
    return text;
}

}  // namespace

// splitmix64: small, fast, and the same sequence on every platform and standard library.
std::uint32_t ExpressionGenerator::below(std::uint32_t bound) {
    std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return static_cast<std::uint32_t>(((z ^ (z >> 31)) >> 32) * bound >> 32);
}

char ExpressionGenerator::pick(std::string_view characters) {
    return characters[below(static_cast<std::uint32_t>(characters.size()))];
}

std::string ExpressionGenerator::next() {
    const std::uint32_t kind = below(100);
    const auto example = [this] {
        const std::uint32_t index = below(kAcceptedExamples.size() + kRejectedExamples.size());
        return std::string(index < kAcceptedExamples.size()
                               ? kAcceptedExamples[index]
                               : kRejectedExamples[index - kAcceptedExamples.size()]);
    };
    if (kind < 4) return example();
    if (kind < 9) return disturbed(example());
    if (kind < 14) return randomBytes();
    if (kind < 16) return nestedChain();
    // Oniguruma's work grows threefold and more with every level, so deep nesting is rare.
    const std::uint32_t roll = below(1000);
    int depth = 0;
    for (const std::uint32_t bound : {450u, 750u, 920u, 985u, 996u}) depth += roll >= bound;
    std::string text = expression(depth);
    return chance(30) ? disturbed(std::move(text)) : text;
}

std::string ExpressionGenerator::expression(int depth) {
    std::string text = term(depth);
    while (chance(55))
        text += pickText(kBlanks) + pick(kOperators) + pickText(kBlanks) + term(depth);
    return text;
}

std::string ExpressionGenerator::term(int depth) {
    if (depth == 0 || !chance(35)) return operand();
    std::string text =
        pickText(kBlanks) + "(" + pickText(kBlanks) + expression(depth - 1) + pickText(kBlanks);
    if (!chance(5)) text += ")";
    return text + pickText(kBlanks);
}

std::string ExpressionGenerator::operand() {
    const std::uint32_t kind = below(100);
    std::string text = pickText(kBlanks);
    if (kind < 35) {
        text += fullForm();
    } else if (kind < 50) {  // a short form
        text += "0" + digits(chance(5) ? 9 + below(2) : 1 + below(8));
        if (chance(40)) text += suffix();
    } else if (kind < 62) {  // a frame count
        text += pick("123456789") + digits(below(5));
        if (!chance(5)) text += suffix();
    } else {
        text += number();
    }
    return text + pickText(kBlanks);
}

// Any number of leading zeros, optionally hours and minutes, then ":" and seconds, optionally
// "." and frames and a suffix; fields of one to three digits, two most of the time.
std::string ExpressionGenerator::fullForm() {
    const auto field = [this] {
        const std::uint32_t roll = below(100);
        return digits(roll < 8 ? 0 : roll < 25 ? 1 : roll < 95 ? 2 : 3);
    };
    std::string text = chance(10) ? repeated("0", static_cast<int>(below(4))) : std::string();
    if (chance(60)) text += field() + ":";
    if (chance(80)) text += field();
    text += ":" + field();
    if (chance(65)) {
        text += "." + field();
        if (chance(45)) text += suffix();
    } else if (chance(5)) {
        text += suffix();
    }
    return text;
}

std::string ExpressionGenerator::number() {
    const std::uint32_t kind = below(100);
    if (kind >= 5 && kind < 8) return "." + digits(1 + below(3));
    // "0" is never a number: the grammar takes it for the start of a short form.
    std::string text(1, kind < 5 ? '0' : pick("123456789"));
    text += digits(below(5));
    if (chance(20)) text += "." + digits(below(4));
    return text;
}

std::string ExpressionGenerator::digits(std::uint32_t count) {
    std::string text;
    for (std::uint32_t i = 0; i < count; ++i) text += pick("0123456789");
    return text;
}

// Deep nesting up to where Oniguruma stops finishing within its effort bound: the plainest shapes
// up to ten levels, the costliest known ones (a timestamp product, or a parenthesised product, at
// every level) up to six; closed or not. Each level costs Oniguruma three times the one before,
// so the deepest ones are rare.
std::string ExpressionGenerator::nestedChain() {
    struct Shape {
        std::string_view opening, closing;
        int deepest;
    };
    constexpr std::array<Shape, 5> kShapes{{{"1+(", ")", 10},
                                            {"(", ")", 10},
                                            {"2*(", ")", 10},
                                            {"00:00:00.01|25*2+(", ")", 6},
                                            {"(2*(", "))", 5}}};
    const Shape& shape = kShapes[below(kShapes.size())];
    int depth = 1;
    while (depth < shape.deepest && chance(60)) ++depth;
    std::string text = repeated(shape.opening, depth) + "1";
    if (chance(70)) text += repeated(shape.closing, depth - (chance(20) ? 1 : 0));
    return text;
}

std::string ExpressionGenerator::randomBytes() {
    std::string text;
    const std::uint32_t length = below(25);
    for (std::uint32_t i = 0; i < length; ++i) {
        text += chance(70) ? pick(kNearAlphabet) : static_cast<char>(below(256));
    }
    return text;
}

// One or two of: cut short, a character dropped, added, changed or made non-ASCII, a parenthesis
// added, a piece repeated.
std::string ExpressionGenerator::disturbed(std::string text) {
    for (std::uint32_t round = 1 + below(2); round > 0; --round) {
        const auto size = static_cast<std::uint32_t>(text.size());
        const std::uint32_t at = below(size + 1);
        const std::uint32_t kind = below(7);
        if (kind == 0) text.resize(at);
        if (kind == 1 && at < size) text.erase(at, 1);
        if (kind == 2) text.insert(at, 1, pick(kNearAlphabet));
        if (kind == 3 && at < size) {
            text[at] = chance(80) ? pick(kNearAlphabet) : static_cast<char>(below(256));
        }
        if (kind == 4) text.insert(at, 1, chance(50) ? '(' : ')');
        if (kind == 5) text.insert(at, 1, static_cast<char>(0x80 + below(128)));
        if (kind == 6) text += text.substr(at, below(6));
    }
    return text;
}

}  // namespace vantrel::matcher_tests
