// libFuzzer entry point: every input becomes one calculator situation, put through everything the
// window does with a text (colouring, lazy and eager evaluation in both readings, beautifying) and
// checked against what must hold whatever the text. A violation is written to stderr and stops
// the process with a trap, which libFuzzer records as a crash together with the input. Each input
// gets a fresh Calc, so a crash reproduces from its input alone.
//
// The first byte picks the frame-rate code (byte % 20) and the display mode ((byte / 20) % 4), so
// the selector bytes 0 to 79 reach every pairing; the other bytes are the text.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>
#include <regex>
#include <string>
#include <string_view>

#include "Calc.h"
#include "FrameRate.h"

namespace {

using namespace vantrel;

struct Reading {
    const char* name;
    std::optional<double> (Calc::*eagerFrames)(std::string_view);
    std::optional<double> (Calc::*lazyFrames)(std::string_view);
    std::optional<std::string> (Calc::*eagerText)(std::string_view, int);
    std::optional<std::string> (Calc::*lazyText)(std::string_view, int);
    float (Calc::*cachedResult)() const;
};

constexpr std::array<Reading, 2> kReadings{{
    {"PT", &Calc::evalPTToFrames, &Calc::lazyevalPTToFrames, &Calc::evalPT, &Calc::lazyevalPT,
     &Calc::cachedResultPT},
    {"PF", &Calc::evalPFToFrames, &Calc::lazyevalPFToFrames, &Calc::evalPF, &Calc::lazyevalPF,
     &Calc::cachedResultPF},
}};

constexpr std::array<int, 4> kDisplayModes{DisplayStateTime, DisplayStateNumber,
                                           DisplayStateFilmLength, DisplayStateDiskSpace};

std::string_view g_expression;
const char* g_stage = "";

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "Vantrel invariant violated (%s): %s\n", g_stage, what);
    __builtin_trap();  // libFuzzer keeps the input that led here
}

// Two evaluations of one match agree to the bit; NaN, which equals nothing, agrees with NaN.
template <typename Floating>
bool sameValue(Floating a, Floating b) {
    return std::isnan(a) ? std::isnan(b) : std::memcmp(&a, &b, sizeof a) == 0;
}

// The cached result is the frame count in single precision, the infinity of its sign beyond it.
float inSinglePrecision(double frames) {
    const bool beyond = std::abs(frames) > std::numeric_limits<float>::max();  // NaN is not
    return beyond ? (frames > 0 ? HUGE_VALF : -HUGE_VALF) : static_cast<float>(frames);
}

// A value or one of the agreed placeholders, in the shape of the display mode.
bool fitsDisplayMode(const std::string& text, int displayMode) {
    static const std::regex number("-?\\d+"), film("-?\\d+\\.\\d\\d m"),
        timestamp("-?\\d{2,}:\\d\\d:\\d\\d\\.\\d\\d\\d?");
    const std::regex& shape = displayMode == DisplayStateNumber       ? number
                              : displayMode == DisplayStateFilmLength ? film
                                                                      : timestamp;
    return text == "NaN" || text == "∞" || text == "-∞" || std::regex_match(text, shape);
}

std::optional<std::string> colouringsBlackSpan(Calc& calc) {
    g_stage = "colouring";
    const auto spans = calc.colorizeLazyEvaluatedString(g_expression);
    std::string joined;
    std::optional<std::string> black;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        require(!spans[i].text.empty(), "no span is empty");
        require(i == 0 || spans[i].colour != spans[i - 1].colour, "neighbouring spans differ");
        joined += spans[i].text;
        if (spans[i].colour != SpanColour::Black) continue;
        require(!black, "at most one span is black");
        black = spans[i].text;
    }
    require(joined == g_expression, "the spans put together give the input");
    return black;
}

void checkReading(Calc& calc, const Reading& reading, int displayMode,
                  const std::optional<std::string>& black) {
    g_stage = reading.name;
    const auto evaluated = [&](auto function, auto... mode) {
        auto result = (calc.*function)(g_expression, mode...);
        require(!calc.pop().has_value(), "the value stack is empty after an evaluation");
        return result;
    };
    const auto eager = evaluated(reading.eagerFrames);
    const auto lazy = evaluated(reading.lazyFrames);
    require(lazy.has_value() == black.has_value(), "a lazy result exactly when a black span");
    if (eager) {
        require(lazy && sameValue(*eager, *lazy), "an eager result is also the lazy result");
        require(black == g_expression, "an eager result colours the whole text black");
    }
    for (const auto& [text, frames] : {std::pair{evaluated(reading.eagerText, displayMode), eager},
                                       std::pair{evaluated(reading.lazyText, displayMode), lazy}}) {
        require(text.has_value() == frames.has_value(), "a result text exactly when a frame count");
        if (!text) continue;
        require(fitsDisplayMode(*text, displayMode), "the text has the shape of its display mode");
        require(sameValue((calc.*reading.cachedResult)(), inSinglePrecision(*frames)),
                "the cached result is the frame count in single precision");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::size_t selector = size > 0 ? data[0] : 0;
    // The engine reads the text byte by byte; char and uint8_t have the same size and alignment.
    g_expression = size > 0 ? std::string_view(reinterpret_cast<const char*>(data + 1), size - 1)
                            : std::string_view();
    const int displayMode = kDisplayModes[(selector / kFrameRates.size()) % kDisplayModes.size()];
    Calc calc;
    calc.setFps(kFrameRates[selector % kFrameRates.size()].code);
    const auto black = colouringsBlackSpan(calc);
    for (const Reading& reading : kReadings) checkReading(calc, reading, displayMode, black);
    g_stage = "beautify";
    require(calc.beautifyExpression(g_expression).find(' ') == std::string::npos,
            "the beautified text has no spaces");
    return 0;
}
