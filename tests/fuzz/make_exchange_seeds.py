"""Makes the seeds of the exchange fuzzer. Run it in this folder after a change."""
import pathlib

from wire_units import block, request

ACCEPTED, LAST, MORE, DAMAGED, PROBE = b"\x06", b"\x03", b"\x17", b"\x15", b"\x11"


item = request(0x24, b"1", b"Chlieb", b"1.50", b"A", b"1.000", b"1.50", b"ks ")
upload = request(0xD1, b"1", b"000000000000", b"0")
query = request(0x92, b"", b"TOTALVATAB")  # its reply has two blocks
seeds = {
    "sale": request(0x29, b"0") + item + request(0x22, b"0", b"0"),
    "noise_and_probe": b"noise:\x01" + PROBE + item,
    "damaged_request": item[:-1] + b"\x00" + item,
    "half_request": item[:9] + item + item,
    "upload": upload + block(b"x" * 256, MORE) + block(b"y", LAST),
    "repeated_block": upload + block(b"xy", LAST) * 2 + block(b"xz", LAST) + item + block(b"xy", LAST),
    "damaged_block": upload + block(b"xy", LAST)[:-1] + b"\x00" + block(b"xy", LAST),
    "unknown_terminator": upload + block(b"xy", b"\x05"),
    "unannounced_block": request(0xE0) + block(b"xy", LAST) + item,
    "reply": query + ACCEPTED + LAST,
    "repeated_reply": query + DAMAGED + DAMAGED + ACCEPTED + DAMAGED * 3,
    "reply_given_up": query + item + ACCEPTED,
}
folder = pathlib.Path("exchange_seeds")
folder.mkdir(exist_ok=True)
for name, content in seeds.items():
    (folder / name).write_bytes(content)
