#!/usr/bin/python3 -B
"""Writes what the bindings have in common from its only sources, and nothing else does:

    api/telvofm.h                the raw layer of Python, C#, Pascal and Java
    api/codes.json               the meanings of the codes in every language
    bindings/windows_1250.json   the characters of Windows-1250 in every language

    bindings/generate.py            writes all of it; it is checked in
    bindings/generate.py --check    writes nothing, names what is stale, and ends with 1 then

It reads the header with libclang; scripts/prepare bindings installs it for the system's Python, the one of the first line.
"""
import pathlib
import sys

from generator import codes, cpp, csharp, documents, java, pascal, python
from generator.characters import read_characters
from generator.interface import UnknownType, read_functions

TOP = pathlib.Path(__file__).resolve().parent.parent


def generated():
    """Every generated file by its path, with its whole text."""
    functions = read_functions(TOP / "api/telvofm.h")
    meanings = codes.read_codes(TOP / "api/codes.json")
    characters = read_characters(TOP / "bindings/windows_1250.json")
    files = {}
    for language in (python, csharp, pascal, java, cpp):
        files.update(language.files(functions, characters, meanings))
    files.update(documents.files(characters, meanings, TOP))
    return files


def main():
    if sys.argv[1:] not in ([], ["--check"]):
        sys.exit("generate.py takes no argument, or --check")
    try:
        files = generated()
    except (UnknownType, codes.WrongCodes) as wrong:
        sys.exit(f"generate.py: {wrong}")
    stale = [path for path, text in files.items()
             if not (TOP / path).exists() or (TOP / path).read_text(encoding="utf-8") != text]
    if sys.argv[1:]:
        if stale:
            sys.exit(f"stale: {', '.join(stale)}; run bindings/generate.py and look at what it changes")
        return
    for path in stale:
        (TOP / path).parent.mkdir(parents=True, exist_ok=True)
        (TOP / path).write_text(files[path], encoding="utf-8")
        print("wrote", path)


main()
