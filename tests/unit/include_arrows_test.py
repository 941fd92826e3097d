#!/usr/bin/env python3
"""Keeps the direction of the includes: api -> commands, graphics -> device -> link."""
import pathlib
import re
import sys

# The rooms that each room may include from: itself and those below it.
ARROWS = {
    "api": {"api", "commands", "graphics", "device", "link"},
    "commands": {"commands", "device", "link"},
    "graphics": {"graphics", "device", "link"},
    "device": {"device", "link"},
    "link": {"link"},
    # The other end of the wire decodes with its own code.
    "virtual_printer": {"virtual_printer"},
}
# What the printer's end may share: constants.
ALLOWED = {"virtual_printer": {"device/command.h"}}

# The rooms of the virtual printer. What decides, what is written on paper and the table of commands know each
# other; sockets, database and answers are above them.
PRINTER_ARROWS = {
    "language": {"fiscal"},
    "fiscal": {"language", "paper"},
    "paper": {"fiscal"},
    "memory": {"fiscal"},
    "answers": {"language", "fiscal", "paper", "memory"},
    "trace": {"language", "fiscal"},
    "faults": {"language"},
    "printers": {"language", "fiscal", "paper", "memory", "answers", "trace", "faults"},
    "control": {"language", "fiscal", "paper", "memory", "printers", "trace", "faults"},
    "transport": {"printers", "faults", "control"},
    # The page knows how a request is answered, and nothing of the printers.
    "web": {"control"},
}
# Headers that one file or one room has for itself.
OWNERS = {"sqlite3.h": "virtual_printer/memory/database.cpp", "boost/asio": "virtual_printer/transport/",
          "boost/beast": "virtual_printer/transport/http_request_reader.cpp"}

ROOMS = set(ARROWS) | {"tools", "tests", "bench", "bindings"}
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.MULTILINE)


def wrong_includes(root):
    for room, targets in ARROWS.items():
        for path in sorted((root / room).rglob("*")):
            if path.suffix not in {".cpp", ".h", ".c"}:
                continue
            for target in INCLUDE.findall(path.read_text(encoding="utf-8")):
                other = target.split("/")[0]
                if other not in ROOMS or "/" not in target:
                    continue
                if other in targets or target in ALLOWED.get(room, set()):
                    continue
                yield f"{path.relative_to(root)} includes {target}"


def wrong_includes_of_the_printer(root):
    for room, targets in PRINTER_ARROWS.items():
        for path in sorted(path for path in (root / "virtual_printer" / room).iterdir() if path.is_file()):
            name = str(path.relative_to(root))
            for target in INCLUDE.findall(path.read_text(encoding="utf-8")):
                folders = target.split("/")
                if folders[0] == "virtual_printer" and len(folders) == 3 and folders[1] not in targets | {room}:
                    yield f"{name} includes {target}"
                for header, owner in OWNERS.items():
                    if target.startswith(header) and not name.startswith(owner):
                        yield f"{name} includes {target}"


def main():
    root = pathlib.Path(sys.argv[1])
    seen = sum(len(list((root / room).rglob("*.cpp"))) for room in ARROWS)
    if seen == 0:
        sys.exit("no sources found")
    wrong = [*wrong_includes(root), *wrong_includes_of_the_printer(root)]
    if wrong:
        sys.exit("\n".join(wrong))
    print(f"{seen} sources keep the direction")


main()
