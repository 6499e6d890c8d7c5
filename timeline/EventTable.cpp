#include "EventTable.h"

#include <algorithm>
#include <charconv>
#include <numeric>

#include "NumberText.h"

namespace vantrel::timeline {

namespace {

constexpr std::array<std::string_view, EventTable::kColumnCount> kHeadings{
    "Event",    "Reel",   "Track",     "Transition", "Record In", "Record Out",
    "Duration", "Frames", "Source In", "Source Out", "Clip Name"};

std::string quotedForCsv(const std::string& field) {
    if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
    std::string quoted = "\"";
    for (const char c : field) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

// A tab or line end inside a field would split it when pasted.
std::string flattened(std::string field) {
    std::replace_if(
        field.begin(), field.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; },
        ' ');
    return field;
}

double eventNumber(const std::string& number) {
    return number_text::digitRun(number);
}

}  // namespace

EventTable::EventTable(Cut cut, TimecodeNotation notation)
    : m_cut(std::move(cut)), m_summary(summarise(m_cut)), m_rowOfEvent(m_cut.events.size()) {
    m_writer.setTimecodeNotation(notation);
    // Each seam follows the event before it; the event knows its track.
    std::vector<std::vector<std::pair<std::size_t, std::size_t>>> seamsAfter(m_cut.events.size());
    std::vector<std::size_t> trackOfEvent(m_cut.events.size());
    for (std::size_t t = 0; t < m_summary.tracks.size(); ++t) {
        const Track& track = m_summary.tracks[t];
        for (const std::size_t event : track.events) trackOfEvent[event] = t;
        for (std::size_t s = 0; s < track.seams.size(); ++s) {
            seamsAfter[track.seams[s].afterEvent].emplace_back(t, s);
        }
    }
    m_rows.reserve(m_cut.events.size() + m_cut.events.size() / 8);
    for (std::size_t event = 0; event < m_cut.events.size(); ++event) {
        m_rowOfEvent[event] = m_rows.size();
        m_rows.push_back({RowKind::Event, event, trackOfEvent[event], 0});
        for (const auto& [track, seam] : seamsAfter[event]) {
            const bool gap = m_summary.tracks[track].seams[seam].isGap();
            m_rows.push_back({gap ? RowKind::Gap : RowKind::Overlap, event, track, seam});
        }
    }
}

EventTable::RowKind EventTable::kind(std::size_t row) const {
    return m_rows[row].kind;
}

const Seam& EventTable::seamOf(const Row& row) const {
    return m_summary.tracks[row.track].seams[row.seam];
}

double EventTable::recordIn(std::size_t row) const {
    const Row& r = m_rows[row];
    if (r.kind == RowKind::Event) return m_cut.events[r.event].recordIn;
    return std::min(seamOf(r).start, seamOf(r).end);
}

double EventTable::recordOut(std::size_t row) const {
    const Row& r = m_rows[row];
    if (r.kind == RowKind::Event) return m_cut.events[r.event].recordOut;
    return std::max(seamOf(r).start, seamOf(r).end);
}

std::string EventTable::notes(std::size_t row) const {
    if (m_rows[row].kind != RowKind::Event) return {};
    std::string joinedNotes;
    for (const std::string& note : m_cut.events[m_rows[row].event].notes) {
        joinedNotes += (joinedNotes.empty() ? "" : "\n") + note;
    }
    return joinedNotes;
}

std::vector<std::size_t> EventTable::laneOfTrack() const {
    const auto key = [this](std::size_t track) {
        const std::string& name = m_summary.tracks[track].name;
        const int kind = name.starts_with('V') || name == "B" ? 0 : name.starts_with('A') ? 1 : 2;
        const auto digits = name.find_first_of("0123456789");
        int number = 1;
        if (digits != std::string::npos) {
            std::from_chars(name.data() + digits, name.data() + name.size(), number);
        }
        return std::pair{kind, number};
    };
    std::vector<std::size_t> order(m_summary.tracks.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return key(a) < key(b); });
    std::vector<std::size_t> lanes(order.size());
    for (std::size_t lane = 0; lane < order.size(); ++lane) lanes[order[lane]] = lane;
    return lanes;
}

std::string_view EventTable::heading(Column column) {
    return kHeadings[static_cast<std::size_t>(column)];
}

bool EventTable::isFigure(Column column) {
    return column == Column::Number || column == Column::RecordIn || column == Column::RecordOut ||
           column == Column::Duration || column == Column::Frames || column == Column::SourceIn ||
           column == Column::SourceOut;
}

std::string EventTable::timecode(double frames, int code) const {
    m_writer.setFps(code);
    return m_writer.stringFromFramecount(frames);
}

std::string EventTable::text(std::size_t row, Column column) const {
    const Row& r = m_rows[row];
    const Event& event = m_cut.events[r.event];
    const int code = m_cut.rateCode();
    const double length = recordOut(row) - recordIn(row);
    if (r.kind != RowKind::Event) {
        const Seam& seam = seamOf(r);
        switch (column) {
            case Column::Number:
                return r.kind == RowKind::Gap ? "gap" : "overlap";
            case Column::Track:
                return m_summary.tracks[r.track].name;
            case Column::RecordIn:
                return timecode(recordIn(row), code);
            case Column::RecordOut:
                return timecode(recordOut(row), code);
            case Column::Duration:
                return timecode(length, code);
            case Column::Frames:
                return number_text::fixed(length, 0);
            case Column::ClipName:
                return "after " + event.number + ", before " +
                       m_cut.events[seam.beforeEvent].number;
            default:
                return {};
        }
    }
    const auto source = [&](const std::optional<double>& frames) {
        return frames ? timecode(*frames, event.sourceRateCode) : std::string();
    };
    switch (column) {
        case Column::Number:
            return event.number;
        case Column::Reel:
            return event.reel;
        case Column::Track:
            return event.track;
        case Column::Transition:
            return event.transition;
        case Column::RecordIn:
            return timecode(event.recordIn, code);
        case Column::RecordOut:
            return timecode(event.recordOut, code);
        case Column::Duration:
            return timecode(length, code);
        case Column::Frames:
            return number_text::fixed(length, 0);
        case Column::SourceIn:
            return source(event.sourceIn);
        case Column::SourceOut:
            return source(event.sourceOut);
        case Column::ClipName:
            return event.clipName;
    }
    return {};
}

double EventTable::figure(std::size_t row, Column column) const {
    const Row& r = m_rows[row];
    const Event& event = m_cut.events[r.event];
    switch (column) {
        case Column::Number:
            // A gap or an overlap sorts right after the event before it.
            return eventNumber(event.number) + (r.kind == RowKind::Event ? 0.0 : 0.5);
        case Column::RecordIn:
            return recordIn(row);
        case Column::RecordOut:
            return recordOut(row);
        case Column::Duration:
        case Column::Frames:
            return recordOut(row) - recordIn(row);
        case Column::SourceIn:
            return r.kind == RowKind::Event ? event.sourceIn.value_or(-1.0) : -1.0;
        case Column::SourceOut:
            return r.kind == RowKind::Event ? event.sourceOut.value_or(-1.0) : -1.0;
        default:
            return 0.0;
    }
}

std::string EventTable::tabSeparated(const std::vector<std::size_t>& rows) const {
    std::string text;
    for (const std::size_t row : rows) {
        for (std::size_t column = 0; column < kColumnCount; ++column) {
            if (column) text += '\t';
            text += flattened(this->text(row, static_cast<Column>(column)));
        }
        text += '\n';
    }
    return text;
}

std::string EventTable::commaSeparated(const std::vector<std::size_t>& rows) const {
    std::string text;
    const auto line = [&text](auto cell) {
        for (std::size_t column = 0; column < kColumnCount; ++column) {
            if (column) text += ',';
            text += quotedForCsv(std::string(cell(static_cast<Column>(column))));
        }
        text += "\r\n";
    };
    line([](Column column) { return heading(column); });
    for (const std::size_t row : rows) line([&](Column column) { return this->text(row, column); });
    return text;
}

std::array<std::string_view, 8> EventTable::trackHeadings() {
    return {"Track", "Events", "Duration", "Frames", "First In", "Last Out", "Gaps", "Overlaps"};
}

std::vector<std::array<std::string, 8>> EventTable::trackRows() const {
    std::vector<std::array<std::string, 8>> rows;
    const int code = m_cut.rateCode();
    for (const Track& track : m_summary.tracks) {
        const auto gaps = std::count_if(track.seams.begin(), track.seams.end(),
                                        [](const Seam& seam) { return seam.isGap(); });
        const auto overlaps = static_cast<std::ptrdiff_t>(track.seams.size()) - gaps;
        rows.push_back({track.name, std::to_string(track.events.size()),
                        timecode(track.durations, code), number_text::fixed(track.durations, 0),
                        timecode(track.recordIn, code), timecode(track.recordOut, code),
                        std::to_string(gaps), std::to_string(overlaps)});
    }
    return rows;
}

}  // namespace vantrel::timeline
