#include "RateChoice.h"

#include <array>

#include "FrameRate.h"
#include "NumberText.h"

namespace vantrel::timeline {

namespace {

bool isDropFrame(const FrameRate& rate) {
    return rate.dropFrame != DropFrame::None;
}

// The nominal rates that frame labels count in, smallest first: a file belongs to the smallest
// one above its largest label.
constexpr std::array<int, 10> kNominalRates{24, 25, 30, 48, 50, 60, 72, 96, 100, 120};

// The code a family is read at when the file alone decides: its drop-frame code when the file
// counts drop frame, else its whole rate; -1 when the family has no such code. Drop frame at 24
// labels a second is a calculator's rate, not an editing system's: a drop-frame cut with low
// labels is 29.97.
int familyCode(int nominal, bool dropFrame) {
    if (dropFrame && nominal == 24) return -1;
    for (const FrameRate& rate : kFrameRates) {
        if (rate.nominal != nominal || isDropFrame(rate) != dropFrame) continue;
        if (dropFrame || rate.exact.denominator == 1) return rate.code;
    }
    return -1;
}

// What decided the counting, for the reason: "its FCM line", "its ';' separators" or nothing.
std::string countingEvidence(const RateEvidence& evidence) {
    if (evidence.fcm != FcmCounting::None) return "its FCM line";
    if (evidence.fcm == FcmCounting::None && evidence.semicolons) return "its ';' separators";
    return {};
}

// Drop frame when the FCM line says so, or, without one, when the timecodes are written with ';'.
bool wantsDropFrame(const RateEvidence& evidence) {
    return evidence.fcm == FcmCounting::Drop ||
           (evidence.fcm == FcmCounting::None && evidence.semicolons);
}

// Whether the file says how it counts: an FCM line, or ';' without one.
bool statesCounting(const RateEvidence& evidence) {
    return !countingEvidence(evidence).empty();
}

RateChoice fromRequest(const RateEvidence& evidence, const RateRequest& request) {
    const bool drop = wantsDropFrame(evidence);
    const int code = statesCounting(evidence) ? twinCounting(request.code, drop) : request.code;
    std::string reason =
        request.origin == RateOrigin::GivenRate ? "the rate given" : "the current rate";
    if (code != request.code) {
        reason +=
            std::string(drop ? ", drop frame" : ", non-drop") + " by " + countingEvidence(evidence);
    }
    return {code, reason, {}, false, evidence.largestLabel};
}

RateChoice fromFile(const RateEvidence& evidence, const RateRequest& request) {
    const bool drop = wantsDropFrame(evidence);
    RateChoice choice{-1, {}, {}, false, evidence.largestLabel};
    for (const int nominal : kNominalRates) {
        if (nominal > evidence.largestLabel && (choice.code = familyCode(nominal, drop)) >= 0) {
            break;
        }
    }
    const std::string evidenceText = countingEvidence(evidence);
    choice.basis =
        "from " + (evidenceText.empty() ? "its " : evidenceText + " and ") + "frame labels";
    if (choice.code < 0) {
        // Labels of 120 and more exist at no rate: the highest is as near as a reading gets, and
        // each event says what it cannot hold.
        choice.code = familyCode(kNominalRates.back(), drop);
        choice.basis += ", which no rate holds";
    }
    if (request.origin == RateOrigin::File) return choice;
    const FrameRate& requested = *frameRateForCode(request.code);
    choice.givenRateRejected = request.origin == RateOrigin::GivenRate;
    choice.conflict =
        "the " +
        std::string(request.origin == RateOrigin::GivenRate ? "rate given " : "current rate ") +
        rateName(request.code) +
        (requested.nominal > evidence.largestLabel ? " has no drop frame" : " cannot hold them");
    return choice;
}

}  // namespace

int twinCounting(int code, bool dropFrame) {
    const FrameRate* current = frameRateForCode(code);
    if (!current || isDropFrame(*current) == dropFrame) return code;
    for (const FrameRate& rate : kFrameRates) {
        if (rate.nominal == current->nominal && rate.exact.denominator == 1001 &&
            isDropFrame(rate) == dropFrame) {
            return rate.code;
        }
    }
    return code;
}

RateChoice chooseRate(const RateEvidence& evidence, const RateRequest& request) {
    const FrameRate* requested = frameRateForCode(request.code);
    if (request.origin == RateOrigin::File || !requested) {
        return fromFile(evidence, {RateOrigin::File, request.code});
    }
    const bool holdsLabels = requested->nominal > evidence.largestLabel;
    // A given rate is the user's word on the counting too; a current rate is only what the window
    // happened to be set to, and gives way to a file that counts drop frame where it cannot.
    const bool countsAsFile = request.origin == RateOrigin::GivenRate ||
                              !wantsDropFrame(evidence) || isDropFrame(*requested) ||
                              familyCode(requested->nominal, true) >= 0;
    if (holdsLabels && countsAsFile) return fromRequest(evidence, request);
    return fromFile(evidence, request);
}

RateChoice statedRate(int code, const RateRequest& request) {
    RateChoice choice{code, "stated by the file", {}, false, -1};
    if (request.origin != RateOrigin::File && request.code != code &&
        frameRateForCode(request.code)) {
        choice.conflict =
            std::string(request.origin == RateOrigin::GivenRate ? "the rate given "
                                                                : "the current rate ") +
            rateName(request.code) + " differs";
    }
    return choice;
}

std::optional<int> codeOfExactRate(std::int64_t numerator, std::int64_t denominator,
                                   bool dropFrame) {
    // Far beyond any rate: the crosswise products below must stay within 64 bits.
    constexpr std::int64_t kLargest = 1'000'000'000;
    if (numerator <= 0 || denominator <= 0 || numerator > kLargest || denominator > kLargest) {
        return std::nullopt;
    }
    std::optional<int> found;
    for (const FrameRate& rate : kFrameRates) {
        // Both fractions in lowest terms compare crosswise.
        if (rate.exact.numerator * denominator != numerator * rate.exact.denominator) continue;
        if (!found || isDropFrame(rate) == dropFrame) found = rate.code;
        if (isDropFrame(rate) == dropFrame) break;
    }
    return found;
}

std::string rateName(int code) {
    const FrameRate* rate = frameRateForCode(code);
    if (!rate) return "?";
    std::string name = number_text::fixed(rate->exact.value(), 3);
    name.erase(name.find_last_not_of('0') + 1);
    if (name.ends_with('.')) name.pop_back();
    return isDropFrame(*rate) ? name + " DF" : name;
}

}  // namespace vantrel::timeline
