#!/usr/bin/env python3
"""Loading the library takes at most a millisecond more than loading a control library that wants the same of the
system and does nothing.

    loading_time_test.py LIBRARY COMPILER WORK_FOLDER [WINE] PROGRAM

PROGRAM is the built loading_time, which loads both in turn. The median of the differences counts.
"""
import pathlib
import re
import subprocess
import sys
import tempfile

LONGEST = 1000  # microseconds


def said_by(*command):
    return subprocess.run([str(word) for word in command], check=True, capture_output=True, text=True).stdout


def control_for_linux(library, compiler, folder):
    wanted = re.findall(r"^\s+([Uwv]) ([^@\s]+)", said_by("nm", "-D", "--undefined-only", library), re.MULTILINE)
    lines = [f"{'.weak ' + name if kind != 'U' else ''}\n.quad {name}" for kind, name in wanted]
    source, control = folder / "control.s", folder / "control.so"
    source.write_text(".data\n" + "\n".join(lines) + '\n.section .note.GNU-stack,"",@progbits\n', encoding="utf-8")
    said_by(compiler, "-shared", source, "-o", control, "-Wl,--no-as-needed", "-lstdc++", "-lgcc_s", "-Wl,-z,now")
    return control


def control_for_windows(library, compiler, folder):
    described = said_by("x86_64-w64-mingw32-objdump", "-p", library).split("The Import Tables", 1)[1]
    described = described.split("The Export Tables", 1)[0]
    names = re.findall(r"^\s+[0-9a-f]+\s+\d+\s+(\w+)\s*$", described, re.MULTILINE)
    libraries = [f"-l{dll.lower()}" for dll in re.findall(r"DLL Name: (\w+)\.dll", described)]
    lines = [f".quad __imp_{name}" for name in names]
    source, control = folder / "control.s", folder / "control.dll"
    source.write_text(".data\n" + "\n".join(lines) + "\n", encoding="utf-8")
    said_by(compiler, "-shared", "-nostdlib", source, "-o", control, *libraries)
    return control


def imports(library):
    described = said_by("x86_64-w64-mingw32-objdump", "-p", library)
    return sorted(re.findall(r"DLL Name: (\S+)", described))


def main():
    library, compiler, work, *program = sys.argv[1:]
    library = pathlib.Path(library).resolve()
    with tempfile.TemporaryDirectory(dir=work) as place:
        if library.suffix == ".dll":
            control = control_for_windows(library, compiler, pathlib.Path(place))
            if imports(control) != imports(library):
                sys.exit(f"the control library imports from {imports(control)}, the library from {imports(library)}")
        else:
            control = control_for_linux(library, compiler, pathlib.Path(place))
        ours, theirs, longer = (int(number) for number in said_by(*program, library, control).split())
    print(f"loaded in {ours} microseconds, the control library in {theirs}: {longer} longer")
    if longer > LONGEST:
        sys.exit(f"that is more than {LONGEST}")


main()
