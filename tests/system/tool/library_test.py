#!/usr/bin/env python3
"""How the tool finds the library, and what it says of one that is missing or wrong."""
import os
import shutil
import subprocess
import unittest

from tool import BUILD, DONE, NO_LIBRARY, TROUBLE, ToolTest, program, telvofm

LIBRARY = (BUILD / "libtelvofm.so").resolve()


class Library(ToolTest):
    def call(self, library, *words, **more):
        return telvofm("call", "--library", library, *(words or ["getVersion"]), **more)

    def compiled(self, name, source):
        library = self.folder / name
        subprocess.run(["gcc", "-shared", "-fPIC", "-x", "c", "-", "-o", library], input=source.encode(), check=True)
        return library

    def alone(self):
        """The tool in a folder without the library."""
        tool = self.folder / "bin" / "telvofm"
        tool.parent.mkdir()
        shutil.copy(program("telvofm"), tool)
        return tool

    def test_is_found_by_its_path(self):
        self.assertEqual(self.call(LIBRARY).code, DONE)
        self.assertEqual(self.call(os.path.relpath(LIBRARY)).code, DONE)

    def test_is_found_beside_the_tool_and_by_the_system(self):
        tool = self.alone()
        elsewhere = self.folder / "lib"
        elsewhere.mkdir()
        shutil.copy(LIBRARY, elsewhere / "libtelvofm.so.1")
        found = telvofm("doctor", tool=tool, environment={"LD_LIBRARY_PATH": str(elsewhere)})
        self.assertIn(str(elsewhere / "libtelvofm.so.1"), found.output)
        shutil.copy(LIBRARY, tool.parent / "libtelvofm.so")
        found = telvofm("doctor", tool=tool, environment={"LD_LIBRARY_PATH": str(elsewhere)})
        self.assertIn(str(tool.parent / "libtelvofm.so"), found.output)

    def test_that_is_missing(self):
        said = telvofm("call", "getVersion", tool=self.alone())
        self.assert_refused(said, NO_LIBRARY, "neither beside this program nor where the system looks", "--library")
        self.assert_refused(self.call("/nowhere/libtelvofm.so"), NO_LIBRARY, "there is no library at /nowhere")
        self.assert_refused(self.call(self.folder), NO_LIBRARY, "there is no library at")

    def test_that_is_for_32_bits(self):
        """The fifth byte of a library for Linux, and the kind of processor of one for Windows."""
        elf = bytearray(LIBRARY.read_bytes()[:4096])
        elf[4] = 1
        dll = b"MZ" + bytes(0x3A) + b"\x40\x00\x00\x00" + b"PE\0\0" + b"\x4c\x01"
        for contents in (bytes(elf), dll):
            library = self.file("libtelvofm.so", contents)
            self.assert_refused(self.call(library), NO_LIBRARY, "is a 32-bit library", "install the 64-bit one")

    def test_that_is_another_file(self):
        dll = b"MZ" + bytes(0x3A) + b"\x40\x00\x00\x00" + b"PE\0\0" + b"\x64\x86"
        self.assert_refused(self.call(self.file("telvofm.dll", dll)), NO_LIBRARY, "for another operating system")
        self.assert_refused(self.call(self.file("text", b"Hello\n")), NO_LIBRARY, "is no library")
        self.assert_refused(self.call(self.file("empty", b"")), NO_LIBRARY, "is no library")
        for size in (100, 5000, LIBRARY.stat().st_size // 2):
            cut = self.file("cut.so", LIBRARY.read_bytes()[:size])
            self.assert_refused(self.call(cut), NO_LIBRARY, "cut.so is cut off; install the library again")

    def test_that_is_another_library(self):
        self.assert_refused(self.call(self.compiled("other.so", "int other(void) { return 1; }")), NO_LIBRARY,
                            "other.so is not this library", "getVersion")
        self.assert_refused(self.call(self.compiled("old.so", "int getVersion(void) { return 105; }")), NO_LIBRARY,
                            "version 105", "106")

    def test_that_is_another_library_beside_the_tool(self):
        tool = self.alone()
        shutil.copy(self.compiled("other.so", "int other(void) { return 1; }"), tool.parent / "libtelvofm.so")
        said = telvofm("call", "getVersion", tool=tool)
        self.assert_refused(said, NO_LIBRARY, ": libtelvofm.so is not this library", "getVersion")

    def test_that_lacks_a_function(self):
        names = ["getVersion", "setLogginOff", "closeFM"]
        poor = self.compiled("poor.so", "".join(f"int {name}(void) {{ return 106; }}" for name in names))
        self.assertEqual(self.call(poor).code, DONE)
        self.assert_refused(self.call(poor, "repeatParagon", 1), NO_LIBRARY, "has no function repeatParagon")
        said = telvofm("doctor", "--library", poor)
        self.assertEqual(said.code, TROUBLE)
        self.assertIn("BAD      The library", said.output)
        self.assertIn("has no function openFM. Install the library", said.output)

    def test_is_examined_by_the_doctor(self):
        finding = telvofm("doctor", "--json").json["findings"][0]
        self.assertEqual((finding["about"], finding["health"], finding["advice"]), ("library", "good", ""))
        for part in (str(LIBRARY), "64-bit", "version 106", "202"):
            self.assertIn(part, finding["sentence"])
        said = telvofm("doctor", "--json", "--library", "/nowhere/libtelvofm.so")
        self.assertEqual((said.code, said.json["healthy"]), (TROUBLE, False))
        self.assertEqual(said.json["findings"][0]["sentence"], "there is no library at /nowhere/libtelvofm.so.")

    def test_is_not_needed_to_read_logs_or_codes(self):
        tool = self.alone()
        log = self.file("raw.log", b"C: 1c 01 e0 04 f9 \nS: 06 \n")
        calls = self.file("calls.log", b"repeatParagondevice 1\n")
        for words in (["codes"], ["decode", log], ["replay", "--dry-run", log], ["replay", "--dry-run", calls],
                      ["call", "--list"], ["completion", "bash"]):
            self.assertEqual(telvofm(*words, tool=tool).code, DONE, words)


assert LIBRARY.exists()
unittest.main()
