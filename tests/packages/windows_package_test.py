#!/usr/bin/env python3
"""Packs a build for Windows, unpacks it in Wine's drive C, and sells there on the virtual printer of the archive, with
programs that are built from nothing but what it holds: by mingw through both import libraries, by clang and lld-link,
which stand for Microsoft's toolchain, by CMake, and in C, C++ and Pascal as bindings/README.md says. The licences are those
of what is linked in, no page there has a dead link, and what pages name in the archive's folder is there.

    windows_package_test.py SOURCE_FOLDER BUILD_FOLDER WINE
"""
import os
import pathlib
import re
import shutil
import sys
import tempfile
import zipfile

from first_steps import sell_under_wine
from installed_sale import Printer, documented, run, till, with_find_package
from linked_in import wrong_licences
from links import dead_links, pages
from symbols import wrong_symbols

MINGW = "x86_64-w64-mingw32-gcc-posix"
PROGRAMS = ("telvofm.dll", "telvofm.exe", "telvofm-printer.exe")
WANTED = """
    bin/telvofm.dll
    bin/telvofm-printer.exe
    bin/telvofm.exe
    doc/docs/integration.md
    include/telvofm.h
    lib/libtelvofm.dll.a
    lib/telvofm.def
    lib/telvofm.lib
    licences/telvofm.txt
    scenarios/bad-cable.json
    testing/telvofm_printer.py
""".split()


def unpacked(build, place):
    """The folder of the one archive; the other holds the symbols of its library and nothing else."""
    run("cpack", "--config", build / "CPackConfig.cmake", "-B", place)
    archives = sorted(place.glob("*.zip"))
    if len(archives) != 2 or not archives[0].name.endswith("-symbols.zip"):
        sys.exit(f"the archives are {archives}")
    symbols, used = (zipfile.ZipFile(archive) for archive in archives)
    held = [name for name in symbols.namelist() if not name.endswith("/")]
    if len(held) != 1 or not held[0].endswith("bin/telvofm.dll.debug"):
        sys.exit(f"{archives[0].name} holds {held}")
    used.extractall(place)
    symbols.extractall(place / "symbols")
    root = place / archives[1].name.removesuffix(".zip")
    wrong = wrong_symbols("x86_64-w64-mingw32-objcopy", root / "bin/telvofm.dll", place / "symbols" / held[0])
    if wrong:
        sys.exit("\n".join(wrong))
    return root


# What no program is compiled from here, as there is neither Python nor Java nor .NET for Windows: the same files, byte for byte, are
# installed and sold with on Linux by packages/install.
OF_EVERY_SYSTEM = {"csharp": ".cs", "java": ".java", "python": ".py"}


def of_language(folder, suffix):
    return {str(file.relative_to(folder)): file.read_bytes() for file in folder.rglob(f"*{suffix}")
            if "test" not in file.relative_to(folder).parts}


def otherwise(root, source):
    """The languages whose files are not those of the sources."""
    return [f"bindings/{language} is not that of the sources" for language, suffix in OF_EVERY_SYSTEM.items()
            if of_language(root / "bindings" / language, suffix) != of_language(source / "bindings" / language, suffix)]


def named_on_pages(root):
    """The files that the pages name in the folder C:\\telvofm, and that are not there."""
    named = {name for page in pages(root) for name in re.findall(r"C:\\telvofm\\([\w.\\-]+\w)", page.read_text(encoding="utf-8"))}
    if not named:
        return ["no page names a file of the archive"]
    return [f"a page names {name}" for name in sorted(named) if not (root / name.replace("\\", "/")).exists()]


def check_content(root, source, build):
    missing = [name for name in WANTED if not (root / name).is_file()]
    if missing:
        sys.exit(f"not in the archive: {missing}")
    run("sha256sum", "--check", "--strict", "--quiet", "SHA256SUMS", cwd=root)
    summed = {line.split(maxsplit=1)[1] for line in (root / "SHA256SUMS").read_text(encoding="utf-8").splitlines()}
    files = {str(file.relative_to(root)) for file in root.rglob("*") if file.is_file()} - {"SHA256SUMS"}
    if summed != files:
        sys.exit(f"SHA256SUMS and the archive differ in {sorted(summed ^ files)}")
    wrong = dead_links(root) + otherwise(root, source) + named_on_pages(root) + wrong_licences(source, build, root / "licences", PROGRAMS)
    if wrong:
        sys.exit("\n".join(wrong))


def tills(root, address):
    """Programs by each way of linking, in the archive's folder."""
    till(root, address)
    run("sh", "-c", documented("mingw")[0], cwd=root)
    yield "till.exe"
    run(MINGW, "-Iinclude", "till.c", "lib/telvofm.lib", "-o", "other_library.exe", cwd=root)
    yield "other_library.exe"
    run("clang", "--target=x86_64-pc-windows-msvc", "-ffreestanding", "-Iinclude", "-c", "till.c", "-o", "till.obj", cwd=root)
    run("lld-link", "/nodefaultlib", "/entry:main", "/subsystem:console", "/out:lld_link.exe", "till.obj", "lib/telvofm.lib",
        cwd=root)
    yield "lld_link.exe"


def main():
    source, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    wine = sys.argv[3]
    drive = pathlib.Path(os.environ["WINEPREFIX"]) / "drive_c"
    with tempfile.TemporaryDirectory(dir=build) as packing, tempfile.TemporaryDirectory(dir=drive) as folder:
        place = pathlib.Path(folder)
        root = unpacked(build, pathlib.Path(packing))
        check_content(root, source, build)
        root = root.rename(place / "telvofm")
        if "106" not in run(wine, root / "bin/telvofm.exe", "call", "getVersion"):
            sys.exit("the archive's tool does not call the archive's library")
        shutil.copy(root / "bin/telvofm.dll", root)  # beside the programs
        with Printer(wine, root / "bin/telvofm-printer.exe") as printer:
            for program in tills(root, printer.address):
                run(wine, program, cwd=root)
                printer.expect_receipt()
            with_find_package(root, pathlib.Path(packing) / "cmake", printer.address,
                              "-DCMAKE_SYSTEM_NAME=Windows", f"-DCMAKE_C_COMPILER={MINGW}")
            shutil.copy(pathlib.Path(packing) / "cmake/build/till.exe", root / "by_cmake.exe")
            run(wine, "by_cmake.exe", cwd=root)
            printer.expect_receipt()
        units = build / "bindings/pascal/units"
        run(source / "scripts/pascal-for-windows", units)  # which the build has done already
        sell_under_wine(root, wine, units)


main()
