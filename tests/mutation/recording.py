"""Which mutants each test reaches, and how long it takes: every test runs once with no mutant on."""
import concurrent.futures
import json
import os
import queue

from tests_of_library import Runner

MOST_MUTANTS = 65536


def made_at(test):
    """When its program or its script was changed: another one may reach something else."""
    return max((os.path.getmtime(word) for word in test.command if os.path.isfile(word)), default=0)


def record(tests, folder, linked, at_once, make_runner=Runner):
    """Fills in what the tests reach, and returns those that pass with the woven library; it is kept for the next time."""
    kept_file = folder / "reached.jsonl"
    kept = {one["name"]: one for one in map(json.loads, kept_file.read_text().splitlines())} if kept_file.exists() else {}
    places = queue.Queue()
    for i in range(at_once):
        places.put(i)

    def one(test):
        made = made_at(test)
        if kept.get(test.name, {}).get("made") != made:
            place = places.get()
            file = folder / f"reached.{place}"
            file.write_bytes(bytes(MOST_MUTANTS))
            runner = make_runner(folder / f"work/{place}", linked)
            passed, seconds, _ = runner.run(test, 120, TELVOFM_MUTANTS_REACHED=str(file))
            reached = [number for number, byte in enumerate(file.read_bytes()) if byte]
            kept[test.name] = {"name": test.name, "seconds": round(seconds, 3), "passed": passed, "made": made, "reached": reached}
            with kept_file.open("a") as written:
                written.write(json.dumps(kept[test.name]) + "\n")
            places.put(place)
        test.seconds = kept[test.name]["seconds"]
        test.reached = frozenset(kept[test.name]["reached"])

    with concurrent.futures.ThreadPoolExecutor(at_once) as several:
        list(several.map(one, tests))
    return [test for test in tests if kept[test.name]["passed"]], [test.name for test in tests if not kept[test.name]["passed"]]
