#!/usr/bin/env python3
"""A sample of random calls is judged without a disagreement; wrong records among them are each seen, and nothing else.

    judge_test.py PROGRAM      random_calls
"""
import json
import pathlib
import subprocess
import sys
import tempfile

from commands import COMMANDS
from opinion import Library
from pictures import draw_pictures

CALLS = 4000
SEED = 20261122


def changed(digits, place):
    """One bit of one byte."""
    byte = int(digits[2 * place:2 * place + 2], 16) ^ 1
    return f"{digits[:2 * place]}{byte:02x}{digits[2 * place + 2:]}"



# What may be wrong with a record. Each changes it, and returns False where it has nothing to change.

def request_byte(record, place=1):
    wire = record["wire"]
    if not wire.startswith("C1c"):
        return False
    record["wire"] = "C" + changed(wire[1:], place)
    return True


def checksum(record):
    ends = [place for place in (record["wire"].find(mark, 1) for mark in "ST") if place > 0]
    return bool(ends) and record["wire"].startswith("C1c") and request_byte(record, min(ends) // 2 - 1)


def missing_field_end(record):
    wire = record["wire"]
    record["wire"] = wire.replace("0004", "04", 1)
    return record["wire"] != wire and wire.startswith("C1c")


def request_sent_twice(record):
    wire = record["wire"]
    if not wire.startswith("C1c") or wire.count("C") != 1:
        return False
    record["wire"] += wire
    return True


def last_block_acknowledged(record):
    """As one that is followed by another."""
    if not record["wire"].endswith("C03"):
        return False
    record["wire"] = record["wire"][:-2] + "06"
    return True


def log_of(record):
    return next((name for name in record.get("logs", {}) if name.endswith((".log", ".txt"))), None)


def log_line(record):
    return bytes.fromhex(record["logs"][log_of(record)]) if log_of(record) else b""


def relogged(record, line):
    if line == log_line(record):
        return False
    record["logs"][log_of(record)] = line.hex()
    return True


def log_blank_missing(record):
    return relogged(record, log_line(record).replace(b" ", b"", 1))


def log_byte(record):
    return relogged(record, log_line(record)[:-2] + b"\xFE\n") if log_of(record) else False


def log_line_missing(record):
    return bool(log_of(record)) and record["logs"].pop(log_of(record)) is not None


def log_line_twice(record):
    return relogged(record, log_line(record) * 2)


def log_in_another_file(record):
    name = log_of(record)
    if not name:
        return False
    record["logs"]["a.log" if name != "a.log" else "b.log"] = record["logs"].pop(name)
    return True


def raw_log_byte(record):
    for name in ("raw.log", "other.raw"):
        if name in record.get("logs", {}):
            record["logs"][name] = changed(record["logs"][name], 0)
            return True
    return False


def result_code(record):
    if record["call"] not in COMMANDS or not isinstance(record["result"], int):
        return False
    record["result"] += 1
    return True


def success_of_a_failure(record):
    if record["call"] not in COMMANDS or not isinstance(record["result"], int) or record["result"] == 0:
        return False
    record["result"] = 0
    return True


def result_text(record):
    if record["call"] != "getVariableStr":
        return False
    record["result"] += "20"
    return True


def buffer_byte(record):
    if not record.get("buffer"):
        return False
    record["buffer"] = changed(record["buffer"], 0)
    return True


def byte_behind_the_buffer(record):
    if "buffer" not in record or len(record["buffer"]) // 2 >= record["size"]:
        return False
    record["buffer"] = record["buffer"].ljust(2 * record["size"] - 2, "a") + "00"
    return True


def count(record):
    if "count" not in record:
        return False
    record["count"] += 1
    return True


def object_content(record):
    if not record.get("object", ["", ""])[1]:
        return False
    record["object"][1] = record["object"][1][:-2]
    return True


def file_content(record):
    if not record.get("file"):
        return False
    record["file"] += "0a"
    return True


def file_missing(record):
    if record.get("file") is None or record["result"] != 0:
        return False
    record["file"] = None
    return True


def printed(record):
    return record.pop("printed", None) is not None


def pause(record):
    return record.pop("pauses", None) is not None


def log_not_emptied(record):
    return record.pop("emptied", None) is not None


def process_not_ended(record):
    if not record.get("ended"):
        return False
    record["ended"] = 0
    return True


def argument(record):
    """The library has taken one argument for another."""
    if record["call"] not in COMMANDS or not record["wire"].startswith("C") or len(record["args"]) < 3:
        return False
    letters, arguments = COMMANDS[record["call"]].letters, record["args"]
    for place in range(1, len(letters) - 1):
        if letters[place] == letters[place + 1] and letters[place] in "idT" and arguments[place] != arguments[place + 1]:
            arguments[place], arguments[place + 1] = arguments[place + 1], arguments[place]
            return True
    return False


EACH_MANY_TIMES = 5
KINDS = [checksum, missing_field_end, request_sent_twice, last_block_acknowledged, log_line_missing, log_line_twice,
         log_in_another_file, raw_log_byte, result_code, success_of_a_failure, result_text, buffer_byte,
         byte_behind_the_buffer, count, object_content, file_content, file_missing, printed, pause, log_not_emptied,
         process_not_ended, argument]
# These once for each command.
OF_EACH_COMMAND = [request_byte, log_blank_missing, log_byte]


def plant(records):
    """Changes records, one each; which mistake stands at which number."""
    wanted = {(kind, None): EACH_MANY_TIMES for kind in KINDS}
    wanted |= {(kind, name): 1 for name in COMMANDS for kind in OF_EACH_COMMAND}
    planted = {}
    for number, record in enumerate(records):
        for (kind, name), left in wanted.items():
            if left and name in (None, record["call"]) and kind(record):
                wanted[kind, name] -= 1
                planted[number] = kind.__name__
                break
    return planted, {key for key, left in wanted.items() if left == (1 if key[1] else EACH_MANY_TIMES)}


def disagreements(records, pictures):
    library = Library(pictures)
    return {number: found for number, record in enumerate(records) if (found := library.judge(record))}


def main():
    program = str(pathlib.Path(sys.argv[1]).resolve())
    with tempfile.TemporaryDirectory(dir=pathlib.Path(program).parent) as folder:
        pictures = draw_pictures(pathlib.Path(folder), SEED)
        lines = subprocess.run([program, str(SEED), str(CALLS), folder, *pictures],
                               stdout=subprocess.PIPE, check=True).stdout.splitlines()
    wrong = []
    records = [json.loads(line) for line in lines]
    called = {record["call"] for record in records}
    for number, found in disagreements(records, pictures).items():
        wrong.append(f"call {number}, {records[number]['call']}: " + "\n    ".join(found))
    planted, never = plant(records)
    seen = disagreements(records, pictures)
    for number, kind in planted.items():
        if number not in seen:
            wrong.append(f"not seen: {kind} in call {number}, {records[number]}")
    for number in seen.keys() - planted.keys():
        wrong.append(f"seen where nothing is wrong: call {number}, {records[number]['call']}: {seen[number]}")
    # These log nothing, send nothing, and log one word.
    possible = {key for key in never if key[1] not in ("setPreline", "prepareGraphicHeader", "prepareGraphicHeader_inverse")}
    for kind, name in possible - {(log_blank_missing, "clearErrorStates")}:
        wrong.append(f"never planted: {kind.__name__} {name or ''}")
    print(f"{len(records)} calls of {len(called)} exports judged; {len(seen)} of {len(planted)} planted mistakes seen")
    sys.exit("\n".join(wrong) if wrong else 0)


main()
