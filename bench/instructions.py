#!/usr/bin/env python3
"""The instructions of one itemSale over TCP and on a serial line, of a journal of sixteen blocks and of a picture's layouts,
everything that they call included, held against those that are written down.

    instructions.py BUILD-FOLDER            fails when they differ by more than 3 %, or a sale's are more than 3,000
    instructions.py BUILD-FOLDER --write    writes them down anew
    instructions.py BUILD-FOLDER --beside   prints those of the bare loop of the same system calls, too

The system's own are not counted, so that the machine's load changes nothing. Another compiler makes other code:
with one that is not the one written down nothing is compared.
"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile

RECORD = pathlib.Path(__file__).with_name("instructions.json")
MOST = 3000  # with the call log off
TOLERANCE = 0.03
FEW, MANY = 200, 1200  # what is done once falls out of the difference
TAKES = {"log off": "with the log off a sale takes", "log on": "with the log on a sale takes",
         "serial": "on a serial line a sale takes", "journal": "a journal of sixteen blocks takes",
         "layouts": "a picture's layouts take"}

# The lines of a pseudo-terminal are made by tests/wire, which is nothing of the library's.
SERIAL = ("serial", "itemSale", "ioctl")
SALE = ("--calls", "itemSale")
BARE = ("--bare", "bench::BareLoop::exchange*", "bench::BareLoop::appendToFile*")


def counted(profile, functions, *command):
    """Of a program; counting is on only inside the functions, and off in those that are called inside of them."""
    run = subprocess.run(["valgrind", "--tool=callgrind", *[f"--toggle-collect={name}" for name in functions],
                          f"--callgrind-out-file={profile}", *command], capture_output=True, text=True, check=False)
    if run.returncode != 0:
        sys.exit(f"instructions: {command[0].name} failed: {run.stderr.strip()[-300:]}")
    return int(re.search(r"^(?:summary|totals): (\d+)", profile.read_text(encoding="utf-8"), re.MULTILINE)[1])


def counted_sales(build, calls, log, mode, *functions):
    """Of so many calls in a fresh process."""
    with tempfile.TemporaryDirectory(dir=build) as folder:
        logging = [str(pathlib.Path(folder, "calls.txt"))] if log else []
        with subprocess.Popen([build / "sale_printer", "1"], stdout=subprocess.PIPE, text=True) as printer:
            try:
                port = printer.stdout.readline().strip()
                return counted(pathlib.Path(folder, "profile"), functions, build / "item_sale", port, mode, str(calls),
                               *logging)
            except SystemExit:
                printer.kill()
                raise


def counted_calls(build, calls, kind, *functions):
    """Of so many calls in a fresh process, which plays the printer, too."""
    with tempfile.TemporaryDirectory(dir=build) as folder:
        return counted(pathlib.Path(folder, "profile"), functions, build / "counted_calls", kind, str(calls))


def counted_layouts(build):
    """Of a picture of 576 x 1200 dots."""
    with tempfile.TemporaryDirectory(dir=build) as folder:
        return counted(pathlib.Path(folder, "profile"), ["telvofm::graphics::logoLayouts*"], build / "logo_layouts", "--once")


def per_call(count, build, *of):
    return round((count(build, MANY, *of) - count(build, FEW, *of)) / (MANY - FEW))


def compiler_of(build):
    """Its name and first number."""
    for file in build.glob("CMakeFiles/*/CMakeCXXCompiler.cmake"):
        text = file.read_text(encoding="utf-8")
        return " ".join(re.search(rf'CMAKE_CXX_COMPILER_{part} "(\w+)', text)[1] for part in ("ID", "VERSION"))
    return sys.exit(f"instructions: {build} is not configured")


def complaint(found, known):
    """What is wrong with what was found, in one sentence; None when nothing is."""
    if found["log off"] > MOST:
        return f"a sale took {found['log off']} instructions, at most {MOST} are wanted"
    if known["compiler"] != found["compiler"]:
        print(f"written down for {known['compiler']}, this is {found['compiler']}: not compared")
        return None
    for title, what in TAKES.items():
        if abs(found[title] - known[title]) > TOLERANCE * known[title]:
            return (f"{what} {found[title]} instructions, {known[title]} were written down; "
                    "if that is meant, write it down with --write")
    return None


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    found = {"compiler": compiler_of(build),
             "log off": per_call(counted_sales, build, False, *SALE), "log on": per_call(counted_sales, build, True, *SALE),
             "serial": per_call(counted_calls, build, *SERIAL),
             "journal": per_call(counted_calls, build, "journal", "getJournal_ResultObject"),
             "layouts": counted_layouts(build)}
    print(f"itemSale: {found['log off']} instructions with the call log off, {found['log on']} with it on")
    print(f"itemSale on a serial line: {found['serial']} instructions")
    print(f"journal of sixteen blocks of 256 bytes: {found['journal']} instructions")
    print(f"layouts of 576 x 1200 dots: {found['layouts']} instructions")
    if "--beside" in sys.argv:
        print(f"bare loop: {per_call(counted_sales, build, False, *BARE)} and "
              f"{per_call(counted_sales, build, True, *BARE)}")
    if "--write" in sys.argv:
        RECORD.write_text(json.dumps(found, indent=4) + "\n", encoding="utf-8")
    wrong = complaint(found, json.loads(RECORD.read_text(encoding="utf-8")))
    if wrong:
        sys.exit(f"instructions: {wrong}")


if __name__ == "__main__":
    main()
