"""Judges once more what lives and has to do with locks: the thread sanitizer sees whenever nothing keeps two threads apart, and a
test by itself only when they meet. The tests are those of the label `threads`, with the sanitizer in them and in the library."""
import re
import time

from judgement import Judge
from linked import link_all
from recording import record
from tests_of_library import Runner, programs_of, tests_of_programs
from woven_library import WovenLibrary

KINDS = ("lock not taken", "lock released early", "order exchanged")
OPTION = "-fsanitize=thread"
SETTINGS = {"TSAN_OPTIONS": "halt_on_error=1:strict_string_checks=1", "TELVOFM_RACE_SECONDS": "2"}


def of_locks(mutants):
    return [one for one in mutants if one.kind in KINDS]


class SanitizedRunner(Runner):
    """The sanitizer's shadow of the memory is larger than any limit."""

    def __init__(self, folder, linked):
        super().__init__(folder, linked, memory="unlimited", **SETTINGS)


class JudgeOfThreads(Judge):
    """Of what lives on it says nothing: these are not all the tests."""

    def judge(self, runner, mutant, number):
        started = time.monotonic()
        killer = self.killer(runner, mutant, number, self.order(mutant, number), runner)
        if killer:
            self.results.add(mutant, "killed", f"{killer}, with the thread sanitizer", time.monotonic() - started)


def judge_of_threads(top, folder, files, mutants, results, given):
    """A judge of those that have to do with locks, and the folder of what it runs."""
    build = top / "build/tsan"
    if not (build / "libtelvofm.so").exists():
        raise SystemExit("cmake --preset tsan and cmake --build --preset tsan --target tests_of_threads first")
    library = WovenLibrary(top, folder, files, of_locks(mutants), OPTION)
    library.build()
    tests = [test for test in tests_of_programs(build, "--label-regex", "^threads$") if re.search(given.tests, test.name)]
    link_all(library, build, folder / "linked", programs_of(tests))
    tests, failing = record(tests, folder, folder / "linked", given.at_once, SanitizedRunner)
    print(f"{len(tests)} tests of threads with the sanitizer; without a mutant fail: {failing}", flush=True)
    return JudgeOfThreads(tests, results), folder / "linked"
