#include <gtest/gtest.h>

#include <charconv>
#include <clocale>
#include <cstdio>
#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <string>

#include "Calc.h"
#include "FrameRate.h"
#include "PastedColumn.h"
#include "SideCalculators.h"
#include "TestRows.h"
#include "UnitReading.h"
#include "Units.h"

using namespace vantrel;

namespace {

// One engine case: what to call (optionally in SMPTE notation), at which frame-rate code, on
// which text, and the result written as text.
struct EngineRow {
    const char* name;
    std::string call;
    int code;
    std::string input;
    std::string expected;
};

std::string text(const std::optional<std::string>& result) {
    return result.value_or("none");
}

std::string text(double value) {
    char buffer[32];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 10).ptr;
    return std::string(buffer, end);
}

double number(std::string_view digits) {
    double value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

// "1500 at 4,2,1,4": the frames and the rows chosen.
std::pair<float, std::vector<int>> framesAndRows(const std::string& input) {
    std::vector<int> rows;
    const auto at = input.find(" at ");
    std::istringstream list(at == std::string::npos ? "" : input.substr(at + 4));
    for (int row = 0; list >> row; list.ignore()) rows.push_back(row);
    return {static_cast<float>(number(input)), rows};
}

std::string spansAndLazyNumber(Calc& calc, const std::string& input) {
    std::string spans;
    for (const ColouredSpan& span : calc.colorizeLazyEvaluatedString(input)) {
        spans += span.colour == SpanColour::Black ? "[" + span.text + "]" : span.text;
    }
    const auto pt = calc.lazyevalPT(input, DisplayStateNumber);
    const auto pf = calc.lazyevalPF(input, DisplayStateNumber);
    return spans + " = " + text(pt) + (pt == pf ? "" : " / " + text(pf));
}

// "SMPTE as CLASSIC": the same frames eagerly and lazily in both readings, and the same
// beautified text, for both forms.
std::string readsAsClassic(Calc& calc, const std::string& input) {
    const std::string smpte = input.substr(0, input.find(" as "));
    const std::string classic = input.substr(input.find(" as ") + 4);
    const bool same = calc.evalPTToFrames(smpte) == calc.evalPTToFrames(classic) &&
                      calc.evalPFToFrames(smpte) == calc.evalPFToFrames(classic) &&
                      calc.lazyevalPTToFrames(smpte) == calc.lazyevalPTToFrames(classic) &&
                      calc.lazyevalPFToFrames(smpte) == calc.lazyevalPFToFrames(classic) &&
                      calc.beautifyExpression(smpte) == calc.beautifyExpression(classic);
    return std::string(same ? "same" : "differs") +
           (calc.evalPTToFrames(classic) ? "" : ", unread");
}

// "1 2 3 at 4,48000": each frame count before "at" through the unit, the results joined by blanks;
// with `eachRow`, the one frame count through the unit at each row number instead.
std::string eachUnitText(const std::string& input, bool eachRow,
                         const std::function<std::string(double, int)>& unit) {
    const auto [frames, rows] = framesAndRows(input);
    std::istringstream counts(input.substr(0, input.find(" at ")));
    std::string joined;
    for (std::string count; counts >> count;) {
        for (const int row : eachRow ? rows : std::vector<int>{rows[0]}) {
            joined += (joined.empty() ? "" : " ") + unit(number(count), row);
        }
    }
    return joined;
}

// "TEXT at GAUGE,SAMPLE RATE": the typed text with its unit literals in the engine's colours,
// the lazy number, and the text tidied.
std::string unitReading(Calc& calc, const std::string& input) {
    const auto [frames, rows] = framesAndRows("0" + input.substr(input.find(" at ")));
    const units::UnitChoice choice{&units::kGauges.at(static_cast<std::size_t>(rows[0])), rows[1]};
    const units::UnitReading reading(input.substr(0, input.find(" at ")), calc.fps(), choice);
    std::string spans;
    for (const ColouredSpan& span : reading.colouredSpans(calc)) {
        spans += span.colour == SpanColour::Black ? "[" + span.text + "]" : span.text;
    }
    const auto number = calc.lazyevalPT(reading.text(), DisplayStateNumber);
    return spans + " = " + text(number) + " ~ " + reading.beautified(calc);
}

std::string evaluated(const EngineRow& row) {
    Calc calc;
    calc.setFps(row.code);
    std::string call = row.call;
    if (call.starts_with("smpte ")) {
        calc.setTimecodeNotation(TimecodeNotation::Smpte);
        call.erase(0, 6);
    }
    if (call.starts_with("exact ")) {
        calc.setExactRates(true);
        call.erase(0, 6);
    }
    const std::string& input = row.input;
    static const std::map<std::string, int> kModes{{"time", DisplayStateTime},
                                                   {"number", DisplayStateNumber},
                                                   {"film", DisplayStateFilmLength},
                                                   {"disk", DisplayStateDiskSpace}};
    if (kModes.contains(call)) {
        const auto eager = text(calc.evalPT(input, kModes.at(call)));
        const auto lazy = text(calc.lazyevalPT(input, kModes.at(call)));
        EXPECT_FALSE(calc.pop()) << "a value left on the stack";
        return eager == lazy ? eager : eager + " / " + lazy;
    }
    const auto [frames, rows] = framesAndRows(input);
    const std::map<std::string, std::function<std::string()>> calls{
        {"frames", [&] { return calc.stringFromFramecount(number(input)); }},
        {"beautify", [&] { return calc.beautifyExpression(input); }},
        {"colour", [&] { return spansAndLazyNumber(calc, input); }},
        {"units", [&] { return unitReading(calc, input); }},
        {"as classic", [&] { return readsAsClassic(calc, input); }},
        {"read",
         [&] {
             return text(calc.evalPTToFrames(input).value_or(-1)) + " / " +
                    text(calc.evalPFToFrames(input).value_or(-1));
         }},
        {"drop",
         [&] {
             const double label = Calc::dropFCfromRealFC(number(input), row.code);
             return text(label) + " / " + text(Calc::realFCfromDropFC(label, row.code));
         }},
        {"label", [&] { return text(Calc::realFCfromDropFC(number(input), row.code)); }},
        {"disk space",
         [&] {
             const auto figures = side_calculators::diskSpaceAndTransferTime(
                 frames, {rows[0], rows[1], rows[2], rows[3]});
             return figures.diskSpace + " / " + figures.transferTime;
         }},
        {"film length", [&] { return side_calculators::filmLength(frames, rows[0], rows[1]); }},
        {"storage", [&] { return side_calculators::storageText(number(input)); }},
        {"feet",
         [&] {
             return eachUnitText(input, false, [](double count, int gauge) {
                 return units::feetAndFrames(count,
                                             units::kGauges.at(static_cast<std::size_t>(gauge)));
             });
         }},
        {"samples",
         [&] {
             return eachUnitText(input, false, [&](double count, int sampleRate) {
                 return units::samples(count, row.code, sampleRate);
             });
         }},
        {"real time",
         [&] {
             return eachUnitText(
                 input, true, [](double count, int code) { return units::realTime(count, code); });
         }},
        {"rational",
         [&] {
             return eachUnitText(input, true, [](double count, int code) {
                 return units::rationalSeconds(count, code);
             });
         }},
        {"ticks",
         [&] {
             return eachUnitText(input, true, [](double count, int code) {
                 return units::premiereTicks(count, code);
             });
         }},
        {"duration", [&] { return side_calculators::durationText(number(input)); }},
    };
    return calls.at(call)();
}

class EngineCases : public testing::TestWithParam<EngineRow> {};

// Each case holds in the C locale and in a German one, where printf writes "28,85" and strtod
// stops at the "." (Qt adopts the desktop's locale at start-up). The German locale is generated
// into the build tree (LOCPATH), so the test does not depend on what the machine has.
TEST_P(EngineCases, GiveTheirResult) {
    EXPECT_EQ(evaluated(GetParam()), GetParam().expected);
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr) << "no de_DE.UTF-8 in LOCPATH";
    char probe[8];
    std::snprintf(probe, sizeof probe, "%.1f", 2.5);
    EXPECT_STREQ(probe, "2,5");
    EXPECT_EQ(evaluated(GetParam()), GetParam().expected) << "with a decimal comma";
    std::setlocale(LC_ALL, "C");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Engine, EngineCases, testing::Values<EngineRow>(
    // Evaluation, eager / lazy where they differ
    EngineRow{"sum_as_time", "time", 1, "1+2", "00:00:00.03"},
    EngineRow{"half_to_even_up", "number", 1, "7/2", "4"},
    EngineRow{"half_to_even_down", "number", 1, "5/2", "2"},
    EngineRow{"decimals_read_with_a_point", "number", 1, "1.25*4+12.5", "18"},
    EngineRow{"single_precision", "number", 1, "16777217", "16777216"},
    EngineRow{"narrows_past_number_bound", "number", 1, "999999999", "∞ / 1000000000"},
    EngineRow{"lazy_number_bound", "number", 1, "1234567890", "∞ / 1234567936"},
    EngineRow{"beyond_both_number_bounds", "number", 1, "9999999999", "∞"},
    EngineRow{"below_number_bound", "number", 1, "1-1000000000", "-∞ / -1000000000"},
    EngineRow{"time_bound_formats", "time", 1, "86400745", "960:00:29.19"},
    EngineRow{"time_bound_narrowed_past", "time", 1, "86400749", "∞"},
    EngineRow{"time_below_bound", "time", 1, "1-86400749", "-∞"},
    EngineRow{"disk_space_shows_time", "disk", 1, "90000", "01:00:00.00"},
    EngineRow{"film_length", "film", 1, "1500", "28.85 m"},
    EngineRow{"film_lower_bound", "film", 1, "1-5200006", "-∞"},
    EngineRow{"film_within_lower_bound", "film", 1, "1-5200001", "-99999.90 m"},
    EngineRow{"film_upper_bound", "film", 1, "52000010", "∞"},
    EngineRow{"division_by_zero_film", "film", 1, "01:00:00.00|25/(1-1)", "∞"},
    EngineRow{"zero_by_zero_time", "time", 1, "00/(1-1)", "NaN"},
    EngineRow{"huge_drop_frame_count", "number", 4, "99999999999999|29d", "∞"},
    EngineRow{"scalar_first_product", "number", 1, "2*3*01:00:00.00|25*4", "2160000"},
    EngineRow{"division_after_scalar_product", "number", 1, "3*01:00:00.00/2", "none / 270000"},
    EngineRow{"lazy_reads_past_the_start", "number", 1, "-x 12", "none / 12"},
    EngineRow{"frame_count_needs_two_digits", "number", 1, "5|25", "none / 5"},
    EngineRow{"smpte_disk_space_drop", "smpte disk", 4, "107892", "01:00:00;00"},
    EngineRow{"smpte_bound_sign", "smpte time", 1, "86400749", "∞"},
    EngineRow{"hour_at_100", "number", 16, "01:00:00:00", "360000"},
    EngineRow{"hour_at_119d", "number", 18, "01:00:00;00", "431568"},
    EngineRow{"three_digit_frames_at_120", "time", 19, "00:00:00.119", "00:00:00.119"},
    EngineRow{"smpte_second_less_one_at_120", "smpte time", 19, "00:00:01:00 - 1", "00:00:00:119"},
    // SMPTE notation reads exactly as the classic form with the same digits
    EngineRow{"colons_at_25", "as classic", 1, "01:00:10:12 as 01:00:10.12", "same"},
    EngineRow{"single_digits", "as classic", 0, "1:2:3:4 as 1:2:3.4", "same"},
    EngineRow{"drop_minute", "as classic", 4, "00:01:00;02 as 00:01:00.02", "same"},
    EngineRow{"semicolons_ten_minutes", "as classic", 4, "00;10;00;00|29d as 00:10:00.00|29d", "same"},
    EngineRow{"semicolon_picks_no_rate", "as classic", 1, "00:01:00;02 as 00:01:00.02", "same"},
    EngineRow{"drop23_suffix_at_30", "as classic", 2, "00:01:00;02|23d as 00:01:00.02|23d", "same"},
    EngineRow{"mixed_separators_at_23n", "as classic", 5, "01;00:00;00|24 as 01:00:00.00|24", "same"},
    EngineRow{"sum_with_blanks", "as classic", 1, " 01:00:10:12 + 00:00:05:00  as  01:00:10.12 + 00:00:05.00 ", "same"},
    EngineRow{"edl_duration", "as classic", 4, "(01:00:22;15-01:00:00;00)*2 as (01:00:22.15-01:00:00.00)*2", "same"},
    EngineRow{"five_groups_unread", "as classic", 1, "1:01:00:10:12 as 1:01:00:10:12", "same, unread"},
    EngineRow{"three_digit_group_unread", "as classic", 1, "001:00:10:12 as 001:00:10:12", "same, unread"},
    EngineRow{"frames_with_point_unread", "as classic", 1, "01:00:10:12.5 as 01:00:10:12.5", "same, unread"},
    EngineRow{"two_groups_unread", "as classic", 1, "10;12 as 10;12", "same, unread"},
    EngineRow{"three_digit_frames_by_suffix", "as classic", 1, "00:00:00:119|120 as 00:00:00.119|120", "same"},
    EngineRow{"three_digit_frames_at_119d", "as classic", 18, "01:00:00;119 as 01:00:00.119", "same"},
    EngineRow{"three_digit_frames_unread_at_25", "as classic", 1, "00:00:00:119 as 00:00:00:119", "same, unread"},
    // Display timestamps
    EngineRow{"one_hour_at_25", "frames", 1, "90000", "01:00:00.00"},
    EngineRow{"negative_second_at_30", "frames", 2, "-30", "-00:00:01.00"},
    EngineRow{"negative_zero_has_no_sign", "frames", 1, "-0", "00:00:00.00"},
    EngineRow{"drop29_minute_1", "frames", 4, "1800", "00:01:00.02"},
    EngineRow{"drop29_ten_minutes", "frames", 4, "17982", "00:10:00.00"},
    EngineRow{"drop29_negative", "frames", 4, "-1800", "-00:01:00.02"},
    EngineRow{"hours_not_wrapped_at_24", "frames", 0, "86400750", "1000:00:31.06"},
    EngineRow{"fraction_rounds_frame_field_half_up", "frames", 1, "12.5", "00:00:00.13"},
    EngineRow{"fraction_not_carried_into_seconds", "frames", 2, "29.6", "00:00:00.30"},
    EngineRow{"nan", "frames", 1, "nan", "NaN"},
    EngineRow{"beyond_any_hour_field", "frames", 1, "1e300", "∞"},
    EngineRow{"smpte_one_hour", "smpte frames", 1, "90000", "01:00:00:00"},
    EngineRow{"smpte_drop29", "smpte frames", 4, "1800", "00:01:00;02"},
    EngineRow{"smpte_nondrop29", "smpte frames", 6, "1800", "00:01:00:00"},
    EngineRow{"smpte_drop29_negative", "smpte frames", 4, "-17982", "-00:10:00;00"},
    EngineRow{"drop59_reference", "frames", 10, "1084319", "05:01:30.03"},
    EngineRow{"smpte_drop59", "smpte frames", 10, "3600", "00:01:00;04"},
    EngineRow{"nondrop47_counts_48", "frames", 11, "172800", "01:00:00.00"},
    EngineRow{"whole72_hour", "frames", 13, "259200", "01:00:00.00"},
    EngineRow{"nondrop95_counts_96", "frames", 15, "345600", "01:00:00.00"},
    EngineRow{"drop119_minute_1", "frames", 18, "7200", "00:01:00.008"},
    EngineRow{"drop119_ten_minutes", "frames", 18, "71928", "00:10:00.000"},
    EngineRow{"smpte_drop119", "smpte frames", 18, "7200", "00:01:00;008"},
    EngineRow{"smpte_nondrop119", "smpte frames", 17, "7200", "00:01:00:000"},
    // Beautified expressions
    EngineRow{"adds_current_suffix", "beautify", 1, "1:0:5", "01:00:05.00|25"},
    EngineRow{"single_colon_with_frames_untouched", "beautify", 1, "0:30.00", "0:30.00"},
    EngineRow{"short_form", "beautify", 0, "0123", "00:00:01.23|24"},
    EngineRow{"short_form_odd_suffix_copied", "beautify", 1, "0123|2", "00:00:01.23|2"},
    EngineRow{"short_form_eight_digits", "beautify", 1, "012345678", "12:34:56.78|25"},
    EngineRow{"expression_without_spaces", "beautify", 1, "01:00:00.00 + 0100 * 2", "01:00:00.00|25+00:00:01.00|25*2"},
    EngineRow{"values_not_carried", "beautify", 1, "0:0:75", "00:00:75.00|25"},
    EngineRow{"leading_zeros_vanish", "beautify", 1, "0001:00:00.00", "01:00:00.00|25"},
    EngineRow{"tabs_are_kept", "beautify", 1, "1\t+ 2", "1\t+2"},
    EngineRow{"smpte_out", "smpte beautify", 1, "1:0:5 + 0100", "01:00:05:00|25+00:00:01:00|25"},
    EngineRow{"smpte_drop_by_suffix", "smpte beautify", 1, "01;00;00;00|29d*2", "01:00:00;00|29d*2"},
    EngineRow{"smpte_drop_by_code", "smpte beautify", 3, "0123", "00:00:01;23|23d"},
    EngineRow{"hd_suffixes_kept", "beautify", 8, "1:2:3.4|48+0:0:1.2|59d*2-0123|47n+1:0:0.0|59n", "01:02:03.04|48+00:00:01.02|59d*2-00:00:01.23|47n+01:00:00.00|59n"},
    EngineRow{"smpte_drop59_suffix", "smpte beautify", 8, "00:01:00:04|59d+0:0:1.2|60", "00:01:00;04|59d+00:00:01:02|60"},
    EngineRow{"high_suffixes_kept", "beautify", 1, "1:2:3.4|72+0:0:1.2|96*2-1:0:0.0|95n+0:0:5.99|100", "01:02:03.04|72+00:00:01.02|96*2-01:00:00.00|95n+00:00:05.99|100"},
    EngineRow{"three_digit_frames_written", "beautify", 19, "1:0:0.5+0123|119n+0:0:0.119|119d", "01:00:00.005|120+00:00:01.023|119n+00:00:00.119|119d"},
    EngineRow{"smpte_drop119_suffix", "smpte beautify", 1, "00:01:00:008|119d+0:0:1.2|100", "00:01:00;008|119d+00:00:01:02|100"},
    // Timestamps read as PT / PF frame counts (-1 for none)
    EngineRow{"suffix_24_at_25", "read", 1, "00:00:01.00|24", "25 / 24"},
    EngineRow{"frame_count_at_24", "read", 0, "123|25", "118.08 / 123"},
    EngineRow{"drop_suffix_at_25", "read", 1, "00:01:00.02|29d", "1501.501502 / 1800"},
    EngineRow{"drop_frame_count_at_25", "read", 1, "2000|29d", "1666.666667 / 1998"},
    EngineRow{"drop_suffix_at_drop_code", "read", 4, "00:00:16.20|29d", "501 / 500"},
    EngineRow{"suffix_30_at_29d", "read", 4, "01:00:00.00|30", "107892 / 108000"},
    EngineRow{"suffix_24_at_23n", "read", 5, "01:00:00.00|24", "86292 / 86400"},
    EngineRow{"blanks_around", "read", 1, "  01:00:00.00|25 ", "90000 / 90000"},
    EngineRow{"tab_after_suffix", "read", 1, "01:00:00.00|24\t", "90000 / 86400"},
    EngineRow{"short_one_hour", "read", 0, "01000000|25", "86400 / 90000"},
    EngineRow{"short_drop", "read", 4, "012345678|29d", "1357601 / 1357600"},
    EngineRow{"suffix_50_at_25", "read", 1, "01:00:00.00|50", "90000 / 180000"},
    EngineRow{"suffix_59d_at_25", "read", 1, "01:00:00.00|59d", "90000 / 215784"},
    EngineRow{"suffix_47n_at_24", "read", 0, "01:00:00.00|47n", "86486.48649 / 172800"},
    EngineRow{"drop59_minute_at_59d", "read", 10, "00:01:00.04|59d", "3600 / 3600"},
    EngineRow{"drop59_code_no_suffix", "read", 10, "00:10:00.00", "35964 / 35964"},
    EngineRow{"suffix_59n_at_60", "read", 9, "00:00:01.00|59n", "60.06006006 / 60"},
    EngineRow{"three_digits_by_suffix_at_25", "read", 1, "00:00:00.119|120", "24.79166667 / 119"},
    EngineRow{"three_digits_need_the_rate_at_25", "read", 1, "00:00:00.119", "-1 / -1"},
    EngineRow{"three_digits_other_suffix_at_120", "read", 19, "00:00:00.119|25", "-1 / -1"},
    EngineRow{"suffix_119d_at_25", "read", 1, "01:00:00.000|119d", "89999.91 / 431568"},
    EngineRow{"suffix_95n_at_96", "read", 14, "00:00:01.00|95n", "96.096 / 96"},
    EngineRow{"suffix_119n_at_120", "read", 19, "00:00:01.000|119n", "120.12 / 120"},
    EngineRow{"suffix_24_at_119n", "read", 17, "00:00:01.00|24", "119.8801199 / 24"},
    EngineRow{"suffix_72_at_24", "read", 0, "00:00:01.00|72", "24 / 72"},
    EngineRow{"suffix_100_at_25", "read", 1, "00:00:01.00|100", "25 / 100"},
    EngineRow{"exact_23n_at_24", "exact read", 0, "01:00:00.00|23n", "86486.4 / 86400"},
    EngineRow{"exact_29d_at_25", "exact read", 1, "01:00:00.00|29d", "89999.91 / 107892"},
    EngineRow{"exact_24_at_23n", "exact read", 5, "01:00:00.00|24", "86313.68631 / 86400"},
    EngineRow{"exact_59n_at_25", "exact read", 1, "01:00:00.00|59n", "90090 / 216000"},
    // Colouring: the black span in brackets, then the lazy number
    EngineRow{"trailing_operator", "colour", 1, "1+", "[1]+ = 1"},
    EngineRow{"leading_minus", "colour", 1, "-1", "-[1] = 1"},
    EngineRow{"short_frame_count", "colour", 1, "5|25", "[5]|25 = 5"},
    EngineRow{"leading_zero_number", "colour", 1, "0*5", "0*[5] = 5"},
    EngineRow{"division_after_product", "colour", 1, "3*01:00:00.00/2", "[3*01:00:00.00]/2 = 270000"},
    EngineRow{"blanks_belong_to_number", "colour", 1, "x 12 y", "x[ 12 ]y = 12"},
    EngineRow{"empty", "colour", 1, "", " = none"},
    EngineRow{"whole_expression", "colour", 1, "01:00:00.00|25*2", "[01:00:00.00|25*2] = 180000"},
    EngineRow{"non_ascii_around", "colour", 1, "é12€", "é[12]€ = 12"},
    EngineRow{"smpte_partly_typed", "colour", 1, "01:00:10:1", "[01:00:10:1] = 90251"},
    EngineRow{"smpte_frames_not_yet_typed", "colour", 1, "01:00:10:", "[01:00:10]: = 90250"},
    EngineRow{"not_smpte_point_after", "colour", 1, "01:00:10:12.5", "[01:00:10]:12.5 = 90250"},
    EngineRow{"smpte_then_operator", "colour", 1, "x01;00;10;12|25+", "x[01;00;10;12|25]+ = 90262"},
    // Unit literals: colours, lazy number and tidied text at a gauge and sample rate
    EngineRow{"feet_literal", "units", 5, "01:00:00:00 + 5400+00ft at 0,48000", "[01:00:00:00 + 5400+00ft] = 172800 ~ 01:00:00.00|23n+5400+00ft"},
    EngineRow{"no_literal_keeps_meaning", "units", 1, "5400+00 at 0,48000", "[5400+00] = 5400 ~ 5400+00"},
    EngineRow{"feet_literal_3perf", "units", 4, "2*85+14.1ft at 1,48000", "[2*85+14.1ft] = 3656 ~ 2*85+14.1ft"},
    EngineRow{"whole_feet_16mm", "units", 0, "3ft at 3,48000", "[3ft] = 120 ~ 3ft"},
    EngineRow{"samples_literal", "units", 4, "8008smp-1602smp at 0,48000", "[8008smp-1602smp] = 4 ~ 8008smp-1602smp"},
    EngineRow{"samples_literal_44k", "units", 1, "1764smp at 0,44100", "[1764smp] = 1 ~ 1764smp"},
    EngineRow{"real_time_literal", "units", 5, "01:00:03.600rt+1:30rt at 0,48000", "[01:00:03.600rt+1:30rt] = 88558 ~ 01:00:03.600rt+1:30rt"},
    EngineRow{"real_time_rounds_to_a_frame", "units", 19, "0.004rt at 0,48000", "[0.004rt] = 0 ~ 0.004rt"},
    EngineRow{"rational_literal", "units", 5, "1001/24000s + 3600s at 0,48000", "[1001/24000s + 3600s] = 86315 ~ 1001/24000s+3600s"},
    EngineRow{"rational_literal_half_frame_up", "units", 0, "1/48s+3/48s at 0,48000", "[1/48s+3/48s] = 3 ~ 1/48s+3/48s"},
    EngineRow{"ticks_literal", "units", 4, "8475667200tk*30 at 0,48000", "[8475667200tk*30] = 30 ~ 8475667200tk*30"},
    EngineRow{"ticks_literal_rounds", "units", 7, "7938000000tk+5292000001tk at 0,48000", "[7938000000tk+5292000001tk] = 3 ~ 7938000000tk+5292000001tk"},
    EngineRow{"literal_glued_to_a_letter", "units", 1, "x5ft at 0,48000", "x[5]ft = 5 ~ x5ft"},
    EngineRow{"literal_after_a_suffix_bar", "units", 1, "01:00:00.00|25rt at 0,48000", "[01:00:00.00|25]rt = 90000 ~ 01:00:00.00|25rt"},
    EngineRow{"literal_then_red", "units", 1, "2ft/0123 at 0,48000", "[2ft]/0123 = 32 ~ 2ft/00:00:01.23|25"},
    EngineRow{"three_digits_red_at_25", "colour", 1, "00:00:00.119", "[00:00:00.11]9 = 11"},
    EngineRow{"three_digits_black_at_120", "colour", 19, "00:00:00.119", "[00:00:00.119] = 119"},
    EngineRow{"other_suffix_red_at_120", "colour", 19, "00:00:00.119|25", "[00:00:00.119]|25 = 119"},
    // Drop-frame labels of real frame counts, and the labels read back
    EngineRow{"v29_last_frame_of_minute_0", "drop", 4, "1799", "1799 / 1799"},
    EngineRow{"v29_first_frame_of_minute_1", "drop", 4, "1800", "1802 / 1800"},
    EngineRow{"v29_ten_minutes", "drop", 4, "17982", "18000 / 17982"},
    EngineRow{"v23_first_frame_of_minute_1", "drop", 3, "1440", "1442 / 1440"},
    EngineRow{"v59_first_frame_of_minute_1", "drop", 10, "3600", "3604 / 3600"},
    EngineRow{"v59_end_of_first_block", "drop", 10, "35963", "35999 / 35963"},
    EngineRow{"v59_ten_minutes", "drop", 10, "35964", "36000 / 35964"},
    EngineRow{"v59_05_01_30_03", "drop", 10, "1084319", "1085403 / 1084319"},
    EngineRow{"v29_skipped_label_00", "label", 4, "1800", "1799"},
    EngineRow{"v29_first_label_after_skip", "label", 4, "1802", "1800"},
    EngineRow{"v23_skipped_label_00", "label", 3, "1440", "1439"},
    EngineRow{"v23_first_label_after_skip", "label", 3, "1442", "1440"},
    EngineRow{"v59_first_label_after_skip", "label", 10, "3604", "3600"},
    EngineRow{"v59_skipped_in_minute_2", "label", 10, "7202", "7195"},
    EngineRow{"v119_last_frame_of_minute_0", "drop", 18, "7199", "7199 / 7199"},
    EngineRow{"v119_first_frame_of_minute_1", "drop", 18, "7200", "7208 / 7200"},
    EngineRow{"v119_end_of_first_block", "drop", 18, "71927", "71999 / 71927"},
    EngineRow{"v119_ten_minutes", "drop", 18, "71928", "72000 / 71928"},
    EngineRow{"v119_last_skipped_label", "label", 18, "7207", "7199"},
    EngineRow{"v119_first_label_after_skip", "label", 18, "7208", "7200"},
    EngineRow{"half_rounds_up", "drop", 4, "1799.5", "1802 / 1800"},
    EngineRow{"below_half_rounds_down", "drop", 4, "1799.49", "1799 / 1799"},
    EngineRow{"drop_half_rounds_up", "label", 4, "1801.5", "1800"},
    EngineRow{"beyond_32_bits", "drop", 4, "3e9", "3003003004 / 3000000000"},
    EngineRow{"huge_label_passes_through", "label", 4, "1e300", "1e+300"},
    EngineRow{"infinity_passes_through", "drop", 3, "inf", "inf / inf"},
    // Side calculators: frames at resolution, aspect ratio, bit depth, transfer speed; film, unit
    EngineRow{"two_k_ten_bit", "disk space", 0, "1500 at 4,2,1,4", "14.6 GB / 24.3 min"},
    EngineRow{"ntsc_ignores_aspect_ratio", "disk space", 0, "2 at 1,3,0,4", "2.4 MB / 0.24 sec"},
    EngineRow{"pal_ignores_aspect_ratio", "disk space", 0, "25 at 0,3,6,0", "22.2 MB / 46.2 min"},
    EngineRow{"hd_ignores_aspect_ratio", "disk space", 0, "1 at 2,0,0,7", "6.7 MB / 0.02 sec"},
    EngineRow{"negative_duration", "disk space", 0, "-100 at 5,3,9,4", "-1432310 kB / -143.23 sec"},
    EngineRow{"separator_row_holds_nothing", "disk space", 0, "1500 at 4,2,5,4", "0 kB / 0.00 sec"},
    EngineRow{"sixteen_by_nine_divisor", "disk space", 0, "24 at 4,1,0,5", "181.8 MB / 6.06 sec"},
    EngineRow{"beyond_petabytes", "disk space", 0, "3e11 at 6,0,4,0", " ∞ /  ∞"},
    EngineRow{"nan_frames", "disk space", 0, "nan at 3,2,0,4", " ∞ /  ∞"},
    EngineRow{"resolution_outside_table", "disk space", 0, "1500 at 9,2,0,4", "0 kB / 0.00 sec"},
    EngineRow{"aspect_outside_table_divides_nothing", "disk space", 0, "1 at 3,-1,0,4", "3.4 MB / 0.34 sec"},
    EngineRow{"speed_outside_table", "disk space", 0, "1500 at 4,2,1,8", "14.6 GB / 0.00 sec"},
    EngineRow{"bit_depth_outside_table", "disk space", 0, "1500 at 4,2,10,4", "0 kB / 0.00 sec"},
    EngineRow{"one_megabyte", "storage", 0, "1e6", "1.0 MB"},
    EngineRow{"just_below_a_megabyte", "storage", 0, "999999", "1000 kB"},
    EngineRow{"petabytes", "storage", 0, "9.99e17", "999.0 PB"},
    EngineRow{"exabyte_overflows", "storage", 0, "1e18", " ∞"},
    EngineRow{"ten_seconds", "duration", 0, "10", "10.0 sec"},
    EngineRow{"just_below_ten_seconds", "duration", 0, "9.999", "10.00 sec"},
    EngineRow{"weeks", "duration", 0, "604800", "1.0 wk"},
    EngineRow{"thousand_weeks_overflow", "duration", 0, "604800000", " ∞"},
    EngineRow{"super8_m", "film length", 0, "1500 at 0,0", "5.77 m"},
    EngineRow{"sixteen_2perf_m", "film length", 0, "1500 at 2,0", "23.08 m"},
    EngineRow{"thirtyfive_4perf_ft", "film length", 0, "1500 at 4,1", "93.75 ft"},
    EngineRow{"seventy_ft", "film length", 0, "1500 at 5,1", "116.07 ft"},
    EngineRow{"one_second_m", "film length", 0, "24 at 4,0", "0.46 m"},
    EngineRow{"film_negative", "film length", 0, "-100 at 4,1", "-6.25 ft"},
    EngineRow{"too_long", "film length", 0, "1e9 at 4,0", "∞"},
    EngineRow{"too_long_negative", "film length", 0, "-1e9 at 4,0", "-∞"},
    EngineRow{"film_of_nan", "film length", 0, "nan at 4,0", "∞"},
    EngineRow{"gauge_outside_table", "film length", 0, "1500 at 6,0", "∞"},
    // Units: feet+frames at a gauge, samples at a code and sample rate, real time at codes
    EngineRow{"feet_4perf", "feet", 0, "15 16 1828 -1828 0.5 -0.5 nan at 0", "0+15 1+00 114+04 -114+04 0+01 -0+01 NaN"},
    EngineRow{"feet_3perf_cycle", "feet", 0, "21 22 42 43 63 64 1828 -22 at 1", "0+21.3 1+00.1 1+20.1 2+00.2 2+20.2 3+00.3 85+14.1 -1+00.1"},
    EngineRow{"feet_2perf", "feet", 0, "31 32 1828 at 2", "0+31 1+00 57+04"},
    EngineRow{"feet_16mm", "feet", 0, "39 40 1828 at 3", "0+39 1+00 45+28"},
    EngineRow{"feet_65mm_5perf_cycle", "feet", 0, "12 13 51 52 63 64 at 4", "0+12 1+00 3+12 4+00 4+11 5+00"},
    EngineRow{"feet_range", "feet", 0, "159999999 160000000 -160000000 inf at 0", "9999999+15 ∞ -∞ ∞"},
    EngineRow{"samples_29_97_cadence", "samples", 4, "1 2 3 4 5 2589408 -5 at 48000", "1602 3203 4805 6406 8008 4147195853 -8008"},
    EngineRow{"samples_59_94_cadence", "samples", 12, "1 2 3 4 5 at 48000", "801 1602 2402 3203 4004"},
    EngineRow{"samples_23_976", "samples", 5, "1 86400 at 48000", "2002 172972800"},
    EngineRow{"samples_25_at_each_rate", "samples", 1, "1 2160000 at 44100", "1764 3810240000"},
    EngineRow{"samples_96k_119d", "samples", 18, "5 431568 at 96000", "4004 345599654"},
    EngineRow{"samples_range", "samples", 1, "520833333 520833334 nan at 48000", "999999999360 ∞ NaN"},
    EngineRow{"real_time_each_rate", "real time", 0, "86400 at 0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19", "01:00:00.000 00:57:36.000 00:48:00.000 01:00:03.600 00:48:02.880 01:00:03.600 00:48:02.880 00:30:00.000 00:28:48.000 00:24:00.000 00:24:01.440 00:30:01.800 00:24:01.440 00:20:00.000 00:15:00.000 00:15:00.900 00:14:24.000 00:12:00.720 00:12:00.720 00:12:00.000"},
    // Rational seconds and ticks of one frame at every code, and of an hour, a negative count, the
    // edges of their ranges.
    EngineRow{"rational_each_rate", "rational", 0, "1 at 0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19", "1/24s 1/25s 1/30s 1001/24000s 1001/30000s 1001/24000s 1001/30000s 1/48s 1/50s 1/60s 1001/60000s 1001/48000s 1001/60000s 1/72s 1/96s 1001/96000s 1/100s 1001/120000s 1001/120000s 1/120s"},
    EngineRow{"rational_lowest_terms", "rational", 0, "86400 30 at 5", "18018/5s 1001/800s"},
    EngineRow{"rational_signs_and_range", "rational", 0, "30 -2.5 -0.4 1000000000000000 1000000000000001 nan at 0", "5/4s -1/8s 0s 125000000000000/3s ∞ NaN"},
    EngineRow{"ticks_each_rate", "ticks", 0, "1 at 0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19", "10584000000 10160640000 8467200000 10594584000 8475667200 10594584000 8475667200 5292000000 5080320000 4233600000 4237833600 5297292000 4237833600 3528000000 2646000000 2648646000 2540160000 2118916800 2118916800 2116800000"},
    EngineRow{"ticks_range", "ticks", 0, "86400 -1 94482237 94482238 nan at 0", "914457600000000 -10584000000 999999996408000000 ∞ NaN"},
    EngineRow{"real_time_edges", "real time", 0, "1 -86400 863999999 864000000 at 0", "00:00:00.042 -01:00:00.000 9999:59:59.958 ∞"}),
    rowName<EngineRow>);
// clang-format on

TEST(Evaluator, RejectedTextKeepsTheCachedResults) {
    Calc calc;
    calc.setFps(DisplayState25fps);
    ASSERT_TRUE(calc.evalPT("00:00:01.00|24", DisplayStateTime));
    ASSERT_TRUE(calc.evalPF("00:00:01.00|24", DisplayStateTime));
    EXPECT_FALSE(calc.evalPT("3*01:00:00.00/2", DisplayStateTime));
    EXPECT_FALSE(calc.evalPF("5|25", DisplayStateTime));
    EXPECT_EQ(calc.cachedResultPT(), 25.0f);
    EXPECT_EQ(calc.cachedResultPF(), 24.0f);
    ASSERT_TRUE(calc.evalPT("16777217", DisplayStateNumber));
    EXPECT_EQ(calc.cachedResultPT(), 16777216.0f);
    EXPECT_EQ(calc.evalPTToFrames("16777217"), 16777217.0);
    EXPECT_EQ(calc.evalPFToFrames("1/4"), 0.25);
    EXPECT_EQ(calc.evalPT(std::string(400, '9'), DisplayStateNumber), "∞");
}

// Over 25 hours: every real frame gets a label that is never a skipped one, and reading the
// label back gives the frame.
TEST(DropFrame, RoundTripsEveryWholeFrameOfTheFirstDay) {
    for (const auto& [code, labelsPerMinute, dropped] : {std::tuple{DisplayState23drop, 1440, 2},
                                                         {DisplayState29drop, 1800, 2},
                                                         {DisplayState59drop, 3600, 4},
                                                         {DisplayState119drop, 7200, 8}}) {
        const int day = static_cast<int>(25 * 600 * (10 * labelsPerMinute - 9 * dropped) / 10);
        for (int x = 0; x < day; ++x) {
            const auto label = static_cast<int>(Calc::dropFCfromRealFC(x, code));
            ASSERT_FALSE(label % labelsPerMinute < dropped && label / labelsPerMinute % 10 != 0)
                << x;
            ASSERT_EQ(Calc::realFCfromDropFC(static_cast<double>(label), code), x) << code;
        }
    }
}

// A frame count as the usual recipe (FFmpeg's, SMPTE's) labels it, in classic notation: drop-frame
// counting adds `dropped` labels a minute but every tenth.
std::string recipeLabel(long long frame, const FrameRate& rate) {
    const long long nominal = rate.nominal;
    const long long dropped = rate.dropFrame == DropFrame::None         ? 0
                              : rate.dropFrame == DropFrame::Variant59  ? 4
                              : rate.dropFrame == DropFrame::Variant119 ? 8
                                                                        : 2;
    long long label = frame;
    if (dropped > 0) {
        const long long perMinute = nominal * 60 - dropped, perTen = nominal * 600 - 9 * dropped;
        const long long block = frame / perTen, intoBlock = frame % perTen;
        label += 9 * dropped * block +
                 (intoBlock > dropped ? dropped * ((intoBlock - dropped) / perMinute) : 0);
    }
    char text[48];
    std::snprintf(text, sizeof text,
                  nominal > 100 ? "%02lld:%02lld:%02lld.%03lld" : "%02lld:%02lld:%02lld.%02lld",
                  label / (3600 * nominal), label / (60 * nominal) % 60, label / nominal % 60,
                  label % nominal);
    return text;
}

// Every rate against the recipe, frame by frame around every minute of the first 25 hours and then
// every tenth minute up to the time display's bound: a frame written as a timecode is the recipe's
// label and reads back as that frame.
TEST(DropFrame, EveryRateWritesTheRecipesLabelsUpToTheBound) {
    Calc calc;
    constexpr long long kTimeBound = 86400750;
    for (const auto& rate : kFrameRates) {
        calc.setFps(rate.code);
        const auto minute =
            static_cast<long long>(Calc::realFCfromDropFC(60.0 * rate.nominal, rate.code));
        const auto hours25 =
            static_cast<long long>(Calc::realFCfromDropFC(90000.0 * rate.nominal, rate.code));
        for (long long start = minute; start <= kTimeBound;
             start += start < hours25 ? minute : 10 * minute) {
            for (const long long frame : {start - 1, start, start + 1, start + minute / 2}) {
                if (frame > kTimeBound) continue;
                const std::string timecode = calc.stringFromFramecount(static_cast<double>(frame));
                ASSERT_EQ(timecode, recipeLabel(frame, rate)) << rate.suffix;
                ASSERT_EQ(calc.framecountPFFromString(timecode), frame)
                    << timecode << " " << rate.suffix;
            }
        }
    }
}

// Results at every rate around 2^24 frames and at the time display's bound, in both readings and
// as a sum: the rates added to the classic seven keep every frame; the classic seven keep the
// single precision their results always had (86400750 narrows to 86400752, past the bound).
TEST(Evaluator, AddedRatesKeepEveryFrameUpToTheBound) {
    Calc calc;
    for (const auto& rate : kFrameRates) {
        calc.setFps(rate.code);
        const bool classic = rate.code < kClassicRateCount;
        for (const long long frame :
             {16777215LL, 16777216LL, 16777217LL, 16777219LL, 86400749LL, 86400750LL, 86400751LL}) {
            for (const bool plusOne : {false, true}) {
                const long long result = frame + (plusOne ? 1 : 0);
                // Hours have two digits as typed: beyond 99 the count is typed as a number.
                const std::string label = recipeLabel(frame, rate);
                const std::string typed =
                    (label.find(':') == 2 ? label : std::to_string(frame)) + (plusOne ? "+1" : "");
                const double kept = classic ? static_cast<double>(static_cast<float>(result))
                                            : static_cast<double>(result);
                const std::string expected =
                    kept > 86400750 ? "∞" : recipeLabel(static_cast<long long>(kept), rate);
                EXPECT_EQ(calc.evalPT(typed, DisplayStateTime).value_or("none"), expected)
                    << typed << " " << rate.suffix;
                EXPECT_EQ(calc.evalPF(typed, DisplayStateTime).value_or("none"), expected)
                    << typed << " " << rate.suffix;
                EXPECT_EQ(calc.cachedFramesPF(), kept) << typed << " " << rate.suffix;
                EXPECT_EQ(calc.evalPF(typed, DisplayStateNumber).value_or("none"),
                          kept > 999999999 ? "∞" : std::to_string(static_cast<long long>(kept)));
            }
        }
    }
}

// A paste into the input: a column or a row of values becomes their sum, anything else stays.
struct PasteRow {
    const char* name;
    std::string pasted;
    std::string expression;
};

class Pastes : public testing::TestWithParam<PasteRow> {};

TEST_P(Pastes, BecomeTheSumOfAColumn) {
    EXPECT_EQ(pastedExpression(GetParam().pasted), GetParam().expression);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Table, Pastes, testing::Values(
    PasteRow{"column_of_durations", "00:00:10:00\n00:00:05:12\n00:00:02:12\n", "00:00:10:00 + 00:00:05:12 + 00:00:02:12"},
    PasteRow{"crlf_blank_lines_and_padding", "  1:00 \r\n\r\n 250\r\n", "1:00 + 250"},
    PasteRow{"marker_list_first_timecode", "Marker 1\t01:00:05:00\t00:00:02:00\tred\nMarker 2\t01:00:09;12|29d\t\t\n", "01:00:05:00 + 01:00:09;12|29d"},
    PasteRow{"first_number_without_timecode", "shot A\t250\t12\nshot B\t\t48\n", "250 + 48"},
    PasteRow{"first_field_without_either", "one\ntwo\n", "one + two"},
    PasteRow{"marker_line_alone_first_timecode", "Marker 1\t01:00:05:00\t00:00:02:00\tred\n", "01:00:05:00"},
    PasteRow{"spreadsheet_row_sums_fields", "00:00:10:00\t00:00:05:12\t\t00:00:02:12\n", "00:00:10:00 + 00:00:05:12 + 00:00:02:12"},
    PasteRow{"expression_over_lines_joined", "01:00:00:00 +\n00:00:10:00\r\n", "01:00:00:00 + 00:00:10:00  "},
    PasteRow{"row_with_operators_joined", "1+\t2", "1+ 2"},
    PasteRow{"single_line_unchanged", "01:00:10.12|25 + 00:00:05.00", "01:00:10.12|25 + 00:00:05.00"}),
    rowName<PasteRow>);
// clang-format on

// The 23.97 rate is not the double nearest to 23.97; the reading rows pin each rate's value.
TEST(FrameRate, EachCodeBringsItsSuffixAndAnUnknownOneNothing) {
    Calc calc;
    EXPECT_EQ(calc.framerate(), 24.0);  // a new engine runs at 24
    std::string suffixes;
    for (int code = 0; code < 20; ++code) {
        calc.setFps(code);
        const std::string timestamp = calc.beautifyTimestampString("1:2:3");
        suffixes += timestamp.substr(timestamp.find('|') + 1) + " ";
    }
    EXPECT_EQ(suffixes,
              "24 25 30 23d 29d 23n 29n 48 50 60 59d 47n 59n 72 96 95n 100 119n 119d 120 ");
    EXPECT_EQ(calc.framerate(), 120.0);
    calc.setFps(DisplayState23nondrop);
    EXPECT_EQ(calc.framerate(), 23.97000000000166);
    calc.setFps(20);  // the first value after the codes
    EXPECT_EQ(calc.fps(), 20);
    EXPECT_EQ(calc.framerate(), 23.97000000000166);
}

}  // namespace
