"""Finds and loads the library, and says in one sentence why that did not work."""
import ctypes
import os
import pathlib
import struct
import sys

from .failures import LibraryError
from .raw import FUNCTIONS

VERSION = 106  # of the interface
_NAMES = ["telvofm.dll"] if sys.platform == "win32" else ["libtelvofm.so.1", "libtelvofm.so"]
_loaded = {}


def load(path=None):
    """The library at `path`, or else the one that the variable TELVOFM_LIBRARY names, that lies beside this package, or that the
    system finds under its usual name. Each is loaded once."""
    if struct.calcsize("P") != 8:
        raise LibraryError("TelvoFM is a 64-bit library and this is a 32-bit Python; install a 64-bit Python")
    path = os.fspath(path) if path else os.environ.get("TELVOFM_LIBRARY")
    names = [path] if path else _usual_names()
    for name in names:
        if name not in _loaded:
            _loaded[name] = _checked(name, is_last=name == names[-1])
        if _loaded[name]:
            return _loaded[name]
    raise AssertionError("the last name is found or refused")


def _usual_names():
    folder = pathlib.Path(__file__).resolve().parent
    return [str(folder / name) for name in _NAMES if (folder / name).exists()] + _NAMES


def _checked(name, is_last):
    try:
        library = ctypes.CDLL(name)
    except OSError as error:
        if not is_last:
            return None
        raise LibraryError(f"{name} cannot be loaded ({error}); put the 64-bit TelvoFM library there, or let TELVOFM_LIBRARY name it") from None
    try:
        for function, (result, arguments) in FUNCTIONS.items():
            exported = getattr(library, function)
            exported.restype, exported.argtypes = result, arguments
    except AttributeError:
        raise LibraryError(f"{name} is not this TelvoFM: it has no function {function}; let TELVOFM_LIBRARY name the right library") from None
    if library.getVersion() != VERSION:
        raise LibraryError(f"{name} has version {library.getVersion()} of the interface, and this package needs {VERSION}; "
                           "take both from the same release")
    return library
