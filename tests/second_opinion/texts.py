"""How values appear on the wire and in the call log: numbers, fitted texts, and the two code pages."""
import math
import struct

SMALLEST = -2 ** 31


def double_of(bits):
    """The double with these sixteen hexadecimal digits."""
    return struct.unpack(">d", bytes.fromhex(bits))[0]


def not_finite(value):
    """As C prints what is no number: with its sign, which Python does not show of a NaN."""
    sign = b"-" if math.copysign(1.0, value) < 0 else b""
    return sign + (b"nan" if value != value else b"inf")


def fixed(value, decimals):
    if not math.isfinite(value):
        return not_finite(value)
    return b"%.*f" % (decimals, value)


def fixed_or_zero(value, decimals):
    """A zero of either sign is the one character; a NaN equals nothing, zero neither."""
    return b"0" if value == 0.0 else fixed(value, decimals)


def short(value):
    """A stream's own notation with six significant digits."""
    if not math.isfinite(value):
        return not_finite(value)
    return b"%g" % value


def short_or_empty(value):
    """Nothing below zero; a zero of either sign is exactly zero."""
    if value < 0.0:
        return b""
    return b"0" if value == 0.0 else short(value)


def truncated(value):
    """Towards zero; what a 32-bit integer cannot hold becomes the smallest one, as on the target's processor."""
    if not math.isfinite(value):
        return SMALLEST
    whole = int(value)
    return whole if SMALLEST <= whole < -SMALLEST else SMALLEST


def decimal(value):
    return b"%d" % value


def fitted(text, length):
    """Exactly so many bytes: cut, or filled up with blanks."""
    return (text + b" " * length)[:length]


def padded(name):
    """A name on two lines of 40 in all; a longer one stays as it is."""
    return name.ljust(40)


def code_pages():
    """Windows-1250 to code page 852 where both have the character, and back."""
    there = list(range(256))
    back = list(range(256))
    entries = 0
    for byte in range(0x80, 0x100):
        try:
            other = bytes([byte]).decode("cp1250").encode("cp852")[0]
        except UnicodeError:
            continue
        there[byte], back[other] = other, byte
        entries += 1
    assert entries == 99, entries
    return bytes(there), bytes(back)


OUTGOING, INCOMING = code_pages()
