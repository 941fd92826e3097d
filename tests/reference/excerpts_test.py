#!/usr/bin/env python3
"""The examples of the pages in docs/ are the text of files that tests build and run.

    excerpts_test.py SOURCE_FOLDER

A block of code stands behind a line `<!-- excerpt of FILE -->`. Its lines stand in that file one after the other, perhaps
further to the right; a line `...` in it is a gap, and what follows stands further down. A page whose examples a test of its own
takes out of the page and runs is not looked at.
"""
import pathlib
import re
import sys
import textwrap

RUN_AS_THEY_ARE = {"control.md", "testing-your-till.md", "tool.md"}  # control_documentation, testing_your_till, tool/documentation


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


def wrong_examples(source, page):
    """What is wrong with the examples of a page, and how many there are."""
    blocks = re.findall(r"(?:<!-- excerpt of (\S+) -->\n)?^```(\w+)\n(.*?)^```$", page.read_text(encoding="utf-8"),
                        re.MULTILINE | re.DOTALL)
    wrong = []
    for file, language, block in blocks:
        if not file:
            wrong.append(f"{page.name}: a block of {language} is no excerpt of a file:\n{block}")
            continue
        text = (source / file).read_text(encoding="utf-8-sig").splitlines()
        if not is_excerpt(block, text):
            wrong.append(f"{page.name}: this stands otherwise in {file}:\n{block}")
        elif is_excerpt(block.replace("(", "[", 1), text):
            wrong.append(f"{page.name}: a change of this would not be noticed:\n{block}")
    return wrong, len(blocks)


def main():
    source = pathlib.Path(sys.argv[1])
    wrong, examples = [], 0
    for page in sorted((source / "docs").glob("*.md")):
        if page.name not in RUN_AS_THEY_ARE:
            of_page, count = wrong_examples(source, page)
            wrong += of_page
            examples += count
    if examples < 9:
        wrong.append(f"the pages have {examples} examples")
    if wrong:
        sys.exit("\n".join(wrong))
    print(f"{examples} examples are those of the files")


main()
