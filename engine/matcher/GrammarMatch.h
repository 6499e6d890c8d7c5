#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "Regex.h"

namespace vantrel {

class GrammarPattern;

/// One node of a capture tree as the grammar matcher stores it: the group number (0 for the
/// root), where the capture begins and ends in the text, and its depth (0 for the root).
struct CaptureRecord {
    std::uint32_t group = 0;
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    std::uint32_t level = 0;
    friend bool operator==(const CaptureRecord&, const CaptureRecord&) = default;
};

/// One successful match of the grammar matcher, with the same shape as Oniguruma's: a range and
/// a capture history. It refers to the searched text and to the matcher's pattern, which must
/// outlive it.
class GrammarMatch {
public:
    /// The records in depth-first order, the root (the whole match) first.
    GrammarMatch(const GrammarPattern& pattern, std::string_view subject,
                 std::vector<CaptureRecord> captures);

    TextRange range() const;
    std::string_view matchedString() const;
    std::string_view prematchString() const;
    std::string_view postmatchString() const;

    /// Walks the capture history depth first, as RegexMatch::acceptVisitor() does: each node on
    /// entry, then its children in the order of their start, then the node again on leaving.
    void acceptVisitor(CaptureVisitor& visitor) const;

    const std::vector<CaptureRecord>& captures() const { return m_captures; }

private:
    Capture captureOf(const CaptureRecord& record) const;

    const GrammarPattern* m_pattern;
    std::string_view m_subject;
    std::vector<CaptureRecord> m_captures;
};

}  // namespace vantrel
