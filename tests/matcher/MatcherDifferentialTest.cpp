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
#include <random>
#include <string>

#include "ExpressionGenerator.h"
#include "OnigurumaComparison.h"
#include "Regex.h"
#include "TimestampText.h"

namespace vantrel::matcher_tests {

namespace {

// The patterns that normalising once searched timestamps with: the reference for its scanners.
const Regex& fullFormPattern(FrameField field) {
    static const Regex twoDigits(
        R"(0*((\d{0,2}:)?+\d{0,2})?+:\d{1,2}(\.(?:\d{3}(?=\|(?:119[dn]|120))|\d{1,2}))"
        R"((\|(?:100|119[dn]|120|\d{2,2}(d|n)?))?+)?+)");
    static const Regex threeDigits(
        R"(0*((\d{0,2}:)?+\d{0,2})?+:\d{1,2}(\.\d{1,3}(\|(?:100|119[dn]|120|\d{2,2}(d|n)?))?+)?+)");
    return field == FrameField::TwoDigits ? twoDigits : threeDigits;
}

std::vector<TextRange> foundBy(const Regex& pattern, std::string_view text) {
    std::vector<TextRange> found;
    pattern.forEachMatch(text, [&](const RegexMatch& match) { found.push_back(match.range()); });
    return found;
}

template <typename Next>
std::vector<TextRange> foundBy(Next next, std::string_view text) {
    std::vector<TextRange> found;
    for (auto range = next(text, 0); range; range = next(text, range->location + range->length)) {
        found.push_back(*range);
    }
    return found;
}

// Up to 24 characters of what timestamps are made of, in any order: runs of digits longer than
// any field, colons and points in every place, suffixes cut short.
std::string timestampNoise(std::mt19937_64& random) {
    static constexpr std::string_view kCharacters = "0000111229:::..||dnx ";
    std::string text(random() % 25, ' ');
    for (char& c : text) c = kCharacters[random() % kCharacters.size()];
    return text;
}

// The timestamps that normalising rewrites, found by hand as the patterns find them.
void expectTimestampsFoundAsByPatterns(std::string_view text, std::uint64_t& found) {
    static const Regex shortForm(R"(\b0\d{2,8}(\|(?:100|119[dn]|120|\d{1,2}(d|n)?))?)");
    for (const FrameField field : {FrameField::TwoDigits, FrameField::ThreeDigits}) {
        const auto fullForms = foundBy(fullFormPattern(field), text);
        const auto next = [field](std::string_view t, std::size_t from) {
            return timestamp_text::nextFullForm(t, from, field);
        };
        EXPECT_TRUE(foundBy(next, text) == fullForms) << "full forms in " << text;
        found += fullForms.size();
    }
    const auto shortForms = foundBy(shortForm, text);
    EXPECT_TRUE(foundBy(timestamp_text::nextShortForm, text) == shortForms)
        << "short forms in " << text;
    found += shortForms.size();
}

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
    std::uint64_t timestamps = 0;
    std::mt19937_64 noise(setting("VANTREL_DIFF_SEED", "1"));
    const auto started = std::chrono::steady_clock::now();
    for (std::uint64_t text = 0; text < cases && tally[Outcome::Different] < 20; ++text) {
        const std::string expression = generator.next();
        // Every other run of texts is read as at a rate whose frame field has three digits; a
        // run is long enough for texts typed on from the one before.
        const FrameField field = text / 64 % 2 ? FrameField::ThreeDigits : FrameField::TwoDigits;
        expectTimestampsFoundAsByPatterns(expression, timestamps);
        expectTimestampsFoundAsByPatterns(timestampNoise(noise), timestamps);
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
    EXPECT_GE(timestamps, cases);
}

}  // namespace

}  // namespace vantrel::matcher_tests
