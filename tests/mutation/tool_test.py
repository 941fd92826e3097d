#!/usr/bin/python3 -B
"""The tool judges rightly: of a toy with one weak test it kills what the test sees, and lets live what it does not see or what
changes nothing."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
from judgement import Judge, Results  # noqa: E402
from made import all_mutants  # noqa: E402
from recording import record  # noqa: E402
from tests_of_library import Runner, Test  # noqa: E402
from woven_library import OPTIONS, WovenLibrary, precompiled  # noqa: E402

TEST = """
int larger(int, int);
int bounded(int, int);
int main(int count, char**)
{
    if (count > 1) { return bounded(7, 100) == 7 ? 0 : 1; }
    return larger(1, 2) == 2 && larger(2, 1) == 2 ? 0 : 1;
}
"""


class Tool(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.temporary = tempfile.TemporaryDirectory()
        work = pathlib.Path(cls.temporary.name)
        (work / "linked").mkdir()
        cls.mutants = all_mutants(HERE / "toy", [*OPTIONS, *precompiled(work)], work / "no thoughts", ["link/largest.cpp"])
        library = WovenLibrary(HERE / "toy", work, ["link/largest.cpp"], cls.mutants)
        library.build()
        cls.left_out = library.left_out
        (work / "test.cpp").write_text(TEST)
        subprocess.run(["clang++", "-O0", str(work / "test.cpp"), str(library.object_of("link/largest.cpp")),
                        "-o", str(work / "linked/toy_test")], check=True)
        tests = [Test("larger", ["toy_test"]), Test("bounded", ["toy_test", "bounded"])]
        tests, failing = record(tests, work, work / "linked", 1)
        assert not failing, failing
        results = Results(work / "results.jsonl")
        judge, runner = Judge(tests, results, 100), Runner(work / "work", work / "linked")
        for one in cls.mutants:
            judge.judge(runner, one, one.number)
        cls.results = Results(work / "results.jsonl")  # read again, as a run that goes on does

    @classmethod
    def tearDownClass(cls):
        cls.temporary.cleanup()

    def outcome(self, function, original, text):
        found = [one for one in self.mutants if (one.function, one.original, one.text) == (function, original, text)]
        self.assertEqual(len(found), 1, [one.describe() for one in self.mutants])
        return self.results.by_key[found[0].key]["outcome"]

    def test_every_mutant_compiles(self):
        self.assertEqual(self.left_out, [])
        self.assertGreater(len(self.mutants), 15)

    def test_what_a_test_sees_is_killed(self):
        self.assertEqual(self.outcome("larger", "one < other", "one >= other"), "killed")
        self.assertEqual(self.outcome("larger", "one < other", "true"), "killed")
        self.assertEqual(self.outcome("larger", "one", "(one) + 1"), "killed")

    def test_what_changes_nothing_survives(self):
        self.assertEqual(self.outcome("larger", "one < other", "one <= other"), "survived")

    def test_what_no_test_sees_survives(self):
        self.assertEqual(self.outcome("bounded", "0", "0 + 1"), "survived")
        self.assertEqual(self.outcome("bounded", "positive < most", "positive <= most"), "survived")

    def test_only_tests_that_reach_a_mutant_are_run(self):
        told = {one.function: self.results.by_key[one.key]["test"] for one in self.mutants
                if self.results.by_key[one.key]["outcome"] == "survived"}
        self.assertEqual(told, {"larger": "2 of 2 tests pass", "bounded": "1 of 1 tests pass"})


unittest.main()
