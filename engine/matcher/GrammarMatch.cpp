#include "GrammarMatch.h"

#include <utility>

#include "GrammarPattern.h"

namespace vantrel {

GrammarMatch::GrammarMatch(const GrammarPattern& pattern, std::string_view subject,
                           std::vector<CaptureRecord> captures)
    : m_pattern(&pattern), m_subject(subject), m_captures(std::move(captures)) {}

TextRange GrammarMatch::range() const {
    const CaptureRecord& root = m_captures.front();
    return {root.begin, root.end - root.begin};
}

std::string_view GrammarMatch::matchedString() const {
    return range().in(m_subject);
}

std::string_view GrammarMatch::prematchString() const {
    return range().before(m_subject);
}

std::string_view GrammarMatch::postmatchString() const {
    return range().after(m_subject);
}

Capture GrammarMatch::captureOf(const CaptureRecord& record) const {
    const TextRange range{record.begin, record.end - record.begin};
    return {m_pattern->groupName(record.group), m_subject.substr(range.location, range.length),
            static_cast<int>(record.level), range};
}

// Without recursion: a thousand nested parentheses make a capture tree a thousand levels deep.
void GrammarMatch::acceptVisitor(CaptureVisitor& visitor) const {
    std::vector<const CaptureRecord*> open;
    for (const CaptureRecord& record : m_captures) {
        while (!open.empty() && open.back()->level >= record.level) {
            visitor.visitAtLastCapture(captureOf(*open.back()));
            open.pop_back();
        }
        visitor.visitAtFirstCapture(captureOf(record));
        open.push_back(&record);
    }
    while (!open.empty()) {
        visitor.visitAtLastCapture(captureOf(*open.back()));
        open.pop_back();
    }
}

}  // namespace vantrel
