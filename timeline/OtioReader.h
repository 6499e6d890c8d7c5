#pragma once

#include <string_view>

#include "Cut.h"
#include "RateChoice.h"

namespace vantrel::timeline {

/// Reads an OpenTimelineIO timeline (.otio JSON, as Resolve, Hiero and the ASWF tools write it):
/// the tracks of its stack in order (V1, V2 … for video, A1 … for audio; "Sequence" is an old name
/// of a track), clips and nested stacks as events, gaps as room, transitions as dissolves that
/// take no time; times as rational times at any rate, counted at the timeline's rate from its
/// global start time. A collection reads its first timeline, or its clips as a clip list. Bare
/// Inf, -Infinity and NaN, which Python's writer leaves in, are read as no value.
Cut readOtio(std::string_view bytes, const RateRequest& request);

}  // namespace vantrel::timeline
