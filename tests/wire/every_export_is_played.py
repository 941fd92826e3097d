"""Fails when an export has no wire script, or a script calls a name that is no export.

    every_export_is_played.py TELVOFM.DEF SCRIPT-FOLDER
"""
import pathlib
import re
import sys

definition, scripts = map(pathlib.Path, sys.argv[1:])
exports = set(definition.read_text().split("EXPORTS", 1)[1].split())
called = set()
for script in scripts.rglob("*.wire"):
    called.update(re.findall(r"^call\s+(\w+)", script.read_text(), re.MULTILINE))

for name in sorted(exports - called):
    print(f"{name} has no wire script: add one below {scripts.name}/")
for name in sorted(called - exports):
    print(f"{name} is called by a script and is no export")
print(f"{len(exports & called)} of {len(exports)} exports are played")
sys.exit(exports != called)
