// Calc: reading the timestamps that the grammar captures into real frame counts.
//
// The two readings differ only for a timestamp with a rate suffix. PT treats it as a span of real
// time, measured at the suffix's real rate and counted in frames of the current code, so
// 00:00:01.00|24 at 25 fps reads 25. PF treats it as a count of frames at the suffix's own nominal
// rate, so the same text reads 24. Neither reading limits its result; the evaluator does that.

#include <cmath>

#include "Calc.h"
#include "FrameRate.h"
#include "NumberText.h"
#include "TimestampText.h"

namespace vantrel {

namespace {

// What a full form or frame count with rate consists of, once its spaces are gone.
struct TimestampParts {
    std::vector<double> runs;
    bool hasSuffix = false;
    bool hasFrames = false;
    std::string suffix;
};

TimestampParts partsOf(std::string_view timestamp) {
    const std::string compact = timestamp_text::withoutSpaces(timestamp);
    TimestampParts parts;
    const auto runs = timestamp_text::digitRuns(compact);
    parts.runs.reserve(runs.size());
    for (const auto run : runs) {
        parts.runs.push_back(number_text::digitRun(run));
    }
    const auto bar = compact.find('|');
    parts.hasSuffix = bar != std::string::npos;
    parts.hasFrames = compact.find('.') != std::string::npos;
    if (parts.hasSuffix) {
        // A capture may end in tabs or line breaks after the suffix; they are not part of it.
        parts.suffix = compact.substr(bar + 1);
        parts.suffix.erase(parts.suffix.find_last_not_of(" \t\n\v\f\r") + 1);
    }
    return parts;
}

// The first `count` runs weighted from the right by 1, 60, 3600 and so on.
double sexagesimal(const std::vector<double>& runs, std::size_t count) {
    double sum = 0.0;
    double weight = 1.0;
    for (std::size_t i = count; i > 0; --i) {
        sum += weight * runs[i - 1];
        weight *= 60.0;
    }
    return sum;
}

// A timestamp without suffix, counted at the nominal rate of the current code.
double unsuffixedCount(const TimestampParts& parts, double nominal) {
    const std::size_t k = parts.runs.size();
    if (!parts.hasFrames) return nominal * sexagesimal(parts.runs, k);
    if (k == 0) return 0.0;
    return nominal * sexagesimal(parts.runs, k - 1) + parts.runs[k - 1];
}

// The frame label of a suffixed timestamp at its suffix's nominal rate: S × nominal + F, where the
// last run holds the suffix digits and is skipped.
double suffixedLabel(const TimestampParts& parts, const FrameRate& rate) {
    const std::size_t k = parts.runs.size();
    const double frames = k >= 2 ? parts.runs[k - 2] : 0.0;
    const double seconds = k >= 2 ? sexagesimal(parts.runs, k - 2) : 0.0;
    return seconds * rate.nominal + frames;
}

}  // namespace

double Calc::realRateOf(const FrameRate& rate) const {
    return m_exactRates ? rate.exact.value() : rate.realRate;
}

// The current code's frames per second of real time; a drop-frame code counts labels at its
// nominal rate and converts them afterwards.
double Calc::currentRealRate() const {
    const FrameRate* rate = frameRateForCode(m_fps);
    if (!m_exactRates || !rate || rate->dropFrame != DropFrame::None) return m_framerate;
    return rate->exact.value();
}

double Calc::framecountPTFromString(std::string_view timestamp) const {
    const TimestampParts parts = partsOf(timestamp);
    const double nominal = std::floor(m_framerate + 0.5);
    double value = 0.0;
    if (!parts.hasSuffix) {
        value = unsuffixedCount(parts, nominal);
    } else if (const FrameRate* rate = frameRateForSuffix(parts.suffix)) {
        const double realFrames = Calc::realFCfromDropFC(suffixedLabel(parts, *rate), rate->code);
        value = (realFrames * currentRealRate()) / realRateOf(*rate);
    }
    // At a drop-frame code the time-based value is itself a label count of that code.
    return realFCfromDropFC(value, m_fps);
}

double Calc::framecountPFFromString(std::string_view timestamp) const {
    const TimestampParts parts = partsOf(timestamp);
    int code = m_fps;
    double value = 0.0;
    if (!parts.hasSuffix) {
        value = unsuffixedCount(parts, std::floor(m_framerate + 0.5));
    } else if (const FrameRate* rate = frameRateForSuffix(parts.suffix)) {
        value = suffixedLabel(parts, *rate);
        code = rate->code;
    }
    return realFCfromDropFC(value, code);
}

double Calc::framecountPTFromShortString(std::string_view timestamp) const {
    return framecountPTFromString(timestamp_text::shortFormAsFullForm(timestamp, 9));
}

double Calc::framecountPFFromShortString(std::string_view timestamp) const {
    return framecountPFFromString(timestamp_text::shortFormAsFullForm(timestamp, 9));
}

}  // namespace vantrel
