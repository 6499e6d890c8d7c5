#include "ExpressionGenerator.h"

#include <array>

#include "GrammarExamples.h"

namespace vantrel::matcher_tests {

namespace {

constexpr std::array<std::string_view, 13> kSuffixes{"|24",  "|25",  "|30", "|23d", "|29d",
                                                     "|23n", "|29n", "|48", "|50",  "|60",
                                                     "|59d", "|47n", "|59n"};
// Near misses of a suffix: wrong case, too short, doubled, unknown, bare bar.
constexpr std::array<std::string_view, 8> kBadSuffixes{"|23N", "|2",  "|24|25", "|99",
                                                       "|",    "|29", "|25d",   "|59"};
constexpr std::array<std::string_view, 9> kBlanks{"", "", "", " ", " ", "\t", "  ", "\n", "\r\v\f"};
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
std::uint64_t ExpressionGenerator::random() {
    std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

std::uint32_t ExpressionGenerator::below(std::uint32_t bound) {
    return static_cast<std::uint32_t>((random() >> 32) * bound >> 32);
}

char ExpressionGenerator::pick(std::string_view characters) {
    return characters[below(static_cast<std::uint32_t>(characters.size()))];
}

std::string ExpressionGenerator::next() {
    const std::uint32_t kind = below(100);
    if (kind < 4) return example();
    if (kind < 9) return disturbed(example());
    if (kind < 14) return randomBytes();
    if (kind < 16) return nestedChain();
    std::string text = expression(nestingDepth());
    return chance(30) ? disturbed(std::move(text)) : text;
}

// Oniguruma's work grows threefold and more with every level, so deep nesting is rare: about one
// expression in a hundred goes beyond three levels.
int ExpressionGenerator::nestingDepth() {
    const std::uint32_t roll = below(1000);
    if (roll < 450) return 0;
    if (roll < 750) return 1;
    if (roll < 920) return 2;
    if (roll < 985) return 3;
    if (roll < 996) return 4;
    return 5;
}

std::string ExpressionGenerator::expression(int depth) {
    std::string text = term(depth);
    while (chance(55)) {
        text += blanks();
        text += pick(kOperators);
        text += blanks();
        text += term(depth);
    }
    return text;
}

std::string ExpressionGenerator::term(int depth) {
    if (depth == 0 || !chance(35)) return operand();
    std::string text = blanks() + "(" + blanks() + expression(depth - 1) + blanks();
    if (!chance(5)) text += ")";
    return text + blanks();
}

std::string ExpressionGenerator::operand() {
    const std::uint32_t kind = below(100);
    std::string text = blanks();
    if (kind < 35) {
        text += fullForm();
    } else if (kind < 50) {
        text += shortForm();
    } else if (kind < 62) {
        text += frameCount();
    } else {
        text += number();
    }
    return text + blanks();
}

// Any number of leading zeros, optionally hours and minutes, then ":" and seconds, optionally
// "." and frames and a suffix; fields of one to three digits, two most of the time.
std::string ExpressionGenerator::fullForm() {
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

std::string ExpressionGenerator::shortForm() {
    const std::uint32_t count = chance(5) ? 9 + below(2) : 1 + below(8);
    std::string text = "0" + digits(count);
    if (chance(40)) text += suffix();
    return text;
}

std::string ExpressionGenerator::frameCount() {
    std::string text(1, pick("123456789"));
    text += digits(below(5));
    if (!chance(5)) text += suffix();
    return text;
}

std::string ExpressionGenerator::number() {
    const std::uint32_t kind = below(100);
    std::string text;
    if (kind < 5) {
        text = "0";  // never a number: the grammar takes it for the start of a short form
    } else if (kind < 8) {
        return "." + digits(1 + below(3));
    } else {
        text = std::string(1, pick("123456789"));
    }
    text += digits(below(5));
    if (chance(20)) text += "." + digits(below(4));
    return text;
}

std::string ExpressionGenerator::digits(std::uint32_t count) {
    std::string text;
    for (std::uint32_t i = 0; i < count; ++i) text += pick("0123456789");
    return text;
}

std::string ExpressionGenerator::field() {
    const std::uint32_t roll = below(100);
    return digits(roll < 8 ? 0 : roll < 25 ? 1 : roll < 95 ? 2 : 3);
}

std::string ExpressionGenerator::suffix() {
    if (chance(90)) return std::string(kSuffixes[below(kSuffixes.size())]);
    return std::string(kBadSuffixes[below(kBadSuffixes.size())]);
}

std::string ExpressionGenerator::blanks() {
    return std::string(kBlanks[below(kBlanks.size())]);
}

std::string ExpressionGenerator::example() {
    const std::uint32_t index = below(kAcceptedExamples.size() + kRejectedExamples.size());
    if (index < kAcceptedExamples.size()) return std::string(kAcceptedExamples[index]);
    return std::string(kRejectedExamples[index - kAcceptedExamples.size()]);
}

// Deep nesting up to where Oniguruma stops finishing within its effort bound: the plainest shapes
// ("1+(1+(...1))", "((...1))", "2*(2*(...1))") up to ten levels, the costliest known ones (a
// timestamp product, or a parenthesised product, at every level) up to six; closed or not.
std::string ExpressionGenerator::nestedChain() {
    struct Shape {
        std::string_view opening;
        std::string_view closing;
        int deepest;
    };
    constexpr std::array<Shape, 5> kShapes{{{"1+(", ")", 10},
                                            {"(", ")", 10},
                                            {"2*(", ")", 10},
                                            {"00:00:00.01|25*2+(", ")", 6},
                                            {"(2*(", "))", 5}}};
    const Shape& shape = kShapes[below(kShapes.size())];
    // Each level costs Oniguruma three times the one before, so the deepest ones are rare.
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

std::string ExpressionGenerator::disturbed(std::string text) {
    const std::uint32_t rounds = 1 + below(2);
    for (std::uint32_t round = 0; round < rounds; ++round) {
        const auto size = static_cast<std::uint32_t>(text.size());
        const std::uint32_t at = below(size + 1);
        switch (below(7)) {
            case 0:
                text.resize(at);
                break;
            case 1:
                if (at < size) text.erase(at, 1);
                break;
            case 2:
                text.insert(at, 1, pick(kNearAlphabet));
                break;
            case 3:
                if (at < size)
                    text[at] = chance(80) ? pick(kNearAlphabet) : static_cast<char>(below(256));
                break;
            case 4:
                text.insert(at, 1, chance(50) ? '(' : ')');
                break;
            case 5:
                text.insert(at, 1, static_cast<char>(0x80 + below(128)));
                break;
            default:
                text += text.substr(at, below(6));
                break;
        }
    }
    return text;
}

}  // namespace vantrel::matcher_tests
