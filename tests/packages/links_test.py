#!/usr/bin/env python3
"""No page of the sources has a dead link, and one would be noticed.

    links_test.py SOURCE_FOLDER
"""
import pathlib
import sys
import tempfile

from links import FEWEST, dead_links


def overlooked():
    """Dead links that are not noticed among living ones."""
    with tempfile.TemporaryDirectory() as folder:
        place = pathlib.Path(folder, "tree")
        place.mkdir()
        (place.parent / "outside.md").touch()
        (place / "there.md").write_text("# A heading, too\n", encoding="utf-8")
        living = "[there](there.md#a-heading-too)\n" * FEWEST
        wrong = []
        for damage, count in (("", 0), ("[gone](gone.md)", 1), ("[outside](../outside.md)", 1), ("[no](there.md#no)", 1)):
            (place / "page.md").write_text(living + damage, encoding="utf-8")
            if len(dead_links(place)) != count:
                wrong.append(f"{damage or 'a page without dead links'} is seen as {dead_links(place)}")
        return wrong


def main():
    wrong = overlooked() + dead_links(sys.argv[1])
    if wrong:
        sys.exit("\n".join(wrong))


main()
