#!/usr/bin/env python3
"""Does what bindings/README.md says under "First steps", with its own commands, in a folder that looks like the one of the
sources with its build: each language's example sells the demo receipt on the printer that is started there.

    first_steps_test.py SOURCE_FOLDER BUILD_FOLDER
"""
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

LANGUAGES = ["Python", "C++", "C", "C#", "Java", "Pascal"]
ADDRESS = "127.0.0.1:9100"


def commands(text):
    return [line.strip() for line in text.splitlines() if line.startswith("    ")]


def folder_like_the_sources(place, source, build):
    (place / "build").mkdir()
    (place / "build/release").symlink_to(build)
    for name in ("api", "bindings"):
        (place / name).symlink_to(source / name)


def main():
    source, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    page = (source / "bindings/README.md").read_text(encoding="utf-8")
    chapter = page.split("## First steps\n", 1)[1].split("\n## ", 1)[0]
    beginning, *pieces = re.split(r"^\*\*(.*?)\.\*\*", chapter, flags=re.MULTILINE)
    steps = {language: commands(text) for language, text in zip(pieces[::2], pieces[1::2])}
    if list(steps) != LANGUAGES:
        sys.exit(f"the page's first steps are those of {list(steps)}")
    start, = commands(beginning)
    environment = {name: value for name, value in os.environ.items() if not name.startswith("TELVOFM_")}
    environment["JAVA_TOOL_OPTIONS"] = "-XX:TieredStopAtLevel=1 -XX:+UseSerialGC"  # half its time
    with tempfile.TemporaryDirectory(dir=build) as folder:
        folder_like_the_sources(pathlib.Path(folder), source, build)
        with subprocess.Popen(shlex.split(start.replace(ADDRESS, "127.0.0.1:0")), cwd=folder, stdout=subprocess.PIPE,
                              text=True, encoding="utf-8") as printer:
            try:
                address = printer.stdout.readline().split()[-1]
                for receipt, language in enumerate(LANGUAGES, 1):
                    script = "\n".join(["set -e", *steps[language]]).replace(ADDRESS, address)
                    said = subprocess.run(["bash", "-c", script], cwd=folder, env=environment, capture_output=True, text=True,
                                          check=False)
                    if said.returncode != 0 or f"sold: receipt {receipt}, total 23.59\n" not in said.stdout:
                        sys.exit(f"{language}:\n{script}\nended with {said.returncode} and said\n{said.stdout}{said.stderr}")
            finally:
                printer.kill()
    print(f"{len(LANGUAGES)} languages sell as the page says")


main()
