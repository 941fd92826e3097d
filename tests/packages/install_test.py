#!/usr/bin/env python3
"""Installs a build into an empty prefix and sells on the installed virtual printer, with programs that are built
outside by pkg-config, by CMake and in every language, from nothing but what is in the prefix.

    install_test.py BUILD_FOLDER
"""
import os
import pathlib
import sys
import tempfile

from first_steps import sell_in_every_language
from installed_sale import Printer, run, with_find_package, with_pkg_config

WANTED = """
    bin/telvofm
    bin/telvofm-printer
    include/telvofm.h
    include/telvofm.hpp
    include/telvofm/session.hpp
    share/doc/telvofm/LICENSE
    share/doc/telvofm/README.md
    share/doc/telvofm/docs/integration.md
    share/man/man1/telvofm-printer.1
    share/man/man1/telvofm.1
    share/man/man3/telvofm.3
    share/bash-completion/completions/telvofm
    share/telvofm/bindings/c/last_receipt.c
    share/telvofm/bindings/cpp/demo_receipt.cpp
    share/telvofm/bindings/demo_receipt.md
    share/telvofm/bindings/python/telvofm/__init__.py
""".split()


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory(dir=build) as folder:
        prefix = pathlib.Path(folder) / "prefix"
        run("cmake", "--install", build, "--prefix", prefix)
        missing = [name for name in WANTED if not (prefix / name).exists()]
        if missing:
            sys.exit(f"not installed: {missing}")
        library, = prefix.rglob("libtelvofm.so.1")
        loaded = run(prefix / "bin/telvofm", "doctor", "--json", env={**os.environ, "LD_LIBRARY_PATH": ""})
        if str(library.parent) not in loaded:
            sys.exit(f"the installed tool loads another library than {library}: {loaded}")
        libraries = {**os.environ, "LD_LIBRARY_PATH": str(library.parent)}
        with Printer(prefix / "bin/telvofm-printer") as printer:
            till = pathlib.Path(folder) / "till"
            with_pkg_config(prefix, till, printer.address)
            run(till, env=libraries, cwd=folder)
            printer.expect_receipt()

            with_find_package(prefix, pathlib.Path(folder) / "build", printer.address)
            run(pathlib.Path(folder) / "build/ninja/till", cwd=folder)
            printer.expect_receipt()
        sell_in_every_language(prefix, pathlib.Path(folder))


main()
