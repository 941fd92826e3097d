#!/usr/bin/python3 -B
"""The tool judges rightly: of a toy with one weak test it kills what the test sees, and lets live what it does not see or what
changes nothing."""
import contextlib
import io
import pathlib
import subprocess
import sys
import tempfile
import types
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
from judgement import Judge, Results  # noqa: E402
from made import all_mutants  # noqa: E402
from mutant import Mutant, drawn  # noqa: E402
from recording import record  # noqa: E402
from report import report, report_locks  # noqa: E402
from same_code import SameCode  # noqa: E402
from sanitized import OPTION, SanitizedRunner, locks  # noqa: E402
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
        judge = Judge(tests, results, 100, SameCode(HERE / "toy", ["link/largest.cpp"], work).proves_equal)
        runner = Runner(work / "work", work / "linked")
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

    def test_what_changes_nothing_is_proven_equal(self):
        self.assertEqual(self.outcome("larger", "one < other", "one <= other"), "equal")
        self.assertEqual(self.outcome("bounded", "positive < most", "positive <= most"), "equal")

    def test_what_no_test_sees_survives(self):
        self.assertEqual(self.outcome("bounded", "0", "0 + 1"), "survived")

    def test_only_tests_that_reach_a_mutant_are_run(self):
        told = {one.function: self.results.by_key[one.key]["test"] for one in self.mutants
                if self.results.by_key[one.key]["outcome"] == "survived"}
        self.assertEqual(told, {"bounded": "1 of 1 tests pass"})


class KeptResults(unittest.TestCase):
    def outcome(self, killer, *names):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "results.jsonl")
            mutant = Mutant("link/one.cpp", 0, 1, "expression", "2", "", "", "1", 1)
            Results(path).add(mutant, "killed", killer, 0.5)
            return Results(path, [Test(name, []) for name in names]).is_done(mutant)

    def test_a_kill_counts_as_long_as_its_test_is_there(self):
        self.assertTrue(self.outcome("one", "one", "two"))
        self.assertFalse(self.outcome("one", "two"))

    def test_what_lives_is_judged_again_and_last_unless_it_is_listed(self):
        mutants = [Mutant("link/one.cpp", 0, 1, "expression", "2", "", "", "1", 1, key=key) for key in ("killed", "listed", "lives", "new")]
        with tempfile.TemporaryDirectory() as folder:
            results = Results(pathlib.Path(folder, "results.jsonl"))
            for one, outcome in zip(mutants, ("killed", "survived", "survived")):
                results.add(one, outcome, "one", 0.5)
            self.assertEqual([one.key for one in results.wanted(mutants, {"listed", "new"})], ["new", "lives"])

    def test_how_it_failed_is_no_part_of_its_name(self):
        self.assertTrue(self.outcome("one (time limit)", "one"))
        self.assertTrue(self.outcome("one, with the thread sanitizer", "one"))
        self.assertTrue(self.outcome("one/a  # GetParam() = 8-byte object <4E-84>", "one/a  # GetParam() = 8-byte object <00-00>"))


class Draw(unittest.TestCase):
    MUTANTS = [Mutant("link/one.cpp", 0, 1, "expression", "2", "", "", "1", 1, key=str(number)) for number in range(100)]

    def test_is_the_same_for_a_seed_and_another_for_another(self):
        first = drawn(self.MUTANTS, 30, 17)
        self.assertEqual(len(first), 30)
        self.assertEqual(first, drawn(self.MUTANTS[::-1], 30, 17))
        self.assertNotEqual(first, drawn(self.MUTANTS, 30, 18))

    def test_keeps_what_it_drew_when_others_go(self):
        first = drawn(self.MUTANTS, 30, 17)
        self.assertEqual(first, drawn([one for one in self.MUTANTS if one in first or int(one.key) % 2], 30, 17))

    def test_is_all_without_a_number(self):
        self.assertEqual(len(drawn(self.MUTANTS, None, 17)), 100)


THREADS = """
#include <atomic>
#include <thread>
int next();
int ofNobody = 0;
int main(int count, char**)
{
    if (count > 1) { // a race of the test's own
        std::thread other([] { ++ofNobody; });
        ++ofNobody;
        other.join();
        return 0;
    }
    std::atomic<bool> isFirstDone = false; // one call after the other, but nothing that the sanitizer takes for an order
    std::thread first([&] {
        next();
        isFirstDone.store(true, std::memory_order_relaxed);
    });
    while (!isFirstDone.load(std::memory_order_relaxed)) {}
    const bool isSecond = next() == 2;
    first.join();
    return isSecond ? 0 : 1;
}
"""


class Locks(unittest.TestCase):
    FILE = "link/counter.cpp"

    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(temporary.cleanup)
        cls.work = pathlib.Path(temporary.name)
        cls.mutants = locks(all_mutants(HERE / "toy", [*OPTIONS, *precompiled(cls.work)], cls.work / "no thoughts", [cls.FILE]))
        cls.plain = cls.judged(cls.work, Runner)
        cls.results = cls.judged(cls.work / "sanitized", SanitizedRunner, OPTION)

    @classmethod
    def judged(cls, work, make_runner, *option):
        (work / "linked").mkdir(parents=True)
        library = WovenLibrary(HERE / "toy", work, [cls.FILE], cls.mutants, *option)
        library.build()
        (work / "test.cpp").write_text(THREADS)
        subprocess.run(["clang++", "-std=c++20", *option, str(work / "test.cpp"), str(library.object_of(cls.FILE)), "-pthread",
                        "-o", str(work / "linked/toy_test")], check=True)
        tests, _ = record([Test("in turn", ["toy_test"])], work, work / "linked", 1, make_runner)
        results = Results(work / "results.jsonl")
        judge = Judge(tests, results)
        for one in cls.mutants:
            judge.judge(make_runner(work / "work", work / "linked"), one, one.number)
        return results

    def entries(self, results):
        return {one.kind: results.by_key.get(one.key, {}) for one in self.mutants}

    def test_without_the_sanitizer_they_live(self):
        self.assertEqual({kind: entry["outcome"] for kind, entry in self.entries(self.plain).items()},
                         {"lock not taken": "survived", "lock released early": "survived"})

    def test_the_sanitizer_sees_what_no_thread_has_met(self):
        self.assertEqual({kind: (entry["outcome"], entry["test"]) for kind, entry in self.entries(self.results).items()},
                         dict.fromkeys(("lock not taken", "lock released early"), ("killed", "in turn")))

    def test_a_race_of_the_test_itself_is_not_believed(self):
        racing = Test("racing", ["toy_test", "racing"], reached=frozenset(one.number for one in self.mutants))
        results = Results(self.work / "racing.jsonl")
        judge = Judge([racing], results)
        runner = SanitizedRunner(self.work / "sanitized/work", self.work / "sanitized/linked")
        judge.judge(runner, self.mutants[0], self.mutants[0].number)
        self.assertEqual((results.by_key[self.mutants[0].key]["outcome"], dict(judge.wavering)), ("survived", {"racing": 1}))

    def test_one_that_no_thread_shows_has_to_be_in_the_list(self):
        with contextlib.redirect_stdout(io.StringIO()) as told:
            ends = [report_locks(self.mutants, results, listed)
                    for results in (self.results, self.plain) for listed in ({}, {one.key for one in self.mutants})]
        self.assertEqual(ends, [0, 0, 1, 0])
        self.assertEqual([line for line in told.getvalue().splitlines() if line.startswith("locks:")],
                         [f"locks: {seen} of 2 seen by the thread sanitizer" for seen in (2, 2, 0, 0)])


class Report(unittest.TestCase):
    """Of a hundred mutants."""

    def ends(self, *outcomes, listed=()):
        drawn_ones = [types.SimpleNamespace(key=str(number), file="link/one.cpp", line=number, kind="constant",
                                            describe=lambda: "is another one") for number in range(100)]
        judged = dict(zip((one.key for one in drawn_ones), outcomes + ("killed",) * (100 - len(outcomes))))
        results = types.SimpleNamespace(by_key={key: {"outcome": outcome, "test": ""} for key, outcome in judged.items() if outcome})
        with contextlib.redirect_stdout(io.StringIO()) as told:
            end = report(drawn_ones, drawn_ones, results, {str(number): "" for number in listed}, {})
        return end, told.getvalue()

    def test_wants_97_of_a_hundred_killed(self):
        self.assertEqual(self.ends(*["survived"] * 3, listed=range(3))[0], 0)
        self.assertEqual(self.ends(*["survived"] * 4, listed=range(4))[0], 1)

    def test_wants_each_survivor_judged_in_writing(self):
        end, told = self.ends("survived")
        self.assertEqual((end, told.splitlines()[0]), (1, "survived: 0 link/one.cpp:0 is another one ()"))

    def test_wants_all_that_were_drawn_judged(self):
        end, told = self.ends(None)
        self.assertEqual(end, 1)
        self.assertIn("1 of those that were drawn are not judged", told)


class ProofOfACompiler(unittest.TestCase):
    HEADER = "inline unsigned half(unsigned number) { return number / 2; }\n"
    READS_IT = '#include "link/half.h"\nunsigned {}(unsigned number) {{ return half(number) + {}; }}\n'
    FILES = {"link/half.h": HEADER, "link/indirect.h": '#include "link/half.h"\n', "link/whole.cpp": "int whole() { return 1; }\n",
             "link/one.cpp": READS_IT.format("one", 1), "link/two.cpp": READS_IT.format("two", 2).replace("half.h", "indirect.h")}

    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.top = pathlib.Path(temporary.name)
        (self.top / "link").mkdir()
        for name, text in self.FILES.items():
            (self.top / name).write_text(text)
        self.same_code = SameCode(self.top, self.FILES, self.top)

    def is_equal(self, file, original, text, form="expression"):
        start = self.FILES[file].index(original)
        return self.same_code.proves_equal(Mutant(file, start, start + len(original), form, text, "", "", original, 1))

    def test_a_header_is_part_of_all_that_read_it(self):
        self.assertEqual(self.same_code.readers("link/half.h"), ["link/one.cpp", "link/two.cpp"])
        self.assertEqual(self.same_code.readers("link/whole.cpp"), ["link/whole.cpp"])

    def test_a_mutant_of_a_header_is_looked_at_in_its_readers(self):
        self.assertTrue(self.is_equal("link/half.h", "number / 2", "number >> 1"))
        self.assertFalse(self.is_equal("link/half.h", "number / 2", "number / 3"))

    def test_every_form_of_a_mutant(self):
        self.assertTrue(self.is_equal("link/whole.cpp", "return 1;", "return 2 - 1;", "statement"))
        self.assertTrue(self.is_equal("link/whole.cpp", "int whole() {", "if (!MUTANT) { return 2; }", "after"))
        self.assertFalse(self.is_equal("link/whole.cpp", "int whole() {", "if (MUTANT) { return 2; }", "after"))
        self.assertTrue(self.is_equal("link/whole.cpp", "return 1;", "if (MUTANT) return 1; return 3;", "rewritten"))
        self.assertFalse(self.is_equal("link/whole.cpp", "1", "0", "alone"))

    def test_what_does_not_compile_or_nobody_reads_is_proven_nothing(self):
        self.assertFalse(self.is_equal("link/whole.cpp", "1", "nothing"))
        self.same_code.texts = {"link/half.h": self.HEADER}
        self.assertFalse(self.is_equal("link/half.h", "number / 2", "number >> 1"))


unittest.main()
