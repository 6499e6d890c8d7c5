#pragma once

#include <string>

namespace vantrel::bench {

/// An edit decision list of `events` events at 29.97 drop frame as editing systems write it
/// (CRLF, a clip-name comment each), on a video track with a gap every 50 events and a music track
/// of one event in 100 that overlaps now and then: what a long cut gives the reader and the window.
std::string longCut(int events);

}  // namespace vantrel::bench
