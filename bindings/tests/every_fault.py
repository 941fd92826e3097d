#!/usr/bin/env python3
"""Lets a till in some language sell under each fault at each of its calls and under each scenario, and compares what its layer says with
the printer's journal: never "sold" for what it has not sold, never "not sold" for what it has, and nobody else's receipt is touched.

    every_fault.py BUILD_FOLDER [--linked | --searched] [--library FILE] COMMAND...

COMMAND is the till of told_till_test.py. With TELVOFM_QUICK in the environment the scenarios and the faults that a till has to wait for
are left out. Ends with 1 and says which fault at which call it was, when a layer has said what is not so.
"""
import collections
import concurrent.futures
import json
import os
import pathlib
import queue
import sys
import time

from program import FiscalPrinter, printer_program
from telvofm_printer import Refused
from told_till_test import Till

IS_QUICK = "TELVOFM_QUICK" in os.environ
TILLS = 8 if IS_QUICK else 24  # at once; most of them wait
SCENARIOS = pathlib.Path(__file__).resolve().parent.parent.parent / "scenarios"

AT_ONCE = [
    {"kind": "wrongChecksum", "blocks": 3}, {"kind": "wrongTerminator", "blocks": 3}, {"kind": "blockRepeated", "blocks": 3},
    {"kind": "staleAnswer"}, {"kind": "acknowledgeTwice", "milliseconds": 0}, {"kind": "acknowledgeTwice", "milliseconds": 20},
    {"kind": "connectionClosed", "at": "request"}, {"kind": "connectionClosed", "at": "answer"}, {"kind": "connectionClosed", "at": "afterwards"},
    {"kind": "connectionReset", "at": "answer"}, {"kind": "refuse", "code": 26}, {"kind": "executedNotAcknowledged", "code": 49},
    {"kind": "acknowledgedNotExecuted"}, {"kind": "noise", "bytes": "06"}, {"kind": "noise", "bytes": "ff"}, {"kind": "noise", "bytes": "04"},
    {"kind": "noise", "bytes": "151a"}, {"kind": "extraBytes", "bytes": "06"}, {"kind": "extraBytes", "bytes": "3a"},
    {"kind": "powerLoss", "at": "request", "milliseconds": 100}, {"kind": "powerLoss", "at": "answer", "milliseconds": 100},
    {"kind": "diskFull"}, {"kind": "paperOut"}, {"kind": "busy", "milliseconds": 200}, {"kind": "split", "byte": 2, "milliseconds": 100},
]
TO_WAIT_FOR = [
    {"kind": "acknowledgeTwice", "milliseconds": 1000}, {"kind": "acknowledgeLate", "milliseconds": 4000},
    {"kind": "acknowledgeLate", "milliseconds": 7000}, {"kind": "acknowledgeLate", "milliseconds": 20000}, {"kind": "acknowledgeLost"},
    {"kind": "requestLost"}, {"kind": "silence"}, {"kind": "halfOpen", "at": "request"}, {"kind": "halfOpen", "at": "answer"},
    {"kind": "cut", "byte": 2}, {"kind": "wrongLength"},
]
# Two bits of the same weight: in the first byte of the text and in the third, or in the first two.
FLIPS = [[{"kind": "flippedBit", "byte": one, "bit": bit}, {"kind": "flippedBit", "byte": another, "bit": bit}]
         for one, another in ((2, 4), (2, 3)) for bit in (0, 1)]

# What goes wrong before the fault, so that the receipt is recovered: nothing, a line, the end or its acknowledge.
BEFORE = {
    "nothing": [],
    "a refused item": [{"kind": "refuse", "command": "itemSale", "code": 26, "fromCall": 2}],
    "an end that is lost": [{"kind": "connectionClosed", "at": "request", "command": "paragonEnd"}],
    "an end whose answer is lost": [{"kind": "connectionClosed", "at": "answer", "command": "paragonEnd"}],
}
CALLS = [("paragonBegin", 1), ("itemSale", 1), ("itemSale", 2), ("payment", 1), ("payment", 2), ("paragonEnd", 1)]


class Place:
    """A printer, and a till that lives as long."""

    def __init__(self):
        self.printer = FiscalPrinter(program=printer_program)
        self.till = Till(self.printer.address)

    def close(self):
        self.till.close()
        self.printer.close()

    def tell(self, step, pause=0.0):
        said = self.till.tell(step)
        time.sleep(pause)
        return said

    def stand_anew(self):
        """With one receipt sold, of the very total."""
        self.printer.reset()
        for step in ("forget", "reopen", "day", "begin a", "sell a 7.00", "pay a 7.00", "end a", "forget"):
            said = self.tell(step)
            if not said.startswith("done"):
                raise RuntimeError(f"{step}: {said}")

    def new_documents(self):
        return [(document["kind"], document.get("number"), document.get("total")) for document in self.printer.documents()][1:]


def told(place, steps, pause):
    """Whether all of them have worked."""
    return all(place.tell(step, pause).startswith("done") for step in steps)


def verdict_of(place, name, steps, pause):
    """What the till knows in the end; a person is asked when the printer is still of two minds a moment later."""
    for step in steps:
        said = place.tell(f"{step.split()[0]} {name} {' '.join(step.split()[1:])}".strip(), pause)
        if not said.startswith("done"):
            break
    else:
        if steps[-1] == "cancel":
            return "not sold: it is cancelled"
        return f"sold: receipt {said[5:]}, total 7.00"
    for _ in range(3):
        said = place.tell(f"recover {name}")[5:]
        if not said.startswith("ask a person"):
            break
        time.sleep(0.3)
    return said


def wrong_in(place, said):
    """What the journal has against it."""
    receipts = [(number, total) for kind, number, total in place.new_documents() if kind == "receipt"]
    is_open = place.printer.state()["receipt"] is not None
    if said.startswith("sold: receipt "):
        number = said.split()[2].rstrip(",")
        return receipts != [(int(number) if number.isdigit() else number, "7.00")] or is_open
    if said.startswith("not sold"):
        return bool(receipts) or is_open
    return not said.startswith("ask a person")


SALE = ["begin", "sell 4.00", "sell 3.00", "pay 5.00", "pay 2.00", "end"]
CANCELLING = ["begin", "sell 4.00", "sell 3.00", "cancel"]


def sells(place, faults, pause, steps):
    place.stand_anew()
    for fault in faults:
        place.printer.arm(**fault)
    said = verdict_of(place, "b", steps, pause)
    wrong = wrong_in(place, said)
    journal = place.new_documents()
    place.printer.ask("DELETE", "faults")
    if not wrong and not said.startswith("ask a person"):
        after = verdict_of(place, "c", SALE, 0)  # the trouble is over
        wrong = not after.startswith("sold: receipt ")
        said += " | then " + after
    return said, wrong, journal


def leaves_another_alone(place, faults, pause, _):
    """One that somebody else has opened, and of the same total."""
    place.stand_anew()
    told(place, ["begin x", "sell x 7.00", "forget"], 0)
    for fault in faults:
        place.printer.arm(**fault)
    said = verdict_of(place, "b", SALE, pause)
    place.tell("cancel b")
    said += " | " + place.tell("recover b")[5:]
    receipt = place.printer.state()["receipt"]
    return said, place.new_documents() != [] or receipt is None or "sold: receipt" in said, place.new_documents()


def cases():
    kinds = AT_ONCE + ([] if IS_QUICK else TO_WAIT_FOR)
    questions = {"nothing": 9, "a refused item": 17, "an end that is lost": 19, "an end whose answer is lost": 19}
    for before, troubles in BEFORE.items():
        for command, call in (CALLS if before == "nothing" else [("destroyParagon", 1), ("paragonEnd", 2)]) + \
                [("getVariable", number) for number in range(1, questions[before] + 1)]:
            for faults in [[kind] for kind in kinds] + (FLIPS if command == "getVariable" else []):
                yield (f"{before}, {command} {call}", sells, SALE, troubles, [{**fault, "command": command, "fromCall": call} for fault in faults])
    for command, call in [("destroyParagon", 1)] + [("getVariable", number) for number in range(4, 7)]:
        for faults in [[kind] for kind in kinds] + (FLIPS if command == "getVariable" else []):
            yield (f"cancelling, {command} {call}", sells, CANCELLING, [], [{**fault, "command": command, "fromCall": call} for fault in faults])
    for call in range(1, 8):
        for faults in [[kind] for kind in kinds] + FLIPS:
            yield (f"another open, getVariable {call}", leaves_another_alone, SALE, [],
                   [{**fault, "command": "getVariable", "fromCall": call} for fault in faults])
    for file in sorted(SCENARIOS.glob("*.json")):
        if not IS_QUICK and file.stem != "printer-off-in-the-morning":  # nothing can be sold there
            yield f"scenario {file.stem}", sells, SALE, [], json.loads(file.read_text(encoding="utf-8"))["faults"]


def played(places, case):
    name, play, steps, troubles, faults = case
    place = places.get()
    try:
        pause = 0.04 if any(fault["kind"] == "acknowledgeTwice" for fault in faults) else 0
        return (name, faults, *play(place, troubles + faults, pause, steps))
    except Refused:  # a fault that could never act upon this command is not armed
        return name, faults, "not armed", False, []
    finally:
        places.put(place)


def main():
    places = queue.Queue()
    for _ in range(TILLS):
        places.put(Place())
    verdicts, wrongs = collections.Counter(), []
    with concurrent.futures.ThreadPoolExecutor(TILLS) as pool:
        for name, faults, said, wrong, journal in pool.map(lambda case: played(places, case), cases()):
            verdicts[said.split(":")[0]] += 1
            if wrong:
                wrongs.append(name)
                print(f"wrong: {name}, {faults}: {said}; the journal has {journal}", flush=True)
    while not places.empty():
        places.get().close()
    print(", ".join(f"{count} {verdict}" for verdict, count in sorted(verdicts.items())), "of which wrong:", len(wrongs))
    return 1 if wrongs else 0


if __name__ == "__main__":
    sys.exit(main())
