#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Calc.h"

// Edit decision lists in the CMX 3600 form editing systems export, read into events and summed
// into what an assistant editor asks of a cut: each event's duration, each track's share, the gaps
// and overlaps, the running time. Plain functions shared by the window and vantrel-calc; the
// timecodes are read into frames by the engine's drop-frame readers and written by its formatter.
namespace vantrel::edl {

/// One event of the cut; the two lines of a dissolve make one event. Frame counts are real
/// frames at the cut's rate; durations run from record in to record out, the out exclusive.
struct Event {
    std::size_t line = 0;  // where the event starts in the file, from 1
    std::string number;
    std::string reel;
    std::string track;
    std::string transition;
    double sourceIn = 0;
    double sourceOut = 0;
    double recordIn = 0;
    double recordOut = 0;
    std::optional<double> speed;  // frames a second of an M2 motion effect
    std::vector<std::string> comments;

    double duration() const { return recordOut - recordIn; }
};

/// A line that could not be read, and why; the rest of the file is read all the same.
struct Problem {
    std::size_t line = 0;
    std::string text;
    std::string message;
};

struct Cut {
    std::string title;
    int rateCode = 0;
    std::vector<Event> events;
    std::vector<Problem> problems;  // the first kMaxProblems of them
    std::size_t problemCount = 0;
};

inline constexpr std::size_t kMaxProblems = 100;

/// Reads an EDL. Its FCM line chooses between the drop-frame and the non-drop code of the current
/// rate's family (29d and 29n for 29.97); without one, or where the rate has no drop-frame twin,
/// the current code counts.
Cut read(std::string_view text, int currentCode);

/// Where one event of a track ends and the next begins: a gap when `end` is after `start`, an
/// overlap when it is before.
struct Seam {
    std::string after;
    std::string before;
    double start = 0;
    double end = 0;
};

struct Track {
    std::string name;
    std::size_t events = 0;
    double durations = 0;
    double recordIn = 0;
    double recordOut = 0;
    std::vector<Seam> seams;
};

struct Summary {
    std::vector<Track> tracks;  // in the order they first appear
    double recordIn = 0;
    double recordOut = 0;
    double runningTime() const { return recordOut - recordIn; }
};

Summary summarise(const Cut& cut);

/// The report as lines of fields: "event", "track", "gap" or "overlap", and last "total", with
/// timecodes written by the engine at the cut's rate in its notation.
std::vector<std::vector<std::string>> reportRows(const Cut& cut, const Summary& summary,
                                                 Calc& calc);

/// "line 12: not an event, a comment or a header: 'text'".
std::string problemText(const Problem& problem);

}  // namespace vantrel::edl
