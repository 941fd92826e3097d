#!/usr/bin/env python3
"""What the Python layer makes of characters, amounts, codes and libraries, without a printer; and that it is Python 3.8.

    python_values_test.py BUILD_FOLDER
"""
import ast
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import unittest
import unittest.mock
from decimal import Decimal

build = pathlib.Path(sys.argv[1]).resolve()
top = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(top / "bindings/python"))
os.environ["TELVOFM_LIBRARY"] = str(build / "libtelvofm.so")
(build / "bindings").mkdir(exist_ok=True)
os.chdir(build / "bindings")  # the call log lies there
import telvofm  # noqa: E402
from telvofm import amounts, failures, library  # noqa: E402


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
        with self.assertRaisesRegex(telvofm.AmountError, "^1.005 has more than 2 decimals; round it first$"):
            amounts.money(Decimal("1.005"))
        with self.assertRaisesRegex(telvofm.AmountError, "^0.1255 has more than 3 decimals; round it first$"):
            amounts.quantity(Decimal("0.1255"))
        with self.assertRaisesRegex(telvofm.AmountError, "^0.0000001 has more than 2 decimals"):
            amounts.money(Decimal("2.0000001") - 2)

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


class Language(unittest.TestCase):
    """The oldest Python that the layer promises is not the one that runs this test."""

    def sources(self):
        files = sorted((top / "bindings/python").rglob("*.py"))
        self.assertGreater(len(files), 9)
        return [(file, file.read_text(encoding="utf-8")) for file in files]

    def test_is_python_3_8(self):
        with self.assertRaises(SyntaxError):
            ast.parse("match 1:\n    case 1: pass", feature_version=(3, 8))
        for file, source in self.sources():
            ast.parse(source, str(file), feature_version=(3, 8))

    @unittest.skipUnless(shutil.which("python3.8"), "no Python 3.8 is on the path; the grammar alone is looked at")
    def test_runs_with_python_3_8(self):
        ended = subprocess.run(["python3.8", "-B", "-c", "import sys, telvofm; telvofm.library.load(); print(sys.version_info[:2])"],
                               env={**os.environ, "PYTHONPATH": str(top / "bindings/python")}, capture_output=True, text=True, check=False)
        if ended.returncode == 127:
            self.skipTest("python3.8 is the name of a Python that is not there")
        self.assertEqual((ended.stdout, ended.stderr), ("(3, 8)\n", ""))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
