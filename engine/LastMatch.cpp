#include "LastMatch.h"

#include "Grammar.h"
#include "GrammarMatcher.h"
#include "TimestampText.h"

namespace vantrel {

// A search tries the beginning first, so a match it finds there is also the one a whole-text
// reading wants; the caller checks that it covers the whole text. So Return after typing reuses the
// last keystroke's search, and only a text not searched yet, with no match at its beginning, is
// searched.
const std::optional<GrammarMatch>& LastMatch::of(std::string_view typed, bool atStart,
                                                 FrameField field) {
    const GrammarMatcher& matcher = grammarMatcher(Flavour::PT, field);
    if (!m_valid || typed != m_typed || field != m_field) {
        // The old match refers to the old text: it goes before the text changes.
        m_match.reset();
        m_typed.assign(typed);
        m_field = field;
        m_classic = timestamp_text::classicFromSmpte(typed, field);
        m_valid = true;
        m_match = atStart ? matcher.matchAtStart(m_classic) : matcher.search(m_classic);
        m_searched = !atStart;
        return m_match;
    }
    if (atStart || m_searched || m_match) return m_match;
    m_match = matcher.search(m_classic);
    m_searched = true;
    return m_match;
}

}  // namespace vantrel
