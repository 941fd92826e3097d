#!/usr/bin/env python3
"""Packs a build for Debian, lets lintian look at the packages, and sells with programs in every language that are built
from nothing but what they hold, on the virtual printer that they hold.

    debian_packages_test.py SOURCE_FOLDER BUILD_FOLDER VERSION
"""
import os
import pathlib
import sys
import tempfile

from first_steps import sell_in_every_language
from installed_sale import Printer, run, with_pkg_config

PACKAGES = {"libtelvofm1", "libtelvofm-dev", "telvofm-tools", "libtelvofm1-dbg"}


def main():
    source, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    version = sys.argv[3]
    changes = (source / "packaging/debian/changelog").read_text(encoding="utf-8")
    if not changes.startswith(f"telvofm ({version}-1) "):
        sys.exit(f"packaging/debian/changelog begins with {changes.splitlines()[0]!r}, the version is {version}")
    with tempfile.TemporaryDirectory(dir=build) as folder:
        place = pathlib.Path(folder)
        run("cpack", "--config", build / "CPackConfig.cmake", "-B", place)
        packages = sorted(place.glob("*.deb"))
        named = {run("dpkg-deb", "--field", package, "Package").strip() for package in packages}
        if named != PACKAGES:
            sys.exit(f"the packages are {sorted(named)}")
        for package in packages:
            packed = run("dpkg-deb", "--field", package, "Version").strip()
            if packed != f"{version}-1":
                sys.exit(f"{package.name} has version {packed}")
        run("lintian", "--allow-root", "--fail-on", "error", *packages)

        root = place / "root"
        for package in packages:
            run("dpkg", "--extract", package, root)
        library, = root.rglob("libtelvofm.so.1")
        libraries = {**os.environ, "LD_LIBRARY_PATH": str(library.parent)}
        run(root / "usr/bin/telvofm", "--version", env=libraries)
        with Printer(root / "usr/bin/telvofm-printer") as printer:
            with_pkg_config(root, place / "till", printer.address)
            run(place / "till", env=libraries, cwd=place)
            printer.expect_receipt()
        sell_in_every_language(root / "usr", place)


main()
