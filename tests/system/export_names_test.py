#!/usr/bin/env python3
"""Every list of the exports, and what the built library really exports, must hold the same names; each name must
lead to code, and the table of the tools must name its parameters as the header does.

    export_names_test.py SOURCE_FOLDER LIBRARY
"""
import pathlib
import re
import subprocess
import sys

from exported_addresses import read_library

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
        "tools/export_table_entries.inc": words(r"^TELVOFM_ENTRY\((\w+),", read("tools/export_table_entries.inc")),
    }


def without_comments(header):
    return re.sub(r"/\*.*?\*/", "", header, flags=re.DOTALL)


def parameters_in_header(source):
    """The names of each function's parameters."""
    header = without_comments((source / "api/telvofm.h").read_text(encoding="utf-8"))
    declared = re.findall(r"^TELVOFM_API\s[^;(]*?(\w+)\(([^)]*)\);", header, re.MULTILINE)
    return {name: [] if parameters == "void" else [re.search(r"\w+$", one)[0] for one in parameters.split(",")]
            for name, parameters in declared}


def parameters_in_table(source):
    entries = (source / "tools/export_table_entries.inc").read_text(encoding="utf-8").split("\nTELVOFM_ENTRY(")[1:]
    return {entry.split(",")[0]: " ".join(re.findall(r'"([^"]*)"', entry)).split() for entry in entries}


def wrong_parameters(source):
    declared, listed = parameters_in_header(source), parameters_in_table(source)
    return [f"tools/export_table_entries.inc: the parameters of {name} are {listed.get(name)}, the header's {names}"
            for name, names in declared.items() if listed.get(name) != names]


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def foreign_dlls(library):
    text = run("x86_64-w64-mingw32-objdump", "-p", library)
    return sorted({name.lower() for name in words(r"DLL Name: (\S+)", text)} - SYSTEM_DLLS)


def overlooked(data):
    """What the look at the addresses does not notice when one address at a time is led astray in a copy."""
    exports = read_library(data).exports
    far_away = max(end for _, end in read_library(data).code) + (1 << 24)
    unnoticed = []
    for export in (exports[0], exports[len(exports) // 2], exports[-1]):
        for astray in (0, far_away):
            copy = bytearray(data)
            copy[export.place:export.place + export.size] = astray.to_bytes(export.size, "little")
            if read_library(bytes(copy)).outside_code() != [export.name]:
                unnoticed.append(f"{export.name} at {astray:#x}")
    return unnoticed


def main():
    source, library = pathlib.Path(sys.argv[1]), sys.argv[2]
    lists = listed_names(source)
    data = pathlib.Path(library).read_bytes()
    built = read_library(data)
    lists[library] = [export.name for export in built.exports]
    wanted = lists["api/telvofm.h"]
    wrong = [f"{name} of {library} does not lead to code" for name in built.outside_code()]
    wrong += [f"a wrong address was not noticed: {name}" for name in overlooked(data)]
    if library.endswith(".dll"):
        wrong += [f"{library} needs {name}, which is not the system's" for name in foreign_dlls(library)]
    wrong += wrong_parameters(source)
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
