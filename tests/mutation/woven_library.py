"""The library with all mutants in it, built once: whole, and as the objects of the tests that link its inside."""
import concurrent.futures
import json
import os
import re
import subprocess

from syntax import INSIDE, ROOMS, TOP
from weave import Woven

OPTIONS = ("-std=c++20", "-O0", "-fPIC", "-fvisibility=hidden", "-fvisibility-inlines-hidden", "-w", "-DTELVOFM_BUILDING")
INLINE = "inline_functions.cpp"  # all of the headers, as the tests call some that the library does not
HERE = TOP / "tests/mutation"
AT_ONCE = int(os.environ.get("TELVOFM_JOBS", "2"))


def precompiled(folder, *more):
    """The switch and the system's headers, read once; `more` are options."""
    header = folder / "mutation_switch.pch"
    if not header.exists() or header.stat().st_mtime < (HERE / "mutation_switch.h").stat().st_mtime:
        subprocess.run(["clang++", *OPTIONS, *more, "-x", "c++-header", HERE / "mutation_switch.h", "-o", header], check=True)
    return ["-include-pch", str(header)]


def write_if_changed(path, content):
    if not path.exists() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


def weave(top, tree, file, mutants):
    woven = Woven((top / file).read_bytes().decode("latin-1"), mutants)
    write_if_changed(tree / file, woven.text.encode("latin-1"))
    return woven


class WovenLibrary:
    def __init__(self, top, folder, files, mutants, *more):
        self.top, self.folder, self.tree, self.objects = top, folder, folder / "tree", folder / "objects"
        self.sources = [file for file in files if file.endswith(".cpp")]
        self.mutants = {file: [one for one in mutants if one.file == file and one.form != "alone"] for file in files}
        self.lines_tried = set()
        self.left_out = []
        self.known = folder / "left_out.json"  # by their keys, so that the next time nothing fails to compile
        known = set(json.loads(self.known.read_text())) if self.known.exists() else set()
        for file in files:
            self.leave_out(file, [one for one in self.mutants[file] if one.key in known])
        for file in {"api/telvofm.h", *(str(path.relative_to(top)) for room in ROOMS for path in (top / room).rglob("*.h"))} - set(files):
            if (top / file).exists():
                write_if_changed(self.tree / file, (top / file).read_bytes())
        inside = [file for file in files if file.endswith(".h") and file.split("/")[0] in INSIDE]
        write_if_changed(self.tree / INLINE, "".join(f'#include "{file}"\n' for file in inside).encode())
        self.objects.mkdir(parents=True, exist_ok=True)
        self.options = [*OPTIONS, *more, *precompiled(folder, *more), f"-I{self.tree}", f"-I{top}"]

    def object_of(self, source):
        return self.objects / (source.replace("/", "_") + ".o")

    def is_stale(self, source):
        made = self.object_of(source)
        read = [self.tree / source, self.folder / "mutation_switch.pch", *self.tree.rglob("*.h")]
        return not made.exists() or any(path.stat().st_mtime >= made.stat().st_mtime for path in read)

    def compile(self, source, object_file=None, path=None):
        command = ["clang++", *self.options, *["-femit-all-decls"] * (source == INLINE), "-ferror-limit=0", "-fno-caret-diagnostics",
                   "-c", str(path or self.tree / source), "-o", str(object_file or self.object_of(source))]
        return source, subprocess.run(command, capture_output=True, text=True, errors="replace")

    def leave_out(self, file, mutants):
        for one in mutants:
            if one in self.mutants[file]:
                self.mutants[file].remove(one)
                self.left_out.append(one)

    def leave_out_what_does_not_compile(self, woven, errors):
        """By the place of each error: the mutant there, and when that does not help all of the line."""
        found = False
        for file, line, column in set(re.findall(rf"^{re.escape(str(self.tree))}/(\S+?):(\d+):(\d+): (?:fatal )?(?:error|note)", errors, re.M)):
            if file not in self.mutants or not self.mutants[file]:
                continue
            line, column = int(line), int(column)
            if (file, line) in self.lines_tried:
                guilty = [one for one in self.mutants[file]
                          if one.line <= line <= one.line + one.original.count("\n")]
            else:
                guilty = [one for one in woven[file].mutants_at(line, column) if one in self.mutants[file]]
                self.lines_tried.add((file, line))
            found = True
            self.leave_out(file, guilty)
        return found

    def build(self):
        woven = {file: weave(self.top, self.tree, file, mutants) for file, mutants in self.mutants.items()}
        for file, one in woven.items():
            self.leave_out(file, one.left_out)
        everything = [*self.sources, INLINE]
        waiting = [source for source in everything if self.is_stale(source)]
        for _ in range(40):
            with concurrent.futures.ThreadPoolExecutor(AT_ONCE) as several:
                failed = [(source, result.stderr) for source, result in several.map(self.compile, waiting) if result.returncode]
            if not failed:
                self.known.write_text(json.dumps(sorted(one.key for one in self.left_out)))
                return
            before = {file: len(mutants) for file, mutants in self.mutants.items()}
            if not any([self.leave_out_what_does_not_compile(woven, errors) for _, errors in failed]):
                raise SystemExit(failed[0][1][:3000])
            changed = [file for file, mutants in self.mutants.items() if len(mutants) != before[file]]
            woven.update({file: weave(self.top, self.tree, file, self.mutants[file]) for file in changed})
            waiting = everything if any(file.endswith(".h") for file in changed) else [source for source, _ in failed]
        raise SystemExit("some mutants still do not compile:\n" + failed[0][1][:3000])
