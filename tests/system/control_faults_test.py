#!/usr/bin/env python3
"""Every kind of fault on real links, TCP and a pseudo-terminal: what the till hears, that the fault ends by itself, and
that the printer is afterwards, and after a reset, byte for byte as one that has never been armed.

    control_faults_test.py SOURCE_FOLDER PRINTER_PROGRAM
"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import tty
import unittest

from tills_on_both_links import (ACCEPTED, ASKED, BEGIN_DAY, FiscalPrinter, HARMLESS, LONGEST, Printers, REPLY, SerialTill,
    framed, line_of, program, until)
from telvofm_printer import Refused


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
        if fault.kind == "connectionRefused" and kind is SerialTill:
            until(lambda: self.lines.read_bytes() == b"\x03")  # it is switched off until then
        till.say(fault.asks)
        heard = fault.heard[kind.name]
        self.assertEqual(till.hear(len(heard)), heard)
        if fault.kind in ("ctsOff", "dsrOff") and kind is not SerialTill:
            self.assertEqual((self.faults()[0]["requestsMet"], self.faults()[0]["requestsHit"]), (1, 0))
            self.disarm()  # it would wait for ever
        else:
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
            till = until(lambda: self.connected(kind))
        elif fault.kind == "powerLoss":
            until(lambda: self.lines.read_bytes() == b"\x03")
        # Nothing is left over: the next answer is the next one. A day with what the fault has done is no new one.
        till.say(ASKED)
        self.assertEqual(till.hear(len(REPLY)), REPLY)
        till.say(b"\x03")
        self.make_new()
        self.assertEqual(self.day(till), fresh)


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
