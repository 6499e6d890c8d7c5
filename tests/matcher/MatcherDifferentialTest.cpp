// The grammar matcher against Oniguruma on generated texts: for every text, in both flavours,
// the search and the match at the start must give the same match and the same capture walk.
//
//   VANTREL_DIFF_CASES   number of texts (default 100000; the long run uses 10000000)
//   VANTREL_DIFF_SEED    seed of the generator (default 1)

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string>

#include "ExpressionGenerator.h"
#include "OnigurumaComparison.h"

namespace vantrel::matcher_tests {

namespace {

TEST(MatcherDifferential, SameMatchesAndCaptureTreesAsOniguruma) {
    using Outcome = OnigurumaComparison::Outcome;
    const auto setting = [](const char* name, const char* fallback) {
        const char* text = std::getenv(name);
        return std::stoull(text && *text ? text : fallback);
    };
    const std::uint64_t cases = setting("VANTREL_DIFF_CASES", "100000");
    ExpressionGenerator generator(setting("VANTREL_DIFF_SEED", "1"));
    OnigurumaComparison comparison;
    std::map<Outcome, std::uint64_t> tally;
    std::uint64_t wholeText = 0;
    const auto started = std::chrono::steady_clock::now();
    for (std::uint64_t text = 0; text < cases && tally[Outcome::Different] < 20; ++text) {
        const std::string expression = generator.next();
        // Every other run of texts is read as at a rate whose frame field has three digits; a
        // run is long enough for texts typed on from the one before.
        const FrameField field = text / 64 % 2 ? FrameField::ThreeDigits : FrameField::TwoDigits;
        for (const Flavour flavour : {Flavour::PT, Flavour::PF}) {
            for (const auto mode :
                 {OnigurumaComparison::Mode::Search, OnigurumaComparison::Mode::MatchAtStart}) {
                const Outcome outcome = comparison.compare(expression, flavour, field, mode);
                ++tally[outcome];
                if (outcome == Outcome::SameMatch && comparison.matchedWholeText()) ++wholeText;
                if (outcome == Outcome::Different) {
                    ADD_FAILURE() << "text " << text << ": " << comparison.difference();
                }
            }
        }
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - started;
    std::cout << cases << " texts in " << seconds.count() << " s; same match "
              << tally[Outcome::SameMatch] << " (whole text " << wholeText << "), no match "
              << tally[Outcome::NoMatchInEither] << ", Oniguruma gave up "
              << tally[Outcome::ReferenceGaveUp] << std::endl;
    // The comparison proves something only when Oniguruma answers nearly always and the texts
    // are mostly ones with a match to compare.
    const std::uint64_t comparisons = 4 * cases;
    EXPECT_LE(tally[Outcome::ReferenceGaveUp] * 100, comparisons);
    EXPECT_GE(tally[Outcome::SameMatch] * 2, comparisons);
    EXPECT_GE(wholeText * 5, comparisons);
}

}  // namespace

}  // namespace vantrel::matcher_tests
