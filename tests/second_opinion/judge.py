#!/usr/bin/env python3
"""A second opinion on the library: random calls of all exports, judged by a model that shares nothing with it.

    judge.py PROGRAM [--calls 1000000] [--seed 1] [--at-once 2] [--shard 12500] [--show 20]

PROGRAM is random_calls, which makes the calls against a printer of its own and records what it sees. The same seed makes
the same calls. Ends with the number of calls judged and of disagreements, and fails if there is one.
"""
import argparse
import collections
import concurrent.futures
import json
import pathlib
import subprocess
import sys
import tempfile

from opinion import Library
from pictures import draw_pictures


def judged(lines, pictures):
    """For each record in which situation it was made, and what is wrong with it."""
    library = Library(pictures)
    for line in lines:
        record = json.loads(line)
        situation = library.situation()
        yield record, situation, library.judge(record)


def result_kind(record):
    if record.get("ended"):
        return "ended the process"
    result = record["result"]
    if not isinstance(result, int) or isinstance(result, bool) or record["call"].startswith(("getResult", "create", "raw")):
        return "other results"
    return "the printer's codes" if result > 0 else str(result)


class Verdict:
    def __init__(self):
        self.called, self.situations, self.disagreements = (collections.Counter() for _ in range(3))
        self.results = collections.Counter()
        self.shown = []

    def take(self, seed, record, situation, found, show):
        if found and len(self.shown) < show:
            what = "\n    ".join(found)
            self.shown.append(f"seed {seed}, call {self.called.total()}, {record['call']} {record['args']}:\n    {what}")
        self.disagreements[record["call"]] += bool(found)
        self.called[record["call"]] += 1
        self.situations[situation] += 1
        self.results[result_kind(record)] += 1

    def add(self, other):
        self.called += other.called
        self.situations += other.situations
        self.disagreements += other.disagreements
        self.results += other.results


def judge_shard(program, seed, calls, show):
    verdict = Verdict()
    with tempfile.TemporaryDirectory(dir=pathlib.Path(program).parent) as name:
        pictures = draw_pictures(pathlib.Path(name), seed)
        with subprocess.Popen([program, str(seed), str(calls), name, *pictures], stdout=subprocess.PIPE) as process:
            try:
                for record, situation, found in judged(process.stdout, pictures):
                    verdict.take(seed, record, situation, found, show)
            except BaseException:
                process.kill()
                raise
        if process.returncode != 0 or verdict.called.total() != calls:
            verdict.disagreements["random_calls"] += 1
            verdict.shown.append(f"seed {seed}: the program ended with {process.returncode} "
                                 f"after {verdict.called.total()} calls of {calls}")
    return verdict


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--calls", type=int, default=1_000_000)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--at-once", type=int, default=2)
    parser.add_argument("--shard", type=int, default=12_500)
    parser.add_argument("--show", type=int, default=20)
    parser.add_argument("--exports", type=int, default=0, help="how many different ones have to be among the calls")
    options = parser.parse_args()
    program = str(pathlib.Path(options.program).resolve())
    whole = Verdict()
    with concurrent.futures.ProcessPoolExecutor(options.at_once) as pool:
        shards = [pool.submit(judge_shard, program, options.seed + place, min(options.shard, options.calls - start),
                              options.show)
                  for place, start in enumerate(range(0, options.calls, options.shard))]
        for shard in shards:
            verdict = shard.result()
            whole.add(verdict)
            print("".join(f"{text}\n" for text in verdict.shown), end="", flush=True)
    for name, count in whole.disagreements.most_common():
        if count:
            print(f"{count:7} of {whole.called[name]:7} {name}")
    for counter in (whole.situations, whole.results):
        print(", ".join(f"{name}: {count}" for name, count in counter.most_common()))
    seeds = options.seed if len(shards) == 1 else f"{options.seed} to {options.seed + len(shards) - 1}"
    print(f"{whole.called.total()} calls of {len(whole.called)} exports judged, seeds {seeds}: "
          f"{whole.disagreements.total()} disagreements")
    if len(whole.called) < options.exports:
        print(f"{options.exports} exports were to be called")
    sys.exit(whole.disagreements.total() != 0 or len(whole.called) < options.exports)


if __name__ == "__main__":
    main()
