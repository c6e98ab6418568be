#!/usr/bin/env bash
# Drives the bash completion of kiv as bash would: COMP_WORDS, COMP_CWORD,
# then the words offered in COMPREPLY.
# usage: completion_test.sh kiv.bash path/to/kiv
set -u
source "$1"
kiv=$2
failures=0
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$scratch/regdir" && touch "$scratch/regfile"

# complete WORD... : the last word is the one being completed.
complete_words() {
    COMP_WORDS=("$kiv" "$@")
    COMP_CWORD=$#
    COMPREPLY=()
    _kiv
    printf '%s\n' "${COMPREPLY[@]}" | sort | tr '\n' ' ' | sed 's/ $//'
}
expect() {
    local want=$1
    shift
    local got
    got=$(complete_words "$@")
    if [[ $got != "$want" ]]; then
        echo "kiv $* <Tab>: offered [$got], expected [$want]"
        failures=$((failures + 1))
    fi
}

expect "check eval help list run vbs" ""
expect "check" "ch"
expect "--drive --drive-c" "--dr"
expect "--version" "--v"
expect "--version" "run" "x.kiv" "--ver"
expect "FmtNum FmtNumOld" "help" "FmtN"
expect "FmtNum FmtNumOld" "--now" "2026-03-15" "list" "fmtn"
expect "FmtNum FmtNumOld" "--now" "=" "2026-03-15" "eval" "FmtN"
expect "app=" "--pin" "a"
expect "$scratch/regdir" "--registry" "$scratch/reg"
expect "$scratch/regdir" "--registry" "=" "$scratch/reg"
expect "$scratch/regdir $scratch/regfile" "check" "$scratch/reg"
# A valued option's argument is not the command.
expect "check eval help list run vbs" "--drive-c" "help" ""
exit $((failures > 0))
