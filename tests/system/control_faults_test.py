#!/usr/bin/env python3
"""Every kind of fault on real links, TCP and a pseudo-terminal: what the till hears, that the fault ends by itself, and
that the printer is afterwards, and after a reset, byte for byte as one that has never been armed.

    control_faults_test.py SOURCE_FOLDER PRINTER_PROGRAM
"""
import json
import os
import pathlib
import select
import socket
import subprocess
import sys
import tempfile
import time
import tty
import unittest

source = pathlib.Path(sys.argv[1])
program = sys.argv[2]
sys.path.insert(0, str(source / "testing"))
from telvofm_printer import FiscalPrinter, Refused  # noqa: E402

LONGEST = 10  # seconds that a test waits before it fails


def framed(command, *fields):
    unit = bytes([0x1C, 1, command]) + b"".join(field.encode() + b"\0" for field in fields) + b"\x04"
    return with_checksum(unit)


def with_checksum(unit):
    checksum = 0
    for byte in unit:
        checksum ^= byte
    return unit + bytes([checksum])


ACCEPTED = b"\x06"
HARMLESS = framed(0xE0)  # printJobCancel
ASKED = framed(0x92, "LIFE")
REPLY = with_checksum(b":\x07fiscal\r\n\x03")
BEGIN_DAY = framed(0x29, "0")
DAY = [BEGIN_DAY, framed(0x20, "0", "1", "0", "0", "1", "0"), framed(0x24, "0", "Chlieb", "2.00", "A", "1.000", "2.00", "ks "),
       framed(0x30, "0", "1", "2.00", "2.00", "0", "Hotovost  "), framed(0x22, "0", "0"), b"\x11", framed(0x50, "Z", "0")]


def until(condition):
    """Looks again and again; each look is cheap."""
    end = time.monotonic() + LONGEST
    while not (found := condition()):
        if time.monotonic() > end:
            raise AssertionError("it has not come to that")
    return found


class TcpTill:
    name = "printer"

    def __init__(self, printer):
        host, port = printer.address.rsplit(":", 1)
        self.socket = socket.create_connection((host, int(port)), timeout=LONGEST)

    def say(self, text):
        self.socket.sendall(text)

    def hear(self, size):
        text = b""
        while len(text) < size:
            more = self.socket.recv(size - len(text))
            if not more:
                break
            text += more
        return text

    def end(self):
        """How the printer ends the connection."""
        try:
            return "closed" if self.socket.recv(1) == b"" else "goes on"
        except ConnectionResetError:
            return "reset"

    def close(self):
        self.socket.close()


class SerialTill:
    name = "pty"

    def __init__(self, printer):
        self.path = line_of(printer)
        self.file = os.open(self.path, os.O_RDWR | os.O_NOCTTY)

    def say(self, text):
        os.write(self.file, text)

    def hear(self, size):
        text = b""
        while len(text) < size:
            if not select.select([self.file], [], [], LONGEST)[0]:
                break
            text += os.read(self.file, size - len(text))
        return text

    def end(self):
        try:
            return "closed" if os.read(self.file, 1) == b"" else "goes on"
        except OSError:
            return "closed"

    def close(self):
        os.close(self.file)


def line_of(printer):
    return [line.split()[-1] for line in printer.paper if "serial line" in line][-1]


class Fault:
    def __init__(self, kind, bytes_tcp, bytes_serial=None, asks=HARMLESS, tcp="goes on", serial="goes on", **parameters):
        self.kind, self.parameters, self.asks = kind, parameters, asks
        self.heard = {"printer": bytes_tcp, "pty": bytes_tcp if bytes_serial is None else bytes_serial}
        self.link = {"printer": tcp, "pty": serial}


def flipped(place, mask):
    return REPLY[:place] + bytes([REPLY[place] ^ mask]) + REPLY[place + 1:]


FAULTS = [
    Fault("refuse", b"\x15\x31", code=49),
    Fault("requestLost", b""),
    Fault("silence", b""),
    Fault("acknowledgeLost", b""),
    Fault("acknowledgeLate", ACCEPTED, milliseconds=30),
    Fault("acknowledgeTwice", ACCEPTED * 2, milliseconds=20),
    Fault("executedNotAcknowledged", b"\x15\x31", code=49),
    Fault("acknowledgedNotExecuted", ACCEPTED),
    Fault("wrongChecksum", REPLY[:-1] + bytes([REPLY[-1] ^ 0xFF]), asks=ASKED),
    Fault("flippedBit", flipped(3, 0x20), asks=ASKED, byte=3, bit=5),
    Fault("cut", REPLY[:4], asks=ASKED, byte=4),
    Fault("extraBytes", ACCEPTED + b"\x00\xff", bytes="00 ff"),
    Fault("noise", b"\xaa" + REPLY, asks=ASKED, bytes="aa"),
    Fault("staleAnswer", ACCEPTED, asks=ASKED),
    Fault("blockRepeated", REPLY * 2, asks=ASKED),
    Fault("wrongTerminator", REPLY[:-2] + bytes([0x55, REPLY[-1] ^ 0x03 ^ 0x55]), asks=ASKED),
    Fault("wrongLength", b":\x08" + REPLY[2:], asks=ASKED),
    Fault("busy", b"\x13" + ACCEPTED, ACCEPTED, milliseconds=30),
    Fault("slow", REPLY, asks=ASKED, milliseconds=3),
    Fault("split", REPLY, asks=ASKED, byte=4, milliseconds=20),
    Fault("connectionRefused", ACCEPTED, milliseconds=50),
    Fault("connectionClosed", b"", tcp="closed", serial="closed"),
    Fault("connectionReset", b"", tcp="reset", serial="closed"),
    Fault("halfOpen", b"", tcp="abandoned", serial="abandoned"),
    Fault("powerLoss", b"", tcp="reset", milliseconds=50),
    Fault("diskFull", b"\x15\x33", asks=BEGIN_DAY),
    Fault("paperOut", b"\x15\x31", asks=framed(0x32, "0", "text")),
    Fault("ctsOff", ACCEPTED, milliseconds=30),
    Fault("dsrOff", ACCEPTED, milliseconds=30),
]


class Printers(unittest.TestCase):
    """One process with a printer on each kind of link."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.lines = pathlib.Path(cls.folder.name) / "lines"
        cls.lines.write_bytes(b"\x03")  # CTS and DSR are on
        os.environ["MODEM_LINES"] = str(cls.lines)
        cls.printer = FiscalPrinter("--pty", "--clock", "2026-01-01 12:00", program=program)
        cls.addClassCleanup(cls.folder.cleanup)
        cls.addClassCleanup(cls.printer.close)

    def on_both_links(self):
        for kind in (TcpTill, SerialTill):
            self.printer.name = kind.name
            self.make_new()
            yield kind

    def make_new(self):
        self.printer.reset()
        self.printer.ask("PATCH", "clock", {"mode": "stands", "now": "2026-01-01 12:00"})

    def faults(self):
        return self.printer.ask("GET", "faults")["faults"]

    def disarm(self):
        self.printer.ask("DELETE", "faults")

    def disarm_the_first(self):
        self.printer.ask("DELETE", f"faults/{self.faults()[0]['number']}")

    def setUp(self):
        self.tills = {}
        self.addCleanup(lambda: [till.close() for till in self.tills.values()])

    def till(self, kind):
        """The one before it goes: a printer serves one at a time."""
        if kind in self.tills:
            self.tills.pop(kind).close()
        self.tills[kind] = kind(self.printer)
        return self.tills[kind]

    def day(self, till):
        """All bytes and all paper of a day."""
        heard = b""
        for request in DAY:
            till.say(request)
            heard += till.hear(1)
        till.say(ASKED)
        heard += till.hear(len(REPLY))
        till.say(b"\x03")
        return heard, [document["text"] for document in self.printer.documents()]


class EveryFault(Printers):
    def test_has_every_kind(self):
        with self.assertRaises(Refused) as refused:
            self.printer.arm("rain")
        kinds = str(refused.exception).removeprefix('"kind" is one of ').rstrip(".").split(", ")
        self.assertEqual(sorted(kinds), sorted({fault.kind for fault in FAULTS}))

    def test_ends_by_itself_and_leaves_a_printer_as_new(self):
        for kind in self.on_both_links():
            fresh = self.day(self.till(kind))
            self.assertEqual(fresh[0], b"\x06" * 5 + b"\x11\x06" + REPLY)
            for fault in FAULTS:
                with self.subTest(fault.kind, link=kind.name):
                    self.make_new()
                    self.play(fault, kind, fresh)

    def play(self, fault, kind, fresh):
        till = self.till(kind)
        till.say(HARMLESS)
        self.assertEqual(till.hear(1), ACCEPTED)
        self.printer.arm(fault.kind, **fault.parameters)
        path = line_of(self.printer)
        till.say(fault.asks)
        heard = fault.heard[kind.name]
        self.assertEqual(till.hear(len(heard)), heard)
        until(lambda: self.faults()[0]["ended"])
        if fault.kind in ("ctsOff", "dsrOff") and kind is SerialTill:
            until(lambda: self.lines.read_bytes() == b"\x03")
        outcome = fault.link[kind.name]
        if outcome in ("closed", "reset"):
            self.assertEqual(till.end(), outcome)
            if kind is SerialTill:
                until(lambda: line_of(self.printer) != path)
        elif outcome == "abandoned" and kind is SerialTill:
            self.disarm()
        if outcome != "goes on" or fault.kind == "connectionRefused":
            till = until(lambda: connected(self, kind))
        elif fault.kind == "powerLoss":
            until(lambda: self.lines.read_bytes() == b"\x03")
        # Nothing is left over: the next answer is the next one. A day with what the fault has done is no new one.
        till.say(ASKED)
        self.assertEqual(till.hear(len(REPLY)), REPLY)
        till.say(b"\x03")
        self.make_new()
        self.assertEqual(self.day(till), fresh)


def connected(test, kind):
    try:
        return test.till(kind)
    except ConnectionRefusedError:
        return None


class DisarmedFaults(Printers):
    def test_end_what_they_still_do(self):
        for kind in self.on_both_links():
            with self.subTest(kind.name):
                till = self.till(kind)
                self.printer.arm("busy")
                till.say(HARMLESS)
                if kind is TcpTill:
                    self.assertEqual(till.hear(1), b"\x13")
                else:
                    until(lambda: self.lines.read_bytes() == b"\x02")
                self.disarm()
                self.assertEqual(self.lines.read_bytes(), b"\x03")
                till.say(b"\x11")
                self.assertEqual(till.hear(2), ACCEPTED + b"\x11")

    def test_of_a_reset_printer_give_no_answer_that_they_have_put_off(self):
        for kind in self.on_both_links():
            with self.subTest(kind.name):
                till = self.till(kind)
                self.printer.arm("busy")
                till.say(HARMLESS)
                self.printer.wait(executed=[{"name": "printJobCancel"}])
                if kind is TcpTill:
                    self.assertEqual(till.hear(1), b"\x13")
                self.printer.reset()
                self.assertEqual(self.lines.read_bytes(), b"\x03")
                till.say(b"\x11")
                self.assertEqual(till.hear(1), b"\x11")

    def test_leave_what_others_still_do(self):
        for kind in self.on_both_links():
            with self.subTest(kind.name):
                till = self.till(kind)
                self.printer.arm("noise", bytes="aa")
                till.say(HARMLESS)
                self.assertEqual(till.hear(2), b"\xaa" + ACCEPTED)
                self.printer.arm("acknowledgeLate", milliseconds=500)
                till.say(HARMLESS)
                until(lambda: self.faults()[1]["ended"])
                self.disarm_the_first()
                self.assertEqual(till.hear(1), ACCEPTED)

    def test_leave_the_lines_that_others_have_put_off(self):
        self.printer.name = "pty"
        till = self.till(SerialTill)
        self.printer.arm("noise", bytes="aa")
        till.say(HARMLESS)
        self.assertEqual(till.hear(2), b"\xaa" + ACCEPTED)
        self.printer.arm("ctsOff", milliseconds=60_000)
        till.say(HARMLESS)
        self.assertEqual(till.hear(1), ACCEPTED)
        self.disarm_the_first()
        self.assertEqual(self.lines.read_bytes(), b"\x02")
        self.disarm()
        self.assertEqual(self.lines.read_bytes(), b"\x03")

    def test_leave_the_port_closed_that_others_have_closed(self):
        self.printer.name = "printer"
        self.make_new()
        self.printer.arm("connectionRefused", milliseconds=50)
        till = until(lambda: connected(self, TcpTill))
        self.printer.arm("powerLoss", milliseconds=60_000)
        till.say(HARMLESS)
        self.assertEqual(till.end(), "reset")
        self.disarm_the_first()
        self.assertRaises(ConnectionRefusedError, TcpTill, self.printer)
        self.disarm()
        till = self.till(TcpTill)
        till.say(HARMLESS)
        self.assertEqual(till.hear(1), ACCEPTED)

    def test_leave_tills_alone_that_others_have_left_alone(self):
        self.printer.name = "printer"
        self.make_new()
        left = []
        for _ in range(2):
            self.printer.arm("halfOpen")
            left.append(self.connect_and_say_harmless())
            self.addCleanup(left[-1].close)
        self.disarm_the_first()
        self.assertEqual(left[0].end(), "closed")
        left[1].socket.setblocking(False)
        self.assertRaises(BlockingIOError, left[1].end)
        self.disarm()
        left[1].socket.settimeout(LONGEST)
        self.assertEqual(left[1].end(), "closed")

    def connect_and_say_harmless(self):
        """The till before it goes first: while it is served another one is turned away."""
        def tried():
            till = TcpTill(self.printer)
            till.say(HARMLESS)
            if self.faults()[-1]["ended"]:
                return till
            till.close()
            return None
        return until(tried)

    def test_put_the_lines_back(self):
        self.printer.name = "pty"
        for fault, lines in (("ctsOff", b"\x02"), ("dsrOff", b"\x01")):
            for end in (self.disarm, self.printer.reset):
                till = self.till(SerialTill)
                self.printer.arm(fault, milliseconds=60_000)
                till.say(HARMLESS)
                self.assertEqual(till.hear(1), ACCEPTED)
                self.assertEqual(self.lines.read_bytes(), lines)
                end()
                self.assertEqual(self.lines.read_bytes(), b"\x03")

    def test_leave_no_answer_that_comes_later(self):
        for kind in self.on_both_links():
            with self.subTest(kind.name):
                till = self.till(kind)
                self.printer.arm("acknowledgeTwice", milliseconds=100)
                till.say(HARMLESS)
                self.assertEqual(till.hear(1), ACCEPTED)
                self.make_new()
                # The time is over when the other printer has answered so late.
                other = self.till(SerialTill if kind is TcpTill else TcpTill)
                self.printer.name = other.name
                self.printer.arm("acknowledgeLate", milliseconds=150)
                other.say(HARMLESS)
                self.assertEqual(other.hear(1), ACCEPTED)
                till.say(framed(0x22, "0", "0"))
                self.assertEqual(till.hear(2)[:1], b"\x15")
                till.say(ASKED)
                self.assertEqual(till.hear(len(REPLY)), REPLY)

    def test_open_the_port_at_once(self):
        self.printer.name = "printer"
        for end in (self.disarm, self.printer.reset):
            self.printer.arm("connectionRefused", milliseconds=60_000)
            self.assertRaises(ConnectionRefusedError, TcpTill, self.printer)
            end()
            till = self.till(TcpTill)
            self.printer.arm("powerLoss", milliseconds=60_000)
            till.say(HARMLESS)
            self.assertEqual(till.end(), "reset")
            end()
            till = self.till(TcpTill)
            till.say(HARMLESS)
            self.assertEqual(till.hear(1), ACCEPTED)

    def test_let_go_of_tills_that_nobody_listened_to(self):
        self.printer.name = "printer"
        self.make_new()
        till = self.till(TcpTill)
        self.printer.arm("halfOpen")
        till.say(HARMLESS)
        self.printer.wait(executed=[{"name": "printJobCancel"}])
        self.disarm()
        self.assertEqual(till.end(), "closed")

    def test_of_a_reset_printer_are_no_reason_for_a_repeat(self):
        for kind in self.on_both_links():
            till = self.till(kind)
            self.printer.arm("acknowledgeLost")
            till.say(HARMLESS)
            self.printer.wait(executed=[{"name": "printJobCancel"}])
            self.make_new()
            till.say(HARMLESS)
            self.assertEqual(till.hear(1), ACCEPTED)
            self.printer.expect(repeated=0, received=[{"name": "printJobCancel"}])


class PowerLoss(Printers):
    def test_ends_what_the_printer_had_still_to_say(self):
        self.printer.name = "pty"
        self.make_new()
        till = self.till(SerialTill)
        self.printer.arm("acknowledgeTwice", milliseconds=1000)
        till.say(HARMLESS)
        self.assertEqual(till.hear(1), ACCEPTED)
        self.printer.arm("powerLoss", milliseconds=1200)
        till.say(HARMLESS)
        until(lambda: self.lines.read_bytes() == b"\x00")
        until(lambda: self.lines.read_bytes() == b"\x03")
        till.say(ASKED)
        self.assertEqual(till.hear(len(REPLY)), REPLY)

    def test_sends_away_who_waits_for_the_printer(self):
        with FiscalPrinter("--second", "wait", program=program) as printer:
            first = TcpTill(printer)
            first.say(HARMLESS)
            self.assertEqual(first.hear(1), ACCEPTED)
            second = TcpTill(printer)
            second.say(HARMLESS)
            printer.arm("powerLoss", milliseconds=60_000)
            first.say(HARMLESS)
            self.assertEqual([first.end(), second.end()], ["reset", "reset"])
            first.close()
            second.close()


class RestoredPrinter(Printers):
    def test_puts_its_lines_back_when_their_time_has_come(self):
        self.printer.name = "pty"
        self.make_new()
        till = self.till(SerialTill)
        self.printer.ask("POST", "snapshots", {"name": "morning", "in": "memory"})
        self.printer.arm("ctsOff", milliseconds=500)
        till.say(HARMLESS)
        self.assertEqual(till.hear(1), ACCEPTED)
        self.printer.ask("POST", "restore", {"name": "morning", "in": "memory"})
        until(lambda: self.lines.read_bytes() == b"\x03")


class LinesThatGo(unittest.TestCase):
    def test_a_pseudo_terminal_that_has_hung_up_comes_again_at_another_path(self):
        with tempfile.TemporaryDirectory() as folder:
            ready = pathlib.Path(folder) / "ready.json"
            with FiscalPrinter("--pty", "--ready", str(ready), program=program) as printer:
                printer.name = "pty"
                till = SerialTill(printer)
                printer.arm("connectionClosed", command="E0")
                till.say(HARMLESS)
                self.assertEqual(till.end(), "closed")
                until(lambda: line_of(printer) != till.path)
                addresses = {one["name"]: one["address"] for one in json.loads(ready.read_text())["printers"]}
                self.assertEqual(addresses, {"printer": printer.address, "pty": line_of(printer)})
                till.close()
                till = SerialTill(printer)
                till.say(HARMLESS)
                self.assertEqual(till.hear(1), ACCEPTED)
                till.close()

    def test_a_serial_port_that_has_hung_up_is_opened_again(self):
        ours, theirs = os.openpty()
        tty.setraw(ours)
        with FiscalPrinter("--serial", os.ttyname(theirs), program=program) as printer:
            printer.name = "serial"
            printer.arm("connectionClosed", command="E0")
            os.write(ours, HARMLESS)
            until(lambda: printer.ask("GET", "faults")["faults"][0]["ended"])
            os.write(ours, ASKED)
            self.assertEqual(os.read(ours, 1), b":")
        os.close(theirs)
        os.close(ours)

    def test_a_serial_port_that_goes_away_ends_the_program_in_one_sentence(self):
        ours, theirs = os.openpty()
        path = os.ttyname(theirs)
        with subprocess.Popen([program, "--serial", path], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              text=True) as process:
            self.assertEqual(process.stdout.readline(), f"serial line {path}\n")
            os.close(theirs)
            os.close(ours)
            _, said = process.communicate(timeout=LONGEST)
        self.assertEqual(said, f"telvofm-printer: the serial line {path} has gone; plug it in again and start anew\n")
        self.assertEqual(process.returncode, 1)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
