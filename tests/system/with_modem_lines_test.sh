#!/usr/bin/env bash
# A till sells on a pseudo-terminal of the virtual printer when scripts/with-modem-lines starts it.
#
#     with_modem_lines_test.sh SOURCE_FOLDER BUILD_FOLDER
set -euo pipefail
source_folder=$1
build=$2
script=$source_folder/scripts/with-modem-lines

give_up() {
    printf 'with_modem_lines_test: %s\n' "$*" >&2
    exit 1
}

work=$(mktemp -d "$build/with_modem_lines.XXXXXX")
printer=
trap '[[ -z $printer ]] || kill "$printer"; rm -rf "$work"' EXIT

outcome=0
"$script" 2>"$work/said" || outcome=$?
[[ $outcome -eq 2 ]] || give_up "without a program it ended with $outcome"
grep -q "name the till's program" "$work/said" || give_up "without a program it said: $(cat "$work/said")"

mkfifo "$work/paper"
"$build/telvofm-printer" --pty >"$work/paper" &
printer=$!
exec 3<"$work/paper"
read -r greeting <&3 || give_up "the virtual printer did not start"
# What the program ends with, and its arguments, are its own.
outcome=0
"$script" bash -c 'exit "$1"' bash 7 || outcome=$?
[[ $outcome -eq 7 ]] || give_up "a program that ends with 7 ended with $outcome"
"$script" "$build/telvofm-till" "COM${greeting##* }" "$work/calls.log" "$work/raw.log" ||
    give_up "the till could not sell"
while read -r line <&3; do
    [[ $line != "TOTAL EUR"* ]] || exit 0
done
give_up "the paper has no total"
