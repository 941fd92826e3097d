"""What each call should have done: a model of the library that knows only what was asked and what the printer sent."""
from command_calls import BUFFER_FILLER, CommandCalls
from commands import COMMANDS
from session_calls import SessionCalls
from wire import Conversation, Deaf, SerialLink

LOG_FILES = ("fmlog.txt", "a.log", "b.log", "raw.log", "other.raw")  # others are in no folder


class Outcome:
    """All that is to be seen of a call."""

    def __init__(self):
        self.result = None
        self.appended = {}  # to log files
        self.emptied = []
        self.buffer = b""
        self.count = None
        self.file = None  # its content; "any" where it only has to be there
        self.ended = 0  # the signal that ended the process

    def log(self, path, data):
        if data and path in LOG_FILES:
            self.appended[path] = self.appended.get(path, b"") + data


class Library(CommandCalls, SessionCalls):
    """One process's library; `judge` says in words what is wrong with a recorded call."""

    def __init__(self, pictures):
        self.pictures = pictures
        self.layouts = {}  # of a picture and its inverse
        self.logs = True
        self.log_path = "fmlog.txt"
        self.raw_logs = False
        self.raw_path = ""
        self.raw_side = ""
        self.link = None
        self.device = None
        self.objects = {}

    def situation(self):
        """In which the next call is made."""
        if self.link is None:
            return "closed"
        if not self.link.is_open:
            return "with a link that could not be opened"
        if isinstance(self.link, SerialLink):
            return "on a serial line"
        return "over TCP with conversion" if self.device.converts else "over TCP"

    # One call

    def judge(self, record):
        self.record = record
        self.talk = Conversation(record["wire"])
        self.out = Outcome()
        if self.link is not None:
            self.link.talk = self.talk
        name = record["call"]
        try:
            if name in COMMANDS:
                self.run_command(COMMANDS[name])
            else:
                getattr(self, name)(*record["args"])
        except Deaf:
            return [f"the library stopped listening: {record['wire']} after {self.talk.transcript()}"]
        self.log_raw()
        return self.differences()

    def differences(self):
        record, out = self.record, self.out
        found = []

        def compare(what, wanted, seen):
            if wanted != seen:
                found.append(f"{what}: wanted {wanted!r}, seen {seen!r}")

        compare("wire", self.talk.transcript(), record["wire"])
        compare("pauses", self.talk.pauses, record.get("pauses", 0))
        compare("standard output", self.talk.printed, bytes.fromhex(record.get("printed", "")))
        compare("result", out.result, record["result"])
        compare("end", out.ended, record.get("ended", 0))
        compare("emptied", out.emptied, record.get("emptied", []))
        compare("logs", out.appended, {name: bytes.fromhex(data) for name, data in record.get("logs", {}).items()})
        if "buffer" in record:
            size = record["size"]
            compare("buffer", out.buffer.ljust(size, BUFFER_FILLER),
                    bytes.fromhex(record["buffer"]).ljust(size, BUFFER_FILLER))
        if "count" in record:
            compare("count", out.count, record["count"])
        if "object" in record:
            number, content = record["object"]
            compare("object", self.objects[number], bytes.fromhex(content))
        if "file" in record:
            compare("file", out.file, "any" if out.file == "any" and record["file"] is not None else record["file"])
        return found

    def log_raw(self):
        """Each change of direction begins a line; the last direction outlives switching off."""
        if not self.raw_logs or not self.raw_path:
            return
        before = self.raw_side
        for side, data in self.talk.parts:
            if side == "T":
                continue
            side = side.upper()
            text = b""
            if side != self.raw_side:
                text = (b"\n" if self.raw_side else b"") + side.encode() + b": "
                self.raw_side = side
            self.out.log(self.raw_path, text + b"".join(b"%02x " % byte for byte in data))
        if "ended" in self.record:
            self.raw_side = before  # another process remembered it

    def log_line(self, data):
        if self.logs:
            self.out.log(self.log_path, data + b"\n")
