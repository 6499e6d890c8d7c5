#pragma once

#include <string>

namespace vantrel::bench {

/// An edit decision list of `events` events at 29.97 drop frame as editing systems write it
/// (CRLF, a clip-name comment each), on a video track with a gap every 50 events and a music track
/// of one event in 100 that overlaps now and then: what a long cut gives the reader and the window.
std::string longCut(int events);

/// The same kind of cut as an FCPXML 1.10 project at 23.976 from 01:00:00:00: clips on the spine,
/// a connected title every 20 clips on lane 1 and a music clip every 100 on lane -1.
std::string longFcpxml(int clips);

/// The same kind of cut as a Premiere xmeml sequence at 29.97 drop frame: V1, V2 and a stereo A1
/// written as two tracks.
std::string longXmeml(int clips);

}  // namespace vantrel::bench
