"""The library's tests, each as a process of its own: what a test reaches, and whether it passes with a mutant."""
import dataclasses
import json
import os
import pathlib
import signal
import subprocess
import time

LARGEST = 4 << 30  # bytes of memory, and a sixteenth of that in a file


@dataclasses.dataclass
class Test:
    name: str
    command: list
    seconds: float = 0.0
    reached: frozenset = frozenset()


def tests_of_programs(build, *which):
    """Those of GoogleTest by their names; `which` is for ctest."""
    listed = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1", *which], capture_output=True, text=True, check=True)
    tests = [Test(one["name"], one.get("command", [])) for one in json.loads(listed.stdout)["tests"]]
    return [test for test in tests if any(word.startswith("--gtest_filter") for word in test.command)]


def programs_of(tests):
    return sorted({test.command[0].rsplit("/", 1)[1] for test in tests})


def library_tests(top, build):
    """All, and each wire script by itself."""
    tests = tests_of_programs(build)
    runner = str(build / "wire_runner")
    for script in sorted((top / "tests/wire").rglob("*.wire")):
        name = str(script.relative_to(top / "tests"))
        tests.append(Test(name, [runner, "--work", "wire_work", str(script)]))
    return tests


class Runner:
    """Runs tests in a folder of its own, with the woven library in the place of the real one."""

    def __init__(self, folder, linked, memory=LARGEST, **environment):
        self.folder, self.linked, self.memory, self.environment = pathlib.Path(folder), pathlib.Path(linked), memory, environment
        self.folder.mkdir(parents=True, exist_ok=True)
        (self.folder / "tmp").mkdir(exist_ok=True)

    def run(self, test, limit, **environment):
        """Whether it passed, how long it took, and whether it was ended."""
        program = self.linked / pathlib.Path(test.command[0]).name
        command = [str(program) if program.exists() else test.command[0], *test.command[1:]]
        settings = {**os.environ, "LD_LIBRARY_PATH": str(self.linked), "LLVM_PROFILE_FILE": "/dev/null", "GTEST_BRIEF": "1",
                    "TMPDIR": str(self.folder / "tmp"), **self.environment, **environment}
        started = time.monotonic()
        process = subprocess.Popen(
            ["prlimit", f"--cpu={int(3 * test.seconds) + (3 if test.reached else 60)}", "--core=0", f"--as={self.memory}",
             f"--fsize={LARGEST // 16}", *command],
            cwd=self.folder, env=settings, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            start_new_session=True)
        ended = False
        try:
            code = process.wait(limit)
        except subprocess.TimeoutExpired:
            ended = True
            code = -1
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.wait()
        return code == 0, time.monotonic() - started, ended

    def passes(self, test, number):
        """With this mutant on; -1 is none of them."""
        passed, _, ended = self.run(test, 20 + 4 * test.seconds, TELVOFM_MUTANT=str(number))
        return passed, ended
