#pragma once

// The timecode engine. An expression travels through it like this:
//
//   text ──grammar match──▶ capture tree ──depth-first walk──▶ value stack ──▶ frame count
//        ──narrowed to float, cached──▶ result text for the display mode ("01:00:00.00", "∞")
//
// The grammar (Grammar.h) decides what is accepted and how it breaks into operands and
// operations; its history captures form a tree whose postfix walk is the computation. The grammar
// matcher (GrammarMatcher.h) reads the grammar text and finds the same match and tree as Oniguruma
// would, in polynomial time, so no depth of parentheses makes a keystroke slow. Each
// timestamp leaf is read into a real frame count at the current frame-rate code, in one of two
// readings of rate suffixes: PT (a suffixed timestamp is a span of real time) and PF (it is a
// count of frames). Every expression is evaluated in both. Eager evaluation accepts only a text
// that the grammar matches as a whole; lazy evaluation, used while the user types, takes the first
// match wherever it lies. All numbers are read and written without the process locale.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "DisplayState.h"
#include "Grammar.h"
#include "LastMatch.h"
#include "Regex.h"

namespace vantrel {

struct FrameRate;

enum class SpanColour { Black, Red };

/// How timecodes are written: classic "01:00:10.12", or SMPTE "01:00:10:12" as editing systems
/// and EDLs write them, with ";" before the frames at the drop-frame rates. Both are always read.
enum class TimecodeNotation { Classic, Smpte };

/// A piece of coloured input: the part the grammar takes is black, the rest red.
struct ColouredSpan {
    std::string text;
    SpanColour colour;
    friend bool operator==(const ColouredSpan&, const ColouredSpan&) = default;
};

class Calc : public CaptureVisitor {
public:
    Calc();

    /// Stores the code; for the frame-rate codes also sets framerate(). Any other value is
    /// stored and leaves framerate() as it was.
    void setFps(int code);
    int fps() const { return m_fps; }
    double framerate() const { return m_framerate; }

    /// With exact rates the PT reading takes the ÷1.001 rates at their exact fractions (24000/1001
    /// and so on) instead of 23.97, 29.97, 47.952 and 59.94, as editing systems do.
    void setExactRates(bool exact) { m_exactRates = exact; }
    bool exactRates() const { return m_exactRates; }

    void setTimecodeNotation(TimecodeNotation notation) { m_notation = notation; }
    TimecodeNotation timecodeNotation() const { return m_notation; }

    /// With the 24-hour clock, results shown as time are written as a timecode clock shows them:
    /// modulo 24 hours, so one frame before midnight is 23:59:59.24 at 25 rather than -00:00:00.01.
    /// Frame counts, the cached results and everything computed from them stay signed.
    void setWrapsAt24Hours(bool wraps) { m_wrapsAt24Hours = wraps; }
    bool wrapsAt24Hours() const { return m_wrapsAt24Hours; }

    /// The real frames in 24 hours of timecode at the code: 2,589,408 at 29.97 drop frame.
    static double framesPerDay(int code);

    // Drop-frame conversions for non-negative counts. Fractional input is first rounded to a whole
    // frame, halves upward. NaN, infinities and counts beyond 2^53 come back unchanged: they are
    // far past every display bound, and there is no whole frame to convert.
    static double dropFCfrom29realFC(double realFrameCount);
    static double realFCfrom29dropFC(double dropFrameCount);
    static double dropFCfrom23realFC(double realFrameCount);
    static double realFCfrom23dropFC(double dropFrameCount);
    static double dropFCfrom59realFC(double realFrameCount);
    static double realFCfrom59dropFC(double dropFrameCount);
    /// The conversion of the code's drop-frame scheme; a count at a code without one is returned
    /// as it is.
    static double dropFCfromRealFC(double realFrameCount, int code);
    static double realFCfromDropFC(double dropFrameCount, int code);

    /// A real frame count as a display timestamp at the current code, e.g. "-01:00:00.00", in the
    /// current notation.
    /// Hours are not wrapped at 24. NaN gives "NaN"; counts too large to split into fields
    /// (beyond 10^18 frames, never passed by the evaluator) give "∞" or "-∞".
    std::string stringFromFramecount(double framecount) const;

    /// The expression without spaces and with every timestamp in normalised full form
    /// ("1:0:5" → "01:00:05.00|25" at 25 fps), written in the current notation. Used for the log
    /// and the history.
    std::string beautifyExpression(std::string_view expression) const;
    /// What beautifyExpression() writes for each full form and each short form that it finds.
    std::string beautifyTimestamp(std::string_view text, TextRange found) const;
    std::string beautifyShortTimestamp(std::string_view text, TextRange found) const;
    /// One full-form timestamp ("1:2:3.4|23n") in normalised full form ("01:02:03.04|23n"), in the
    /// current notation.
    std::string beautifyTimestampString(std::string_view timestamp) const;
    /// One short-form timestamp ("0123|29d") in normalised full form ("00:00:01.23|29d").
    std::string beautifyShortTimestampString(std::string_view timestamp) const;

    // Timestamp readers: a full form or frame count with rate ("01:00:10.12|25", "123|25"), or a
    // short form ("0123"), as a real frame count at the current code in the PT or PF reading.
    double framecountPTFromString(std::string_view timestamp) const;
    double framecountPFFromString(std::string_view timestamp) const;
    double framecountPTFromShortString(std::string_view timestamp) const;
    double framecountPFFromShortString(std::string_view timestamp) const;

    /// The value of a text that the grammar matches as a whole, or nothing.
    std::optional<double> evalPTToFrames(std::string_view expression);
    std::optional<double> evalPFToFrames(std::string_view expression);
    /// The result text for the display mode, or nothing when the text is not accepted. An accepted
    /// text also sets the cached result of its reading.
    std::optional<std::string> evalPT(std::string_view expression, int displayMode);
    std::optional<std::string> evalPF(std::string_view expression, int displayMode);

    /// As the eager twins, but of the first match wherever it lies in the text.
    std::optional<double> lazyevalPTToFrames(std::string_view expression);
    std::optional<double> lazyevalPFToFrames(std::string_view expression);
    std::optional<std::string> lazyevalPT(std::string_view expression, int displayMode);
    std::optional<std::string> lazyevalPF(std::string_view expression, int displayMode);

    /// The last result of each reading, narrowed to single precision.
    float cachedResultPT() const { return m_cachedResultPT; }
    float cachedResultPF() const { return m_cachedResultPF; }
    /// The last result of each reading as its result text shows it, for the side calculators and
    /// the frame counts written out: single precision at the seven classic rates, as it always
    /// was, and whole frames exactly at the rates added since, where 2^24 frames come within a
    /// day and a half.
    double cachedFramesPT() const { return m_cachedFramesPT; }
    double cachedFramesPF() const { return m_cachedFramesPF; }

    /// The input in pieces: before the lazy match red, the match black, after it red.
    std::vector<ColouredSpan> colorizeLazyEvaluatedString(std::string_view input) const;

    void push(double value);
    std::optional<double> pop();

    void visitAtFirstCapture(const Capture& capture) override;
    void visitAtLastCapture(const Capture& capture) override;

    void reduce_z2(const Capture& capture);
    void reduce_ts1PT(const Capture& capture);
    void reduce_ts2PT(const Capture& capture);
    void reduce_ts1PF(const Capture& capture);
    void reduce_ts2PF(const Capture& capture);
    void reduce_tss1(const Capture& capture);
    void reduce_tss2(const Capture& capture);
    void reduce_tsm1(const Capture& capture);
    void reduce_tsm2(const Capture& capture);
    void reduce_tsm3(const Capture& capture);
    void reduce_zm1(const Capture& capture);
    void reduce_zm2(const Capture& capture);

private:
    enum class Extent { WholeText, FirstMatch };

    std::optional<double> evalToFrames(std::string_view typed, Flavour flavour, Extent extent);
    std::optional<std::string> evalToText(std::string_view expression, Flavour flavour,
                                          Extent extent, int displayMode);
    std::string resultText(double value, int displayMode, Extent extent) const;
    /// The frame count as results keep it at the current code (see cachedFramesPT()).
    double keptResult(double frames) const;
    /// The frame count on a clock that wraps at 24 hours, when the clock is asked for.
    double onTheClock(double frames) const;
    /// The rate by which the PT reading takes a suffix's timestamp as time, and the current code's.
    double realRateOf(const FrameRate& rate) const;
    double currentRealRate() const;
    /// Three digits at the current code when its frame labels reach 100, else two.
    FrameField frameField() const;
    /// "." in classic notation; in SMPTE ";" at a drop-frame rate and ":" at any other.
    char frameSeparator(const FrameRate* rate) const;
    template <typename Operation>
    void reduceBinary(Operation operation);

    std::vector<double> _stack;
    double m_framerate = 24.0;
    int m_fps = DisplayState24fps;
    TimecodeNotation m_notation = TimecodeNotation::Classic;
    bool m_exactRates = false;
    bool m_wrapsAt24Hours = false;
    // The one place where an expression is read; SMPTE timestamps become classic ones first.
    mutable LastMatch m_lastMatch;
    Flavour m_walkFlavour = Flavour::PT;
    float m_cachedResultPT = 0.0f;
    float m_cachedResultPF = 0.0f;
    double m_cachedFramesPT = 0.0;
    double m_cachedFramesPF = 0.0;
};

}  // namespace vantrel
