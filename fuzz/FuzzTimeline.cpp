// libFuzzer entry point for the reading of a cut: every input is a file of any of the formats
// (EDL, FCPXML, xmeml, OpenTimelineIO, ALE, told apart by their content), read as the window and
// vantrel-calc read it, and everything shown of it is worked out and checked against what must hold
// whatever the bytes: no crash, no hang, events that run forwards at a real rate, text that is
// UTF-8, a report that starts with the rate and ends with the total. A violation stops the process
// with a trap, which libFuzzer records with the input.
//
// The first byte picks the request: where the rate comes from (byte % 3: the file, the current
// rate, a given rate) and which rate is asked for ((byte / 3) % 20).

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "CutReport.h"
#include "EventTable.h"
#include "FrameRate.h"
#include "TimelineReader.h"

namespace {

using namespace vantrel;
using namespace vantrel::timeline;

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "violated: %s\n", what);
    __builtin_trap();
}

bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        if (lead >= 0x80 && (lead < 0xC2 || lead > 0xF4)) return false;
        if (at + length > text.size()) return false;
        for (std::size_t i = 1; i < length; ++i) {
            if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80) return false;
        }
        at += length;
    }
    return true;
}

void checkCut(const Cut& cut) {
    require(frameRateForCode(cut.rateCode()) != nullptr, "the cut has a rate");
    require(cut.problems.size() <= kMaxProblems && cut.problems.size() <= cut.problemCount,
            "problems are counted and capped");
    require(isUtf8(cut.title), "the title is UTF-8");
    for (const Event& event : cut.events) {
        require(std::isfinite(event.recordIn) && std::isfinite(event.recordOut) &&
                    std::fabs(event.recordIn) <= 1e12 && std::fabs(event.recordOut) <= 1e12 &&
                    event.recordOut >= event.recordIn,
                "an event runs forwards at a place a cut can hold");
        require(isUtf8(event.reel) && isUtf8(event.clipName) && isUtf8(event.number),
                "names are UTF-8");
        for (const std::string& note : event.notes) require(isUtf8(note), "notes are UTF-8");
    }
    for (const Problem& problem : cut.problems) {
        require(isUtf8(problem.text) && problem.text.size() <= 200,
                "problem lines are short UTF-8");
    }
}

void checkShown(Cut cut) {
    Calc writer;
    const Summary summary = summarise(cut);
    require(summary.runningTime() >= 0, "the running time is not negative");
    const auto rows = reportRows(cut, summary, writer);
    require(rows.front().front() == "rate" && rows.back().front() == "total",
            "the report starts with the rate and ends with the total");
    const EventTable table(std::move(cut), TimecodeNotation::Smpte);
    std::vector<std::size_t> shown;
    for (std::size_t row = 0; row < table.rowCount() && row < 300; ++row) shown.push_back(row);
    const std::string copied = table.tabSeparated(shown);
    require(
        static_cast<std::size_t>(std::count(copied.begin(), copied.end(), '\n')) == shown.size(),
        "one copied line a row");
    require(isUtf8(table.commaSeparated(shown)), "the CSV is UTF-8");
    for (const auto& track : table.trackRows()) require(isUtf8(track[0]), "track names are UTF-8");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const RateRequest request{static_cast<RateOrigin>(data[0] % 3),
                              kFrameRates[(data[0] / 3u) % kFrameRates.size()].code};
    const std::string_view bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    Cut cut = readTimeline(bytes, request);
    checkCut(cut);
    if (!cut.events.empty() && !cut.rate.givenRateRejected) checkShown(std::move(cut));
    return 0;
}
