#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Grammar.h"
#include "Regex.h"

namespace vantrel::matcher_tests {

/// One step of a capture walk: entering or leaving a node, with everything a Capture carries. The
/// views refer to the searched text and to the names kept by the matcher, as Capture's do.
struct CaptureEvent {
    bool entering = true;
    std::string_view groupName;
    std::string_view text;
    int level = 0;
    TextRange range;
    friend bool operator==(const CaptureEvent&, const CaptureEvent&) = default;
};

/// The capture walk of a match, Oniguruma's or the grammar matcher's, as a list of events.
class CaptureWalk : public CaptureVisitor {
public:
    void visitAtFirstCapture(const Capture& capture) override { record(true, capture); }
    void visitAtLastCapture(const Capture& capture) override { record(false, capture); }

    const std::vector<CaptureEvent>& events() const { return m_events; }

private:
    void record(bool entering, const Capture& capture);

    std::vector<CaptureEvent> m_events;
};

/// Runs one text through the grammar matcher and through Oniguruma (the Regex of the same grammar
/// text) and compares the results: whether there is a match, its range, and the whole capture
/// walk. Oniguruma's answer does not count when its effort bound cut the search short.
///
/// The grammar matcher is checked in three set-ups: as the engine uses it (backtracking first,
/// polynomial method when that takes too long), with the polynomial method alone, and with a
/// backtracking budget so small that the hand-over happens in the middle of nearly every search.
class OnigurumaComparison {
public:
    enum class Mode { Search, MatchAtStart };
    enum class Outcome { NoMatchInEither, SameMatch, ReferenceGaveUp, Different };

    OnigurumaComparison();
    ~OnigurumaComparison();

    Outcome compare(std::string_view text, Flavour flavour, Mode mode);

    /// Whether the last SameMatch covered the whole text.
    bool matchedWholeText() const { return m_matchedWholeText; }
    /// What differed in the last comparison whose outcome was Different, for the failure report.
    const std::string& difference() const { return m_difference; }

private:
    struct SetUp;

    std::vector<SetUp> m_setUps;
    bool m_matchedWholeText = false;
    std::string m_difference;
};

/// The text with its bytes escaped where they are not printable ASCII, for reports.
std::string escaped(std::string_view text);

}  // namespace vantrel::matcher_tests
