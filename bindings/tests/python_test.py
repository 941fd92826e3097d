#!/usr/bin/env python3
"""The Python layer where the demo receipt does not come: characters, amounts, exceptions, results, what is refused beforehand.

    python_test.py BUILD_FOLDER
"""
import ctypes
import gc
import os
import pathlib
import struct
import sys
import unittest
import unittest.mock
from decimal import Decimal

build = pathlib.Path(sys.argv[1]).resolve()
top = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path[:0] = [str(top / "testing"), str(top / "bindings/python")]
os.environ["TELVOFM_LIBRARY"] = str(build / "libtelvofm.so")
(build / "bindings").mkdir(exist_ok=True)
os.chdir(build / "bindings")  # the call log lies there
import telvofm  # noqa: E402
from telvofm import amounts, failures, library  # noqa: E402
from telvofm_printer import FiscalPrinter  # noqa: E402


class Texts(unittest.TestCase):
    def test_every_byte_comes_back(self):
        every = bytes(range(1, 256))
        self.assertEqual(telvofm.encode(telvofm.decode(every)), every)
        self.assertEqual(telvofm.decode(b"\x00"), "\0")

    def test_is_windows_1250(self):
        self.assertEqual(telvofm.encode("šč žťľ€"), b"\x9A\xE8 \x9E\x9D\xBE\x80")
        self.assertEqual(telvofm.decode(b"\x81\x83\x88\x90\x98"), "\x81\x83\x88\x90\x98")

    def test_names_the_character_that_it_refuses(self):
        with self.assertRaisesRegex(telvofm.TextError, r'"ñ" \(U\+00F1, LATIN SMALL LETTER N WITH TILDE\) at position 2') as refused:
            telvofm.encode("Piña")
        self.assertEqual((refused.exception.character, refused.exception.position), ("ñ", 2))
        with self.assertRaisesRegex(telvofm.TextError, r"U\+1F600"):
            telvofm.encode("\U0001F600")

    def test_refuses_what_is_no_single_character_of_the_code_page(self):
        with self.assertRaisesRegex(telvofm.TextError, "COMBINING CARON"):  # s and a caron: another way to write š
            telvofm.encode("s\u030C")

    def test_refuses_a_nul(self):
        with self.assertRaisesRegex(telvofm.TextError, "NUL stands at position 6") as refused:
            telvofm.encode("Chlieb\0 tajný")
        self.assertEqual(refused.exception.position, 6)


class Amounts(unittest.TestCase):
    def test_are_written_with_their_decimals(self):
        self.assertEqual(amounts.money(Decimal("12.5")), "12.50")
        self.assertEqual(amounts.money(Decimal("2.50000")), "2.50")
        self.assertEqual(amounts.money(-3), "-3.00")
        self.assertEqual(amounts.money(Decimal("-0.00")), "0.00")
        self.assertEqual(amounts.money(Decimal("1E+6")), "1000000.00")
        self.assertEqual(amounts.quantity(Decimal("0.125")), "0.125")

    def test_are_never_rounded(self):
        with self.assertRaisesRegex(telvofm.AmountError, "2.675 has more than 2 decimals"):
            amounts.money(Decimal("2.675"))

    def test_are_no_binary_fractions(self):
        with self.assertRaisesRegex(telvofm.AmountError, r'write Decimal\("12.5"\)'):
            amounts.money(12.5)
        with self.assertRaises(telvofm.AmountError):
            amounts.money(True)

    def test_are_numbers(self):
        for none in ("NaN", "Infinity", "1E+40"):
            with self.assertRaisesRegex(telvofm.AmountError, "is no amount"):
                amounts.money(Decimal(none))

    def test_a_payment_of_zero_is_refused(self):
        with self.assertRaises(telvofm.AmountError):
            amounts.paid(Decimal(0))


class Failures(unittest.TestCase):
    def test_say_what_was_carried_out(self):
        refused = failures.failure_of("itemSale_str", 26, 0.01)
        self.assertIsInstance(refused, telvofm.Refused)
        self.assertEqual(refused.executed, "no")
        self.assertRegex(str(refused), r"^itemSale_str: code 26 \(refused\): .* It was not carried out\. ")

    def test_do_not_believe_a_slow_refusal(self):
        slow = failures.failure_of("payment_str", 32, 3.1)
        self.assertIsInstance(slow, telvofm.OutcomeUnknown)
        self.assertEqual(slow.executed, "unknown")

    def test_leave_open_what_a_lost_answer_leaves_open(self):
        for code in (-10201, -10202, -10002, 64):
            self.assertIsInstance(failures.failure_of("paragonEnd", code, 0), telvofm.OutcomeUnknown)

    def test_know_what_never_left(self):
        self.assertIsInstance(failures.failure_of("openFM", -1, 0), telvofm.NotExecuted)

    def test_do_not_trust_a_code_that_nobody_has_described(self):
        self.assertEqual(failures.failure_of("openFM", -77, 0).executed, "unknown")


class Library(unittest.TestCase):
    def test_says_that_a_32_bit_python_will_not_do(self):
        with unittest.mock.patch.object(struct, "calcsize", return_value=4):
            with self.assertRaisesRegex(telvofm.LibraryError, "64-bit library and this is a 32-bit Python; install a 64-bit Python"):
                library.load()

    def test_says_that_a_file_is_no_library(self):
        text = build / "bindings/no_library.so"
        text.write_text("not a library")
        with self.assertRaisesRegex(telvofm.LibraryError, "no_library.so cannot be loaded"):
            library.load(text)


class WithPrinter(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.printer = FiscalPrinter(program=str(build / "telvofm-printer"))
        cls.addClassCleanup(cls.printer.close)

    def setUp(self):
        self.printer.reset()
        self.session = telvofm.Session(self.printer.address)
        self.addCleanup(self.session.close)


class OpenSession(WithPrinter):
    def test_is_the_only_one(self):
        with self.assertRaisesRegex(RuntimeError, "one at a time; close it first"):
            telvofm.Session(self.printer.address)
        self.session.close()
        telvofm.Session(self.printer.address).close()

    def test_day_that_is_open_is_no_failure(self):
        self.assertTrue(self.session.begin_day())
        self.assertFalse(self.session.begin_day())

    def test_day_of_which_nobody_knows_is_a_failure(self):
        self.printer.arm("refuse", code=64, command="sellingDayBegin")  # as after silence on a serial line
        with self.assertRaises(telvofm.OutcomeUnknown):
            self.session.begin_day()

    def test_calls_any_function_with_texts_in_windows_1250(self):
        self.session.call("setHeader", 1, "0000", 1, "Potraviny Šťastný")
        self.session.call("freeID", 1, True, "ž")
        self.printer.expect(executed=[{"name": "setHeader", "fields": {"text": "Potraviny Šťastný"}},
                                      {"name": "freeID", "fields": {"print": "1", "freeID": "ž"}}])

    def test_refuses_before_anything_is_sent(self):
        with self.assertRaisesRegex(telvofm.TextError, "NUL"):
            self.session.call("setHeader", 1, b"0000", 1, b"a\0b")
        with self.assertRaisesRegex(TypeError, "ends the process"):
            self.session.call("getJournal", 1, b"", 0)
        with self.assertRaisesRegex(TypeError, "takes 4 arguments and was given 2"):
            self.session.call("setHeader", 1, "0000")
        self.printer.expect(received=[{"name": "setHeader", "count": 0}])

    def test_reads_results_of_any_length(self):
        self.session.begin_day()
        for number in range(40):
            receipt = self.session.receipt()
            receipt.begin()
            receipt.sell("Žemľa", Decimal("0.25"), "A", unit="ks")
            receipt.pay(1, Decimal("0.25"))
            self.assertEqual(receipt.end(), str(number + 1))
        journal = self.session.journal()
        self.assertEqual(journal.count("Žemľa"), 40)
        self.assertGreater(len(journal), 4096)
        self.assertIn("Receipt 40", self.session.last_receipt())
        self.assertIn("Receipt 7", telvofm.decode(self.session.read("getJournalStructZ_ResultObject", 1, 7, 7)))

    def test_names_of_files_are_the_systems_matter(self):
        file = pathlib.Path("žurnál.txt")
        self.session.call("getJournal_str_tofile", 1, file)
        file.unlink()

    def test_releases_results_by_itself(self):
        destroyed = []
        true_one = self.session.library.destroyResultObject
        with unittest.mock.patch.object(self.session.library, "destroyResultObject",
                                        side_effect=lambda address: (destroyed.append(address), true_one(address))):
            self.session.variable("LIFE")
            self.assertEqual(len(destroyed), 1)
            with self.assertRaises(telvofm.Refused):
                self.session.variable("NOTHING_LIKE_THAT")
            gc.collect()
        self.assertEqual(len(destroyed), 2)

    def test_result_holds_bytes_behind_a_nul(self):
        # The memory image of a result is bytes, and 0x00 is one of them.
        fake = unittest.mock.Mock()
        held = ctypes.create_string_buffer(b"a\0b")
        fake.createResultObject.return_value = 1
        fake.getResultObjectLength.return_value = 3
        fake.getResultObjectString.return_value = ctypes.addressof(held)
        from telvofm.session import _ResultObject
        with _ResultObject(fake) as result:
            self.assertEqual(result.data(), b"a\0b")

    def test_printer_that_calls_its_variables_otherwise(self):
        self.session.begin_day()
        self.session.questions = telvofm.Questions(last_receipt="POSLEDNY")
        with self.assertRaises(telvofm.Refused):
            self.session.receipt().begin()
        self.session.questions = None
        receipt = self.session.receipt()
        receipt.begin()
        receipt.sell("Med", 1, "A")
        receipt.pay(1, 1)
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.ASK_A_PERSON)
        self.assertEqual(receipt.end(), "")


class Recovering(WithPrinter):
    def receipt_with_one_item(self):
        self.session.begin_day()
        receipt = self.session.receipt()
        receipt.begin()
        receipt.sell("Med", Decimal("4.00"), "A")
        return receipt

    def test_begin_that_was_refused_touches_nothing(self):
        self.receipt_with_one_item()  # another one, which is open
        receipt = self.session.receipt()
        with self.assertRaises(telvofm.Refused):
            receipt.begin()
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)
        self.assertEqual(self.session.variable("STATE"), "open")

    def test_receipt_goes_on_after_a_refusal(self):
        receipt = self.receipt_with_one_item()
        with self.assertRaises(telvofm.Refused):
            receipt.sell("Med", Decimal("4.00"), "H")
        with self.assertRaises(telvofm.Refused):
            receipt.pay(19, Decimal("4.00"))
        receipt.pay(1, Decimal("4.00"))
        self.assertEqual(receipt.end(), "1")

    def test_receipt_takes_nothing_after_doubt(self):
        receipt = self.receipt_with_one_item()
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
        receipt = self.receipt_with_one_item()
        self.printer.arm("acknowledgedNotExecuted", command="itemSale")
        receipt.sell("Syr", Decimal("3.00"), "A")
        with self.assertRaisesRegex(telvofm.OutcomeUnknown, "the total is '4.00', for the till 7.00"):
            receipt.pay(1, Decimal("7.00"))
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.NOT_SOLD)

    def test_end_that_was_refused_and_done_is_sold(self):
        receipt = self.receipt_with_one_item()
        receipt.pay(1, Decimal("4.00"))
        self.printer.arm("executedNotAcknowledged", command="paragonEnd", code=49)
        with self.assertRaises(telvofm.Refused):
            receipt.end()
        recovery = receipt.recover()
        self.assertEqual((recovery.verdict, recovery.number), (telvofm.Verdict.SOLD, "1"))
        self.printer.expect(committed=[{"kind": "receipt", "total": "4.00"}])

    def test_foreign_receipt_behind_ours_wants_a_person(self):
        receipt = self.receipt_with_one_item()
        receipt.pay(1, Decimal("4.00"))
        receipt.end()
        other = self.receipt_with_one_item()
        other.sell("Syr", Decimal("3.00"), "A")
        other.pay(1, Decimal("7.00"))
        other.end()
        self.assertEqual(receipt.recover().verdict, telvofm.Verdict.ASK_A_PERSON)

    def test_till_that_was_switched_off_before_the_end(self):
        receipt = self.receipt_with_one_item()
        receipt.pay(1, Decimal("4.00"))
        before, total = receipt.number_before, receipt.total
        self.session.close()
        again = telvofm.Session(self.printer.address)
        self.addCleanup(again.close)
        recovery = again.interrupted_receipt(before, total).recover()
        self.assertEqual((recovery.verdict, recovery.number), (telvofm.Verdict.SOLD, "1"))

    def test_till_that_was_switched_off_before_the_payment(self):
        receipt = self.receipt_with_one_item()
        self.session.close()
        again = telvofm.Session(self.printer.address)
        self.addCleanup(again.close)
        self.assertEqual(again.interrupted_receipt(receipt.number_before, Decimal("4.00")).recover().verdict, telvofm.Verdict.NOT_SOLD)
        self.printer.expect(committed=[{"kind": "cancelledReceipt"}])

    def test_goods_taken_back_are_paid_out(self):
        receipt = self.receipt_with_one_item()
        receipt.pay(1, Decimal("4.00"))
        receipt.end()
        back = self.session.receipt()
        back.begin()
        self.session.call("itemReturn_str", 1, 0, "Med", "4.00", "A", "1.000", "4.00", "ks", "1")
        back.total -= Decimal("4.00")
        back.pay(1, Decimal("-4.00"))
        self.assertEqual(back.end(), "2")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
