#!/usr/bin/env python3
"""Every list of the exports, and what the built library really exports, must hold the same names.

    export_names_test.py SOURCE_FOLDER LIBRARY
"""
import pathlib
import re
import subprocess
import sys

# What a DLL may ask of Windows; anything else would have to be shipped beside it.
SYSTEM_DLLS = {"kernel32.dll", "msvcrt.dll", "ws2_32.dll", "gdi32.dll", "user32.dll"}


def words(pattern, text):
    return re.findall(pattern, text, re.MULTILINE)


def listed_names(source):
    def read(name):
        return (source / name).read_text(encoding="utf-8")

    definition = read("api/telvofm.def").split("EXPORTS", 1)[1]
    exported = read("api/telvofm.map").split("global:", 1)[1].split("local:", 1)[0]
    return {
        "api/telvofm.h": words(r"^TELVOFM_API\s[^;(]*?(\w+)\(", read("api/telvofm.h")),
        "api/telvofm.def": words(r"^\s+(\w+)\s*$", definition),
        "api/telvofm.map": words(r"(\w+);", exported),
        "tools/export_table_entries.inc": words(r"^TELVOFM_ENTRY\((\w+)\)", read("tools/export_table_entries.inc")),
    }


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def names_of_so(library):
    lines = run("nm", "-D", "--defined-only", library).splitlines()
    return [line.split()[2] for line in lines if line.split()[1] in "TWVDBRi"]


def names_of_dll(library):
    text = run("x86_64-w64-mingw32-objdump", "-p", library)
    foreign = {name.lower() for name in words(r"DLL Name: (\S+)", text)} - SYSTEM_DLLS
    if foreign:
        sys.exit(f"{library} needs more than the system: {sorted(foreign)}")
    return words(r"^\s*\[\s*\d+\]\s+(\w+)\s*$", text.split("[Ordinal/Name Pointer] Table", 1)[1])


def main():
    source, library = pathlib.Path(sys.argv[1]), sys.argv[2]
    lists = listed_names(source)
    lists[library] = names_of_dll(library) if library.endswith(".dll") else names_of_so(library)
    wanted = lists["api/telvofm.h"]
    wrong = []
    if len(wanted) != 202 or len(set(wanted)) != len(wanted):
        wrong.append(f"the header declares {len(wanted)} names, {len(set(wanted))} different ones")
    for name, names in lists.items():
        missing, foreign = set(wanted) - set(names), set(names) - set(wanted)
        if missing or foreign or len(names) != len(wanted):
            wrong.append(f"{name}: missing {sorted(missing)}, foreign {sorted(foreign)}, {len(names)} in all")
    if wrong:
        sys.exit("\n".join(wrong))
    print(f"{len(wanted)} names, the same in {len(lists)} places")


main()
