#!/usr/bin/env python3
"""What the demonstration that stays says of a sale that meets a trouble is what the printer has in its journal, and
behind the trouble the next Enter sells again.

    demo_troubles_test.py SOURCE_FOLDER BUILD_FOLDER
"""
import json
import pathlib
import subprocess
import sys
import urllib.request

DAYS_LAST = 3_600_000  # milliseconds that no test waits
SOLD, NOT_SOLD, UNKNOWN = "demo: sold 17.49", "demo: not sold", "demo: nobody knows yet whether it is sold"
REFUSED = "the printer refused it"
BROKEN = "the link failed: it may be done or not"
CANCELLED = "till: the receipt is cancelled and not sold"
SOLD_ALL_THE_SAME = "till: but the printer has ended the receipt: it is sold"
NOTHING_OPEN = "till: no receipt is open, and nothing is sold"
AWAY = "till: the printer does not tell; nothing is sold, and the next sale cancels what is open"
AWAY_AT_THE_END = "till: the printer does not tell; its paper shows whether the receipt is sold"
SOLD_AGAIN = [f"till: paragonBegin failed with code 11 ({REFUSED})",
              "till: a receipt is open already; it is cancelled, and the sale begins again", SOLD]


def failed(call, code, why):
    return f"till: {call} failed with code {code} ({why})"


# The fault, and what is said of the sale that meets it.
OVER_TCP = [
    ({"kind": "powerLoss", "command": "paragonEnd", "milliseconds": 1500},
     [failed("paragonEnd", -10201, BROKEN), SOLD_ALL_THE_SAME, SOLD]),
    ({"kind": "executedNotAcknowledged", "command": "paragonEnd", "code": 49},
     [failed("paragonEnd", 49, REFUSED), SOLD_ALL_THE_SAME, SOLD]),
    ({"kind": "refuse", "command": "paragonEnd", "code": 50}, [failed("paragonEnd", 50, REFUSED), CANCELLED, NOT_SOLD]),
    ({"kind": "acknowledgedNotExecuted", "command": "paragonEnd"},
     ["till: paragonEnd returned 0, but the printer tells of no new receipt", CANCELLED, NOT_SOLD]),
    ({"kind": "acknowledgedNotExecuted", "command": "paragonBegin"},
     [failed("itemSale", 12, REFUSED), NOTHING_OPEN, NOT_SOLD]),
    ({"kind": "refuse", "command": "getVariable", "code": 49}, [AWAY, NOT_SOLD]),
    ({"kind": "refuse", "command": "itemSale", "code": 49}, [failed("itemSale", 49, REFUSED), CANCELLED, NOT_SOLD]),
    ({"kind": "paperOut", "command": "paragonBegin"},
     [failed("paragonBegin", 49, REFUSED), NOTHING_OPEN, NOT_SOLD]),
    ({"kind": "connectionClosed", "command": "payment"},
     [failed("payment", -10201, BROKEN), "till: but the printer says that 7.49 is due, as it should be: the sale goes on", SOLD]),
]


class Demo:
    def __init__(self, source, build, *options):
        self.process = subprocess.Popen([source / "scripts/demo", "--build", build, "--stay", *options], text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.printer = None
        self.page = next(line for line in self.process.stdout if "http://" in line).split()[2]
        self.heard_until("demo: Enter sells")
        self.printer = self.ask("GET", "")["printers"][0]["name"]

    def heard_until(self, *ends):
        lines = []
        for line in self.process.stdout:
            lines.append(line.rstrip("\n"))
            if lines[-1].startswith(ends):
                return lines
        sys.exit("the demonstration ended and said\n" + "\n".join(lines))

    def sell(self):
        self.process.stdin.write("\n")
        self.process.stdin.flush()
        return self.heard_until(SOLD, NOT_SOLD, UNKNOWN)

    def ask(self, method, what, body=None):
        place = f"printers/{self.printer}/{what}" if self.printer else "printers"
        request = urllib.request.Request(self.page + place, method=method,
                                         data=None if body is None else json.dumps(body).encode())
        with urllib.request.urlopen(request) as answer:
            return json.load(answer)

    def receipts(self):
        return self.ask("GET", "totals")["day"]["receipts"]

    def end(self):
        self.process.stdin.close()
        self.process.stdout.read()
        self.process.wait()


def expect(demo, expected, trouble):
    """That this is said of one sale, and that it is so."""
    before = demo.receipts()
    said = demo.sell()
    if said != expected:
        sys.exit(f"{trouble}: the demonstration says\n" + "\n".join(said) + "\ninstead of\n" + "\n".join(expected))
    if demo.receipts() != before + (expected[-1] == SOLD):
        sys.exit(f"{trouble}: it says {expected[-1]}, and there were {before} receipts and now {demo.receipts()}")


def over_tcp(demo):
    expect(demo, [SOLD], "nothing")
    for fault, expected in OVER_TCP:
        demo.ask("POST", "faults", fault)
        expect(demo, expected, fault)
        expect(demo, [SOLD], f"behind {fault}")
    # The power does not come back while the till waits for it.
    demo.ask("POST", "faults", {"kind": "powerLoss", "at": "request", "command": "payment", "milliseconds": DAYS_LAST})
    expect(demo, [failed("payment", -10201, BROKEN), AWAY, NOT_SOLD], "no power")
    demo.ask("DELETE", "faults")
    expect(demo, SOLD_AGAIN, "power again")
    before = demo.receipts()
    demo.ask("POST", "faults", {"kind": "powerLoss", "command": "paragonEnd", "milliseconds": DAYS_LAST})
    said = demo.sell()
    if said != [failed("paragonEnd", -10201, BROKEN), AWAY_AT_THE_END, UNKNOWN] or demo.receipts() != before + 1:
        sys.exit(f"no power at the end: it says {said}, and there are {demo.receipts()} receipts, before {before}")
    demo.ask("DELETE", "faults")
    expect(demo, [SOLD], "power again")


def on_a_serial_line(demo):
    expect(demo, [SOLD], "nothing")
    demo.ask("POST", "faults", {"kind": "connectionClosed", "command": "itemSale"})
    expect(demo, [failed("itemSale", -10201, BROKEN), AWAY, NOT_SOLD], "a line that hangs up")
    expect(demo, SOLD_AGAIN, "another line")


def main():
    source, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    for options, play in (([], over_tcp), (["--serial"], on_a_serial_line)):
        demo = Demo(source, build, *options)
        try:
            play(demo)
        finally:
            demo.end()
    print("what the demonstration said of each sale was so, and it sold again behind every trouble")


main()
