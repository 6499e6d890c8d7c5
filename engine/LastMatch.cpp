#include "LastMatch.h"

#include "Grammar.h"
#include "GrammarMatcher.h"
#include "TimestampText.h"

namespace vantrel {

const std::optional<GrammarMatch>& LastMatch::of(std::string_view typed, bool atStart) {
    if (m_valid && atStart == m_atStart && typed == m_typed) return m_match;
    // The old match refers to the old text: it goes before the text changes.
    m_match.reset();
    m_typed.assign(typed);
    m_classic = timestamp_text::classicFromSmpte(typed);
    m_atStart = atStart;
    const GrammarMatcher& matcher = grammarMatcher(Flavour::PT);
    // A match that must start at 0 is found by trying only there.
    m_match = atStart ? matcher.matchAtStart(m_classic) : matcher.search(m_classic);
    m_valid = true;
    return m_match;
}

}  // namespace vantrel
