#include "AleReader.h"

#include <charconv>
#include <cmath>
#include <map>

#include "FrameRate.h"
#include "TextDecoding.h"
#include "TimecodeLabel.h"

namespace vantrel::timeline {

namespace {

std::vector<std::string_view> fields(std::string_view line) {
    std::vector<std::string_view> found;
    for (std::size_t at = 0;;) {
        const std::size_t tab = line.find('\t', at);
        found.push_back(trimmed(line.substr(at, tab == std::string_view::npos ? tab : tab - at)));
        if (tab == std::string_view::npos) return found;
        at = tab + 1;
    }
}

std::string lower(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

// "23.98", "23.976", "29.97", "25": the code of the nearest rate Vantrel counts in, non-drop.
std::optional<int> codeOfFps(std::string_view text, bool dropFrame) {
    double fps = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), fps).ec != std::errc()) {
        return std::nullopt;
    }
    for (const FrameRate& rate : kFrameRates) {
        if (std::fabs(rate.exact.value() - fps) < 0.01) {
            return codeOfExactRate(rate.exact.numerator, rate.exact.denominator, dropFrame);
        }
    }
    return std::nullopt;
}

class Reader {
public:
    Reader(std::vector<std::string_view> lines, const RateRequest& request)
        : m_lines(std::move(lines)), m_request(request) {
        m_cut.format = "ALE";
        m_cut.clipList = true;
    }

    Cut read() {
        std::string_view section;
        std::optional<std::string_view> fps;
        std::size_t columnLine = 0;
        std::size_t firstData = 0;
        for (std::size_t i = 0; i < m_lines.size(); ++i) {
            const std::string_view line = trimmed(m_lines[i]);
            if (line == "Heading" || line == "Column" || line == "Data") {
                section = line;
                if (line == "Data") firstData = i + 1;
                continue;
            }
            if (line.empty()) continue;
            if (section == "Heading") {
                const auto pairs = fields(m_lines[i]);
                for (std::size_t p = 0; p + 1 < pairs.size(); p += 2) {
                    if (pairs[p] == "FPS") fps = pairs[p + 1];
                }
            } else if (section == "Column" && columnLine == 0) {
                columnLine = i + 1;
            }
        }
        if (!fps) return fail("no FPS line in the Heading: the rate of an ALE file is its FPS");
        if (columnLine == 0 || firstData == 0) return fail("no Column or Data section");
        const auto code = codeOfFps(*fps, usesSemicolons(firstData));
        if (!code) return fail("FPS " + std::string(*fps) + ", a rate Vantrel does not count in");
        m_cut.rate = statedRate(*code, m_request);
        readColumns(fields(m_lines[columnLine - 1]));
        for (std::size_t i = firstData; i < m_lines.size(); ++i) {
            if (!trimmed(m_lines[i]).empty()) readClip(i + 1, fields(m_lines[i]));
        }
        if (m_cut.events.empty() && m_cut.lostEvents == 0)
            markUnreadable(m_cut, "no clips in the Data section");
        placeEndToEnd(m_cut);
        return std::move(m_cut);
    }

private:
    Cut fail(std::string message) {
        markUnreadable(m_cut, std::move(message));
        return std::move(m_cut);
    }

    bool usesSemicolons(std::size_t firstData) const {
        for (std::size_t i = firstData; i < m_lines.size(); ++i) {
            for (const std::string_view field : fields(m_lines[i])) {
                if (const auto label = labelFields(field); label && label->semicolon) return true;
            }
        }
        return false;
    }

    void readColumns(const std::vector<std::string_view>& names) {
        for (std::size_t i = 0; i < names.size(); ++i) m_columns.try_emplace(lower(names[i]), i);
    }

    std::string_view column(const std::vector<std::string_view>& row, const char* name) const {
        const auto found = m_columns.find(name);
        return found != m_columns.end() && found->second < row.size() ? row[found->second]
                                                                      : std::string_view();
    }

    std::optional<double> label(std::string_view text, std::string& error) const {
        if (text.empty()) return std::nullopt;
        const LabelReading reading = framesOfLabel(text, m_cut.rate.code);
        if (!reading.error.empty()) {
            error = reading.error;
            return std::nullopt;
        }
        return reading.frames;
    }

    void readClip(std::size_t line, const std::vector<std::string_view>& row) {
        std::string error;
        const auto start = label(column(row, "start"), error);
        const auto end = label(column(row, "end"), error);
        const auto duration = label(column(row, "duration"), error);
        std::optional<double> length = duration;
        if (!length && start && end) length = *end - *start;
        if (!length || *length < 0) {
            addProblem(m_cut,
                       {line, problemLine(m_lines[line - 1]),
                        error.empty() ? "a clip needs a Duration, or a Start and an End" : error,
                        ProblemKind::LostEvent});
            return;
        }
        Event& event = m_cut.events.emplace_back();
        event.line = line;
        event.number = eventNumber(m_cut.events.size());
        event.track = "clips";
        event.transition = "C";
        event.clipName = column(row, "name");
        const std::string_view tape = column(row, "tape");
        event.reel = tape.empty() ? event.clipName : std::string(tape);
        event.recordOut = *length;
        event.sourceRateCode = m_cut.rate.code;
        event.sourceIn = start;
        event.sourceOut = start ? std::optional(*start + *length) : end;
    }

    std::vector<std::string_view> m_lines;
    RateRequest m_request;
    std::map<std::string, std::size_t, std::less<>> m_columns;
    Cut m_cut;
};

}  // namespace

bool looksLikeAle(std::string_view text) {
    const auto lines = splitLines(text.substr(0, 65536));
    bool heading = false;
    bool data = false;
    for (const std::string_view line : lines) {
        heading = heading || trimmed(line) == "Heading";
        data = data || trimmed(line) == "Data";
    }
    return heading && data;
}

Cut readAle(std::string_view bytes, const RateRequest& request) {
    const DecodedText decoded = decodeText(bytes);
    return Reader(splitLines(decoded.text), request).read();
}

}  // namespace vantrel::timeline
