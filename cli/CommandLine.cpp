#include "CommandLine.h"

#include <array>
#include <charconv>
#include <istream>
#include <optional>
#include <ostream>
#include <string_view>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "Calc.h"
#include "CaptionTables.h"
#include "FrameRate.h"
#include "SideCalculators.h"
#include "TimelineReport.h"
#include "UnitReading.h"
#include "Units.h"
#include "Version.h"

namespace vantrel {

namespace {

constexpr std::string_view kUsage =
    R"(Usage: vantrel-calc [options] [--] [EXPRESSION ...]
Evaluates timecode expressions such as '01:00:10.12|25 + 00:00:05.00' and prints, for each
EXPRESSION argument or else for each line of standard input, one line: the PT result, a tab,
and the PF result. A reading without a result leaves its field empty.

  -r, --rate CODE      24, 25, 30, 23d, 29d, 23n, 29n, 48, 50, 60, 59d, 47n, 59n, 72, 96,
                       95n, 100, 119n, 119d or 120 (default 24): d is drop frame, n
                       non-drop at 23.976, 29.97, 47.952, 59.94, 95.904 or 119.88; at
                       119n, 119d and 120 the frame field has three digits
  -d, --display MODE   time, number, film, disk, feet, samples, realtime, rational or
                       ticks (default time): the display state the results are
                       formatted for; feet is FEET+FRAMES of film, samples the audio
                       samples from frame 0, realtime HH:MM:SS.mmm of real time,
                       rational seconds as FCPXML writes them (1001/24000s), ticks
                       Premiere's 254016000000 a second, all at the exact rates
      --gauge NAME     the film for feet: 35mm-4perf (the default), 35mm-3perf,
                       35mm-2perf, 16mm or 65mm-5perf
      --sample-rate HZ the audio for samples: 44100, 48000 (the default) or 96000
      --exact-rates    the PT reading takes 23.976, 29.97, 47.952 and 59.94 at their
                       exact rates (24000/1001 ...) rather than 23.97, 29.97, 47.952
                       and 59.94
      --wrap           write time results as a timecode clock does, modulo 24 hours
                       (00:00:00:00 - 1 is 23:59:59.24 at 25); frame numbers and the
                       side figures stay signed
  -l, --lazy           evaluate as the window does while typing (first match anywhere,
                       lazy bounds)
  -b, --beautify       print each expression's normalised form instead of its results
  -j, --json           print one JSON object per expression instead of tab-separated
                       fields: "expression", "pt", "pf", "ptFrames", "pfFrames", the
                       unit display's pair ("feetFramesPT", "samplesPT", "realTimePT",
                       "rationalPT", "ticksPT" and
                       their PF twins), and the side figures asked for ("diskSpacePT" ...
                       "filmLengthPF"); a
                       reading without a result, and a count that is not a finite
                       number (NaN, infinities), is null
  -n, --notation NAME  classic (01:00:10.12, the default) or smpte (01:00:10:12, with ';'
                       before the frames at the drop-frame rates): how timecodes are
                       written; both are always read
      --timeline FILE  read the cut in FILE ('-' for standard input): an EDL, FCPXML
                       (or an .fcpxmld bundle), Final Cut Pro 7 / Premiere / Resolve
                       XML, OpenTimelineIO or Avid ALE, told apart by their content;
                       print first "rate", the rate it was read at and why, then each
                       event, each track's sum, span, gaps and overlaps, and last
                       "total", the running time and its frame count (an ALE's: the
                       sum of its clips). The formats but EDL state their rate; an
                       EDL's comes, without -r, from its FCM line and frame labels,
                       with -r from the rate given (an FCM line picks its drop-frame
                       or non-drop twin) unless it cannot hold the file's labels
      --edl FILE       the same as --timeline FILE
      --disk RES,ASPECT,FORMAT,LINK
                       after the two results, four more tab-separated fields: the PT disk
                       space, PT transfer time, PF disk space and PF transfer time, for these
                       row numbers of the resolution (0-6), aspect-ratio (0-3), pixel-format
                       (0-9) and transfer-speed (0-7) tables
      --film GAUGE,UNIT    after those, two more fields: the PT and PF film length
                       (gauge row 0-5, unit 0 m or 1 ft)
  -h, --help           show this help and exit
      --version        show the version and exit

Exit status: 0 when every expression gave a result in both readings, 1 when any did not,
2 on a usage error.
)";

struct DisplayModeName {
    std::string_view name;
    int mode;
};

constexpr std::array<DisplayModeName, 9> kDisplayModes{{
    {"time", DisplayStateTime},
    {"number", DisplayStateNumber},
    {"film", DisplayStateFilmLength},
    {"disk", DisplayStateDiskSpace},
    {"feet", DisplayStateFeetFrames},
    {"samples", DisplayStateSamples},
    {"realtime", DisplayStateRealTime},
    {"rational", DisplayStateRational},
    {"ticks", DisplayStateTicks},
}};

// The JSON keys of each unit display's two results.
struct UnitKeys {
    int displayMode;
    std::string_view pt;
    std::string_view pf;
};

constexpr std::array<UnitKeys, 5> kUnitKeys{{
    {DisplayStateFeetFrames, "feetFramesPT", "feetFramesPF"},
    {DisplayStateSamples, "samplesPT", "samplesPF"},
    {DisplayStateRealTime, "realTimePT", "realTimePF"},
    {DisplayStateRational, "rationalPT", "rationalPF"},
    {DisplayStateTicks, "ticksPT", "ticksPF"},
}};

struct NotationName {
    std::string_view name;
    TimecodeNotation notation;
};

constexpr std::array<NotationName, 2> kNotations{{
    {"classic", TimecodeNotation::Classic},
    {"smpte", TimecodeNotation::Smpte},
}};

struct FilmChoice {
    int gauge = 0;
    int unit = 0;
};

struct Options {
    int rate = DisplayState24fps;
    bool rateGiven = false;
    int displayMode = DisplayStateTime;
    TimecodeNotation notation = TimecodeNotation::Classic;
    units::UnitChoice units;
    bool exactRates = false;
    bool wrap = false;
    bool lazy = false;
    bool beautify = false;
    bool json = false;
    bool help = false;
    bool version = false;
    std::optional<side_calculators::DiskChoice> disk;
    std::optional<FilmChoice> film;
    std::optional<std::string> timelineFile;
    std::vector<std::string> expressions;
};

class UsageError {
public:
    explicit UsageError(std::string message) : m_message(std::move(message)) {}
    const std::string& message() const { return m_message; }

private:
    std::string m_message;
};

// "24, 25, ... or 120": every code, for the message about an unknown one.
std::string rateCodeList() {
    std::string codes;
    for (std::size_t i = 0; i < kFrameRates.size(); ++i) {
        if (i > 0) codes += i + 1 == kFrameRates.size() ? " or " : ", ";
        codes += kFrameRates[i].suffix;
    }
    return codes;
}

int rateCode(std::string_view text) {
    if (const FrameRate* rate = frameRateForSuffix(text)) return rate->code;
    throw UsageError("unknown frame rate '" + std::string(text) + "' (use " + rateCodeList() + ")");
}

int displayMode(std::string_view text) {
    for (const auto& entry : kDisplayModes) {
        if (entry.name == text) return entry.mode;
    }
    throw UsageError(
        "unknown display mode '" + std::string(text) +
        "' (use time, number, film, disk, feet, samples, realtime, rational or ticks)");
}

const units::Gauge* gauge(std::string_view text) {
    if (const units::Gauge* named = units::gaugeNamed(text)) return named;
    throw UsageError("unknown gauge '" + std::string(text) +
                     "' (use 35mm-4perf, 35mm-3perf, 35mm-2perf, 16mm or 65mm-5perf)");
}

int sampleRate(std::string_view text) {
    for (const int rate : units::kSampleRates) {
        if (std::to_string(rate) == text) return rate;
    }
    throw UsageError("unknown sample rate '" + std::string(text) + "' (use 44100, 48000 or 96000)");
}

TimecodeNotation notation(std::string_view text) {
    for (const auto& entry : kNotations) {
        if (entry.name == text) return entry.notation;
    }
    throw UsageError("unknown notation '" + std::string(text) + "' (use classic or smpte)");
}

// "3,2,0,4": one row number per table, each within its table.
std::vector<int> tableRows(std::string_view option, std::string_view text,
                           const std::vector<std::size_t>& tableSizes) {
    std::vector<int> rows;
    const std::string whole(text);
    const auto invalid = [&] {
        return UsageError(
            "option '" + std::string(option) + "' takes " + std::to_string(tableSizes.size()) +
            " row numbers separated by commas, each within its table: '" + whole + "'");
    };
    for (std::size_t table = 0; table < tableSizes.size(); ++table) {
        const auto comma = text.find(',');
        const std::string_view field = text.substr(0, comma);
        int row = -1;
        const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), row);
        if (error != std::errc() || end != field.data() + field.size() || row < 0 ||
            static_cast<std::size_t>(row) >= tableSizes[table]) {
            throw invalid();
        }
        rows.push_back(row);
        const bool last = table + 1 == tableSizes.size();
        if (last != (comma == std::string_view::npos)) throw invalid();
        if (!last) text.remove_prefix(comma + 1);
    }
    return rows;
}

side_calculators::DiskChoice diskChoice(std::string_view option, std::string_view text) {
    const auto rows = tableRows(option, text,
                                {captions::kResolution.size(), captions::kAspectRatio.size(),
                                 captions::kBitDepth.size(), captions::kTransferSpeed.size()});
    return {rows[0], rows[1], rows[2], rows[3]};
}

FilmChoice filmChoice(std::string_view option, std::string_view text) {
    const auto rows = tableRows(option, text, {captions::kFilm.size(), captions::kSystem.size()});
    return {rows[0], rows[1]};
}

// The argument by which the user named the option: "-r" or "--rate", attached value and all.
std::string typedName(const std::vector<std::string>& arguments, const CLI::Option& option) {
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
        const std::string name = argument->substr(0, argument->find('='));
        if (name.starts_with('-') && option.check_name(name)) return *argument;
    }
    return option.get_name();
}

// CLI11's account of a mistake, in the words vantrel-calc has always used for it.
UsageError usageError(const CLI::ParseError& error, const CLI::App& app,
                      const std::vector<std::string>& arguments) {
    const std::string what = error.what();
    // The message starts with the option's name, with or without its dashes.
    const std::string name = what.substr(0, what.find_first_of(": "));
    const CLI::Option* option = app.get_option_no_throw(name);
    if (!option) option = app.get_option_no_throw("--" + name);
    if (option && what.find("flag override") != std::string::npos) {
        return UsageError("unknown option '" + typedName(arguments, *option) + "'");
    }
    if (option && what.find("missing") != std::string::npos) {
        return UsageError("option '" + typedName(arguments, *option) + "' needs a value");
    }
    return UsageError(what);
}

// Options come first, POSIX style: the first argument that is not an option, or "--", starts the
// expressions, so an expression may begin with "-" after "--". A value may be attached
// ("-r25", "--rate=25") or follow as the next argument; the last of a repeated option counts.
Options parseOptions(const std::vector<std::string>& arguments) {
    Options options;
    CLI::App app("vantrel-calc");
    app.set_help_flag();  // the usage text is vantrel-calc's own
    app.allow_extras();
    app.positionals_at_end();
    const auto valueOption = [&app](const char* names, std::function<void(std::string_view)> take) {
        app.add_option_function<std::string>(names,
                                             [take](const std::string& value) { take(value); })
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    };
    valueOption("-r,--rate", [&](std::string_view value) {
        options.rate = rateCode(value);
        options.rateGiven = true;
    });
    valueOption("-d,--display",
                [&](std::string_view value) { options.displayMode = displayMode(value); });
    valueOption("-n,--notation",
                [&](std::string_view value) { options.notation = notation(value); });
    valueOption("--gauge", [&](std::string_view value) { options.units.gauge = gauge(value); });
    valueOption("--sample-rate",
                [&](std::string_view value) { options.units.sampleRate = sampleRate(value); });
    // --edl came first; both read every kind of timeline file.
    valueOption("--edl,--timeline",
                [&](std::string_view value) { options.timelineFile = std::string(value); });
    valueOption("--disk",
                [&](std::string_view value) { options.disk = diskChoice("--disk", value); });
    valueOption("--film",
                [&](std::string_view value) { options.film = filmChoice("--film", value); });
    for (const auto& [names, flag] : {std::pair{"-l,--lazy", &options.lazy},
                                      {"-b,--beautify", &options.beautify},
                                      {"-j,--json", &options.json},
                                      {"--exact-rates", &options.exactRates},
                                      {"--wrap", &options.wrap},
                                      {"-h,--help", &options.help},
                                      {"--version", &options.version}}) {
        app.add_flag(names, *flag)->disable_flag_override();
    }
    app.add_option("expressions", options.expressions);
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    try {
        app.parse(reversed);
    } catch (const CLI::ParseError& error) {
        throw usageError(error, app, arguments);
    }
    // CLI11 counts the "--" that ends the options among what it did not know.
    for (const std::string& unknown : app.remaining()) {
        if (unknown != "--") throw UsageError("unknown option '" + unknown + "'");
    }
    if (options.timelineFile && !options.expressions.empty()) {
        throw UsageError("option '--timeline' (or '--edl') reads a file and takes no expressions");
    }
    return options;
}

class ExpressionPrinter {
public:
    ExpressionPrinter(const Options& options, std::ostream& output)
        : m_options(options), m_output(output) {
        m_calc.setFps(options.rate);
        m_calc.setTimecodeNotation(options.notation);
        m_calc.setExactRates(options.exactRates);
        m_calc.setWrapsAt24Hours(options.wrap);
    }

    void print(std::string_view expression) {
        const auto pt = result(expression, Flavour::PT);
        const auto pf = result(expression, Flavour::PF);
        m_everyExpressionAccepted = m_everyExpressionAccepted && pt && pf;
        if (m_options.json) {
            printJson(expression, pt, pf);
        } else if (m_options.beautify) {
            m_output << beautified(expression) << '\n';
        } else {
            m_output << pt.value_or("") << '\t' << pf.value_or("") << sideFields() << '\n';
        }
        // Flushed per line, so a program that feeds lines through a pipe gets each answer at once.
        m_output.flush();
    }

    bool everyExpressionAccepted() const { return m_everyExpressionAccepted; }

private:
    using Json = nlohmann::ordered_json;

    std::string beautified(std::string_view expression) const {
        return units::UnitReading(expression, m_options.rate, m_options.units).beautified(m_calc);
    }

    std::optional<std::string> result(std::string_view expression, Flavour flavour) {
        return units::evaluated(m_calc, expression, flavour, m_options.lazy, m_options.displayMode,
                                m_options.units);
    }

    // Keys in a fixed order, so a script or a person reading the lines finds them in one place.
    // Text that is not valid UTF-8 is written with U+FFFD in place of each bad byte.
    void printJson(std::string_view expression, const std::optional<std::string>& pt,
                   const std::optional<std::string>& pf) {
        const auto textOrNull = [](const std::optional<std::string>& text) {
            return text ? Json(*text) : Json();
        };
        Json line;
        line["expression"] = expression;
        if (m_options.beautify) line["beautified"] = beautified(expression);
        line["pt"] = textOrNull(pt);
        line["pf"] = textOrNull(pf);
        line["ptFrames"] = pt ? Json(m_calc.cachedFramesPT()) : Json();
        line["pfFrames"] = pf ? Json(m_calc.cachedFramesPF()) : Json();
        for (const UnitKeys& keys : kUnitKeys) {
            if (keys.displayMode != m_options.displayMode) continue;
            line[keys.pt] = textOrNull(pt);
            line[keys.pf] = textOrNull(pf);
        }
        for (const auto& [key, text] : sideFigures()) line[key] = text;
        m_output << line.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
    }

    // As in the window, the side calculators read the engine's cached results, which a rejected
    // line leaves at the last accepted one.
    std::vector<std::pair<std::string_view, std::string>> sideFigures() const {
        std::vector<std::pair<std::string_view, std::string>> figures;
        const double pt = m_calc.cachedFramesPT();
        const double pf = m_calc.cachedFramesPF();
        if (m_options.disk) {
            const auto ptDisk = side_calculators::diskSpaceAndTransferTime(pt, *m_options.disk);
            const auto pfDisk = side_calculators::diskSpaceAndTransferTime(pf, *m_options.disk);
            figures.emplace_back("diskSpacePT", ptDisk.diskSpace);
            figures.emplace_back("transferTimePT", ptDisk.transferTime);
            figures.emplace_back("diskSpacePF", pfDisk.diskSpace);
            figures.emplace_back("transferTimePF", pfDisk.transferTime);
        }
        if (m_options.film) {
            const auto& film = *m_options.film;
            figures.emplace_back("filmLengthPT",
                                 side_calculators::filmLength(pt, film.gauge, film.unit));
            figures.emplace_back("filmLengthPF",
                                 side_calculators::filmLength(pf, film.gauge, film.unit));
        }
        return figures;
    }

    std::string sideFields() const {
        std::string fields;
        for (const auto& figure : sideFigures()) fields += '\t' + figure.second;
        return fields;
    }

    const Options& m_options;
    std::ostream& m_output;
    Calc m_calc;
    bool m_everyExpressionAccepted = true;
};

}  // namespace

int runCommandLine(const std::vector<std::string>& arguments, std::istream& input,
                   std::ostream& output, std::ostream& errors) {
    Options options;
    try {
        options = parseOptions(arguments);
    } catch (const UsageError& error) {
        errors << "vantrel-calc: " << error.message() << "\n"
               << "Try 'vantrel-calc --help' for more information.\n";
        return 2;
    }
    if (options.help) {
        output << kUsage;
        return 0;
    }
    if (options.version) {
        output << "vantrel-calc " << kShortVersion << " (" << kBuildVersion << ")\n";
        return 0;
    }

    if (options.timelineFile) {
        // Without -r the file alone says its rate; a rate given is the user's word.
        const timeline::RateRequest request{
            options.rateGiven ? timeline::RateOrigin::GivenRate : timeline::RateOrigin::File,
            options.rate};
        return printTimelineReport(*options.timelineFile, request, options.notation, options.json,
                                   input, output, errors);
    }
    ExpressionPrinter printer(options, output);
    if (!options.expressions.empty()) {
        for (const auto& expression : options.expressions) printer.print(expression);
    } else {
        std::string line;
        while (std::getline(input, line)) {
            if (line.ends_with('\r')) line.pop_back();
            printer.print(line);
        }
    }
    return printer.everyExpressionAccepted() ? 0 : 1;
}

}  // namespace vantrel
