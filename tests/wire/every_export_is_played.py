"""Fails when an export has no wire script, when a script calls a name that is no export, or when no script shows
that the call log has the whole address of the device, of which the request carries the low byte only.

    every_export_is_played.py TELVOFM.DEF TELVOFM.H SCRIPT-FOLDER
"""
import pathlib
import re
import sys

# Their lines leave the device out, or they have none.
LOGGED_WITHOUT_DEVICE = {
    "clearErrorStates",
    "getLastParagon",
    "getLastParagonResultObject",
    "getLastTransactionPackets",
    "setPreline",
}

CALL = re.compile(r"call\s+(\w+)\s*(\S*)")
LOG = re.compile(r'log(?:-after)?\s+"(.*)"')


def has_more_than_its_low_byte(word):
    return re.fullmatch(r"-?\d+", word) is not None and not 0 <= int(word) <= 255


def shows(line, device):
    return re.search(rf"[Dd]evice(Number)? {device}(?!\d)", line) is not None


def read_scripts(folder):
    """The exports that are called, and those whose whole device is in the log."""
    called, with_whole_device = set(), set()
    for script in folder.rglob("*.wire"):
        name = device = ""
        for line in script.read_text().splitlines():
            if call := CALL.match(line):
                name, device = call.groups()
                called.add(name)
            elif (log := LOG.match(line)) and has_more_than_its_low_byte(device) and shows(log[1], device):
                with_whole_device.add(name)
    return called, with_whole_device


definition, header, scripts = map(pathlib.Path, sys.argv[1:])
exports = set(definition.read_text().split("EXPORTS", 1)[1].split())
take_a_device = set(re.findall(r"(\w+)\(int device(?:Number)?\b", header.read_text()))
called, with_whole_device = read_scripts(scripts)
unseen_devices = take_a_device - LOGGED_WITHOUT_DEVICE - with_whole_device

for name in sorted(exports - called):
    print(f"{name} has no wire script: add one below {scripts.name}/")
for name in sorted(called - exports):
    print(f"{name} is called by a script and is no export")
for name in sorted(unseen_devices):
    print(f"{name} has no script that shows a device outside 0 to 255 in the log")
for name in sorted(LOGGED_WITHOUT_DEVICE & with_whole_device):
    print(f"{name} does have its device in the log: take it out of the list here")
print(f"{len(exports & called)} of {len(exports)} exports are played, "
      f"{len(with_whole_device)} of {len(take_a_device)} with a whole device in the log")
sys.exit(exports != called or bool(unseen_devices or LOGGED_WITHOUT_DEVICE & with_whole_device))
