#!/usr/bin/env python3
"""The examples of docs/integration.md are the text of files that tests build and run.

    excerpts_test.py SOURCE_FOLDER

A block of code stands behind a line `<!-- excerpt of FILE -->`. Its lines stand in that file one after the other, perhaps
further to the right; a line `...` in it is a gap, and what follows stands further down.
"""
import pathlib
import re
import sys
import textwrap


def stands_in(lines, text):
    """Whether the lines stand in the text one after the other, and where the rest of it begins."""
    wanted = textwrap.dedent("\n".join(lines)).splitlines()
    for start in range(len(text) - len(wanted) + 1):
        if textwrap.dedent("\n".join(text[start:start + len(wanted)])).splitlines() == wanted:
            return start + len(wanted)
    return None


def is_excerpt(block, text):
    """Whether every part of the block between its gaps stands in the text, in this order."""
    parts = re.split(r"^\s*\.\.\.\n", block, flags=re.MULTILINE)
    for part in parts:
        end = stands_in(part.splitlines(), text)
        if end is None:
            return False
        text = text[end:]
    return True


def main():
    source = pathlib.Path(sys.argv[1])
    guide = (source / "docs/integration.md").read_text(encoding="utf-8")
    blocks = re.findall(r"(?:<!-- excerpt of (\S+) -->\n)?^```(\w+)\n(.*?)^```$", guide, re.MULTILINE | re.DOTALL)
    wrong = [f"a block of {language} is no excerpt of a file:\n{block}" for file, language, block in blocks if not file]
    for file, _, block in blocks:
        if file and not is_excerpt(block, (source / file).read_text(encoding="utf-8-sig").splitlines()):
            wrong.append(f"this stands otherwise in {file}:\n{block}")
        elif file and is_excerpt(block.replace("(", "[", 1), (source / file).read_text(encoding="utf-8-sig").splitlines()):
            wrong.append(f"a change of this would not be noticed:\n{block}")
    if len(blocks) < 3:
        wrong.append(f"the guide has {len(blocks)} examples")
    if wrong:
        sys.exit("\n".join(wrong))
    print(f"{len(blocks)} examples are those of the files")


main()
