"""Makes the seeds of the block receiver's fuzzer. Run it in this folder after a change."""
import pathlib

from wire_units import block

TCP, SERIAL = 0, 1
STRICT, REPAIRED = 2, 4
MORE, LAST, END, REFUSED = b"\x17", b"\x03", b"\x04", b"\x15\x07"


def damaged(data, terminator):
    return block(data, terminator)[:-1] + b"\x00"


def seed(flags, first, second=b"", third=b""):
    return bytes([flags, len(second)]) + second + bytes([len(third)]) + third + first


two = block(b"x" * 256, MORE) + block(b"text", LAST)
seeds = {
    "reply": seed(TCP, two),
    "serial_reply_behind_noise": seed(SERIAL, b"\x00\x06noise" + two),
    "strict": seed(SERIAL | STRICT, b"\x00" + two),
    "noise_between": seed(TCP, block(b"a", MORE) + b"\x06\x15xy" + block(b"b", LAST)),
    "ends_between": seed(TCP, block(b"a", MORE) + END),
    "nothing": seed(TCP, END),
    "refused": seed(TCP, REFUSED),
    "refused_three_times": seed(SERIAL, REFUSED, REFUSED, b"\x15\x08"),
    "refused_and_then_answered": seed(SERIAL, REFUSED, REFUSED, block(b"a", LAST)),
    "silent_and_then_answered": seed(TCP, b"", b"", block(b"a", LAST)),
    "damaged_once": seed(TCP, damaged(b"ab", LAST) + block(b"ab", LAST)),
    "damaged_three_times": seed(TCP, damaged(b"ab", LAST) * 3 + b":"),
    "given_up": seed(TCP, block(b"a", MORE) + damaged(b"ab", LAST) + END),
    "unknown_terminator": seed(SERIAL, block(b"a", b"\x05") + block(b"a", LAST)),
    "broken_off": seed(TCP, two[:40]),
    "repaired": seed(TCP | REPAIRED, b":\x01ab\x17?:\x01cd\x05?:\x00e\x03?"),
}
folder = pathlib.Path("block_receiver_seeds")
folder.mkdir(exist_ok=True)
for name, content in seeds.items():
    (folder / name).write_bytes(content)
