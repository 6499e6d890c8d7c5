#include "CutReport.h"

#include "FrameRate.h"
#include "NumberText.h"

namespace vantrel::timeline {

namespace {

std::string count(double frames) {
    return number_text::fixed(frames, 0);
}

std::string suffixOf(int code) {
    return std::string(frameRateForCode(code)->suffix);
}

}  // namespace

std::vector<std::vector<std::string>> reportRows(const Cut& cut, const Summary& summary,
                                                 Calc& writer) {
    writer.setFps(cut.rateCode());
    const auto timecode = [&writer](double frames) { return writer.stringFromFramecount(frames); };
    std::vector<std::vector<std::string>> rows;
    rows.push_back({"rate", suffixOf(cut.rateCode()), cut.rate.reason()});
    for (const Event& event : cut.events) {
        rows.push_back({"event", event.number, event.reel, event.track, timecode(event.recordIn),
                        timecode(event.recordOut), timecode(event.duration()),
                        count(event.duration())});
    }
    for (const Track& track : summary.tracks) {
        rows.push_back({"track", track.name, std::to_string(track.events.size()),
                        timecode(track.durations), count(track.durations), timecode(track.recordIn),
                        timecode(track.recordOut)});
        for (const Seam& seam : track.seams) {
            rows.push_back({seam.isGap() ? "gap" : "overlap", track.name,
                            cut.events[seam.afterEvent].number, cut.events[seam.beforeEvent].number,
                            timecode(std::min(seam.start, seam.end)),
                            timecode(std::max(seam.start, seam.end)), timecode(seam.length()),
                            count(seam.length())});
        }
    }
    rows.push_back({"total", timecode(summary.runningTime()), count(summary.runningTime())});
    return rows;
}

std::string problemText(const Problem& problem) {
    const std::string where = problem.line ? "line " + std::to_string(problem.line) + ": " : "";
    const std::string kind = problem.kind == ProblemKind::Warning ? "warning: " : "";
    const std::string text = problem.text.empty() ? "" : ": '" + problem.text + "'";
    return where + kind + problem.message + text;
}

std::string groupedDigits(double frames) {
    const std::string digits = count(frames);
    const std::size_t start = digits.starts_with('-') ? 1 : 0;
    std::string grouped = digits.substr(0, start);
    for (std::size_t at = start; at < digits.size(); ++at) {
        if (at > start && (digits.size() - at) % 3 == 0) grouped += ',';
        grouped += digits[at];
    }
    return grouped;
}

std::string summaryLine(std::string_view format, std::string_view fileName, const Cut& cut,
                        const Summary& summary, Calc& writer) {
    writer.setFps(cut.rateCode());
    const std::size_t events = cut.events.size();
    const std::string what =
        cut.clipList ? (events == 1 ? " clip" : " clips") : (events == 1 ? " event" : " events");
    return std::string(format) + " " + std::string(fileName) + ": " + std::to_string(events) +
           what + " at " + suffixOf(cut.rateCode()) +
           (cut.clipList ? ", total " : ", running time ") +
           writer.stringFromFramecount(summary.runningTime()) + " (" +
           groupedDigits(summary.runningTime()) + " frames)";
}

}  // namespace vantrel::timeline
