#!/usr/bin/env bash
# Loads the bash completion of vantrel-calc and asks it what completes a word, as Tab would:
# every rate code, display mode and notation it offers must be one that vantrel-calc accepts.
#
#   completion-check.sh COMPLETION_SCRIPT VANTREL_CALC
set -euo pipefail
source "$1"
calc=$2

completions() {
    COMP_WORDS=(vantrel-calc "$@")
    COMP_CWORD=$(($# ))
    COMPREPLY=()
    _vantrel_calc
    printf '%s\n' "${COMPREPLY[@]}"
}

check_values() {
    local option=$1 expected=$2 value count=0
    for value in $(completions "$option" ""); do
        "$calc" "$option" "$value" 1 >/dev/null || { echo "$option $value is refused" >&2; exit 1; }
        count=$((count + 1))
    done
    [ "$count" -eq "$expected" ] || { echo "$option offers $count values, not $expected" >&2; exit 1; }
}

check_values -r 20
check_values --display 9
check_values --gauge 5
check_values --sample-rate 3
check_values -n 2
[ "$(completions -r 5)" = $'50\n59d\n59n' ] && [ "$(completions -r 11)" = $'119n\n119d' ] || { echo "-r 5 completes wrongly" >&2; exit 1; }
[ "$(completions --no)" = "--notation" ] || { echo "--no does not complete" >&2; exit 1; }
[ -z "$(completions -- -r "")" ] || { echo "after -- only expressions follow" >&2; exit 1; }
echo "bash completion offers what vantrel-calc accepts"
