// The grammar matcher against Oniguruma on generated texts: for every text, in both flavours,
// the search and the match at the start must give the same match and the same capture walk.
//
//   VANTREL_DIFF_CASES   number of texts (default 100000; the long run uses 10000000)
//   VANTREL_DIFF_SEED    seed of the generator (default 1)

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "ExpressionGenerator.h"
#include "OnigurumaComparison.h"

namespace vantrel::matcher_tests {

namespace {

constexpr std::uint64_t kDefaultCases = 100'000;
constexpr std::uint64_t kDefaultSeed = 1;
constexpr int kReportedDifferences = 20;

std::uint64_t environmentNumber(const char* name, std::uint64_t fallback) {
    const char* text = std::getenv(name);
    if (text == nullptr || *text == '\0') return fallback;
    std::uint64_t value = 0;
    const char* end = text + std::strlen(text);
    const auto [stop, error] = std::from_chars(text, end, value);
    if (error != std::errc() || stop != end) {
        ADD_FAILURE() << name << " is not a whole number: " << text;
        return fallback;
    }
    return value;
}

struct Tally {
    std::uint64_t texts = 0;
    std::uint64_t comparisons = 0;
    std::uint64_t sameMatch = 0;
    std::uint64_t wholeText = 0;
    std::uint64_t noMatchInEither = 0;
    std::uint64_t referenceGaveUp = 0;
    std::uint64_t differences = 0;
};

void print(const Tally& tally, double seconds) {
    std::printf(
        "%llu texts, %llu comparisons in %.1f s: %llu same match (%llu of the whole text), "
        "%llu no match in either, %llu skipped (Oniguruma reached its effort bound), "
        "%llu differences\n",
        static_cast<unsigned long long>(tally.texts),
        static_cast<unsigned long long>(tally.comparisons), seconds,
        static_cast<unsigned long long>(tally.sameMatch),
        static_cast<unsigned long long>(tally.wholeText),
        static_cast<unsigned long long>(tally.noMatchInEither),
        static_cast<unsigned long long>(tally.referenceGaveUp),
        static_cast<unsigned long long>(tally.differences));
    std::fflush(stdout);
}

TEST(MatcherDifferential, SameMatchesAndCaptureTreesAsOniguruma) {
    const std::uint64_t cases = environmentNumber("VANTREL_DIFF_CASES", kDefaultCases);
    const std::uint64_t seed = environmentNumber("VANTREL_DIFF_SEED", kDefaultSeed);
    std::printf("seed %llu, %llu texts\n", static_cast<unsigned long long>(seed),
                static_cast<unsigned long long>(cases));
    constexpr std::array<Flavour, 2> flavours{Flavour::PT, Flavour::PF};
    constexpr std::array<OnigurumaComparison::Mode, 2> modes{
        OnigurumaComparison::Mode::Search, OnigurumaComparison::Mode::MatchAtStart};
    using Outcome = OnigurumaComparison::Outcome;

    ExpressionGenerator generator(seed);
    OnigurumaComparison comparison;
    Tally tally;
    const auto started = std::chrono::steady_clock::now();
    const auto elapsed = [&] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    };
    for (; tally.texts < cases && tally.differences < kReportedDifferences; ++tally.texts) {
        if (tally.texts > 0 && tally.texts % 1'000'000 == 0) print(tally, elapsed());
        const std::string text = generator.next();
        for (const Flavour flavour : flavours) {
            for (const auto mode : modes) {
                ++tally.comparisons;
                switch (comparison.compare(text, flavour, mode)) {
                    case Outcome::SameMatch:
                        ++tally.sameMatch;
                        if (comparison.matchedWholeText()) ++tally.wholeText;
                        break;
                    case Outcome::NoMatchInEither:
                        ++tally.noMatchInEither;
                        break;
                    case Outcome::ReferenceGaveUp:
                        ++tally.referenceGaveUp;
                        break;
                    case Outcome::Different:
                        ++tally.differences;
                        ADD_FAILURE() << "text " << tally.texts << ": " << comparison.difference();
                        break;
                }
            }
        }
    }
    print(tally, elapsed());
    EXPECT_EQ(tally.differences, 0u);
    // The comparison proves something only when Oniguruma answers nearly always and the texts
    // are mostly ones with a match to compare.
    EXPECT_LE(tally.referenceGaveUp * 100, tally.comparisons);
    EXPECT_GE(tally.sameMatch * 2, tally.comparisons);
    EXPECT_GE(tally.wholeText * 5, tally.comparisons);
}

}  // namespace

}  // namespace vantrel::matcher_tests
