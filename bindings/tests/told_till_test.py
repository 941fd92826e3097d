#!/usr/bin/env python3
"""Tells a till in some language its steps, and looks at what its layer makes of a line that garbles the printer's answers: the table
below is the same for all of them. program.py says what the arguments are.

The till reads a step from each line, as "sell a 7.00", and answers it with a line on standard error: "done", with what the step
delivers behind it, or the failure's kind and text.
"""
import subprocess
import sys
import time
import unittest

from program import FiscalPrinter, build, command, environment_of, library, printer_program, work

DAMAGED = {"kind": "wrongChecksum", "blocks": 3}  # the call returns 0 with an empty text
STALE = {"kind": "staleAnswer"}
CLOSED = {"kind": "connectionClosed", "at": "answer"}
TWICE = {"kind": "acknowledgeTwice", "milliseconds": 20}  # the second one is taken for the next answer
BASKET = "7.00"


class Till:
    """The program, which lives for all cases."""

    def __init__(self, address):
        work.mkdir(exist_ok=True)
        self._process = subprocess.Popen([*command, address], env=environment_of(), cwd=work, stdin=subprocess.PIPE,
                                         stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, encoding="utf-8")

    def tell(self, step):
        self._process.stdin.write(step + "\n")
        self._process.stdin.flush()
        return self._process.stderr.readline().rstrip()

    def close(self):
        self._process.stdin.close()
        self._process.wait(30)
        self._process.stderr.close()
        return self._process.returncode


def question(fault, call):
    """This fault upon the so-manieth question from now on."""
    return {**fault, "command": "getVariable", "fromCall": call}


def two_flips(call):
    """Of the same weight in the first digit of a number and behind it, so that the checksum holds: 1 becomes 3."""
    return [question({"kind": "flippedBit", "byte": byte, "bit": 1}, call) for byte in (2, 4)]


class Recovery(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.printer = FiscalPrinter(program=printer_program)
        cls.addClassCleanup(cls.printer.close)
        cls.till = Till(cls.printer.address)
        cls.addClassCleanup(cls.till.close)

    def setUp(self):
        self.printer.reset()
        self.pause = 0
        for step in ("forget", "reopen", "day"):
            self.told(step, "done")

    def told(self, step, answer):
        said = self.till.tell(step)
        self.assertTrue(said.startswith(answer), f"{step}: {said!r} instead of {answer!r}")
        time.sleep(self.pause)

    def arm(self, *faults):
        for fault in faults:
            self.printer.arm(**fault)

    def fill(self, receipt):
        for step in (f"begin {receipt}", f"sell {receipt} {BASKET}"):
            self.told(step, "done")

    def paid(self, receipt):
        self.fill(receipt)
        self.told(f"pay {receipt} {BASKET}", "done")

    def sold(self, receipt, number):
        self.paid(receipt)
        self.told(f"end {receipt}", f"done {number}")

    def committed(self, *kinds):
        self.printer.expect(committed=[{"kind": kind, **({"total": BASKET} if kind == "receipt" else {})} for kind in kinds])
        self.assertIsNone(self.printer.state()["receipt"], "a receipt is left open")

    # ---- Begin ----

    def begins_over(self, *faults):
        """Begin asks again over a new connection, and the receipt is sold."""
        self.setUp()
        self.arm(*faults)
        self.sold("b", 1)
        self.committed("receipt")
        self.printer.expect(received=[{"name": "paragonBegin", "count": 1}])

    def test_begin_asks_again_after_one_wrong_answer(self):
        for call in (1, 2, 3):
            for fault in (DAMAGED, STALE, CLOSED):
                with self.subTest(fault=fault["kind"], question=call):
                    self.begins_over(question(fault, call))

    def test_begin_believes_no_number_that_came_once(self):
        self.sold("a", 1)
        self.arm(*two_flips(1))
        self.fill("b")
        self.arm({**CLOSED, "command": "destroyParagon"})
        self.told("cancel b", "OutcomeUnknown")
        self.told("recover b", "done not sold: receipt 1 is still the last one")
        self.committed("receipt", "cancelledReceipt")

    def test_begin_finds_a_connection_that_has_shifted(self):
        self.printer.reset()
        self.pause = 0.04
        self.arm({**TWICE, "command": "sellingDayBegin"})
        self.told("day", "done")
        self.sold("a", 1)
        self.committed("receipt")

    def test_begin_that_cannot_ask_sends_nothing(self):
        for fault in (DAMAGED, STALE, CLOSED):
            with self.subTest(fault=fault["kind"]):
                self.setUp()
                self.arm(question({**fault, "calls": 8}, 2))
                self.told("begin a", "NotExecuted paragonBegin: ")
                self.told("sell a 7.00", "NotExecuted")
                self.told("recover a", "done not sold: the receipt was not begun")
                self.printer.expect(received=[{"name": "paragonBegin", "count": 0}])
                self.printer.ask("DELETE", "faults")
                self.sold("a", 1)

    def test_begin_leaves_another_open_one_alone(self):
        self.fill("a")
        self.told("begin b", "NotExecuted paragonBegin: code -1 (notOpen): Another receipt is open")
        self.told("cancel b", "NotExecuted")
        self.told("recover b", "done ask a person: another receipt")
        self.printer.expect(received=[{"name": "paragonBegin", "count": 1}, {"name": "destroyParagon", "count": 0}])
        self.told("pay a 7.00", "done")
        self.told("end a", "done 1")
        self.sold("b", 2)

    def test_begin_of_what_is_open_is_refused_after_one_wrong_answer(self):
        for fault in (DAMAGED, STALE, CLOSED):
            with self.subTest(fault=fault["kind"]):
                self.setUp()
                self.fill("a")
                self.arm(question(fault, 1))
                self.told("begin a", "NotExecuted paragonBegin: code -1 (notOpen): This receipt is open already, and goes on.")
                self.told("pay a 7.00", "done")
                self.told("end a", "done 1")
                self.committed("receipt")

    def test_begin_finds_a_connection_that_is_dead(self):
        self.arm(question(CLOSED, 4))  # the one before the payment
        self.fill("a")
        self.told("pay a 7.00", "OutcomeUnknown")
        self.arm({"kind": "powerLoss", "at": "request", "milliseconds": 100, "command": "getVariable"})
        self.told("recover a", "done ask a person: the printer does not say what it has done")
        time.sleep(0.2)
        self.told("recover a", "done not sold")
        self.sold("b", 1)

    # ---- End and cancel ----

    def test_end_believes_no_number_that_is_wrong(self):
        for faults in ([question(DAMAGED, 6)], [question(STALE, 6)], [question(DAMAGED, 7)], two_flips(6), two_flips(8)):
            with self.subTest(faults=faults):
                self.setUp()
                self.arm(*faults)
                self.paid("a")
                self.told("end a", "OutcomeUnknown paragonEnd: ")
                self.told("recover a", "done sold: receipt 1, total 7.00")
                self.committed("receipt")

    def test_cancelled_receipt_is_not_sold(self):
        """The last number before it came damaged, and an empty one is another than that of the receipt before."""
        for fault in (DAMAGED, STALE):
            with self.subTest(fault=fault["kind"]):
                self.setUp()
                self.sold("a", 1)
                self.arm(question(fault, 1), {**CLOSED, "command": "destroyParagon"})
                self.fill("b")
                self.told("cancel b", "OutcomeUnknown destroyParagon: ")
                self.told("recover b", "done not sold: receipt 1 is still the last one")
                self.committed("receipt", "cancelledReceipt")

    def test_cancel_believes_no_acknowledge_of_another_call(self):
        self.pause = 0.04
        self.fill("a")
        self.arm({**TWICE, "command": "itemSale"}, {"kind": "refuse", "command": "destroyParagon", "code": 26})
        self.told("sell a 7.00", "done")
        self.told("cancel a", "OutcomeUnknown destroyParagon: ")
        self.told("recover a", "done not sold")
        self.committed("cancelledReceipt")

    def test_doubt_is_repeated_as_it_was_said(self):
        """One that a code left, and one that the totals left."""
        for fault in ({**CLOSED, "command": "payment"}, question(DAMAGED, 2)):
            with self.subTest(fault=fault["kind"]):
                self.setUp()
                self.fill("a")
                self.arm(fault)
                doubt = self.till.tell("pay a 7.00")
                self.assertTrue(doubt.startswith("OutcomeUnknown payment_str: code "), doubt)
                for step in ("sell a 7.00", "end a", "begin a"):
                    self.assertEqual(self.till.tell(step), doubt)

    # ---- Recover ----

    def test_recovery_that_is_over_stays_as_it_was(self):
        """Also when the next receipt has the same total, and is as far."""
        self.paid("a")
        self.arm({**CLOSED, "command": "paragonEnd"})
        self.told("end a", "OutcomeUnknown paragonEnd: ")
        self.told("recover a", "done sold: receipt 1, total 7.00")
        self.paid("b")
        self.told("recover a", "done sold: receipt 1, total 7.00")
        self.told("end b", "done 2")
        self.told("recover b", "done sold: receipt 2, total 7.00")
        self.fill("a")
        self.told("cancel a", "done")
        self.sold("b", 3)
        self.told("recover a", "done not sold: the receipt is cancelled")
        self.committed("receipt", "receipt", "cancelledReceipt", "receipt")

    def test_second_recovery_leaves_the_next_receipt_alone(self):
        self.fill("a")
        self.arm({"kind": "refuse", "command": "itemSale", "code": 26})
        self.told("sell a 4.00", "Refused itemSale_str: code 26")
        self.told("recover a", "done not sold: receipt 0 is still the last one")
        self.fill("b")
        self.told("recover a", "done not sold: receipt 0 is still the last one")
        self.told("ask STATE", "done open")
        self.told("pay b 7.00", "done")
        self.told("end b", "done 1")
        self.told("recover a", "done not sold: receipt 0 is still the last one")  # although the totals are the same
        self.committed("cancelledReceipt", "receipt")

    def test_recovery_judges_by_no_wrong_answer(self):
        """The receipt before has the same total."""
        for call in range(1, 7):
            for faults in ([question(DAMAGED, call)], [question(STALE, call)], [question(CLOSED, call)], two_flips(call)):
                with self.subTest(faults=faults):
                    self.setUp()
                    self.sold("a", 1)
                    self.fill("b")
                    self.arm({"kind": "refuse", "command": "itemSale", "code": 26})
                    self.told("sell b 4.00", "Refused")
                    self.arm(*faults)
                    first = self.till.tell("recover b")
                    if not first.startswith("done not sold"):
                        self.assertTrue(first.startswith("done ask a person"), first)
                        self.told("recover b", "done not sold: receipt 1 is still the last one")
                    self.committed("receipt", "cancelledReceipt")

    def test_interrupted_receipt_of_no_number_wants_a_person(self):
        self.sold("a", 1)
        self.told("interrupted b 7.00", "done")
        self.told("recover b", "done ask a person")

    def test_interrupted_receipt_of_no_total_is_cancelled(self):
        """Also when its lines come to nothing, so that nothing is due."""
        self.fill("a")
        self.told(f"void a {BASKET}", "done")
        self.told("interrupted b 0 0", "done")
        self.told("recover b", "done not sold: receipt 0 is still the last one")
        self.committed("cancelledReceipt")

    def test_interrupted_receipt_of_no_total_is_never_sold(self):
        """Of a printer that has another number and the total 0.00, as a new one has."""
        self.told("interrupted b 0 5", "done")
        self.told("recover b", "done ask a person: the printer's last receipt is 0 with 0.00; the till sold 0.00 after receipt 5")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
