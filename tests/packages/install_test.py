#!/usr/bin/env python3
"""Installs a build into an empty prefix and sells on the installed virtual printer, with programs that are built
outside by pkg-config, by CMake and in every language, from nothing but what is in the prefix. No page there has a dead link.

    install_test.py BUILD_FOLDER
"""
import os
import pathlib
import re
import sys
import tempfile

from first_steps import sell_in_every_language
from installed_sale import DOCUMENTED, Printer, run, with_find_package, with_pkg_config
from links import dead_links

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
    share/telvofm/scenarios/bad-cable.json
    share/telvofm/testing/telvofm_printer.py
""".split()


def install(build, prefix):
    """With the command of docs/packages.md."""
    command, = re.findall(r"^    (cmake --install .*)$", DOCUMENTED.read_text(encoding="utf-8"), re.MULTILINE)
    run("sh", "-c", command.replace("build/release", str(build)).replace("/opt/telvofm", str(prefix)))


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory(dir=build) as folder:
        prefix = pathlib.Path(folder) / "prefix"
        install(build, prefix)
        missing = [name for name in WANTED if not (prefix / name).exists()]
        if missing:
            sys.exit(f"not installed: {missing}")
        dead = dead_links(prefix)
        if dead:
            sys.exit("\n".join(dead))
        library, = prefix.rglob("libtelvofm.so.1")
        loaded = run(prefix / "bin/telvofm", "doctor", "--json", env={**os.environ, "LD_LIBRARY_PATH": ""})
        if str(library.parent) not in loaded:
            sys.exit(f"the installed tool loads another library than {library}: {loaded}")
        libraries = {**os.environ, "LD_LIBRARY_PATH": str(library.parent)}
        with Printer(prefix / "bin/telvofm-printer") as printer:
            place = pathlib.Path(folder) / "pkg_config"
            with_pkg_config(prefix, place, printer.address, of_example="-o demo_receipt")
            run("./till", env=libraries, cwd=place)
            printer.expect_receipt()
            printer.expect_demo_receipt(run("./demo_receipt", printer.address, env=libraries, cwd=place))

            demo = prefix / "share/telvofm/bindings/python/demo_receipt.py"
            said = run(sys.executable, "-B", demo, printer.address, env={**os.environ, "TELVOFM_LIBRARY": str(library)})
            printer.expect_demo_receipt(said)

            place = pathlib.Path(folder) / "find_package"
            with_find_package(prefix, place, printer.address)
            run("build/till", cwd=place)
            printer.expect_receipt()
        sell_in_every_language(prefix, pathlib.Path(folder))


main()
