#!/usr/bin/env python3
"""A till that is told each of its steps by told_till_test.py, with the Python layer.

    told_till.py ADDRESS
"""
import pathlib
import sys
from decimal import Decimal

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "python"))
import telvofm  # noqa: E402


class ToldTill:
    """One method per step; what it returns is said behind "done"."""

    def __init__(self, session):
        self._session = session
        self._receipts = {}

    def day(self):
        return "" if self._session.begin_day() else "and it was open"

    def begin(self, name):
        self._receipts.setdefault(name, self._session.receipt()).begin()

    def interrupted(self, name, total, number_before=""):
        self._receipts[name] = self._session.interrupted_receipt(number_before, Decimal(total))

    def sell(self, name, total):
        self._receipts[name].sell("Čaj", Decimal(total), "A")

    def void(self, name, total):
        self._receipts[name].void("Čaj", Decimal(total), "A")

    def pay(self, name, amount):
        self._receipts[name].pay(1, Decimal(amount))

    def end(self, name):
        return self._receipts[name].end()

    def cancel(self, name):
        self._receipts[name].cancel()

    def recover(self, name):
        return str(self._receipts[name].recover())

    def ask(self, variable):
        return self._session.variable(variable)

    def reopen(self):
        self._session.reopen()

    def forget(self):
        self._receipts.clear()


def answer(till, step, *arguments):
    try:
        return f"done {getattr(till, step)(*arguments) or ''}".rstrip()
    except telvofm.Failure as failure:
        return f"{type(failure).__name__} {failure}"


def main():
    with telvofm.Session(sys.argv[1]) as session:
        till = ToldTill(session)
        for line in sys.stdin:
            print(answer(till, *line.split()), file=sys.stderr, flush=True)  # the library writes to standard output


if __name__ == "__main__":
    main()
