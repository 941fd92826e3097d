"""What the command exports should do, by their rows in commands.py."""
from pictures import layouts
import texts
from wire import Failure

BUFFER_FILLER = b"\xAA"  # before each call
FILE_FAILED = -10201
TOO_MANY_COLOURS = -10104
ABORTED = 6  # the signal of a process that gave too small a buffer


class CommandCalls:
    def run_command(self, command):
        arguments = self.record["args"]
        values, shown = [], []
        for letter, argument in zip(command.letters, arguments):
            value = self.value(letter, argument)
            values.append(value)
            shown.append(self.shown(letter, value))
        if command.log and not command.logs_reply:
            self.log_line(self.line(command, shown))
        if self.device is None:
            self.fail(command, -1)
            return
        try:
            self.out.result = 0
            getattr(self, "do_" + command.exchange)(command, values)
            if command.logs_reply and not self.out.ended:
                shown.append(texts.decimal(len(self.reply)))
                self.log_line(self.line(command, shown) + self.reply)
        except Failure as failure:
            self.fail(command, failure.code)

    def fail(self, command, code):
        self.out.result = code
        if "returned" in command.delivery:
            self.out.result = b"Error".hex()
        if "count" in command.delivery:
            self.out.count = self.record["count_before"]
        if self.out.file is None:
            self.out.file = self.record.get("file_before")
        if command.name == "getJournalStructZ1_tofile" and self.device is not None:
            # This one writes its failure, whether calls are logged or not.
            message = "Telvo error "[code:] if 0 <= code <= 12 else f"Telvo error {code}"
            text = f"getJournalStructZ1_tofile exception {code}{message or 'Unknown exception'}\n"
            self.out.log(self.log_path, text.encode())

    @staticmethod
    def line(command, shown):
        return b"".join(part if isinstance(part, bytes) else shown[part] for part in command.log)

    @staticmethod
    def value(letter, argument):
        if letter == "d":
            return texts.double_of(argument)
        if letter in "hkx":
            return argument / {"h": 100.0, "k": 1000.0, "x": 10000.0}[letter]
        if letter in "TF":
            return bytes.fromhex(argument or "")
        if letter == "S":
            return (bytes.fromhex(argument or "") + b"\0")[:1]
        if letter == "C":
            return bytes((argument,))
        if letter == "B":
            return argument != 0
        return argument

    @staticmethod
    def shown(letter, value):
        """In the call log."""
        if isinstance(value, bytes):
            return value
        if letter in "dhkx":
            return texts.short(value)
        if letter in "iB":
            return texts.decimal(value)
        return b""

    def converted(self, text):
        return text.translate(texts.OUTGOING) if self.device.converts else text

    def request(self, command, values):
        return (bytes((0x1C, values[0] & 0xFF)) + command.code +
                b"".join(self.field(kind, place, values) + b"\0" for kind, place in command.fields) + b"\x04")

    def field(self, kind, place, values):
        if kind == "=":
            return place
        value = values[place]
        if kind == "i":
            return texts.decimal(value)
        if kind == "t":
            return self.converted(value)
        if kind in "rc":
            return value
        if kind == "n":
            return self.converted(texts.padded(value) if self.device.pads else value)
        if kind in "uf":
            return self.converted(texts.fitted(value, 3 if kind == "u" else 10))
        if kind == "v":
            return b"" if value == b" " else value
        if kind == "w":
            return texts.decimal(texts.truncated(value))
        if kind == "g":
            return texts.short_or_empty(value)
        if kind in "!?":
            return b"1" if bool(value) == (kind == "?") else b"0"
        if kind == "#":
            return b"0" if value == 1 else b"1"
        if kind == "s":
            return b"".join((b"0" if spacing < 10 else b"") + texts.decimal(spacing) for spacing in values[place:place + 6])
        sign = b"+" if kind.startswith("+") else b""
        if kind.lstrip("+").startswith("z"):
            return sign + texts.fixed_or_zero(value, int(kind[-1]))
        return texts.fixed(value, int(kind))

    def do_send(self, command, values):
        self.link.send(self.request(command, values))

    def incoming(self, reply):
        return reply.translate(texts.INCOMING) if self.device.converts else reply

    # Replies

    def do_query(self, command, values):
        reply = self.incoming(self.link.query(self.request(command, values)))
        if "trimmed" in command.delivery:
            if len(reply) <= 2:
                reply = b""
            elif reply[-2:] in (b"\r\n", b"\n\r"):
                reply = reply[:-2]
        getattr(self, "deliver_" + command.delivery[0])(command, values, reply)
        self.reply = reply

    def deliver_exact(self, command, values, reply):
        size = values[command.letters.index("b") + 1]
        if len(reply) > size:
            self.out.buffer, self.out.ended, self.out.result = bytes(max(size, 0)), ABORTED, None
            if "count" in command.delivery:
                self.out.count = self.record["count_before"]
            return
        self.out.buffer = reply
        if "count" in command.delivery:
            self.out.count = len(reply)

    def deliver_text(self, command, values, reply):
        size = values[command.letters.index("b") + 1]
        text = reply.split(b"\0")[0] + b"\0"
        if len(text) > size:
            self.out.buffer, self.out.ended, self.out.result = b"\0", ABORTED, None
        else:
            self.out.buffer = text

    def deliver_blank(self, command, values, reply):
        """The end stands where the whole reply ends, wherever the copy did."""
        size = max(values[command.letters.index("b") + 1], 0)
        copied = reply[:size].replace(b"\0", b" ")
        self.out.buffer = copied.ljust(len(reply), BUFFER_FILLER) + b"\0"

    def deliver_blanked(self, command, values, reply):
        self.out.buffer = reply[:max(values[command.letters.index("b") + 1], 0)].replace(b"\0", b" ")

    def deliver_object(self, _command, values, reply):
        self.objects[values[-1]] = reply

    def deliver_returned(self, _command, _values, reply):
        self.out.result = reply.split(b"\0")[0].hex()

    def deliver_file(self, _command, values, reply):
        if not self.can_be_written(values[-1]):
            raise Failure(FILE_FAILED)
        self.out.file = reply.hex()

    @staticmethod
    def can_be_written(name):
        return name.startswith(b"reply")

    def do_strict(self, command, values):
        request = self.request(command, values)
        if not self.can_be_written(values[-1]):
            raise Failure(FILE_FAILED)
        self.out.file = "any"  # a failure may leave part of the reply
        self.out.file = self.incoming(self.link.strict(request)).hex()

    # Uploads

    def do_code(self, command, values):
        self.link.send(self.request(command, values))
        self.link.upload(self.converted(values[1]), True)

    def do_prepare(self, _command, values):
        index, name = values[0], values[1].decode("latin-1")
        inverse = int(len(values) > 2 and values[2] != 0)
        self.talk.printed += b"Path: " + values[1] + b"\n"
        if name not in self.pictures:
            raise Failure(FILE_FAILED)
        self.talk.printed += b"OK\n"
        if self.pictures[name] is None:
            raise Failure(TOO_MANY_COLOURS)
        if (name, inverse) not in self.layouts:
            self.layouts[name, inverse] = layouts(self.pictures[name], inverse)
        for table, data in self.layouts[name, inverse].items():
            self.device.tables[table].setdefault(index, data)

    def do_picture(self, command, values):
        self.link.send(self.request(command, values))
        self.link.upload(self.device.tables[command.delivery[0]].get(values[1], b""), True)

    def do_pictures(self, command, values):
        count = values[1]
        if command.name == "loadGHNV" and count > 6:
            return
        table = self.device.tables[command.delivery[0]]
        self.link.send(self.request(command, values))
        for index in range(1, count + 1):
            self.link.upload(table.get(index, b""), index == count)

    def do_memory(self, command, values):
        """Asking for what is not there makes an empty picture, and the first one stays."""
        self.link.send(self.request(command, values))
        self.link.upload(self.device.tables["D"].setdefault(9, b""), True)

    def do_data(self, command, values):
        data = bytes.fromhex(values[3] or "")
        self.link.send(self.request(command, values))
        self.link.upload(data, True)
        self.link.upload(bytes(4), True)
