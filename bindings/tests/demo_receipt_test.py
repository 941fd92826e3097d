#!/usr/bin/env python3
"""Lets a language's example sell the demo receipt (bindings/demo_receipt.md), without trouble and with it.

    demo_receipt_test.py BUILD_FOLDER [--linked | --searched] [--library FILE] COMMAND...

program.py says what these are, and bindings/README.md what COMMAND prints and how it ends. Without trouble its paper must be that of
the C program, byte for byte; with trouble it must say what happened, and nothing may be sold twice.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from program import Ended, FiscalPrinter, build, command, library, linked, printer_program, searched, work

c_program = [str(build / "demo_receipt_c")]

SOLD, NOT_SOLD, CALLED_WRONGLY, ASK_A_PERSON = 0, 1, 2, 3
RECEIPT = {"kind": "receipt", "total": "23.59"}


class Printer(FiscalPrinter):
    """A printer whose clock stands, and whose paper is whole when it has been closed."""

    def __init__(self, *options, name="printer"):
        super().__init__(*options, program=printer_program)
        self.name = name
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


class Case(unittest.TestCase):
    def assert_said(self, ended, code, verdict, *in_failure):
        self.assertEqual(ended.code, code, ended)
        self.assertTrue(ended.lines and ended.lines[-1].startswith(verdict), ended)
        for words in in_failure:
            self.assertTrue(any(words in failure for failure in ended.failures), f"{words!r} is not in what {ended}")


class DemoReceipt(Case):
    def sell(self, *faults):
        self.printer = Printer()
        self.addCleanup(self.printer.close)
        for fault in faults:
            self.printer.arm(**fault)
        return Ended(command, self.printer.address)

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

    def test_begin_that_was_refused_is_not_sold(self):
        ended = self.sell({"kind": "refuse", "code": 26, "command": "paragonBegin"})
        self.assert_said(ended, NOT_SOLD, "not sold: ", "26")
        self.printer.expect(committed=[], received=[{"name": "itemSale", "count": 0}])

    def test_begin_that_ran_before_its_refusal_is_cancelled(self):
        ended = self.sell({"kind": "executedNotAcknowledged", "command": "paragonBegin", "code": 11})
        self.assert_said(ended, NOT_SOLD, "not sold: ", "11")
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}], received=[{"name": "itemSale", "count": 0}])
        self.assert_said(Ended(command, self.printer.address), SOLD, "sold: ")

    def test_begin_whose_answer_is_lost_is_cancelled(self):
        ended = self.sell({"kind": "connectionClosed", "at": "answer", "command": "paragonBegin"})
        self.assert_said(ended, NOT_SOLD, "not sold: ", "-10201")
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}])

    def test_wrong_answer_before_begin_is_not_believed(self):
        ended = self.sell({"kind": "staleAnswer", "command": "getVariable", "fromCall": 2})  # the state is that number
        self.assert_said(ended, SOLD, "sold: receipt 1")
        self.printer.expect(committed=[RECEIPT], received=[{"name": "paragonBegin", "count": 1}])

    def test_last_payment_that_ran_before_its_refusal_is_sold(self):
        ended = self.sell({"kind": "executedNotAcknowledged", "command": "payment", "code": 33, "fromCall": 4})
        self.assert_said(ended, SOLD, "sold: receipt 1")
        self.assertEqual(len(ended.failures), 1, ended)
        self.printer.expect(committed=[RECEIPT], executed=[{"name": "payment", "count": 4}])

    def test_payment_in_the_middle_that_ran_before_its_refusal_is_not_sold(self):
        ended = self.sell({"kind": "executedNotAcknowledged", "command": "payment", "code": 33, "fromCall": 2})
        self.assert_said(ended, NOT_SOLD, "not sold: ")
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}], executed=[{"name": "payment", "count": 2}])

    def test_last_payment_that_was_refused_is_not_sold(self):
        ended = self.sell({"kind": "refuse", "command": "payment", "code": 26, "fromCall": 4})
        self.assert_said(ended, NOT_SOLD, "not sold: ", "26")
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}], executed=[{"name": "payment", "count": 3}])

    def test_payment_whose_acknowledge_is_lost_counts_once(self):
        ended = self.sell({"kind": "acknowledgeLost", "command": "payment", "fromCall": 4})
        self.assert_said(ended, SOLD, "sold: receipt 1")
        self.printer.expect(committed=[RECEIPT], executed=[{"name": "payment", "count": 4}], repeated=1)

    def test_item_that_ran_twice_is_never_paid(self):
        ended = self.sell({"kind": "acknowledgeLost", "command": "itemSale"})
        self.assert_said(ended, NOT_SOLD, "not sold: ", "36.09")
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}], received=[{"name": "payment", "count": 0}], repeated=1)

    def test_payment_that_was_taken_twice_is_noticed(self):
        ended = self.sell({"kind": "acknowledgeLost", "command": "payment"})
        self.assert_said(ended, NOT_SOLD, "not sold: ", "13.59")  # 5.00 less than is due
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}], executed=[{"name": "payment", "count": 2}])

    def test_end_that_the_printer_has_forgotten_is_noticed(self):
        ended = self.sell({"kind": "acknowledgedNotExecuted", "command": "paragonEnd"})
        self.assert_said(ended, SOLD, "sold: receipt 1")
        self.printer.expect(committed=[RECEIPT], executed=[{"name": "paragonEnd", "count": 1}])

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
        missing = str(work / "missing" / library.name)
        self.assert_one_sentence(Ended(command, "127.0.0.1:1", TELVOFM_LIBRARY=missing), missing)

    def with_library(self, file):
        """The program with this file as its library, and the name that it has there."""
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        wrong = str(pathlib.Path(folder.name) / library.name)
        shutil.copy(file, wrong)
        return Ended(command, "127.0.0.1:1", TELVOFM_LIBRARY=wrong), wrong

    @unittest.skipIf(linked, "the system loads the library")
    def test_wrong_library_is_one_sentence(self):
        self.assert_one_sentence(*self.with_library(build / "libmodem_lines.so"))

    @unittest.skipIf(linked, "the system loads the library")
    def test_file_that_is_no_library_is_one_sentence(self):
        self.assert_one_sentence(*self.with_library(__file__))

    @unittest.skipIf(library.suffix == ".dll", "the library of another version is one for Linux")
    def test_library_of_another_version_is_one_sentence(self):
        another = build / "libtelvofm_of_another_version.so"
        if linked:
            ended, name = Ended(command, "127.0.0.1:1", LD_PRELOAD=str(another)), "library"
        else:
            ended, name = self.with_library(another)
        self.assert_one_sentence(ended, name)
        self.assertIn("version 105 of the interface", ended.errors)
        self.assertIn("106", ended.errors)

    def assert_one_sentence(self, ended, name):
        self.assertEqual(ended.code, CALLED_WRONGLY, ended)
        self.assertEqual(len(ended.errors.splitlines()), 1, ended)
        self.assertIn("telvofm" if searched else name, ended.errors)


class ForeignReceipt(Case):
    """Another till has left a receipt open, of the very total: it is neither ended nor cancelled, whatever becomes of this one."""

    LEFT = ["sellingDayBegin", "1", "0", "--then", "paragonBegin", "1", "0", "1", "0", "0", "1", "0",
            "--then", "itemSale_str", "1", "0", "Foreign", "23.59", "A", "1", "23.59", "ks"]
    PAID = ["--then", "payment_str", "1", "0", "1", "23.59", "23.59", "0", "cash"]

    def assert_left_alone(self, left):
        printer = Printer()
        self.addCleanup(printer.close)
        work.mkdir(exist_ok=True)
        subprocess.run([build / "tools" / "telvofm", "call", "-p", printer.address, *left], cwd=work, stdout=subprocess.DEVNULL, check=True)
        before = printer.ask("GET", "state")["receipt"]
        self.assert_said(Ended(command, printer.address), ASK_A_PERSON, "ask a person: ")
        printer.expect(committed=[], received=[{"name": "paragonBegin", "count": 1}, {"name": "paragonEnd", "count": 0},
                                               {"name": "destroyParagon", "count": 0}])
        self.assertEqual(printer.ask("GET", "state")["receipt"], before)

    def test_that_is_open(self):
        self.assert_left_alone(self.LEFT)

    def test_that_is_paid(self):
        self.assert_left_alone(self.LEFT + self.PAID)


@unittest.skipIf(library.suffix == ".dll", "a program for Windows cannot open a pseudo-terminal")
class OnASerialLine(Case):
    """There texts are converted on their way, and noise makes the library send again at once."""

    def sell(self, program, *faults):
        lines = work / "modem_lines"
        work.mkdir(exist_ok=True)
        lines.write_bytes(b"\x03")  # CTS and DSR are on
        environment = {"MODEM_LINES": str(lines), "LD_PRELOAD": str(build / "libmodem_lines.so")}
        os.environ["MODEM_LINES"] = str(lines)
        self.printer = Printer("--pty", name="pty")
        self.addCleanup(self.printer.close)
        for fault in faults:
            self.printer.arm(**fault)
        path = [line.split()[-1] for line in self.printer.paper if "serial line" in line][-1]
        return Ended(program, "COM" + path, **environment)

    def receipt_of(self, program):
        self.assert_said(self.sell(program), SOLD, "sold: ")
        return ["\n".join(document["text"]) for document in self.printer.documents()]

    def test_receipt_is_that_of_the_c_program(self):
        expected = self.receipt_of(c_program)
        self.assertIn("Ťahaná štrúdľa", expected[0])
        self.assertEqual(self.receipt_of(command), expected)

    def test_item_that_ran_twice_at_once_is_never_paid(self):
        ended = self.sell(command, {"kind": "noise", "command": "itemSale", "bytes": "ff"})
        self.assert_said(ended, NOT_SOLD, "not sold: ", "36.09")
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}], received=[{"name": "payment", "count": 0}])

    def test_begin_that_ran_before_its_refusal_is_cancelled(self):
        ended = self.sell(command, {"kind": "noise", "command": "paragonBegin", "bytes": "ff"})
        self.assert_said(ended, NOT_SOLD, "not sold: ", "11")
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}], received=[{"name": "itemSale", "count": 0}])

    def test_last_payment_that_ran_before_its_refusal_is_sold(self):
        ended = self.sell(command, {"kind": "noise", "command": "payment", "bytes": "ff", "fromCall": 4})
        self.assert_said(ended, SOLD, "sold: receipt 1")
        self.printer.expect(committed=[RECEIPT], executed=[{"name": "payment", "count": 4}])

    def test_payment_that_ran_twice_at_once_is_noticed(self):
        ended = self.sell(command, {"kind": "noise", "command": "payment", "bytes": "ff"})
        self.assert_said(ended, NOT_SOLD, "not sold: ", "13.59")
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}], executed=[{"name": "payment", "count": 2}])

    def test_end_that_ran_before_its_refusal_is_sold(self):
        ended = self.sell(command, {"kind": "noise", "command": "paragonEnd", "bytes": "ff"})
        self.assert_said(ended, SOLD, "sold: receipt 1", "12")
        self.printer.expect(committed=[RECEIPT])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
