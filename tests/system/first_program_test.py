#!/usr/bin/env python3
"""Builds README's first program from README's own text with README's own command, and sells twice with it on a
virtual printer: the second time its day is open already. The example that opens the header calls the same, is built so
too, and sells once more; that of docs/integration.md begins and ends so.

    first_program_test.py SOURCE_FOLDER BUILD_FOLDER
"""
import pathlib
import re
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent.parent / "testing"))
from telvofm_printer import FiscalPrinter  # noqa: E402


def calls(program):
    return re.findall(r"\b(openFM|closeFM|sellingDay\w+|paragon\w+|itemSale|payment)\(", program)


def example_of(header):
    """The example that opens the header, as a program."""
    lines = header.split("@code{.c}\n", 1)[1].split(" * @endcode", 1)[0].splitlines()
    return '#include "telvofm.h"\nint main(void)\n{\n' + "\n".join(line.removeprefix(" *") for line in lines) + "\nreturn 0;\n}\n"


def build_and_sell(program, command, place, address, times):
    """What the program says each time."""
    if "192.168.1.10:9100" not in program:
        sys.exit(f"a program opens another printer:\n{program}")
    (place / "till.c").write_text(program.replace("192.168.1.10:9100", address), encoding="utf-8")
    subprocess.run(command, shell=True, cwd=place, check=True)
    for _ in range(times):
        said = subprocess.run("./till", cwd=place, capture_output=True, text=True, check=False)
        if said.returncode != 0:
            sys.exit(f"a sale ended with {said.returncode} and said\n{said.stdout}{said.stderr}")
        yield said.stdout.splitlines()


def main():
    source, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    readme = (source / "README.md").read_text(encoding="utf-8")
    chapter = readme.split("## The first program", 1)[1]
    program = re.search(r"```c\n(.*?)```", chapter, re.DOTALL).group(1)
    command = re.search(r"^gcc .*$", chapter, re.MULTILINE).group(0)
    example = example_of((source / "api/telvofm.h").read_text(encoding="utf-8"))
    if calls(example) != calls(program):
        sys.exit(f"the header's example calls {calls(example)}, README's program {calls(program)}")

    guide = (source / "docs/integration.md").read_text(encoding="utf-8").split("## The session", 1)[1]
    beginning, end = re.search(r"```c\n(.*?)```", guide, re.DOTALL).group(1).split("...", 1)
    # A failed open closes too.
    wanted = [call for call in calls(program) if call != "closeFM"]
    opened = [call for call in calls(beginning) if call != "closeFM"]
    if len(opened) < 3 or opened != wanted[:len(opened)] or calls(end) != calls(program)[-1:]:
        sys.exit(f"docs/integration.md calls {opened} and at the end {calls(end)}, README's program {calls(program)}")

    with tempfile.TemporaryDirectory(dir=build) as folder:
        # The folders that README speaks of.
        place = pathlib.Path(folder)
        (place / "build").mkdir()
        (place / "build/release").symlink_to(build)
        (place / "api").symlink_to(source / "api")
        with FiscalPrinter(program=str(build / "telvofm-printer")) as printer:
            said = list(build_and_sell(program, command, place, printer.address, 2))
            if [lines[-1:] for lines in said] != [["code 0"], ["code 0"]]:
                sys.exit(f"README's program said {said}")
            list(build_and_sell(example, command + " -Wall -Werror", place, printer.address, 1))
            printer.expect(committed=3 * [{"kind": "receipt", "total": "12.50"}])


main()
