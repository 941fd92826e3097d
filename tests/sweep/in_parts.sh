#!/usr/bin/env bash
# Runs a sweep on real links in many parts at once, as each waits most of its time, and adds up what they saw.
#
#     in_parts.sh PARTS EVERY FILTER PROGRAM...
#
# Each part works in a folder of its own below the current one; EVERY says of how many cases one is run. It fails when a part
# fails, when a part has not ended after an hour and a half, and when there were fewer cases than that, as with a FILTER that
# meets no test.
set -euo pipefail

parts=$1 every=$2 filter=$3
shift 3

for ((part = 0; part < parts; ++part)); do
    mkdir -p "part$part"
    (cd "part$part" && TELVOFM_LINK_SWEEP="$part/$parts $every" \
        timeout --kill-after=10 5400 "$@" "--gtest_filter=$filter" >output 2>&1) &
    sleep 0.2 # each begins with work, and would not let the others answer in time
done
failed=0
for job in $(jobs -p); do
    wait "$job" || failed=$((failed + 1))
done

# Lines "    call 1, success   12" and "12 cases of 166233".
whole=0
cat part*/output | tr -d '\r' | awk -v every="$every" '
    / cases of / { cases += $1; all = $4 }
    /^    call [12], / { count = $NF; $NF = ""; sums[$0] += count }
    END {
        printf "%d cases of %d\n", cases, all
        for (verdict in sums) printf "    %-28s %8d\n", verdict, sums[verdict]
        exit cases == 0 || cases != int((all + every - 1) / every)
    }' >sums || whole=1
sort sums
[[ $whole -eq 0 ]] || printf 'that is not each case of %d\n' "$every"
grep -h -A2 'Failure$' part*/output || true
printf '%d parts failed\n' "$failed"
[[ $failed -eq 0 && $whole -eq 0 ]]
