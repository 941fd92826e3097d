#!/usr/bin/env python3
"""Does what docs/testing-your-till.md says, from beginning to end: saves what it lets save, and runs its commands as they
stand there, in a folder that looks like the one of the sources with its build.

    testing_your_till_test.py SOURCE_FOLDER BUILD_FOLDER
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile


def python_with_pytest():
    for python in (sys.executable, "/usr/bin/python3"):
        if subprocess.run([python, "-c", "import pytest"], capture_output=True, check=False).returncode == 0:
            return python
    sys.exit("pytest is missing; scripts/prepare installs it")


def script_of(page):
    """The whole page as one shell script, and the names of what it saves."""
    script, names = ["set -e"], []
    for text, language, block in re.findall(r"(.*?)```(\w+)\n(.*?)```", page, re.DOTALL):
        saved = re.search(r"Save it as `([\w.]+)`", text)
        if saved:
            names.append(saved[1])
            script.append(f"cat >{saved[1]} <<'END OF FILE'\n{block}END OF FILE")
        elif language == "sh":
            script.append(block)
    return "\n".join(script), names


def main():
    source, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    script, names = script_of((source / "docs/testing-your-till.md").read_text(encoding="utf-8"))
    if names != ["till.py", "test_till.py", "test_till.sh"]:
        sys.exit(f"the page saves {names}")
    environment = {name: value for name, value in os.environ.items() if not name.startswith("TELVOFM_")}
    environment["PATH"] = os.path.dirname(python_with_pytest()) + os.pathsep + environment["PATH"]
    with tempfile.TemporaryDirectory(dir=build) as folder:
        sources = pathlib.Path(folder) / "telvofm"
        (sources / "build").mkdir(parents=True)
        (sources / "build/release").symlink_to(build)
        (sources / "testing").symlink_to(source / "testing")
        ended = subprocess.run(["bash", "-c", script], cwd=sources, env=environment, capture_output=True, text=True,
                               check=False, timeout=100)
    if ended.returncode != 0 or "3 passed" not in ended.stdout or "the till has sold once" not in ended.stdout:
        sys.exit(f"the page's commands ended with {ended.returncode} and said\n{ended.stdout}{ended.stderr}")


main()
