#!/usr/bin/env python3
"""The control interface as tests and attackers reach it: over sockets, whole, in pieces, too large, too slow, by wrong
names, from wrong pages.

    control_http_test.py SOURCE_FOLDER PRINTER_PROGRAM
"""
import json
import random
import socket
import sys
import time
import unittest

from control_wire import PrinterTest, Wire


class Control(PrinterTest):
    def test_says_where_it_is(self):
        self.assertIn("control on " + self.printer.control, self.printer.paper)

    def test_sees_what_a_till_does(self):
        till = self.till()
        till.send(0x29, "0")
        self.assertEqual(till.sell("12.50"), b"\x06")
        self.printer.expect(committed=[{"kind": "receipt", "total": "12.50", "payments": [{"name": "Karta"}]}],
                            received=[{"name": "payment"}], acknowledged=[{"name": "payment"}], repeated=0)
        with self.assertRaisesRegex(AssertionError, 'total is "12.50", "12.00" is expected'):
            self.printer.expect(committed=[{"total": "12.00"}])
        self.assertEqual(self.printer.documents(number=1)[0]["items"][0]["name"], "Chlieb")
        self.printer.reset()
        self.printer.expect(committed=[], received=[{"name": "payment", "count": 0}])

    def test_serves_several_clients_at_once_and_pipelined_requests(self):
        first, second = self.wire(), self.wire()
        self.assertEqual(first.ask("GET /printers HTTP/1.1")[0], 200)
        request = "GET /printers HTTP/1.1\r\nHost: localhost\r\n\r\n"
        second.say(request * 3)
        self.assertEqual([second.hear()[0] for _ in range(3)], [200, 200, 200])
        self.assertEqual(first.ask("GET /printers HTTP/1.1")[0], 200)

    def test_takes_a_request_byte_by_byte(self):
        wire = self.wire()
        for character in "GET /printers HTTP/1.1\r\nHost: localhost\r\n\r\n":
            wire.say(character)
        self.assertEqual(wire.hear()[0], 200)

    def test_refuses_what_is_too_large(self):
        wire = self.wire()
        wire.say("POST /printers/printer/assert HTTP/1.1\r\nHost: localhost\r\nContent-Length: 2000000\r\n\r\n")
        status, content = wire.hear()
        self.assertEqual(status, 413)
        self.assertEqual(content["error"], "The body is larger than 1048576 bytes; send a smaller one.")
        wire = self.wire()
        wire.say("POST /printers/printer/assert HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n")
        try:
            for _ in range(40):
                wire.say("10000\r\n" + "x" * 65536 + "\r\n")
        except OSError:
            pass
        self.assertIn(wire.hear()[0], (413, 0))
        wire = self.wire()
        wire.say("GET /printers HTTP/1.1\r\nHost: localhost\r\nX: " + "x" * 9000 + "\r\n\r\n")
        self.assertEqual(wire.hear()[0], 431)
        wire = self.wire()
        wire.say("POST /printers/printer/assert HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n1;" + "x" * 20000)
        self.assertEqual(wire.hear()[0], 431)
        self.assertTrue(self.is_alive())

    def test_takes_a_body_in_chunks(self):
        wire = self.wire()
        wire.say("POST /printers/printer/assert HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n")
        for piece in ('{"situation"', ': "noDay"}', ""):
            wire.say(f"{len(piece):x}\r\n{piece}\r\n")
        self.assertEqual(wire.hear(), (200, {"holds": True, "differences": []}))

    def test_refuses_what_is_no_request(self):
        for rubbish in ("rubbish\r\n\r\n", "GET / HTTP/9.9\r\n\r\n", b"\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03" * 9,
                        "GET / HTTP/1.1\r\nHost: localhost\r\nContent-Length: x\r\n\r\n",
                        "GET /printers HTTP/1.1\r\nHost: localhost\r\nHost: evil.example\r\n\r\n"):
            wire = self.wire()
            wire.say(rubbish)
            self.assertEqual(wire.hear()[0], 400, rubbish)
            self.assertTrue(wire.is_closed())
        self.assertTrue(self.is_alive())

    def test_refuses_foreign_hosts_and_origins(self):
        for head in ("Host: evil.example", "Host: 127.0.0.1\r\nOrigin: http://evil.example", "X: y"):
            wire = self.wire()
            wire.say(f"GET /printers HTTP/1.1\r\n{head}\r\n\r\n")
            status, content = wire.hear()
            self.assertEqual(status, 403, head)
            self.assertEqual(content["error"].count("."), content["error"].rstrip(".").count(".") + 1)

    def test_gives_up_clients_that_do_not_go_on(self):
        half, silent = self.wire(), self.wire()
        half.say("GET /printers HTTP/1.1\r\nHost: loc")
        began = time.monotonic()
        self.assertTrue(half.is_closed())
        self.assertTrue(silent.is_closed())
        self.assertLess(time.monotonic() - began, 20)

    def test_answers_beside_more_silent_clients_than_it_has_room_for(self):
        silent = [self.wire() for _ in range(150)]
        began = time.monotonic()
        self.assertTrue(self.is_alive())
        self.assertLess(time.monotonic() - began, 5)
        self.assertTrue(silent[0].is_closed())

    def test_lets_the_client_go_that_has_been_silent_for_longest(self):
        busy, *silent = [self.wire() for _ in range(64)]
        for wire in (busy, *silent):
            self.assertEqual(wire.ask("GET /printers HTTP/1.1")[0], 200)
        self.assertEqual(busy.ask("GET /printers HTTP/1.1")[0], 200)
        self.assertEqual(self.wire().ask("GET /printers HTTP/1.1")[0], 200)
        self.assertTrue(silent[0].is_closed())
        self.assertEqual(busy.ask("GET /printers HTTP/1.1")[0], 200)

    def test_turns_clients_away_in_words_when_all_others_wait(self):
        body = json.dumps({"until": {"situation": "idle"}, "limit": 60000})
        waiting = [self.wire() for _ in range(64)]
        for wire in waiting:
            wire.say("POST /printers/printer/wait HTTP/1.1\r\nHost: localhost\r\n"
                     f"Content-Length: {len(body)}\r\n\r\n{body}")
        status, content = self.wire().ask("GET /printers HTTP/1.1")
        self.assertEqual(status, 503)
        self.assertEqual(content["error"], "All 64 connections wait for something or follow a trace; end one of them.")
        self.till().send(0x29, "0")
        for wire in waiting:
            self.assertEqual(wire.hear()[0], 200)

    def test_tells_a_client_to_go_on_that_asks_before_it_sends_its_body(self):
        wire = self.wire()
        wire.say("POST /printers/printer/assert HTTP/1.1\r\nHost: localhost\r\nExpect: 100-continue\r\n"
                 "Content-Length: 2\r\n\r\n")
        self.assertEqual(wire.hear(), (100, None))
        wire.say("{}")
        self.assertEqual(wire.hear()[0], 200)

    def test_forgets_clients_that_go_away_while_they_wait(self):
        for _ in range(70):
            wire = self.wire()
            body = json.dumps({"until": {"situation": "idle"}, "limit": 60000})
            wire.say("POST /printers/printer/wait HTTP/1.1\r\nHost: localhost\r\n"
                     f"Content-Length: {len(body)}\r\n\r\n{body}")
            wire.close()
        self.assertTrue(self.is_alive())

    def test_survives_damaged_requests(self):
        """Sound ones of every kind with bytes that are changed, left out or repeated, always the same."""
        chance = random.Random(7)
        here = "/printers/printer/"
        sound = [("GET", "/openapi.json", ""), ("GET", here + "documents?kind=receipt&from=2026-01-01&limit=3", ""),
                 ("POST", here + "assert", '{"received": [{"name": "payment", "count": 1}], "committed": [], "repeated": 0}'),
                 ("POST", here + "wait", '{"until": {"situation": "idle"}, "limit": 50}'),
                 ("PATCH", here + "settings", '{"vat": {"A": {"percent": 20}, "B": null}, "header": {"1": "x"}}'),
                 ("PATCH", here + "clock", '{"forward": 5, "mode": "stands", "speed": 2}'),
                 ("POST", here + "snapshots", '{"name": "a", "in": "memory"}'), ("POST", here + "restore", '{"name": "a"}'),
                 ("POST", here + "faults", '{"kind": "refuse", "code": 49, "command": "payment"}'),
                 ("DELETE", here + "faults/1", ""), ("GET", here + "trace/events?after=0", "")]
        for _ in range(600):
            method, path, body = chance.choice(sound)
            text = bytearray(f"{method} {path} HTTP/1.1\r\nHost: localhost\r\nContent-Length: {len(body)}\r\n\r\n{body}",
                             "ascii")
            for _ in range(chance.randrange(1, 4)):
                place = chance.randrange(len(text))
                change = chance.randrange(3)
                text[place:place + (change != 1)] = bytes([chance.randrange(256)]) * change
            wire = Wire(self.printer)
            try:
                wire.say(bytes(text))
                wire.socket.shutdown(socket.SHUT_WR)
                while wire.socket.recv(65536):
                    pass
            except OSError:
                pass
            wire.close()
        self.assertTrue(self.is_alive())
        self.printer.reset()
        till = self.till()
        till.send(0x29, "0")
        self.assertEqual(till.sell("1.00"), b"\x06")

    def test_keeps_serving_tills_beside_a_follower_that_does_not_read(self):
        follower = self.wire()
        follower.socket.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 4096)
        follower.say("GET /printers/printer/trace/events HTTP/1.1\r\nHost: localhost\r\n\r\n")
        till = self.till()
        till.send(0x29, "0")
        for _ in range(200):
            self.assertEqual(till.sell("1.00"), b"\x06")
        self.assertTrue(self.is_alive())


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
