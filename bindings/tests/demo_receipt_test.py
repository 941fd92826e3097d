#!/usr/bin/env python3
"""Lets a language's example sell the demo receipt (bindings/demo_receipt.md), without trouble and with it.

    demo_receipt_test.py BUILD_FOLDER [--linked] COMMAND...

COMMAND is called with a printer's address behind it, and with TELVOFM_LIBRARY saying where the library is. bindings/README.md
says what it prints and how it ends. Without trouble its paper must be that of the C program, byte for byte; with trouble it must
say what happened, and nothing may be sold twice. With --linked the system loads the library with the program.
"""
import os
import pathlib
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent.parent / "testing"))
from telvofm_printer import FiscalPrinter  # noqa: E402

build = pathlib.Path(sys.argv[1]).resolve()
linked = sys.argv[2] == "--linked"
command = sys.argv[3 if linked else 2:]
c_program = [str(build / "demo_receipt_c")]
work = build / "bindings"  # the call logs lie there

SOLD, NOT_SOLD, CALLED_WRONGLY, ASK_A_PERSON = 0, 1, 2, 3
RECEIPT = {"kind": "receipt", "total": "23.59"}


class Ended:
    """A program that has ended: its code, the lines that it printed, what it wrote to standard error."""

    def __init__(self, program, address, **environment):
        environment = {**os.environ, "TELVOFM_LIBRARY": str(build / "libtelvofm.so"), **environment}
        work.mkdir(exist_ok=True)
        ended = subprocess.run([*program, address], env=environment, cwd=work, capture_output=True, timeout=100, check=False)
        self.code = ended.returncode
        self.errors = ended.stderr.decode("utf-8", "replace")
        self.lines = ended.stdout.decode("utf-8", "replace").splitlines()
        self.verdict = self.lines[-1] if self.lines else ""
        self.failures = [line for line in self.lines if line.startswith("failed: ")]

    def __repr__(self):
        return f"ended with {self.code} and said\n" + "\n".join(self.lines) + "\n" + self.errors


class Printer(FiscalPrinter):
    """A printer whose clock stands, and whose paper is whole when it has been closed."""

    def __init__(self):
        super().__init__(program=str(build / "telvofm-printer"))
        self.ask("PATCH", "clock", {"now": "2026-01-31 12:00", "mode": "stands"})

    def close(self):
        """Lets it end by itself, so that nothing that it prints is lost."""
        self._process.terminate()
        self._process.wait(30)
        super().close()

    def printed(self):
        """What came out behind the first lines, which name the addresses."""
        self.close()
        return "\n".join(self.paper[2:]).encode()


def paper_of(program):
    printer = Printer()
    ended = Ended(program, printer.address)
    return ended, printer.printed()


class DemoReceipt(unittest.TestCase):
    def sell(self, *faults):
        self.printer = Printer()
        self.addCleanup(self.printer.close)
        for fault in faults:
            self.printer.arm(**fault)
        return Ended(command, self.printer.address)

    def assert_said(self, ended, code, verdict, *in_failure):
        self.assertEqual(ended.code, code, ended)
        self.assertTrue(ended.verdict.startswith(verdict), ended)
        for words in in_failure:
            self.assertTrue(any(words in failure for failure in ended.failures), f"{words!r} is not in what {ended}")

    def test_paper_is_that_of_the_c_program(self):
        in_c, expected = paper_of(c_program)
        self.assertEqual(in_c.code, SOLD, in_c)
        self.assertIn("TOTAL EUR                          23.59", expected.decode())
        ended, paper = paper_of(command)
        self.assert_said(ended, SOLD, "sold: ")
        self.assertEqual(ended.failures, [])
        self.assertEqual(paper, expected)

    def test_two_receipts_on_one_day(self):
        self.assert_said(self.sell(), SOLD, "sold: ")
        ended = Ended(command, self.printer.address)
        self.assert_said(ended, SOLD, "sold: receipt 2")
        self.printer.expect(committed=[RECEIPT, RECEIPT], repeated=0)

    def test_refusal_is_explained_and_the_receipt_cancelled(self):
        ended = self.sell({"kind": "refuse", "code": 26, "command": "itemSale", "fromCall": 3})
        self.assert_said(ended, NOT_SOLD, "not sold: ", "26")
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}], executed=[{"name": "itemSale", "count": 2}])

    def test_payment_whose_acknowledge_is_lost_counts_once(self):
        ended = self.sell({"kind": "acknowledgeLost", "command": "payment", "fromCall": 4})
        self.assert_said(ended, SOLD, "sold: receipt 1")
        self.printer.expect(committed=[RECEIPT], executed=[{"name": "payment", "count": 4}], repeated=1)

    def test_item_that_ran_twice_is_never_paid(self):
        ended = self.sell({"kind": "acknowledgeLost", "command": "itemSale"})
        self.assert_said(ended, NOT_SOLD, "not sold: ", "36.09")
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}], received=[{"name": "payment", "count": 0}], repeated=1)

    def test_end_that_was_carried_out_is_sold(self):
        ended = self.sell({"kind": "connectionClosed", "at": "answer", "command": "paragonEnd"})
        self.assert_said(ended, SOLD, "sold: receipt 1", "-10201")
        self.printer.expect(committed=[RECEIPT], executed=[{"name": "paragonEnd", "count": 1}])

    def test_paid_receipt_whose_end_was_lost_is_ended(self):
        ended = self.sell({"kind": "connectionClosed", "at": "request", "command": "paragonEnd"})
        self.assert_said(ended, SOLD, "sold: receipt 1", "-10201")
        self.printer.expect(committed=[RECEIPT], executed=[{"name": "paragonEnd", "count": 1}])

    def test_payment_that_was_lost_is_not_sold(self):
        ended = self.sell({"kind": "connectionClosed", "at": "request", "command": "payment", "fromCall": 2})
        self.assert_said(ended, NOT_SOLD, "not sold: ", "-10201")
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}], executed=[{"name": "payment", "count": 1}])

    def test_printer_that_cannot_be_asked_wants_a_person(self):
        ended = self.sell({"kind": "powerLoss", "at": "answer", "milliseconds": 60000, "command": "paragonEnd"})
        self.assert_said(ended, ASK_A_PERSON, "ask a person: ", "-10201")

    def test_no_printer_is_one_sentence(self):
        ended = Ended(command, "127.0.0.1:1")
        self.assert_said(ended, NOT_SOLD, "not sold: ")

    @unittest.skipIf(linked, "the system loads the library")
    def test_missing_library_is_one_sentence(self):
        missing = str(work / "libmissing.so")
        ended = Ended(command, "127.0.0.1:1", TELVOFM_LIBRARY=missing)
        self.assert_one_sentence(ended, missing)

    @unittest.skipIf(linked, "the system loads the library")
    def test_wrong_library_is_one_sentence(self):
        wrong = str(build / "libmodem_lines.so")
        ended = Ended(command, "127.0.0.1:1", TELVOFM_LIBRARY=wrong)
        self.assert_one_sentence(ended, wrong)

    def assert_one_sentence(self, ended, name):
        self.assertEqual(ended.code, CALLED_WRONGLY, ended)
        self.assertEqual(len(ended.errors.splitlines()), 1, ended)
        self.assertIn(name, ended.errors)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
