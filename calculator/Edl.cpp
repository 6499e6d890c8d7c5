#include "Edl.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>

#include "FrameRate.h"
#include "NumberText.h"

namespace vantrel::edl {

namespace {

constexpr std::string_view kBlanks = " \t";

std::vector<std::string_view> words(std::string_view line) {
    std::vector<std::string_view> found;
    for (std::size_t at = line.find_first_not_of(kBlanks); at != std::string_view::npos;) {
        const std::size_t end = std::min(line.find_first_of(kBlanks, at), line.size());
        found.push_back(line.substr(at, end - at));
        at = line.find_first_not_of(kBlanks, end);
    }
    return found;
}

bool allDigits(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// The code that the FCM line asks for: the current one when it counts that way, else its twin of
// the same nominal rate slowed by 1.001 that does (29d for 29n or 30, 29n for 29d).
int codeForFcm(int currentCode, bool dropFrame) {
    const FrameRate* current = frameRateForCode(currentCode);
    if (!current || (current->dropFrame != DropFrame::None) == dropFrame) return currentCode;
    for (const FrameRate& rate : kFrameRates) {
        if (rate.nominal == current->nominal && rate.exact.denominator == 1001 &&
            (rate.dropFrame != DropFrame::None) == dropFrame) {
            return rate.code;
        }
    }
    return currentCode;
}

// "01:00:22;15" as a real frame count at the code, or why it is no timecode there.
struct TimecodeReading {
    double frames = 0;
    std::string error;
};

TimecodeReading readTimecode(std::string_view text, const FrameRate& rate) {
    std::array<int, 4> fields{};
    std::size_t field = 0;
    for (std::size_t at = 0; field < 4; ++field) {
        const std::size_t end = std::min(text.find_first_of(":;.", at), text.size());
        const std::string_view digits = text.substr(at, end - at);
        if (digits.size() < 1 || digits.size() > 3 || !allDigits(digits)) break;
        std::from_chars(digits.data(), digits.data() + digits.size(), fields[field]);
        at = end + 1;
        if (end == text.size()) {
            ++field;
            break;
        }
    }
    if (field != 4) return {0, "'" + std::string(text) + "' is not a timecode"};
    const auto [hours, minutes, seconds, frames] = fields;
    if (minutes > 59 || seconds > 59) {
        return {0, "'" + std::string(text) + "' has more than 59 minutes or seconds"};
    }
    if (frames >= rate.nominal) {
        return {0, "'" + std::string(text) + "' has frame " + std::to_string(frames) + " at " +
                       std::to_string(rate.nominal) + " frames a second"};
    }
    const double label = ((hours * 60.0 + minutes) * 60.0 + seconds) * rate.nominal + frames;
    const double real = Calc::realFCfromDropFC(label, rate.code);
    if (Calc::dropFCfromRealFC(real, rate.code) != label) {
        return {0, "'" + std::string(text) + "' is a label that drop-frame counting skips"};
    }
    return {real, {}};
}

bool isTrack(std::string_view word) {
    if (word == "NONE" || word == "B" || word == "V" || word == "AA" || word == "AA/V" ||
        word == "A/V") {
        return true;
    }
    return word.size() >= 1 && word[0] == 'A' && (word.size() == 1 || allDigits(word.substr(1)));
}

bool isTransition(const std::vector<std::string_view>& transition) {
    if (transition.empty()) return false;
    const std::string_view kind = transition[0];
    const bool known = kind == "C" || kind == "D" || kind == "K" || kind.starts_with("W");
    return known && transition.size() <= 3;
}

class Reader {
public:
    Reader(int currentCode) : m_currentCode(currentCode) { m_cut.rateCode = currentCode; }

    void readLine(std::size_t number, std::string_view line) {
        m_number = number;
        m_line = line;
        if (line.find('\0') != std::string_view::npos) return problem("binary data, not text");
        const std::string_view trimmed = line.substr(0, line.find_last_not_of(" \t\r") + 1);
        const auto fields = words(trimmed);
        if (fields.empty()) return;
        if (trimmed.starts_with("TITLE:")) {
            const std::size_t start =
                std::min(trimmed.find_first_not_of(kBlanks, 6), trimmed.size());
            m_cut.title = std::string(trimmed.substr(start));
        } else if (trimmed.starts_with("FCM:")) {
            m_cut.rateCode =
                codeForFcm(m_currentCode, trimmed.find("NON") == std::string_view::npos);
        } else if (trimmed.starts_with("*") || isNote(fields[0])) {
            if (!m_cut.events.empty()) m_cut.events.back().comments.emplace_back(trimmed);
        } else if (fields[0] == "M2") {
            readMotionEffect(fields);
        } else if (allDigits(fields[0])) {
            readEvent(fields);
        } else {
            problem("not an event, a comment or a header");
        }
    }

    Cut finish() { return std::move(m_cut); }

private:
    static bool isNote(std::string_view word) {
        return word == "SPLIT:" || word == "SWAP" || word == "GPI" || word == ">>>" ||
               word == "AUD" || word == "EFFECTS" || word == "FINAL";
    }

    void problem(std::string message) {
        if (m_cut.problemCount++ < kMaxProblems) {
            m_cut.problems.push_back(
                {m_number, std::string(m_line.substr(0, 200)), std::move(message)});
        }
    }

    void readMotionEffect(const std::vector<std::string_view>& fields) {
        double speed = 0;
        if (fields.size() < 4 || m_cut.events.empty() ||
            std::from_chars(fields[2].data(), fields[2].data() + fields[2].size(), speed).ec !=
                std::errc()) {
            return problem("a motion effect without an event, a speed or a timecode");
        }
        m_cut.events.back().speed = speed;
    }

    void readEvent(const std::vector<std::string_view>& fields) {
        if (fields.size() < 8)
            return problem("an event needs a reel, a track, a transition and four timecodes");
        const std::vector<std::string_view> transition(fields.begin() + 3, fields.end() - 4);
        if (!isTrack(fields[2])) return problem("'" + std::string(fields[2]) + "' is not a track");
        if (!isTransition(transition))
            return problem("no transition such as C, D 030, W001 030 or K");
        const FrameRate& rate = *frameRateForCode(m_cut.rateCode);
        std::array<double, 4> timecodes{};
        for (std::size_t i = 0; i < 4; ++i) {
            const TimecodeReading reading = readTimecode(fields[fields.size() - 4 + i], rate);
            if (!reading.error.empty()) return problem(reading.error);
            timecodes[i] = reading.frames;
        }
        if (timecodes[3] < timecodes[2]) return problem("the record out is before the record in");
        if (timecodes[1] < timecodes[0]) return problem("the source out is before the source in");
        std::string transitionText;
        for (const auto word : transition)
            transitionText += (transitionText.empty() ? "" : " ") + std::string(word);
        Event event{m_number,
                    std::string(fields[0]),
                    std::string(fields[1]),
                    std::string(fields[2]),
                    transitionText,
                    timecodes[0],
                    timecodes[1],
                    timecodes[2],
                    timecodes[3],
                    std::nullopt,
                    {}};
        // The second line of a dissolve or wipe carries the event's number and track again: it
        // brings in the incoming source, and the event runs on to its record out.
        if (!m_cut.events.empty() && m_cut.events.back().number == event.number &&
            m_cut.events.back().track == event.track) {
            Event& first = m_cut.events.back();
            first.reel = event.reel;
            first.transition = event.transition;
            first.sourceIn = event.sourceIn;
            first.sourceOut = event.sourceOut;
            first.recordIn = std::min(first.recordIn, event.recordIn);
            first.recordOut = std::max(first.recordOut, event.recordOut);
            return;
        }
        m_cut.events.push_back(std::move(event));
    }

    int m_currentCode;
    Cut m_cut;
    std::size_t m_number = 0;
    std::string_view m_line;
};

}  // namespace

Cut read(std::string_view text, int currentCode) {
    Reader reader(frameRateForCode(currentCode) ? currentCode : DisplayState24fps);
    std::size_t number = 1;
    for (std::size_t at = 0; at < text.size(); ++number) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        reader.readLine(number, text.substr(at, end - at));
        at = end + 1;
    }
    return reader.finish();
}

Summary summarise(const Cut& cut) {
    Summary summary;
    std::map<std::string, std::vector<const Event*>> byTrack;
    for (const Event& event : cut.events) {
        if (!byTrack.contains(event.track)) summary.tracks.emplace_back().name = event.track;
        byTrack[event.track].push_back(&event);
    }
    for (Track& track : summary.tracks) {
        auto& events = byTrack[track.name];
        std::stable_sort(events.begin(), events.end(),
                         [](const Event* a, const Event* b) { return a->recordIn < b->recordIn; });
        track.events = events.size();
        track.recordIn = events.front()->recordIn;
        track.recordOut = events.front()->recordOut;
        for (std::size_t i = 0; i < events.size(); ++i) {
            track.durations += events[i]->duration();
            track.recordOut = std::max(track.recordOut, events[i]->recordOut);
            if (i > 0 && events[i]->recordIn != events[i - 1]->recordOut) {
                track.seams.push_back({events[i - 1]->number, events[i]->number,
                                       events[i - 1]->recordOut, events[i]->recordIn});
            }
        }
    }
    if (!cut.events.empty()) {
        summary.recordIn = summary.tracks.front().recordIn;
        summary.recordOut = summary.tracks.front().recordOut;
        for (const Track& track : summary.tracks) {
            summary.recordIn = std::min(summary.recordIn, track.recordIn);
            summary.recordOut = std::max(summary.recordOut, track.recordOut);
        }
    }
    return summary;
}

std::vector<std::vector<std::string>> reportRows(const Cut& cut, const Summary& summary,
                                                 Calc& calc) {
    calc.setFps(cut.rateCode);
    const auto timecode = [&calc](double frames) { return calc.stringFromFramecount(frames); };
    const auto count = [](double frames) { return number_text::fixed(frames, 0); };
    std::vector<std::vector<std::string>> rows;
    for (const Event& event : cut.events) {
        rows.push_back({"event", event.number, event.reel, event.track, timecode(event.recordIn),
                        timecode(event.recordOut), timecode(event.duration()),
                        count(event.duration())});
    }
    for (const Track& track : summary.tracks) {
        rows.push_back({"track", track.name, std::to_string(track.events),
                        timecode(track.durations), count(track.durations), timecode(track.recordIn),
                        timecode(track.recordOut)});
        for (const Seam& seam : track.seams) {
            const bool gap = seam.end > seam.start;
            rows.push_back({gap ? "gap" : "overlap", track.name, seam.after, seam.before,
                            timecode(std::min(seam.start, seam.end)),
                            timecode(std::max(seam.start, seam.end)),
                            timecode(std::abs(seam.end - seam.start)),
                            count(std::abs(seam.end - seam.start))});
        }
    }
    rows.push_back({"total", timecode(summary.runningTime()), count(summary.runningTime())});
    return rows;
}

std::string problemText(const Problem& problem) {
    return "line " + std::to_string(problem.line) + ": " + problem.message + ": '" + problem.text +
           "'";
}

}  // namespace vantrel::edl
