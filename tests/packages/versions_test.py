#!/usr/bin/env python3
"""One version in the header, the library and every program.

    versions_test.py SOURCE_FOLDER VERSION LIBRARY [--under WINE] PROGRAM...
"""
import pathlib
import re
import struct
import subprocess
import sys


def version_of_header(header):
    values = dict(re.findall(r"^#define (TELVOFM_VERSION\w*) (\S+)$", header, re.MULTILINE))
    numbers = ".".join(values[f"TELVOFM_VERSION_{part}"] for part in ("MAJOR", "MINOR", "PATCH"))
    return {"telvofm.h's numbers": numbers, "telvofm.h's text": values["TELVOFM_VERSION"].strip('"')}


def version_of_elf(library, version):
    """The name that programs look for has the first number only: the rest may change beneath them."""
    dynamic = subprocess.run(["readelf", "--dynamic", library], check=True, capture_output=True, text=True).stdout
    name = re.search(r"\(SONAME\).*\[(.*)\]", dynamic).group(1)
    major = version.split(".", 1)[0]
    return {"the shared object's name": version if name == f"libtelvofm.so.{major}" else name,
            "the shared object's file": library.resolve().name.removeprefix("libtelvofm.so.")}


def version_of_dll(library):
    """Of its resource: numbers behind a mark, and texts."""
    content = library.read_bytes()
    place = content.index(b"\xBD\x04\xEF\xFE")
    upper, lower = struct.unpack_from("<II", content, place + 8)
    found = {"the DLL's numbers": f"{upper >> 16}.{upper & 0xFFFF}.{lower >> 16}"}
    for key in ("FileVersion", "ProductVersion"):
        start = content.index((key + "\0").encode("utf-16-le"), place)
        text = content[start + 2 * len(key) + 2:start + 100].decode("utf-16-le", errors="replace").lstrip("\0")
        found[f"the DLL's {key}"] = text.split("\0", 1)[0]
    return found


def version_of_program(command):
    said = subprocess.run([*command, "--version"], check=True, capture_output=True, text=True).stdout
    name = pathlib.PurePath(command[-1]).name.removesuffix(".exe")
    words = said.split()
    return words[1] if len(words) == 2 and words[0] == name else said


def main():
    source, version, library, *programs = sys.argv[1:]
    library = pathlib.Path(library)
    found = version_of_header((pathlib.Path(source) / "api/telvofm.h").read_text(encoding="utf-8"))
    found |= version_of_dll(library) if library.suffix == ".dll" else version_of_elf(library, version)
    emulator = []
    if programs[:1] == ["--under"]:
        emulator, programs = [programs[1]], programs[2:]
    found |= {program: version_of_program([*emulator, program]) for program in programs}
    wrong = [f"{name} says {said!r}" for name, said in found.items() if said != version]
    if wrong:
        sys.exit(f"the version is {version}, but:\n" + "\n".join(wrong))
    print(f"{version} in {len(found)} places")


main()
