"""A virtual fiscal printer for the tests of a till: starts telvofm-printer, sets it up, and checks what it has seen.

One file, standard library only; copy it beside your tests. With pytest, a test that names the fixture has a printer:

    from telvofm_printer import fiscal_printer

    def test_sale(fiscal_printer):
        sell_with_my_till(fiscal_printer.address)
        fiscal_printer.expect(committed=[{"kind": "receipt", "total": "12.50"}], repeated=0)

Without pytest: `with FiscalPrinter() as printer: ...`. The program is the one that the variable TELVOFM_PRINTER names, or
telvofm-printer on the path. docs/control.md describes what can be asked.
"""
import json
import os
import socket
import subprocess
import tempfile
import threading
import urllib.error
import urllib.parse
import urllib.request


# Whatever proxy the environment names, the printer is on this machine.
_directly = urllib.request.build_opener(urllib.request.ProxyHandler({}))


class Refused(Exception):
    """The printer could not do what was asked; the text says why. `status` is that of HTTP."""

    def __init__(self, status, sentence):
        super().__init__(sentence)
        self.status = status


class FiscalPrinter:
    """A telvofm-printer process with one printer, reached by tills at `address` and by this object over HTTP."""

    def __init__(self, *options, program=None, control="127.0.0.1:0", token=None):
        """`options` are more options of the program, as "--clock", "2026-01-31 12:00"."""
        self.name = "printer"
        self._token = token
        command = [program or os.environ.get("TELVOFM_PRINTER", "telvofm-printer"), "--listen", "127.0.0.1:0",
                   "--control", control, "--exit-with-parent", *options]
        with tempfile.TemporaryDirectory() as folder:  # others can read a command line, but not this
            if token:
                file = os.path.join(folder, "token")
                with open(file, "w", encoding="ascii") as secret:
                    secret.write(token)
                command += ["--token-file", file]
            self._process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                                             encoding="utf-8")
            self.paper = []  # what it has printed so far, line by line
            self.address = self._line_behind("listening on ")
            self.control = self._line_behind("control on ")
        self._reader = threading.Thread(target=self._read_paper, daemon=True)
        self._reader.start()

    def _line_behind(self, words):
        for line in self._process.stdout:
            self.paper.append(line.rstrip("\n"))
            if words in line:
                return line.split(words)[1].strip()
        self.close()
        raise RuntimeError("telvofm-printer does not start: " + " ".join(self.paper))

    def _read_paper(self):
        for line in self._process.stdout:
            self.paper.append(line.rstrip("\n"))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        """Ends the process."""
        self._process.kill()
        self._process.wait()
        if hasattr(self, "_reader"):
            self._reader.join()
        self._process.stdout.close()

    def ask(self, method, path, body=None):
        """Any request of docs/control.md. A path without a slash in front belongs to the printer."""
        url = self.control + (path if path.startswith("/") else f"/printers/{self.name}/{path}")
        data = None if body is None else json.dumps(body).encode()
        headers = {"Content-Type": "application/json"}
        if self._token:
            headers["Authorization"] = "Bearer " + self._token
        request = urllib.request.Request(url, data, headers, method=method)
        try:
            with _directly.open(request, timeout=90) as answer:
                return _parsed(answer)
        except urllib.error.HTTPError as failure:
            content = _parsed(failure)
            if "differences" in content:
                raise AssertionError("\n".join(content["differences"])) from None
            raise Refused(failure.code, content.get("error", str(failure))) from None

    def state(self):
        """What the printer stands at, its open receipt included."""
        return self.ask("GET", "state")

    def documents(self, **search):
        """All documents as data, or those that are searched for: documents(kind="receipt", number=1)."""
        documents, page = [], {"next": search.pop("skip", 0)}
        most = search.pop("limit", None)
        while page["next"] is not None and (most is None or len(documents) < most):
            there = {**search, "skip": page["next"], "limit": 1000 if most is None else min(1000, most - len(documents))}
            page = self.ask("GET", "documents?" + urllib.parse.urlencode(there))
            documents += page["documents"]
        return documents

    def trace(self):
        """All exchanges that the printer still knows."""
        return self.ask("GET", "trace")

    def replay(self, trace, seconds=5):
        """Sends the bytes of a trace again, over TCP, and returns those of its exchanges that are answered otherwise now.

        The printer must stand where the other one stood when the trace began: at what it kept, and at its time."""
        different = []
        host, port = self.address.rsplit(":", 1)
        with socket.create_connection((host.strip("[]"), int(port)), timeout=seconds) as till:
            for exchange in trace:
                answer, expected = b"", bytes.fromhex(exchange["toTill"])
                till.sendall(bytes.fromhex(exchange["fromTill"]))
                try:
                    while len(answer) < len(expected):
                        piece = till.recv(65536)
                        if not piece:
                            break
                        answer += piece
                except socket.timeout:
                    pass
                if answer != expected:
                    different.append({**exchange, "toTill": answer.hex(" ")})
        return different

    def arm(self, kind, **parameters):
        """A fault from the next request on: arm("acknowledgeLost", command="payment")."""
        return self.ask("POST", "faults", {"kind": kind, **parameters})

    def reset(self):
        """A new printer. What was before does not count in `expect`."""
        return self.ask("POST", "reset", {"to": "new"})

    def expect(self, **assertion):
        """Fails with readable differences unless all of it is so: received, executed, acknowledged, committed, repeated."""
        self.ask("POST", "assert", assertion)

    def wait(self, seconds=5, **assertion):
        """Returns as soon as all of it is so; fails with the differences when it is not within the time."""
        self.ask("POST", "wait", {"until": assertion, "limit": int(seconds * 1000)})


def _parsed(answer):
    text = answer.read().decode()
    if answer.headers.get_content_type() == "application/x-ndjson":
        return [json.loads(line) for line in text.splitlines()]
    return json.loads(text) if text else {}


try:
    import pytest
except ImportError:
    pass
else:
    @pytest.fixture
    def fiscal_printer():
        """A printer of the test's own, ready to sell."""
        with FiscalPrinter() as printer:
            yield printer
