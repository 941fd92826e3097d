"""Texts as the library takes them: bytes in Windows-1250. There is no other conversion in this package."""
import os
import sys
import unicodedata

from .failures import TextError
from .windows_1250 import UPPER_HALF

_CHARACTERS = "".join(map(chr, range(0x80))) + UPPER_HALF
_BYTES = {character: byte for byte, character in enumerate(_CHARACTERS)}


def encode(text):
    """The bytes of a text. Raises TextError for a NUL and for any character that Windows-1250 lacks; says which and where."""
    for position, character in enumerate(text):
        if character == "\0":
            raise TextError(f"a NUL stands at position {position} of {text!r}; the printer would never see what follows it",
                            character, position)
        if character not in _BYTES:
            name = unicodedata.name(character, "a character without a name")
            raise TextError(f'"{character}" (U+{ord(character):04X}, {name}) at position {position} of {text!r} is not in '
                            "Windows-1250; write it another way", character, position)
    return bytes(map(_BYTES.__getitem__, text))


def decode(data):
    """The text of any bytes: all 256 have a character, and encode() gives back the same bytes, but for a NUL."""
    return "".join(map(_CHARACTERS.__getitem__, data))


def letter(text):
    """A text of one character, which is all that the printer has for a VAT rate: the library would send the first one. Raises TextError."""
    if len(text) != 1:
        raise TextError(f"a VAT rate is one letter, and {text!r} is none", text[1:2], len(text[:1]))
    return text


def encode_path(path):
    """The name of a file, which is the system's matter and not the printer's. Raises TextError for a NUL."""
    encoded = os.fspath(path).encode("mbcs", "strict") if sys.platform == "win32" else os.fsencode(path)
    if b"\0" in encoded:
        raise TextError(f"a NUL stands in the name {path!r}", "\0", encoded.index(b"\0"))
    return encoded
