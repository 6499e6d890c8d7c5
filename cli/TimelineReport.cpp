#include "TimelineReport.h"

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <sstream>

#include <nlohmann/json.hpp>

#include "CutReport.h"
#include "CutSummary.h"
#include "FrameRate.h"
#include "TimelineReader.h"

namespace vantrel {

namespace {

using Json = nlohmann::ordered_json;

// Frame counts of a cut are whole; JSON gets them as integers.
std::int64_t whole(double frames) {
    return static_cast<std::int64_t>(std::llround(frames));
}

std::optional<std::string> contentsOf(const std::string& file, std::istream& input) {
    if (file == "-") return std::string(std::istreambuf_iterator<char>(input), {});
    // A Final Cut Pro bundle (.fcpxmld) is a folder that holds the XML as Info.fcpxml.
    std::error_code error;
    const bool folder = std::filesystem::is_directory(file, error);
    std::ifstream stream(
        folder ? std::filesystem::path(file) / "Info.fcpxml" : std::filesystem::path(file),
        std::ios::binary);
    if (!stream) return std::nullopt;
    std::ostringstream contents;
    contents << stream.rdbuf();
    return contents.str();
}

// A source timecode at the source's own rate, or null where the file's label had none.
Json sourceTimecode(const std::optional<double>& frames, int sourceCode, Calc& writer) {
    if (!frames) return Json();
    writer.setFps(sourceCode);
    return writer.stringFromFramecount(*frames);
}

void printJson(const timeline::Cut& cut, const timeline::Summary& summary, Calc& writer,
               std::ostream& output) {
    const int code = cut.rateCode();
    const auto timecode = [&writer, code](double frames) {
        writer.setFps(code);
        return writer.stringFromFramecount(frames);
    };
    const auto write = [&output](const Json& line) {
        output << line.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
    };
    for (const timeline::Event& event : cut.events) {
        write({{"event", event.number},
               {"reel", event.reel},
               {"track", event.track},
               {"recordIn", timecode(event.recordIn)},
               {"recordOut", timecode(event.recordOut)},
               {"duration", timecode(event.duration())},
               {"durationFrames", whole(event.duration())},
               {"transition", event.transition},
               {"sourceIn", sourceTimecode(event.sourceIn, event.sourceRateCode, writer)},
               {"sourceOut", sourceTimecode(event.sourceOut, event.sourceRateCode, writer)},
               {"clipName", event.clipName.empty() ? Json() : Json(event.clipName)}});
    }
    for (const timeline::Track& track : summary.tracks) {
        Json seams = Json::array();
        for (const timeline::Seam& seam : track.seams) {
            seams.push_back({{seam.isGap() ? "gap" : "overlap", whole(seam.length())},
                             {"after", cut.events[seam.afterEvent].number},
                             {"before", cut.events[seam.beforeEvent].number}});
        }
        write({{"track", track.name},
               {"events", track.events.size()},
               {"duration", timecode(track.durations)},
               {"durationFrames", whole(track.durations)},
               {"recordIn", timecode(track.recordIn)},
               {"recordOut", timecode(track.recordOut)},
               {"seams", seams}});
    }
    write({{"events", cut.events.size()},
           {"totalFrames", whole(summary.runningTime())},
           {"total", timecode(summary.runningTime())},
           {"rate", frameRateForCode(code)->suffix},
           {"rateReason", cut.rate.reason()}});
}

void printRows(const timeline::Cut& cut, const timeline::Summary& summary, Calc& writer,
               std::ostream& output) {
    for (const auto& row : timeline::reportRows(cut, summary, writer)) {
        for (std::size_t field = 0; field < row.size(); ++field) {
            output << (field ? "\t" : "") << row[field];
        }
        output << '\n';
    }
}

void printProblems(const std::string& file, const timeline::Cut& cut, std::ostream& errors) {
    for (const timeline::Problem& problem : cut.problems) {
        errors << "vantrel-calc: " << file << ": " << timeline::problemText(problem) << '\n';
    }
    if (cut.problemCount > cut.problems.size()) {
        errors << "vantrel-calc: " << file << ": " << cut.problemCount - cut.problems.size()
               << " more problems\n";
    }
}

// A rate given on the command line that cannot hold the file's labels would cut events short or
// drop them: one message that names the rate the file needs, in place of one per line.
void printRejectedRate(const std::string& file, const timeline::Cut& cut, int givenCode,
                       std::ostream& errors) {
    const std::string needed(frameRateForCode(cut.rateCode())->suffix);
    errors << "vantrel-calc: " << file << ": its frame labels run to " << cut.rate.largestLabel
           << ", which the rate " << frameRateForCode(givenCode)->suffix
           << " cannot hold; it reads at " << needed << " (" << cut.rate.basis
           << "): leave out -r, or give -r " << needed << '\n';
}

}  // namespace

int printTimelineReport(const std::string& file, const timeline::RateRequest& request,
                        TimecodeNotation notation, bool json, std::istream& input,
                        std::ostream& output, std::ostream& errors) {
    const auto text = contentsOf(file, input);
    if (!text) {
        errors << "vantrel-calc: cannot read '" << file << "': " << std::strerror(errno) << '\n';
        return 2;
    }
    const timeline::Cut cut = timeline::readTimeline(*text, request);
    if (cut.rate.givenRateRejected) {
        printRejectedRate(file, cut, request.code, errors);
        return 1;
    }
    printProblems(file, cut, errors);
    if (cut.events.empty()) {
        errors << "vantrel-calc: " << file << ": no events\n";
        return 1;
    }
    Calc writer;
    writer.setTimecodeNotation(notation);
    const timeline::Summary summary = timeline::summarise(cut);
    if (json) {
        printJson(cut, summary, writer, output);
    } else {
        printRows(cut, summary, writer, output);
    }
    return cut.lostEvents == 0 ? 0 : 1;
}

}  // namespace vantrel
