#!/usr/bin/env python3
"""A session of the Python layer: calls, texts, results, and what is refused before anything is sent.

    python_session_test.py BUILD_FOLDER
"""
import ctypes
import gc
import pathlib
import unittest
import unittest.mock
from decimal import Decimal

from python_layer import WithPrinter, telvofm


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
        self.session.call("freeID", 1, True, "ščžťľ")
        self.printer.expect(executed=[{"name": "setHeader", "fields": {"text": "Potraviny Šťastný"}},
                                      {"name": "freeID", "fields": {"print": "1", "freeID": "ščžťľ"}, "count": 1}])

    def test_any_truth_but_zero_is_true(self):
        for truth in (1, 255, -1):  # as other languages and compilers have it
            self.session.call("freeID", 1, truth, "ž")
        self.session.call("freeID", 1, 0, "ž")
        self.printer.expect(executed=[{"name": "freeID", "fields": {"print": "1"}, "count": 3},
                                      {"name": "freeID", "fields": {"print": "0"}, "count": 1}])
        self.session.library.setAutoTwoLineItem(255)
        self.assertEqual(self.session.library.isAutoTwoLineItem(), 1)

    def test_that_is_closed_sends_nothing_to_the_printer_of_another(self):
        self.session.close()
        with telvofm.Session(self.printer.address) as another:
            another.library.setAutoTwoLineItem(1)  # is forgotten when a connection is opened
            for action in (self.session.begin_day, self.session.reopen, self.session.journal, lambda: self.session.call("clearDisplay", 1, 0, "")):
                with self.assertRaisesRegex(telvofm.NotExecuted, "code -1 .*This session is closed") as refused:
                    action()
                self.assertEqual(refused.exception.executed, "no")
            self.session.close()
            self.assertEqual((self.session.is_open, another.is_open), (False, True))
            self.assertEqual(another.library.isAutoTwoLineItem(), 1)
        self.printer.expect(received=[{"name": "sellingDayBegin", "count": 0}, {"name": "clearDisplay", "count": 0}])

    def test_whose_printer_is_gone_stays_the_one_session(self):
        self.session.address = "127.0.0.1:1"
        with self.assertRaises(telvofm.NotExecuted):
            self.session.reopen()
        with self.assertRaises(RuntimeError):
            telvofm.Session(self.printer.address)
        self.session.address = self.printer.address
        self.session.reopen()
        self.assertTrue(self.session.begin_day())

    def test_refuses_before_anything_is_sent(self):
        before = len(self.printer.trace())
        with self.assertRaisesRegex(telvofm.TextError, "NUL"):
            self.session.call("setHeader", 1, b"0000", 1, b"a\0b")
        with self.assertRaisesRegex(TypeError, "ends the process"):
            self.session.call("getJournal", 1, b"", 0)
        for words, function, *arguments in (
                ("takes 4 arguments and was given 2", "setHeader", 1, "0000"),
                ("telvofm.h has no function itemsSale", "itemsSale", 1),
                ("argument 4 of itemSale_int is a whole number from -2147483648 to 2147483647; 4294968546 is none",
                 "itemSale_int", 1, 0, "X", 2 ** 32 + 1250, "A", 1500, 83333, "ks"),
                ("argument 4 of itemSale_int is a whole number", "itemSale_int", 1, 0, "X", 12.5, "A", 1500, 83333, "ks"),
                ("argument 4 of setSMTP is a whole number from -32768 to 32767", "setSMTP", 1, "S", "10.0.0.1", 65536, "x"),
                ("argument 1 of setHeader is a whole number", "setHeader", "1", "0000", 1, "x"),
                ("argument 4 of setHeader is a text; 1 is none", "setHeader", 1, "0000", 1, 1),
                ("argument 2 of freeID is a truth; 'yes' is none", "freeID", 1, "yes", "x"),
                ("argument 5 of itemSale is one character; 'AB' is none", "itemSale", 1, 0, "X", 1.0, "AB", 1.0, 1.0, "ks"),
                ("argument 4 of itemSale is an int or a float", "itemSale", 1, 0, "X", Decimal(1), "A", 1.0, 1.0, "ks")):
            with self.subTest(function=function, words=words), self.assertRaisesRegex(TypeError, words):
                self.session.call(function, *arguments)
        self.assertEqual(len(self.printer.trace()), before)

    def test_truth_that_has_no_last_bits_is_true(self):
        self.session.call("freeID", 1, 256, "ž")
        self.printer.expect(executed=[{"name": "freeID", "fields": {"print": "1"}, "count": 1}])

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
            with self.assertRaises(telvofm.TextError):
                self.session.variable("ñ")
            self.session.close()
            with self.assertRaises(telvofm.NotExecuted):
                self.session.journal()
            gc.collect()
        self.assertEqual(len(destroyed), 4)

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

    def test_wants_all_names_of_a_printers_variables_or_none(self):
        self.session.close()
        for questions in (telvofm.Questions(state=None), telvofm.Questions(due="")):
            with self.assertRaisesRegex(ValueError, "give all of them, or None"):
                telvofm.Session(self.printer.address, questions=questions)

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


if __name__ == "__main__":
    unittest.main(argv=["python_session_test.py"])
