#pragma once

namespace vantrel {

// Frame-rate codes: the value of Calc::fps() and the tag of every rate menu item.
inline constexpr int DisplayState24fps = 0;
inline constexpr int DisplayState25fps = 1;
inline constexpr int DisplayState30fps = 2;
inline constexpr int DisplayState23drop = 3;
inline constexpr int DisplayState29drop = 4;
inline constexpr int DisplayState23nondrop = 5;
inline constexpr int DisplayState29nondrop = 6;
// The rates of HD and UHD work, after the classic seven.
inline constexpr int DisplayState48fps = 7;
inline constexpr int DisplayState50fps = 8;
inline constexpr int DisplayState60fps = 9;
inline constexpr int DisplayState59drop = 10;
inline constexpr int DisplayState47nondrop = 11;
inline constexpr int DisplayState59nondrop = 12;
// The high frame rates of SMPTE ST 12-3, for projection, slow motion and 100/120 Hz deliverables.
inline constexpr int DisplayState72fps = 13;
inline constexpr int DisplayState96fps = 14;
inline constexpr int DisplayState95nondrop = 15;
inline constexpr int DisplayState100fps = 16;
inline constexpr int DisplayState119nondrop = 17;
inline constexpr int DisplayState119drop = 18;
inline constexpr int DisplayState120fps = 19;

// Display states: how results are shown. They share 0 and 1 with the rate codes but are a
// separate set, passed as the displayMode of an evaluation and never stored as a rate.
inline constexpr int DisplayStateTime = 0;
inline constexpr int DisplayStateNumber = 1;
inline constexpr int DisplayStateFilmLength = -1;
inline constexpr int DisplayStateDiskSpace = -2;
// The units of film, sound and the clock, shown beside a timecode like the time and the number.
inline constexpr int DisplayStateFeetFrames = 2;
inline constexpr int DisplayStateSamples = 3;
inline constexpr int DisplayStateRealTime = 4;
// The units timeline files count time in: seconds as a fraction (FCPXML) and Premiere's ticks.
inline constexpr int DisplayStateRational = 5;
inline constexpr int DisplayStateTicks = 6;

}  // namespace vantrel
