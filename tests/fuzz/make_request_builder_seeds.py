"""Makes the seeds of the request builder's fuzzer. Run it in this folder after a change."""
import pathlib
import struct

PLAIN, CONVERTED = b"\x00", b"\x01"


def head(command, address=1):
    return struct.pack("<iB", address, command)


def whole(value):
    return b"\x00" + struct.pack("<i", value)


def general(value):
    return b"\x01" + struct.pack("<d", value)


def amount(given, decimals, way=0, mark=b"+"):
    return b"\x02" + bytes([decimals, way]) + mark + given


def hundredths(value):
    return b"\x00" + struct.pack("<i", value)


def ten_thousandths(value):
    return b"\x02" + struct.pack("<i", value)


def number(value):
    return b"\x03" + struct.pack("<d", value)


def as_text(value):
    return b"\x04" + bytes([len(value)]) + value


def character(value):
    return b"\x05" + value


def raw(value):
    return b"\x06" + bytes([len(value)]) + value


EMPTY = b"\x07"


def text(value, way=0, width=0):
    return b"\x08" + bytes([way, width, len(value)]) + value


sale = (whole(0) + text(b"Chlieb") + amount(hundredths(1250), 2) + character(b"A") + amount(number(1.5), 3) +
        amount(ten_thousandths(83333), 2) + text(b"ks", 2, 3))
seeds = {
    "sale": PLAIN + head(0x24) + sale,
    "sale_on_a_serial_line": CONVERTED + head(0x24, -1) + sale,
    "characters": CONVERTED + head(0x2B) + text(bytes(range(128, 256))) + raw(bytes(range(128, 256))),
    "padded": PLAIN + head(0x24) + text(b"Chlieb", 1, 40) + text(b"longer than that", 1, 4) + text(b"cut here", 2, 4),
    "zeros": PLAIN + head(0x30) + amount(number(0.0), 4, 1) + amount(number(-0.0), 4, 1) + amount(number(0.0), 4, 2),
    "halves": PLAIN + head(0x30) + b"".join(amount(number(value), 2) for value in (0.125, 0.375, 2.675, 1.005, -0.005)),
    "largest": PLAIN + head(0x30) + amount(number(1.7976931348623157e308), 10) + amount(number(5e-324), 10),
    "no_numbers": PLAIN + head(0x30) + amount(number(float("nan")), 2) + amount(number(float("-inf")), 3),
    "general": PLAIN + head(0x50) + general(16.66666) + general(1234567.0) + general(1e-7) + general(20.0),
    "texts_for_amounts": PLAIN + head(0x30) + amount(as_text(b"12,5"), 2, 2) + amount(as_text(b""), 2, 1) + EMPTY,
    "whole_numbers": PLAIN + head(0x20) + whole(-2147483648) + whole(2147483647) + whole(0) + character(b"\x00"),
}
folder = pathlib.Path("request_builder_seeds")
folder.mkdir(exist_ok=True)
for name, content in seeds.items():
    (folder / name).write_bytes(content)
