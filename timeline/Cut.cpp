#include "Cut.h"

#include <algorithm>
#include <cmath>

#include "FrameRate.h"

namespace vantrel::timeline {

std::string problemLine(std::string_view line) {
    std::size_t size = std::min<std::size_t>(line.size(), 200);
    while (size > 0 && size < line.size() &&
           (static_cast<unsigned char>(line[size]) & 0xC0) == 0x80) {
        --size;
    }
    return std::string(line.substr(0, size));
}

void addProblem(Cut& cut, Problem problem) {
    if (problem.kind == ProblemKind::LostEvent) ++cut.lostEvents;
    if (cut.problemCount++ < kMaxProblems) cut.problems.push_back(std::move(problem));
}

void dropUnsoundEvents(Cut& cut) {
    constexpr double kFarthest = 1e12;
    const auto sound = [](double frames) {
        return std::isfinite(frames) && std::fabs(frames) <= kFarthest;
    };
    std::vector<Event> kept;
    kept.reserve(cut.events.size());
    for (Event& event : cut.events) {
        std::string why;
        if (!sound(event.recordIn) || !sound(event.recordOut)) {
            why = "lies beyond 10^12 frames";
        } else if (event.recordOut < event.recordIn) {
            why = "ends before it starts";
        }
        if (why.empty()) {
            if (event.sourceIn && !sound(*event.sourceIn)) event.sourceIn.reset();
            if (event.sourceOut && !sound(*event.sourceOut)) event.sourceOut.reset();
            kept.push_back(std::move(event));
            continue;
        }
        addProblem(cut, {event.line, problemLine(event.clipName),
                         "event " + event.number + " " + why, ProblemKind::LostEvent});
    }
    cut.events = std::move(kept);
}

void markUnreadable(Cut& cut, std::string message) {
    addProblem(cut, {0, {}, std::move(message), ProblemKind::Unreadable});
    cut.events.clear();
}

Cut unreadableCut(std::string format, std::string message, int requestedCode) {
    Cut cut;
    cut.format = std::move(format);
    if (frameRateForCode(requestedCode)) cut.rate.code = requestedCode;
    markUnreadable(cut, std::move(message));
    return cut;
}

std::string eventNumber(std::size_t index) {
    std::string number = std::to_string(index);
    return number.size() < 3 ? std::string(3 - number.size(), '0') + number : number;
}

std::string dissolve(std::int64_t frames) {
    return "D " + eventNumber(static_cast<std::size_t>(frames < 0 ? 0 : frames));
}

void warnOfOthersNotRead(Cut& cut, std::string_view kind, const std::vector<std::string>& names) {
    std::string others;
    for (std::size_t i = 1; i < names.size(); ++i) others += (i > 1 ? ", " : "") + names[i];
    addProblem(cut, {0,
                     {},
                     "the file holds " + std::to_string(names.size()) + " " + std::string(kind) +
                         "; the first is read, not " + others,
                     ProblemKind::Warning});
}

void placeEndToEnd(Cut& cut) {
    double place = 0;
    for (Event& event : cut.events) {
        const double duration = event.duration();
        event.recordIn = place;
        event.recordOut = place + duration;
        place = event.recordOut;
    }
}

}  // namespace vantrel::timeline
