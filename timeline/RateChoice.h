#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "DisplayState.h"

// Which rate a cut is read at. An EDL does not state its rate; it gives hints: its FCM line,
// semicolons before the frames, and above all its frame labels, which never reach the rate's
// nominal frames a second. The rate the user has (the window's current rate, or one given on the
// command line) counts as long as the file agrees with it; when it cannot hold the file's labels,
// the file's own family counts, and the choice says why.
namespace vantrel::timeline {

/// Where the rate a reader starts from comes from.
enum class RateOrigin { File, CurrentRate, GivenRate };

/// The rate asked for before reading: none (the file alone decides), the window's current rate,
/// or a rate the user gave explicitly.
struct RateRequest {
    RateOrigin origin = RateOrigin::File;
    int code = DisplayState24fps;
};

/// What the file's FCM line before its first event says.
enum class FcmCounting { None, Drop, NonDrop, Unknown };

/// What a file says about its rate.
struct RateEvidence {
    FcmCounting fcm = FcmCounting::None;
    bool semicolons = false;  // some record timecode is written with ';'
    int largestLabel = -1;    // the largest frame label of the record timecodes; -1 for none
};

struct RateChoice {
    int code = DisplayState24fps;
    /// What decided: "the current rate", "from its FCM line and frame labels".
    std::string basis;
    /// Why the rate asked for did not count, or empty: "the current rate 25 cannot hold them".
    std::string conflict;
    /// A given rate cannot hold the file's labels: `code` is then the rate they need, and the
    /// file should not be reported at the given one.
    bool givenRateRejected = false;
    int largestLabel = -1;

    /// Why, as the end of a sentence that starts "read at 29.97 DF, ": "from its FCM line and
    /// frame labels; the current rate 25 cannot hold them".
    std::string reason() const { return conflict.empty() ? basis : basis + "; " + conflict; }
};

/// The rate to read a file at, from what it says and what was asked for.
RateChoice chooseRate(const RateEvidence& evidence, const RateRequest& request);

/// The rate a file states (FCPXML, xmeml, OpenTimelineIO, ALE), which counts whatever was asked
/// for; the reason says when it differs from the rate the user has.
RateChoice statedRate(int code, const RateRequest& request);

/// The code of a rate of frames a second given exactly (30000/1001), counting drop frame when
/// asked and the rate has it; nothing for a rate Vantrel does not count in (15, 12.5).
std::optional<int> codeOfExactRate(std::int64_t numerator, std::int64_t denominator,
                                   bool dropFrame);

/// How a rate is named in sentences and headings: "29.97 DF", "23.976", "25".
std::string rateName(int code);

/// The code of the same nominal rate that counts frames with or without drop frame as asked, or
/// the code itself where the rate has no such twin (25 has no drop-frame counting).
int twinCounting(int code, bool dropFrame);

}  // namespace vantrel::timeline
