#!/usr/bin/env python3
"""Runs the program that tests the layer of its language where the demo receipt does not come, on a printer of its own; program.py
says what the arguments are. The program prints what is wrong and ends with 1 then; what it has sent is looked at here.
"""
import pathlib
import sys
import tempfile

from program import Ended, FiscalPrinter, command, printer_program

with FiscalPrinter(program=printer_program) as printer, tempfile.TemporaryDirectory() as folder:
    printer.arm("acknowledgeLost", command="sellingDayBegin")
    printer.arm("acknowledgedNotExecuted", command="paragonEnd", fromCall=4)
    ended = Ended(command, printer.address, pathlib.Path(folder))
    if ended.code != 0:
        sys.exit(f"The program {ended}")
    if not (pathlib.Path(folder) / "žurnál.txt").exists():
        sys.exit(f"the file žurnál.txt has another name: {list(pathlib.Path(folder).iterdir())}")
    printer.expect(executed=[
        {"name": "setHeader", "fields": {"rowNumber": "1", "text": "Potraviny Šťastný"}, "count": 1},
        {"name": "freeID", "fields": {"print": "1", "freeID": "ž"}, "count": 1},
        {"name": "printReport", "fields": {"reportType": "X"}, "count": 1},
        {"name": "paragonEnd", "count": 4},
        {"name": "destroyParagon", "count": 3},
    ])
