#include "GrammarPattern.h"

#include <atomic>
#include <map>
#include <stdexcept>

#include "PatternAnalysis.h"

namespace vantrel {

namespace {

using Kind = PatternNode::Kind;

// Oniguruma refuses intervals above 100,000; ours stay far below, and expanding a bounded
// repetition copies its part, so a small limit keeps a mistyped number from exhausting memory.
constexpr std::uint32_t kMaxInterval = 1000;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isAsciiLetterOrDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::bitset<256> single(char c) {
    std::bitset<256> set;
    set.set(static_cast<unsigned char>(c));
    return set;
}

// \d and \s as Oniguruma reads them in the ASCII encoding: nothing beyond 0x7f belongs to either.
std::bitset<256> digits() {
    std::bitset<256> set;
    for (char c = '0'; c <= '9'; ++c) set.set(static_cast<unsigned char>(c));
    return set;
}

std::bitset<256> whiteSpace() {
    std::bitset<256> set;
    for (unsigned char c = '\t'; c <= '\r'; ++c) set.set(c);
    set.set(' ');
    return set;
}

}  // namespace

// Recursive descent over the grammar text: alternation, sequence, quantified atom. Parts are
// appended to the pattern as they are read, so every part's pieces have smaller indices than the
// part itself; only calls point elsewhere, and they are resolved once the whole text is read.
class PatternReader {
public:
    PatternReader(std::string_view text, GrammarPattern& pattern)
        : m_text(text), m_pattern(pattern) {}

    void read() {
        m_empty = add({});
        m_pattern.m_root = alternation();
        if (!atEnd()) fail("unbalanced ')'");
        resolveCalls();
        PatternAnalysis(m_pattern, m_offsets).run();
    }

private:
    struct PendingCall {
        std::uint32_t node;
        std::string name;
        std::size_t offset;
    };

    bool atEnd() const { return m_at >= m_text.size(); }
    char peek() const { return atEnd() ? '\0' : m_text[m_at]; }
    bool accept(std::string_view token) {
        if (m_text.substr(m_at, token.size()) != token) return false;
        m_at += token.size();
        return true;
    }

    [[noreturn]] void failAt(std::size_t offset, std::string_view what) const {
        refusePattern(offset, what);
    }
    [[noreturn]] void fail(std::string_view what) const { failAt(m_at, what); }

    std::uint32_t add(PatternNode node) {
        m_pattern.m_nodes.push_back(node);
        m_offsets.push_back(m_at);
        return static_cast<std::uint32_t>(m_pattern.m_nodes.size() - 1);
    }
    const PatternNode& node(std::uint32_t index) const { return m_pattern.m_nodes[index]; }

    std::uint32_t run(const std::bitset<256>& characters) {
        PatternNode part;
        part.kind = Kind::Run;
        part.characters = characters;
        part.minCount = 1;
        part.maxCount = 1;
        return add(part);
    }

    std::uint32_t binary(Kind kind, std::uint32_t first, std::uint32_t second) {
        PatternNode part;
        part.kind = kind;
        part.first = first;
        part.second = second;
        return add(part);
    }

    std::uint32_t unary(Kind kind, std::uint32_t body) { return binary(kind, body, 0); }

    std::uint32_t choice(const std::vector<std::uint32_t>& alternatives) {
        if (alternatives.size() == 1) return alternatives.front();
        const auto first = static_cast<std::uint32_t>(m_pattern.m_alternatives.size());
        m_pattern.m_alternatives.insert(m_pattern.m_alternatives.end(), alternatives.begin(),
                                        alternatives.end());
        return binary(Kind::Choice, first, static_cast<std::uint32_t>(alternatives.size()));
    }

    // Right-nested pairs, so that what follows a part is itself one part with its own ends.
    std::uint32_t sequence(const std::vector<std::uint32_t>& parts) {
        std::vector<std::uint32_t> kept;
        for (const std::uint32_t part : parts) {
            if (node(part).kind != Kind::Empty) kept.push_back(part);
        }
        if (kept.empty()) return m_empty;
        std::uint32_t result = kept.back();
        for (auto it = kept.rbegin() + 1; it != kept.rend(); ++it) {
            result = binary(Kind::Sequence, *it, result);
        }
        return result;
    }

    std::uint32_t alternation() {
        std::vector<std::uint32_t> alternatives{concatenation()};
        while (accept("|")) alternatives.push_back(concatenation());
        return choice(alternatives);
    }

    std::uint32_t concatenation() {
        std::vector<std::uint32_t> parts;
        while (!atEnd() && peek() != '|' && peek() != ')') parts.push_back(quantified());
        return sequence(parts);
    }

    std::uint32_t quantified() {
        const std::uint32_t body = atom();
        std::uint32_t minCount = 1;
        std::uint32_t maxCount = 1;
        if (accept("*")) {
            minCount = 0;
            maxCount = PatternNode::kUnbounded;
        } else if (accept("+")) {
            maxCount = PatternNode::kUnbounded;
        } else if (accept("?")) {
            minCount = 0;
        } else if (peek() == '{') {
            interval(minCount, maxCount);
        } else {
            return body;
        }
        if (peek() == '?' || peek() == '+' || peek() == '*' || peek() == '{') {
            fail("lazy, possessive and nested quantifiers are not supported");
        }
        return repeated(body, minCount, maxCount);
    }

    void interval(std::uint32_t& minCount, std::uint32_t& maxCount) {
        const std::size_t start = m_at;
        ++m_at;
        const bool hasMin = isDigit(peek());
        minCount = hasMin ? number() : 0;
        maxCount = minCount;
        if (accept(","))
            maxCount = isDigit(peek()) ? number() : PatternNode::kUnbounded;
        else if (!hasMin)
            failAt(start, "bad interval");
        if (!accept("}")) failAt(start, "bad interval");
        if (minCount > maxCount) failAt(start, "interval with its bounds the wrong way round");
    }

    std::uint32_t number() {
        std::uint32_t value = 0;
        while (isDigit(peek())) {
            value = value * 10 + static_cast<std::uint32_t>(peek() - '0');
            if (value > kMaxInterval) fail("interval too large");
            ++m_at;
        }
        return value;
    }

    // body{min,max}, greedy: min copies, then either a star or nested optional copies, so that
    // x{0,2} tries xx, then x, then nothing, as Oniguruma's expansion of the interval does.
    std::uint32_t repeated(std::uint32_t body, std::uint32_t minCount, std::uint32_t maxCount) {
        if (maxCount == 0) return m_empty;
        const PatternNode& part = node(body);
        if (part.kind == Kind::Run && part.minCount == 1 && part.maxCount == 1) {
            PatternNode runOfCharacters = part;
            runOfCharacters.minCount = minCount;
            runOfCharacters.maxCount = maxCount;
            return add(runOfCharacters);
        }
        std::vector<std::uint32_t> parts(minCount, body);
        if (maxCount == PatternNode::kUnbounded) {
            parts.push_back(unary(Kind::Star, body));
        } else if (maxCount > minCount) {
            std::uint32_t optional = choice({body, m_empty});
            for (std::uint32_t i = minCount + 1; i < maxCount; ++i) {
                optional = choice({sequence({body, optional}), m_empty});
            }
            parts.push_back(optional);
        }
        return sequence(parts);
    }

    std::uint32_t atom() {
        const char c = peek();
        switch (c) {
            case '(':
                return group();
            case '[':
                return characterClass();
            case '\\':
                return escape();
            case '.':
            case '^':
            case '$':
            case '{':
                fail(std::string("'") + c + "' is not supported");
            case '*':
            case '+':
            case '?':
                fail("quantifier without anything to repeat");
            default:
                ++m_at;
                return run(single(c));
        }
    }

    std::uint32_t group() {
        const std::size_t start = m_at;
        ++m_at;
        if (accept("?:")) return closed(alternation(), start);
        if (accept("?@<")) {
            const std::uint32_t number = newGroup(name());
            const std::uint32_t body = closed(alternation(), start);
            if (number > GrammarPattern::kMaxHistoryGroup) return body;
            const std::uint32_t history = unary(Kind::History, body);
            m_pattern.m_nodes[history].group = number;
            return history;
        }
        if (accept("?<")) {
            const std::string definition = name();
            newGroup(definition);
            const std::uint32_t body = closed(alternation(), start);
            if (!m_definitions.emplace(definition, body).second) {
                failAt(start, "definition '" + definition + "' given twice");
            }
            return body;
        }
        if (peek() == '?') fail("this kind of group is not supported");
        newGroup(std::string());
        return closed(alternation(), start);
    }

    std::uint32_t closed(std::uint32_t body, std::size_t start) {
        if (!accept(")")) failAt(start, "unbalanced '('");
        return body;
    }

    std::uint32_t newGroup(std::string groupName) {
        m_pattern.m_groupNames.push_back(std::move(groupName));
        return m_pattern.groupCount();
    }

    // A name and its closing '>'; the opening '<' is already read.
    std::string name() {
        const std::size_t start = m_at;
        while (!atEnd() && (isAsciiLetterOrDigit(peek()) || peek() == '_')) ++m_at;
        if (m_at == start || !accept(">")) failAt(start, "bad group name");
        return std::string(m_text.substr(start, m_at - 1 - start));
    }

    std::uint32_t escape() {
        ++m_at;
        if (atEnd()) fail("'\\' at the end");
        if (accept("g<")) {
            const std::size_t start = m_at - 3;
            std::string target = name();
            const std::uint32_t call = unary(Kind::Call, 0);
            m_calls.push_back({call, std::move(target), start});
            return call;
        }
        return run(escapedCharacters());
    }

    // The characters of an escape inside or outside a class; the backslash is already read.
    std::bitset<256> escapedCharacters() {
        const char c = peek();
        ++m_at;
        if (c == 'd') return digits();
        if (c == 's') return whiteSpace();
        if (isAsciiLetterOrDigit(c) || static_cast<unsigned char>(c) >= 0x80) {
            fail(std::string("escape '\\") + c + "' is not supported");
        }
        return single(c);
    }

    std::uint32_t characterClass() {
        const std::size_t start = m_at;
        ++m_at;
        if (peek() == '^' || peek() == ']') fail("negated and empty classes are not supported");
        std::bitset<256> set;
        while (!accept("]")) {
            if (atEnd()) failAt(start, "unbalanced '['");
            if (peek() == '[') fail("nested classes are not supported");
            if (accept("\\")) {
                set |= escapedCharacters();
                continue;
            }
            const auto low = static_cast<unsigned char>(peek());
            ++m_at;
            if (peek() == '-' && m_at + 1 < m_text.size() && m_text[m_at + 1] != ']') {
                ++m_at;
                const auto high = static_cast<unsigned char>(peek());
                if (high == '\\' || high == '[') fail("escapes as range ends are not supported");
                if (high < low) fail("range with its ends the wrong way round");
                ++m_at;
                for (unsigned c = low; c <= high; ++c) set.set(c);
            } else {
                set.set(low);
            }
        }
        return run(set);
    }

    void resolveCalls() {
        for (const PendingCall& call : m_calls) {
            const auto found = m_definitions.find(call.name);
            if (found == m_definitions.end()) {
                failAt(call.offset, "call of undefined name '" + call.name + "'");
            }
            m_pattern.m_nodes[call.node].first = found->second;
        }
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    GrammarPattern& m_pattern;
    std::uint32_t m_empty = 0;
    std::vector<std::size_t> m_offsets;
    std::map<std::string, std::uint32_t, std::less<>> m_definitions;
    std::vector<PendingCall> m_calls;
};

GrammarPattern::GrammarPattern(std::string_view text) {
    static std::atomic<std::uint64_t> lastSerial{0};
    m_serial = ++lastSerial;
    PatternReader(text, *this).read();
}

std::string_view GrammarPattern::groupName(std::uint32_t group) const {
    return group < m_groupNames.size() ? std::string_view(m_groupNames[group]) : std::string_view();
}

}  // namespace vantrel
