#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "RateChoice.h"

// The one model of a cut that every reader fills and everything else reads: the events of each
// track placed on the record side, as an assistant editor reads a timeline. Frame counts are real
// frames (never drop-frame labels) at the cut's rate; an event runs from its record in to its
// record out, the out exclusive. Texts are UTF-8, whatever the file's own encoding was.
namespace vantrel::timeline {

/// One event of the cut; the two lines of a dissolve make one event.
struct Event {
    std::size_t line = 0;  // where the event starts in the file, from 1
    std::string number;
    std::string reel;
    std::string track;
    std::string transition;  // as written: "C", "D 030", "W001 030"
    double recordIn = 0;
    double recordOut = 0;
    // The source side, at the source's own rate (sourceRateCode); nothing where the file's
    // source label does not exist at that rate.
    std::optional<double> sourceIn;
    std::optional<double> sourceOut;
    int sourceRateCode = 0;
    std::optional<double> speed;  // frames a second of a motion effect
    std::string clipName;
    std::vector<std::string> notes;  // the comment and other lines that follow the event

    double duration() const { return recordOut - recordIn; }
};

/// A line the reader had something to say about: a warning about a line whose event, if any,
/// was kept; an event that could not be read at all; or a file that is no cut at all.
enum class ProblemKind { Warning, LostEvent, Unreadable };

struct Problem {
    std::size_t line = 0;  // from 1; 0 for the file as a whole
    std::string text;
    std::string message;
    ProblemKind kind = ProblemKind::Warning;
};

struct Cut {
    std::string format = "EDL";  // the kind of file it was read from: EDL, FCPXML, xmeml, OTIO, ALE
    bool clipList = false;       // clips to sum, placed end to end, rather than a cut
    std::string title;
    RateChoice rate;
    std::vector<Event> events;
    std::vector<std::string> notes;  // lines before the first event that say nothing we read
    std::vector<Problem> problems;   // the first kMaxProblems of them
    std::size_t problemCount = 0;
    std::size_t lostEvents = 0;

    int rateCode() const { return rate.code; }
};

inline constexpr std::size_t kMaxProblems = 1000;

/// The text of a problem's line as it is kept: at most 200 bytes, never a UTF-8 character cut in
/// two.
std::string problemLine(std::string_view line);

/// Adds a problem, counted always and kept while there is room.
void addProblem(Cut& cut, Problem problem);

/// Turns away the events no cut can hold, each as a lost event: one whose place is not a number
/// or lies beyond 10^12 frames (a hostile or broken file), one that ends before it starts.
void dropUnsoundEvents(Cut& cut);

/// Warns that a file holds several cuts of a kind ("projects") and that the first is read,
/// naming the others.
void warnOfOthersNotRead(Cut& cut, std::string_view kind, const std::vector<std::string>& names);

/// Marks a file that cannot be read as a cut at all: no events, and why.
void markUnreadable(Cut& cut, std::string message);

/// A cut of no events from a file of the format that cannot be read, and why; its rate is the one
/// asked for, or 24.
Cut unreadableCut(std::string format, std::string message, int requestedCode);

/// "001", "002" … "1000": event numbers as EDLs write them, for the files that have none.
std::string eventNumber(std::size_t index);

/// "D 012": the transition column of an event that a dissolve of that many frames brings in.
std::string dissolve(std::int64_t frames);

/// Places the events of a clip list end to end from frame 0, in their order, so that the running
/// time is the sum of their durations.
void placeEndToEnd(Cut& cut);

}  // namespace vantrel::timeline
