"""The Python layer on a printer of a test's own. The first argument of the test is the build folder."""
import os
import pathlib
import sys
import unittest
from decimal import Decimal

build = pathlib.Path(sys.argv[1]).resolve()
top = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path[:0] = [str(top / "testing"), str(top / "bindings/python")]
os.environ["TELVOFM_LIBRARY"] = str(build / "libtelvofm.so")
(build / "bindings").mkdir(exist_ok=True)
os.chdir(build / "bindings")  # the call log lies there
import telvofm  # noqa: E402
from telvofm_printer import FiscalPrinter  # noqa: E402


class WithPrinter(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.printer = FiscalPrinter(program=str(build / "telvofm-printer"))
        cls.addClassCleanup(cls.printer.close)

    def setUp(self):
        self.printer.reset()
        self.session = telvofm.Session(self.printer.address)
        self.addCleanup(self.session.close)

    def begun_receipt(self):
        """With one item of 4.00."""
        self.session.begin_day()
        receipt = self.session.receipt()
        receipt.begin()
        receipt.sell("Med", Decimal("4.00"), "A")
        return receipt
