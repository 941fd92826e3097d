#!/usr/bin/env python3
"""The tool for Windows under Wine: what is its own there, and that the rest is the same."""
import os
import pathlib
import pty
import tty
import unittest

from tool import (DONE, NO_ANSWER, NO_FILE, NO_LIBRARY, REFUSED, SOURCE, TROUBLE, WRONG_USE, ToolTest, telvofm)

SALE = ["sellingDayBegin", 1, 0, "--then", "paragonBegin", 1, 0, 1, 0, 0, 1, 0,
        "--then", "itemSale", 1, 0, "Čaj šťavnatý ľž", "12.50", "A", "1.5", "8.33", "ks",
        "--then", "payment", 1, 0, 1, "12.50", "12.50", 0, "Hotovosť", "--then", "paragonEnd", 1, 0, 0]


class WithoutPrinter(ToolTest):
    def test_finds_the_library_beside_it(self):
        self.assertEqual(telvofm("call", "--json", "getVersion").json["calls"], [{"function": "getVersion",
                                                                                  "returned": 106}])

    def test_says_what_is_wrong_with_a_library(self):
        dll32 = b"MZ" + bytes(0x3A) + b"\x40\x00\x00\x00" + b"PE\0\0" + b"\x4c\x01"
        self.assert_refused(telvofm("call", "--library", self.file("telvofm.dll", dll32), "getVersion"), NO_LIBRARY,
                            "is a 32-bit library", "install the 64-bit one")
        self.assert_refused(telvofm("call", "--library", self.file("libtelvofm.so", b"\x7fELF\x02" + bytes(100)),
                                    "getVersion"), NO_LIBRARY, "for another operating system")
        self.assert_refused(telvofm("call", "--library", "no.dll", "getVersion"), NO_LIBRARY, "no library at no.dll")
        self.assert_refused(telvofm("call", "--library", r"C:\windows\system32\kernel32.dll", "getVersion"), NO_LIBRARY,
                            "is not this library", "getVersion")

    def test_takes_characters_from_the_wide_command_line(self):
        self.assert_refused(telvofm("call", "setPostline", 1, "Ďakujeme 日"), WRONG_USE,
                            "the character 日 at position 10 is not in Windows-1250")

    def test_refuses_as_everywhere(self):
        self.assert_refused(telvofm("call", "itemsSale"), WRONG_USE, "did you mean itemSale?")
        self.assert_refused(telvofm("codes", "1000"), WRONG_USE, "returns no code 1000")
        self.assert_refused(telvofm("decode", "nothing"), NO_FILE, "nothing cannot be read")
        self.assert_refused(telvofm(), WRONG_USE, "no command is named")

    def test_explains_and_decodes(self):
        self.assertEqual(telvofm("codes", "-10202").output.splitlines()[0], "-10202  timeout")
        log = self.file("raw.log", b"C: 1c 01 2b 30 00 8a e1 00 04 69 \r\nS: 06 ")
        self.assertEqual(telvofm("decode", log).output, 'till     destroyParagon to device 1 "0" "Šá", checksum ok\n'
                                                        "printer  accepted\n")

    def test_takes_either_name_of_a_port(self):
        log = self.file("raw.log", b"C: 1c 01 2b 30 00 e6 a0 00 04 44 ")
        for name in ("COM77", "\\\\.\\COM77"):
            self.assert_refused(telvofm("replay", "--serial", "-p", name, log), NO_ANSWER, f"{name} cannot be opened")

    def test_examines_a_port(self):
        said = telvofm("doctor", "--json", "-p", "COM77")
        self.assertEqual(said.code, TROUBLE)
        self.assertEqual([one["health"] for one in said.json["findings"]], ["good", "bad"])
        self.assertIn("There is no port COM77.", said.json["findings"][1]["sentence"])


class ComPort(ToolTest):
    """A COM port of Wine's, which is a pseudo-terminal with the modem lines of the native release build. Another program
    that holds it is not seen here: Wine opens a port for everybody, where Windows refuses the second."""

    LINES = SOURCE / "build/release/libmodem_lines.so"
    PORT = "COM11"  # from COM7 on Wine leaves the ports as they are set

    def setUp(self):
        super().setUp()
        master, slave = pty.openpty()
        tty.setraw(slave)
        for end in (master, slave):
            self.addCleanup(os.close, end)
        device = pathlib.Path(os.environ["WINEPREFIX"], "dosdevices", self.PORT.lower())
        device.unlink(missing_ok=True)
        device.symlink_to(os.ttyname(slave))
        self.addCleanup(device.unlink)

    def examine(self, *, lines=None, name=PORT):
        environment = {"WINEDEBUG": "-all"}
        if lines is not None:
            environment |= {"LD_PRELOAD": str(self.LINES), "MODEM_LINES": str(self.file("lines", bytes([lines, 0])))}
        said = telvofm("doctor", "--json", "-p", name, environment=environment)
        found = {one["about"]: one["health"] for one in said.json["findings"]}
        self.assertEqual(said.code, TROUBLE if "bad" in found.values() else DONE, said)
        self.assertEqual(found.pop("library"), "good", said)
        return found

    def test_with_each_of_its_lines(self):
        if not self.LINES.exists():
            self.skipTest(f"{self.LINES} is missing; the native release build makes it")
        there = {"port": "good", "holder": "good"}
        self.assertEqual(self.examine(lines=3), {**there, "cts": "good", "dsr": "good", "opening": "good"})
        self.assertEqual(self.examine(lines=2), {**there, "cts": "bad", "dsr": "good"})
        self.assertEqual(self.examine(lines=1, name="\\\\.\\" + self.PORT), {**there, "cts": "good", "dsr": "bad"})

    def test_without_lines(self):
        self.assertEqual(self.examine(), {"port": "good", "holder": "good", "lines": "bad"})


class OnAPrinter(ToolTest):
    def test_sells_decodes_and_sells_again(self):
        first = self.printer()
        calls, raw = self.folder / "calls.log", self.folder / "raw.log"
        said = telvofm("call", "--json", "-p", first.address, "--call-log", calls, "--raw-log", raw, *SALE)
        self.assertEqual((said.code, [call["returned"] for call in said.json["calls"]]), (DONE, [0] * 5), said)
        self.assertIn("Čaj šťavnatý ľž", first.paper)
        self.assertIn("host: 127.0.0.1 port: ", said.errors)
        self.assertIn(b"\xc8aj \x9a\x9davnat\xfd \xbe\x9e", calls.read_bytes())
        self.assertIn('"Čaj šťavnatý ľž"', telvofm("decode", raw).output)
        well = telvofm("doctor", "-p", first.address)
        self.assertEqual(well.code, DONE, well)
        refused = telvofm("call", "-p", first.address, "paragonEnd", 1, 0, 0)
        self.assertEqual(refused.code, REFUSED)
        first.end()
        for log in ([calls], ["--tcp", raw]):
            printer = self.printer()
            again = telvofm("replay", "--json", "-p", printer.address, *log)
            self.assertEqual((again.code, again.json["different"]), (DONE, 0), again)
            self.assertIn("Čaj šťavnatý ľž", printer.paper)
            printer.end()
        nobody = telvofm("doctor", "-p", first.address)
        self.assertEqual(nobody.code, TROUBLE)
        self.assertIn("Nothing listens at " + first.address, nobody.output)


assert (SOURCE / "tools").is_dir()
unittest.main()
