#!/usr/bin/env python3
"""What is shipped: how large it is, how it is hardened, what it needs of the system, and that neither a folder nor a
moment of its making has got into it.

    shipped_library_test.py SOURCE_FOLDER BUILD_FOLDER LIBRARY
"""
import json
import pathlib
import re
import subprocess
import sys

LARGEST_DLL = 850_000  # bytes
# What the oldest systems have that are to load it.
NEWEST = {"GLIBC": "2.34", "GLIBCXX": "3.4.29"}
SYSTEM_LIBRARIES = {"libstdc++.so.6", "libgcc_s.so.1", "libm.so.6", "libc.so.6", "ld-linux-x86-64.so.2"}


def said_by(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def number(version):
    """As the system's loader compares them."""
    return [int(part) for part in version.split(".")]


def newest(prefix, needs):
    """The newest version that is needed, and the symbols of it."""
    symbols = re.findall(rf"\({prefix}_([0-9.]+)\)\s+(\w+)", needs)
    version = max((version for version, _ in symbols), key=number)
    return version, [symbol for of_version, symbol in symbols if of_version == version]


def wrong_with_elf(library, documentation):
    header, dynamic, needs = (said_by("readelf", "--wide", "--program-headers", library),
                              said_by("readelf", "--wide", "--dynamic", library), said_by("objdump", "-T", library))
    needed = set(re.findall(r"\(NEEDED\)\s+Shared library: \[(.*?)\]", dynamic))
    (glibc, of_glibc), (runtime, of_runtime) = newest("GLIBC", needs), newest("GLIBCXX", needs)
    checks = {
        "part of it stays writable: no GNU_RELRO": "GNU_RELRO" in header,
        "names are looked up late, and their table stays writable: no BIND_NOW": "BIND_NOW" in dynamic,
        "its stack may be executed": re.search(r"GNU_STACK\s.*\sRW\s", header),
        "no stack protector": "__stack_chk_fail" in needs,
        "it says where libraries are looked for": not re.search(r"\((RPATH|RUNPATH)\)", dynamic),
        "stream classes have come in": not re.search(r"basic_[io]?f?stream|basic_filebuf", needs),
        f"it needs {sorted(needed)}": needed <= SYSTEM_LIBRARIES,
        "the C++ runtime is linked in": "libstdc++.so.6" in needed,
        "it holds symbols": ".symtab" not in said_by("readelf", "--wide", "--sections", library),
        f"it needs glibc {glibc} for {of_glibc}": number(glibc) <= number(NEWEST["GLIBC"]),
        f"it needs GLIBCXX_{runtime} for {of_runtime}": number(runtime) <= number(NEWEST["GLIBCXX"]),
        f"docs/packages.md does not say that it needs glibc {glibc}": f"glibc {glibc}" in documentation,
        f"docs/packages.md does not say that glibc {glibc} is for {of_glibc}":
            all(f"`{symbol}`" in documentation for symbol in of_glibc),
        f"docs/packages.md does not say that it needs GLIBCXX_{runtime}": f"GLIBCXX_{runtime}" in documentation,
    }
    return [trouble for trouble, is_right in checks.items() if not is_right]


def wrong_with_dll(library, documentation):
    header = said_by("x86_64-w64-mingw32-objdump", "-p", library)
    imports = {name.lower() for name in re.findall(r"DLL Name: (\w+)\.dll", header, re.IGNORECASE)}
    said = re.search(r"imports from ([\w, ]+) only", documentation).group(1)
    documented = {name.lower() for name in re.findall(r"\w+", said)} - {"and"}
    size = pathlib.Path(library).stat().st_size
    checks = {
        f"it has {size} bytes, more than {LARGEST_DLL}": size <= LARGEST_DLL,
        f"it imports from {sorted(imports)}, docs/packages.md says {said}": imports == documented,
        "it holds the moment of its making": re.search(r"Time/Date\s+Thu Jan  1 00:00:00 1970", header),
        "it has no place of its own in memory each time": "DYNAMIC_BASE" in header,
        "it may not lie above four gigabytes": "HIGH_ENTROPY_VA" in header,
        "its data may be executed": "NX_COMPAT" in header,
        "its file is not laid out in pages, so that Wine copies it when it is loaded":
            re.search(r"FileAlignment\s+00001000", header),
        "it holds symbols": not re.search(r"^SYMBOL TABLE:\n.*\bsec\b", said_by(
            "x86_64-w64-mingw32-objdump", "-t", library), re.MULTILINE),
    }
    return [trouble for trouble, is_right in checks.items() if not is_right]


def not_fortified(build):
    """A compiler leaves no trace where it finds nothing to fortify, so its command is asked: the last -O counts, and
    one file is compiled with -O3, which fortifies as -O2 does."""
    commands = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    ours = [command for command in commands if re.search(r"/telvofm(_inside)?\.dir/", command["command"])]
    return [f"{command['file']} is not fortified" for command in ours
            if "-D_FORTIFY_SOURCE=2" not in command["command"]
            or re.findall(r" -O(\S+)", command["command"])[-1] not in ("2", "3")] or ([] if ours else ["no file is compiled"])


def main():
    source, build, library = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
    documentation = (source / "docs/packages.md").read_text(encoding="utf-8")
    look = wrong_with_dll if library.suffix == ".dll" else wrong_with_elf
    wrong = look(library, documentation)
    if library.suffix != ".dll":
        wrong += not_fortified(build)
    symbols = pathlib.Path(f"{library}.debug")
    for file in (library, symbols):
        content = file.read_bytes()
        wrong += [f"{file.name} names the folder {folder}" for folder in (source, build) if bytes(folder) in content]
    if symbols.stat().st_size < library.stat().st_size:
        wrong.append(f"{symbols.name} is smaller than the library")
    if wrong:
        sys.exit(f"{library}:\n" + "\n".join(wrong))
    print(f"{library.stat().st_size} bytes")


main()
