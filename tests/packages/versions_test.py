#!/usr/bin/env python3
"""One version in the header, the library, every program, and whatever else names it.

    versions_test.py SOURCE_FOLDER VERSION LIBRARY [--under WINE] PROGRAM...
"""
import json
import pathlib
import re
import struct
import subprocess
import sys


# What stands in each file for people, or for other programs: where it names the version.
COPIES = {
    "CHANGELOG.md": r"\A# .*\n+## (\S+)",
    "docs/control.md": r'"version":"([^"]+)"',
    "docs/packages.md": r"The version, (\S+), is|libtelvofm\.so\.(\d+\.\d+\.\d+)",
    "packaging/debian/changelog": r"\Atelvofm \((\S+)-\d+\) ",
}
MADE_COPIES = {
    "packaging/telvofm.pc": r"^Version: (\S+)$",
    "packaging/telvofmConfigVersion.cmake": r'^set\(PACKAGE_VERSION "(.*)"\)$',
    "CPackConfig.cmake": r'^set\(CPACK_PACKAGE_(?:VERSION "(.*)"|FILE_NAME "telvofm-([\d.]+)-.*")\)$',
}


def versions_of_files(folder, patterns):
    found = {}
    for name, pattern in patterns.items():
        text = (folder / name).read_text(encoding="utf-8")
        said = {"".join(match.groups(default="")) for match in re.finditer(pattern, text, re.MULTILINE)}
        found[name] = said.pop() if len(said) == 1 else f"{sorted(said)}"
    return found


def version_of_description(source):
    description = json.loads((source / "virtual_printer/control/openapi.json").read_text(encoding="utf-8"))
    return {"openapi.json": description["info"]["version"]}


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
    source, library = pathlib.Path(source), pathlib.Path(library)
    found = version_of_header((source / "api/telvofm.h").read_text(encoding="utf-8"))
    found |= versions_of_files(source, COPIES) | versions_of_files(library.parent, MADE_COPIES)
    found |= version_of_description(source)
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
