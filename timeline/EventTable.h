#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Calc.h"
#include "Cut.h"
#include "CutSummary.h"

namespace vantrel::timeline {

/// The cut as a table to read, sort and copy: one row per event, and one per gap or overlap
/// right after the event it follows, so that holes in the cut stand out as rows of their own.
/// Cells are written when asked for, so a table of 100,000 rows costs nothing until it is read.
class EventTable {
public:
    enum class Column {
        Number,
        Reel,
        Track,
        Transition,
        RecordIn,
        RecordOut,
        Duration,
        Frames,
        SourceIn,
        SourceOut,
        ClipName
    };
    static constexpr std::size_t kColumnCount = 11;

    enum class RowKind { Event, Gap, Overlap };

    /// Takes the cut over and sums it up.
    EventTable(Cut cut, TimecodeNotation notation);

    const Cut& cut() const { return m_cut; }
    const Summary& summary() const { return m_summary; }
    TimecodeNotation notation() const { return m_writer.timecodeNotation(); }

    std::size_t rowCount() const { return m_rows.size(); }
    RowKind kind(std::size_t row) const;
    /// The first row of an event.
    std::size_t rowOfEvent(std::size_t event) const { return m_rowOfEvent[event]; }
    /// Where the row lies on the record side, in frames, and on which track (an index of
    /// Summary::tracks).
    double recordIn(std::size_t row) const;
    double recordOut(std::size_t row) const;
    std::size_t trackOf(std::size_t row) const { return m_rows[row].track; }
    /// The comment and other lines the file holds for a row's event, one a line.
    std::string notes(std::size_t row) const;
    /// The lane of each track (an index of Summary::tracks) in a picture of the cut: video
    /// tracks from V1 up, then audio from A1 up, then the rest, as editing systems stack them,
    /// whatever order the file named them in.
    std::vector<std::size_t> laneOfTrack() const;

    static std::string_view heading(Column column);
    /// Whether the column holds figures, which sort by value and align right.
    static bool isFigure(Column column);
    std::string text(std::size_t row, Column column) const;
    /// The value a figure column sorts by: frames, or the event number.
    double figure(std::size_t row, Column column) const;

    /// The rows as tab-separated lines, as a spreadsheet pastes them.
    std::string tabSeparated(const std::vector<std::size_t>& rows) const;
    /// The headings and the rows as comma-separated values, quoted where a field needs it.
    std::string commaSeparated(const std::vector<std::size_t>& rows) const;

    /// One line per track: name, events, sum of durations, its frames, first record in, last
    /// record out, gaps, overlaps; under the headings of trackHeadings().
    std::vector<std::array<std::string, 8>> trackRows() const;
    static std::array<std::string_view, 8> trackHeadings();

private:
    struct Row {
        RowKind kind;
        std::size_t event;
        std::size_t track;
        std::size_t seam;  // within the track's seams, for a gap or an overlap
    };

    const Seam& seamOf(const Row& row) const;
    std::string timecode(double frames, int code) const;

    Cut m_cut;
    Summary m_summary;
    std::vector<Row> m_rows;
    std::vector<std::size_t> m_rowOfEvent;
    mutable Calc m_writer;
};

}  // namespace vantrel::timeline
