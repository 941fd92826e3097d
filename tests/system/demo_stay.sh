#!/usr/bin/env bash
# The demonstration that stays: it names a page that is there, and each Enter sells a receipt.
#
#     demo_stay.sh DEMO BUILD_FOLDER
set -euo pipefail
coproc demo { "$1" --build "$2" --stay 2>&1; }
exec 3<&"${demo[0]}" 4>&"${demo[1]}"

wait_for() {
    while read -r -t 60 line <&3; do
        printf '%s\n' "$line"
        [[ $line != *$1* ]] || return 0
    done
    printf 'demo_stay: "%s" was never said\n' "$1" >&2
    exit 1
}

wait_for "listening on "
wait_for "open http://127.0.0.1:"
page=$(sed -n 's/.*open \(http[^ ]*\) .*/\1/p' <<<"$line")
curl --silent --show-error --fail "$page" | grep -q '<title>Virtual printer'
for _ in 1 2; do
    echo >&4
    wait_for "sold 17.49"
done
documents=$(curl --silent --show-error --fail "${page}printers/printer/documents")
[[ $(grep -c '"total": "17.49"' <<<"$documents") == 2 ]]
exec 4>&- # the end of its input ends it
eval "exec ${demo[1]}>&-"
wait "$demo_PID"
