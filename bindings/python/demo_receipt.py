#!/usr/bin/env python3
"""Sells the demo receipt (../demo_receipt.md), and finds out what happened when something fails.

    demo_receipt.py ADDRESS
"""
import sys
from decimal import Decimal

import telvofm


def fill(receipt):
    receipt.begin()
    receipt.sell("Chlieb šumavský", Decimal("12.50"), "A", Decimal("1.5"), Decimal("8.33"), "kg")
    receipt.sell("Čučoriedková šťava", Decimal("3.90"), "B", 2, Decimal("1.95"), "fľa")
    receipt.sell("Žemľa", Decimal("2.50"), "A", 10, Decimal("0.25"), "ks")
    receipt.sell("Horúca čokoláda", Decimal("2.40"), "B", 2, Decimal("1.20"), "šál")
    receipt.sell("Med", Decimal("1.20"), "C", 3, Decimal("0.40"), "lyž")
    receipt.sell("Jogurt", Decimal("0.89"), "C", 1, Decimal("0.89"), "čaš")
    receipt.sell("Ťahaná štrúdľa", Decimal("3.00"), "A", 4, Decimal("0.75"), "ťah")
    receipt.discount("Zľava stálym zákazníkom", Decimal("0.30"), "A")
    receipt.void("Žemľa", Decimal("2.50"), "A", 10, Decimal("0.25"), "ks")
    receipt.pay(4, Decimal("5.00"), "Šaľa")
    receipt.pay(2, Decimal("5.00"), "Čip. karta")
    receipt.pay(3, Decimal("4.00"), "Poukážka")
    receipt.pay(1, Decimal("20.00"), "Hotovosť")


def sell(session):
    """Sells the receipt and returns what has become of it."""
    session.begin_day()
    receipt = session.receipt()
    try:
        fill(receipt)
        number = receipt.end()
        return telvofm.Recovery(telvofm.Verdict.SOLD, f"receipt {number}, total {receipt.total}", number)
    except telvofm.Failure as failure:
        print("failed:", failure)
        return receipt.recover()


def main():
    sys.stdout.reconfigure(encoding="utf-8")  # whatever the terminal's own code page
    if len(sys.argv) != 2:
        print("usage: demo_receipt.py ADDRESS", file=sys.stderr)
        return 2
    try:
        with telvofm.Session(sys.argv[1]) as session:
            outcome = sell(session)
    except telvofm.LibraryError as missing:
        print(missing, file=sys.stderr)
        return 2
    except telvofm.Failure as failure:
        print("not sold:", failure)
        return 1
    print(outcome)
    return {telvofm.Verdict.SOLD: 0, telvofm.Verdict.NOT_SOLD: 1, telvofm.Verdict.ASK_A_PERSON: 3}[outcome.verdict]


if __name__ == "__main__":
    sys.exit(main())
