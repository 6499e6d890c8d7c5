#include "ExpressionGenerator.h"

#include <array>

#include "GrammarExamples.h"

namespace vantrel::matcher_tests {

namespace {

// What the grammar reads, a little else, and bytes it never reads.
constexpr std::string_view kNearAlphabet = "0123456789:.|+-*/() \tdn";

std::string repeated(std::string_view piece, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text.append(piece);
    return text;
}

}  // namespace

// splitmix64: small, fast, and the same sequence on every platform and standard library.
std::uint32_t ExpressionGenerator::below(std::size_t bound) {
    std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return static_cast<std::uint32_t>(((z ^ (z >> 31)) >> 32) * bound >> 32);
}

std::string ExpressionGenerator::next() {
    const std::uint32_t kind = below(100);
    if (kind < 9) {
        const std::size_t index = below(kAcceptedExamples.size() + kRejectedExamples.size());
        const std::string example(index < kAcceptedExamples.size()
                                      ? kAcceptedExamples[index]
                                      : kRejectedExamples[index - kAcceptedExamples.size()]);
        return kind < 4 ? example : disturbed(example);
    }
    if (kind < 14) {  // random bytes, most of them from near the grammar's alphabet
        std::string text;
        for (std::uint32_t length = below(25); length > 0; --length) {
            text += chance(70) ? pick(kNearAlphabet) : static_cast<char>(below(256));
        }
        return text;
    }
    if (kind < 16) return nestedChain();
    // Oniguruma's work grows threefold and more with every level, so deep nesting is rare.
    const std::uint32_t roll = below(1000);
    int depth = 0;
    for (const std::uint32_t bound : {450u, 750u, 920u, 985u, 996u}) depth += roll >= bound;
    std::string text = expression(depth);
    return chance(30) ? disturbed(std::move(text)) : text;
}

std::string ExpressionGenerator::digits(std::uint32_t count) {
    std::string text;
    for (; count > 0; --count) text += pick("0123456789");
    return text;
}

std::string ExpressionGenerator::blanks() {
    constexpr std::array<std::string_view, 9> kBlanks{"",   "",   "",   " ",     " ",
                                                      "\t", "  ", "\n", "\r\v\f"};
    return std::string(kBlanks[below(kBlanks.size())]);
}

// Mostly a rate suffix; now and then a near miss: wrong case, too short, doubled, unknown, bare.
std::string ExpressionGenerator::suffix() {
    constexpr std::array<std::string_view, 21> kSuffixes{
        "|24",  "|25",  "|30",  "|23d", "|29d",   "|23n", "|29n", "|48", "|50",  "|60", "|59d",
        "|47n", "|59n", "|23N", "|2",   "|24|25", "|99",  "|",    "|29", "|25d", "|59"};
    return std::string(kSuffixes[chance(90) ? below(13) : 13 + below(8)]);
}

std::string ExpressionGenerator::expression(int depth) {
    std::string text;
    do {
        if (!text.empty()) text += blanks() + pick("++++---****//") + blanks();
        if (depth == 0 || !chance(35)) {
            text += operand();
        } else {
            text += blanks() + "(" + blanks() + expression(depth - 1) + blanks() +
                    (chance(5) ? "" : ")") + blanks();
        }
    } while (chance(55));
    return text;
}

// A full form (leading zeros, optional hours and minutes, seconds, optional frames and suffix,
// fields of one to three digits, two most of the time), a short form, a frame count or a number.
std::string ExpressionGenerator::operand() {
    const auto field = [this] {
        const std::uint32_t roll = below(100);
        return digits(roll < 8 ? 0 : roll < 25 ? 1 : roll < 95 ? 2 : 3);
    };
    const std::uint32_t kind = below(100);
    std::string text = blanks();
    if (kind < 35) {
        if (chance(10)) text += repeated("0", static_cast<int>(below(4)));
        if (chance(60)) text += field() + ":";
        if (chance(80)) text += field();
        text += ":" + field();
        if (chance(65))
            text += "." + field() + (chance(45) ? suffix() : "");
        else if (chance(5))
            text += suffix();
    } else if (kind < 50) {
        text +=
            "0" + digits(chance(5) ? 9 + below(2) : 1 + below(8)) + (chance(40) ? suffix() : "");
    } else if (kind < 62) {
        text += pick("123456789") + digits(below(5)) + (chance(5) ? "" : suffix());
    } else if (kind < 65) {
        text += "." + digits(1 + below(3));
    } else {
        // "0" is never a number: the grammar takes it for the start of a short form.
        text += (kind < 70 ? '0' : pick("123456789")) + digits(below(5));
        if (chance(20)) text += "." + digits(below(4));
    }
    return text + blanks();
}

// Deep nesting up to where Oniguruma stops finishing within its effort bound: the plainest shapes
// up to ten levels, the costliest known ones up to six; closed or not. Each level costs
// Oniguruma three times the one before, so the deepest ones are rare.
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

// One or two of: cut short, a character dropped, added, changed or made non-ASCII, a parenthesis
// added, a piece repeated.
std::string ExpressionGenerator::disturbed(std::string text) {
    for (std::uint32_t round = 1 + below(2); round > 0; --round) {
        const std::size_t size = text.size();
        const std::uint32_t where = below(size + 1);
        const std::uint32_t kind = below(7);
        if (kind == 0) text.resize(where);
        if (kind == 1 && where < size) text.erase(where, 1);
        if (kind == 2) text.insert(where, 1, pick(kNearAlphabet));
        if (kind == 3 && where < size) {
            text[where] = chance(80) ? pick(kNearAlphabet) : static_cast<char>(below(256));
        }
        if (kind == 4) text.insert(where, 1, chance(50) ? '(' : ')');
        if (kind == 5) text.insert(where, 1, static_cast<char>(0x80 + below(128)));
        if (kind == 6) text += text.substr(where, below(6));
    }
    return text;
}

}  // namespace vantrel::matcher_tests
