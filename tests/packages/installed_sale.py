"""Sells with programs that are built from nothing but what is installed in a folder, as docs/packages.md says."""
import os
import pathlib
import re
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
DOCUMENTED = HERE.parent.parent / "docs/packages.md"


def run(*command, **more):
    """Runs a command; its output is shown when it fails."""
    words = [str(word) for word in command]
    done = subprocess.run(words, check=False, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **more)
    if done.returncode != 0:
        sys.exit(f"{' '.join(words)} ended with {done.returncode} and said\n{done.stdout}")
    return done.stdout


class Printer:
    """A virtual printer while a `with` lasts; `address` is where it listens."""

    def __init__(self, *command):
        self.process = subprocess.Popen([*command, "--listen", "127.0.0.1:0"], stdout=subprocess.PIPE, text=True,
                                        encoding="utf-8")

    def __enter__(self):
        self.address = self.process.stdout.readline().split()[-1]
        return self

    def __exit__(self, *failure):
        self.process.kill()
        self.process.wait()

    def expect_receipt(self):
        """Reads the paper up to the payment of one receipt; the test's time limit ends an endless wait."""
        paper = []
        for line in self.process.stdout:
            paper.append(line)
            if "Hotovost" in line:
                break
        if not any("Chlieb" in line for line in paper) or "12.50" not in paper[-1]:
            sys.exit("the receipt is not on the paper:\n" + "".join(paper))

    def expect_demo_receipt(self, said):
        """What an example has said, and its receipt up to the last payment."""
        if not re.search(r"^sold: receipt \d+, total 23\.59$", said, re.MULTILINE):
            sys.exit(f"the example said {said}")
        if not any("Hotovosť" in line for line in self.process.stdout):
            sys.exit("the demo receipt is not on the paper")


def documented(way):
    """What docs/packages.md says to somebody who builds a till in this way, piece by piece."""
    row, = re.findall(rf"^\| {re.escape(way)} \| (.*) \|$", DOCUMENTED.read_text(encoding="utf-8"), re.MULTILINE)
    return re.findall("`([^`]+)`", row)


def till(place, address):
    """The program of a till as till.c in a folder of its own."""
    place.mkdir(parents=True, exist_ok=True)
    text = (HERE / "sale.c").read_text(encoding="utf-8").replace('"ADDRESS"', f'"{address}"')
    (place / "till.c").write_text(text, encoding="utf-8")
    return place


def with_pkg_config(folder, place, address, *, of_example):
    """Builds till.c with what pkg-config finds in a folder, and so, into OF_EXAMPLE, the folder's own example in C++."""
    description, = folder.rglob("telvofm.pc")
    example, = folder.rglob("cpp/demo_receipt.cpp")
    command = documented("pkg-config")[0]
    in_cpp = command.replace("gcc till.c", f"g++ -std=c++20 {example}").replace("-o till", of_example)
    for line in (command, in_cpp):
        run("sh", "-c", line, cwd=till(place, address), env={**os.environ, "PKG_CONFIG_LIBDIR": str(description.parent)})


def with_find_package(folder, place, address, *arguments):
    """Builds till.c with what CMake's find_package finds in a folder."""
    find, link, variable = documented("CMake")
    (till(place, address) / "CMakeLists.txt").write_text(f"""
        cmake_minimum_required(VERSION 3.25)
        project(till LANGUAGES C)
        {find}
        add_executable(till till.c)
        {link}
        """, encoding="utf-8")
    configuration, = folder.rglob("telvofmConfig.cmake")
    said = run("cmake", "-G", "Ninja", "-S", place, "-B", place / "build", f"-D{variable}={folder}", *arguments)
    run("cmake", "--build", place / "build")
    found = (place / "build/CMakeCache.txt").read_text(encoding="utf-8")
    if f"telvofm_DIR:PATH={configuration.parent}\n" not in found:
        sys.exit(f"another telvofm was found than that of {folder}:\n{said}")
