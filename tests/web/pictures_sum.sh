#!/usr/bin/env bash
# Tells whether the pictures in the documentation are older than the page: a sum of what they are made of lies beside them.
#
#     pictures_sum.sh --check | --keep
set -euo pipefail
cd "$(dirname "$0")/../.."
kept=docs/pictures/page.sum
sum=$(cat virtual_printer/web/files/* tests/web/{pictures,logo,shop}.mjs | sha256sum)
if [[ $1 == --keep ]]; then
    printf '%s\n' "$sum" >"$kept"
elif [[ $(cat "$kept" 2>/dev/null) != "$sum" ]]; then
    echo "docs/pictures shows another page than there is: make it anew with 'ninja -C build/release page_pictures' and look at it" >&2
    exit 1
fi
