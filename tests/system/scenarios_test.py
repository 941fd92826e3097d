#!/usr/bin/env python3
"""Plays every scenario against the library over TCP and on a serial line, all at the same time, and compares what
happened with the table in the documentation. With --write it writes the table. Fails, too, when there are too few or
one has no seed, and when one costs more than a second besides the library's own waits: of the processor for each of
them, and of the clock for one that is played alone.

    scenarios_test.py SOURCE_FOLDER BUILD_FOLDER [--write] [NAME...]
"""
import collections
import concurrent.futures
import json
import multiprocessing
import os
import pathlib
import re
import resource
import subprocess
import sys
import tempfile
import time

LONGEST = 45  # seconds; the library's own waits end sooner, but for those without a limit
AT_ONCE = "paper-out-in-the-morning"  # a scenario in which no call waits
LEAST = 18  # scenarios, each with a seed
MOST = float(os.environ.get("TELVOFM_SCENARIO_SECONDS", 1))  # that a scenario takes besides what the library waits
ITEMS = ("Chlieb", "Maslo")
BEGIN, END = "<!-- played: begin -->\n", "<!-- played: end -->\n"


def till(build, address, environment):
    """What its calls returned, and how long they took."""
    with subprocess.Popen([build / "scenario_till", address], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                          text=True, env=environment) as calls:
        try:
            _, said = calls.communicate(timeout=LONGEST)
            result = f"ended with {calls.returncode}"
        except subprocess.TimeoutExpired:
            calls.kill()
            _, said = calls.communicate()
            result = re.findall("^calls (.*)", said, re.MULTILINE)[-1] + " waits without a limit"
    lines = said.splitlines()
    took = [float(line.split()[1]) for line in lines if line.startswith("took ")]
    # A text may have line ends where none belong.
    words = [line for line in lines if not line.startswith(("calls ", "took "))]
    return " / ".join(words) or result, sum(took, 0.0)


def device(paper):
    """What the printer has on its paper of the sale, in words."""
    lines = paper.splitlines()
    items = collections.Counter(line for line in lines if line in ITEMS)
    sold = [f"{name} twice" if items[name] == 2 else name if items[name] == 1 else f"{name} {items[name]} times"
            for name in ITEMS if items[name]]
    words = [" and ".join(sold) or "nothing sold"]
    if any(line.startswith("Karta") for line in lines):
        words.append("paid")
    if any(line.startswith("VAT A") for line in lines):
        words.append("ended")
    if any("POWER LOST" in line for line in lines):
        words.append("power lost")
    for line, count in collections.Counter(line for line in lines if line.startswith("! ")).items():
        command, code = re.match(r"! (\w+) refused with (\d+)", line).groups()
        words.append(f"{command} refused with {code}" + (f" {count} times" if count > 1 else ""))
    return ", ".join(words)


def processor_seconds():
    """Of the programs that this process has started and that have ended."""
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def play(source, build, folder, name, link):
    """What the printer has done, what the till was told, the seconds that no call of the library took, and those of the
    processor. It wants a process of its own."""
    began, used = time.monotonic(), processor_seconds()
    environment = dict(os.environ)
    lines = pathlib.Path(folder) / f"{name}.lines"
    lines.write_bytes(b"\x03")  # CTS and DSR are on
    environment["MODEM_LINES"] = str(lines)
    options = ["--listen", "127.0.0.1:0"] if link == "tcp" else ["--pty"]
    printer = subprocess.Popen([build / "telvofm-printer", *options, "--scenario", source / f"scenarios/{name}.json"],
                               stdout=subprocess.PIPE, text=True, env=environment)
    try:
        address = printer.stdout.readline().split()[-1]
        result, took = till(build, address if link == "tcp" else "COM" + address, environment)
    finally:
        printer.terminate()
        paper, _ = printer.communicate()
    return device(paper), result, time.monotonic() - began - took, processor_seconds() - used


def row(source, name, played):
    trouble = json.loads((source / f"scenarios/{name}.json").read_text(encoding="utf-8"))["trouble"]
    cells = [f"`{name}`", trouble, *(f"{what}; **{result}**" for what, result, *_ in played)]
    return "| " + " | ".join(cells) + " |\n"


def main():
    arguments = [argument for argument in sys.argv[1:] if argument != "--write"]
    source, build = (pathlib.Path(argument).resolve() for argument in arguments[:2])
    scenarios = {path.stem: json.loads(path.read_text(encoding="utf-8")) for path in (source / "scenarios").glob("*.json")}
    unseeded = [name for name, scenario in scenarios.items() if not isinstance(scenario.get("seed"), int)]
    if unseeded or len(scenarios) < LEAST:
        sys.exit(f"{len(scenarios)} scenarios, {LEAST} are promised; without a seed: {', '.join(unseeded) or 'none'}")
    names = arguments[2:] or sorted(scenarios)
    with tempfile.TemporaryDirectory(dir=build) as folder, \
            concurrent.futures.ProcessPoolExecutor(2 * len(names), multiprocessing.get_context("fork")) as pool:
        played = {(name, link): pool.submit(play, source, build, folder, name, link)
                  for name in names for link in ("tcp", "serial")}
        rows = [row(source, name, [played[name, link].result() for link in ("tcp", "serial")]) for name in names]
        processor = {f"{name} ({link})": each.result()[3] for (name, link), each in played.items()}
        # By itself, and the best of three: what all of them take together says nothing about one.
        alone = {f"{AT_ONCE} ({link}) alone": min(play(source, build, folder, AT_ONCE, link)[2] for _ in range(3))
                 for link in ("tcp", "serial")}
    print(f"a scenario takes at most {max(processor.values()):.2f} s of the processor, and by itself "
          f"{max(alone.values()):.2f} s besides the library's calls")
    slow = [f"{what}: {seconds:.2f} s" for what, seconds in {**processor, **alone}.items() if seconds >= MOST]
    if slow:
        sys.exit(f"more than {MOST:g} s besides the library's own waits: " + "; ".join(slow))
    page = source / "docs/scenarios.md"
    text = page.read_text(encoding="utf-8")
    before, rest = text.split(BEGIN)
    documented, after = rest.split(END)
    head = "| scenario | the trouble | over TCP | on a serial line |\n|---|---|---|---|\n"
    if "--write" in sys.argv:
        page.write_text(before + BEGIN + head + "".join(rows) + END + after, encoding="utf-8")
        return
    missing = [line for line in rows if line not in documented]
    if missing or (not arguments[2:] and documented != head + "".join(rows)):
        sys.exit("docs/scenarios.md does not say what was played:\n" + "".join(missing))
    print(f"{len(rows)} scenarios went as docs/scenarios.md says")


main()
