"""Monochrome bitmap files, and the layouts that a printer wants of them."""
import random
import struct


def bitmap_file(width, height, rows, bits=1):
    """`rows` from the top, each of `width` pixels; only the number of colours matters in one of many bits."""
    stride = (width * bits + 31) // 32 * 4
    data = bytearray()
    for row in reversed(rows):
        line = bytearray(stride)
        if bits == 1:
            for x, pixel in enumerate(row):
                line[x // 8] |= pixel << (7 - x % 8)
        data += line
    palette = bytes((0, 0, 0, 0, 255, 255, 255, 0)) if bits == 1 else b""
    start = 54 + len(palette)
    return (b"BM" + struct.pack("<IHHI", start + len(data), 0, 0, start) +
            struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, 0, len(data), 0, 0, 0, 0) + palette + bytes(data))


def draw_pictures(folder, seed):
    """Writes the bitmap files that calls may name; their pixels by name, or None where there are too many colours."""
    draw = random.Random(seed)
    pictures = {}
    for number, (width, height) in enumerate([(12, 10), (1, 1), (8, 8), (9, 17), (33, 7), (100, 60), (257, 3), (64, 40)]):
        rows = [[draw.getrandbits(1) for _ in range(width)] for _ in range(height)]
        pictures[f"{number}.bmp"] = rows
        (folder / f"{number}.bmp").write_bytes(bitmap_file(width, height, rows))
    pictures["colours.bmp"] = None
    (folder / "colours.bmp").write_bytes(bitmap_file(5, 4, [[0] * 5] * 4, bits=24))
    return pictures


def packed(dots):
    """Eight dots a byte, the first in the highest bit."""
    return bytes(sum(dot << (7 - place) for place, dot in enumerate(dots[start:start + 8]))
                 for start in range(0, len(dots), 8))


def layouts(rows, inverse):
    """What the tables A, B, C and D keep of a picture."""
    height, width = len(rows), len(rows[0])
    wide, high = (width + 7) // 8, (height + 7) // 8

    def dot(x, y):
        is_blank = x >= width or y >= height or rows[y][x] == 1
        return inverse if is_blank else 1 - inverse

    lines = [packed([dot(x, y) for x in range(8 * wide)]) for y in range(8 * high)]
    columns = [packed([dot(x, y) for y in range(8 * high)]) for x in range(8 * wide)]
    raster = bytes((wide % 256, 0, (height + 7) % 256, 0)) + b"".join(lines)
    bands = bytes((width % 256, 0, high % 256, 0)) + bytes(
        columns[x][band] for band in range(high) for x in range(width))
    upright = bytes((wide % 256, 0, high % 256, 0)) + b"".join(columns)
    return {"A": raster, "B": bands, "C": upright, "D": upright}
