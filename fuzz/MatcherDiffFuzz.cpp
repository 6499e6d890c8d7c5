// libFuzzer entry point: the grammar matcher against Oniguruma. Every input is one text, searched
// and matched at its start in both flavours by both; any difference in the match or its capture
// tree is written to stderr and stops the process with a trap, which libFuzzer records as a crash
// together with the input. Texts on which Oniguruma reaches its effort bound are not compared.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "Grammar.h"
#include "OnigurumaComparison.h"

namespace {

using vantrel::Flavour;
using vantrel::matcher_tests::OnigurumaComparison;

constexpr std::array<Flavour, 2> kFlavours{Flavour::PT, Flavour::PF};
constexpr std::array<OnigurumaComparison::Mode, 2> kModes{OnigurumaComparison::Mode::Search,
                                                          OnigurumaComparison::Mode::MatchAtStart};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The matchers read the text byte by byte; char and uint8_t have the same size and alignment.
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    static OnigurumaComparison comparison;
    for (const Flavour flavour : kFlavours) {
        for (const auto mode : kModes) {
            if (comparison.compare(text, flavour, mode) !=
                OnigurumaComparison::Outcome::Different) {
                continue;
            }
            std::fprintf(stderr, "Grammar matcher differs from Oniguruma: %s\n",
                         comparison.difference().c_str());
            __builtin_trap();
        }
    }
    return 0;
}
