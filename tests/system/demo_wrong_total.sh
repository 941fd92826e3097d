#!/usr/bin/env bash
# The demonstration must fail when the paper has another total than the till sold.
#
#     demo_wrong_total.sh DEMO BUILD-FOLDER
set -euo pipefail

if output=$(DEMO_SOLD=17.48 "$1" --build "$2" 2>&1); then
    printf 'the demonstration was content with a wrong total\n%s\n' "$output" >&2
    exit 1
fi
if ! grep --fixed-strings 'demo: the paper says a total of "17.49", but the till sold 17.48' <<<"$output"; then
    printf 'the demonstration failed for another reason\n%s\n' "$output" >&2
    exit 1
fi
