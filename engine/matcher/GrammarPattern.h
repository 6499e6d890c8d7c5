#pragma once

#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

/// One part of a parsed grammar. Parts refer to each other by their index in
/// GrammarPattern::nodes().
struct PatternNode {
    enum class Kind : std::uint8_t {
        Empty,     ///< the empty text
        Run,       ///< minCount to maxCount characters of `characters`, as many as possible first
        Sequence,  ///< part `first`, then part `second`
        Choice,    ///< alternatives()[first] to alternatives()[first + second - 1], in that order
        Star,      ///< part `first` as often as possible; it never matches the empty text
        History,   ///< part `first`, recorded in the capture history as group number `group`
        Call,      ///< the body of a named definition, part `first`
    };
    static constexpr std::uint32_t kUnbounded = UINT32_MAX;

    Kind kind = Kind::Empty;
    /// Sequence whose first part is a run that never gives characters back: what follows cannot
    /// match the empty text nor begin with any of the run's characters, so every shorter run
    /// would fail at once (Oniguruma makes such runs possessive for the same reason).
    bool headTakesAll = false;
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    std::uint32_t group = 0;
    std::uint32_t minCount = 0;
    std::uint32_t maxCount = 0;
    std::bitset<256> characters;
};

/// A grammar text in the Ruby syntax of Oniguruma, read into parts that the grammar matcher walks.
///
/// Only what the calculator's grammar uses is understood: named definitions `(?<name>...)`, also
/// with `{0}`, calls `\g<name>`, history groups `(?@<name>...)`, plain and `(?:...)` groups,
/// alternation, the greedy quantifiers `*`, `+`, `?` and `{m,n}`, character classes of single
/// characters and ranges, `\d`, `\s`, escaped punctuation and plain literals. Groups are numbered
/// in the order of their opening parentheses, plain groups included, as Oniguruma numbers them with
/// ONIG_OPTION_CAPTURE_GROUP; like Oniguruma, only history groups numbered up to 31 are recorded.
class GrammarPattern {
public:
    /// Oniguruma records capture history for group numbers 1 to 31 only.
    static constexpr std::uint32_t kMaxHistoryGroup = 31;

    /// Reads the text. Throws std::invalid_argument, naming the offset, for anything else: other
    /// constructs, unbalanced parentheses, calls of unknown names, a repeated part that could
    /// match the empty text, and definitions that call themselves before reading a character.
    explicit GrammarPattern(std::string_view text);

    const std::vector<PatternNode>& nodes() const { return m_nodes; }
    const std::vector<std::uint32_t>& alternatives() const { return m_alternatives; }
    /// The part that the whole text stands for.
    std::uint32_t root() const { return m_root; }
    /// Number of numbered groups; group numbers run from 1 to this.
    std::uint32_t groupCount() const { return static_cast<std::uint32_t>(m_groupNames.size()) - 1; }
    /// The name of a group number: empty for plain groups, for 0 and for numbers out of range.
    std::string_view groupName(std::uint32_t group) const;
    /// Whether the part can match the empty text.
    bool nullable(std::uint32_t part) const { return m_nullable[part]; }
    /// Whether a match of the part that reads nothing can still record a history capture.
    bool capturesWhenEmpty(std::uint32_t part) const { return m_capturesWhenEmpty[part]; }
    /// The characters that a non-empty match of the part can begin with.
    const std::bitset<256>& firstCharacters(std::uint32_t part) const {
        return m_firstCharacters[part];
    }

    /// The text that every match of the part begins with, as far as the pattern shows it: "|25" for
    /// one of the rate suffixes, empty for a part that can match the empty text.
    const std::string& literalPrefix(std::uint32_t part) const { return m_literalPrefixes[part]; }

    /// Tells patterns apart for working memory kept from one search to the next: a pattern read
    /// later never has the serial of one read before, even at the same address.
    std::uint64_t serial() const { return m_serial; }
    /// The count of "(" less ")" that every match of the part reads, when all its matches read the
    /// same: a part that balances its parentheses can only end where the text's depth returns.
    std::optional<std::int32_t> bracketBalance(std::uint32_t part) const {
        return m_bracketBalance[part];
    }

private:
    friend class PatternReader;
    friend class PatternAnalysis;

    std::vector<PatternNode> m_nodes;
    std::vector<std::uint32_t> m_alternatives;
    std::vector<std::string> m_groupNames{std::string()};
    std::vector<bool> m_nullable;
    std::vector<bool> m_capturesWhenEmpty;
    std::vector<std::bitset<256>> m_firstCharacters;
    std::vector<std::optional<std::int32_t>> m_bracketBalance;
    std::vector<std::string> m_literalPrefixes;
    std::uint32_t m_root = 0;
    std::uint64_t m_serial = 0;
};

}  // namespace vantrel
