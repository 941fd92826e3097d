"""Judges mutants: runs the tests that reach one, the quickest first, until one fails."""
import collections
import json
import math
import re
import threading
import time

CONFIRMED_FOR = 30  # seconds
FIRST_TESTS = 30  # of a mutant, before the compilers are asked whether it is one
DONE = ("killed", "equal")


def plain_name(test):
    """Without how it failed, and without the bytes of its parameter, which each build has others of."""
    return re.sub(r" \(time limit\)$|, with the thread sanitizer$", "", test).split("  # GetParam")[0]


class Results:
    """One line of a file for each mutant that has been judged: a run goes on where another one was ended. A mutant that was
    killed by a test that is not there any more is judged again."""

    def __init__(self, path, tests=None):
        self.path, self.by_key, self.lock = path, {}, threading.Lock()
        if path.exists():
            for line in path.read_text().splitlines():
                entry = json.loads(line)
                self.by_key[entry["key"]] = entry
        if tests is not None:
            names = {plain_name(test.name) for test in tests}
            self.by_key = {key: entry for key, entry in self.by_key.items()
                           if entry["outcome"] != "killed" or plain_name(entry["test"]) in names}

    def is_done(self, mutant):
        return self.by_key.get(mutant.key, {}).get("outcome") in DONE

    def is_undecided(self, mutant):
        return self.by_key.get(mutant.key, {}).get("outcome") == "undecided"

    def wanted(self, mutants, listed):
        """Those to judge: new ones, and last those that have survived before and are in no list."""
        open_ones = [one for one in mutants if not self.is_done(one) and not (one.key in listed and one.key in self.by_key)]
        return sorted(open_ones, key=lambda one: one.key in self.by_key)

    def add(self, mutant, outcome, test, seconds):
        entry = {"key": mutant.key, "outcome": outcome, "test": test, "seconds": round(seconds, 2), "mutant": mutant.describe()}
        with self.lock:
            self.by_key[mutant.key] = entry
            with self.path.open("a") as file:
                file.write(json.dumps(entry) + "\n")


class Judge:
    def __init__(self, tests, results, most_tests=None, proves_equal=lambda mutant: False):
        self.tests, self.results, self.most_tests, self.proves_equal = tests, results, most_tests, proves_equal
        self.killers = collections.defaultdict(list)  # by function: tests that have killed there, the last one first
        self.passed_at = {}  # without a mutant
        self.wavering = collections.Counter()

    def order(self, mutant, number):
        """First what has killed in the same function, then quick tests that reach little else."""
        reaching = [test for test in self.tests if number in test.reached]
        reaching.sort(key=lambda test: test.seconds * math.sqrt(len(test.reached)))
        before = [test for test in self.killers[(mutant.file, mutant.function)][:4] if number in test.reached]
        return list({test.name: test for test in before + reaching}.values())

    def fails_only_with(self, runner, test, ended):
        """The same test passes without the mutant: its failure was not that of a busy machine."""
        if not ended and time.monotonic() - self.passed_at.get(test.name, -1000) < CONFIRMED_FOR:
            return True
        passed, _ = runner.passes(test, -1)
        if passed:
            self.passed_at[test.name] = time.monotonic()
        else:
            self.wavering[test.name] += 1
        return passed

    def killer(self, runner, mutant, number, tests, plain):
        """The first test that fails with the mutant, and whether it was ended."""
        for test in tests:
            passed, ended = runner.passes(test, number)
            if not passed and self.fails_only_with(plain, test, ended):
                killers = self.killers[(mutant.file, mutant.function)]
                if test in killers:
                    killers.remove(test)
                killers.insert(0, test)
                return test.name + (" (time limit)" if ended else "")
        return None

    def judge(self, runner, mutant, number, plain=None):
        """`plain` runs the tests without the mutant, where `runner` cannot turn it off."""
        started = time.monotonic()
        reaching = self.order(mutant, number)
        tests = reaching[:self.most_tests]
        outcome, told = "killed", self.killer(runner, mutant, number, tests[:FIRST_TESTS], plain or runner)
        if not told and self.proves_equal(mutant):
            outcome, told = "equal", "the compiler makes the same code"
        told = told or self.killer(runner, mutant, number, tests[FIRST_TESTS:], plain or runner)
        if not told:
            outcome = "not reached" if not reaching else "survived" if tests == reaching else "undecided"
            told = f"{len(tests)} of {len(reaching)} tests pass"
        self.results.add(mutant, outcome, told, time.monotonic() - started)
