#include "EdlReport.h"

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <ostream>
#include <sstream>

#include <nlohmann/json.hpp>

#include "Edl.h"
#include "NumberText.h"

namespace vantrel {

namespace {

using Json = nlohmann::ordered_json;

// Frame counts of a cut are whole; JSON gets them as integers.
std::int64_t whole(double frames) {
    return static_cast<std::int64_t>(std::llround(frames));
}

std::optional<std::string> contentsOf(const std::string& file, std::istream& input) {
    if (file == "-") return std::string(std::istreambuf_iterator<char>(input), {});
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return std::nullopt;
    std::ostringstream contents;
    contents << stream.rdbuf();
    return contents.str();
}

void printJson(const edl::Cut& cut, const edl::Summary& summary, Calc& calc, std::ostream& output) {
    calc.setFps(cut.rateCode);
    const auto timecode = [&calc](double frames) { return calc.stringFromFramecount(frames); };
    const auto write = [&output](const Json& line) {
        output << line.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
    };
    for (const edl::Event& event : cut.events) {
        write({{"event", event.number},
               {"reel", event.reel},
               {"track", event.track},
               {"recordIn", timecode(event.recordIn)},
               {"recordOut", timecode(event.recordOut)},
               {"duration", timecode(event.duration())},
               {"durationFrames", whole(event.duration())}});
    }
    for (const edl::Track& track : summary.tracks) {
        Json seams = Json::array();
        for (const edl::Seam& seam : track.seams) {
            seams.push_back({{seam.end > seam.start ? "gap" : "overlap",
                              whole(std::abs(seam.end - seam.start))},
                             {"after", seam.after},
                             {"before", seam.before}});
        }
        write({{"track", track.name},
               {"events", track.events},
               {"duration", timecode(track.durations)},
               {"durationFrames", whole(track.durations)},
               {"recordIn", timecode(track.recordIn)},
               {"recordOut", timecode(track.recordOut)},
               {"seams", seams}});
    }
    write({{"events", cut.events.size()},
           {"totalFrames", whole(summary.runningTime())},
           {"total", timecode(summary.runningTime())}});
}

}  // namespace

int printEdlReport(const std::string& file, int currentCode, TimecodeNotation notation, bool json,
                   std::istream& input, std::ostream& output, std::ostream& errors) {
    const auto text = contentsOf(file, input);
    if (!text) {
        errors << "vantrel-calc: cannot read '" << file << "': " << std::strerror(errno) << '\n';
        return 2;
    }
    const edl::Cut cut = edl::read(*text, currentCode);
    for (const edl::Problem& problem : cut.problems) {
        errors << "vantrel-calc: " << file << ": " << edl::problemText(problem) << '\n';
    }
    if (cut.problemCount > cut.problems.size()) {
        errors << "vantrel-calc: " << file << ": " << cut.problemCount - cut.problems.size()
               << " more lines could not be read\n";
    }
    if (cut.events.empty()) {
        errors << "vantrel-calc: " << file << ": no events\n";
        return 1;
    }
    Calc calc;
    calc.setTimecodeNotation(notation);
    const edl::Summary summary = edl::summarise(cut);
    if (json) {
        printJson(cut, summary, calc, output);
    } else {
        for (const auto& row : edl::reportRows(cut, summary, calc)) {
            for (std::size_t field = 0; field < row.size(); ++field) {
                output << (field ? "\t" : "") << row[field];
            }
            output << '\n';
        }
    }
    return cut.problemCount == 0 ? 0 : 1;
}

}  // namespace vantrel
