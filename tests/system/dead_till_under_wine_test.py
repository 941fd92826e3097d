#!/usr/bin/env python3
"""The printer for Windows is freed of a till whose machine has gone away without a word.

    dead_till_under_wine_test.py PRINTER_PROGRAM

The till is a program of this system, where the administrator may close a socket silently; no program under Wine may.
The printer asks after five seconds of silence, and this machine then answers that there is no till. Exit code 77 when
this user may not do that.
"""
import fcntl
import socket
import struct
import subprocess
import sys
import termios
import time
import types

from till import Till

TCP_REPAIR = 19
LEAST_SILENCE = 3  # of the five seconds some may have passed before the till goes
NOT_ALLOWED = 77


def is_acknowledged(connection):
    """By the other machine: a late acknowledge would find no till, and end the connection at once."""
    waiting = fcntl.ioctl(connection, termios.TIOCOUTQ, struct.pack("i", 0))
    return struct.unpack("i", waiting) == (0,)


def vanish(till):
    while not is_acknowledged(till.socket):
        time.sleep(0.01)
    try:
        till.socket.setsockopt(socket.IPPROTO_TCP, TCP_REPAIR, 1)
    except PermissionError:
        print("skipped: this user may not close a socket silently", file=sys.stderr)
        sys.exit(NOT_ALLOWED)
    till.socket.close()


def main():
    with subprocess.Popen(["wine", sys.argv[1], "--listen", "127.0.0.1:0", "--second", "wait"], stdout=subprocess.PIPE,
                          stdin=subprocess.DEVNULL, text=True) as program:
        try:
            printer = types.SimpleNamespace(address=program.stdout.readline().split()[-1])
            dead = Till(printer)
            assert dead.fetch(0x92, "DAY") == b"closed\r\n"
            vanish(dead)
            gone = time.monotonic()
            assert Till(printer).fetch(0x92, "DAY") == b"closed\r\n"
            assert time.monotonic() - gone > LEAST_SILENCE, "the connection ended before the printer asked"
        finally:
            program.kill()


main()
