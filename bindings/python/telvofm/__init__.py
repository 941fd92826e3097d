"""Sells on a fiscal printer through the TelvoFM library.

    from decimal import Decimal
    import telvofm

    with telvofm.Session("192.168.1.10:9100") as session:
        session.begin_day()
        receipt = session.receipt()
        try:
            receipt.begin()
            receipt.sell("Chlieb šumavský", Decimal("12.50"), "A", Decimal("1.5"), Decimal("8.33"), "kg")
            receipt.pay(1, Decimal("12.50"), "Hotovosť")
            print("sold: receipt", receipt.end())
        except telvofm.Failure as failure:
            print(failure)
            print(receipt.recover())

bindings/README.md says what stands behind it; telvofm.raw has all functions of telvofm.h.
"""
from .failures import AmountError, Failure, LibraryError, NotExecuted, OutcomeUnknown, Refused, TextError
from .receipt import Receipt
from .recovery import Recovery, Verdict
from .session import Questions, Session
from .texts import decode, encode

__all__ = ["AmountError", "Failure", "LibraryError", "NotExecuted", "OutcomeUnknown", "Questions", "Receipt", "Recovery", "Refused",
           "Session", "TextError", "Verdict", "decode", "encode"]
