#!/usr/bin/env python3
"""Keeps the processors awake while something is measured that waits often.

    awake_processors.py COMMAND [ARGUMENT ...]

One that sleeps wakes late, in a virtual machine above all, and then the blocks of a journal and the bytes of a paced line
are late, too.
"""
import contextlib
import os
import subprocess
import sys

SPIN = ("import os, sys; os.sched_setaffinity(0, [int(sys.argv[1])]);"
        "os.sched_setscheduler(0, os.SCHED_IDLE, os.sched_param(0))\n"
        "while os.getppid() == int(sys.argv[2]):\n    for _ in range(100_000): pass")


@contextlib.contextmanager
def awake_processors():
    """Something of the lowest class for each processor to do, while nothing else is."""
    with contextlib.ExitStack() as spinning:
        for processor in os.sched_getaffinity(0):
            process = subprocess.Popen([sys.executable, "-c", SPIN, str(processor), str(os.getpid())])
            spinning.callback(process.wait)
            spinning.callback(process.kill)
        yield


def main():
    with awake_processors():
        run = subprocess.run(sys.argv[1:], check=False)
    sys.exit(run.returncode)


if __name__ == "__main__":
    main()
