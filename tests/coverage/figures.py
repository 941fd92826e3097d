#!/usr/bin/env python3
"""The branches of the library that its tests have taken, as clang counts them: a line for each room, and what is missing.

    tests/coverage/figures.py [--all]      every file, too

scripts/prove coverage runs it behind the tests. Both outcomes of a condition count, each once, whatever the number of functions that are
made of a template. Those that no test can bring about stand in exclusions.toml, with the reason; one that has been seen, or is nowhere
in its file any more, must not stand there. It ends with 1 when a room is below 97 %. coverage_sample.py does so for one room.
"""
import collections
import json
import pathlib
import subprocess
import sys
import tomllib

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
BUILD = TOP / "build/coverage"
ROOMS = ("api", "link", "device", "commands", "graphics")
WANTED = 0.97


def exported(raw, objects, sources, profile):
    """What llvm-cov tells of these sources, by what the runs of the objects have left; `profile` is made of that."""
    subprocess.run(["llvm-profdata", "merge", "-sparse", *raw, "-o", profile], check=True)
    told = subprocess.run(["llvm-cov", "export", "-skip-functions", f"-instr-profile={profile}",
                           objects[0], *[word for path in objects[1:] for word in ("-object", path)],
                           *[TOP / source for source in sources]], check=True, stdout=subprocess.PIPE).stdout
    return json.loads(told)["data"][0]["files"]


def outcomes(file):
    """Whether each condition was seen true and seen false, by its place."""
    seen = {}
    for line, column, end_line, end_column, true, false, *_ in file["branches"]:
        taken = seen.setdefault((line, column, end_line, end_column), [False, False])
        taken[0] |= true > 0
        taken[1] |= false > 0
    return seen


def text_at(lines, place):
    line, column, end_line, end_column = place
    if line == end_line:
        return lines[line - 1][column - 1:end_column - 1]
    return lines[line - 1][column - 1:] + " ..."


def report(told, wanted_rooms, names_files=False):
    """Prints what is missing, a line for each file when it is to, and one for each room; the result is that of the program."""
    excluded = {(one["file"], one["condition"], one["outcome"])
                for one in tomllib.loads((TOP / "tests/coverage/exclusions.toml").read_text())["exclusion"]
                if one["file"].split("/")[0] in wanted_rooms}
    rooms, files, missing, unused = collections.Counter(), collections.Counter(), [], set(excluded)
    for file in told:
        name = str(pathlib.Path(file["filename"]).relative_to(TOP))
        lines = (TOP / name).read_text().split("\n")
        for place, taken in sorted(outcomes(file).items()):
            for outcome, is_taken in zip(("true", "false"), taken):
                key = (name, text_at(lines, place), outcome)
                if not is_taken and key in excluded:
                    unused.discard(key)
                    rooms[name.split("/")[0], "excluded"] += 1
                    continue
                if not is_taken:
                    missing.append(f"{name}:{place[0]}: {key[1]} is never {outcome}")
                for counts, of in ((rooms, name.split("/")[0]), (files, name)):
                    counts[of, "all"] += 1
                    counts[of, "taken"] += is_taken
    print("\n".join(missing))
    for counts, names in ((files, sorted({name for name, _ in files}) if names_files else ()), (rooms, wanted_rooms)):
        for name in names:
            share = counts[name, "taken"] / counts[name, "all"]
            print(f"{name:<36}{counts[name, 'taken']:>5} of {counts[name, 'all']:>4} outcomes of conditions {share:>8.2%}"
                  + (f", {counts[name, 'excluded']} excluded" if counts[name, "excluded"] else ""))
    for name, condition, outcome in sorted(unused):
        print(f'exclusions.toml: "{condition}" in {name} is {outcome} in a test, or is not there')
    return 1 if unused or any(rooms[room, "taken"] < WANTED * rooms[room, "all"] for room in wanted_rooms) else 0


def main():
    raw = list((BUILD / "profiles").glob("*.profraw"))
    told = exported(raw, [BUILD / "libtelvofm.so", *sorted(BUILD.glob("*_test"))], ROOMS, BUILD / "all.profdata")
    return report(told, ROOMS, "--all" in sys.argv)


if __name__ == "__main__":
    sys.exit(main())
