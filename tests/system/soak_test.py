#!/usr/bin/env python3
"""A till's process makes a great many calls to a virtual printer that is armed with faults which hit by chance and end by
themselves. At the end the printer's books are those of the till, and the till's process has not grown.

    soak_test.py SOURCE_FOLDER BUILD_FOLDER

TELVOFM_SOAK_CALLS says how many calls (3,000), TELVOFM_SOAK_SEED with which seed (1).

Left out are faults of which no till can know (a printer that tells an untruth; what the wire itself cannot tell: late, second
and stale answers, blocks that come twice, unknown terminators), and those after which the library waits for 18 seconds. An
acknowledge that is lost, which costs three, comes three times when there are 100,000 calls and more.
"""
import json
import os
import pathlib
import subprocess
import sys
import time
from decimal import Decimal

source, build = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
sys.path.insert(0, str(source / "testing"))
from telvofm_printer import FiscalPrinter  # noqa: E402

CALLS = int(os.environ.get("TELVOFM_SOAK_CALLS", "3000"))
SEED = int(os.environ.get("TELVOFM_SOAK_SEED", "1"))
MANY = 100_000
LARGEST_GROWTH = 1 << 20
OFTEN, SELDOM = 0.003, 0.0003
FAULTS = [
    ("refuse", OFTEN, {"code": 77}),
    ("diskFull", OFTEN, {}),
    ("paperOut", OFTEN, {}),
    ("connectionClosed", OFTEN, {"at": "request"}),
    ("connectionClosed", OFTEN, {"at": "answer"}),
    ("connectionClosed", OFTEN, {"at": "afterwards"}),
    ("connectionReset", OFTEN, {"at": "request"}),
    ("connectionReset", OFTEN, {"at": "answer"}),
    ("noise", OFTEN, {"bytes": "7f"}),
    ("extraBytes", OFTEN, {"bytes": "7f"}),
    ("flippedBit", OFTEN, {"byte": 0, "bit": 6}),
    ("wrongChecksum", OFTEN, {"blocks": 1}),
    ("busy", OFTEN, {"milliseconds": 2}),
    ("acknowledgeLate", OFTEN, {"milliseconds": 2}),
    ("split", OFTEN, {"byte": 1, "milliseconds": 1}),
    ("powerLoss", SELDOM, {"at": "request", "milliseconds": 5}),
    ("powerLoss", SELDOM, {"at": "answer", "milliseconds": 5}),
]


def arm(printer):
    for number, (kind, probability, parameters) in enumerate(FAULTS):
        printer.arm(kind, probability=probability, seed=SEED + number, requests=1_000_000, **parameters)
    if CALLS >= MANY:
        for part in (4, 8, 16):
            printer.arm("acknowledgeLost", command="itemSale", fromRequest=CALLS // part)


def differences(books, printer):
    totals = printer.ask("GET", "totals")
    days = [totals["closedDays"], totals["day"]]
    cash = [entry["sum"] for entry in totals["drawer"] if entry["type"] == 1]
    pairs = {"turnover": (Decimal(books["turnover"]), sum(Decimal(day["turnover"]) for day in days)),
             "receipts": (books["receipts"], sum(day["receipts"] for day in days)),
             "cancelled": (books["cancelled"], sum(day["cancelled"] for day in days)),
             "drawer": ([Decimal(books["drawer"])], [Decimal(amount) for amount in cash]),
             "closures": (books["closures"], totals["lastClosure"])}
    return [f"{name}: the till has {till}, the printer {printers}" for name, (till, printers) in pairs.items() if till != printers]


def main():
    with FiscalPrinter("--clock", "2026-01-01 12:00", program=build / "telvofm-printer") as printer:
        printer.ask("PATCH", "clock", {"mode": "stands"})
        arm(printer)
        began = time.monotonic()
        till = subprocess.run([build / "soak_till", printer.address, str(CALLS), str(SEED)], stdout=subprocess.PIPE, text=True)
        took = time.monotonic() - began
        hit, idle = {}, []
        for fault in printer.ask("GET", "faults")["faults"]:
            kind = fault["fault"]["kind"]
            hit[kind] = hit.get(kind, 0) + fault["requestsHit"]
            if not fault["requestsHit"]:
                idle.append(str(fault["fault"]))
        printer.ask("DELETE", "faults")
        if till.returncode != 0:
            sys.exit(f"the till has ended with {till.returncode}")
        books = json.loads(till.stdout.splitlines()[-1])
        wrong = differences(books, printer)
    print(f"seed {SEED}, {books['calls']} calls in {took:.1f} s, {books['calls'] / took:.0f} a second")
    print("till:", json.dumps(books))
    print("faults:", json.dumps(hit))
    if books["residentGrowth"] >= LARGEST_GROWTH:
        wrong.append(f"the till's process has grown by {books['residentGrowth']} bytes")
    if books["handleGrowth"] != 0:
        wrong.append(f"the till's process has {books['handleGrowth']} handles more")
    if not books["unknown"] or not books["refused"] or not books["receipts"]:
        wrong.append("it has met no trouble")
    if CALLS >= MANY:
        wrong += [f"this fault has hit nothing: {fault}" for fault in idle]
    for line in wrong:
        print("FAILED:", line)
    sys.exit(1 if wrong else 0)


main()
