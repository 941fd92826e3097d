"""Makes the seeds of the bitmap fuzzer that differ in their headers. Run it in this folder after a change."""
import struct


def write(name, description_size, width, height, depth=1, gap=0, compression=0, palette=(0, 0xFFFFFF)):
    stride = (width * depth + 31) // 32 * 4
    if description_size == 12:
        description = struct.pack("<IHHHH", 12, width, height, 1, depth)
        colour_size = 3
    else:
        description = struct.pack("<IiiHHI", description_size, width, height, 1, depth, compression)
        description = description.ljust(description_size, b"\x00")
        colour_size = 4
    palette = b"".join(colour.to_bytes(colour_size, "little") for colour in palette)
    rows = bytes(31 * i % 251 for i in range(stride * abs(height)))
    offset = 14 + len(description) + len(palette) + gap
    with open("bitmap_reader_seeds/" + name, "wb") as file:
        file.write(b"BM" + struct.pack("<IHHI", offset + len(rows), 0, 0, offset))
        file.write(description + palette + bytes(gap) + rows)


write("core_12x10.bmp", 12, 12, 10)
write("from_top_33x3.bmp", 40, 33, -3)
write("version_4_9x5.bmp", 108, 9, 5)
write("version_5_gap_8x8.bmp", 124, 8, 8, gap=13)
write("compressed_8x2.bmp", 40, 8, 2, compression=1)
write("white_first_8x2.bmp", 40, 8, 2, palette=(0xFFFFFF, 0))
write("red_first_8x2.bmp", 40, 8, 2, palette=(0xFF0000, 0xFFFFFF))
