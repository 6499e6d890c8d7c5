#include "EdlReader.h"

#include <algorithm>
#include <charconv>

#include "FrameRate.h"
#include "TextDecoding.h"
#include "TimecodeLabel.h"

namespace vantrel::timeline {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// The blank-separated words of a line, into a vector kept from line to line.
void splitWords(std::string_view line, std::vector<std::string_view>& found) {
    found.clear();
    const std::size_t size = line.size();
    for (std::size_t at = 0; at < size;) {
        while (at < size && isBlank(line[at])) ++at;
        const std::size_t start = at;
        while (at < size && !isBlank(line[at])) ++at;
        if (at > start) found.push_back(line.substr(start, at - start));
    }
}

bool allDigits(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

char upperAscii(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool equalsIgnoringCase(std::string_view text, std::string_view upperCase) {
    return text.size() == upperCase.size() &&
           std::equal(text.begin(), text.end(), upperCase.begin(),
                      [](char a, char b) { return upperAscii(a) == b; });
}

// The text after a label such as "TITLE:" at the start of the line, or nothing.
std::optional<std::string_view> afterLabel(std::string_view line, std::string_view label) {
    if (line.size() < label.size() || !equalsIgnoringCase(line.substr(0, label.size()), label)) {
        return std::nullopt;
    }
    return trimmed(line.substr(label.size()));
}

// Event numbers run to six digits; a line that starts with one and holds a timecode is meant as
// an event, however badly it came out.
bool isEventLine(const std::vector<std::string_view>& fields) {
    return fields.size() >= 2 && fields[0].size() <= 6 && allDigits(fields[0]) &&
           std::any_of(fields.begin() + 1, fields.end(),
                       [](std::string_view word) { return labelFields(word).has_value(); });
}

// V, A, A2 … A99, AA, B, AA/V, A/V, V2 …, NONE, as editing systems name their channels: one
// channel, or two joined by "/".
bool isChannel(std::string_view word) {
    if (word == "NONE" || word == "B" || word == "AA") return true;
    return !word.empty() && (word[0] == 'A' || word[0] == 'V') &&
           (word.size() == 1 || allDigits(word.substr(1)));
}

bool isTrack(std::string_view word) {
    const auto slash = word.find('/');
    if (slash == std::string_view::npos) return isChannel(word);
    return isChannel(word.substr(0, slash)) && isChannel(word.substr(slash + 1));
}

// C, D 030, W001 030, K B 030, KB, KO, or a bare duration where the kind was left blank.
bool isTransition(const std::vector<std::string_view>& transition) {
    if (transition.size() > 3) return false;
    for (std::size_t i = 0; i < transition.size(); ++i) {
        const std::string_view word = transition[i];
        const bool kind = word == "C" || word == "D" || word == "K" || word == "KB" ||
                          word == "KO" || (word[0] == 'W' && allDigits(word.substr(1)));
        const bool keyMode = i == 1 && transition[0] == "K" && (word == "B" || word == "O");
        if (!(allDigits(word) || (i == 0 && kind) || keyMode)) return false;
    }
    return true;
}

std::string joined(const std::vector<std::string_view>& parts) {
    std::string text;
    for (const auto part : parts) text += (text.empty() ? "" : " ") + std::string(part);
    return text;
}

FcmCounting fcmCounting(std::string_view value) {
    std::string counting(value);
    std::transform(counting.begin(), counting.end(), counting.begin(), upperAscii);
    if (counting.find("NON") != std::string::npos) return FcmCounting::NonDrop;
    if (counting == "DROP FRAME" || counting == "DROP" || counting == "DF")
        return FcmCounting::Drop;
    if (counting == "NDF") return FcmCounting::NonDrop;
    return FcmCounting::Unknown;
}

// The clip an event shows, from the comments editing systems write after it: the incoming clip
// of a dissolve ("TO CLIP NAME") before the outgoing one.
void takeClipName(Event& event, std::string_view note) {
    const std::string_view comment = trimmed(note.substr(note.starts_with('*') ? 1 : 0));
    if (const auto name = afterLabel(comment, "TO CLIP NAME:")) {
        event.clipName = std::string(*name);
    } else if (const auto from = afterLabel(comment, "FROM CLIP NAME:")) {
        if (event.clipName.empty()) event.clipName = std::string(*from);
    } else if (const auto clip = afterLabel(comment, "CLIP NAME:")) {
        if (event.clipName.empty()) event.clipName = std::string(*clip);
    }
}

class Reader {
public:
    Reader(std::vector<std::string_view> lines, const RateRequest& request)
        : m_lines(std::move(lines)) {
        m_cut.rate = chooseRate(evidence(), request);
        m_sourceDrop = frameRateForCode(m_cut.rate.code)->dropFrame != DropFrame::None;
    }

    Cut read() {
        for (std::size_t i = 0; i < m_lines.size(); ++i) readLine(i + 1, m_lines[i]);
        return std::move(m_cut);
    }

private:
    // What the lines say about the rate: the FCM line before the first event, separators and
    // the largest frame label of the record timecodes.
    RateEvidence evidence() const {
        RateEvidence evidence;
        bool beforeFirstEvent = true;
        std::vector<std::string_view> fields;
        for (const std::string_view line : m_lines) {
            splitWords(line, fields);
            if (fields.empty()) continue;
            if (const auto fcm = afterLabel(trimmed(line), "FCM:"); fcm && beforeFirstEvent) {
                evidence.fcm = fcmCounting(*fcm);
            } else if (isEventLine(fields)) {
                beforeFirstEvent = false;
                if (fields.size() < 7) continue;
                for (const auto word : {fields[fields.size() - 2], fields.back()}) {
                    if (const auto label = labelFields(word)) {
                        evidence.semicolons = evidence.semicolons || label->semicolon;
                        evidence.largestLabel = std::max(evidence.largestLabel, label->frames);
                    }
                }
            }
        }
        return evidence;
    }

    void readLine(std::size_t number, std::string_view line) {
        m_number = number;
        m_line = trimmed(line);
        splitWords(m_line, m_fields);
        const auto& fields = m_fields;
        if (fields.empty()) return;
        if (const auto title = afterLabel(m_line, "TITLE:")) {
            m_cut.title = std::string(*title);
        } else if (const auto fcm = afterLabel(m_line, "FCM:")) {
            readFcm(*fcm);
        } else if (fields[0] == "M2") {
            readMotionEffect(fields);
        } else if (isEventLine(fields)) {
            readEvent(fields);
        } else {
            note(m_line);
        }
    }

    void note(std::string_view text) {
        if (m_cut.events.empty()) {
            m_cut.notes.emplace_back(text);
            return;
        }
        Event& event = m_cut.events.back();
        event.notes.emplace_back(text);
        takeClipName(event, text);
    }

    void problem(std::string message, ProblemKind kind) {
        addProblem(m_cut, {m_number, problemLine(m_line), std::move(message), kind});
    }
    void warn(std::string message) { problem(std::move(message), ProblemKind::Warning); }
    void lose(std::string message) { problem(std::move(message), ProblemKind::LostEvent); }

    void readFcm(std::string_view value) {
        const FcmCounting counting = fcmCounting(value);
        if (counting == FcmCounting::Unknown) {
            warn("unknown FCM '" + std::string(value) +
                 "': DROP FRAME or NON-DROP FRAME expected; read as non-drop");
        }
        // Before the first event the rate choice has taken it; after one, it is the sources'.
        if (!m_cut.events.empty()) m_sourceDrop = counting == FcmCounting::Drop;
    }

    void readMotionEffect(const std::vector<std::string_view>& fields) {
        double speed = 0;
        if (fields.size() < 4 || m_cut.events.empty() ||
            std::from_chars(fields[2].data(), fields[2].data() + fields[2].size(), speed).ec !=
                std::errc()) {
            note(m_line);
            return warn("a motion effect without an event before it, a speed or a timecode");
        }
        m_cut.events.back().speed = speed;
        note(m_line);
    }

    // A source field: a label at the source's rate, or a frame number as conform tools write it.
    std::optional<double> sourceFrames(std::string_view field, int code, Event& event) {
        if (allDigits(field) && field.size() <= 12) {
            double frames = 0;
            std::from_chars(field.data(), field.data() + field.size(), frames);
            return frames;
        }
        const LabelReading reading = framesOfLabel(field, code);
        if (reading.error.empty()) return reading.frames;
        event.notes.push_back("source " + reading.error);
        warn("source " + reading.error + "; the event is kept");
        return std::nullopt;
    }

    void readEvent(const std::vector<std::string_view>& fields) {
        const std::size_t n = fields.size();
        const auto isSourceField = [](std::string_view field) {
            return allDigits(field) || labelFields(field).has_value();
        };
        if (n < 7 || !isSourceField(fields[n - 4]) || !isSourceField(fields[n - 3]) ||
            !labelFields(fields[n - 2]) || !labelFields(fields[n - 1])) {
            return lose("an event needs a reel, a track, a transition and four timecodes");
        }
        if (!isTrack(fields[2])) return lose("'" + std::string(fields[2]) + "' is not a track");
        const std::vector<std::string_view> transition(fields.begin() + 3, fields.end() - 4);
        if (!isTransition(transition)) {
            return lose("no transition such as C, D 030, W001 030 or K");
        }
        Event event;
        event.line = m_number;
        event.number = fields[0];
        event.reel = fields[1];
        event.track = fields[2];
        event.transition = joined(transition);
        const int code = m_cut.rate.code;
        for (const auto& [field, frames] :
             {std::pair{n - 2, &event.recordIn}, {n - 1, &event.recordOut}}) {
            const LabelReading reading = framesOfLabel(fields[field], code);
            if (!reading.error.empty()) return lose(reading.error);
            *frames = reading.frames;
        }
        if (event.recordOut < event.recordIn) return lose("the record out is before the record in");
        event.sourceRateCode = twinCounting(code, m_sourceDrop);
        event.sourceIn = sourceFrames(fields[n - 4], event.sourceRateCode, event);
        event.sourceOut = sourceFrames(fields[n - 3], event.sourceRateCode, event);
        add(std::move(event));
    }

    // The second line of a dissolve or wipe carries the event's number and track again: it brings
    // in the incoming source, and the event runs on to its record out.
    void add(Event event) {
        if (!m_cut.events.empty() && m_cut.events.back().number == event.number &&
            m_cut.events.back().track == event.track) {
            Event& first = m_cut.events.back();
            first.reel = std::move(event.reel);
            first.transition = std::move(event.transition);
            first.sourceIn = event.sourceIn;
            first.sourceOut = event.sourceOut;
            first.recordIn = std::min(first.recordIn, event.recordIn);
            first.recordOut = std::max(first.recordOut, event.recordOut);
            for (auto& note : event.notes) first.notes.push_back(std::move(note));
            return;
        }
        m_cut.events.push_back(std::move(event));
    }

    std::vector<std::string_view> m_lines;
    std::vector<std::string_view> m_fields;  // the words of the line being read
    Cut m_cut;
    bool m_sourceDrop = false;
    std::size_t m_number = 0;
    std::string_view m_line;
};

}  // namespace

Cut readEdl(std::string_view bytes, const RateRequest& request) {
    const DecodedText decoded = decodeText(bytes);
    if (decoded.encoding == Encoding::Binary) {
        return unreadableCut("EDL", "binary data, not an edit decision list", request.code);
    }
    return Reader(splitLines(decoded.text), request).read();
}

}  // namespace vantrel::timeline
