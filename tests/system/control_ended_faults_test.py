#!/usr/bin/env python3
"""What becomes of what a fault still does, when it is disarmed or its printer is reset, restored or without power: on
real links, TCP and a pseudo-terminal.

    control_ended_faults_test.py SOURCE_FOLDER PRINTER_PROGRAM
"""
import sys
import unittest

from tills_on_both_links import (ACCEPTED, ASKED, FiscalPrinter, HARMLESS, LONGEST, Printers, REPLY, SerialTill, TcpTill,
    framed, program, until)


class DisarmedFaults(Printers):
    def test_end_what_they_still_do(self):
        for kind in self.on_both_links():
            with self.subTest(kind.name):
                till = self.busy_till(kind)
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
        self.assert_served(till)
        self.disarm_the_first()
        self.assertEqual(self.lines.read_bytes(), b"\x02")
        self.disarm()
        self.assertEqual(self.lines.read_bytes(), b"\x03")

    def test_that_hold_the_same_lines_let_go_of_them_one_by_one(self):
        self.printer.name = "pty"
        self.make_new()
        till = self.till(SerialTill)
        self.printer.arm("ctsOff", milliseconds=60_000)
        self.printer.arm("dsrOff", milliseconds=60_000)
        self.assert_served(till)
        self.assertEqual(self.lines.read_bytes(), b"\x00")
        self.printer.arm("ctsOff", milliseconds=60_000)
        self.assert_served(till)
        self.disarm_the_first()
        self.assertEqual(self.lines.read_bytes(), b"\x00")  # the third one still holds CTS
        self.disarm_the_first()
        self.assertEqual(self.lines.read_bytes(), b"\x02")
        self.disarm_the_first()
        self.assertEqual(self.lines.read_bytes(), b"\x03")

    def test_that_hold_a_line_for_long_outlive_those_of_a_moment(self):
        self.printer.name = "pty"
        self.make_new()
        till = self.till(SerialTill)
        self.printer.arm("ctsOff", milliseconds=60_000)
        self.printer.arm("dsrOff", milliseconds=20)
        self.assert_served(till)
        until(lambda: self.lines.read_bytes() != b"\x00")
        self.assertEqual(self.lines.read_bytes(), b"\x02")
        self.disarm()
        self.assertEqual(self.lines.read_bytes(), b"\x03")

    def test_leave_the_port_closed_that_others_have_closed(self):
        self.printer.name = "printer"
        self.make_new()
        self.printer.arm("connectionRefused", milliseconds=50)
        till = until(lambda: self.connected(TcpTill))
        self.printer.arm("powerLoss", milliseconds=60_000)
        till.say(HARMLESS)
        self.assertEqual(till.end(), "reset")
        self.disarm_the_first()
        self.assertRaises(ConnectionRefusedError, TcpTill, self.printer)
        self.disarm()
        till = self.till(TcpTill)
        self.assert_served(till)

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
                self.assert_served(till)
                self.assertEqual(self.lines.read_bytes(), lines)
                end()
                self.assertEqual(self.lines.read_bytes(), b"\x03")

    def test_leave_no_answer_that_comes_later(self):
        for kind in self.on_both_links():
            with self.subTest(kind.name):
                till = self.till(kind)
                self.printer.arm("acknowledgeTwice", milliseconds=100)
                self.assert_served(till)
                self.make_new()
                # The time is over when the other printer has answered so late.
                other = self.till(SerialTill if kind is TcpTill else TcpTill)
                self.printer.name = other.name
                self.printer.arm("acknowledgeLate", milliseconds=150)
                self.assert_served(other)
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
            self.assert_served(till)

    def test_leave_a_printer_on_a_serial_line_switched_on(self):
        self.printer.name = "pty"
        for end in (self.disarm_the_first, self.printer.reset):
            self.make_new()
            till = self.till(SerialTill)
            self.printer.arm("connectionRefused", milliseconds=60_000)
            self.assertEqual(self.lines.read_bytes(), b"\x00")
            end()
            self.assertEqual(self.lines.read_bytes(), b"\x03")
            self.assert_served(till)

    def test_leave_it_on_when_its_time_has_come(self):
        self.printer.name = "pty"
        self.make_new()
        till = self.till(SerialTill)
        self.printer.arm("connectionRefused", milliseconds=60)
        self.printer.arm("connectionRefused", milliseconds=30)
        until(lambda: self.lines.read_bytes() == b"\x03")
        self.assert_served(till)

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
            self.assert_served(till)
            self.printer.expect(repeated=0, received=[{"name": "printJobCancel"}])


class PowerLoss(Printers):
    def test_ends_what_the_printer_had_still_to_say(self):
        self.printer.name = "pty"
        self.make_new()
        till = self.till(SerialTill)
        self.printer.arm("acknowledgeTwice", milliseconds=1000)
        self.assert_served(till)
        self.printer.arm("powerLoss", milliseconds=1200)
        till.say(HARMLESS)
        until(lambda: self.lines.read_bytes() == b"\x00")
        until(lambda: self.lines.read_bytes() == b"\x03")
        till.say(ASKED)
        self.assertEqual(till.hear(len(REPLY)), REPLY)

    def test_sends_away_who_waits_for_the_printer(self):
        with FiscalPrinter("--second", "wait", program=program) as printer:
            first = TcpTill(printer)
            self.assert_served(first)
            second = TcpTill(printer)
            second.say(HARMLESS)
            printer.arm("powerLoss", milliseconds=60_000)
            first.say(HARMLESS)
            self.assertEqual([first.end(), second.end()], ["reset", "reset"])
            first.close()
            second.close()


class RestoredPrinter(Printers):
    def restore(self):
        self.printer.ask("POST", "restore", {"name": "morning", "in": "memory"})

    def on_both_links(self):
        for kind in super().on_both_links():
            self.printer.ask("POST", "snapshots", {"name": "morning", "in": "memory"})
            yield kind

    def test_has_its_power_again(self):
        for kind in self.on_both_links():
            with self.subTest(kind.name):
                till = self.till(kind)
                self.printer.arm("powerLoss", milliseconds=60_000)
                till.say(HARMLESS)
                if kind is TcpTill:
                    self.assertEqual(till.end(), "reset")
                    self.assertRaises(ConnectionRefusedError, TcpTill, self.printer)
                else:
                    until(lambda: self.lines.read_bytes() == b"\x00")
                self.restore()
                self.assertEqual(self.lines.read_bytes(), b"\x03")
                self.assert_served(self.till(kind))

    def test_is_not_busy(self):
        for kind in self.on_both_links():
            with self.subTest(kind.name):
                till = self.busy_till(kind)
                self.restore()
                self.assertEqual(self.lines.read_bytes(), b"\x03")
                till.say(b"\x11")
                self.assertEqual(till.hear(1), b"\x11")

    def test_keeps_the_faults_that_have_still_to_act(self):
        for kind in self.on_both_links():
            with self.subTest(kind.name):
                self.printer.arm("refuse", code=77)
                self.printer.arm("connectionRefused", milliseconds=60_000)
                self.restore()
                if kind is TcpTill:
                    self.assertRaises(ConnectionRefusedError, TcpTill, self.printer)
                else:
                    self.assertEqual(self.lines.read_bytes(), b"\x00")
                self.printer.ask("DELETE", f"faults/{self.faults()[1]['number']}")
                till = self.till(kind)
                till.say(HARMLESS)
                self.assertEqual(till.hear(2), b"\x15\x4d")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
