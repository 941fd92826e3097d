#!/usr/bin/env python3
"""Every option and every command that a program's --help names is in its manual page, and man finds no fault in it.

    manual_pages_test.py PAGES_FOLDER PROGRAM...
"""
import os
import pathlib
import re
import subprocess
import sys


def words_of_help(program):
    said = subprocess.run([program, "--help"], check=True, capture_output=True, text=True).stdout
    options = set(re.findall(r"(?<![\w-])--[a-z][a-z-]*", said))
    commands = said.split("ubcommands:", 1)
    return options | set(re.findall(r"^ {2}([a-z]+) {2,}", commands[1], re.MULTILINE) if len(commands) == 2 else [])


def faults_of(page):
    shown = subprocess.run(["man", "--warnings=w", "--local-file", page], check=True, capture_output=True, text=True,
                           env={**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "80"})
    return shown.stderr.splitlines()


def main():
    pages, *programs = (pathlib.Path(argument) for argument in sys.argv[1:])
    wrong = []
    for program in programs:
        page = (pages / f"{program.name}.1").read_text(encoding="utf-8").replace("\\-", "-")
        named = words_of_help(program)
        if not named:
            wrong.append(f"{program} --help names nothing")
        wrong += [f"{program.name}.1 does not name {word}" for word in sorted(named) if word not in page]
    for page in sorted(pages.iterdir()):
        wrong += [f"{page.name}: {fault}" for fault in faults_of(page)]
    if wrong:
        sys.exit("\n".join(wrong))


main()
