"""Makes the list of mutants of a library's sources."""
import dataclasses
import hashlib
import json
import pathlib
import re
import tomllib

from syntax import Source, nodes_of, own_files, parse
import mutant
import ordinary
import targeted

NO_RULES = ("alone.py", "judgement.py", "linked.py", "mutation.py", "mutation_sample.py", "recording.py", "report.py", "same_code.py",
            "sanitized.py", "tests_of_library.py", "tool_test.py", "weave.py", "woven_library.py")


def thoughts(path, top):
    """The mutants that needed a thought of their own."""
    found = []
    for entry in tomllib.loads(path.read_text(encoding="utf-8")).get("mutant", []) if path.exists() else []:
        source = Source(str(top / entry["file"]), entry["file"])
        before = entry["from"].encode().decode("latin-1")
        places = source.text.count(before)
        if places != 1:
            raise SystemExit(f'{path.name}: "{before}" stands {places} times in {entry["file"]}')
        start = source.text.index(before)
        before = re.sub(r"\s*//[^\n]*$", "", before)
        found.append(mutant.Mutant(entry["file"], start, start + len(before), entry.get("form", "alone"),
                                   mutant.on_one_line(entry["to"].encode().decode("latin-1")), "thought", entry["what"], before,
                                   source.text.count("\n", 0, start) + 1))
    return found


def all_mutants(top, arguments, thoughts_file, files=None):
    """Of all files: a header's through the first source that includes it."""
    wanted = files or own_files(top)
    made, seen = [], set()
    for name in [one for one in wanted if one.endswith(".cpp")]:
        unit = parse(top, name, arguments)
        paths = {name: str(top / name)}
        for include in unit.get_includes():
            for header in wanted:
                if include.include.name == str(top / header):
                    paths[header] = include.include.name
        for one, path in paths.items():
            if one not in seen:
                seen.add(one)
                for node in nodes_of(top, one, unit, path):
                    for rule in ordinary.RULES + targeted.RULES:
                        made.extend(rule(node))
    return mutant.numbered(made + thoughts(thoughts_file, top))


def kept_mutants(top, arguments, thoughts_file, files, kept):
    """The same, out of a file while neither the sources nor the rules have changed: libclang takes half a minute."""
    read = [top / file for file in files] + [thoughts_file] + sorted(pathlib.Path(__file__).parent.glob("*.py"))
    digest = hashlib.sha1(b"".join(path.read_bytes() for path in read if path.name not in NO_RULES)).hexdigest()
    if kept.exists():
        known = json.loads(kept.read_text())
        if known["digest"] == digest:
            return [mutant.Mutant(**one) for one in known["mutants"]]
    mutants = all_mutants(top, arguments, thoughts_file, files)
    kept.write_text(json.dumps({"digest": digest, "mutants": [dataclasses.asdict(one) for one in mutants]}))
    return mutants
