"""Links the woven objects: into the shared library, and into the tests that link the inside of the library."""
import re
import shutil
import sys

from syntax import INSIDE, TOP
from woven_library import INLINE

sys.path.insert(0, str(TOP / "tests"))
from linked_again import link, link_again, link_command  # noqa: E402


def is_inside(source):
    return source.split("/")[0] in INSIDE


def shared_library(library, target, replaced={}):
    """The shared library; `replaced` gives other objects for some sources."""
    objects = [str(replaced.get(source) or library.object_of(source)) for source in library.sources]
    link(["clang++", "-shared", "-fuse-ld=lld", "-Wl,-soname,libtelvofm.so.1",
          f"-Wl,--version-script={library.top}/api/telvofm.map", *objects, "-o", str(target / "libtelvofm.so.1"), "-pthread"])


def programs_of_the_inside(build, programs):
    """The link commands of those test programs that have objects of the library in them, by name."""
    found = {}
    for program in programs:
        command = link_command(build, program)
        if "libtelvofm_inside.a" in command or "/api/delivery.cpp.o" in command:
            found[program] = command
    return found


def program(library, build, command, target, replaced={}):
    """Links a test program again. The woven objects come first, so that their inline functions are taken; what the test
    itself has in the place of a platform's file is taken instead of ours."""
    archive = target.parent / "inside.a"
    first = []
    if "libtelvofm_inside.a" in command:
        first = [str(replaced.get(source) or library.object_of(source)) for source in library.sources
                 if is_inside(source) and "_posix" not in source]
        first.append(str(library.object_of(INLINE)))
    for source in library.sources:  # the library's own files in a test
        command = re.sub(rf"\S*__/{re.escape(source)}\.o|\S*/{re.escape(source)}\.o(?=\s)",
                         lambda _, source=source: str(replaced.get(source) or library.object_of(source)), command)
    link_again(command.replace("libtelvofm_inside.a", str(archive)), build, target, first)


def archive(library, target, replaced={}):
    path = target / "inside.a"
    path.unlink(missing_ok=True)
    objects = [str(replaced.get(source) or library.object_of(source)) for source in library.sources if is_inside(source)]
    link(["ar", "rcs", str(path), *objects])


def link_all(library, build, target, programs, replaced={}):
    """Everything that the tests need; programs without objects of the library are copied."""
    target.mkdir(parents=True, exist_ok=True)
    shared_library(library, target, replaced)
    archive(library, target, replaced)
    inside = programs_of_the_inside(build, programs)
    for name in programs:
        if name in inside:
            program(library, build, inside[name], target / name, replaced)
        else:
            (target / name).unlink(missing_ok=True)  # a test of a run that was ended may still be at it
            shutil.copy2(build / name, target / name)
