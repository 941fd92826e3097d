"""What ctypes is given for the arguments of a function. By itself it cuts numbers to the bytes that fit: 4294968546 would be 1250."""
import ctypes
import os

from . import raw, texts

_BYTES_OF_WHOLE_NUMBERS = {ctypes.c_int16: 2, ctypes.c_int32: 4, ctypes.c_int64: 8}


def converted(function, arguments):
    """The arguments of a function of telvofm.h. Raises TypeError for a function that there is none of or that fills a buffer, and for
    wrong arguments; TextError for a text that cannot be sent."""
    if function not in raw.FUNCTIONS:
        raise TypeError(f"telvofm.h has no function {function}")
    kinds = raw.FUNCTIONS[function][1]
    if any(kind in (raw.Buffer, raw.Count) for kind in kinds):
        raise TypeError(f"{function} fills a buffer, and one that is too short ends the process; use its twin for result objects, "
                        "or telvofm.raw if it has none")
    if len(arguments) != len(kinds):
        raise TypeError(f"{function} takes {len(kinds)} arguments and was given {len(arguments)}")
    return [_converted(function, number, argument, kind) for number, (argument, kind) in enumerate(zip(arguments, kinds), 1)]


def _converted(function, number, argument, kind):
    def wrong(what):
        return TypeError(f"argument {number} of {function} is {what}; {argument!r} is none")

    if kind is ctypes.c_char_p:
        return _text(argument, wrong)
    if kind is ctypes.c_char:
        letter = _text(argument, wrong)
        if letter is None or len(letter) != 1:
            raise wrong("one character")
        return letter
    if kind is ctypes.c_uint8:
        if not isinstance(argument, int):
            raise wrong("a truth")
        return int(bool(argument))
    if kind is ctypes.c_double:
        if isinstance(argument, bool) or not isinstance(argument, (int, float)):
            raise wrong("an int or a float")
        return float(argument)
    if kind is ctypes.c_uint32:
        return _whole_number(argument, 0, 2 ** 32 - 1, wrong)
    if kind in _BYTES_OF_WHOLE_NUMBERS:
        limit = 2 ** (8 * _BYTES_OF_WHOLE_NUMBERS[kind] - 1)
        return _whole_number(argument, -limit, limit - 1, wrong)
    return argument  # bytes without an end, and results


def _text(argument, wrong):
    if isinstance(argument, os.PathLike):
        return texts.encode_path(argument)
    if isinstance(argument, str):
        return texts.encode(argument)
    if isinstance(argument, bytes):
        return texts.encode(texts.decode(argument))  # refuses a NUL
    if argument is not None:
        raise wrong("a text")
    return None


def _whole_number(argument, least, most, wrong):
    if isinstance(argument, bool) or not isinstance(argument, int) or not least <= argument <= most:
        raise wrong(f"a whole number from {least} to {most}")
    return argument
