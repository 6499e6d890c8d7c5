#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct re_registers;
struct re_pattern_buffer;

namespace vantrel {

/// A span of text in bytes: where it starts and how long it is.
struct TextRange {
    std::size_t location = 0;
    std::size_t length = 0;
    friend bool operator==(const TextRange&, const TextRange&) = default;

    /// The part of the subject the range covers, and the parts before and after it.
    std::string_view in(std::string_view subject) const { return subject.substr(location, length); }
    std::string_view before(std::string_view subject) const { return subject.substr(0, location); }
    std::string_view after(std::string_view subject) const {
        return subject.substr(location + length);
    }
};

/// One node of a match's capture history. The root stands for the whole match and has no name.
struct Capture {
    std::string_view groupName;
    std::string_view text;
    int level = 0;
    TextRange range;
};

/// Receives the capture history depth first: a node on entry, then its children in the order of
/// their start, then the node again on leaving.
class CaptureVisitor {
public:
    virtual ~CaptureVisitor() = default;
    virtual void visitAtFirstCapture(const Capture& capture) = 0;
    virtual void visitAtLastCapture(const Capture& capture) = 0;
};

class Regex;

/// One successful match. It refers to the searched text, which must outlive it.
class RegexMatch {
public:
    RegexMatch(const Regex& regex, std::string_view subject);
    ~RegexMatch();
    RegexMatch(RegexMatch&& other) noexcept;
    RegexMatch(const RegexMatch&) = delete;
    RegexMatch& operator=(const RegexMatch&) = delete;
    RegexMatch& operator=(RegexMatch&&) = delete;

    TextRange range() const;
    std::string_view matchedString() const;
    std::string_view prematchString() const;
    std::string_view postmatchString() const;

    /// Walks the capture history (history groups only) with the visitor.
    void acceptVisitor(CaptureVisitor& visitor) const;

private:
    friend class Regex;
    const Regex* m_regex;
    std::string_view m_subject;
    re_registers* m_region;
};

/// A pattern in Ruby syntax with capture history on, compiled once and searched many times.
///
/// Every search is bounded: past a fixed number of backtracking steps it gives up and reports no
/// match, so no input can make a keystroke hang. Below the bound the grammar matches exactly as
/// without it: plain shapes up to nine levels of parentheses, the costliest known up to five. The
/// text is searched byte by byte: the patterns speak ASCII only, so invalid UTF-8 is harmless and
/// every match starts and ends on a character boundary.
class Regex {
public:
    /// Backtracking steps allowed for one search; see kMaxBacktrackingSteps in Regex.cpp.
    static const unsigned long kSearchEffortBound;

    /// Compiles the pattern; throws std::invalid_argument with Oniguruma's message if it is bad.
    explicit Regex(std::string_view pattern);
    ~Regex();
    Regex(const Regex&) = delete;
    Regex& operator=(const Regex&) = delete;

    /// The first match, trying each start position from the left.
    std::optional<RegexMatch> search(std::string_view text) const;
    /// The match that starts at position 0, if any: what search() finds when it finds it there.
    std::optional<RegexMatch> matchAtStart(std::string_view text) const;
    /// As search() and matchAtStart(), also telling whether the effort bound cut the search short,
    /// in which case there is no match although one may exist.
    std::optional<RegexMatch> search(std::string_view text, bool& stoppedByBound) const;
    std::optional<RegexMatch> matchAtStart(std::string_view text, bool& stoppedByBound) const;
    /// Calls back with each match, left to right and without overlap.
    void forEachMatch(std::string_view text,
                      const std::function<void(const RegexMatch&)>& callback) const;
    /// Replaces each match, left to right and without overlap, by what the callback returns.
    std::string replaceAll(std::string_view text,
                           const std::function<std::string(const RegexMatch&)>& replacement) const;

    std::string_view groupName(int group) const;

private:
    std::optional<RegexMatch> find(std::string_view text, std::size_t from, bool anchored,
                                   bool* stoppedByBound = nullptr) const;

    re_pattern_buffer* m_regex = nullptr;
    std::vector<std::string> m_groupNames;
};

}  // namespace vantrel
