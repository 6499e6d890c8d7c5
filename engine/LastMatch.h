#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "GrammarMatch.h"

namespace vantrel {

/// The grammar's match of the text read last, so that one keystroke (the colouring and the lazy
/// evaluation of both readings) and one finished expression (the eager evaluation of both) match
/// the text once each. The two grammar copies accept the same texts and differ only in the names
/// of the two timestamp groups, so the PT copy's match serves both readings.
class LastMatch {
public:
    /// The match of the text, read with SMPTE timestamps in classic form: the first one anywhere,
    /// or only one that starts at the beginning (`atStart`). Valid until the next call.
    const std::optional<GrammarMatch>& of(std::string_view typed, bool atStart);

    /// The text the match refers to: the typed text with SMPTE separators made classic.
    std::string_view classicText() const { return m_classic; }

private:
    std::string m_typed;
    std::string m_classic;
    bool m_atStart = false;
    bool m_valid = false;
    std::optional<GrammarMatch> m_match;
};

}  // namespace vantrel
