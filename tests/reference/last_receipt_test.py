#!/usr/bin/env python3
"""The guide's example of a result object prints the receipt that the printer keeps, and fails in one sentence.

    last_receipt_test.py SOURCE_FOLDER BUILD_FOLDER
"""
import pathlib
import subprocess
import sys
import tempfile


def main():
    source, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    sys.path.insert(0, str(source / "testing"))
    from telvofm_printer import FiscalPrinter

    with tempfile.TemporaryDirectory() as folder, FiscalPrinter(program=str(build / "telvofm-printer")) as printer:
        def run(program, address):
            return subprocess.run([str(build / program), address], cwd=folder, capture_output=True, check=False)

        if run("demo_receipt_c", printer.address).returncode != 0:
            sys.exit("nothing was sold")
        said = run("last_receipt_c", printer.address)
        kept = "".join(line + "\r\n" for line in printer.documents(kind="receipt")[-1]["text"])
        if said.returncode != 0 or not said.stdout.endswith(kept.encode("cp1250")) or "šumavský" not in kept:
            sys.exit(f"the printer keeps\n{kept}\nand the program ends with {said.returncode} and says\n{said.stdout!r}")
        unreachable = run("last_receipt_c", "127.0.0.1:1")
        if unreachable.returncode != 1 or unreachable.stderr != b"the printer cannot be asked: code -1\n":
            sys.exit(f"without a printer it ends with {unreachable.returncode} and says {unreachable.stderr!r}")
    print("the last receipt is printed")


main()
