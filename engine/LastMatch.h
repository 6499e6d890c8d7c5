#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Grammar.h"
#include "GrammarMatch.h"

namespace vantrel {

/// The grammar's match of the text read last, so that one keystroke (the colouring and the lazy
/// evaluation of both readings) and one finished expression (the eager evaluation of both) match
/// the text once each. The two grammar copies accept the same texts and differ only in the names
/// of the two timestamp groups, so the PT copy's match serves both readings.
class LastMatch {
public:
    /// The match of the text, read with SMPTE timestamps in classic form: the first one anywhere,
    /// or, with `atStart`, the one that starts at the beginning, which may instead come back as
    /// the first one anywhere when that is already known (it starts at the beginning whenever one
    /// does). The frame field is that of the current rate. Valid until the next call.
    const std::optional<GrammarMatch>& of(std::string_view typed, bool atStart, FrameField field);

private:
    std::string m_typed;
    std::string m_classic;
    FrameField m_field = FrameField::TwoDigits;
    bool m_valid = false;
    // Every start position was tried, not only the beginning.
    bool m_searched = false;
    std::optional<GrammarMatch> m_match;
};

}  // namespace vantrel
