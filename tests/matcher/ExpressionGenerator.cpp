#include "ExpressionGenerator.h"

#include <array>

#include "Grammar.h"
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

ExpressionGenerator::ExpressionGenerator(std::uint64_t seed)
    : m_state(seed), m_grammar(grammarText(Flavour::PT)) {}

// splitmix64: small, fast, and the same sequence on every platform and standard library.
std::uint32_t ExpressionGenerator::below(std::size_t bound) {
    std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return static_cast<std::uint32_t>(((z ^ (z >> 31)) >> 32) * bound >> 32);
}

// A third of the texts are the text before with a key or two pressed, as people type: the
// matcher then keeps what it worked out for the text before.
std::string ExpressionGenerator::next() {
    m_last = !m_last.empty() && chance(35) ? typedOn(std::move(m_last)) : fresh();
    return m_last;
}

std::string ExpressionGenerator::fresh() {
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
    std::string text;
    while (!walk(m_grammar.root(), 0, text)) text.clear();
    return chance(30) ? disturbed(std::move(text)) : text;
}

// Appends a random text of the part. Oniguruma's work grows threefold and more with every level
// of parentheses, so a walk that goes deeper than a few calls is given up.
bool ExpressionGenerator::walk(std::uint32_t part, int calls, std::string& text) {
    const PatternNode& node = m_grammar.nodes()[part];
    switch (node.kind) {
        case PatternNode::Kind::Empty:
            return true;
        case PatternNode::Kind::Run: {
            std::string characters;
            for (int c = 0; c < 256; ++c) {
                if (node.characters[static_cast<std::size_t>(c)])
                    characters += static_cast<char>(c);
            }
            const std::uint32_t most = std::min(node.maxCount, node.minCount + 3);
            for (std::uint32_t n = node.minCount + below(most - node.minCount + 1); n > 0; --n) {
                text += pick(characters);
            }
            return true;
        }
        case PatternNode::Kind::Sequence:
            return walk(node.first, calls, text) && walk(node.second, calls, text);
        case PatternNode::Kind::Choice:
            return walk(m_grammar.alternatives()[node.first + below(node.second)], calls, text);
        case PatternNode::Kind::Star:
            while (chance(45)) {
                if (!walk(node.first, calls, text)) return false;
            }
            return true;
        case PatternNode::Kind::History:
            return walk(node.first, calls, text);
        case PatternNode::Kind::Call:
            return calls < 12 && walk(node.first, calls + 1, text);
    }
    return false;
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
// Mostly at the end, sometimes anywhere.
std::string ExpressionGenerator::typedOn(std::string text) {
    for (std::uint32_t keys = 1 + below(2); keys > 0; --keys) {
        const std::uint32_t kind = below(10);
        if (kind < 6) text += pick(kNearAlphabet);
        if (kind >= 6 && kind < 8 && !text.empty()) text.pop_back();
        if (kind >= 8) text = disturbed(std::move(text));
    }
    return text;
}

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
