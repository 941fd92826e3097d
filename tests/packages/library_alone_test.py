#!/usr/bin/env python3
"""Another project takes our folder into its build: it gets the library, and nothing of our tests, their dependencies,
programs and settings, and installs the library with itself when it asks for that, not otherwise.

    library_alone_test.py SOURCE_FOLDER WORK_FOLDER [--build]

What it installs is the library of the work folder. With --build the project builds its own, and its program is run as well.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

PROJECT = """
cmake_minimum_required(VERSION 3.25)
project(till LANGUAGES C CXX)
foreach(package IN ITEMS GTest rapidcheck Boost SQLite3 PNG Python3 CLI11 nlohmann_json)
    set(CMAKE_DISABLE_FIND_PACKAGE_${package} ON) # one that is wanted all the same is an error
endforeach()
add_subdirectory({SOURCE} telvofm)
add_executable(till till.c)
target_link_libraries(till PRIVATE telvofm::telvofm)
install(FILES till.c DESTINATION share/till)
get_property(tests DIRECTORY {SOURCE} PROPERTY TESTS)
if(tests OR CMAKE_CXX_STANDARD OR CMAKE_RUNTIME_OUTPUT_DIRECTORY)
    message(FATAL_ERROR "what is the library's own has come into the project: ${tests}")
endif()
"""
TILL = """
#include <telvofm.h>
int main(void) { return getVersion() == 106 ? 0 : 1; }
"""
# Of the programs, libraries and tests: those that a build of everything would make.
WANTED = {"telvofm", "telvofm_inside", "till"}


def run(*command, **more):
    done = subprocess.run([str(word) for word in command], check=False, text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, **more)
    if done.returncode != 0:
        sys.exit(f"{command} ended with {done.returncode} and said\n{done.stdout}")
    return done.stdout


def installed(build, prefix):
    run("cmake", "--install", build, "--prefix", prefix)
    return {str(file.relative_to(prefix)) for file in prefix.rglob("*") if not file.is_dir()}


def use(prefix, project):
    """With pkg-config, because CMake has found the library in the project's own build already."""
    description, = prefix.rglob("telvofm.pc")
    flags = run("pkg-config", "--cflags", "--libs", "telvofm",
                env={**os.environ, "PKG_CONFIG_LIBDIR": str(description.parent)}).split()
    library, = prefix.rglob("libtelvofm.so.1")
    run("gcc", project / "till.c", "-o", project / "installed_till", *flags, f"-Wl,-rpath,{library.parent}")
    run(project / "installed_till")


def main():
    source, work = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    with tempfile.TemporaryDirectory(dir=work) as folder:
        project = pathlib.Path(folder)
        (project / "CMakeLists.txt").write_text(PROJECT.replace("{SOURCE}", str(source)), encoding="utf-8")
        (project / "till.c").write_text(TILL, encoding="utf-8")
        build = project / "build"
        run("cmake", "-G", "Ninja", "-S", project, "-B", build, "-DCMAKE_BUILD_TYPE=Release")
        listed = run("ninja", "-C", build, "-t", "targets", "all").splitlines()
        made = [line.split(":")[0] for line in listed if "_LINKER__" in line]
        built = {pathlib.PurePath(name).name.removeprefix("lib").split(".")[0] for name in made}
        if built != WANTED:
            sys.exit(f"a build would make {sorted(built)}, and not just {sorted(WANTED)}")
        if sys.argv[3:] == ["--build"]:
            run("cmake", "--build", build)
            run(build / "till")
        else:
            for library in work.glob("libtelvofm.so*"):
                shutil.copy(library, build / "telvofm/api", follow_symlinks=False)
            run("cmake", "-E", "touch", build / "till")
        if installed(build, project / "without") != {"share/till/till.c"}:
            sys.exit(f"the project installs {installed(build, project / 'without')}, and not its own files alone")
        run("cmake", "-S", project, "-B", build, "-DTELVOFM_INSTALL=ON")
        names = installed(build, project / "with")
        if not {"share/till/till.c", "include/telvofm.h", "include/telvofm.hpp"} <= names:
            sys.exit(f"with TELVOFM_INSTALL the project installs only {sorted(names)}")
        programs = [name for name in names if name.startswith("bin/") or "/man1/" in name]
        if programs:
            sys.exit(f"with TELVOFM_INSTALL the project installs programs, too: {programs}")
        use(project / "with", project)


main()
