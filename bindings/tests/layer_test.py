#!/usr/bin/env python3
"""Runs the program that tests the layer of its language where the demo receipt does not come, on a printer of its own; program.py
says what the arguments are. The program prints what is wrong and ends with 1 then; what it has sent is looked at here, and that
each result object was released once, whatever had failed. For that counting_telvofm.c stands in front of the library, on Linux.
"""
import pathlib
import sys
import tempfile

from program import Ended, FiscalPrinter, build, command, library, printer_program

counting = build / "libcounting_telvofm.so"


def ended_in(folder, address):
    """The program, and what has become of its result objects."""
    if library.suffix == ".dll":
        return Ended(command, address, folder), None
    in_front, counts = folder / library.name, folder / "result_objects"
    in_front.symlink_to(counting)
    ended = Ended(command, address, folder, TELVOFM_LIBRARY=str(in_front), TELVOFM_RESULT_OBJECTS=str(counts))
    return ended, counts.read_text(encoding="ascii").split()


def check_result_objects(counts):
    _, created, _, released, _, wrong = counts
    if int(created) < 30 or released != created or wrong != "0":
        sys.exit(f"of the result objects: {' '.join(counts)}")


with FiscalPrinter(program=printer_program) as printer, tempfile.TemporaryDirectory() as name:
    place = pathlib.Path(name)
    printer.arm("acknowledgeLost", command="sellingDayBegin")
    printer.arm("acknowledgedNotExecuted", command="paragonEnd", fromCall=4)
    end, result_objects = ended_in(place, printer.address)
    if end.code != 0:
        sys.exit(f"The program {end}")
    if result_objects:
        check_result_objects(result_objects)
    if not (place / "žurnál.txt").exists():
        sys.exit(f"the file žurnál.txt has another name: {list(place.iterdir())}")
    printer.expect(executed=[
        {"name": "setHeader", "fields": {"rowNumber": "1", "text": "Potraviny Šťastný"}, "count": 1},
        # A truth is 1 whatever byte the language has for it; 0 is none.
        {"name": "freeID", "fields": {"print": "1", "freeID": "ščžťľ"}, "count": 3},
        {"name": "freeID", "fields": {"print": "0", "freeID": "ščžťľ"}, "count": 1},
        {"name": "printReport", "fields": {"reportType": "X"}, "count": 1},
        {"name": "paragonEnd", "count": 5},
        {"name": "destroyParagon", "count": 10},
    ])
