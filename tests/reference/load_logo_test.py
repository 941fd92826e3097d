#!/usr/bin/env python3
"""The example of docs/graphics.md loads the picture that the page describes, and the printer is sent the columns that stand
there; it fails in one sentence.

    load_logo_test.py SOURCE_FOLDER BUILD_FOLDER
"""
import pathlib
import re
import struct
import subprocess
import sys
import tempfile


def bitmap(rows, width):
    """A BMP file of rows of bits, from the top; its palette is black and white."""
    size = (width + 31) // 32 * 4
    pixels = b"".join((row << (8 * size - width)).to_bytes(size, "big") for row in reversed(rows))
    description = struct.pack("<IiiHHIIiiII", 40, width, len(rows), 1, 1, 0, len(pixels), 0, 0, 2, 2)
    palette = bytes([0, 0, 0, 0, 255, 255, 255, 0])
    return struct.pack("<2sIHHI", b"BM", 62 + len(pixels), 0, 0, 62) + description + palette + pixels


def columns_of(page):
    """What the page says is uploaded for its picture."""
    digits, zeros = re.search(r"^columns +([0-9A-F ]+?)(?: +and (\d+) bytes 00)$", page, re.MULTILINE).groups()
    return bytes.fromhex(digits) + bytes(int(zeros))


def main():
    source, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    sys.path.insert(0, str(source / "testing"))
    from telvofm_printer import FiscalPrinter

    expected = columns_of((source / "docs/graphics.md").read_text(encoding="utf-8"))
    with tempfile.TemporaryDirectory() as folder, FiscalPrinter(program=str(build / "telvofm-printer")) as printer:
        # 12 x 10, top row and left column set, everything else clear.
        pathlib.Path(folder, "logo.bmp").write_bytes(bitmap([0xFFF] + 9 * [0x800], 12))

        def load(file):
            return subprocess.run([str(build / "load_logo_c"), printer.address, file], cwd=folder, capture_output=True, text=True, check=False)

        loaded = load("logo.bmp")
        sent = [bytes.fromhex(exchange["fromTill"]) for exchange in printer.trace() if exchange["name"] == "block"]
        if loaded.returncode != 0 or len(sent) != 1 or expected not in sent[0]:
            sys.exit(f"it ends with {loaded.returncode}, says {loaded.stdout}{loaded.stderr} and sends {sent}, the page has {expected}")
        printer.expect(executed=[{"name": "loadGHNV", "count": 1}])
        missing = load("missing.bmp")
        if missing.returncode != 1 or missing.stderr != "the logo is not loaded: code -10201\n":
            sys.exit(f"without a file it ends with {missing.returncode} and says {missing.stderr!r}")
    print("the page's picture is loaded")


main()
