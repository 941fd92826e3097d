#!/usr/bin/python3 -B
"""A sample of scripts/prove mutation, for scripts/test: mutants of one room, judged by its own test program.

    tests/mutation/mutation_sample.py BUILD [--mutants N] [--seed N] [--tests REGEX]

The test program of BUILD is linked again with the woven sources of the room (../sampled_room.py); its headers are not woven. Each
mutant of the draw has to be killed, proven equal by a compiler, or listed in survivors.md. It ends with 1 when fewer than 97 % are.
What it makes lies in BUILD/mutation_sample and is made anew each time.
"""
import argparse
import collections
import concurrent.futures
import pathlib
import re
import shutil
import subprocess
import sys

from judgement import DONE, Judge, Results
from linked import link_again, link_command
from made import all_mutants
from mutant import drawn
from recording import record
from report import WANTED, judged_survivors
from same_code import SameCode
from syntax import TOP, own_files
from tests_of_library import Runner, Test
from woven_library import AT_ONCE, HERE, OPTIONS, WovenLibrary, precompiled

sys.path.insert(0, str(TOP / "tests"))
from sampled_room import DRAWN, PROGRAM, sources  # noqa: E402


def options():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--mutants", type=int, default=60, help="so many are drawn")
    parser.add_argument("--seed", type=int, default=17)
    parser.add_argument("--tests", default="", help="by tests whose name has this")
    return parser.parse_args()


class SampleRunner(Runner):
    def __init__(self, folder, linked):
        super().__init__(folder, linked, **DRAWN)


def tests_of(program):
    """Each by itself, as ctest has them."""
    listed = subprocess.run([program, "--gtest_list_tests"], capture_output=True, text=True, check=True, cwd=program.parent).stdout
    tests, suite = [], ""
    for line in listed.splitlines():
        name = line.split("#")[0].strip()
        if not line.startswith(" "):
            suite = name
        else:
            tests.append(Test(suite + name, [str(program), f"--gtest_filter={suite}{name}"]))
    return tests


def judged(judge, mutants, work):
    """The results, a line for each that lives."""
    with concurrent.futures.ThreadPoolExecutor(AT_ONCE) as several:
        runners = [SampleRunner(work / f"work/{place}", work / "linked") for place in range(AT_ONCE)]
        list(several.map(lambda place: [judge.judge(runners[place], one, one.number) for one in mutants[place::AT_ONCE]],
                         range(AT_ONCE)))
    return [judge.results.by_key[one.key] for one in mutants]


def main():
    given = options()
    work = given.build.resolve() / "mutation_sample"
    shutil.rmtree(work, ignore_errors=True)
    (work / "linked").mkdir(parents=True)
    found = all_mutants(TOP, [*OPTIONS, *precompiled(work), f"-I{TOP}"], HERE / "no thoughts", sources())
    asked = drawn([one for one in found if one.form != "alone"], given.mutants, given.seed)
    library = WovenLibrary(TOP, work, sources(), asked)
    library.build()
    link_again(link_command(given.build, PROGRAM), given.build, work / "linked" / PROGRAM,
               [library.object_of(source) for source in library.sources])

    tests = [test for test in tests_of(work / "linked" / PROGRAM) if re.search(given.tests, test.name)]
    tests, failing = record(tests, work, work / "linked", AT_ONCE, SampleRunner)
    listed, same_code = judged_survivors(HERE / "survivors.md"), SameCode(TOP, own_files(TOP), work)
    judge = Judge(tests, Results(work / "results.jsonl"), None,
                  lambda one: one.key not in listed and same_code.proves_equal(one))
    mutants = [one for of_file in library.mutants.values() for one in of_file]
    counts = collections.Counter()
    for entry in judged(judge, mutants, work):
        outcome = entry["outcome"] if entry["outcome"] in DONE else "listed" if entry["key"] in listed else "open"
        counts[outcome] += 1
        if outcome == "open":
            print(f"{entry['outcome']}: {entry['key']} {entry['mutant']} ({entry['test']})")
    share = 1 - counts["open"] / len(mutants)
    print(f"{len(found)} mutants, {len(tests)} tests; without a mutant fail: {failing}")
    print(f"of {len(mutants)} drawn: {dict(counts)}; killed, equal or listed {share:.2%}")
    return 1 if failing or share < WANTED else 0


sys.exit(main())
