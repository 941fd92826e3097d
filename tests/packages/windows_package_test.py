#!/usr/bin/env python3
"""Packs a build for Windows, unpacks it in Wine's drive C, and sells there on the virtual printer of the archive, with
programs that are built from nothing but what it holds: by mingw through both import libraries, by clang and lld-link,
which stand for Microsoft's toolchain, and by CMake.

    windows_package_test.py BUILD_FOLDER WINE
"""
import os
import pathlib
import shutil
import sys
import tempfile
import zipfile

from installed_sale import HERE, Printer, run, with_find_package

MINGW = "x86_64-w64-mingw32-gcc-posix"
WANTED = """
    bindings/csharp/generated/Functions.cs
    bindings/java/telvofm/Session.java
    bindings/pascal/telvofm_library.pas
    bindings/python/telvofm/__init__.py
    bin/telvofm.dll
    bin/telvofm-printer.exe
    bin/telvofm.exe
    doc/docs/integration.md
    include/telvofm.h
    include/telvofm.hpp
    lib/libtelvofm.dll.a
    lib/telvofm.def
    lib/telvofm.lib
    licences/gcc-mingw-w64-x86-64-posix-runtime.txt
    licences/mingw-w64-x86-64-dev.txt
    licences/libcli11-dev.txt
    licences/telvofm.txt
""".split()


def unpacked(build, place):
    """The folder of the one archive, and the other's, which holds symbols only."""
    run("cpack", "--config", build / "CPackConfig.cmake", "-B", place)
    archives = sorted(place.glob("*.zip"))
    if len(archives) != 2 or not archives[0].name.endswith("-symbols.zip"):
        sys.exit(f"the archives are {archives}")
    symbols, used = (zipfile.ZipFile(archive) for archive in archives)
    held = [name for name in symbols.namelist() if not name.endswith("/")]
    if len(held) != 1 or not held[0].endswith("bin/telvofm.dll.debug"):
        sys.exit(f"{archives[0].name} holds {held}")
    used.extractall(place)
    return place / archives[1].name.removesuffix(".zip")


def check_content(root):
    missing = [name for name in WANTED if not (root / name).is_file()]
    if missing:
        sys.exit(f"not in the archive: {missing}")
    run("sha256sum", "--check", "--strict", "--quiet", "SHA256SUMS", cwd=root)
    summed = {line.split(maxsplit=1)[1] for line in (root / "SHA256SUMS").read_text(encoding="utf-8").splitlines()}
    files = {str(file.relative_to(root)) for file in root.rglob("*") if file.is_file()} - {"SHA256SUMS"}
    if summed != files:
        sys.exit(f"SHA256SUMS and the archive differ in {sorted(summed ^ files)}")


def tills(root, place, address):
    """Programs by each way of linking; the DLL lies beside them."""
    include, defined = f"-I{root}/include", f'-DADDRESS="{address}"'
    source, library = HERE / "sale.c", root / "lib/telvofm.lib"
    run(MINGW, include, defined, source, f"-L{root}/lib", "-ltelvofm", "-o", place / "mingw.exe")
    yield "mingw.exe"
    run(MINGW, include, defined, source, library, "-o", place / "mingw_other_library.exe")
    yield "mingw_other_library.exe"
    run("clang", "--target=x86_64-pc-windows-msvc", "-ffreestanding", include, defined, "-c", source,
        "-o", place / "sale.obj")
    run("lld-link", "/nodefaultlib", "/entry:main", "/subsystem:console", f"/out:{place}/lld_link.exe",
        place / "sale.obj", library)
    yield "lld_link.exe"


def main():
    build, wine = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]
    drive = pathlib.Path(os.environ["WINEPREFIX"]) / "drive_c"
    with tempfile.TemporaryDirectory(dir=build) as packing, tempfile.TemporaryDirectory(dir=drive) as folder:
        place = pathlib.Path(folder)
        root = unpacked(build, pathlib.Path(packing))
        check_content(root)
        root = root.rename(place / "telvofm")
        if "106" not in run(wine, root / "bin/telvofm.exe", "call", "getVersion"):
            sys.exit("the archive's tool does not call the archive's library")
        shutil.copy(root / "bin/telvofm.dll", place)
        with Printer(wine, root / "bin/telvofm-printer.exe") as printer:
            for till in tills(root, place, printer.address):
                run(wine, till, cwd=place)
                printer.expect_receipt()
            with_find_package(root, pathlib.Path(packing) / "cmake", printer.address,
                              "-DCMAKE_SYSTEM_NAME=Windows", f"-DCMAKE_C_COMPILER={MINGW}")
            shutil.copy(pathlib.Path(packing) / "cmake/ninja/till.exe", place)
            run(wine, "till.exe", cwd=place)
            printer.expect_receipt()


main()
