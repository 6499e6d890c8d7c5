// libFuzzer entry point: the grammar matcher against Oniguruma. Every input is one text, searched
// and matched at its start in both flavours and both frame fields by both; any difference in the
// match or its capture tree is written to stderr and stops the process with a trap, which libFuzzer
// records as a crash together with the input. Texts on which Oniguruma reaches its effort bound are
// not compared.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "Grammar.h"
#include "OnigurumaComparison.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using vantrel::matcher_tests::OnigurumaComparison;
    // The matchers read the text byte by byte; char and uint8_t have the same size and alignment.
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    static OnigurumaComparison comparison;
    using vantrel::FrameField;
    for (const auto flavour : {vantrel::Flavour::PT, vantrel::Flavour::PF}) {
        for (const auto field : {FrameField::TwoDigits, FrameField::ThreeDigits}) {
            for (const auto mode :
                 {OnigurumaComparison::Mode::Search, OnigurumaComparison::Mode::MatchAtStart}) {
                if (comparison.compare(text, flavour, field, mode) !=
                    OnigurumaComparison::Outcome::Different)
                    continue;
                std::fprintf(stderr, "Grammar matcher differs from Oniguruma: %s\n",
                             comparison.difference().c_str());
                __builtin_trap();
            }
        }
    }
    return 0;
}
