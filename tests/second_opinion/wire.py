"""The exchanges of both links, played again on the bytes that the printer really sent.

A conversation is recorded as "C" and "S" with the hexadecimal digits of what the library and the printer sent, and "T"
where the library waited in vain. What it should have been is built here from the printer's half of it.
"""
import re

ACK, NAK, COLON, ETB, ETX, EOT, XON, XOFF = 0x06, 0x15, 0x3A, 0x17, 0x03, 0x04, 0x11, 0x13
SILENCE = -1
TRIES = 3
LARGEST_PIECE = 256


class Failure(Exception):
    """The code that a call returns."""

    def __init__(self, code):
        super().__init__(code)
        self.code = code


class Deaf(Exception):
    """The library should have waited for more than the printer sent."""


def checksum(data):
    result = 0
    for byte in data:
        result ^= byte
    return result


class Conversation:
    """The printer's bytes one after the other, and both halves as they should have been."""

    def __init__(self, recorded):
        self.coming = []
        for side, digits in re.findall("([CST])([0-9a-f]*)", recorded):
            if side == "S":
                self.coming.extend(bytes.fromhex(digits))
            elif side == "T":
                self.coming.append(SILENCE)
        self.position = 0
        self.parts = []  # of (side, bytes); "c" is what could not be sent, but was logged before that was known
        self.pauses = 0
        self.printed = b""  # to standard output

    def write(self, data):
        if self.parts and self.parts[-1][0] == "C":
            self.parts[-1][1].extend(data)
        else:
            self.parts.append(("C", bytearray(data)))

    def read(self):
        if self.position == len(self.coming):
            raise Deaf
        byte = self.coming[self.position]
        self.position += 1
        if byte == SILENCE:
            self.parts.append(("T", b""))
        elif self.parts and self.parts[-1][0] == "S":
            self.parts[-1][1].append(byte)
        else:
            self.parts.append(("S", bytearray((byte,))))
        return byte

    def transcript(self):
        return "".join(side + data.hex() for side, data in self.parts if data and side != "c" or side == "T")


class Link:
    """What both links do in the same way; `talk` is the conversation of the current call."""

    talk = None
    is_open = True

    def send_request(self, request):
        self.write(request)
        self.talk.write(bytes((checksum(request),)))

    def write(self, data):
        self.talk.write(data)

    def receive(self, diagnoses=False):
        """The blocks of a reply whose first ":" has been read."""
        reply = bytearray()
        while True:
            more = self.receive_block(reply, diagnoses)
            if not more:
                return bytes(reply)

    def receive_block(self, reply, diagnoses):
        """Appends a block; true when the ":" of another one has been read."""
        for _ in range(TRIES):
            length = self.data_byte()
            data = bytes(self.data_byte() for _ in range(length + 1))
            end = self.data_byte()
            if checksum(data) ^ COLON ^ length ^ end == self.data_byte():
                reply += data
                if end == ETX:
                    self.talk.write(bytes((ETX,)))
                    return False
                if end == ETB:
                    self.talk.write(bytes((ACK,)))
                    while True:
                        byte = self.answer_byte()
                        if byte in (COLON, EOT):
                            return byte == COLON
                if diagnoses:
                    self.talk.printed += b"Odpoved na potvrdenie prijatia bloku: \n"
            self.talk.write(bytes((NAK,)))
            byte = self.answer_byte()
            if byte == EOT:
                return False
            if byte != COLON:
                raise Failure(-10002)
        raise Failure(-10002)

    def upload(self, data, is_last):
        for start in range(0, len(data), LARGEST_PIECE):
            piece = data[start:start + LARGEST_PIECE]
            ends = is_last and start + LARGEST_PIECE >= len(data)
            block = bytes((COLON, len(piece) - 1)) + piece + bytes((ETX if ends else ETB,))
            if not self.upload_block(block):
                return


class TcpLink(Link):
    """A negative reply and an unexpected byte end an exchange at once; silence is tried three times."""

    converts = False

    def write(self, data):
        if not self.is_open:
            self.talk.parts.append(("c", data))
            raise Failure(-10201)
        self.talk.write(data)

    def answer_byte(self):
        probe_sent = False
        while True:
            byte = self.talk.read()
            if byte == SILENCE:
                if probe_sent:
                    raise Failure(-10202)
                self.talk.write(bytes((XON,)))
                probe_sent = True
            elif byte not in (XON, XOFF):
                return byte
            elif probe_sent and byte == XON:
                raise Failure(-10202)
            else:
                probe_sent = False

    def data_byte(self):
        """Of a block, or the code behind a negative reply: there the bytes of flow control are like others."""
        probe_sent = False
        while True:
            byte = self.talk.read()
            if byte != SILENCE:
                return byte
            if probe_sent:
                raise Failure(-10202)
            self.talk.write(bytes((XON,)))
            probe_sent = True

    def answers(self, unit):
        """The first byte of the answer in each try; one that silence ends has none."""
        for _ in range(TRIES):
            self.send_request(unit)
            try:
                byte = self.answer_byte()
            except Failure as failure:
                if failure.code != -10202:
                    raise
            else:
                yield byte
        raise Failure(-10202)

    def send(self, request):
        byte = next(self.answers(request))
        if byte == NAK:
            raise Failure(self.data_byte())
        if byte != ACK:
            raise Failure(-10002)

    def query(self, request):
        byte = next(self.answers(request))
        if byte == COLON:
            return self.receive()
        if byte == EOT:
            return b""
        raise Failure(self.data_byte() if byte == NAK else -10002)

    strict = query

    def upload_block(self, block):
        for byte in self.answers(block):
            if byte == NAK:
                raise Failure(self.data_byte())
            if byte in (ACK, ETX, EOT):
                return byte == ACK
        raise AssertionError("the tries have no end")

    def raw_read(self, count):
        return bytes(self.answer_byte() for _ in range(max(count, 0)))


class SerialLink(Link):
    """Refused requests are sent again; a query pauses before each try."""

    converts = True

    def write(self, data):
        if not self.is_open:
            raise Failure(-10103)
        if data:  # byte by byte: of none nothing is logged either
            self.talk.write(data)

    def answer_byte(self):
        return self.talk.read()

    data_byte = answer_byte

    def send(self, request):
        code = 0
        for _ in range(TRIES):
            self.send_request(request)
            if self.answer_byte() == ACK:
                return
            code = self.answer_byte()
        raise Failure(code)

    def query(self, request, is_strict=False):
        code = 0
        for _ in range(TRIES):
            if not is_strict and self.is_open:
                self.talk.pauses += 1
            self.send_request(request)
            byte = self.answer_byte()
            while byte not in (COLON, EOT, NAK):
                if is_strict:
                    raise Failure(-10002)
                byte = self.answer_byte()
            if byte == COLON:
                return self.receive(diagnoses=not is_strict)
            if byte == EOT:
                return b""
            code = self.answer_byte()
        raise Failure(code)

    def strict(self, request):
        return self.query(request, is_strict=True)

    def upload_block(self, block):
        for _ in range(TRIES):
            self.send_request(block)
            byte = self.answer_byte()
            if byte in (ACK, ETX, EOT):
                return byte == ACK
            self.answer_byte()
        raise Failure(-10001)

    def raw_read(self, count):
        """What has come already, and no wait for more."""
        taken = bytearray()
        while len(taken) < count and self.talk.position < len(self.talk.coming):
            taken.append(self.talk.read())
        return bytes(taken)
