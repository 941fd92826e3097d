"""A till of a few lines, for tests that need one that sells: bytes over TCP."""
import socket


def framed(*fields, command):
    unit = bytes([0x1C, 1, command]) + b"".join(field.encode() + b"\0" for field in fields) + b"\x04"
    checksum = 0
    for byte in unit:
        checksum ^= byte
    return unit + bytes([checksum])


class Till:
    """The fewest bytes that sell."""

    def __init__(self, printer):
        host, port = printer.address.rsplit(":", 1)
        self.socket = socket.create_connection((host, int(port)), timeout=30)
        self.socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)

    def send(self, command, *fields):
        self.socket.sendall(framed(*fields, command=command))
        return self.socket.recv(2)

    def fetch(self, command, *fields):
        """The data of a reply, block by block."""
        self.socket.sendall(framed(*fields, command=command))
        data = b""
        while True:
            head = self.receive(2)
            block = self.receive(head[1] + 1)
            terminator = self.receive(2)[:1]
            data += block
            self.socket.sendall(b"\x06")
            if terminator == b"\x03":
                return data

    def receive(self, size):
        received = b""
        while len(received) < size:
            piece = self.socket.recv(size - len(received))
            if not piece:
                raise EOFError
            received += piece
        return received

    def sell(self, total):
        self.send(0x20, "0", "1", "0", "0", "1", "0")
        self.send(0x24, "0", "Chlieb", total, "A", "1.000", total, "ks ")
        self.send(0x30, "0", "2", total, total, "0", "x")
        return self.send(0x22, "0", "0")
