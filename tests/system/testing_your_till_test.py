#!/usr/bin/env python3
"""Takes the till and its tests from docs/testing-your-till.md and runs them as the page says.

    testing_your_till_test.py SOURCE_FOLDER BUILD_FOLDER
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile


def python_with_pytest():
    for python in (sys.executable, "/usr/bin/python3"):
        if subprocess.run([python, "-c", "import pytest"], capture_output=True, check=False).returncode == 0:
            return python
    sys.exit("pytest is missing; scripts/prepare installs it")


def main():
    source, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    page = (source / "docs/testing-your-till.md").read_text(encoding="utf-8")
    blocks = re.findall(r"Save it as `([\w.]+)`.*?```\w+\n(.*?)```", page, re.DOTALL)
    if [name for name, _ in blocks] != ["till.py", "test_till.py", "test_till.sh"]:
        sys.exit(f"the page has {[name for name, _ in blocks]}")
    environment = dict(os.environ, TELVOFM_PRINTER=str(build / "telvofm-printer"),
                       TELVOFM_LIBRARY=str(build / "libtelvofm.so"), PYTHONDONTWRITEBYTECODE="1")
    with tempfile.TemporaryDirectory(dir=build) as folder:
        place = pathlib.Path(folder)
        for name, content in blocks:
            (place / name).write_text(content, encoding="utf-8")
        for helper in ("telvofm_printer.py", "telvofm_printer.sh"):
            shutil.copy(source / "testing" / helper, place)
        shell = subprocess.Popen(["bash", "test_till.sh"], cwd=place, env=environment, stdout=subprocess.PIPE,
                                 stderr=subprocess.STDOUT, text=True)
        tests = subprocess.run([python_with_pytest(), "-m", "pytest", "-q", "-p", "no:cacheprovider", "test_till.py"],
                               cwd=place, env=environment, capture_output=True, text=True, check=False)
        said = shell.communicate(timeout=100)[0]
    if tests.returncode != 0 or "3 passed" not in tests.stdout:
        sys.exit(tests.stdout + tests.stderr)
    if shell.returncode != 0 or "the till has sold once" not in said:
        sys.exit(f"test_till.sh ended with {shell.returncode} and said\n{said}")


main()
