#!/usr/bin/env bash
# Mutation check of the test suite: applies each mutant of scripts/mutants.txt in turn to a
# scratch copy of the tree (one changed comparison, constant, operator or dropped statement),
# rebuilds, runs the suite and counts the mutants that some test kills. A mutant that survives
# marks an edge no test guards.
#
#   scripts/mutate.sh [WORK_DIR]     (default: a new scratch folder; reused when given)
set -euo pipefail
cd "$(dirname "$0")/.."
tree=$PWD
work=${1:-$(mktemp -d)}
copy=$work/tree

if [ ! -d "$copy" ]; then
    git worktree add --detach -q "$copy" HEAD 2>/dev/null || cp -r "$tree" "$copy"
fi
rsync -a --delete --exclude .git --exclude 'build*' "$tree"/ "$copy"/ 2>/dev/null ||
    (cd "$tree" && tar cf - --exclude=.git --exclude='build*' .) | (cd "$copy" && tar xf -)
cmake -S "$copy" -B "$copy/build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$copy/build" >/dev/null

run_suite() {
    ctest --test-dir "$copy/build" -j "$(nproc)" --timeout 120 -E '^install\.' >/dev/null 2>&1
}
run_suite || { echo "the suite fails without any mutant" >&2; exit 1; }

killed=0
survived=0
stillborn=0
while IFS='|' read -r name original replacement; do
    [[ -z "$name" || "$name" == \#* ]] && continue
    file=$(find "$copy/engine" "$copy/calculator" -name "$name" | head -n 1)
    [ -n "$file" ] || { echo "no file $name" >&2; exit 1; }
    cp "$file" "$work/original"
    python3 - "$file" "$original" "$replacement" <<'PY'
import sys
path, original, replacement = sys.argv[1:]
text = open(path).read()
if text.count(original) != 1:
    sys.exit(f"{path}: the text occurs {text.count(original)} times: {original}")
open(path, "w").write(text.replace(original, replacement))
PY
    if ! cmake --build "$copy/build" >/dev/null 2>&1; then
        result=stillborn
        stillborn=$((stillborn + 1))
    elif run_suite; then
        result=SURVIVED
        survived=$((survived + 1))
    else
        result=killed
        killed=$((killed + 1))
    fi
    printf '%-9s %s: %s\n' "$result" "$name" "$original"
    cp "$work/original" "$file"
done < "$tree/scripts/mutants.txt"
cmake --build "$copy/build" >/dev/null
echo "mutants: $killed killed, $survived survived, $stillborn did not build"
