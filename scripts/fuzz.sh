#!/usr/bin/env bash
# Builds a fuzzer with clang in build-fuzz and runs it.
#
#   scripts/fuzz.sh [SECONDS] [TARGET]      (default 600 seconds, target engine)
#
# TARGET is one of:
#   engine         vantrel-fuzz-engine: everything the window does with a text, checked against
#                  what must always hold
#   matcher-diff   vantrel-fuzz-matcher-diff: the grammar matcher against Oniguruma, trapping on
#                  any difference in match or capture tree
#   timeline       vantrel-fuzz-timeline: the reading of a cut's file, its report and its table
#
# Each target has its own corpus in build-fuzz (corpus for engine, corpus-matcher-diff for the
# other), which grows from run to run. The seeds in fuzz/seeds are plain expressions. The engine
# fuzzer reads its first byte as the rate and display mode, so each seed is copied in 28 times, once
# behind every selector byte 0 to 27; the matcher fuzzer reads the whole input as the text and gets
# each seed once. Crashes, timeouts and leaks land in build-fuzz/artifacts.
set -euo pipefail

seconds="${1:-600}"
target="${2:-engine}"
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="$root/build-fuzz"
artifacts="$build/artifacts"

case "$target" in
    engine)
        binary=vantrel-fuzz-engine
        corpus="$build/corpus"
        max_len=2048
        ;;
    matcher-diff)
        binary=vantrel-fuzz-matcher-diff
        corpus="$build/corpus-matcher-diff"
        # Oniguruma needs up to a second on long unclosed texts before its bound stops it, and
        # gives no answer to compare there; shorter inputs keep the comparisons coming.
        max_len=512
        ;;
    timeline)
        binary=vantrel-fuzz-timeline
        corpus="$build/corpus-timeline"
        max_len=65536
        ;;
    *)
        echo "usage: scripts/fuzz.sh [SECONDS] [engine|matcher-diff|timeline]" >&2
        exit 2
        ;;
esac

configure_and_build() {
    cmake -S "$root" -B "$build" -G Ninja \
        -DCMAKE_CXX_COMPILER=clang++ \
        -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DVANTREL_FUZZ=ON -DVANTREL_TESTS=OFF -DVANTREL_BENCH=OFF
    cmake --build "$build" --target "$binary"
}

seed_corpus() {
    mkdir -p "$corpus" "$artifacts"
    local seed selector
    if [ "$target" = timeline ]; then
        # The cuts of the golden files in every format, each behind a request byte for a rate
        # from the file.
        for seed in "$root"/tests/golden/*.{edl,fcpxml,xml,otio,ale}; do
            { printf '\0'; cat "$seed"; } >"$corpus/seed-$(basename "$seed")"
        done
        return
    fi
    for seed in "$root"/fuzz/seeds/*; do
        if [ "$target" != engine ]; then
            cp "$seed" "$corpus/seed-$(basename "$seed")"
            continue
        fi
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
exec "$build/bin/$binary" \
    -max_total_time="$seconds" \
    -max_len="$max_len" \
    -timeout=5 \
    -dict="$root/fuzz/$([ "$target" = timeline ] && echo timeline || echo expression).dict" \
    -artifact_prefix="$artifacts/" \
    -print_final_stats=1 \
    "$corpus"
