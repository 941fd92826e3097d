"""The connection to a printer, and every function of the library by its name."""
import ctypes
import time
import typing
import weakref

from . import texts
from .arguments import converted
from .failures import Failure, closed, failure_of
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
    """A printer that is connected until close(), or until the end of `with`. A program has one at a time. A session that is closed
    sends nothing: its calls raise NotExecuted, also while another one is open.

    address     "192.168.1.10:9100", or "COM3" for a serial port
    device      the printer's own address, whose low byte is sent
    questions   how the printer calls what a receipt asks for, all of it, or None if it cannot be asked
    library     where the library is; see telvofm.library.load

    Raises LibraryError when there is no library that fits, RuntimeError while another session is open, TextError for an address that
    Windows-1250 cannot hold, ValueError for questions of which some are missing, and NotExecuted when no printer answers.
    """

    _open_one = None

    def __init__(self, address, device=1, questions=Questions(), library=None):
        self.address, self.device, self.questions = address, device, questions
        if questions and not all(questions):
            raise ValueError("some of the printer's names are missing in questions; give all of them, or None")
        self.begun_last = None  # which receipt the printer has open, if it has one of this session's
        self.library = load(library)
        if Session._open_one is not None:
            raise RuntimeError(f"a session with {Session._open_one.address} is open, and a program has one at a time; close it first")
        Session._open_one = self
        try:
            self._connect()
        except BaseException:
            Session._open_one = None
            raise

    def _connect(self):
        try:
            self.call("openFM", self.address)
        except Failure:
            self.library.closeFM()  # due after a failed open, too
            raise

    @property
    def is_open(self):
        """Whether close() has not been called yet; a session whose reopen() failed is still open."""
        return Session._open_one is self

    def reopen(self):
        """Closes the connection and opens it again. The library forgets the settings and pictures of the session. Raises NotExecuted
        when the printer does not answer, or when this session is closed: another one's connection is not touched."""
        if not self.is_open:
            raise closed("openFM")
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

        A str goes out in Windows-1250, a pathlib.Path as the system's own name of a file. Returns the seconds that it took. Raises
        Refused, NotExecuted or OutcomeUnknown when it does not return 0; TextError for a text that cannot be sent, and TypeError for
        wrong arguments, a number that does not fit, a function that there is none of, and one that fills a buffer: nothing was sent
        then."""
        given = converted(function, arguments)
        if not self.is_open:
            raise closed(function)
        started = time.monotonic()
        code = getattr(self.library, function)(*given)
        seconds = time.monotonic() - started
        if code:
            raise failure_of(function, code, seconds)
        return seconds

    def read(self, function, *arguments):
        """The bytes that a function delivers into a result object, which is its last argument and left out here:
        read("getJournalStructZ_ResultObject", 1, 1, 20). The object is released whatever happens. Raises as call() does."""
        with _ResultObject(self.library) as result:
            self.call(function, *arguments, result)
            return result.data()

    def begin_day(self, sale_mode=0):
        """Opens the selling day; `sale_mode` is the printer's number. False when the printer refused, as it does when the day is open
        already. Raises NotExecuted or OutcomeUnknown otherwise."""
        try:
            self.call("sellingDayBegin", self.device, sale_mode)
        except Failure as failure:
            if failure.name != "refused":  # late or not: then an earlier try has opened it
                raise
            return False
        return True

    def variable(self, name):
        """The text of a variable of the printer's. Raises Refused when it has none of that name, and as call() does."""
        return texts.decode(self.read("getVariableResultObject", self.device, name))

    def last_receipt(self):
        """The text of the last receipt. Raises as call() does."""
        return texts.decode(self.read("getLastParagonResultObject", self.device))

    def journal(self):
        """The text of the whole electronic journal, of any length. Raises as call() does."""
        return texts.decode(self.read("getJournal_ResultObject", self.device))

    def receipt(self):
        """A receipt that is not begun yet; sends nothing."""
        from .receipt import Receipt
        return Receipt(self)

    def interrupted_receipt(self, number_before, total):
        """A receipt that a till left when it was switched off: call recover() on it. The number of the last receipt before it, a str as
        the printer gave it, and its total are those that the till kept; it counts as paid in full, unless that total is 0. Raises
        TypeError for a number that is no str, and AmountError for a total that is no Decimal or int, or has more than 2 decimals."""
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
