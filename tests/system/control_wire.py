"""What the tests of the control interface have in common: the program that they are called with, a client that says
what it likes, and a printer with its till.
"""
import json
import pathlib
import socket
import sys
import unittest

source = pathlib.Path(sys.argv[1])
program = sys.argv[2]
sys.path.insert(0, str(source / "testing"))
sys.path.insert(0, str(source / "tests/system"))
from telvofm_printer import FiscalPrinter  # noqa: E402
from till import Till  # noqa: E402


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


class PrinterTest(unittest.TestCase):
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
