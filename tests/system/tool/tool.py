"""The tool as a process, and printers for it: what all tests of this folder share.

Each is started with the folder of the sources, that of the build, and behind these what starts the build's programs, as
Wine does; there is nothing behind them where they start by themselves.
"""
import dataclasses
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

DONE, REFUSED, WRONG_USE, NO_LIBRARY, NO_FILE, NO_ANSWER, TROUBLE = range(7)

SOURCE, BUILD = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
EMULATOR = sys.argv[3:]
del sys.argv[1:]


def program(name):
    """On Linux the tool has a folder of its own: at the top its name means the library to whoever builds."""
    if EMULATOR:
        return BUILD / f"{name}.exe"
    return BUILD / "tools" / name if name == "telvofm" else BUILD / name


@dataclasses.dataclass
class Said:
    code: int
    output: str
    errors: str

    @property
    def json(self):
        """Standard output as one JSON document, and nothing else."""
        return json.loads(self.output)

    @property
    def sentences(self):
        """What stands on standard error, but for what the library says when it opens a printer."""
        lines = self.errors.replace("\r\n", "\n").splitlines()
        return [line for line in lines if not line.startswith("host: ")]


# A pseudo-terminal has no modem lines of its own.
MODEM_LINES = {"LD_PRELOAD": str(BUILD / "libmodem_lines.so")}

# The characters of arguments are UTF-8 also where the tests run without a language.
ENVIRONMENT = {**os.environ, "LC_ALL": "C.UTF-8"}


def telvofm(*arguments, environment=None, tool=None):
    ended = subprocess.run([*EMULATOR, tool or program("telvofm"), *map(str, arguments)], stdin=subprocess.DEVNULL,
                           capture_output=True, check=False, timeout=100,
                           env={**ENVIRONMENT, **(environment or {})})
    return Said(ended.returncode, ended.stdout.decode(), ended.stderr.decode())


class Printer:
    """A virtual printer; its paper is in a file."""

    def __init__(self, folder, *options):
        self._ready = pathlib.Path(folder) / "ready.json"
        self._ready.unlink(missing_ok=True)
        self._paper = open(pathlib.Path(folder) / "paper.txt", "wb")
        link = options or ("--listen", "127.0.0.1:0")
        self._process = subprocess.Popen([*EMULATOR, program("telvofm-printer"), *link, "--ready", str(self._ready)],
                                         stdin=subprocess.DEVNULL, stdout=self._paper, stderr=subprocess.STDOUT,
                                         env=ENVIRONMENT)
        while not self._ready.exists():
            if self._process.poll() is not None:
                raise AssertionError("the virtual printer did not start")
            time.sleep(0.02)
        self.ready = json.loads(self._ready.read_text(encoding="utf-8"))

    @property
    def address(self):
        return self.ready["printers"][0]["address"]

    @property
    def paper(self):
        return pathlib.Path(self._paper.name).read_text(encoding="utf-8")

    def paper_showing(self, text):
        """The printer answers first and prints then: until the text is there, or half a minute."""
        limit = time.monotonic() + 30
        while text not in (paper := self.paper) and time.monotonic() < limit:
            time.sleep(0.02)
        return paper

    def end(self):
        self._process.kill()
        self._process.wait()
        self._paper.close()


class ToolTest(unittest.TestCase):
    """A test with a folder of its own, and a printer when it asks for one."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir=BUILD)
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def printer(self, *options):
        printer = Printer(self.folder, *options)
        self.addCleanup(printer.end)
        return printer

    def file(self, name, contents):
        path = self.folder / name
        path.write_bytes(contents if isinstance(contents, bytes) else contents.encode("ascii"))
        return path

    def assert_refused(self, said, code, *words):
        """It ended with this code and said one sentence with these words, and nothing on standard output."""
        self.assertEqual(said.code, code, said)
        self.assertEqual(len(said.sentences), 1, said)
        self.assertTrue(said.sentences[0].startswith("telvofm: "), said)
        for word in words:
            self.assertIn(word, said.sentences[0])
        self.assertEqual(said.output, "")
