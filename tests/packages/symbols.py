"""Whether a debugger takes a file of symbols for those of a library."""
import pathlib
import tempfile
import zlib

from installed_sale import run


def wrong_symbols(objcopy, library, symbols):
    """Debuggers look for the name that the library holds, and compare the sum beside it with that of the file they find."""
    with tempfile.TemporaryDirectory() as folder:
        link = pathlib.Path(folder, "link")
        run(objcopy, "--dump-section", f".gnu_debuglink={link}", library, pathlib.Path(folder, "copy"))
        held = link.read_bytes()
    name, crc = held.split(b"\0", 1)[0].decode(), int.from_bytes(held[-4:], "little")
    content = symbols.read_bytes()
    if name != symbols.name or crc != zlib.crc32(content):
        return [f"{symbols.name} is not {name} of {library.name}, whose sum is {crc:x}"]
    return [] if b"itemSale" in content else [f"{symbols.name} knows no itemSale"]
