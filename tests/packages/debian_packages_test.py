#!/usr/bin/env python3
"""Packs a build for Debian, lets lintian look at the packages, holds what they say that they depend on against what is in
them, and the symbols against the library, and sells with programs in every language that are built from nothing but what
they hold, on the virtual printer that they hold.

    debian_packages_test.py BUILD_FOLDER VERSION
"""
import os
import pathlib
import re
import sys
import tempfile

from first_steps import sell_in_every_language
from installed_sale import DOCUMENTED, Printer, run, with_find_package, with_pkg_config
from links import dead_links
from symbols import wrong_symbols

# What each package holds: a file of it, and what of ours and of the system it wants beside it.
PACKAGES = {
    "libtelvofm1": ("usr/lib/x86_64-linux-gnu/libtelvofm.so.1", set()),
    "libtelvofm-dev": ("usr/include/telvofm.h", {"libtelvofm1"}),
    "telvofm-tools": ("usr/bin/telvofm-printer", {"libtelvofm1"}),
    "libtelvofm1-dbg": ("usr/lib/debug/usr/lib/x86_64-linux-gnu", {"libtelvofm1"}),
}
# The packages of the libraries that ours ask for, and whose versions of symbols are versions of theirs.
OF_LIBRARY = {
    "ld-linux-x86-64.so.2": "libc6",
    "libc.so.6": "libc6",
    "libm.so.6": "libc6",
    "libgcc_s.so.1": "libgcc-s1",
    "libpng16.so.16": "libpng16-16",
    "libsqlite3.so.0": "libsqlite3-0",
    "libstdc++.so.6": "libstdc++6",
    "libzint.so.2.11": "libzint2.11",
}
OF_RUNTIME = {"3.4.29": "11", "3.4.30": "12"}  # which GCC brought it


def number(version):
    return [int(part) for part in version.split(".")]


def field(package, name):
    return run("dpkg-deb", "--field", package, name).strip()


def depends(package):
    """{package: what of its version}"""
    wanted = re.findall(r"([\w.+-]+)(?: \(([^)]*)\))?(?:, |$)", field(package, "Depends"))
    return dict(wanted)


def newest(prefix, symbols):
    return max(re.findall(rf"\({prefix}_([0-9.]+)\)", symbols), key=number)


def needed_of_system(root):
    """What the programs and libraries of a package ask for, as its Depends has to say it."""
    wanted = {}
    binaries = [file for file in [*root.glob("usr/bin/*"), *root.glob("usr/lib/*/*.so.*")] if not file.is_symlink()]
    for binary in binaries:
        dynamic = run("readelf", "--wide", "--dynamic", binary)
        symbols = run("objdump", "-T", binary)
        for library in re.findall(r"\(NEEDED\)\s+Shared library: \[(.*?)\]", dynamic):
            wanted.setdefault(OF_LIBRARY.get(library, f"the package of {library}"), "")
        for package, version in (("libc6", newest("GLIBC", symbols)),
                                 ("libstdc++6", OF_RUNTIME.get(newest("GLIBCXX", symbols), "0"))):
            wanted[package] = max(wanted[package] or "0", version, key=number)
    return wanted


def check_depends(package, name, root, version):
    said, ours = depends(package), PACKAGES[name][1]
    wrong = [f"{name} depends on {said.get(other)} of {other}" for other in ours if said.get(other) != f"= {version}"]
    for other, oldest in needed_of_system(root).items():
        if other not in said or (oldest and said[other] != f">= {oldest}"):
            wrong.append(f"{name} needs {other} {oldest} and depends on {said}")
    if wrong:
        sys.exit("\n".join(wrong))


def check_names(root):
    """Where the manual pages say that a file is, there is one."""
    for page in root.glob("usr/share/man/man*/*.gz"):
        text = run("zcat", page)
        missing = [name for name in re.findall(r"(/usr/[\w/.-]+\w)", text) if not (root / name[1:]).exists()]
        if missing:
            sys.exit(f"{page.name} names {missing}, which no package has")


def unpacked(packages, place, version):
    """The folder of all packages together; each is looked at by itself before."""
    for package in packages:
        name = field(package, "Package")
        own = place / name
        run("dpkg", "--extract", package, own)
        if not (own / PACKAGES[name][0]).exists() or field(package, "Version") != version:
            sys.exit(f"{package.name} has version {field(package, 'Version')}, or not its {PACKAGES[name][0]}")
        check_depends(package, name, own, version)
        run("cp", "--recursive", "--no-dereference", "--link", f"{own}/.", place / "root")
    return place / "root"


def documented_steps():
    """What docs/packages.md lets somebody do who has the packages: install them, start a printer, build an example, sell."""
    chapter = DOCUMENTED.read_text(encoding="utf-8").split("## From a package\n", 1)[1].split("\n#", 1)[0]
    return re.findall(r"^    (.*)$", chapter, re.MULTILINE)


def main():
    build, version = pathlib.Path(sys.argv[1]).resolve(), f"{sys.argv[2]}-1"
    with tempfile.TemporaryDirectory(dir=build) as folder:
        place = pathlib.Path(folder)
        run("cpack", "--config", build / "CPackConfig.cmake", "-B", place)
        packages = sorted(place.glob("*.deb"))
        named = sorted(field(package, "Package") for package in packages)
        if named != sorted(PACKAGES):
            sys.exit(f"the packages are {named}")
        install, start, compile_example, sell = documented_steps()
        if set(re.findall(r" \./(\S+?)_\*\.deb", install)) != PACKAGES.keys() - {"libtelvofm1-dbg"}:
            sys.exit(f"docs/packages.md installs with {install}")
        run("lintian", "--allow-root", "--fail-on", "error", *packages)
        root = unpacked(packages, place, version)
        check_names(root)
        library, = root.rglob("libtelvofm.so.1")
        symbols, = (root / "usr/lib/debug").rglob("*.debug")
        wrong = dead_links(root) + wrong_symbols("objcopy", library.resolve(), symbols)
        if wrong:
            sys.exit("\n".join(wrong))

        libraries = {**os.environ, "LD_LIBRARY_PATH": str(library.parent)}
        run(root / "usr/bin/telvofm", "--version", env=libraries)
        with Printer(root / "usr/bin" / start.split()[0]) as printer:
            pkg_config = {**libraries, "PKG_CONFIG_LIBDIR": str(library.parent / "pkgconfig")}
            run("sh", "-c", compile_example.replace("/usr/", f"{root}/usr/"), cwd=place, env=pkg_config)
            printer.expect_demo_receipt(run("sh", "-c", sell.replace("127.0.0.1:9100", printer.address), cwd=place, env=libraries))
            by_pkg_config, by_cmake = place / "pkg_config", place / "find_package"
            with_pkg_config(root, by_pkg_config, printer.address, of_example="-fsyntax-only")
            run("./till", env=libraries, cwd=by_pkg_config)
            printer.expect_receipt()
            with_find_package(root / "usr", by_cmake, printer.address)
            run("build/till", cwd=by_cmake)
            printer.expect_receipt()
        sell_in_every_language(root / "usr", place)


main()
