#!/usr/bin/env bash
# Runs a sweep on real links in many parts at once, as each waits most of its time, and adds up what they saw.
#
#     in_parts.sh PARTS EVERY FILTER PROGRAM...
#
# Each part works in a folder of its own below the current one; EVERY says of how many cases one is run.
set -euo pipefail

parts=$1 every=$2 filter=$3
shift 3

for ((part = 0; part < parts; ++part)); do
    mkdir -p "part$part"
    (cd "part$part" && TELVOFM_LINK_SWEEP="$part/$parts $every" "$@" "--gtest_filter=$filter" >output 2>&1) &
done
failed=0
for job in $(jobs -p); do
    wait "$job" || failed=$((failed + 1))
done

# Lines "    call 1, success   12" and "12 cases of 166233".
cat part*/output | tr -d '\r' | awk '
    / cases of / { cases += $1; all = $4 }
    /^    call [12], / { count = $NF; $NF = ""; sums[$0] += count }
    END {
        printf "%d cases of %d\n", cases, all
        for (verdict in sums) printf "    %-28s %8d\n", verdict, sums[verdict]
    }' | sort
grep -h -A2 'Failure$' part*/output || true
printf '%d parts failed\n' "$failed"
[[ $failed -eq 0 ]]
