"""Reads api/codes.json, the one table of what the codes mean."""
import json
import typing

EXECUTED = ("yes", "no", "unknown")


class WrongCodes(Exception):
    pass


class Code(typing.NamedTuple):
    first: int
    last: int
    name: str
    happened: str
    executed: str
    advice: str


def read_codes(path):
    """The entries, narrow ones first, so that the first that holds a code is the one that means it."""
    entries = []
    for entry in json.loads(path.read_text(encoding="utf-8")):
        first = entry.get("code", entry.get("from"))
        last = entry.get("code", entry.get("to"))
        if first is None or last is None or first > last or entry.get("executed") not in EXECUTED:
            raise WrongCodes(f"an entry of {path.name} lacks its code, its range or whether it was executed: {entry}")
        entries.append(Code(first, last, entry["name"], entry["happened"], entry["executed"], entry["advice"]))
    return sorted(entries, key=lambda code: (code.last - code.first, code.first))
