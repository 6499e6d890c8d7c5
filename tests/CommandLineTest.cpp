#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "CommandLine.h"
#include "TestRows.h"

namespace {

struct CliRow {
    const char* name;
    std::vector<std::string> arguments;
    std::string input;
    std::string output;
    int status;
    const char* errors = nullptr;  // what the errors must say; else none but on a usage error
};

struct CliRun {
    std::string output;
    std::string errors;
    int status;
};

CliRun run(const std::vector<std::string>& arguments, const std::string& inputText) {
    std::istringstream input(inputText);
    std::ostringstream output;
    std::ostringstream errors;
    const int status = vantrel::runCommandLine(arguments, input, output, errors);
    return {output.str(), errors.str(), status};
}

class CommandLineContract : public testing::TestWithParam<CliRow> {};

TEST_P(CommandLineContract, PrintsOneLinePerExpression) {
    const CliRow& row = GetParam();
    const CliRun result = run(row.arguments, row.input);
    EXPECT_EQ(result.output, row.output);
    EXPECT_EQ(result.status, row.status);
    if (row.errors) {
        EXPECT_NE(result.errors.find(row.errors), std::string::npos) << result.errors;
    } else {
        EXPECT_EQ(result.errors.empty(), row.status != 2) << result.errors;
    }
}

const std::string kEvent2 = "002  B V  C  00:00:10:00 00:00:11:00 01:00:01:00 01:00:02:00\n";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Cases, CommandLineContract, testing::Values(
    CliRow{"duration_sum", {"-r", "25", "--", "01:00:10.12|25+00:00:05.00"}, "", "01:00:15.12\t01:00:15.12\n", 0},
    CliRow{"readings_differ", {"--rate=25", "-d", "number", "00:00:01.00|24"}, "", "25\t24\n", 0},
    CliRow{"several_arguments", {"-dnumber", "1+2", "7/2"}, "", "3\t3\n4\t4\n", 0},
    CliRow{"rejected_leaves_fields_empty", {"5|25", "1+2"}, "", "\t\n00:00:00.03\t00:00:00.03\n", 1},
    CliRow{"lazy_takes_first_match", {"-l", "--display", "number", "5|25"}, "", "5\t5\n", 0},
    CliRow{"exact_at_120_below_100_hours", {"-r", "120", "--", "99:59:59.119", "39:59:59.118+1"}, "", "99:59:59.119\t99:59:59.119\n39:59:59.119\t39:59:59.119\n", 0},
    CliRow{"exact_at_100", {"-r", "100", "--", "50:00:00.01"}, "", "50:00:00.01\t50:00:00.01\n", 0},
    CliRow{"exact_at_60", {"-r", "60", "--", "99:59:59.59", "99:59:59.58+1"}, "", "99:59:59.59\t99:59:59.59\n99:59:59.59\t99:59:59.59\n", 0},
    CliRow{"wrap_before_midnight", {"-r", "25", "--wrap", "--", "00:00:00:00 - 1", "23:59:59:24 + 1", "47:00:00:00 + 2:00:00:00"}, "", "23:59:59.24\t23:59:59.24\n00:00:00.00\t00:00:00.00\n01:00:00.00\t01:00:00.00\n", 0},
    CliRow{"wrap_drop_frame_smpte", {"-r", "29d", "--wrap", "--notation", "smpte", "--", "00:00:00;00 - 1", "00:10:00;00 - 00:10:00;01"}, "", "23:59:59;29\t23:59:59;29\n23:59:59;29\t23:59:59;29\n", 0},
    CliRow{"wrap_at_119d", {"-r", "119d", "--wrap", "-n", "smpte", "--", "00:00:00;000-1"}, "", "23:59:59;119\t23:59:59;119\n", 0},
    CliRow{"wrap_past_the_bound", {"-r", "120", "--wrap", "--", "999*01:00:00:000+1", "00-999*01:00:00:000"}, "", "15:00:00.001\t15:00:00.001\n09:00:00.000\t09:00:00.000\n", 0},
    CliRow{"wrap_keeps_numbers_signed", {"-r", "25", "--wrap", "-d", "number", "--", "00:00:00:00 - 1"}, "", "-1\t-1\n", 0},
    CliRow{"ticks_of_a_frame_at_23n", {"-r", "23n", "-d", "ticks", "--", "1"}, "", "10594584000\t10594584000\n", 0},
    CliRow{"rational_of_a_frame_at_23n", {"-r", "23n", "-d", "rational", "--", "1"}, "", "1001/24000s\t1001/24000s\n", 0},
    CliRow{"ticks_of_an_hour_at_24", {"-r", "24", "-d", "ticks", "--", "01:00:00:00"}, "", "914457600000000\t914457600000000\n", 0},
    CliRow{"rational_whole_seconds_and_suffix", {"-r", "25", "-d", "rational", "--", "01:00:00:00|24"}, "", "3600s\t3456s\n", 0},
    CliRow{"overflow_sign_is_utf8", {"-d", "number", "9999999999"}, "", "\xE2\x88\x9E\t\xE2\x88\x9E\n", 0},
    CliRow{"smpte_in_and_out", {"-r", "29d", "--notation", "smpte", "00:00:59;29+1", "01:00:00:00"}, "", "00:01:00;02\t00:01:00;02\n01:00:00;00\t01:00:00;00\n", 0},
    CliRow{"unknown_notation", {"--notation=iso", "1"}, "", "", 2},
    CliRow{"beautify_status_follows_evaluation", {"-b", "1:2:3.4|23n", "1+"}, "", "01:02:03.04|23n\n1+\n", 1},
    CliRow{"expression_after_double_dash", {"--", "-1"}, "", "\t\n", 1},
    CliRow{"options_end_at_first_expression", {"1", "-r"}, "", "00:00:00.01\t00:00:00.01\n\t\n", 1},
    CliRow{"stdin_lines", {"-r", "25", "-d", "number"}, "1+2\n00:00:01.00|24\r\nabc", "3\t3\n25\t24\n\t\n", 1},
    CliRow{"stdin_empty", {}, "", "", 0},
    CliRow{"arguments_win_over_stdin", {"-d", "number", "2"}, "3\n", "2\t2\n", 0},
    CliRow{"unknown_rate", {"-r", "26", "1"}, "", "", 2},
    CliRow{"unknown_display", {"--display", "feets", "1"}, "", "", 2},
    CliRow{"feet_at_a_gauge", {"-r", "29d", "-d", "feet", "--gauge=35mm-3perf", "1828"}, "", "85+14.1\t85+14.1\n", 0},
    CliRow{"samples_at_44k", {"-r", "25", "-d", "samples", "--sample-rate", "44100", "1"}, "", "1764\t1764\n", 0},
    CliRow{"real_time_lazy", {"-l", "-r", "23n", "-d", "realtime", "x 24"}, "", "00:00:01.001\t00:00:01.001\n", 0},
    CliRow{"unit_without_result", {"-d", "feet", "1+", "5|25"}, "", "\t\n\t\n", 1},
    CliRow{"unknown_gauge", {"--gauge", "8mm", "1"}, "", "", 2},
    CliRow{"unknown_sample_rate", {"--sample-rate=22050", "1"}, "", "", 2},
    CliRow{"exact_rates", {"--exact-rates", "-d", "number", "01:00:00.00|23n"}, "", "86486\t86400\n", 0},
    CliRow{"exact_rates_takes_no_value", {"--exact-rates=1", "1"}, "", "", 2},
    CliRow{"missing_value", {"1", "--rate"}, "", "00:00:00.01\t00:00:00.01\n\t\n", 1},
    CliRow{"missing_value_at_end", {"--rate"}, "", "", 2},
    CliRow{"unknown_option", {"-x", "1"}, "", "", 2},
    CliRow{"flag_with_value", {"--lazy=yes", "1"}, "", "", 2},
    CliRow{"disk_and_film", {"-d", "number", "--disk", "4,2,1,4", "--film=4,0", "1500"}, "", "1500\t1500\t14.6 GB\t24.3 min\t14.6 GB\t24.3 min\t28.85 m\t28.85 m\n", 0},
    CliRow{"disk_follows_each_reading", {"-r", "25", "--disk=0,0,6,0", "00:00:01.00|24"}, "", "00:00:01.00\t00:00:00.24\t22.2 MB\t46.2 min\t21.3 MB\t44.4 min\n", 0},
    CliRow{"film_in_feet", {"--film", "4,1", "--", "-1", "1500"}, "", "\t\t0.00 ft\t0.00 ft\n00:01:02.12\t00:01:02.12\t93.75 ft\t93.75 ft\n", 1},
    CliRow{"rejected_line_keeps_cached_figures", {"-d", "number", "--film", "4,0"}, "1500\n1+\n", "1500\t1500\t28.85 m\t28.85 m\n\t\t28.85 m\t28.85 m\n", 1},
    CliRow{"disk_row_outside_table", {"--disk", "7,0,0,0", "1"}, "", "", 2},
    CliRow{"disk_needs_four_rows", {"--disk", "1,2,3", "1"}, "", "", 2},
    CliRow{"disk_too_many_rows", {"--disk", "1,2,3,4,5", "1"}, "", "", 2},
    CliRow{"film_unit_outside_table", {"--film", "0,2", "1"}, "", "", 2},
    CliRow{"edl_binary_data", {"--edl", "-"}, std::string("\x7f" "ELF\x02\0\0\n", 8), "", 1, ": binary data, not an edit decision list"},
    CliRow{"edl_truncated_line", {"--edl", "-"}, "001  A V C 01:00:00:00 01:00:01:00 01:00:00:00\n" + kEvent2, "rate\t24\tfrom its frame labels\nevent\t002\tB\tV\t01:00:01.00\t01:00:02.00\t00:00:01.00\t24\ntrack\tV\t1\t00:00:01.00\t24\t01:00:01.00\t01:00:02.00\ntotal\t00:00:01.00\t24\n", 1, "line 1: an event needs"},
    CliRow{"edl_61_minutes", {"--edl", "-", "--notation", "smpte"}, "001  A V C 00:00:00:00 00:00:01:00 01:61:00:00 01:61:01:00\r\n" + kEvent2, "rate\t24\tfrom its frame labels\nevent\t002\tB\tV\t01:00:01:00\t01:00:02:00\t00:00:01:00\t24\ntrack\tV\t1\t00:00:01:00\t24\t01:00:01:00\t01:00:02:00\ntotal\t00:00:01:00\t24\n", 1, "line 1: '01:61:00:00' has more than 59"},
    CliRow{"edl_given_rate_too_small", {"-r", "25", "--edl", "-"}, "001  A V C 00:00:00:00 00:00:01:00 01:00:00:25 01:00:01:00\n" + kEvent2, "", 1, "its frame labels run to 25, which the rate 25 cannot hold; it reads at 30 (from its frame labels): leave out -r, or give -r 30\n"},
    CliRow{"edl_given_rate_holds_exactly", {"-r", "25", "--edl", "-"}, "001  A V C 00:00:00:00 00:00:01:00 01:00:00:24 01:00:01:00\n", "rate\t25\tthe rate given\nevent\t001\tA\tV\t01:00:00.24\t01:00:01.00\t00:00:00.01\t1\ntrack\tV\t1\t00:00:00.01\t1\t01:00:00.24\t01:00:01.00\ntotal\t00:00:00.01\t1\n", 0},
    CliRow{"edl_rate_from_fcm_and_labels", {"--edl", "-"}, "FCM: DROP FRAME\n001  A V C 00:00:00:00 00:00:01:00 01:00:00;28 01:00:01;29\n", "rate\t29d\tfrom its FCM line and frame labels\nevent\t001\tA\tV\t01:00:00.28\t01:00:01.29\t00:00:01.01\t31\ntrack\tV\t1\t00:00:01.01\t31\t01:00:00.28\t01:00:01.29\ntotal\t00:00:01.01\t31\n", 0},
    CliRow{"edl_rate_from_separators_at_59d", {"--edl", "-"}, "001  A V C 00:00:00:00 00:00:01:00 00:00:59;59 00:01:00;04\n", "rate\t59d\tfrom its ';' separators and frame labels\nevent\t001\tA\tV\t00:00:59.59\t00:01:00.04\t00:00:00.01\t1\ntrack\tV\t1\t00:00:00.01\t1\t00:00:59.59\t00:01:00.04\ntotal\t00:00:00.01\t1\n", 0},
    CliRow{"edl_three_digit_labels", {"--edl", "-", "-n", "smpte"}, "1 A V C 0 119 01:00:00:119 01:00:01:001\n", "rate\t120\tfrom its frame labels\nevent\t1\tA\tV\t01:00:00:119\t01:00:01:001\t00:00:00:002\t2\ntrack\tV\t1\t00:00:00:002\t2\t01:00:00:119\t01:00:01:001\ntotal\t00:00:00:002\t2\n", 0},
    CliRow{"edl_notes_kept_quietly", {"--edl", "-"}, "EP 107 MUSIC EDL\rTITLE: T\r002  B V  C  00:00:10:00 00:00:11:00 01:00:01:00 01:00:02:00\rREM TRIMMED\rFROM CLIP NAME: shot1\rAUD  3  4\r", "rate\t24\tfrom its frame labels\nevent\t002\tB\tV\t01:00:01.00\t01:00:02.00\t00:00:01.00\t24\ntrack\tV\t1\t00:00:01.00\t24\t01:00:01.00\t01:00:02.00\ntotal\t00:00:01.00\t24\n", 0},
    CliRow{"edl_unknown_fcm_warns_only", {"-r", "29d", "--edl", "-"}, "\xEF\xBB\xBF" "FCM: 29.97\r\n" + kEvent2, "rate\t29n\tthe rate given, non-drop by its FCM line\nevent\t002\tB\tV\t01:00:01.00\t01:00:02.00\t00:00:01.00\t30\ntrack\tV\t1\t00:00:01.00\t30\t01:00:01.00\t01:00:02.00\ntotal\t00:00:01.00\t30\n", 0, "line 1: warning: unknown FCM '29.97'"},
    CliRow{"edl_source_label_impossible_keeps_event", {"-r", "25", "--edl", "-"}, "000001  A V      012 00:00:00:27 64 01:00:00:00 01:00:01:00\n", "rate\t25\tthe rate given\nevent\t000001\tA\tV\t01:00:00.00\t01:00:01.00\t00:00:01.00\t25\ntrack\tV\t1\t00:00:01.00\t25\t01:00:00.00\t01:00:01.00\ntotal\t00:00:01.00\t25\n", 0, "line 1: warning: source '00:00:00:27' has frame 27 at 25 frames a second"},
    CliRow{"edl_out_before_in", {"--edl", "-"}, "001  A V C 00:00:00:00 00:00:01:00 01:00:05:00 01:00:00:00\n", "", 1, "the record out is before the record in"},
    CliRow{"edl_skipped_drop_label", {"-r", "29n", "--edl=-"}, "FCM: DROP FRAME\n001  A V C 00:00:00;00 00:00:01;00 01:01:00;00 01:01:01;00\n", "", 1, "drop-frame counting skips"},
    CliRow{"edl_empty", {"--edl", "-"}, "", "", 1, "no events"},
    CliRow{"edl_fcm_non_drop_at_29d", {"-r", "29d", "--edl", "-"}, "TITLE: X\nFCM: NON-DROP FRAME\n001  A V C 00:00:00:00 00:01:00:00 01:00:00:00 01:01:00:00\n", "rate\t29n\tthe rate given, non-drop by its FCM line\nevent\t001\tA\tV\t01:00:00.00\t01:01:00.00\t00:01:00.00\t1800\ntrack\tV\t1\t00:01:00.00\t1800\t01:00:00.00\t01:01:00.00\ntotal\t00:01:00.00\t1800\n", 0},
    CliRow{"edl_unreadable_file", {"--edl", "/nonexistent/cut.edl"}, "", "", 2, "cannot read '/nonexistent/cut.edl'"},
    CliRow{"edl_takes_no_expression", {"--edl", "cut.edl", "1"}, "", "", 2},
    CliRow{"edl_json", {"-j", "--edl", "-"}, kEvent2, "{\"event\":\"002\",\"reel\":\"B\",\"track\":\"V\",\"recordIn\":\"01:00:01.00\",\"recordOut\":\"01:00:02.00\",\"duration\":\"00:00:01.00\",\"durationFrames\":24,\"transition\":\"C\",\"sourceIn\":\"00:00:10.00\",\"sourceOut\":\"00:00:11.00\",\"clipName\":null}\n{\"track\":\"V\",\"events\":1,\"duration\":\"00:00:01.00\",\"durationFrames\":24,\"recordIn\":\"01:00:01.00\",\"recordOut\":\"01:00:02.00\",\"seams\":[]}\n{\"events\":1,\"totalFrames\":24,\"total\":\"00:00:01.00\",\"rate\":\"24\",\"rateReason\":\"from its frame labels\"}\n", 0}),
    rowName<CliRow>);
// clang-format on

// --json: each line parses back, whatever the expression holds, with the keys asked for.
struct JsonRow {
    const char* name;
    std::vector<std::string> arguments;
    nlohmann::json expected;  // the keys to check and their values
};

class JsonOutput : public testing::TestWithParam<JsonRow> {};

TEST_P(JsonOutput, ParsesBackWithItsKeys) {
    auto arguments = GetParam().arguments;
    arguments.insert(arguments.begin(), "--json");
    const CliRun result = run(arguments, "");
    ASSERT_TRUE(result.output.ends_with('\n'));
    const auto line = nlohmann::json::parse(result.output);
    for (const auto& [key, value] : GetParam().expected.items())
        EXPECT_EQ(line.at(key), value) << key;
}

using nlohmann::json;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Lines, JsonOutput, testing::Values(
    JsonRow{"accepted", {"-r", "25", "01:00:00:00|24*2"}, {{"expression", "01:00:00:00|24*2"}, {"pt", "02:00:00.00"}, {"pf", "01:55:12.00"}, {"ptFrames", 180000}, {"pfFrames", 172800}}},
    JsonRow{"refused", {"5|25"}, {{"pt", nullptr}, {"pf", nullptr}, {"ptFrames", nullptr}}},
    JsonRow{"quotes_backslashes_controls", {"--", "\"\\\t\x01\n-"}, {{"expression", "\"\\\t\x01\n-"}, {"pt", nullptr}}},
    JsonRow{"invalid_utf8_replaced", {"1+\xff"}, {{"expression", "1+\uFFFD"}, {"pt", nullptr}}},
    JsonRow{"infinity", {"-d", "number", "1/(1-1)"}, {{"pf", "∞"}, {"pfFrames", nullptr}}},
    JsonRow{"exact_frames_at_120", {"-r", "120", "16777217"}, {{"pt", "38:50:10.017"}, {"ptFrames", 16777217}, {"pfFrames", 16777217}}},
    JsonRow{"single_precision_at_24", {"-r", "24", "16777217"}, {{"ptFrames", 16777216}}},
    JsonRow{"rational_pair", {"-r", "29d", "-d", "rational", "30"}, {{"rationalPT", "1001/1000s"}, {"rationalPF", "1001/1000s"}, {"pfFrames", 30}}},
    JsonRow{"ticks_pair", {"-r", "24", "-d", "ticks", "1/48s+10584000000tk"}, {{"ticksPT", "21168000000"}, {"ticksPF", "21168000000"}}},
    JsonRow{"unit_pair", {"-r", "29d", "-d", "samples", "5"}, {{"pt", "8008"}, {"samplesPT", "8008"}, {"samplesPF", "8008"}, {"pfFrames", 5}}},
    JsonRow{"side_figures", {"--disk", "4,2,1,4", "--film=4,0", "1500"}, {{"diskSpacePT", "14.6 GB"}, {"transferTimePF", "24.3 min"}, {"filmLengthPF", "28.85 m"}}}),
    rowName<JsonRow>);
// clang-format on

// A long cut: every event read, in order, and the running time summed without loss.
TEST(CommandLine, ReadsAHundredThousandEventCut) {
    const auto timecode = [](int second) {
        char text[40];  // room for any int, which the compiler cannot rule out
        std::snprintf(text, sizeof text, "%02d:%02d:%02d:00", second / 3600 + 1, second / 60 % 60,
                      second % 60);
        return std::string(text);
    };
    std::string cut = "FCM: NON-DROP FRAME\r\n";
    for (int event = 0; event < 100000; ++event) {
        cut += std::to_string(event + 1) + "  R V  C  00:00:00:00 00:00:01:00 " + timecode(event) +
               " " + timecode(event + 1) + "\r\n";
    }
    const CliRun result = run({"-r", "25", "--edl", "-"}, cut);
    EXPECT_EQ(result.status, 0) << result.errors.substr(0, 200);
    EXPECT_TRUE(
        result.output.ends_with("event\t100000\tR\tV\t28:46:39.00\t28:46:40.00\t00:00:01.00\t25\n"
                                "track\tV\t100000\t27:46:40.00\t2500000\t01:00:00.00\t28:46:40.00\n"
                                "total\t27:46:40.00\t2500000\n"));
}

TEST(CommandLine, HelpVersionAndErrors) {
    const CliRun help = run({"--help"}, "");
    EXPECT_TRUE(help.status == 0 && help.output.starts_with("Usage: vantrel-calc [options] [--]"));
    const CliRun version = run({"--version"}, "");
    EXPECT_TRUE(version.status == 0 && version.output.starts_with("vantrel-calc "));
    EXPECT_TRUE(run({"-r", "26"}, "").errors.starts_with("vantrel-calc: unknown frame rate '26'"));
}

}  // namespace
