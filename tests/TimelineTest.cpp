#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "CutReport.h"
#include "EdlReader.h"
#include "EventTable.h"
#include "FrameRate.h"
#include "RateChoice.h"
#include "TestRows.h"
#include "TextDecoding.h"
#include "TimelineReader.h"

using namespace vantrel;
using namespace vantrel::timeline;

namespace {

// Which rate a file is read at: what it says, what was asked for, the code and the reason.
struct RateRow {
    const char* name;
    RateEvidence evidence;
    RateRequest request;
    int code;
    std::string reason;
};

class RateChoices : public testing::TestWithParam<RateRow> {};

TEST_P(RateChoices, FollowTheFileWhereTheRequestCannotHoldIt) {
    const RateRow& row = GetParam();
    const RateChoice choice = chooseRate(row.evidence, row.request);
    EXPECT_EQ(choice.code, row.code);
    EXPECT_EQ(choice.reason(), row.reason);
    EXPECT_EQ(choice.givenRateRejected, row.request.origin == RateOrigin::GivenRate &&
                                            row.reason.find("cannot hold") != std::string::npos);
}

constexpr auto kFile = RateOrigin::File;
constexpr auto kCurrent = RateOrigin::CurrentRate;
constexpr auto kGiven = RateOrigin::GivenRate;
constexpr auto kDrop = FcmCounting::Drop;
constexpr auto kNonDrop = FcmCounting::NonDrop;
constexpr auto kNoFcm = FcmCounting::None;
constexpr auto kUnknown = FcmCounting::Unknown;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Table, RateChoices, testing::Values(
    // Each family from its largest label, both sides of every boundary.
    RateRow{"labels_23_are_24", {kNoFcm, false, 23}, {kFile, 0}, DisplayState24fps, "from its frame labels"},
    RateRow{"label_24_is_25", {kNoFcm, false, 24}, {kFile, 0}, DisplayState25fps, "from its frame labels"},
    RateRow{"label_25_is_30", {kNoFcm, false, 25}, {kFile, 0}, DisplayState30fps, "from its frame labels"},
    RateRow{"label_29_is_30", {kNoFcm, false, 29}, {kFile, 0}, DisplayState30fps, "from its frame labels"},
    RateRow{"label_30_is_48", {kNoFcm, false, 30}, {kFile, 0}, DisplayState48fps, "from its frame labels"},
    RateRow{"label_47_is_48", {kNonDrop, false, 47}, {kFile, 0}, DisplayState48fps, "from its FCM line and frame labels"},
    RateRow{"label_48_is_50", {kNoFcm, false, 48}, {kFile, 0}, DisplayState50fps, "from its frame labels"},
    RateRow{"label_50_is_60", {kNoFcm, false, 50}, {kFile, 0}, DisplayState60fps, "from its frame labels"},
    RateRow{"label_60_is_72", {kNoFcm, false, 60}, {kFile, 0}, DisplayState72fps, "from its frame labels"},
    RateRow{"label_72_is_96", {kNoFcm, false, 72}, {kFile, 0}, DisplayState96fps, "from its frame labels"},
    RateRow{"label_96_is_100", {kNoFcm, false, 96}, {kFile, 0}, DisplayState100fps, "from its frame labels"},
    RateRow{"label_100_is_120", {kNoFcm, false, 100}, {kFile, 0}, DisplayState120fps, "from its frame labels"},
    RateRow{"label_120_fits_none", {kNoFcm, false, 120}, {kFile, 0}, DisplayState120fps, "from its frame labels, which no rate holds"},
    // Drop frame picks the smallest family that counts it.
    RateRow{"drop_labels_23_are_29d", {kDrop, false, 23}, {kFile, 0}, DisplayState29drop, "from its FCM line and frame labels"},
    RateRow{"drop_label_24_is_29d", {kDrop, false, 24}, {kFile, 0}, DisplayState29drop, "from its FCM line and frame labels"},
    RateRow{"drop_label_30_is_59d", {kDrop, false, 30}, {kFile, 0}, DisplayState59drop, "from its FCM line and frame labels"},
    RateRow{"drop_label_60_is_119d", {kDrop, false, 60}, {kFile, 0}, DisplayState119drop, "from its FCM line and frame labels"},
    RateRow{"semicolons_without_fcm_drop", {kNoFcm, true, 29}, {kFile, 0}, DisplayState29drop, "from its ';' separators and frame labels"},
    RateRow{"non_drop_fcm_beats_semicolons", {kNonDrop, true, 29}, {kFile, 0}, DisplayState30fps, "from its FCM line and frame labels"},
    RateRow{"unknown_fcm_reads_non_drop", {kUnknown, true, 29}, {kFile, 0}, DisplayState30fps, "from its FCM line and frame labels"},
    // The current rate counts while it holds the labels and the file's counting.
    RateRow{"current_holds", {kNoFcm, false, 22}, {kCurrent, DisplayState25fps}, DisplayState25fps, "the current rate"},
    RateRow{"current_takes_drop_twin", {kDrop, false, 29}, {kCurrent, DisplayState29nondrop}, DisplayState29drop, "the current rate, drop frame by its FCM line"},
    RateRow{"current_takes_non_drop_twin", {kNonDrop, false, 29}, {kCurrent, DisplayState29drop}, DisplayState29nondrop, "the current rate, non-drop by its FCM line"},
    RateRow{"current_24_drop_is_29d", {kDrop, false, 20}, {kCurrent, DisplayState24fps}, DisplayState29drop, "from its FCM line and frame labels; the current rate 24 has no drop frame"},
    RateRow{"current_23d_keeps_drop", {kDrop, false, 23}, {kCurrent, DisplayState23drop}, DisplayState23drop, "the current rate"},
    RateRow{"current_23d_non_drop_twin", {kNonDrop, false, 23}, {kCurrent, DisplayState23drop}, DisplayState23nondrop, "the current rate, non-drop by its FCM line"},
    RateRow{"given_24_drop_twin", {kDrop, false, 23}, {kGiven, DisplayState24fps}, DisplayState23drop, "the rate given, drop frame by its FCM line"},
    RateRow{"current_59n_semicolons", {kNoFcm, true, 59}, {kCurrent, DisplayState59nondrop}, DisplayState59drop, "the current rate, drop frame by its ';' separators"},
    RateRow{"current_25_cannot_hold_29", {kDrop, false, 29}, {kCurrent, DisplayState25fps}, DisplayState29drop, "from its FCM line and frame labels; the current rate 25 cannot hold them"},
    RateRow{"current_25_has_no_drop_frame", {kDrop, false, 20}, {kCurrent, DisplayState25fps}, DisplayState29drop, "from its FCM line and frame labels; the current rate 25 has no drop frame"},
    RateRow{"current_23n_cannot_hold_24", {kNonDrop, false, 24}, {kCurrent, DisplayState23nondrop}, DisplayState25fps, "from its FCM line and frame labels; the current rate 23.976 cannot hold them"},
    RateRow{"current_119d_holds_119", {kDrop, false, 119}, {kCurrent, DisplayState119drop}, DisplayState119drop, "the current rate"},
    // A given rate is the user's word on the counting, but it must hold the labels.
    RateRow{"given_25_keeps_non_drop", {kDrop, false, 24}, {kGiven, DisplayState25fps}, DisplayState25fps, "the rate given"},
    RateRow{"given_25_rejected", {kNoFcm, false, 25}, {kGiven, DisplayState25fps}, DisplayState30fps, "from its frame labels; the rate given 25 cannot hold them"},
    RateRow{"given_47n_holds_47", {kNoFcm, false, 47}, {kGiven, DisplayState47nondrop}, DisplayState47nondrop, "the rate given"},
    RateRow{"given_95n_rejected_at_96", {kNoFcm, false, 96}, {kGiven, DisplayState95nondrop}, DisplayState100fps, "from its frame labels; the rate given 95.904 cannot hold them"},
    RateRow{"no_events_keep_the_request", {kNoFcm, false, -1}, {kCurrent, DisplayState119nondrop}, DisplayState119nondrop, "the current rate"}),
    rowName<RateRow>);
// clang-format on

TEST(RateNames, NameEveryRateAsEditorsSayIt) {
    std::string names;
    for (const FrameRate& rate : kFrameRates) names += rateName(rate.code) + ",";
    EXPECT_EQ(
        names,
        "24,25,30,23.976 DF,29.97 DF,23.976,29.97,48,50,60,59.94 DF,47.952,59.94,72,96,95.904,"
        "100,119.88,119.88 DF,120,");
}

// Bytes as files from editing systems hold them, and the UTF-8 text a reader gets.
struct DecodingRow {
    const char* name;
    std::string bytes;
    std::string text;
    Encoding encoding;
};

class Decoding : public testing::TestWithParam<DecodingRow> {};

TEST_P(Decoding, GivesUtf8WhateverTheFileWas) {
    const DecodedText decoded = decodeText(GetParam().bytes);
    EXPECT_EQ(decoded.text, GetParam().text);
    EXPECT_EQ(decoded.encoding, GetParam().encoding);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Table, Decoding, testing::Values(
    DecodingRow{"utf8_bom_dropped", "\xEF\xBB\xBFTITLE: \xC3\xA9t\xC3\xA9", "TITLE: \xC3\xA9t\xC3\xA9", Encoding::Utf8},
    DecodingRow{"latin1_letters", "caf\xE9 \xF6\xDF", "caf\xC3\xA9 \xC3\xB6\xC3\x9F", Encoding::Latin1},
    DecodingRow{"mac_roman_letters", "caf\x8E \x9A\xA7\r", "caf\xC3\xA9 \xC3\xB6\xC3\x9F\r", Encoding::MacRoman},
    DecodingRow{"tie_with_cr_ends_is_mac_roman", "\x8E\xE9\r", "\xC3\xA9\xC3\x88\r", Encoding::MacRoman},
    DecodingRow{"tie_with_lf_ends_is_latin1", "\x8E\xE9\n", "\xEF\xBF\xBD\xC3\xA9\n", Encoding::Latin1},
    DecodingRow{"mac_roman_symbols", "\x8E\x8F\x9F\x8A\xA5\xB0\xDB", "\xC3\xA9\xC3\xA8\xC3\xBC\xC3\xA4\xE2\x80\xA2\xE2\x88\x9E\xE2\x82\xAC", Encoding::MacRoman},
    DecodingRow{"controls_replaced", std::string("a\x01\x1B\tb\x7F", 6), "a\xEF\xBF\xBD\xEF\xBF\xBD\tb\xEF\xBF\xBD", Encoding::Utf8},
    DecodingRow{"bad_utf8_after_bom", "\xEF\xBB\xBF" "a\xC3", "a\xEF\xBF\xBD", Encoding::Utf8},
    DecodingRow{"overlong_is_not_utf8", "\xC0\xAF", "\xC3\x80\xC2\xAF", Encoding::Latin1},
    DecodingRow{"utf16_le_bom", std::string("\xFF\xFE" "0\0" "1\0" "\xE9\0" "\x3D\xD8\x00\xDE", 12), "01\xC3\xA9\xF0\x9F\x98\x80", Encoding::Utf16},
    DecodingRow{"utf16_be_without_bom", std::string("\0T\0I\0T\0L\0E", 10), "TITLE", Encoding::Utf16},
    DecodingRow{"padding_dropped", std::string("001\n\0\0\x1A", 7), "001\n", Encoding::Utf8},
    DecodingRow{"nul_inside_is_binary", std::string("001\0\n002", 8), "", Encoding::Binary}),
    rowName<DecodingRow>);
// clang-format on

TEST(Lines, SplitAtEveryKindOfLineEnd) {
    const std::vector<std::string_view> lines = splitLines("a\rb\r\nc\n\nd\r\r\ne");
    EXPECT_EQ(lines, (std::vector<std::string_view>{"a", "b", "c", "", "d", "", "e"}));
    EXPECT_EQ(splitLines("x\n"), std::vector<std::string_view>{"x"});
}

// What the reader keeps of an event besides its record: the source at its own rate, the clip
// name, the notes after it.
struct EventRow {
    const char* name;
    std::string edl;
    std::string expected;  // "source in-out at code | clip | notes | transition | speed"
};

class EdlEvents : public testing::TestWithParam<EventRow> {};

TEST_P(EdlEvents, KeepWhatFollowsThem) {
    const Cut cut = readEdl(GetParam().edl, {RateOrigin::File, 0});
    ASSERT_FALSE(cut.events.empty());
    const Event& event = cut.events.back();
    Calc writer;
    writer.setTimecodeNotation(TimecodeNotation::Smpte);
    writer.setFps(event.sourceRateCode);
    const auto source = [&](const std::optional<double>& frames) {
        return frames ? writer.stringFromFramecount(*frames) : std::string("none");
    };
    std::string notes;
    for (const std::string& note : event.notes) notes += "[" + note + "]";
    const std::string speed = event.speed ? std::to_string(static_cast<int>(*event.speed)) : "-";
    EXPECT_EQ(source(event.sourceIn) + "-" + source(event.sourceOut) + " at " +
                  rateName(event.sourceRateCode) + " | " + event.clipName + " | " + notes + " | " +
                  event.transition + " | " + speed,
              GetParam().expected);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Table, EdlEvents, testing::Values(
    EventRow{"dissolve_takes_incoming_clip", "FCM: DROP FRAME\n001 A V C 00:00:00;00 00:00:00;00 01:00:00;00 01:00:00;00\n001 B V D 030 00:10:00;00 00:10:02;00 01:00:00;00 01:00:02;00\n* FROM CLIP NAME: a.mov\n* TO CLIP NAME: b.mov\n", "00:10:00;00-00:10:02;00 at 29.97 DF | b.mov | [* FROM CLIP NAME: a.mov][* TO CLIP NAME: b.mov] | D 030 | -"},
    EventRow{"clip_name_without_star", "001 A V C 00:00:01:00 00:00:02:00 01:00:00:00 01:00:01:00\nFROM CLIP NAME:   shot 1  \nREM done\n", "00:00:01:00-00:00:02:00 at 24 | shot 1 | [FROM CLIP NAME:   shot 1][REM done] | C | -"},
    EventRow{"later_fcm_changes_sources_only", "FCM: DROP FRAME\n001 A V C 00:00:00;00 00:00:01;00 01:00:00;00 01:00:01;00\nFCM: NON-DROP FRAME\n002 B V C 00:01:00:00 00:01:00:10 01:00:01;00 01:00:01;10\n", "00:01:00:00-00:01:00:10 at 29.97 |  |  | C | -"},
    EventRow{"skipped_source_label_is_a_note", "FCM: DROP FRAME\n001 A V C 00:01:00;00 00:01:00;10 01:00:00;00 01:00:01;29\n", "none-00:01:00;10 at 29.97 DF |  | [source '00:01:00;00' is a label that drop-frame counting skips] | C | -"},
    EventRow{"frame_number_sources", "001 A V C 9 64 01:00:00:00 01:00:01:00\n", "00:00:00:09-00:00:02:16 at 24 |  |  | C | -"},
    EventRow{"motion_effect_speed", "001 A V C 00:00:00:00 00:00:02:00 01:00:00:00 01:00:01:00\nM2   A       048.0                00:00:00:00\n", "00:00:00:00-00:00:02:00 at 24 |  | [M2   A       048.0                00:00:00:00] | C | 48"},
    EventRow{"key_background_transition", "002 BL V K B 000 00:00:00:00 00:00:01:00 01:00:00:00 01:00:01:00\n", "00:00:00:00-00:00:01:00 at 24 |  |  | K B 000 | -"},
    EventRow{"long_reel_and_six_digits", "000123 " + std::string(128, 'R') + " A12/V W001 020 00:00:00:00 00:00:01:00 01:00:00:00 01:00:01:00\n", "00:00:00:00-00:00:01:00 at 24 |  |  | W001 020 | -"}),
    rowName<EventRow>);
// clang-format on

// The table of the cut window and what it copies and saves.
TEST(EventTables, ListGapsAndOverlapsAfterTheirEvents) {
    const std::string edl =
        "001 A V C 00:00:00:00 00:00:01:00 01:00:00:00 01:00:01:00\n"
        "002 B V C 00:00:00:00 00:00:01:00 01:00:02:00 01:00:03:00\n"
        "* FROM CLIP NAME: b, \"quoted\"\n"
        "003 M A C 00:00:00:00 00:00:01:00 01:00:00:00 01:00:02:12\n"
        "004 N A C 00:00:00:00 00:00:01:00 01:00:02:00 01:00:04:00\n";
    const EventTable table(readEdl(edl, {RateOrigin::GivenRate, DisplayState25fps}),
                           TimecodeNotation::Smpte);
    ASSERT_EQ(table.rowCount(), 6u);
    std::vector<std::size_t> all{0, 1, 2, 3, 4, 5};
    EXPECT_EQ(
        table.tabSeparated(all),
        "001\tA\tV\tC\t01:00:00:00\t01:00:01:00\t00:00:01:00\t25\t00:00:00:00\t00:00:01:00\t\n"
        "gap\t\tV\t\t01:00:01:00\t01:00:02:00\t00:00:01:00\t25\t\t\tafter 001, before 002\n"
        "002\tB\tV\tC\t01:00:02:00\t01:00:03:00\t00:00:01:00\t25\t00:00:00:00\t00:00:01:00\tb, "
        "\"quoted\"\n"
        "003\tM\tA\tC\t01:00:00:00\t01:00:02:12\t00:00:02:12\t62\t00:00:00:00\t00:00:01:00\t\n"
        "overlap\t\tA\t\t01:00:02:00\t01:00:02:12\t00:00:00:12\t12\t\t\tafter 003, before 004\n"
        "004\tN\tA\tC\t01:00:02:00\t01:00:04:00\t00:00:02:00\t50\t00:00:00:00\t00:00:01:00\t\n");
    EXPECT_EQ(table.commaSeparated({2}),
              "Event,Reel,Track,Transition,Record In,Record Out,Duration,Frames,Source In,"
              "Source Out,Clip Name\r\n"
              "002,B,V,C,01:00:02:00,01:00:03:00,00:00:01:00,25,00:00:00:00,00:00:01:00,"
              "\"b, \"\"quoted\"\"\"\r\n");
    EXPECT_EQ(table.figure(1, EventTable::Column::Number), 1.5);
    EXPECT_EQ(table.figure(4, EventTable::Column::Duration), 12.0);
    EXPECT_EQ(table.trackRows()[1],
              (std::array<std::string, 8>{"A", "2", "00:00:04:12", "112", "01:00:00:00",
                                          "01:00:04:00", "0", "1"}));
}

// A long line a problem names is cut short, but never inside a character: whatever the reader.
TEST(Problems, KeepTheirLinesShortAndWhole) {
    // 199 bytes before a two-byte character, in a line that loses its event.
    const std::string edl = "001 " + std::string(195, 'x');
    const std::string ale = std::string(199, 'x');
    for (const auto& [file, kept] :
         {std::pair{edl + "\xC3\xA9 V C 0 1 01:00:00:00 00:00:00:00\n", edl},
          {"Heading\nFPS\t25\n\nColumn\nName\tStart\n\nData\n" + ale + "\xC3\xA9\n", ale}}) {
        const Cut cut = readTimeline(file, {});
        ASSERT_EQ(cut.problems.size(), 1u) << cut.format;
        EXPECT_EQ(cut.problems.front().text, kept) << cut.format;
    }
}

// What a broken or hostile file may hold that no cut can: places beyond 10^12 frames or not a
// number, events that end before they start, a root named only in a comment.
TEST(Readers, TurnAwayEventsNoCutCanHold) {
    const std::string fcpxml =
        "<fcpxml version=\"1.10\"><resources><format id=\"r1\" "
        "frameDuration=\"1/25s\"/></resources>"
        "<library><event><project name=\"p\"><sequence format=\"r1\"><spine>"
        "<clip name=\"far\" offset=\"9000000000000000000s\" duration=\"1s\"/>"
        "<clip name=\"backwards\" offset=\"10s\" duration=\"-1s\"/>"
        "<clip name=\"kept\" offset=\"0s\" duration=\"1s\"/></spine></sequence></project>"
        "</event></library></fcpxml>";
    const Cut cut = readTimeline(fcpxml, {});
    ASSERT_EQ(cut.events.size(), 1u);
    EXPECT_EQ(cut.events.front().clipName, "kept");
    EXPECT_EQ(cut.lostEvents, 2u);
    EXPECT_EQ(cut.problems[1].message, "event 002 ends before it starts");
    const Cut otio = readTimeline(
        "{\"OTIO_SCHEMA\": \"Timeline.1\", \"global_start_time\": {\"rate\": 24, \"value\": 0},"
        " \"tracks\": {\"OTIO_SCHEMA\": \"Stack.1\", \"children\": [{\"OTIO_SCHEMA\": \"Track.1\","
        " \"children\": [{\"OTIO_SCHEMA\": \"Clip.1\", \"source_range\": {\"duration\":"
        " {\"rate\": 1e-300, \"value\": 1e300}}}]}]}}",
        {});
    EXPECT_TRUE(otio.events.empty());
    EXPECT_EQ(otio.lostEvents, 1u);
    EXPECT_EQ(readTimeline("<!-- <xmeml> --><fcpxml version=\"1.5\"/>", {}).format, "FCPXML");
    EXPECT_EQ(readTimeline(fcpxml.substr(0, 150), {}).problems.front().message,
              "XML cut short at byte 149: Error parsing start element tag");
    // An XML file that says it is UTF-8 and is not.
    std::string latin = fcpxml;
    latin.replace(latin.find("kept"), 4, "k\xE9pt");
    EXPECT_EQ(readTimeline(latin, {}).events.front().clipName, "k\xEF\xBF\xBDpt");
}

// What each reader makes of a construct an export may hold: "code| track in-out transition
// reel; ..." and the problems it names.
struct ForeignRow {
    const char* name;
    std::string file;
    std::string events;
    std::string problems;
};

class ForeignFiles : public testing::TestWithParam<ForeignRow> {};

TEST_P(ForeignFiles, PlaceEveryClipAsItsEditorDid) {
    const Cut cut = readTimeline(GetParam().file, {});
    std::string events = rateName(cut.rate.code) + "|";
    for (const Event& event : cut.events) {
        events += " " + event.track + " " + std::to_string(std::llround(event.recordIn)) + "-" +
                  std::to_string(std::llround(event.recordOut)) + " " + event.transition + " " +
                  event.reel;
        if (event.sourceIn && event.sourceRateCode != cut.rate.code) {
            events += " src " + rateName(event.sourceRateCode) + " " +
                      std::to_string(std::llround(*event.sourceIn)) + "-" +
                      std::to_string(std::llround(event.sourceOut.value_or(-1)));
        }
        events += ";";
    }
    std::string problems;
    for (const Problem& problem : cut.problems) problems += problem.message + ";";
    EXPECT_EQ(events, GetParam().events);
    EXPECT_EQ(problems, GetParam().problems);
}

std::string fcpxml(const std::string& body, const std::string& version = "1.10") {
    return "<fcpxml version=\"" + version +
           "\"><resources><format id=\"r1\" frameDuration=\"1/25s\"/><format id=\"r3\" "
           "frameDuration=\"1/50s\"/>"
           "<media id=\"r2\" name=\"Compound\"><sequence format=\"r1\"/></media></resources>" +
           body + "</fcpxml>";
}

std::string fcpxmlSpine(const std::string& spine) {
    return fcpxml("<library><event><project name=\"p\"><sequence format=\"r1\"><spine>" + spine +
                  "</spine></sequence></project></event></library>");
}

std::string otioClip(const std::string& name, int value, int rate) {
    return R"({"OTIO_SCHEMA": "Clip.1", "name": ")" + name +
           R"(", "source_range": {"duration": {"rate": )" + std::to_string(rate) +
           R"(, "value": )" + std::to_string(value) + "}}},";
}

std::string otio(const std::string& items,
                 const std::string& start = "{\"rate\": 24, \"value\": 0}",
                 const std::string& name = "t") {
    return R"({"OTIO_SCHEMA": "Timeline.1", "name": ")" + name + R"(", "global_start_time": )" +
           start +
           R"(, "tracks": {"OTIO_SCHEMA": "Stack.1", "children": [{"OTIO_SCHEMA": "Track.1", "children": [)" +
           items + R"({"OTIO_SCHEMA": "Gap.1"}]}]}})";
}

std::string xmeml(const std::string& sequences) {
    return "<xmeml version=\"4\">" + sequences + "</xmeml>";
}

std::string xmemlSequence(const std::string& name, const std::string& clips) {
    return "<sequence><name>" + name +
           "</name><rate><timebase>25</timebase></rate><media><video><track>" + clips +
           "</track></video></media></sequence>";
}

const std::string kOtioGap =
    R"({"OTIO_SCHEMA": "Gap.1", "source_range": {"duration": {"rate": 24, "value": 24}}},)";
const std::string kOtioDissolve =
    R"({"OTIO_SCHEMA": "Transition.1", "in_offset": {"rate": 24, "value": 6}, "out_offset": {"rate": 24, "value": 6}},)";
const std::string kXmemlNest =
    "<clipitem><name>n</name><start>0</start><end>25</end><sequence id=\"s9\"/></clipitem>";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Table, ForeignFiles, testing::Values(
    ForeignRow{"otio_other_rate_places_do_not_drift", otio(otioClip("a", 13, 25) + otioClip("b", 13, 25) + otioClip("c", 13, 25)), "24| V1 0-12 C a; V1 12-25 C b; V1 25-37 C c;", ""},
    ForeignRow{"otio_dissolve_into_gap_is_a_fade", otio(otioClip("a", 24, 24) + kOtioDissolve + kOtioGap + otioClip("b", 24, 24)), "24| V1 0-24 C a; V1 48-72 C b;", ""},
    ForeignRow{"otio_dissolve_between_clips", otio(otioClip("a", 24, 24) + kOtioDissolve + otioClip("b", 24, 24)), "24| V1 0-24 C a; V1 24-48 D 012 b;", ""},
    ForeignRow{"otio_rate_from_media_range", otio(R"({"OTIO_SCHEMA": "Clip.1", "name": "m", "media_reference": {"OTIO_SCHEMA": "ExternalReference.1", "available_range": {"duration": {"rate": 25, "value": 50}}}},)", "null"), "25| V1 0-50 C m;", ""},
    ForeignRow{"otio_rate_from_nested_stack", otio(R"({"OTIO_SCHEMA": "Stack.1", "name": "nest", "children": [{"OTIO_SCHEMA": "Track.1", "children": [)" + otioClip("in", 60, 30) + R"({"OTIO_SCHEMA": "Gap.1"}]}]},)", "null"), "30| V1 0-60 C nest;", ""},
    ForeignRow{"otio_unnamed_second_timeline", R"({"OTIO_SCHEMA": "SerializableCollection.1", "children": [)" + otio(otioClip("a", 24, 24)) + "," + otio(otioClip("b", 48, 24), "null", "") + "," + otio("", "null", "u") + "]}", "24| V1 0-24 C a;", "the collection holds more timelines; the first is read, not an unnamed one, u;"},
    ForeignRow{"fcpxml_audition_takes_its_pick", fcpxmlSpine(R"(<audition offset="0s"><clip name="pick" duration="2s"/><clip name="alt" duration="5s"/></audition><clip name="next" offset="2s" duration="1s"/>)"), "25| V1 0-50 C pick; V1 50-75 C next;", ""},
    ForeignRow{"fcpxml_dissolve_into_gap_is_a_fade", fcpxmlSpine(R"(<clip name="a" offset="0s" duration="1s"/><transition duration="1/5s"/><gap offset="1s" duration="1s"/><clip name="b" offset="2s" duration="1s"/>)"), "25| V1 0-25 C a; V1 50-75 C b;", ""},
    ForeignRow{"fcpxml_connected_finer_than_any_frame", fcpxmlSpine(R"(<clip name="a" offset="0s" start="1/9223372036854775783s" duration="1s"><clip name="b" lane="1" offset="1/9223372036854775643s" duration="1s"/></clip>)"), "25| V1 0-25 C a; V2 0-25 C b;", ""},
    ForeignRow{"fcpxml_lowest_start_connected", fcpxmlSpine(R"(<clip name="a" offset="0s" start="-9223372036854775808s" duration="1s"><clip name="b" lane="1" offset="0s" duration="1s"/></clip>)"), "25| V1 0-25 C a;", "event 002 lies beyond 10^12 frames;"},
    ForeignRow{"fcpxml_source_at_its_media_rate", fcpxmlSpine(R"(<asset-clip name="a" format="r3" offset="0s" start="2s" duration="1s"/><clip name="b" offset="1s" start="2s" duration="1s"/>)"), "25| V1 0-25 C a src 50 100-150; V1 25-50 C b;", ""},
    ForeignRow{"fcpxml_clip_list_compound_first", fcpxml(R"(<library><event><ref-clip ref="r2" name="c" duration="2s"/><asset-clip name="d" format="r1" duration="1s"/></event></library>)"), "25| clips 0-50 C Compound; clips 50-75 C d;", ""},
    ForeignRow{"fcpxml_clips_under_the_root", fcpxml(R"(<asset-clip name="e" format="r1" duration="3s"/>)"), "25| clips 0-75 C e;", ""},
    ForeignRow{"fcpxml_version_beyond_int", fcpxml("", "21474837.0"), "24|", "FCPXML version 21474837.0: 1.8 to 1.13 expected;"},
    ForeignRow{"xmeml_names_the_other_sequences", xmeml(xmemlSequence("one", "<clipitem><name>a</name><start>0</start><end>25</end></clipitem>") + xmemlSequence("two", "")), "25| V1 0-25 C a;", "the file holds 2 sequences; the first is read, not two;"},
    ForeignRow{"xmeml_nested_sequence_by_id", xmeml(xmemlSequence("main", "<clipitem><name>n</name><start>0</start><end>25</end><sequence id=\"s9\"><name>Nest</name></sequence></clipitem>" + kXmemlNest)), "25| V1 0-25 C Nest; V1 0-25 C Nest;", ""}),
    rowName<ForeignRow>);
// clang-format on

TEST(CutReports, SummaryLineGroupsFramesAndNamesTheRate) {
    Cut cut = readEdl("001 A V C 0 1 00:00:00:00 10:00:00:01\n", {RateOrigin::File, 0});
    Calc writer;
    EXPECT_EQ(summaryLine("EDL", "cut.edl", cut, summarise(cut), writer),
              "EDL cut.edl: 1 event at 24, running time 10:00:00.01 (864,001 frames)");
    EXPECT_EQ(groupedDigits(-1234567), "-1,234,567");
    EXPECT_EQ(groupedDigits(999), "999");
}

}  // namespace
