#!/usr/bin/env bash
# Builds the engine fuzzer with clang in build-fuzz and runs it.
#
#   scripts/fuzz.sh [SECONDS]      (default 600)
#
# The corpus lives in build-fuzz/corpus and grows from run to run. The seeds in fuzz/seeds are
# plain expressions; the fuzzer reads its first byte as the rate and display mode, so each seed is
# copied in 28 times, once behind every selector byte 0 to 27. Crashes, timeouts and leaks land in
# build-fuzz/artifacts.
set -euo pipefail

seconds="${1:-600}"
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="$root/build-fuzz"
corpus="$build/corpus"
artifacts="$build/artifacts"

configure_and_build() {
    cmake -S "$root" -B "$build" -G Ninja \
        -DCMAKE_CXX_COMPILER=clang++ \
        -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DVANTREL_FUZZ=ON -DVANTREL_TESTS=OFF -DVANTREL_BENCH=OFF
    cmake --build "$build" --target vantrel-fuzz-engine
}

seed_corpus() {
    mkdir -p "$corpus" "$artifacts"
    local seed selector
    for seed in "$root"/fuzz/seeds/*; do
        for selector in $(seq 0 27); do
            {
                printf '%b' "\\0$(printf '%03o' "$selector")"
                cat "$seed"
            } >"$corpus/seed-$(basename "$seed")-$selector"
        done
    done
}

"$root/scripts/install-deps.sh" clang libclang-rt-14-dev
configure_and_build
seed_corpus
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
exec "$build/bin/vantrel-fuzz-engine" \
    -max_total_time="$seconds" \
    -max_len=2048 \
    -timeout=5 \
    -dict="$root/fuzz/expression.dict" \
    -artifact_prefix="$artifacts/" \
    -print_final_stats=1 \
    "$corpus"
