"""Makes the seeds of the raw log's fuzzer. Run it in this folder after a change."""
import pathlib

from wire_units import block, request


def till(unit):
    return "C: " + "".join(f"{byte:02x} " for byte in unit) + "\n"


def printer(unit):
    return "S: " + "".join(f"{byte:02x} " for byte in unit) + "\n"


def dialogue(*pieces):
    """The other form of an input: the highest bit tells the side."""
    return b"".join(bytes(byte & 0x7F | (0x80 if is_till else 0) for byte in unit) for is_till, unit in pieces)


sale = request(0x24, b"0", b"Chlieb", b"1.50", b"A", b"1.000", b"1.50", b"ks ")
journal, first, last = request(0x9F), block(b"ab", b"\x17"), block(b"c", b"\x03")
seeds = {
    "sale": till(sale) + printer(b"\x06"),
    "refused_and_again": till(sale + b"\x11" + sale) + printer(b"\x15\x05"),
    "reply": till(journal) + printer(first) + till(b"\x06") + printer(last) + till(b"\x03"),
    "probes_in_a_block": till(journal) + printer(first[:3]) + till(b"\x11") + printer(first[3:]) + till(b"\x06"),
    "upload": till(request(0xD1, b"1")) + printer(b"\x06") + till(first) + printer(b"\x15\x01") + till(first) + printer(b"\x06"),
    "busy": till(sale) + printer(b"\x13\x13\x11\x06"),
    "wrong_checksum": till(sale[:-1] + b"\x00") + printer(block(b"x", b"\x03")[:-1] + b"\x00"),
    "broken_off": till(sale[:9]) + printer(first[:3]) + "C: 1",
    "lines_of_windows": till(sale).replace("\n", "\r\n") + printer(b"\x06").replace("\n", "\r\n"),
    "no_log": "nonsense\nC:\nS: zz 6 \n\n",
}
folder = pathlib.Path("raw_log_seeds")
folder.mkdir(exist_ok=True)
for name, text in seeds.items():
    (folder / name).write_bytes(text.encode())
(folder / "dialogue").write_bytes(dialogue((1, sale), (0, b"\x06"), (1, journal), (0, first[:2]), (1, b"\x11"), (0, first[2:])))
