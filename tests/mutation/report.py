"""The figures, and the survivors that nobody has judged yet."""
import collections
import re

from judgement import DONE

WANTED = 0.97
ORDINARY = ("operator", "half of a condition", "constant", "text", "condition negated", "condition fixed", "statement removed", "result")


def judged_survivors(path):
    """By their keys: the lines of the list that begin with one."""
    text = path.read_text(encoding="utf-8") if path.exists() else ""
    return dict(re.findall(r"^- `([0-9a-f]{10})` (.*)$", text, re.M))


def report(asked, mutants, results, listed, wavering):
    by_room = collections.defaultdict(collections.Counter)
    open_ones = []
    for one in asked:
        entry = results.by_key.get(one.key)
        outcome = entry["outcome"] if entry else "not judged"
        if outcome not in (*DONE, "not judged"):
            outcome = "judged in writing" if one.key in listed else "open"
        if outcome == "open":
            open_ones.append((one, entry))
        by_room[one.file.split("/")[0]][outcome] += 1
        by_room["all"][outcome] += 1
        by_room["targeted"][outcome] += one.kind not in ORDINARY
    for one, entry in open_ones:
        print(f"{entry['outcome']}: {one.key} {one.file}:{one.line} {one.describe()} ({entry['test']})")
    print(f"{'room':<10}{'killed':>8}{'judged in writing':>19}{'open':>6}{'proven equal':>14}{'not judged':>12}{'killed of the others':>22}")
    for room, counts in sorted(by_room.items(), key=lambda item: item[0] in ("all", "targeted")):
        print(f"{room:<10}{counts['killed']:>8}{counts['judged in writing']:>19}{counts['open']:>6}{counts['equal']:>14}"
              f"{counts['not judged']:>12}{share_killed(counts):>22.2%}")
    keys = {one.key for one in mutants}
    for key in listed:
        if key not in keys or results.by_key.get(key, {}).get("outcome") in DONE:
            print(f"survivors.md: {key} is no survivor any more")
    if wavering:
        print("failed without a mutant too, and were not believed:", dict(wavering))
    if by_room["all"]["not judged"]:
        print(f"{by_room['all']['not judged']} of those that were drawn are not judged")
    return 0 if not open_ones and not by_room["all"]["not judged"] and share_killed(by_room["all"]) >= WANTED else 1


def report_locks(locks, results, listed):
    """Whether one is not seen that is in no list; of all locks, which do not depend on the draw."""
    unseen = [one for one in locks if not results.is_done(one)]
    for one in unseen:
        if one.key not in listed:
            print(f"not seen by the thread sanitizer: {one.key} {one.file}:{one.line} {one.describe()}")
    print(f"locks: {len(locks) - len(unseen)} of {len(locks)} seen by the thread sanitizer")
    return 0 if all(one.key in listed for one in unseen) else 1


def share_killed(counts):
    """Of those that were judged and that no compiler has proven to change nothing."""
    judged = counts["killed"] + counts["judged in writing"] + counts["open"]
    return counts["killed"] / judged if judged else 0
