"""Judges with the thread sanitizer what has to do with locks: it sees whenever nothing keeps two threads apart, and a test by itself
only when they meet. The tests are those of the label `threads`, with the sanitizer in them and in the library: they judge every lock,
and what else of these kinds lives. That they let one live says less than it does elsewhere, as these are not all the tests."""
import re

from judgement import Judge, Results
from linked import link_all
from recording import record
from tests_of_library import Runner, programs_of, tests_of_programs
from woven_library import WovenLibrary

LOCKS = ("lock not taken", "lock released early")
OPTION = "-fsanitize=thread"
SETTINGS = {"TSAN_OPTIONS": "halt_on_error=1:strict_string_checks=1", "TELVOFM_RACE_SECONDS": "2"}


def locks(mutants):
    return [one for one in mutants if one.kind in LOCKS]


def of_threads(mutants):
    return [one for one in mutants if one.kind in (*LOCKS, "order exchanged")]


class SanitizedRunner(Runner):
    """The sanitizer's shadow of the memory is larger than any limit."""

    def __init__(self, folder, linked):
        super().__init__(folder, linked, memory="unlimited", **SETTINGS)


def judge_of_threads(top, folder, files, mutants, given):
    """A judge of those that have to do with locks, with results of its own, and the folder of what it runs."""
    build = top / "build/tsan"
    if not (build / "libtelvofm.so").exists():
        raise SystemExit("cmake --preset tsan and cmake --build --preset tsan --target tests_of_threads first")
    library = WovenLibrary(top, folder, files, of_threads(mutants), OPTION)
    library.build()
    tests = [test for test in tests_of_programs(build, "--label-regex", "^threads$") if re.search(given.tests, test.name)]
    link_all(library, build, folder / "linked", programs_of(tests))
    tests, failing = record(tests, folder, folder / "linked", given.at_once, SanitizedRunner)
    print(f"{len(tests)} tests of threads with the sanitizer; without a mutant fail: {failing}", flush=True)
    return Judge(tests, Results(folder / "results.jsonl", tests)), folder / "linked"
