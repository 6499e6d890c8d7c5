#pragma once

#include <string_view>

#include "Cut.h"
#include "RateChoice.h"

namespace vantrel::timeline {

/// Reads a sequence in the XML interchange format of Final Cut Pro 7, which Premiere Pro and
/// Resolve write too (xmeml): its rate (timebase and NTSC flag, drop frame from its timecode), its
/// start timecode, its video tracks V1, V2 … and audio tracks A1, A2 … (the second channel of a
/// stereo track is the same track), clip items and generators as events, the cut inside a
/// transition (a start or end of -1) at the transition's alignment point. The stored durations of
/// the sequence and its clips are not trusted: they are often stale or the media's.
Cut readXmeml(std::string_view bytes, const RateRequest& request);

}  // namespace vantrel::timeline
