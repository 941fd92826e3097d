#!/usr/bin/env python3
"""What has become of a receipt, as the Python layer finds out.

    python_recovery_test.py BUILD_FOLDER
"""
import unittest
from decimal import Decimal

from python_layer import WithPrinter, telvofm


class Recovering(WithPrinter):
    def test_begin_leaves_another_alone(self):
        """Also when that one has been ended in the meantime."""
        other = self.begun_receipt()
        receipt = self.session.receipt()
        with self.assertRaises(telvofm.NotExecuted):
            receipt.begin()
        recovery = receipt.recover()
        self.assertEqual(recovery.verdict, telvofm.Verdict.ASK_A_PERSON)
        self.assertIn("cancel it with destroyParagon, called through the session", recovery.sentence)
        self.session.reopen()
        self.assert_is_not_ours(receipt)
        self.assertEqual(self.session.variable("STATE"), "open")
        other.pay(1, Decimal("4.00"))
        other.end()
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.ASK_A_PERSON)
        self.printer.expect(committed=[{"kind": "receipt", "total": "4.00"}], received=[{"name": "paragonBegin", "count": 1}])

    def assert_is_not_ours(self, receipt):
        with self.assertRaisesRegex(telvofm.NotExecuted, "This receipt was not begun, is over, or another one may be open"):
            receipt.cancel()

    def assert_takes_nothing(self, receipt, failure=telvofm.NotExecuted, words="This receipt is not open"):
        """And the printer hears nothing of it."""
        before = len(self.printer.trace())
        for action in (lambda: receipt.sell("Syr", 3, "A"), lambda: receipt.void("Med", 4, "A"), lambda: receipt.discount("Zľava", 1, "A"),
                       lambda: receipt.pay(1, 4), receipt.end):
            with self.assertRaisesRegex(failure, words):
                action()
        self.assertEqual(len(self.printer.trace()), before)

    def test_receipt_that_is_not_open_takes_nothing(self):
        self.assert_takes_nothing(self.session.receipt())
        receipt = self.begun_receipt()
        receipt.cancel()
        self.assert_takes_nothing(receipt)
        receipt.begin()
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)
        self.assert_takes_nothing(receipt)
        receipt.begin()
        receipt.sell("Med", 4, "A")
        receipt.pay(1, 4)
        receipt.end()
        self.assert_takes_nothing(receipt)
        self.printer.arm("connectionClosed", command="paragonBegin", at="answer")
        with self.assertRaises(telvofm.OutcomeUnknown):
            receipt.begin()
        self.assert_takes_nothing(receipt, telvofm.OutcomeUnknown, "paragonBegin: code -10201")
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)
        self.assert_takes_nothing(receipt)

    def test_begin_that_failed_takes_nothing(self):
        receipt = self.session.receipt()  # and no day is open
        with self.assertRaises(telvofm.Refused):
            receipt.begin()
        self.assert_takes_nothing(receipt)
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)
        other = self.begun_receipt()
        with self.assertRaises(telvofm.NotExecuted):
            receipt.begin()
        self.assert_takes_nothing(receipt)
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.ASK_A_PERSON)
        self.assert_is_not_ours(receipt)
        other.pay(1, 4)
        self.assertEqual(other.end(), "1")
        self.printer.expect(committed=[{"kind": "receipt", "total": "4.00"}])

    def test_begin_that_ran_before_its_refusal_takes_nothing_and_is_cancelled(self):
        self.session.begin_day()
        self.printer.arm("executedNotAcknowledged", command="paragonBegin", code=11)
        receipt = self.session.receipt()
        with self.assertRaises(telvofm.Refused):
            receipt.begin()
        self.assert_takes_nothing(receipt)
        receipt.cancel()
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}])

    def test_second_begin_of_a_receipt_that_is_open_is_refused_and_it_goes_on(self):
        receipt = self.begun_receipt()
        with self.assertRaisesRegex(telvofm.NotExecuted, "This receipt is open already"):
            receipt.begin()
        receipt.pay(1, 4)
        self.assertEqual(receipt.end(), "1")
        self.printer.expect(received=[{"name": "paragonBegin", "count": 1}])

    def test_receipt_that_another_has_followed_takes_nothing(self):
        receipt = self.begun_receipt()
        self.session.call("destroyParagon", 1, 0, "")  # past the object
        other = self.begun_receipt()
        self.assert_takes_nothing(receipt)
        self.assert_is_not_ours(receipt)
        recovery = receipt.recover()
        self.assertEqual(recovery.verdict, telvofm.Verdict.ASK_A_PERSON)
        self.assertIn("another receipt was begun since", recovery.sentence)
        other.pay(1, 4)
        self.assertEqual(other.end(), "1")
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.ASK_A_PERSON)  # the receipt of 4.00 is not this one

    def test_receipt_of_a_printer_that_cannot_be_asked(self):
        self.session.begin_day()
        self.session.close()
        blind = telvofm.Session(self.printer.address, questions=None)
        self.addCleanup(blind.close)
        receipt, other = blind.receipt(), blind.receipt()
        receipt.begin()
        receipt.sell("Med", 4, "A")
        with self.assertRaises(telvofm.Refused):
            other.begin()
        self.assert_takes_nothing(other)
        self.assert_is_not_ours(other)  # for all that is known
        receipt.pay(1, 4)
        receipt.end()
        self.assert_takes_nothing(receipt)
        self.assert_is_not_ours(receipt)
        self.printer.expect(committed=[{"kind": "receipt", "total": "4.00"}], received=[{"name": "destroyParagon", "count": 0}])

    def test_payment_when_nothing_is_due_is_not_sent(self):
        receipt = self.begun_receipt()
        receipt.pay(1, 5)
        before = len(self.printer.trace())
        with self.assertRaisesRegex(telvofm.AmountError, "nothing is left to pay"):
            receipt.pay(1, 5)
        self.assertEqual(len(self.printer.trace()), before)
        self.assertEqual(receipt.end(), "1")

    def test_end_that_is_not_sent_ends_nothing(self):
        receipt = self.begun_receipt()
        self.printer.arm("acknowledgeLost", command="payment")
        with self.assertRaisesRegex(telvofm.OutcomeUnknown, "what is due is '0.00', for the till 2.00"):
            receipt.pay(1, 2)
        with self.assertRaises(telvofm.OutcomeUnknown):
            receipt.end()
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)  # 2.00 were paid, and not 4.00

    def test_cancelling_whose_answer_is_lost_is_remembered(self):
        receipt = self.begun_receipt()
        self.printer.arm("connectionClosed", command="destroyParagon", at="answer")
        for action in (receipt.cancel, receipt.begin):
            with self.assertRaisesRegex(telvofm.OutcomeUnknown, "destroyParagon: code -10201"):
                action()
        self.assert_takes_nothing(receipt, telvofm.OutcomeUnknown, "destroyParagon: code -10201")
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)

    def test_cancelling_what_is_not_open_sends_nothing(self):
        ended = self.begun_receipt()
        ended.pay(1, Decimal("4.00"))
        ended.end()
        other = self.begun_receipt()
        self.assertEqual(ended.recover().verdict, telvofm.Verdict.SOLD)  # that changes nothing
        for receipt in (ended, self.session.receipt()):
            self.assert_is_not_ours(receipt)
        other.cancel()
        self.assert_is_not_ours(other)
        self.printer.expect(received=[{"name": "destroyParagon", "count": 1}])

    def test_empty_receipt_is_cancelled(self):
        self.session.begin_day()
        receipt = self.session.receipt()
        receipt.begin()
        self.assertEqual(self.session.interrupted_receipt("0", Decimal(0)).recover().verdict, telvofm.Verdict.NOT_SOLD)
        receipt.begin()
        with self.assertRaises(telvofm.Refused):
            receipt.end()
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}, {"kind": "cancelledReceipt"}])

    def test_same_object_begins_afresh(self):
        receipt = self.begun_receipt()
        receipt.pay(1, Decimal("1.00"))
        self.printer.arm("connectionClosed", command="payment", at="answer")
        with self.assertRaises(telvofm.OutcomeUnknown):
            receipt.pay(1, Decimal("3.00"))
        with self.assertRaises(telvofm.OutcomeUnknown):
            receipt.begin()  # it may be sold, as far as the till knows
        self.assertEqual((receipt.number_before, receipt.total), ("0", Decimal("4.00")))
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.SOLD)
        for number in ("2", "3"):
            receipt.begin()
            receipt.sell("Med", Decimal("4.00"), "A")
            receipt.pay(1, Decimal("4.00"))
            self.assertEqual((receipt.end(), receipt.total, receipt.paid), (number, Decimal("4.00"), Decimal("4.00")))

    def test_same_object_begins_afresh_behind_another_that_was_open(self):
        other = self.begun_receipt()
        receipt = self.session.receipt()
        with self.assertRaises(telvofm.NotExecuted):
            receipt.begin()
        other.cancel()
        receipt.begin()
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)

    def test_begin_that_was_refused_is_not_sold(self):
        receipt = self.session.receipt()  # and no day is open
        with self.assertRaises(telvofm.Refused):
            receipt.begin()
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)
        self.session.begin_day()
        receipt.begin()  # the same one, as nothing has become of it
        receipt.sell("Med", Decimal("4.00"), "A")
        receipt.pay(1, Decimal("4.00"))
        self.assertEqual(receipt.end(), "1")

    def test_begin_that_was_refused_by_a_printer_that_cannot_be_asked(self):
        self.session.close()
        blind = telvofm.Session(self.printer.address, questions=None)
        self.addCleanup(blind.close)
        receipt = blind.receipt()
        with self.assertRaises(telvofm.Refused):
            receipt.begin()
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.ASK_A_PERSON)

    def test_begin_that_ran_before_its_refusal_is_cancelled(self):
        self.session.begin_day()
        self.printer.arm("executedNotAcknowledged", command="paragonBegin", code=11)
        receipt = self.session.receipt()
        with self.assertRaises(telvofm.Refused):
            receipt.begin()
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)
        self.assertEqual(self.session.variable("STATE"), "closed")

    def test_part_that_was_paid_before_its_refusal_is_noticed(self):
        receipt = self.begun_receipt()
        self.printer.arm("executedNotAcknowledged", command="payment", code=33)
        with self.assertRaisesRegex(telvofm.OutcomeUnknown, "what is due is '3.00', for the till 4.00"):
            receipt.pay(1, Decimal("1.00"))
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)

    def test_whole_that_was_paid_before_its_refusal_is_sold(self):
        receipt = self.begun_receipt()
        self.printer.arm("executedNotAcknowledged", command="payment", code=33)
        with self.assertRaisesRegex(telvofm.OutcomeUnknown, "what is due is '0.00', for the till 4.00"):
            receipt.pay(1, Decimal("4.00"))
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.SOLD)

    def test_whole_that_was_paid_twice_instead_of_a_part_is_not_sold(self):
        receipt = self.begun_receipt()
        self.printer.arm("acknowledgeLost", command="payment")
        with self.assertRaisesRegex(telvofm.OutcomeUnknown, "what is due is '0.00', for the till 2.00"):
            receipt.pay(1, Decimal("2.00"))
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)

    def test_receipt_goes_on_after_a_refusal(self):
        receipt = self.begun_receipt()
        with self.assertRaises(telvofm.Refused):
            receipt.sell("Med", Decimal("4.00"), "H")
        with self.assertRaises(telvofm.Refused):
            receipt.pay(19, Decimal("4.00"))
        receipt.pay(1, Decimal("4.00"))
        self.assertEqual(receipt.end(), "1")

    def test_receipt_takes_nothing_after_doubt(self):
        receipt = self.begun_receipt()
        self.printer.arm("connectionClosed", command="itemSale", at="answer")
        for _ in range(2):
            with self.assertRaises(telvofm.OutcomeUnknown):
                receipt.sell("Syr", Decimal("3.00"), "A")
        with self.assertRaises(telvofm.OutcomeUnknown):
            receipt.pay(1, Decimal("4.00"))
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)  # as often as wanted
        self.printer.expect(received=[{"name": "itemSale", "count": 2}, {"name": "payment", "count": 0}],
                            committed=[{"kind": "cancelledReceipt"}])

    def test_first_item_that_never_came_is_not_sold(self):
        self.session.begin_day()
        receipt = self.session.receipt()
        receipt.begin()
        self.printer.arm("connectionClosed", command="itemSale", at="request")
        with self.assertRaises(telvofm.OutcomeUnknown):
            receipt.sell("Syr", Decimal("3.00"), "A")
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)

    def test_item_that_the_printer_acknowledged_and_forgot_is_noticed(self):
        receipt = self.begun_receipt()
        self.printer.arm("acknowledgedNotExecuted", command="itemSale")
        receipt.sell("Syr", Decimal("3.00"), "A")
        with self.assertRaisesRegex(telvofm.OutcomeUnknown, "the total is '4.00', for the till 7.00"):
            receipt.pay(1, Decimal("7.00"))
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)

    def test_end_that_was_refused_and_done_is_sold(self):
        receipt = self.begun_receipt()
        receipt.pay(1, Decimal("4.00"))
        self.printer.arm("executedNotAcknowledged", command="paragonEnd", code=49)
        with self.assertRaises(telvofm.Refused):
            receipt.end()
        recovery = receipt.recover()
        self.assertEqual((recovery.verdict, recovery.number), (telvofm.Verdict.SOLD, "1"))
        self.printer.expect(committed=[{"kind": "receipt", "total": "4.00"}])

    def test_end_that_nobody_answers_in_time_is_sold(self):  # after 18 seconds, in which three requests wait
        receipt = self.begun_receipt()
        receipt.pay(1, Decimal("4.00"))
        self.printer.arm("halfOpen", command="paragonEnd", at="answer")
        with self.assertRaises(telvofm.OutcomeUnknown) as lost:
            receipt.end()
        self.assertEqual((lost.exception.code, lost.exception.executed), (-10202, "unknown"))
        recovery = receipt.recover()
        self.assertEqual((recovery.verdict, recovery.number), (telvofm.Verdict.SOLD, "1"))

    def test_foreign_receipt_behind_ours_wants_a_person(self):
        receipt = self.begun_receipt()
        receipt.pay(1, Decimal("4.00"))
        receipt.end()
        other = self.begun_receipt()
        other.sell("Syr", Decimal("3.00"), "A")
        other.pay(1, Decimal("7.00"))
        other.end()
        interrupted = self.session.interrupted_receipt(receipt.number_before, receipt.total)
        self.assertEqual(interrupted.recover().verdict, telvofm.Verdict.ASK_A_PERSON)

    def test_till_that_was_switched_off_before_the_end(self):
        receipt = self.begun_receipt()
        receipt.pay(1, Decimal("4.00"))
        before, total = receipt.number_before, receipt.total
        self.session.close()
        again = telvofm.Session(self.printer.address)
        self.addCleanup(again.close)
        recovery = again.interrupted_receipt(before, total).recover()
        self.assertEqual((recovery.verdict, recovery.number), (telvofm.Verdict.SOLD, "1"))

    def test_till_that_was_switched_off_before_the_payment(self):
        receipt = self.begun_receipt()
        self.session.close()
        again = telvofm.Session(self.printer.address)
        self.addCleanup(again.close)
        self.assertEqual(again.interrupted_receipt(receipt.number_before, Decimal("4.00")).recover().verdict, telvofm.Verdict.NOT_SOLD)
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}])

    def test_till_that_kept_something_else_than_it_was_given(self):
        """As JSON may give it back: 23.59 is no Decimal("23.59"), and 1 is not "1"."""
        receipt = self.begun_receipt()
        receipt.pay(1, Decimal("4.00"))
        for failure, number, total in ((telvofm.AmountError, "0", 4.0), (TypeError, 0, Decimal("4.00")), (TypeError, None, Decimal("4.00")),
                                       (telvofm.AmountError, "0", "4.00")):
            with self.assertRaises(failure):
                self.session.interrupted_receipt(number, total)
        with self.assertRaises(telvofm.AmountError):
            receipt.total = 4.0
        self.assertEqual(receipt.total, 4)
        self.assertEqual(receipt.end(), "1")

    def test_rate_is_one_letter(self):
        receipt = self.begun_receipt()
        for vat in ("AB", ""):
            for action in (lambda: receipt.sell("Syr", 3, vat), lambda: receipt.void("Med", 4, vat), lambda: receipt.discount("Zľava", 1, vat)):
                with self.assertRaisesRegex(telvofm.TextError, "a VAT rate is one letter"):
                    action()
        self.printer.expect(received=[{"name": "itemSale", "count": 1}, {"name": "itemVoid", "count": 0}, {"name": "itemDiscount", "count": 0}])

    def test_session_that_another_has_followed_wants_a_person(self):
        receipt = self.begun_receipt()
        self.session.close()
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.ASK_A_PERSON)
        with telvofm.Session(self.printer.address) as another:
            another.library.setAutoTwoLineItem(1)  # is forgotten when a connection is opened
            recovery = receipt.recover()
            self.assertEqual(recovery.verdict, telvofm.Verdict.ASK_A_PERSON)
            self.assertIn("session of this receipt is closed", recovery.sentence)
            with self.assertRaises(telvofm.NotExecuted):
                receipt.cancel()
            self.assertEqual(another.library.isAutoTwoLineItem(), 1)
            self.assertEqual(another.variable("STATE"), "open")
            self.assertEqual(another.interrupted_receipt(receipt.number_before, receipt.total).recover().verdict, telvofm.Verdict.NOT_SOLD)

    def test_goods_taken_back_are_paid_out(self):
        receipt = self.begun_receipt()
        receipt.pay(1, Decimal("4.00"))
        receipt.end()
        back = self.session.receipt()
        back.begin()
        self.session.call("itemReturn_str", 1, 0, "Med", "4.00", "A", "1.000", "4.00", "ks", "1")
        back.total -= Decimal("4.00")
        back.pay(1, Decimal("-4.00"))
        self.assertEqual(back.end(), "2")


if __name__ == "__main__":
    unittest.main(argv=["python_recovery_test.py"])
