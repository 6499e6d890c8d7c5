#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Cut.h"

// What an assistant editor asks of a cut, worked out once on the model whatever file it came from:
// each track's events in record order, their sum and span, the gaps and overlaps between them, and
// the running time.
namespace vantrel::timeline {

/// Where one event of a track ends and the next begins: a gap when `end` is after `start`, an
/// overlap when it is before.
struct Seam {
    std::size_t afterEvent = 0;  // indexes into Cut::events
    std::size_t beforeEvent = 0;
    double start = 0;  // the record out of the event before
    double end = 0;    // the record in of the event after

    bool isGap() const { return end > start; }
    double length() const { return end > start ? end - start : start - end; }
};

struct Track {
    std::string name;
    std::vector<std::size_t> events;  // indexes into Cut::events, by record in
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

/// The running time runs from the first record in to the last record out over every track.
Summary summarise(const Cut& cut);

}  // namespace vantrel::timeline
