"""Makes the seeds of the logo layouts' fuzzer. Run it in this folder after a change."""
import pathlib
import struct


def seed(width, height, dots, inverse=0):
    return struct.pack("<BHB", inverse, width - 1, height) + dots


seeds = {
    "one_dot": seed(1, 1, b"\x01"),
    "one_tile": seed(8, 8, b"\x80\x40\x20\x10\x08\x04\x02\x01"),
    "twelve_by_ten": seed(12, 10, bytes(range(1, 16))),
    "inverse": seed(12, 10, bytes(range(1, 16)), 1),
    "one_column": seed(1, 65, b"\xa5\x0f\xf0"),
    "wide": seed(1000, 1, b"\x01\x03\x07\x0f"),
    "blocks_of_tiles": seed(15, 64, b"\x0f\xf1\x02\x40\x33"),
    "without_height": seed(12, 0, b""),
    "clear": seed(16, 16, b""),
}
folder = pathlib.Path("logo_layouts_seeds")
folder.mkdir(exist_ok=True)
for name, content in seeds.items():
    (folder / name).write_bytes(content)
