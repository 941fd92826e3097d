"""Links from page to page, as somebody follows them who has nothing but a folder."""
import os
import pathlib
import re

FEWEST = 50  # as many as any of our folders has; fewer are not found


def without_programs(page):
    return re.sub(r"^( *)```.*?^\1```", "", page, flags=re.MULTILINE | re.DOTALL)


def headings(page):
    """As links call them."""
    names = re.findall(r"^#+ (.*)$", without_programs(page), re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", name.lower()).replace(" ", "-") for name in names}


def links(page):
    """(the file, the heading there) of each link that does not lead into the network."""
    for target in re.findall(r"\]\(([^)\s]+)\)", without_programs(page)):
        if not re.match(r"\w+:", target):
            path, _, heading = target.partition("#")
            yield path, heading


def pages(root):
    for folder, below, files in os.walk(root):
        below[:] = [name for name in below if name not in ("build", ".git")]
        yield from (pathlib.Path(folder, name) for name in files if name.endswith(".md"))


def dead_links(root):
    """Of the pages below a folder each link that leads out of it, to no file, or to no heading."""
    root, dead, seen = pathlib.Path(root).resolve(), [], 0
    for page in pages(root):
        for path, heading in links(page.read_text(encoding="utf-8")):
            seen += 1
            target = (page.parent / path).resolve() if path else page
            if root not in target.parents or not target.exists():
                dead.append(f"{page.relative_to(root)} leads to {path}, which is not there")
            elif heading and heading not in headings(target.read_text(encoding="utf-8")):
                dead.append(f"{page.relative_to(root)} leads to {path}#{heading}, and there is no such heading")
    if seen < FEWEST:
        dead.append(f"only {seen} links are found below {root}")
    return dead
