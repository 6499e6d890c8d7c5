#include "CutSummary.h"

#include <algorithm>
#include <unordered_map>

namespace vantrel::timeline {

namespace {

void sumUp(Track& track, const std::vector<Event>& events) {
    std::stable_sort(track.events.begin(), track.events.end(), [&](std::size_t a, std::size_t b) {
        return events[a].recordIn < events[b].recordIn;
    });
    track.recordIn = events[track.events.front()].recordIn;
    track.recordOut = events[track.events.front()].recordOut;
    for (std::size_t i = 0; i < track.events.size(); ++i) {
        const Event& event = events[track.events[i]];
        track.durations += event.duration();
        track.recordOut = std::max(track.recordOut, event.recordOut);
        if (i == 0) continue;
        const Event& before = events[track.events[i - 1]];
        if (event.recordIn != before.recordOut) {
            track.seams.push_back(
                {track.events[i - 1], track.events[i], before.recordOut, event.recordIn});
        }
    }
}

}  // namespace

Summary summarise(const Cut& cut) {
    Summary summary;
    std::unordered_map<std::string, std::size_t> trackOfName;
    for (std::size_t i = 0; i < cut.events.size(); ++i) {
        const auto [found, added] =
            trackOfName.try_emplace(cut.events[i].track, summary.tracks.size());
        if (added) summary.tracks.emplace_back().name = cut.events[i].track;
        summary.tracks[found->second].events.push_back(i);
    }
    for (Track& track : summary.tracks) sumUp(track, cut.events);
    if (!summary.tracks.empty()) {
        summary.recordIn = summary.tracks.front().recordIn;
        summary.recordOut = summary.tracks.front().recordOut;
        for (const Track& track : summary.tracks) {
            summary.recordIn = std::min(summary.recordIn, track.recordIn);
            summary.recordOut = std::max(summary.recordOut, track.recordOut);
        }
    }
    return summary;
}

}  // namespace vantrel::timeline
