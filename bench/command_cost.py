#!/usr/bin/env python3
"""What the cheapest command costs the printer's process over TCP, its system calls included: what trace_cost says is to
be held against it.

    command_cost.py PRINTER-PROGRAM [COMMANDS]
"""
import os
import pathlib
import socket
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "testing"))
from telvofm_printer import FiscalPrinter  # noqa: E402

HARMLESS = b"\x1c\x01\xe0\x04\xf9"  # printJobCancel


def processor_seconds(process):
    fields = pathlib.Path(f"/proc/{process}/stat").read_text(encoding="ascii").rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def main():
    commands = int(sys.argv[2]) if len(sys.argv) > 2 else 50_000
    with FiscalPrinter(program=sys.argv[1]) as printer:
        host, port = printer.address.rsplit(":", 1)
        with socket.create_connection((host, int(port))) as till:
            till.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            before, start = processor_seconds(printer._process.pid), time.monotonic()
            for _ in range(commands):
                till.sendall(HARMLESS)
                till.recv(1)
            seconds, lasted = processor_seconds(printer._process.pid) - before, time.monotonic() - start
    print(f"a command over TCP {1e9 * seconds / commands:.0f} ns of processor, {commands / lasted:.0f} commands/s")


main()
