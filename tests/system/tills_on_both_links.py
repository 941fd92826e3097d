"""Tills that talk to the virtual printer in bytes, over TCP and on a pseudo-terminal, and a printer with both links.
For the tests of faults, which are started with

    SOURCE_FOLDER PRINTER_PROGRAM
"""
import os
import pathlib
import select
import socket
import sys
import tempfile
import time
import unittest

source = pathlib.Path(sys.argv[1])
program = sys.argv[2]
sys.path.insert(0, str(source / "testing"))
from telvofm_printer import FiscalPrinter  # noqa: E402

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

    def busy_till(self, kind):
        """One that has been told that the printer is busy, and whose request is not answered yet."""
        till = self.till(kind)
        self.printer.arm("busy")
        till.say(HARMLESS)
        if kind is TcpTill:
            self.assertEqual(till.hear(1), b"\x13")
        else:
            until(lambda: self.lines.read_bytes() == b"\x02")
        return till

    def connected(self, kind):
        """A till, or none while the port is closed."""
        try:
            return self.till(kind)
        except ConnectionRefusedError:
            return None

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

    def assert_served(self, till):
        till.say(HARMLESS)
        self.assertEqual(till.hear(1), ACCEPTED)
