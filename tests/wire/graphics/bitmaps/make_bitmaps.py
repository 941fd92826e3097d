"""Makes the bitmap files of this folder, rows from the bottom. Those that are to be read have one bit per pixel and the palette
black and white, so that the loaders of all platforms read them alike. Run it in this folder after a change."""
import struct


BLACK_AND_WHITE = b"\x00\x00\x00\x00\xff\xff\xff\x00"
RED_AND_WHITE = b"\x00\x00\xff\x00\xff\xff\xff\x00"


def write(name, width, height, is_set, depth=1, palette=BLACK_AND_WHITE):
    stride = (width * depth + 31) // 32 * 4
    rows = b""
    for y in reversed(range(height)):
        bits = 0
        for x in range(width):
            pixel = is_set(x, y) * ((1 << depth) - 1)
            bits |= pixel << (stride * 8 - (x + 1) * depth)
        rows += bits.to_bytes(stride, "big")
    offset = 14 + 40 + len(palette)
    with open(name, "wb") as file:
        file.write(b"BM" + struct.pack("<IHHI", offset + len(rows), 0, 0, offset))
        file.write(struct.pack("<IiiHHIIiiII", 40, width, height, 1, depth, 0, len(rows), 2835, 2835, 0, 0))
        file.write(palette + rows)


write("corner_12x10.bmp", 12, 10, lambda x, y: x == 0 or y == 0)
write("set_1x1.bmp", 1, 1, lambda x, y: True)
write("clear_1x1.bmp", 1, 1, lambda x, y: False)
write("clear_257x1.bmp", 257, 1, lambda x, y: False)
write("clear_252x8.bmp", 252, 8, lambda x, y: False)
write("colour_4x4.bmp", 4, 4, lambda x, y: x == y, depth=24, palette=b"")
write("red_4x4.bmp", 4, 4, lambda x, y: x == y, palette=RED_AND_WHITE)
