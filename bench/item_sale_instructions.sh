#!/usr/bin/env bash
# Counts the user-space instructions of one itemSale with the call log off, everything that it calls included;
# at most 3000 are wanted.
#
#     item_sale_instructions.sh PROGRAM [CALLS]      PROGRAM is the built item_sale
set -euo pipefail

program=$1
calls=${2:-2000}
profile=$(mktemp -p . callgrind.XXXXXX)
trap 'rm -f "$profile" "$profile.log"' EXIT

# Counting is on only inside itemSale; the first calls, which load what is loaded once, are spread over all.
valgrind --tool=callgrind --toggle-collect=itemSale --callgrind-out-file="$profile" --log-file="$profile.log" \
    "$program" --calls "$calls" >/dev/null
total=$(awk '/^(summary|totals):/ { print $2; exit }' "$profile")
echo "itemSale: $((total / calls)) user-space instructions per call, over $calls calls"
readonly most=3000
if ((total / calls > most)); then
    echo "item_sale_instructions: a sale took $((total / calls)) instructions, at most $most are wanted; see which function below has grown" >&2
    outcome=1
fi
callgrind_annotate --threshold=95 "$profile" | awk '/Ir +file:function/ { shown = 1 } shown && ++lines <= 30'
exit "${outcome:-0}"
