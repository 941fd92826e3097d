#!/usr/bin/env python3
"""Runs the program that tests the layer of its language where the demo receipt does not come, on a printer of its own; program.py
says what the arguments are. The program prints what is wrong and ends with 1 then; what it has sent is looked at here.
"""
import sys

from program import Ended, FiscalPrinter, command, printer_program

with FiscalPrinter(program=printer_program) as printer:
    ended = Ended(command, printer.address)
    if ended.code != 0:
        sys.exit(f"The program {ended}")
    printer.expect(executed=[
        {"name": "setHeader", "fields": {"rowNumber": "1", "text": "Potraviny Šťastný"}, "count": 1},
        {"name": "freeID", "fields": {"print": "1", "freeID": "ž"}, "count": 1},
        {"name": "printReport", "fields": {"reportType": "X"}, "count": 1},
        {"name": "paragonEnd", "count": 3},
        {"name": "destroyParagon", "count": 2},
    ])
