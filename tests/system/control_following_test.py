#!/usr/bin/env python3
"""The control interface as those reach it who follow a printer: waits, and the trace as a stream and in pieces.

    control_following_test.py SOURCE_FOLDER PRINTER_PROGRAM
"""
import json
import socket
import sys
import threading
import time
import unittest

from control_wire import PrinterTest
from till import framed


class Following(PrinterTest):
    def test_answers_a_wait_as_soon_as_it_is_so(self):
        failures = []

        def wait():
            try:
                self.printer.wait(seconds=30, committed=[{"total": "12.50"}])
            except AssertionError as failure:
                failures.append(failure)

        waiting = threading.Thread(target=wait)
        waiting.start()
        till = self.till()
        till.send(0x29, "0")
        till.sell("12.50")
        waiting.join(10)
        self.assertFalse(waiting.is_alive())
        self.assertEqual(failures, [])

    def test_ends_a_wait_with_what_is_missing(self):
        began = time.monotonic()
        with self.assertRaisesRegex(AssertionError, 'situation: it is "noDay", "idle" is expected'):
            self.printer.wait(seconds=0.2, situation="idle")
        self.assertGreaterEqual(time.monotonic() - began, 0.2)

    def test_answers_a_wait_while_an_answer_to_the_till_is_held_back(self):
        self.printer.arm("acknowledgeLate", milliseconds=3000)
        till = self.till()
        began = time.monotonic()
        till.socket.sendall(framed("0", command=0x29))
        self.printer.wait(seconds=30, executed=[{"name": "sellingDayBegin"}],
                          acknowledged=[{"name": "sellingDayBegin", "count": 0}], situation="idle")
        self.assertLess(time.monotonic() - began, 2.9)
        self.assertEqual(till.socket.recv(1), b"\x06")
        self.assertGreaterEqual(time.monotonic() - began, 3)
        self.printer.wait(seconds=30, acknowledged=[{"name": "sellingDayBegin"}])

    def test_ends_a_wait_whose_documents_a_reset_takes_away(self):
        till = self.till()
        till.send(0x29, "0")
        till.sell("1.00")
        waiting = self.wire()
        waiting.post("wait", {"until": {"since": {"document": 1}, "committed": [{"total": "9.99"}]}, "limit": 60000})
        self.is_waiting()
        self.printer.reset()
        self.assertEqual(waiting.hear()[0], 410)
        self.assertTrue(self.is_alive())

    def test_ends_a_wait_that_the_trace_leaves_behind(self):
        self.probe(10_000)
        waiting = self.wire()
        waiting.post("wait", {"until": {"since": {"exchange": 9000}, "received": [{"name": "payment"}]}, "limit": 60000})
        self.is_waiting()
        self.probe(10_000)
        status, content = waiting.hear()
        self.assertEqual(status, 410)
        self.assertIn("which is forgotten", content["error"])
        self.assertTrue(self.is_alive())

    def test_waits_hardly_slow_a_till(self):
        """Ten of them over thousands of exchanges: looking through all of these again would take a second for each."""
        self.probe(5000)
        waiting = [self.wire() for _ in range(10)]
        for wire in waiting:
            wire.post("wait", {"until": {"received": [{"name": "payment", "fields": {"total": "1.00"}}]}, "limit": 60000})
        self.is_waiting()
        till = self.till()
        began = time.monotonic()
        for _ in range(200):
            self.assertEqual(till.send(0xE0), b"\x06")
        self.assertLess(time.monotonic() - began, 5)

    def test_follows_an_exchange_when_it_is_over(self):
        till = self.till()
        till.send(0x29, "0")
        till.sell("1.00")
        begin = self.printer.state()["position"]["exchange"]
        follower = self.wire()
        follower.say("GET /printers/printer/trace/events HTTP/1.1\r\nHost: localhost\r\n\r\n")
        while follower.line():
            pass
        reply = till.fetch(0x9F)  # of several blocks
        event = follower.event()
        self.assertEqual((event["name"], event["taken"], event["number"]), ("getJournal", True, begin))
        self.assertGreater(len(bytes.fromhex(event["toTill"])), len(reply))
        self.assertEqual(event["toTill"], self.printer.trace()[-1]["toTill"])
        # Nothing follows what is lost, and it comes all the same.
        self.printer.arm("acknowledgeLost")
        till.socket.sendall(framed(command=0xE0))
        event = follower.event()
        self.assertEqual((event["executed"], event["acknowledged"], event["number"]), (True, False, begin + 1))

    def test_streams_the_trace_and_resumes_by_number(self):
        follower = self.wire()
        follower.say("GET /printers/printer/trace/events HTTP/1.1\r\nHost: localhost\r\n\r\n")
        while follower.line():  # the head: the stream has begun
            pass
        till = self.till()
        till.send(0x29, "0")
        self.assertEqual(follower.line(), "id: 1")
        self.assertEqual(follower.line(), "event: exchange")
        self.assertEqual(json.loads(follower.line().removeprefix("data: "))["name"], "sellingDayBegin")
        follower.close()
        till.sell("1.00")
        again = self.wire()
        again.say("GET /printers/printer/trace/events HTTP/1.1\r\nHost: localhost\r\nLast-Event-ID: 1\r\n\r\n")
        while again.line():
            pass
        self.assertEqual(again.line(), "id: 2")

    def test_gives_a_long_trace_out_in_pieces_on_a_connection_that_stays(self):
        till = self.till()
        till.socket.sendall(b"\x11" * 2000)
        self.printer.wait(received=[{"name": "probe", "count": 2000}])
        wire = self.wire()
        wire.say("GET /printers/printer/trace HTTP/1.1\r\nHost: localhost\r\n\r\n")
        head = []
        while line := wire.line():
            head.append(line.lower())
        self.assertIn("transfer-encoding: chunked", head)
        sizes, lines = [], b""
        while size := int(wire.line(), 16):
            sizes.append(size)
            piece = b""
            while len(piece) < size:
                piece += wire.socket.recv(size - len(piece))
            lines += piece
            self.assertEqual(wire.line(), "")
        self.assertEqual(wire.line(), "")
        self.assertGreater(len(sizes), 5)
        numbers = [json.loads(line)["number"] for line in lines.splitlines()]
        self.assertEqual(numbers, list(range(numbers[0], numbers[0] + 2000)))
        self.assertEqual(wire.ask("GET /printers HTTP/1.1")[0], 200)
        # An older client knows no pieces.
        old = self.wire()
        old.say("GET /printers/printer/trace HTTP/1.0\r\nHost: localhost\r\n\r\n")
        text = b""
        while more := old.socket.recv(65536):
            text += more
        head, body = text.split(b"\r\n\r\n", 1)
        self.assertNotIn(b"chunked", head.lower())
        self.assertEqual(body, lines)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
