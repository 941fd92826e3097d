"""The room of the library that the samples of mutation and of coverage look at: the sources of device/ that need no printer, all of
which one test program covers."""
import pathlib

ROOM, PROGRAM = "device", "device_test"
DRAWN = {"RC_PARAMS": "seed=17"}  # the random values of its properties: the same ones each time
OF_A_PRINTER = ("device.cpp", "reply_file.cpp")  # tested through the exports
TOP = pathlib.Path(__file__).resolve().parent.parent


def sources():
    """Those of this platform, as the names of the library's files are given."""
    return [f"{ROOM}/{path.name}" for path in sorted((TOP / ROOM).glob("*.cpp"))
            if path.name not in OF_A_PRINTER and not path.stem.endswith("_win32")]
