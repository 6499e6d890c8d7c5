#include "PatternAnalysis.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>

namespace vantrel {

using Kind = PatternNode::Kind;

void refusePattern(std::size_t offset, std::string_view what) {
    throw std::invalid_argument("grammar text, offset " + std::to_string(offset) + ": " +
                                std::string(what));
}

void PatternAnalysis::run() {
    findNullableParts();
    findCapturesWhenEmpty();
    findFirstCharacters();
    findRunsThatTakeAll();
    findBracketBalances();
    findLiteralPrefixes();
    rejectEmptyRepetitions();
    rejectLeftRecursion();
}

// Least fixed points: calls make the parts recursive, so a single pass is not enough.
void PatternAnalysis::findNullableParts() {
    const auto& nodes = m_pattern.m_nodes;
    m_nullable.assign(nodes.size(), false);
    bool changed = true;
    while (changed) {
        changed = false;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (!m_nullable[i] && nullable(nodes[i])) {
                m_nullable[i] = true;
                changed = true;
            }
        }
    }
    m_pattern.m_nullable = m_nullable;
}

void PatternAnalysis::findCapturesWhenEmpty() {
    const auto& nodes = m_pattern.m_nodes;
    auto& captures = m_pattern.m_capturesWhenEmpty;
    captures.assign(nodes.size(), false);
    bool changed = true;
    while (changed) {
        changed = false;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (!captures[i] && m_nullable[i] && capturesWhenEmpty(nodes[i])) {
                captures[i] = true;
                changed = true;
            }
        }
    }
}

// Only asked of nullable parts. A repetition that reads nothing stops at once, capturing
// nothing, since its body cannot match the empty text.
bool PatternAnalysis::capturesWhenEmpty(const PatternNode& part) const {
    const auto& captures = m_pattern.m_capturesWhenEmpty;
    switch (part.kind) {
        case Kind::Empty:
        case Kind::Run:
        case Kind::Star:
            return false;
        case Kind::Sequence:
            return captures[part.first] || captures[part.second];
        case Kind::Choice:
            for (std::uint32_t i = 0; i < part.second; ++i) {
                if (captures[m_pattern.m_alternatives[part.first + i]]) return true;
            }
            return false;
        case Kind::History:
            return true;
        case Kind::Call:
            return captures[part.first];
    }
    return false;
}

void PatternAnalysis::findFirstCharacters() {
    const auto& nodes = m_pattern.m_nodes;
    auto& first = m_pattern.m_firstCharacters;
    first.assign(nodes.size(), {});
    bool changed = true;
    while (changed) {
        changed = false;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            const std::bitset<256> found = firstCharacters(nodes[i]);
            if ((found & ~first[i]).any()) {
                first[i] |= found;
                changed = true;
            }
        }
    }
}

std::bitset<256> PatternAnalysis::firstCharacters(const PatternNode& part) const {
    const auto& first = m_pattern.m_firstCharacters;
    switch (part.kind) {
        case Kind::Empty:
            return {};
        case Kind::Run:
            return part.maxCount > 0 ? part.characters : std::bitset<256>();
        case Kind::Sequence:
            return m_nullable[part.first] ? first[part.first] | first[part.second]
                                          : first[part.first];
        case Kind::Choice: {
            std::bitset<256> set;
            for (std::uint32_t i = 0; i < part.second; ++i) {
                set |= first[m_pattern.m_alternatives[part.first + i]];
            }
            return set;
        }
        case Kind::Star:
        case Kind::History:
        case Kind::Call:
            return first[part.first];
    }
    return {};
}

bool PatternAnalysis::nullable(const PatternNode& part) const {
    switch (part.kind) {
        case Kind::Empty:
        case Kind::Star:
            return true;
        case Kind::Run:
            return part.minCount == 0;
        case Kind::Sequence:
            return m_nullable[part.first] && m_nullable[part.second];
        case Kind::Choice:
            for (std::uint32_t i = 0; i < part.second; ++i) {
                if (m_nullable[m_pattern.m_alternatives[part.first + i]]) return true;
            }
            return false;
        case Kind::History:
        case Kind::Call:
            return m_nullable[part.first];
    }
    return false;
}

void PatternAnalysis::findRunsThatTakeAll() {
    auto& nodes = m_pattern.m_nodes;
    for (PatternNode& part : nodes) {
        if (part.kind != Kind::Sequence) continue;
        const PatternNode& head = nodes[part.first];
        part.headTakesAll = head.kind == Kind::Run && !m_nullable[part.second] &&
                            (head.characters & m_pattern.m_firstCharacters[part.second]).none();
    }
}

namespace {

// A part's bracket balance as the fixed point is worked out: no match found yet, one count that
// every match found so far reads, or matches that read different counts.
struct Balance {
    enum class State : std::uint8_t { NoMatchYet, Fixed, Varies };
    State state = State::NoMatchYet;
    std::int32_t count = 0;

    static Balance fixed(std::int32_t count) { return {State::Fixed, count}; }
    static Balance varies() { return {State::Varies, 0}; }
    bool operator==(const Balance&) const = default;

    // Either way: the choice, the repetition's rounds against stopping.
    Balance joined(const Balance& other) const {
        if (state == State::NoMatchYet) return other;
        if (other.state == State::NoMatchYet || other == *this) return *this;
        return varies();
    }
    // One then the other: a sequence.
    Balance then(const Balance& other) const {
        if (state == State::NoMatchYet || other.state == State::NoMatchYet) return {};
        if (state == State::Varies || other.state == State::Varies) return varies();
        return fixed(count + other.count);
    }
};

Balance runBalance(const PatternNode& run) {
    const bool opens = run.characters['('];
    const bool closes = run.characters[')'];
    if (!opens && !closes) return Balance::fixed(0);
    if (run.minCount != run.maxCount || run.characters.count() != 1) return Balance::varies();
    const auto count = static_cast<std::int32_t>(run.minCount);
    return Balance::fixed(opens ? count : -count);
}

}  // namespace

// A least fixed point again: by induction on the depth of a match, every match of a part found
// fixed reads that count, however its calls nest.
void PatternAnalysis::findBracketBalances() {
    const auto& nodes = m_pattern.m_nodes;
    std::vector<Balance> balances(nodes.size());
    bool changed = true;
    while (changed) {
        changed = false;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            const PatternNode& part = nodes[i];
            Balance found;
            switch (part.kind) {
                case Kind::Empty:
                    found = Balance::fixed(0);
                    break;
                case Kind::Run:
                    found = runBalance(part);
                    break;
                case Kind::Sequence:
                    found = balances[part.first].then(balances[part.second]);
                    break;
                case Kind::Choice:
                    for (std::uint32_t k = 0; k < part.second; ++k) {
                        found = found.joined(balances[m_pattern.m_alternatives[part.first + k]]);
                    }
                    break;
                case Kind::Star:
                    found = Balance::fixed(0).joined(balances[part.first]);
                    break;
                case Kind::History:
                case Kind::Call:
                    found = balances[part.first];
                    break;
            }
            found = balances[i].joined(found);
            if (found != balances[i]) {
                balances[i] = found;
                changed = true;
            }
        }
    }
    auto& result = m_pattern.m_bracketBalance;
    result.assign(nodes.size(), std::nullopt);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (balances[i].state == Balance::State::Fixed) result[i] = balances[i].count;
    }
}

// Oniguruma stops an iteration that matched nothing by a check whose outcome also depends on
// the captures; the grammar never needs it, so such repetitions are refused instead.
void PatternAnalysis::rejectEmptyRepetitions() const {
    const auto& nodes = m_pattern.m_nodes;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (nodes[i].kind == Kind::Star && m_nullable[nodes[i].first]) {
            refusePattern(m_offsets[i], "a repeated part can match the empty text");
        }
    }
}

// The parts a part may enter without reading a character: a cycle among them would make a
// call re-enter itself at the same position for ever (Oniguruma calls it never-ending
// recursion and refuses the pattern too).
std::vector<std::uint32_t> PatternAnalysis::enteredWithoutReading(const PatternNode& part) const {
    switch (part.kind) {
        case Kind::Empty:
        case Kind::Run:
            return {};
        case Kind::Sequence:
            if (m_nullable[part.first]) return {part.first, part.second};
            return {part.first};
        case Kind::Choice:
            return {m_pattern.m_alternatives.begin() + part.first,
                    m_pattern.m_alternatives.begin() + part.first + part.second};
        case Kind::Star:
        case Kind::History:
        case Kind::Call:
            return {part.first};
    }
    return {};
}

void PatternAnalysis::rejectLeftRecursion() const {
    enum class Mark : std::uint8_t { Unvisited, Open, Done };
    const auto& nodes = m_pattern.m_nodes;
    std::vector<Mark> marks(nodes.size(), Mark::Unvisited);
    struct Visit {
        std::uint32_t node;
        std::vector<std::uint32_t> next;
        std::size_t index;
    };
    for (std::uint32_t start = 0; start < nodes.size(); ++start) {
        if (marks[start] != Mark::Unvisited) continue;
        std::vector<Visit> path{{start, enteredWithoutReading(nodes[start]), 0}};
        marks[start] = Mark::Open;
        while (!path.empty()) {
            Visit& visit = path.back();
            if (visit.index == visit.next.size()) {
                marks[visit.node] = Mark::Done;
                path.pop_back();
                continue;
            }
            const std::uint32_t next = visit.next[visit.index++];
            if (marks[next] == Mark::Open) {
                refusePattern(m_offsets[next],
                              "a definition calls itself without reading a character");
            }
            if (marks[next] == Mark::Done) continue;
            marks[next] = Mark::Open;
            path.push_back({next, enteredWithoutReading(nodes[next]), 0});
        }
    }
}

namespace {

// Longer prefixes would hardly rule out more: the grammar's longest literal is a rate suffix.
constexpr std::size_t kMaxLiteralPrefix = 8;

// The text that every match of a part begins with, and whether the part matches that text only.
struct LiteralPrefix {
    std::string text;
    bool whole = false;
};

class LiteralPrefixes {
public:
    explicit LiteralPrefixes(const GrammarPattern& pattern)
        : m_pattern(pattern),
          m_found(pattern.nodes().size()),
          m_state(pattern.nodes().size(), State::NotYet) {}

    // A part met again while its own prefix is being worked out (a call that recurses) counts as
    // beginning with nothing known: weaker than the truth, never wrong.
    const LiteralPrefix& of(std::uint32_t part) {
        static const LiteralPrefix kNothingKnown;
        if (m_state[part] == State::Working) return kNothingKnown;
        if (m_state[part] == State::NotYet) {
            m_state[part] = State::Working;
            m_found[part] = work(m_pattern.nodes()[part]);
            m_state[part] = State::Done;
        }
        return m_found[part];
    }

private:
    enum class State : std::uint8_t { NotYet, Working, Done };

    LiteralPrefix work(const PatternNode& part) {
        switch (part.kind) {
            case Kind::Empty:
                return {{}, true};
            case Kind::Run:
                return runPrefix(part);
            case Kind::Sequence: {
                LiteralPrefix head = of(part.first);
                if (!head.whole) return head;
                const LiteralPrefix& rest = of(part.second);
                return capped(head.text + rest.text, rest.whole);
            }
            case Kind::Choice:
                return {commonPrefixOfAlternatives(part), false};
            case Kind::Star:
                return {};
            case Kind::History:
            case Kind::Call:
                return of(part.first);
        }
        return {};
    }

    static LiteralPrefix runPrefix(const PatternNode& run) {
        if (run.maxCount == 0) return {{}, true};
        if (run.characters.count() != 1) return {};
        char character = 0;
        for (std::size_t code = 0; code < 256; ++code) {
            if (run.characters[code]) character = static_cast<char>(code);
        }
        const std::size_t count = std::min<std::size_t>(run.minCount, kMaxLiteralPrefix + 1);
        return capped(std::string(count, character), run.minCount == run.maxCount);
    }

    std::string commonPrefixOfAlternatives(const PatternNode& choice) {
        std::string common;
        for (std::uint32_t i = 0; i < choice.second; ++i) {
            const std::string& text = of(m_pattern.alternatives()[choice.first + i]).text;
            if (i == 0) {
                common = text;
                continue;
            }
            common.erase(
                std::mismatch(common.begin(), common.end(), text.begin(), text.end()).first,
                common.end());
        }
        return common;
    }

    static LiteralPrefix capped(std::string text, bool whole) {
        if (text.size() <= kMaxLiteralPrefix) return {std::move(text), whole};
        text.resize(kMaxLiteralPrefix);
        return {std::move(text), false};
    }

    const GrammarPattern& m_pattern;
    std::vector<LiteralPrefix> m_found;
    std::vector<State> m_state;
};

}  // namespace

void PatternAnalysis::findLiteralPrefixes() {
    LiteralPrefixes prefixes(m_pattern);
    const auto parts = static_cast<std::uint32_t>(m_pattern.m_nodes.size());
    m_pattern.m_literalPrefixes.clear();
    for (std::uint32_t part = 0; part < parts; ++part) {
        m_pattern.m_literalPrefixes.push_back(prefixes.of(part).text);
    }
}

}  // namespace vantrel
