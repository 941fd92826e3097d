"""The connection to a printer, and every function of the library by its name."""
import ctypes
import os
import time
import typing
import weakref

from . import raw, texts
from .failures import Refused, failure_of
from .library import load


class Questions(typing.NamedTuple):
    """The printer's own names of the variables that a receipt asks for. These are those of the virtual printer."""

    last_receipt: str = "LAST_RECEIPT"
    last_total: str = "LAST_TOTAL"
    state: str = "STATE"
    closed: str = "closed"  # what `state` is while no receipt is open
    total: str = "TOTAL"
    due: str = "DUE"


class Session:
    """A printer that is connected until close(), or until the end of `with`. A program has one at a time.

    address     "192.168.1.10:9100", or "COM3" for a serial port
    device      the printer's own address
    questions   how the printer calls what a receipt asks for, or None if it cannot be asked
    library     where the library is; see telvofm.library.load
    """

    _open_one = None

    def __init__(self, address, device=1, questions=Questions(), library=None):
        self.address, self.device, self.questions = address, device, questions
        self.library = load(library)
        self._connect()

    def _connect(self):
        if Session._open_one not in (None, self):
            raise RuntimeError(f"a session with {Session._open_one.address} is open, and a program has one at a time; close it first")
        try:
            self.call("openFM", self.address)
        except Exception:
            self.library.closeFM()  # due after a failed open, too
            Session._open_one = None
            raise
        Session._open_one = self

    def reopen(self):
        """Closes the connection and opens it again. The library forgets the settings and pictures of the session."""
        self.library.closeFM()
        self._connect()

    def close(self):
        """Closes the connection; does nothing when it is closed."""
        if Session._open_one is self:
            self.library.closeFM()
            Session._open_one = None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def call(self, function, *arguments):
        """Calls a function of telvofm.h that returns 0 or a code, with its arguments: call("setHeader", 1, "0000", 1, "Potraviny").

        A str goes out in Windows-1250, a pathlib.Path as the system's own name of a file. Returns the seconds that it took."""
        types = raw.FUNCTIONS[function][1]
        if any(kind in (raw.Buffer, raw.Count) for kind in types):
            raise TypeError(f"{function} fills a buffer, and one that is too short ends the process; use its twin for result objects")
        converted = [_converted(argument, kind) for argument, kind in zip(arguments, types)]
        if len(arguments) != len(types):
            raise TypeError(f"{function} takes {len(types)} arguments and was given {len(arguments)}")
        started = time.monotonic()
        code = getattr(self.library, function)(*converted)
        seconds = time.monotonic() - started
        if code:
            raise failure_of(function, code, seconds)
        return seconds

    def read(self, function, *arguments):
        """The bytes that a function delivers into a result object, which is its last argument and left out here:
        read("getJournalStructZ_ResultObject", 1, 1, 20)."""
        with _ResultObject(self.library) as result:
            self.call(function, *arguments, result)
            return result.data()

    def begin_day(self, sale_mode=0):
        """Opens the selling day. False when the printer refused, as it does when the day is open already."""
        code = self.library.sellingDayBegin(self.device, sale_mode)
        failure = failure_of("sellingDayBegin", code, 0)  # late or not: then an earlier try has opened it
        if code != 0 and not isinstance(failure, Refused):
            raise failure
        return code == 0

    def variable(self, name):
        """The text of a variable of the printer's."""
        return texts.decode(self.read("getVariableResultObject", self.device, name))

    def last_receipt(self):
        """The text of the last receipt."""
        return texts.decode(self.read("getLastParagonResultObject", self.device))

    def journal(self):
        """The text of the whole electronic journal."""
        return texts.decode(self.read("getJournal_ResultObject", self.device))

    def receipt(self):
        """A receipt that is not begun yet."""
        from .receipt import Receipt
        return Receipt(self)

    def interrupted_receipt(self, number_before, total):
        """A receipt that a till left when it was switched off: call recover() on it."""
        from .receipt import Receipt
        return Receipt.interrupted(self, number_before, total)


class _ResultObject:
    """Bytes of any length, which the library holds until this object goes."""

    def __init__(self, library):
        self._library = library
        self._as_parameter_ = library.createResultObject()
        if not self._as_parameter_:
            raise MemoryError("the library has no memory for a result object")
        self._release = weakref.finalize(self, library.destroyResultObject, self._as_parameter_)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._release()

    def data(self):
        length = self._library.getResultObjectLength(self) & 0xFFFFFFFF  # the low 32 bits
        return ctypes.string_at(self._library.getResultObjectString(self), length)


def _converted(argument, kind):
    """An argument as ctypes takes it. A number for a text, or the other way round, is left for ctypes to refuse."""
    if isinstance(argument, os.PathLike) and kind is ctypes.c_char_p:
        return texts.encode_path(argument)
    if isinstance(argument, str):
        return texts.encode(argument)
    if isinstance(argument, bytes) and kind is ctypes.c_char_p:
        return texts.encode(texts.decode(argument))  # refuses a NUL
    return argument
