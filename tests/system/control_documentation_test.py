#!/usr/bin/env python3
"""Runs every command of docs/control.md in its order against one printer, looks that each succeeds where no error is
documented, compares the answer of each block with what stands below it, and looks that every path of the description is
there.

    control_documentation_test.py SOURCE_FOLDER PRINTER_PROGRAM
"""
import json
import os
import pathlib
import re
import subprocess
import sys

source = pathlib.Path(sys.argv[1])
sys.path.insert(0, str(source / "testing"))
from telvofm_printer import FiscalPrinter  # noqa: E402


def is_part(documented, answered):
    """Members and entries that are left out are marked by "..."."""
    if isinstance(documented, dict) and isinstance(answered, dict):
        names = [name for name in documented if name != "..."]
        return all(name in answered and is_part(documented[name], answered[name]) for name in names)
    if isinstance(documented, list) and isinstance(answered, list):
        return len(documented) == len(answered) and all(map(is_part, documented, answered))
    return documented == answered


def run(command, environment):
    """What is answered, and whether it is an error."""
    ended = subprocess.run(["bash", "-c", command.replace("curl -s", "curl -s --fail-with-body", 1)], env=environment,
                           capture_output=True, text=True, check=False, timeout=30)
    http_error = 22  # as curl says it
    if ended.returncode not in (0, http_error):
        sys.exit(f"{command} ended with {ended.returncode}: {ended.stderr}")
    return ended.stdout, ended.returncode == http_error


def is_error(documented, is_last):
    """An error is that of all commands of its block, a difference that of the last."""
    return "error" in documented or (is_last and documented.get("holds") is False)


def main():
    text = (source / "docs/control.md").read_text(encoding="utf-8")
    failures = []
    with FiscalPrinter(program=sys.argv[2]) as printer:
        environment = dict(os.environ, CONTROL=printer.control)
        for commands, documented in re.findall(r"```sh\n(.*?)```\n(?:```json\n(.*?)```)?", text, re.DOTALL):
            *before, last = [(command, *run(command, environment)) for command in commands.strip().splitlines()]
            expected = json.loads(documented or "{}")
            for command, answer, failed in [*before, last]:
                if failed != is_error(expected, command == last[0]):
                    failures.append(f"{command}\nis answered with{'' if failed else ' no'} error\n{answer}")
            if documented and not is_part(expected, json.loads(last[1])):
                failures.append(f"{commands}is answered with\n{last[1]}and not with\n{documented}")
    description = json.loads((source / "virtual_printer/control/openapi.json").read_text(encoding="utf-8"))
    for path in description["paths"]:
        form = re.sub(r"\\{\w+\\}", r"[^/\\s\"?]+", re.escape(path)) + r"(?![/\w])"
        if not re.search(form, text):
            failures.append(f"nothing is said about {path}")
    if failures:
        sys.exit("\n".join(failures))


main()
