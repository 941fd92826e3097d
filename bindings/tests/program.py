"""A program in some language, as the tests of the bindings are given it and run it.

    SOME_TEST.py BUILD_FOLDER [--linked | --searched] [--library FILE] COMMAND...

COMMAND is called with a printer's address behind it, and with TELVOFM_LIBRARY saying where the library is: in the build folder, or
FILE. With --linked the system loads the library with the program; with --searched the program finds it where the system does, in
the folders of LD_LIBRARY_PATH. A program for Windows runs under Wine, and all else is that of the native build folder: without its
printer the test is skipped.
"""
import argparse
import os
import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent.parent / "testing"))
from telvofm_printer import FiscalPrinter  # noqa: E402, F401

build = pathlib.Path(sys.argv[1]).resolve()
_reader = argparse.ArgumentParser(add_help=False, allow_abbrev=False)
_reader.add_argument("--linked", action="store_true")
_reader.add_argument("--searched", action="store_true")
_reader.add_argument("--library", type=pathlib.Path, default=build / "libtelvofm.so")
options, command = _reader.parse_known_args(sys.argv[2:])
linked, searched, library = options.linked, options.searched, options.library
printer_program = str(build / "telvofm-printer")
work = build / "bindings"  # the call logs lie there

if not os.path.exists(printer_program):
    print(f"{printer_program} is missing; build the preset release first")
    sys.exit(77)


def environment_of(**environment):
    """In which a program finds the library."""
    environment = {**os.environ, "TELVOFM_LIBRARY": str(library), **environment}
    if searched:
        environment["LD_LIBRARY_PATH"] = os.path.dirname(environment["TELVOFM_LIBRARY"])
    return environment


class Ended:
    """A program that has ended: its code, the lines that it printed, what it wrote to standard error."""

    def __init__(self, program, address, folder=work, **environment):
        folder.mkdir(exist_ok=True)
        ended = subprocess.run([*program, address], env=environment_of(**environment), cwd=folder, capture_output=True, timeout=100, check=False)
        self.code = ended.returncode
        self.errors = ended.stderr.decode("utf-8", "replace")
        self.lines = ended.stdout.decode("utf-8", "replace").splitlines()
        self.failures = [line for line in self.lines if line.startswith("failed: ")]

    def __repr__(self):
        return f"ended with {self.code} and said\n" + "\n".join(self.lines) + "\n" + self.errors
