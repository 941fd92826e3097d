#!/usr/bin/env python3
"""docs/integration.md says which systems can load the library; what the library asks of the system is not newer.

    loading_test.py SOURCE_FOLDER LIBRARY
"""
import pathlib
import re
import subprocess
import sys

# How the guide says them.
SAID = {"GLIBC": r"glibc (\d[\d.]*\d)", "GLIBCXX": r"`GLIBCXX_(\d[\d.]*\d)`"}


def number(version):
    return tuple(int(part) for part in version.split("."))


def main():
    source, library = pathlib.Path(sys.argv[1]), sys.argv[2]
    guide = (source / "docs/integration.md").read_text(encoding="utf-8")
    symbols = subprocess.run(["objdump", "-T", library], capture_output=True, text=True, check=True).stdout
    wrong = []
    for name, words in SAID.items():
        asked = max(re.findall(rf"\b{name}_(\d[\d.]*\d)", symbols), key=number)
        said = re.findall(words, guide)
        if set(said) != {asked}:
            wrong.append(f"the library asks for {name}_{asked}, docs/integration.md says {said}")
    if wrong:
        sys.exit("\n".join(wrong))
    print("the systems that can load the library are those of the guide")


main()
