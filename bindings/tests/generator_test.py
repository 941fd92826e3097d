#!/usr/bin/python3 -B
"""The generator stops at what it does not know, names what is stale, and the table of characters is the right one."""
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

top = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(top / "bindings"))
from generator.characters import read_characters  # noqa: E402
from generator.codes import WrongCodes, read_codes  # noqa: E402
from generator.interface import UnknownType, read_functions  # noqa: E402


class Generator(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def file(self, name, text):
        path = self.folder / name
        path.write_text(text, encoding="utf-8")
        return path

    def test_reads_all_exports(self):
        names = [function.name for function in read_functions(top / "api/telvofm.h")]
        exported = (top / "api/telvofm.def").read_text(encoding="ascii").split("EXPORTS")[1].split()
        self.assertEqual(sorted(names), sorted(exported))

    def test_stops_at_an_unknown_type(self):
        with self.assertRaisesRegex(UnknownType, 'price of itemSale is of the C type "float".*say there what it is'):
            read_functions(self.file("telvofm.h", "int itemSale(int device, float price);"))
        with self.assertRaisesRegex(UnknownType, 'what getRate returns is of the C type "long double"'):
            read_functions(self.file("telvofm.h", "long double getRate(void);"))

    def test_stops_at_a_header_that_is_no_c(self):
        with self.assertRaisesRegex(UnknownType, "telvofm.h is no C"):
            read_functions(self.file("telvofm.h", "int itemSale(int device"))

    def test_stops_at_a_code_that_says_too_little(self):
        with self.assertRaisesRegex(WrongCodes, "whether it was executed"):
            read_codes(self.file("codes.json", json.dumps([{"code": 1, "executed": "perhaps"}])))

    def test_narrow_codes_come_before_the_range_that_holds_them(self):
        ranges = [(code.first, code.last) for code in read_codes(top / "api/codes.json")]
        self.assertLess(ranges.index((64, 64)), ranges.index((1, 255)))

    def test_characters_are_those_of_windows_1250(self):
        for byte, point in enumerate(read_characters(top / "bindings/windows_1250.json"), 0x80):
            if byte in (0x81, 0x83, 0x88, 0x90, 0x98):
                self.assertEqual(point, byte)
            else:
                self.assertEqual(chr(point), bytes([byte]).decode("cp1250"))

    def test_lets_no_language_convert_texts_or_truths_itself(self):
        for files, declaration, forbidden in (
                ("python/telvofm/raw.py", r'^ +"\w+": \(.*', r': \(c_char_p|wchar|c_bool'),
                ("csharp/generated/Functions.cs", r".*\bextern\b.*", r"\b(string|bool|char|StringBuilder)\b|CharSet"),
                ("java/generated/telvofm/*Functions.java", r"^ +\w[\w\[\]]* \w+\(.*", r"\b(boolean|String|WString|char)\b"),
                ("pascal/generated/telvofm_functions.pas", r"^ +\w+: *(?:function|procedure).*",
                 r"(?i)\b(cbool|longbool|wordbool|bytebool|char|string|ansistring|pwidechar|pchar)\b")):
            text = "".join(file.read_text(encoding="utf-8") for file in (top / "bindings").glob(files))
            declarations = re.findall(declaration, text, re.MULTILINE)
            self.assertEqual(len(declarations), 202, files)
            for each in declarations:
                self.assertNotRegex(each, forbidden)

    def test_keeps_functions_apart_that_fill_a_buffer(self):
        filling = [function.name for function in read_functions(top / "api/telvofm.h") if function.fills_a_buffer()]
        self.assertIn("getJournal", filling)
        self.assertIn("getJournal_str_count", filling)
        self.assertNotIn("getJournal_ResultObject", filling)
        self.assertNotIn("rawWrite", filling)  # it reads what it is given
        for name, begin, end in (("csharp/generated/Functions.cs", "class BufferFunctions", "\n}"),
                                 ("java/generated/telvofm/BufferFunctions.java", "interface BufferFunctions", "\n}"),
                                 ("pascal/generated/telvofm_functions.pas", "TBufferFunctions = record", "\n  end;")):
            text = (top / "bindings" / name).read_text(encoding="utf-8")
            apart = text.split(begin)[1].split(end)[0]
            self.assertEqual(re.findall(r"(\w+)(?:\([^()]*\);|: function.*)$", apart, re.MULTILINE), filling, name)

    def copy_of_sources(self):
        shutil.copytree(top / "bindings", self.folder / "bindings")
        for path in ("api/telvofm.h", "api/codes.json", "tools/codes.inc", "tools/windows_1250.inc", "docs/codes.md"):
            (self.folder / path).parent.mkdir(exist_ok=True)
            shutil.copy(top / path, self.folder / path)

    def generate(self, *arguments):
        return subprocess.run([self.folder / "bindings/generate.py", *arguments], capture_output=True, text=True, check=False)

    def test_names_what_is_stale(self):
        self.copy_of_sources()
        self.assertEqual(self.generate("--check").stderr, "")
        header = self.folder / "api/telvofm.h"
        header.write_text(header.read_text(encoding="utf-8").replace("int getVersion(void)", "int64_t getVersion(void)"),
                          encoding="utf-8")
        ended = self.generate("--check")
        self.assertEqual(ended.returncode, 1)
        for name in ("raw.py", "Functions.cs", "telvofm_functions.pas", "Functions.java"):
            self.assertIn(name, ended.stderr)
        self.assertEqual(len(ended.stderr.splitlines()), 1)

    def test_names_and_removes_what_is_no_longer_generated(self):
        self.copy_of_sources()
        old = self.folder / "bindings/csharp/generated/Codes.cs"
        old.write_text("// Generated by bindings/generate.py from api/codes.json; change that and run it again.\n",
                       encoding="utf-8")
        ended = self.generate("--check")
        self.assertEqual((ended.returncode, ended.stdout), (1, ""))
        self.assertEqual(ended.stderr.splitlines(), [
            "no longer generated: bindings/csharp/generated/Codes.cs; run bindings/generate.py and look at what it changes"])
        self.assertEqual(self.generate().stdout, "removed bindings/csharp/generated/Codes.cs\n")
        self.assertFalse(old.exists())
        self.assertEqual(self.generate("--check").returncode, 0)


if __name__ == "__main__":
    unittest.main()
