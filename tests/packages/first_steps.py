"""Sells with the programs of bindings/README.md in every language, built and run by the commands that stand there, from nothing but
what is installed in a folder, or in that of the archive for Windows."""
import os
import pathlib
import re
import sys

from installed_sale import run

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent.parent / "testing"))
from telvofm_printer import FiscalPrinter  # noqa: E402

LANGUAGES = ["Python", "C++", "C", "C#", "Java", "Pascal"]
SOLD = "Čerstvá žemľa so šťavou"


def first_steps(page):
    """What the page begins with, and of each language the file, its text and the commands."""
    section = page.split("\n## First steps\n")[1].split("\n## ")[0]
    setup, *languages = re.split(r"^### ", section, flags=re.MULTILINE)
    steps = {}
    for language in languages:
        (file, program), = re.findall(r"`([\w.]+)`:\n\n```\w+\n(.*?)^```$", language, re.MULTILINE | re.DOTALL)
        steps[language.splitlines()[0]] = file, program, commands_in(language)
    return commands_in(setup), steps


def commands_in(text):
    commands, = re.findall(r"^```sh\n(.*?)^```$", text, re.MULTILINE | re.DOTALL)
    return commands


def with_own(setup, **values):
    for name, value in values.items():
        setup, found = re.subn(rf"^{name}=.*$", f"{name}={value}", setup, flags=re.MULTILINE)
        if found != 1:
            sys.exit(f"the first steps set {name} {found} times")
    return setup


def paper_of(printer, sell):
    """The paper of the page's one receipt, which `sell` sells and then says so."""
    printer.reset()
    printer.ask("PATCH", "clock", {"now": "2026-01-31 12:00", "mode": "stands"})
    said = sell()
    receipts = printer.documents(kind="receipt")
    if "sold" not in said or len(receipts) != 1:
        sys.exit(f"{len(receipts)} receipts were sold, and the program said\n{said}")
    return "\n".join(receipts[0]["text"])


def compare(papers):
    first = next(iter(papers))
    for program, paper in papers.items():
        if SOLD not in paper or paper != papers[first]:
            sys.exit(f"the paper of {program} is\n{paper}\nand that of {first}\n{papers[first]}")


def sell_in_every_language(prefix, place):
    setup, steps = first_steps((prefix / "share/telvofm/bindings/README.md").read_text(encoding="utf-8"))
    if list(steps) != LANGUAGES:
        sys.exit(f"there are first steps in {list(steps)}")
    environment = {name: value for name, value in os.environ.items() if name not in ("TELVOFM_LIBRARY", "LD_LIBRARY_PATH")}
    environment["JAVA_TOOL_OPTIONS"] = "-XX:TieredStopAtLevel=1 -XX:+UseSerialGC"  # programs of a second need no second compiler
    papers = {}
    with FiscalPrinter(program=str(prefix / "bin/telvofm-printer")) as printer:
        setup = with_own(setup, prefix=prefix, address=printer.address)
        for language, (file, program, commands) in steps.items():
            folder = place / f"first_steps_{len(papers)}"
            folder.mkdir()
            (folder / file).write_text(program, encoding="utf-8")
            papers[language] = paper_of(printer, lambda: run("bash", "-euc", setup + commands, cwd=folder, env=environment))
    compare(papers)


def sell_under_wine(root, wine, pascal_units):
    """The same in the folder of the archive for Windows, in the languages that can be compiled for it here."""
    page = (root / "bindings/README.md").read_text(encoding="utf-8")
    commands = commands_in(page.split("\n## First steps on Windows\n")[1].split("\n## ")[0])
    for file, program, _ in first_steps(page)[1].values():
        (root / file).write_text(program, encoding="utf-8")
    run("bash", "-euc", commands.replace("fpc ", f"fpc -n -Fu{pascal_units} "), cwd=root)
    programs = re.findall(r" -o ?(\w+\.exe)", commands)
    if len(programs) != 3:
        sys.exit(f"on Windows the first steps are {programs}")
    start = root / "printer.sh"  # without --exit-with-parent: for Wine what Linux starts has none
    start.write_text(f'#!/bin/sh\nexec {wine} "{root}/bin/telvofm-printer.exe" "$1" "$2" "$3" "$4"\n', encoding="ascii")
    start.chmod(0o700)
    with FiscalPrinter(program=str(start)) as printer:
        compare({program: paper_of(printer, lambda: run(wine, program, printer.address, cwd=root)) for program in programs})
