#!/usr/bin/env python3
"""The examples of docs/tool.md, from the first to the last in one folder: each command says what stands below it. Three
dots stand for anything, on a line of their own for any lines."""
import os
import re
import subprocess
import unittest

from tool import SOURCE, Printer, ToolTest, program, telvofm


def examples(page):
    """(command, what it says)."""
    for block in re.findall(r"```console\n(.*?)```", page, re.DOTALL):
        for example in block.split("$ ")[1:]:
            command, _, said = example.partition("\n")
            yield command, said


def pattern(said):
    """Three dots are anything."""
    return re.escape(said).replace(re.escape("...\n"), r"(?:[^\n]*\n)+?").replace(re.escape("..."), ".*")


class Page(ToolTest):
    def setUp(self):
        super().setUp()
        self.addresses = {}
        for shown in ("127.0.0.1:9100", "127.0.0.1:9101"):
            folder = self.folder / shown[-4:]
            folder.mkdir()
            printer = Printer(folder)
            self.addCleanup(printer.end)
            self.addresses[shown] = printer.address

    def exchanged(self, text, *, to_page):
        for shown, real in self.addresses.items():
            text = text.replace(real, shown) if to_page else text.replace(shown, real)
        return text

    def test_examples_say_what_stands_below_them(self):
        page = (SOURCE / "docs/tool.md").read_text(encoding="utf-8")
        environment = {**os.environ, "PATH": f"{program('telvofm').parent}:{os.environ['PATH']}"}
        count = 0
        for command, wanted in examples(page):
            ended = subprocess.run(["bash", "-c", self.exchanged(command, to_page=False)], cwd=self.folder,
                                   env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
            said = self.exchanged(ended.stdout.decode(), to_page=True)
            said = "".join(line for line in said.splitlines(True) if not line.startswith("host: "))
            self.assertIsNotNone(re.fullmatch(pattern(wanted), said), f"{command}\nsays\n{said}\nand not\n{wanted}")
            count += 1
        self.assertGreater(count, 12)

    def test_exit_codes_are_those_of_the_help(self):
        page = (SOURCE / "docs/tool.md").read_text(encoding="utf-8")
        listed = re.findall(r"^\| (\d) \| (\w+ \w+)?", page, re.MULTILINE)
        helped = re.findall(r"^  (\d)  (\w+ \w+)?", telvofm("--help").output, re.MULTILINE)
        self.assertEqual(listed, helped)


assert program("telvofm").exists()
unittest.main()
