#!/usr/bin/env python3
"""The control interface as tests and attackers reach it: over sockets, whole, in pieces, too large, too slow, by wrong
names, from wrong pages, without the token.

    control_http_test.py SOURCE_FOLDER PRINTER_PROGRAM
"""
import json
import pathlib
import random
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest

source = pathlib.Path(sys.argv[1])
program = sys.argv[2]
sys.path.insert(0, str(source / "testing"))
sys.path.insert(0, str(source / "tests/system"))
from telvofm_printer import FiscalPrinter, Refused  # noqa: E402
from till import Till, framed  # noqa: E402

TOKEN = "0123456789abcdef"


class Wire:
    """A client that says what it likes."""

    def __init__(self, printer):
        host, port = printer.control.removeprefix("http://").rsplit(":", 1)
        self.socket = socket.create_connection((host, int(port)), timeout=30)

    def say(self, text):
        self.socket.sendall(text if isinstance(text, bytes) else text.encode())

    def ask(self, head, body=""):
        length = f"Content-Length: {len(body)}\r\n" if body else ""
        self.say(f"{head}\r\nHost: 127.0.0.1\r\n{length}\r\n{body}")
        return self.hear()

    def hear(self):
        """The status and the content of one answer."""
        head = b""
        while not head.endswith(b"\r\n\r\n"):
            byte = self.socket.recv(1)
            if not byte:
                return (0, None) if not head else (0, head)
            head += byte
        status = int(head.split()[1])
        length = [int(line.split(b":")[1]) for line in head.split(b"\r\n") if line.lower().startswith(b"content-length")]
        content = b""
        while length and len(content) < length[0]:
            content += self.socket.recv(length[0] - len(content))
        return status, json.loads(content) if content else None

    def line(self):
        text = b""
        while not text.endswith(b"\n"):
            byte = self.socket.recv(1)
            if not byte:
                raise EOFError
            text += byte
        return text.decode().strip()

    def post(self, path, body):
        """Without waiting for the answer."""
        content = json.dumps(body)
        self.say(f"POST /printers/printer/{path} HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Length: {len(content)}\r\n\r\n{content}")

    def is_closed(self):
        """Waits for it."""
        try:
            return self.socket.recv(1) == b""
        except ConnectionResetError:
            return True

    def event(self):
        """The exchange of the next event of a stream."""
        while not (line := self.line()).startswith("data: "):
            pass
        return json.loads(line.removeprefix("data: "))

    def close(self):
        self.socket.close()


class Control(unittest.TestCase):
    def setUp(self):
        self.printer = FiscalPrinter(program=program)
        self.addCleanup(self.printer.close)

    def wire(self):
        wire = Wire(self.printer)
        self.addCleanup(wire.close)
        return wire

    def till(self):
        till = Till(self.printer)
        self.addCleanup(till.socket.close)
        return till

    def probe(self, count):
        """So many exchanges, of a till that goes away then."""
        with Till(self.printer).socket as till:
            for _ in range(count // 100):
                till.sendall(b"\x11" * 100)
                received = 0
                while received < 100:
                    received += len(till.recv(100))

    def is_waiting(self):
        """Requests are taken in the order in which they come: whoever asked before is waiting now."""
        self.assertTrue(self.printer.state())

    def is_alive(self):
        return self.printer.state()["situation"] in ("noDay", "idle")

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
            wire.say(f"GET /printers HTTP/1.1\r\nHost: till.example\r\nCookie: telvofm_token={TOKEN}\r\n\r\n")
            self.assertEqual(wire.hear()[0], 200)
            wire.say("GET /printers/printer/trace/events HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n")
            self.assertEqual(wire.hear()[0], 401)
            wire.close()


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
