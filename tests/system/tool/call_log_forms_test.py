#!/usr/bin/env python3
"""Every line of the call log that a wire script expects, taken apart: out come the function that the script calls and
its arguments."""
import math
import re
import unittest

from tool import SOURCE, ToolTest, telvofm

# Several functions write the same line; the log does not tell which it was.
TAKEN_FOR = {
    "openFMBaud": "openFM", "getVariable": "getVariableResultObject", "getVariableStr": "getVariableResultObject",
    "getLastParagon": "getLastParagonResultObject", "getParagonIDs_str": "getParagonIDs", "setV48_str": "setV48",
    "Popis0DPH_str": "Popis0DPH", "setSellerID_str": "setSellerID", "setPCHDU_str": "setPCHDU",
    "setVAT_str": "setVAT", "setAllVats3": "setAllVats2", "printJournalStructD1": "printJournalStructD_str",
    "redeemVoucher_str": "redeemVoucher", "deductDownPayment_str": "deductDownPayment",
    "itemVoid_str": "itemVoid_int", "itemNegative_str": "itemNegative_int", "itemDiscount_str": "itemDiscount",
    "itemDiscount2_str": "itemDiscount2", "subTotalDiscount_str": "subTotalDiscount",
    "subTotalDiscount2_str": "subTotalDiscount2", "depositeInDrawer_str": "depositeInDrawer_int",
}
WRITE_NO_LINE = {
    "getVersion", "setTcpTimeout", "rawRead", "rawWrite", "setLogginOn", "setLogginOff", "setRawLogginOn",
    "seRawLogginOff", "createResultObject", "destroyResultObject", "getResultObjectLength", "getResultObjectString",
    "setAutoTwoLineItem", "isAutoTwoLineItem", "setPreline",
}
FILES = {"fileName", "journalFile"}
STRING = re.compile(r'"((?:\\.|[^"\\])*)"')
ESCAPE = re.compile(rb"\\(x[0-9A-Fa-f]{2}|.)", re.DOTALL)


def bytes_of(quoted):
    """A quoted text of a script."""
    def byte(found):
        escape = found[1].decode()
        return bytes([int(escape[1:], 16)]) if escape[0] == "x" else {"n": b"\n"}.get(escape, escape.encode())
    return ESCAPE.sub(byte, quoted.encode("latin-1"))


def words(line):
    """The arguments of a call: texts as bytes, numbers and words as text."""
    for found in re.finditer(r'"((?:\\.|[^"\\])*)"|\'(.)\'|(\S+)', line):
        text, letter, word = found.groups()
        yield word if word else bytes_of(text if text is not None else letter)


def logged_calls(script):
    """(function, arguments, what it adds to the log)."""
    call = None
    for line in re.sub(r"\$(\w+)", r"\1", script.read_text(encoding="latin-1")).splitlines():
        if line.startswith("call "):
            if call:
                yield call
            name, _, rest = line[5:].strip().partition(" ")
            call = (name, list(words(rest)), [])
        elif call and (found := re.match(r'log(?:-after)?\s+"(.*)"$', line)):
            call[2].append(bytes_of(found[1]) + b"\n")
    if call:
        yield call


def is_number(text):
    return re.fullmatch(r"-?\d+(\.\d*)?(e[-+]?\d+)?", text) is not None


def is_same(given, found):
    """An argument of the script and what the log gave: a number of the log has six digits."""
    if isinstance(given, bytes):
        text = given.decode("cp1250", "replace")
        # Of a letter the first character counts, and an empty text is 0x00.
        return found in (text, text[:1] or "\0") or (is_number(text) and is_number(found) and is_same(text, found))
    if given == "null":
        return found in ("", "\0")
    if not is_number(given) or not is_number(found):
        return given == found
    return math.isclose(float(given), float(found), rel_tol=1e-5)


class Forms(ToolTest):
    def given_names(self):
        return {entry["name"]: entry["arguments"] for entry in telvofm("call", "--list", "--json").json["functions"]}

    def test_every_line_gives_its_call(self):
        names = self.given_names()
        header = (SOURCE / "tools/export_table_entries.inc").read_text()
        all_names = {entry.split(",")[0]: " ".join(re.findall(r'"([^"]*)"', entry)).split()
                     for entry in header.split("\nTELVOFM_ENTRY(")[1:]}
        calls = [call for script in sorted((SOURCE / "tests/wire").rglob("*.wire")) for call in logged_calls(script)
                 if call[2]]
        log = b"".join(b"".join(call[2]) for call in calls)
        said = telvofm("replay", "--dry-run", "--json", self.file("calls.log", log)).json
        self.assertEqual(said["damages"], [])
        line, seen, found = 1, set(), {entry["line"]: entry for entry in said["calls"]}
        for name, arguments, lines in calls:
            # itemDiscount_int has a line of its name alone before its own.
            first = line + (1 if name == "itemDiscount_int" else 0)
            entry = found.pop(first, None)
            line += b"".join(lines).count(b"\n")
            self.assertIsNotNone(entry, (name, lines))
            self.assertIn(entry["function"], (name, TAKEN_FOR.get(name)), lines)
            self.compare(name, dict(zip(all_names[name], arguments)), dict(zip(names[entry["function"]], entry["arguments"])),
                         entry, lines)
            seen.add(name)
        self.assertEqual(list(found), [])
        self.assertEqual(set(names) - seen, WRITE_NO_LINE)

    def compare(self, name, given, found, entry, lines):
        text = b"".join(lines)
        for parameter, value in found.items():
            hidden = parameter in FILES and not name.startswith("prepare")
            unknown = value == "" and entry.get("lack")
            if hidden or unknown or parameter not in given:
                continue
            if parameter == "device" and b"evice" not in text:
                continue  # the log does not have it
            scaled = self.scaled(entry["function"], name, given[parameter], value)
            self.assertTrue(is_same(given[parameter], value) or scaled, (lines, parameter, given[parameter], value))

    @staticmethod
    def scaled(taken, name, given, found):
        """The text 12.5 of a function that is taken for one in whole numbers."""
        text = given.decode("cp1250", "replace") if isinstance(given, bytes) else given
        return taken != name and is_number(text) and is_number(found) and any(
            math.isclose(float(text) * scale, float(found), rel_tol=1e-5) for scale in (100, 1000, 10000))


unittest.main()
