#!/usr/bin/python3 -B
"""Makes mutants of the library's sources, and judges them by the tests of the library.

    tests/mutation/mutation.py [--at-once N] [--most-tests N] [--sample N] [--seed N] [--only REGEX]
                               [--tests REGEX] [--list] [--seconds N]

The tests are those of build/coverage, and for locks those of build/tsan, which scripts/prove mutation builds; only the
library is built anew, with all mutants in it behind a switch. What it makes and finds lies in build/mutation, a line for
each mutant in results.jsonl, for each lock in threads/results.jsonl: it goes on where it was ended. README.md beside it tells
the rest; it needs the system's Python, for libclang.
"""
import argparse
import concurrent.futures
import queue
import re
import sys
import time

from alone import judge_alone
from judgement import Judge, Results
from linked import link_all
from made import kept_mutants
from mutant import drawn
from recording import record
from report import judged_survivors, report, report_locks
from same_code import SameCode
from sanitized import SanitizedRunner, judge_of_threads, locks, of_threads
from syntax import TOP, own_files
from tests_of_library import Runner, library_tests, programs_of
from woven_library import HERE, OPTIONS, WovenLibrary, precompiled

BEGAN = time.monotonic()


def options():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--at-once", type=int, default=2, help="so many tests at once")
    parser.add_argument("--most-tests", type=int, help="so many tests of a mutant; then all, of one that lives and is not listed")
    parser.add_argument("--sample", type=int, help="so many mutants, drawn at random: the same ones for a seed")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--seconds", type=float, default=1e9, help="begin no mutant later than this")
    parser.add_argument("--only", default="", help="mutants whose key or description has this")
    parser.add_argument("--tests", default="", help="by tests whose name has this")
    parser.add_argument("--list", action="store_true", help="print them and judge none")
    parser.add_argument("--record", action="store_true", help="find out anew what each test reaches")
    return parser.parse_args()


def judge_all(judge, mutants, work, linked, given, make_runner=Runner):
    """Several at once, each in a folder of its own."""
    places = queue.Queue()
    for i in range(given.at_once):
        places.put(make_runner(work / f"work/{i}", linked))

    def one(mutant):
        if time.monotonic() - BEGAN < given.seconds:
            runner = places.get()
            try:
                judge.judge(runner, mutant, mutant.number)
            finally:
                places.put(runner)

    with concurrent.futures.ThreadPoolExecutor(given.at_once) as several:
        list(several.map(one, mutants))


def main():
    given = options()
    build, work = TOP / "build/coverage", TOP / "build/mutation"
    work.mkdir(parents=True, exist_ok=True)
    files = own_files(TOP)
    mutants = kept_mutants(TOP, [*OPTIONS, *precompiled(work), f"-I{TOP}"], HERE / "thoughts.toml", files, work / "mutants.json")
    if given.list:
        for one in mutants:
            print(one.key, one.line, one.describe())
        return
    library = WovenLibrary(TOP, work, files, mutants)
    library.build()
    tests = [test for test in library_tests(TOP, build) if re.search(given.tests, test.name)]
    programs = programs_of(tests)
    link_all(library, build, work / "linked", programs)
    for reached in (work / "reached.jsonl", work / "threads/reached.jsonl"):  # by the mutants' numbers, which other mutants change
        if given.record or reached.exists() and reached.stat().st_mtime < (work / "mutants.json").stat().st_mtime:
            reached.unlink(missing_ok=True)
    tests, failing = record(tests, work, work / "linked", max(4, given.at_once))
    woven = [one for one in mutants if one not in library.left_out and one.form != "alone"]
    alone = [one for one in mutants if one.form == "alone"] if given.sample is None else []
    results = Results(work / "results.jsonl", tests)
    print(f"{len(mutants)} mutants, {len(library.left_out)} that do not compile, {len(tests)} tests; without a mutant fail: {failing}", flush=True)
    listed = judged_survivors(HERE / "survivors.md")
    found = [one for one in woven + alone if re.search(given.only, f"{one.key} {one.describe()}")]
    asked = drawn(found, given.sample, given.seed)
    if given.sample is not None and len(asked) < given.sample:
        sys.exit(f"mutation: only {len(asked)} mutants are there, {given.sample} are wanted")
    wanted = results.wanted(asked, listed)
    judge = Judge(tests, results, given.most_tests, SameCode(TOP, files, work).proves_equal)
    judge_all(judge, [one for one in wanted if one.form != "alone"], work, work / "linked", given)
    for one in wanted:
        if one.form == "alone":
            judge_alone(judge, one, library, build, work, programs, woven)
    living = [one for one in of_threads(wanted) if one.key in results.by_key and not results.is_done(one)]
    sanitized, linked = judge_of_threads(TOP, work / "threads", files, woven, given)
    every_lock = locks(found)  # also those that were not drawn
    others = [one for one in living if one not in every_lock]
    judge_all(sanitized, sanitized.results.wanted(every_lock + others, listed), work / "threads", linked, given, SanitizedRunner)
    for one in living:
        if sanitized.results.is_done(one):
            seen = sanitized.results.by_key[one.key]
            results.add(one, "killed", f"{seen['test']}, with the thread sanitizer", seen["seconds"])
    judge.wavering.update(sanitized.wavering)
    judge.most_tests = None
    judge_all(judge, [one for one in wanted if results.is_undecided(one) and one.key not in listed], work, work / "linked", given)
    sys.exit(report(asked, mutants, results, listed, judge.wavering) | report_locks(every_lock, sanitized.results, listed))


main()
