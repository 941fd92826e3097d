#!/usr/bin/env python3
"""Another project takes our folder into its build: it gets the library, and nothing of our tests, their dependencies,
programs and settings.

    library_alone_test.py SOURCE_FOLDER WORK_FOLDER [--build]

With --build its program is built and run as well.
"""
import pathlib
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


def run(*command):
    done = subprocess.run([str(word) for word in command], check=False, text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT)
    if done.returncode != 0:
        sys.exit(f"{command} ended with {done.returncode} and said\n{done.stdout}")
    return done.stdout


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


main()
