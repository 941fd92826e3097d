"""Makes the seeds of the exports' fuzzer: every export once, four to a seed, with a printer that accepts, replies,
refuses, falls silent or breaks; and what tills do. Run it in this folder after a change, also of the table."""
import pathlib
import re
import struct

sources = pathlib.Path("../..")
entries = re.findall(r'TELVOFM_ENTRY\((\w+),\s*((?:"[^"]*"\s*)+)\)',
                     (sources / "tools/export_table_entries.inc").read_text())
NAMES = [name for name, _ in entries]
types = {name: (arguments.split(",") if arguments.strip() not in ("", "void") else [])
         for name, arguments in re.findall(r"^TELVOFM_API [\w \*]*?(\w+)\(([^)]*)\)", (sources / "api/telvofm.h").read_text(), re.M)}
TCP, SERIAL = b"\x00", b"\x01"
ACCEPT = b"\x04\x00"
REFUSE = b"\x04\x01\x07"
REPLY = b"\x04\x02\x04text\x00"
LONG_REPLY = b"\x04\x02\x04more\x01" + REPLY
SILENCE, BREAK, TROUBLE, THROW = b"\x00\xff\xff", b"\x01\x00", b"\x02\x07", b"\x03"
FILES = ("path", "fileName", "filePath", "journalFile", "portName")


def text(value):
    return bytes([len(value)]) + value


def argument(kind, name, before):
    if "*" in kind:
        if name in FILES:
            return b"\x00"
        is_filled = "const" not in kind or "ResultObject" in kind
        return b"" if is_filled or name == "marker" else text(b"1")
    if "*" in before and name.endswith(("Size", "count")):
        return struct.pack("<H", 16) if name == "count" and "const" not in before else b""
    return {"double": struct.pack("<d", 1.5), "char": b"A", "bool": b"\x01"}.get(kind, struct.pack("<i", 1))


def call(name, *events, arguments=None):
    given, before = b"", ""
    for declared in types[name]:
        kind, parameter = re.fullmatch(r"\s*(.*?)\s*(\w+)\s*", declared).groups()
        given += argument(kind, parameter, before)
        before = kind
    return bytes([NAMES.index(name)]) + (given if arguments is None else arguments) + bytes([len(events)]) + b"".join(events)


ENDINGS = {"accept": [ACCEPT], "reply": [LONG_REPLY], "refuse": [REFUSE], "silence": [SILENCE] * 3 + [ACCEPT],
           "break": [TROUBLE, BREAK], "throw": [THROW]}
seeds = {}
for first in range(0, len(NAMES), 4):
    ending = list(ENDINGS)[first // 4 % len(ENDINGS)]
    link = "tcp" if first // 4 % 2 == 0 else "serial"
    seeds[f"{link}_{ending}_{first:03}"] = (TCP if link == "tcp" else SERIAL) + b"".join(
        call(name, *ENDINGS[ending]) for name in NAMES[first:first + 4])
receipt = [call(name, ACCEPT) for name in ("paragonBegin", "itemSale", "payment", "paragonEnd")]
seeds["receipt"] = TCP + b"".join(receipt)
seeds["receipt_on_a_serial_line"] = SERIAL + b"".join(receipt)
seeds["questions"] = TCP + b"".join(call(name, REPLY) for name in ("getVariable", "getVariableResultObject", "getVariableStr", "getJournal"))
seeds["picture"] = TCP + call("prepareGraphicHeader") + call("loadGHMMC", ACCEPT, ACCEPT) + call("loadGHNV", ACCEPT, ACCEPT)
seeds["sessions"] = TCP + b"".join(call(name, ACCEPT) for name in ("openFM", "printJobCancel", "openFMBaud", "openFMStopBit"))
folder = pathlib.Path("exports_seeds")
folder.mkdir(exist_ok=True)
for name, content in seeds.items():
    (folder / name).write_bytes(content)
