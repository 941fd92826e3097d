#!/usr/bin/env python3
"""What testing/ gives to test suites, where a test suite is most likely to trip: a proxy in the environment, more
documents than a page has, a container whose first process it is, a script with a trap of its own, a script that is killed.

    testing_helpers_test.py SOURCE_FOLDER PRINTER_PROGRAM
"""
import os
import pathlib
import select
import signal
import subprocess
import sys
import unittest

source = pathlib.Path(sys.argv[1]).resolve()
program = str(pathlib.Path(sys.argv[2]).resolve())
sys.path.insert(0, str(source / "testing"))
sys.path.insert(0, str(source / "tests/system"))
from telvofm_printer import FiscalPrinter  # noqa: E402
from till import Till  # noqa: E402

NOBODY = "http://127.0.0.1:1"
PROXIES = {name: NOBODY for name in ("http_proxy", "HTTP_PROXY", "all_proxy", "ALL_PROXY")}


class PythonHelper(unittest.TestCase):
    def start(self, *options, **named):
        printer = FiscalPrinter(*options, program=program, **named)
        self.addCleanup(printer.close)
        return printer

    def till(self, printer):
        till = Till(printer)
        self.addCleanup(till.socket.close)
        return till

    def test_asks_the_printer_itself_whatever_proxy_there_is(self):
        before = dict(os.environ)
        self.addCleanup(os.environ.update, before)
        self.addCleanup(os.environ.clear)
        os.environ.update(PROXIES, no_proxy="", NO_PROXY="")
        self.assertEqual(self.start().state()["situation"], "noDay")

    def test_returns_all_documents(self):
        printer = self.start()
        till = self.till(printer)
        till.send(0x29, "0")
        for _ in range(1010):
            till.sell("1.00")
        self.assertEqual([receipt["number"] for receipt in printer.documents(kind="receipt")], list(range(1, 1011)))
        self.assertEqual([receipt["number"] for receipt in printer.documents(skip=1000)], list(range(1001, 1011)))
        self.assertEqual(len(printer.documents(limit=120)), 120)
        self.assertEqual(len(printer.documents(number=7)), 1)

    def test_works_as_the_first_process_of_a_container(self):
        container = ["unshare", "--pid", "--fork", "--kill-child"]
        if subprocess.run([*container, "true"], stderr=subprocess.DEVNULL, check=False).returncode != 0:
            self.skipTest("the system lets nobody here begin a container")
        test = ("import os, sys\nfrom telvofm_printer import FiscalPrinter\nwith FiscalPrinter(program=sys.argv[1]) as printer:\n"
                "    printer.reset()\n    print(os.getpid(), printer.state()['situation'])")
        ended = subprocess.run([*container, sys.executable, "-B", "-c", test, program], stdout=subprocess.PIPE, text=True, check=False,
                               env={**os.environ, "PYTHONPATH": str(source / "testing")})
        self.assertEqual((ended.returncode, ended.stdout), (0, "1 noDay\n"))

    def test_replays_a_trace(self):
        first, second = self.start(), self.start()
        for printer in (first, second):
            printer.ask("PATCH", "clock", {"now": "2026-01-31 12:00", "mode": "stands"})
        till = self.till(first)
        till.send(0x29, "0")
        till.sell("12.50")
        self.assertEqual(till.send(0x22, "0", "0"), b"\x15\x0c")  # refused
        till.socket.sendall(b"\x11")
        self.assertEqual(till.socket.recv(1), b"\x11")
        self.assertIn(b"2026-01-31 12:00:00", till.fetch(0x92, "CLOCK"))
        self.assertGreater(len(till.fetch(0x9F)), 256)  # a reply of several blocks
        first.wait(received=[{"name": "getJournal", "taken": True}])
        trace = first.trace()
        self.assertEqual(second.replay(trace), [])
        self.assertEqual([receipt["text"] for receipt in first.documents()],
                         [receipt["text"] for receipt in second.documents()])
        # Once more, upon what is kept now: the day is open already.
        self.assertEqual([answered["toTill"] for answered in second.replay(trace[:1])], ["15 06"])


class ShellHelper(unittest.TestCase):
    def script(self, text):
        """Runs it; all that it has started holds a pipe open, whose end `is_gone` waits for."""
        self.alive, held = os.pipe()
        self.addCleanup(os.close, self.alive)
        environment = dict(os.environ, TELVOFM_PRINTER=program, **PROXIES, no_proxy="", NO_PROXY="")
        process = subprocess.Popen(["bash", "-c", f"source {source}/testing/telvofm_printer.sh\n{text}"], env=environment,
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                   pass_fds=[held])
        os.close(held)
        return process

    def run_script(self, text):
        process = self.script(text)
        said, errors = process.communicate(timeout=60)
        return process.returncode, said, errors

    def is_gone(self):
        return bool(select.select([self.alive], [], [], 30)[0]) and os.read(self.alive, 1) == b""

    def test_asks_the_printer_itself_whatever_proxy_there_is(self):
        code, said, errors = self.run_script("set -e\nstart_printer\nask GET state")
        self.assertEqual((code, errors), (0, ""))
        self.assertIn('"situation": "noDay"', said)

    def test_fails_with_what_is_wrong(self):
        code, _, errors = self.run_script("set -e\nstart_printer\nexpect '{\"situation\": \"idle\"}'\necho never")
        self.assertNotEqual(code, 0)
        self.assertIn('"idle\\" is expected', errors)

    def test_brings_the_token_along(self):
        code, said, _ = self.run_script("set -e\nstart_printer --token 0123456789abcdef\nask GET state")
        self.assertEqual(code, 0)
        self.assertIn('"situation": "noDay"', said)
        self.assertEqual(self.run_script("set -e\nstart_printer --token=0123456789abcdef\nask GET state")[0], 0)
        code, said, _ = self.run_script("set -e\nfile=$(mktemp)\necho 0123456789abcdef >\"$file\"\n"
                                        "start_printer --token-file \"$file\"\nask GET state\nrm \"$file\"")
        self.assertEqual((code, said.count("noDay")), (0, 1))

    def test_leaves_the_trap_of_the_script(self):
        code, said, _ = self.run_script("trap 'echo \"ends with $?, it'\\''s over\"' EXIT\nstart_printer\nexit 3")
        self.assertEqual((code, said), (3, "ends with 3, it's over\n"))
        self.assertTrue(self.is_gone())

    def test_ends_every_printer_with_the_script(self):
        code, said, _ = self.run_script("set -e\nstart_printer\nfirst=$PRINTER_CONTROL\nstart_printer\n"
                                        "[[ $first != \"$PRINTER_CONTROL\" ]]\nask GET state\nPRINTER_CONTROL=$first\nask GET state")
        self.assertEqual((code, said.count("noDay")), (0, 2))
        self.assertTrue(self.is_gone())

    def test_ends_the_printer_of_a_script_that_is_killed(self):
        process = self.script("start_printer\necho started\nread -r")
        self.assertEqual(process.stdout.readline(), "started\n")
        process.send_signal(signal.SIGKILL)
        process.communicate(timeout=30)
        self.assertTrue(self.is_gone())


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
