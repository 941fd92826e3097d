#!/usr/bin/env python3
"""Runs a fuzzer, and prints how many inputs it tried in a second of processor: fewer than 1,000 are too few.

    long_run.py FUZZER [ARGUMENT ...]
"""
import re
import resource
import subprocess
import sys

FEWEST = 1000


def main():
    run = subprocess.run(sys.argv[1:], stderr=subprocess.PIPE, text=True, errors="replace", check=False)
    print(run.stderr)
    if run.returncode:
        sys.exit("long_run: the fuzzer has found something; what it tried stands above")
    tried = re.search(r"number_of_executed_units: (\d+)", run.stderr)
    if not tried:
        sys.exit("long_run: the fuzzer does not say how many inputs it tried; it takes -print_final_stats=1")
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    seconds = used.ru_utime + used.ru_stime
    rate = int(tried[1]) / seconds
    print(f"tried {int(tried[1]):,} inputs in {seconds:.0f} s of processor, {rate:,.0f} in a second")
    if rate < FEWEST:
        sys.exit(f"long_run: fewer than {FEWEST:,} inputs in a second of processor: too much is done for each")


main()
