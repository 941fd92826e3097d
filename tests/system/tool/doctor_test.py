#!/usr/bin/env python3
"""`telvofm doctor`: on printers and ports that are well, and on each trouble."""
import grp
import json
import os
import pathlib
import pty
import socket
import subprocess
import unittest

from tool import BUILD, DONE, TROUBLE, ToolTest, program, telvofm

MODEM_LINES = {"LD_PRELOAD": str(BUILD / "libmodem_lines.so")}


def findings(*arguments, **more):
    """The health and the sentence of each finding behind the library's."""
    said = telvofm("doctor", "--json", "-p", *arguments, **more)
    found = {one["about"]: (one["health"], one["sentence"] + " " + one["advice"]) for one in said.json["findings"]}
    assert said.code == (DONE if said.json["healthy"] else TROUBLE), said
    assert "bad" not in found.pop("library")[0], said
    return found


class Network(ToolTest):
    def assert_found(self, found, about, health, *words):
        self.assertEqual(found[about][0], health, found)
        for word in words:
            self.assertIn(word, found[about][1])

    def test_printer_that_is_well(self):
        printer = self.printer()
        found = findings(printer.address)
        self.assert_found(found, "host", "good", printer.address + " answers as a printer does.")
        self.assert_found(found, "opening", "good", "The library opens the printer.")

    def test_prints_nothing(self):
        printer = self.printer()
        before = printer.paper_showing("listening on")
        findings(printer.address)
        self.assertEqual(printer.paper, before)

    def test_printer_that_another_till_holds(self):
        printer = self.printer()
        host, port = printer.address.rsplit(":", 1)
        with socket.create_connection((host, int(port))) as till:
            till.sendall(b"\x11")
            till.recv(1)  # now it is served
            self.assert_found(findings(printer.address), "host", "bad", "closes the connection", "Another till")

    def test_nobody_listens(self):
        found = findings("127.0.0.1:1")
        self.assert_found(found, "host", "bad", "Nothing listens at 127.0.0.1:1.", "on port 1")
        self.assertNotIn("opening", found)
        self.assert_found(findings("127.0.0.1"), "host", "bad", "127.0.0.1:64000")

    def test_a_name_that_is_not_known(self):
        self.assert_found(findings("no-such-printer.invalid"), "host", "bad", "no-such-printer.invalid", "not known")

    def test_a_host_that_says_nothing(self):
        with socket.create_server(("127.0.0.1", 0)) as silent:
            address = "127.0.0.1:" + str(silent.getsockname()[1])
            self.assert_found(findings(address), "host", "unknown", "does not answer the printer's probe")


class Port(ToolTest):
    def setUp(self):
        super().setUp()
        self.master, slave = pty.openpty()
        self.path = os.ttyname(slave)
        os.close(slave)
        self.addCleanup(os.close, self.master)

    def examine(self, lines=3, **more):
        state = self.file("lines", bytes([lines, 0]))
        return findings("COM" + self.path, environment={**MODEM_LINES, "MODEM_LINES": str(state)}, **more)

    def test_that_is_well(self):
        found = self.examine()
        self.assertEqual({about: health for about, (health, _) in found.items()}, {
            "port": "good", "rights": "good", "holder": "good" if os.geteuid() == 0 else "unknown", "cts": "good",
            "dsr": "good", "opening": "good"})
        self.assertIn(self.path, found["port"][1])

    def test_lines_that_are_off(self):
        found = self.examine(lines=2)
        self.assertEqual((found["cts"][0], found["dsr"][0]), ("bad", "good"))
        self.assertIn("-10103", found["cts"][1])
        found = self.examine(lines=1)
        self.assertEqual((found["cts"][0], found["dsr"][0]), ("good", "bad"))
        self.assertNotIn("opening", found)

    def test_without_lines(self):
        found = findings("COM" + self.path)
        self.assertEqual(found["lines"][0], "bad")

    def test_that_a_program_holds(self):
        with subprocess.Popen(["sleep", "100"], stdin=os.open(self.path, os.O_RDWR | os.O_NOCTTY)) as holder:
            found = self.examine()
            holder.kill()
        self.assertEqual(found["holder"][0], "bad")
        self.assertIn(f"sleep (process {holder.pid})", found["holder"][1])

    def test_that_is_not_there(self):
        found = findings("COM/dev/no-such-port")
        self.assertEqual(found["port"][0], "bad")
        self.assertIn("There is no port /dev/no-such-port. Plug its adapter in", found["port"][1])
        self.assertIn("names no port here", findings("COM0")["port"][1])
        self.assertIn("names no port here", findings("COMX")["port"][1])

    def test_that_is_a_device_of_another_kind(self):
        found = findings("COM/dev/null")
        self.assertEqual(found["port"][0], "bad")
        self.assertIn("/dev/null is no serial port. Name a port such as COM/dev/ttyUSB0.", found["port"][1])
        self.assertNotIn("holder", found)

    def test_that_is_none(self):
        self.assertIn("is no serial port", findings("COM" + str(self.file("port", b"")))["port"][1])

    @unittest.skipIf(os.geteuid() != 0, "only root can take rights away and try as somebody else")
    def test_that_may_not_be_opened(self):
        dialout = grp.getgrnam("dialout").gr_gid
        os.chown(self.path, 0, dialout)
        os.chmod(self.path, 0o660)
        found = self.as_nobody()
        self.assertEqual(found["rights"][0], "bad")
        self.assertIn("nobody is not in its group dialout. Run 'sudo usermod -aG dialout nobody'", found["rights"][1])
        os.chmod(self.path, 0o600)
        self.assertIn("neither may its group dialout", self.as_nobody()["rights"][1])

    def as_nobody(self):
        """What somebody without rights finds out."""
        if subprocess.run([program("telvofm"), "--version"], user="nobody", capture_output=True, check=False).returncode:
            self.skipTest("nobody may not start the tool here")
        said = subprocess.run([program("telvofm"), "doctor", "--json", "-p", "COM" + self.path], user="nobody",
                              group="nogroup", extra_groups=[], capture_output=True, check=False, text=True)
        return {one["about"]: (one["health"], one["sentence"] + " " + one["advice"])
                for one in json.loads(said.stdout)["findings"]}


assert pathlib.Path(MODEM_LINES["LD_PRELOAD"]).exists()
unittest.main()
