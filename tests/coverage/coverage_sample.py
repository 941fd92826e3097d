#!/usr/bin/env -S python3 -B
"""A sample of scripts/prove coverage, for scripts/test: the branches of one room that its own test program takes.

    tests/coverage/coverage_sample.py BUILD [--tests FILTER]

The test program of BUILD is linked again with the sources of the room (../sampled_room.py), compiled by clang as in the preset
`coverage`; FILTER is GoogleTest's. It ends with 1 when less than 97 % are taken. What it makes lies in BUILD/coverage_sample and is
made anew each time.
"""
import argparse
import json
import os
import pathlib
import shutil
import subprocess
import sys

import figures

sys.path.insert(0, str(figures.TOP / "tests"))
from linked_again import link_again, link_command  # noqa: E402
from sampled_room import DRAWN, PROGRAM, ROOM, sources  # noqa: E402


def flags():
    """Of the compiler, and of the linker: without those of the linker alone the runtime that counts would be missing."""
    presets = json.loads((figures.TOP / "CMakePresets.json").read_text())["configurePresets"]
    settings = next(one for one in presets if one["name"] == "coverage")["cacheVariables"]
    return [*settings["CMAKE_CXX_FLAGS"].split(), *settings["CMAKE_EXE_LINKER_FLAGS"].split()]


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--tests", default="*", help="only these tests")
    given = parser.parse_args()
    work = given.build.resolve() / "coverage_sample"
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir()

    room, profile, program = work / "room.cpp", work / "room.profraw", work / PROGRAM
    room.write_text("".join(f'#include "{figures.TOP / source}"\n' for source in sources()))  # their headers are read once
    made = room.with_suffix(".o")
    subprocess.run(["clang++", "-std=c++20", "-O0", "-w", "-DTELVOFM_BUILDING", *flags(), "-Wno-unused-command-line-argument",
                    f"-I{figures.TOP}", "-c", room, "-o", made], check=True)
    link_again(link_command(given.build, PROGRAM), given.build, program, [made], *flags(), linker="clang++")
    subprocess.run([program, "--gtest_brief=1", f"--gtest_filter={given.tests}"], check=True, cwd=work,
                   env={**os.environ, **DRAWN, "LLVM_PROFILE_FILE": str(profile)})
    return figures.report(figures.exported([profile], [program], sources(), work / "room.profdata"), [ROOM])


sys.exit(main())
