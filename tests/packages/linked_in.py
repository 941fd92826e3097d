"""Whose code is in a program or library for Windows: what the linker took, which its map tells, and the headers of what
was compiled, which ninja remembers. Each is named by the file in the archive's folder licences that has its licence."""
import pathlib
import re
import subprocess
import sys

# Where each lies on the machine that builds, and what its licence says among other things.
LICENCES = {
    "gcc-mingw-w64-x86-64-posix-runtime.txt": ("/usr/lib/gcc/x86_64-w64-mingw32/", "GCC RUNTIME LIBRARY EXCEPTION"),
    "mingw-w64-x86-64-dev.txt": ("/usr/x86_64-w64-mingw32/ /usr/share/mingw-w64/", "mingw-w64-libraries/winpthreads/*"),
    "libboost1.81-dev.txt": ("/usr/include/boost/", "Boost Software License - Version 1.0"),
    "libcli11-dev.txt": ("/usr/include/CLI/", "Redistribution and use in source and binary forms"),
    "nlohmann-json3-dev.txt": ("/usr/include/nlohmann/", "Permission is hereby granted, free of charge"),
    "libsqlite3-dev.txt": ("build/windows-sources/sqlite3/ sqlite3_for_windows.", "put on the public domain"),
    "libzint-dev.txt": ("build/windows-sources/zint/ zint_for_windows.", "BSD-3-Clause"),
}


def licence_of(file, source):
    """None for what is ours."""
    for licence, (places, _) in LICENCES.items():
        if any(str(file).startswith(place) if place[0] == "/" else place in str(file) for place in places.split()):
            return licence
    return None if source in file.parents else f"no licence for {file.parent}"


def taken_by_linker(build, program):
    """The members of archives and the objects that a map names."""
    content = (build / f"{program}.map").read_text(encoding="utf-8")
    members = re.split(r"^(?:Discarded input sections|Memory Configuration)", content.split("Archive member included", 1)[1],
                       maxsplit=1, flags=re.MULTILINE)[0]
    found = re.findall(r"^(\S+)\(\S+\)", members, re.MULTILINE) + re.findall(r"^LOAD (\S+\.(?:o|obj))$", content, re.MULTILINE)
    if len(found) < 100:
        sys.exit(f"the map of {program} names only {len(found)} objects")
    return found


def said_by_ninja(build, *arguments):
    return subprocess.run(["ninja", "-C", str(build), "-t", *arguments], check=True, capture_output=True, text=True).stdout


def headers(build, program):
    """Of all objects from which the program is made, its own archives' too."""
    objects = [name for name in said_by_ninja(build, "inputs", program).splitlines() if name.endswith((".obj", ".gch"))]
    return {line.strip() for line in said_by_ninja(build, "deps", *objects).splitlines() if line.startswith("    ")}


def licences_in(source, build, program):
    files = {*taken_by_linker(build, program), *headers(build, program)}
    return {licence_of((build / file).resolve(), source) for file in files} - {None}


def said_of(table, program):
    """Whose licence the archive's table says that a program needs."""
    head, *rows = [[cell.strip() for cell in line.replace("`", "").strip("|").split("|")]
                   for line in table.splitlines() if line.startswith("| ")]
    return {row[0] for row in rows if row[head.index(f"in {program}")] == "yes"}


def wrong_licences(source, build, folder, programs):
    """Where the archive's folder of licences, its table and what is linked in differ."""
    table = (folder / "README.md").read_text(encoding="utf-8")
    wrong = []
    for program in programs:
        linked, said = licences_in(source, build, program), said_of(table, program)
        wrong += [f"{program} and licences/README.md differ in {licence}" for licence in sorted(linked ^ said)]
    held = {file.name for file in folder.glob("*.txt")} - {"telvofm.txt"}
    wrong += [f"licences/README.md and its folder differ in {licence}" for licence in sorted(held ^ LICENCES.keys())]
    for licence in sorted(held & LICENCES.keys()):
        text = (folder / licence).read_text(encoding="utf-8")
        if LICENCES[licence][1] not in text:
            wrong.append(f"{licence} does not say {LICENCES[licence][1]}")
        wrong += [f"{licence} names {name}, which is not there"
                  for name in sorted(set(re.findall(r"/usr/share/common-licenses/([\w.-]*\w)", text)))
                  if not (folder / "common-licenses" / name).is_file()]
    return wrong
