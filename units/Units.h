#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Calc.h"

// The units post-production counts in besides timecode: feet+frames of film, audio samples, real
// time, and the two timeline files count in, rational seconds and Premiere ticks. Plain functions
// of a frame count, shared by the window and vantrel-calc. They take each rate at its exact
// fraction (24000/1001 for 23.976), whatever the PT reading uses.
namespace vantrel::units {

/// A film gauge for feet+frames: the perforations of a foot and of a frame. Where a foot holds no
/// whole number of frames (35 mm 3-perf, 65 mm 5-perf), a frame counts in the foot it starts in.
struct Gauge {
    std::string_view name;     // as vantrel-calc and the preferences spell it: "35mm-4perf"
    std::string_view caption;  // as the menu shows it: "35 mm 4-perf"
    int perfsPerFoot;
    int perfsPerFrame;
    bool writesPerfOffset;
};

inline constexpr std::array<Gauge, 5> kGauges{{
    {"35mm-4perf", "35 mm 4-perf", 64, 4, false},
    {"35mm-3perf", "35 mm 3-perf", 64, 3, true},
    {"35mm-2perf", "35 mm 2-perf", 64, 2, false},
    {"16mm", "16 mm", 40, 1, false},
    {"65mm-5perf", "65 mm 5-perf", 64, 5, false},
}};

inline constexpr std::array<int, 3> kSampleRates{44100, 48000, 96000};

/// The gauge of that name, or nullptr.
const Gauge* gaugeNamed(std::string_view name);

/// What the unit displays depend on besides the frame count and the rate.
struct UnitChoice {
    const Gauge* gauge = &kGauges[0];
    int sampleRate = 48000;
};

/// "5400+00": feet and frames of a frame count, rounded to a whole frame, with a sign when
/// negative; 35 mm 3-perf adds the foot's place in its 21/21/22-frame cycle ("85+14.1").
/// "NaN" for NaN, "∞" or "-∞" beyond 9,999,999 feet.
std::string feetAndFrames(double frames, const Gauge& gauge);

/// The number of audio samples from frame 0 to the frame count at the code's exact rate, rounded
/// to the nearest sample: 8008 for five frames at 29.97 and 48 kHz. "∞" or "-∞" beyond
/// 999,999,999,999 samples.
std::string samples(double frames, int rateCode, int sampleRate);

/// "01:00:03.600": the real time of a frame count at the code's exact rate, to the millisecond,
/// hours not wrapped. "∞" or "-∞" from 10,000 hours on.
std::string realTime(double frames, int rateCode);

/// Premiere Pro's ticks a second, in which its XML and project files count time.
inline constexpr std::int64_t kTicksPerSecond = 254016000000;

/// "1001/24000s": the time of a frame count at the code's exact rate as FCPXML writes it, in
/// seconds as a fraction in lowest terms, whole seconds without a denominator ("3600s"), with a
/// sign when negative; rounded to a whole frame first. "∞" or "-∞" beyond 10^15 frames.
std::string rationalSeconds(double frames, int rateCode);

/// The Premiere ticks of a frame count at the code's exact rate: 10,584,000,000 a frame at 24,
/// 10,594,584,000 at 23.976. "∞" or "-∞" beyond 10^18 ticks.
std::string premiereTicks(double frames, int rateCode);

/// Whether the display state is one of the units': feet+frames, samples, real time, rational
/// seconds or ticks.
bool isUnitDisplay(int displayState);

/// The mark a unit's result carries in the log, as it is typed: "ft", "smp", "rt" or "tk"; empty
/// for any other display state, and for rational seconds, whose text ends in its "s".
std::string_view unitMark(int displayState);

/// What a unit's figures depend on, as the log writes it after the unit: the gauge of feet+frames
/// ("35mm-4perf") and the sample rate of samples ("48kHz"); empty for any other display state.
std::string unitChoiceText(int displayState, const UnitChoice& choice);

/// The text of a unit display state (feet+frames, samples, real time, rational seconds, ticks), or
/// nothing for any other.
std::optional<std::string> unitText(int displayState, double frames, int rateCode,
                                    const UnitChoice& choice);

/// One evaluation of the typed expression and its unit literals (UnitReading), eager or lazy, in
/// the display state: the engine's own text for its states, and for the units' the unit's text of
/// the exact frame count, behind the engine's number reading, which decides whether there is a
/// result and keeps the cached one.
std::optional<std::string> evaluated(Calc& calc, std::string_view typed, Flavour flavour, bool lazy,
                                     int displayState, const UnitChoice& choice);

}  // namespace vantrel::units
