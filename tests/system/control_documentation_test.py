#!/usr/bin/env python3
"""Runs every command of docs/control.md in its order against one printer, compares what is answered with what stands
below it, and looks that every path of the description is there.

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


def main():
    text = (source / "docs/control.md").read_text(encoding="utf-8")
    failures = []
    with FiscalPrinter(program=sys.argv[2]) as printer:
        environment = dict(os.environ, CONTROL=printer.control)
        for commands, documented in re.findall(r"```sh\n(.*?)```\n(?:```json\n(.*?)```)?", text, re.DOTALL):
            answers = [subprocess.run(["bash", "-c", command], env=environment, capture_output=True, text=True, check=True,
                                      timeout=30).stdout for command in commands.strip().splitlines()]
            if documented and not is_part(json.loads(documented), json.loads(answers[-1])):
                failures.append(f"{commands}is answered with\n{answers[-1]}and not with\n{documented}")
    description = json.loads((source / "virtual_printer/control/openapi.json").read_text(encoding="utf-8"))
    for path in description["paths"]:
        form = re.sub(r"\\{\w+\\}", r"[^/\\s\"?]+", re.escape(path)) + r"(?![/\w])"
        if not re.search(form, text):
            failures.append(f"nothing is said about {path}")
    if failures:
        sys.exit("\n".join(failures))


main()
