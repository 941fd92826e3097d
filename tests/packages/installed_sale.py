"""Sells with programs that are built from nothing but what is installed in a folder."""
import os
import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).parent


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


def with_pkg_config(folder, program, address, compiler="gcc"):
    """Builds a program with what pkg-config finds in a folder."""
    description, = folder.rglob("telvofm.pc")
    flags = run("pkg-config", "--cflags", "--libs", "telvofm",
                env={**os.environ, "PKG_CONFIG_LIBDIR": str(description.parent)}).split()
    run(compiler, "-Wall", "-Werror", f'-DADDRESS="{address}"', HERE / "sale.c", "-o", program, *flags)


def with_find_package(folder, build, address, *arguments):
    """Builds a program with what CMake's find_package finds in a folder."""
    project = build / "project"
    project.mkdir(parents=True)
    (project / "CMakeLists.txt").write_text(f"""
        cmake_minimum_required(VERSION 3.25)
        project(till LANGUAGES C)
        find_package(telvofm 1.0 REQUIRED)
        add_executable(till {HERE}/sale.c)
        target_compile_definitions(till PRIVATE ADDRESS="{address}")
        target_link_libraries(till PRIVATE telvofm::telvofm)
        """, encoding="utf-8")
    configuration, = folder.rglob("telvofmConfig.cmake")
    said = run("cmake", "-G", "Ninja", "-S", project, "-B", build / "ninja", f"-DCMAKE_PREFIX_PATH={folder}", *arguments)
    run("cmake", "--build", build / "ninja")
    found = (build / "ninja/CMakeCache.txt").read_text(encoding="utf-8")
    if f"telvofm_DIR:PATH={configuration.parent}\n" not in found:
        sys.exit(f"another telvofm was found than that of {folder}:\n{said}")
