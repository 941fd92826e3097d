#!/usr/bin/env python3
"""The control interface by how the program was started: on which address, with which token and clock.

    control_started_test.py SOURCE_FOLDER PRINTER_PROGRAM
"""
import socket
import subprocess
import sys
import tempfile
import unittest

from control_wire import Wire, program
from telvofm_printer import FiscalPrinter, Refused
from till import Till


TOKEN = "0123456789abcdef"


class StartedAgain(unittest.TestCase):
    def test_shows_the_clock_that_it_was_started_with_after_each_reset(self):
        """A till has set it the last time, and the memory knows by how much."""
        with tempfile.TemporaryDirectory() as folder:
            options = ("--data", folder, "--clock", "2026-01-31 12:00")
            with FiscalPrinter(*options, program=program) as printer:
                till = Till(printer)
                self.assertEqual(till.send(0xBF, "2027-06-01 08:00"), b"\x06")
                till.socket.close()
                self.assertEqual(printer.state()["clock"]["now"][:16], "2027-06-01 08:00")
            with FiscalPrinter(*options, program=program) as printer:
                for to in ("started", "new"):
                    state = printer.ask("POST", "reset", {"to": to})
                    self.assertEqual(state["clock"]["now"][:16], "2026-01-31 12:00", to)


class Reach(unittest.TestCase):
    def start(self, *options):
        return subprocess.run([program, "--listen", "127.0.0.1:0", *options], capture_output=True, text=True, timeout=30,
                              check=False)

    def test_other_addresses_need_a_token(self):
        for address in ("0.0.0.0:0", "[::]:0"):
            ended = self.start("--control", address)
            self.assertEqual(ended.returncode, 1, address)
            self.assertIn("with --token", ended.stderr)

    def test_any_loopback_address_and_any_spelling_will_do(self):
        with FiscalPrinter(control="127.0.0.2:0", program=program) as printer:
            self.assertEqual(printer.state()["situation"], "noDay")
            wire = Wire(printer)
            wire.say("GET /printers HTTP/1.1\r\nHost: LOCALHOST\r\n\r\n")
            self.assertEqual(wire.hear()[0], 200)
            wire.close()

    def test_a_token_is_long_and_belongs_to_the_control(self):
        for options in (["--control", "127.0.0.1:0", "--token", "short"], ["--token", TOKEN],
                        ["--control", "127.0.0.1:0", "--token", "0123456789abcdef;"], ["--control", "nowhere"]):
            self.assertEqual(self.start(*options).returncode, 2, options)

    def test_a_token_may_stand_on_the_command_line(self):
        with FiscalPrinter("--token", TOKEN, program=program) as printer:
            with self.assertRaises(Refused):
                printer.state()
            printer._token = TOKEN
            self.assertEqual(printer.state()["situation"], "noDay")

    def test_nothing_is_answered_without_the_token(self):
        with FiscalPrinter(control="0.0.0.0:0", token=TOKEN, program=program) as printer:
            printer.control = "http://127.0.0.1:" + printer.control.rsplit(":", 1)[1]
            self.assertEqual(printer.state()["situation"], "noDay")
            printer._token = None
            with self.assertRaises(Refused) as refused:
                printer.state()
            self.assertEqual(refused.exception.status, 401)
            wire = Wire(printer)
            wire.say(f"GET /printers HTTP/1.1\r\nHost: till.example\r\nAuthorization: Bearer {TOKEN}\r\n\r\n")
            self.assertEqual(wire.hear()[0], 200)
            wire.say(f"GET /printers HTTP/1.1\r\nHost: till.example\r\nCookie: telvofm_token_80={TOKEN}\r\n\r\n")
            self.assertEqual(wire.hear()[0], 200)
            wire.say("GET /printers/printer/trace/events HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n")
            self.assertEqual(wire.hear()[0], 401)
            wire.close()


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
