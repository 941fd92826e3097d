"""Reads the one table of Windows-1250."""
import json


def read_characters(path):
    """The code points of the bytes 0x80 to 0xFF; those below are ASCII."""
    points = [int(text, 16) for row in json.loads(path.read_text(encoding="utf-8"))["upperHalf"] for text in row.split()]
    if len(points) != 128 or len(set(points)) != 128:
        raise ValueError(f"{path.name} has {len(set(points))} different characters for the 128 bytes from 0x80 on")
    return points


def rows(points, write, per_row=8):
    """The table in lines of the language, each character as `write` writes it."""
    return [", ".join(write(point) for point in points[start:start + per_row]) for start in range(0, len(points), per_row)]
