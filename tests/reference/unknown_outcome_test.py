#!/usr/bin/env python3
"""What docs/integration.md says about a call whose outcome is unknown: on the virtual printer the variable that it names
tells whether the call was carried out. Each call of the table is tried twice: the connection ends before the printer
carries it out, and after that; both times the library can only say -10201. And no command is left out of the chapter.

    unknown_outcome_test.py SOURCE_FOLDER BUILD_FOLDER
"""
import ctypes
import pathlib
import re
import sys
import tempfile

DEVICE = 1
BROKEN_CONNECTION = -10201


def money(amount):
    return ctypes.c_double(amount)


def letter(character):
    return ctypes.c_char(character)


BREAD = (DEVICE, 0, b"Chlieb", money(2), letter(b"A"), money(1), money(2), b"ks")
DAY = [("sellingDayBegin", DEVICE, 0)]
RECEIPT = [*DAY, ("paragonBegin", DEVICE, 0, 1, 0, 0, 1, 0)]
SOLD = [*RECEIPT, ("itemSale", *BREAD)]
PAYMENT = ("payment", DEVICE, 0, 1, money(2), money(2), money(0), b"Hotovost")
PAID = [*SOLD, PAYMENT]
ENDED = [*PAID, ("paragonEnd", DEVICE, 0, 0)]

# What was called before, the call, and what the printer says when it was carried out and when it was not.
CASES = [
    ([], ("sellingDayBegin", DEVICE, 0), "DAY", "open", "closed"),
    (DAY, ("paragonBegin", DEVICE, 0, 1, 0, 0, 1, 0), "STATE", "open", "closed"),
    (RECEIPT, ("itemSale", *BREAD), "TOTAL", "2.00", "0.00"),
    (SOLD, ("itemVoid", *BREAD, b""), "TOTAL", "0.00", "2.00"),
    (SOLD, ("itemReturn", *BREAD, b"7"), "TOTAL", "0.00", "2.00"),
    (SOLD, ("itemNegative", *BREAD), "TOTAL", "0.00", "2.00"),
    (SOLD, ("itemDiscount", DEVICE, 0, b"", 0, money(0.5), letter(b"A")), "TOTAL", "1.50", "2.00"),
    (SOLD, ("subTotalDiscount", DEVICE, 0, b"", 0, money(0.5), letter(b" ")), "TOTAL", "1.50", "2.00"),
    (SOLD, ("redeemVoucher", DEVICE, b"Poukaz", money(1), letter(b"A"), money(0.5), b"7"), "TOTAL", "1.50", "2.00"),
    (SOLD, ("deductDownPayment", DEVICE, b"Zaloha", money(1), letter(b"A"), money(0.5)), "TOTAL", "1.50", "2.00"),
    (SOLD, PAYMENT, "DUE", "0.00", "2.00"),
    (PAID, ("paragonEnd", DEVICE, 0, 0), "STATE", "closed", "paying"),
    (PAID, ("paragonEnd", DEVICE, 0, 0), "LAST_RECEIPT", "1", "0"),
    (SOLD, ("destroyParagon", DEVICE, 0, b""), "STATE", "closed", "open"),
    (DAY, ("depositeInDrawer", DEVICE, 0, b"", 0, money(5), 1), "DRAWER", "5.00", "0.00"),
    (ENDED, ("printReport", DEVICE, letter(b"Z"), 0), "CLOSURES", "1", "0"),
]


class Till:
    def __init__(self, library, printer):
        self.library, self.printer = library, printer

    def call(self, name, *arguments):
        return getattr(self.library, name)(*arguments)

    def open(self):
        if self.call("openFM", self.printer.address.encode()) != 0:
            sys.exit("the printer cannot be opened")

    def variable(self, name):
        text = ctypes.create_string_buffer(64)
        if self.call("getVariable", DEVICE, name.encode(), text, len(text)) != 0:
            sys.exit(f"the printer cannot be asked for {name}")
        return text.value.decode()

    def journal(self, file):
        if self.call("getJournal_str_tofile", DEVICE, str(file).encode()) != 0:
            sys.exit("the journal cannot be fetched")
        return file.read_bytes()

    def hides_replies_that_are_given_up(self, file):
        """Whether a variable and a journal are empty, and both calls done, when the printer gives up a block that came damaged
        three times."""
        self.printer.reset()
        self.open()
        for step in ENDED:
            self.call(*step)
        self.printer.arm("wrongChecksum", command="getVariable", blocks=3)
        self.printer.arm("wrongChecksum", command="getJournal", blocks=3)
        given_up = self.variable("STATE"), self.journal(file)
        whole = self.variable("STATE"), self.journal(file)
        self.call("closeFM")
        return not any(given_up) and all(whole)

    def outcome(self, before, call, variable, breaks):
        """What the variable says after the call has met a connection that breaks at the request or at the answer."""
        self.printer.reset()
        self.open()
        for step in before:
            if self.call(*step) != 0:
                sys.exit(f"{step[0]} failed before {call[0]} was tried")
        self.printer.arm("connectionClosed", command=call[0], at=breaks)
        code = self.call(*call)
        self.call("closeFM")
        if code != BROKEN_CONNECTION:
            sys.exit(f"{call[0]} returns {code} when its connection breaks")
        self.open()
        said = self.variable(variable)
        self.call("closeFM")
        return said


def rows(source):
    """The guide's table: the calls of each row, with its variables and its two outcomes as they stand there."""
    guide = (source / "docs/integration.md").read_text(encoding="utf-8")
    table = guide.split("<!-- unknown outcomes: begin -->")[1].split("<!-- unknown outcomes: end -->")[0]
    for line in table.strip().splitlines()[2:]:
        calls, asked, done, not_done, _ = (cell.strip() for cell in line.strip("|").split("|"))
        for call in re.findall(r"`(\w+)", calls):
            yield call, re.findall(r"`(\w+)`", asked), done, not_done


def contradictions(source, tried):
    """Where the table says something else than what was tried."""
    wrong, listed = [], {}
    for call, asked, done, not_done in rows(source):
        listed.setdefault(call, set()).update(asked)
        for _, _, variable, if_done, if_not in (case for case in tried if case[1][0] == call and case[2] in asked):
            for said, real in ((done, if_done), (not_done, if_not)):
                values = dict(re.findall(r"`(\w+)` is `(\w+)`", said))
                if values.get(variable, real) != real:
                    wrong.append(f"the guide says of {call}: {said}; the printer's {variable} is {real}")
    cases = {}
    for _, call, variable, _, _ in tried:
        cases.setdefault(call[0], set()).add(variable)
    wrong += [f"the guide asks {sorted(listed.get(call, []))} after {call}, the test {sorted(cases.get(call, []))}"
              for call in sorted({*listed, *cases}) if listed.get(call) != cases.get(call)]
    return wrong


def chapter(source):
    guide = (source / "docs/integration.md").read_text(encoding="utf-8")
    return guide.split("## After a timeout in the middle of a receipt", 1)[1].split("\n## ", 1)[0]


def commands(source):
    """Each command of the virtual printer, and whether it takes it while a receipt is open."""
    page = (source / "docs/virtual-printer.md").read_text(encoding="utf-8")
    for name, legal in re.findall(r"^\| [0-9A-F]{2} \| (\w+) \| .* \| ([\w, ]+) \|$", page, re.MULTILINE):
        yield name, bool({"open", "paying"} & set(legal.split(", ")))


def left_out(text, all_commands):
    """A command is named as it is, or by its beginning (`get...`): but not one that is sent into an open receipt, unless it
    only reads."""
    named = set(re.findall(r"`(\w+)", text))
    beginnings = tuple(re.findall(r"`(\w+)\.\.\.`", text))
    return [name for name, is_in_receipt in all_commands
            if name not in named and not name.startswith("get" if is_in_receipt else beginnings)]


def main():
    source, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    sys.path.insert(0, str(source / "testing"))
    from telvofm_printer import FiscalPrinter

    library = ctypes.CDLL(str(build / "libtelvofm.so"))
    wrong = contradictions(source, CASES)
    wrong += [f"the guide does not say what to do after {name}" for name in left_out(chapter(source), commands(source))]
    if left_out("`one` `two...`", [("one", True), ("twofold", False), ("twofold", True), ("getOne", True)]) != ["twofold"]:
        wrong.append("a command that the guide leaves out is not noticed")
    if len(list(commands(source))) < 100:
        wrong.append("the commands of the virtual printer are not found")
    with tempfile.TemporaryDirectory() as folder, FiscalPrinter(program=str(build / "telvofm-printer")) as printer:
        library.setLogginOn(str(pathlib.Path(folder, "calls.txt")).encode())
        till = Till(library, printer)
        if not till.hides_replies_that_are_given_up(pathlib.Path(folder, "journal.txt")):
            wrong.append("a reply that the printer gives up is no longer an empty one")
        for before, call, variable, if_done, if_not in CASES:
            for breaks, expected in (("answer", if_done), ("request", if_not)):
                said = till.outcome(before, call, variable, breaks)
                if said != expected:
                    wrong.append(f"{call[0]}: {variable} is {said} instead of {expected}, the connection broke at the {breaks}")
    if wrong:
        sys.exit("\n".join(wrong))
    print(f"{len(CASES)} outcomes told by the printer's variables")


main()
