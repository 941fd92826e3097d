"""The figures, and the survivors that nobody has judged yet."""
import collections
import re

WANTED = 0.97


def judged_survivors(path):
    """By their keys: the lines of the list that begin with one."""
    text = path.read_text(encoding="utf-8") if path.exists() else ""
    return dict(re.findall(r"^- `([0-9a-f]{10})` (.*)$", text, re.M))


def report(mutants, results, survivors, wavering):
    listed = judged_survivors(survivors)
    by_room = collections.defaultdict(collections.Counter)
    open_ones = []
    for one in mutants:
        entry = results.by_key.get(one.key)
        outcome = entry["outcome"] if entry else "not judged"
        if outcome not in ("killed", "not judged") and one.key in listed:
            outcome = "judged in writing"
        elif outcome not in ("killed", "not judged"):
            open_ones.append((one, entry))
        by_room[one.file.split("/")[0]][outcome] += 1
        by_room["all"][outcome] += 1
    for one, entry in open_ones:
        print(f"{entry['outcome']}: {one.key} {one.file}:{one.line} {one.describe()} ({entry['test']})")
    print(f"{'room':<10}{'killed':>8}{'judged in writing':>19}{'open':>6}{'not judged':>12}{'killed of judged':>18}")
    for room, counts in by_room.items():
        judged = sum(counts.values()) - counts["not judged"]
        unjudged = judged - counts["killed"] - counts["judged in writing"]
        share = counts["killed"] / judged if judged else 0
        print(f"{room:<10}{counts['killed']:>8}{counts['judged in writing']:>19}{unjudged:>6}{counts['not judged']:>12}{share:>17.2%}")
    if wavering:
        print("failed without a mutant too, and were not believed:", dict(wavering))
    everything = by_room["all"]
    judged = sum(everything.values()) - everything["not judged"]
    return 0 if judged and not open_ones and everything["killed"] / judged >= WANTED else 1
