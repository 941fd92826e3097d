#!/usr/bin/env python3
"""`telvofm call`: every function by its name, with what comes back; and what is wrong with a call in one sentence."""
import re
import subprocess
import unittest

from tool import DONE, MODEM_LINES, NO_ANSWER, NO_FILE, REFUSED, SOURCE, WRONG_USE, ToolTest, program, telvofm

SALE = ["sellingDayBegin", 1, 0, "--then", "paragonBegin", 1, 0, 1, 0, 0, 1, 0,
        "--then", "itemSale", 1, 0, "Čaj šťavnatý", "12.50", "A", "1.5", "8.33", "ks",
        "--then", "payment", 1, 0, 1, "12.50", "12.50", 0, "Hotovosť", "--then", "paragonEnd", 1, 0, 0]


class WithoutPrinter(ToolTest):
    def test_shows_what_a_function_returns(self):
        said = telvofm("call", "getVersion")
        self.assertEqual((said.code, said.output), (DONE, "getVersion returned 106\n"))

    def test_lists_all_functions_with_what_they_are_given(self):
        said = telvofm("call", "--list", "--json")
        functions = {entry["name"]: entry["arguments"] for entry in said.json["functions"]}
        self.assertEqual(len(functions), 202)
        self.assertEqual(functions["itemVoid_int"], ["device", "row", "commodityName", "totalPrice", "vat", "amount",
                                                     "unitPrice", "unit", "receiptNumber"])
        # Buffers, result objects, counts and sizes are the tool's matter.
        self.assertEqual(functions["getJournal_str_count"], ["device"])
        self.assertEqual(functions["getVariableResultObject"], ["device", "variableCode"])
        self.assertEqual(functions["rawRead"], ["count"])
        self.assertEqual(functions["rawWrite"], ["bytes"])
        self.assertEqual(functions["printGraphic"], ["device", "printType", "graphicIndex", "imageData"])

    def test_lists_the_functions_that_are_named(self):
        said = telvofm("call", "--list", "paragonEnd", "getVersion")
        self.assertEqual((said.code, said.output), (DONE, "getVersion\nparagonEnd device row graphicsHeader\n"))
        self.assertEqual(telvofm("call", "--json", "--list", "getVersion").json,
                         {"functions": [{"name": "getVersion", "arguments": []}]})
        self.assert_refused(telvofm("call", "--list", "paragonEnd", "getversion"), WRONG_USE, "did you mean getVersion?")

    def test_calls_functions_of_every_result(self):
        for words, returned, code in ((["getVersion"], 106, DONE), (["isAutoTwoLineItem"], False, DONE),
                                      (["closeFM"], None, DONE), (["createResultObject"], None, DONE),
                                      (["getResultObjectLength"], 0, DONE), (["getResultObjectString"], "", DONE),
                                      (["getVariableStr", 1, "X"], "Error", NO_ANSWER), (["rawRead", 4], -1, NO_ANSWER),
                                      (["rawWrite", "11"], -1, NO_ANSWER), (["destroyResultObject"], None, DONE)):
            said = telvofm("call", "--json", *words)
            self.assertEqual((said.json["calls"][0]["returned"], said.code), (returned, code), words)

    def test_stops_where_a_function_without_a_code_tells_a_failure(self):
        for words, sentence in ((["rawWrite", "1c"], "rawWrite returned -1, failed: "),
                                (["rawRead", 4], "rawRead returned -1, failed: "),
                                (["getVariableStr", 1, "X"], "getVariableStr returned Error, failed: ")):
            said = telvofm("call", *words, "--then", "getVersion")
            self.assertEqual(said.code, NO_ANSWER, said)
            self.assertTrue(said.output.startswith(sentence), said)
            self.assertEqual(len(said.output.splitlines()), 1, said)
            call, = telvofm("call", "--json", *words, "--then", "getVersion").json["calls"]
            self.assertTrue(call["failure"].endswith("."), call)
            self.assertNotIn("data", call)

    def test_says_what_it_means_that_no_printer_is_open(self):
        said = telvofm("call", "--json", "repeatParagon", 1)
        self.assertEqual(said.code, NO_ANSWER)
        call = said.json["calls"][0]
        self.assertEqual((call["returned"], call["meaning"]["executed"]), (-1, "no"))

    def test_names_the_nearest_function(self):
        self.assert_refused(telvofm("call", "itemsSale", 1), WRONG_USE, "itemsSale", "did you mean itemSale?")
        self.assert_refused(telvofm("call", "getversion"), WRONG_USE, "did you mean getVersion?")
        self.assert_refused(telvofm("call", "xyzzy"), WRONG_USE, "xyzzy", "telvofm call --list")

    def test_counts_the_arguments(self):
        said = telvofm("call", "setVAT", 1, "x")
        self.assert_refused(said, WRONG_USE, "setVAT takes 5 arguments, not 2",
                            "setVAT device password vat vatValue reverseConstant")
        self.assert_refused(telvofm("call", "getVersion", "--json"), WRONG_USE, "options before the function")
        self.assert_refused(telvofm("call", "openFM"), WRONG_USE, "takes 1 argument, not 0")

    def test_says_which_argument_is_of_the_wrong_kind(self):
        for words, sentence in (
                (["repeatParagon", "one"], "device: 'one' is no whole number from -2147483648 to 2147483647"),
                (["repeatParagon", "2147483648"], "device: '2147483648' is no whole number"),
                (["setEuroExchangeRate", 1, "1,5"], "exchangeRate: '1,5' is no number, such as 12.50"),
                (["printReport", 1, "XY", 0], "reportType: 'XY' is no single character"),
                (["printReport", 1, "", 0], "reportType: '' is no single character"),
                (["setAutoTwoLineItem", "2"], "on: '2' is neither true nor false"),
                (["setSMTP", 1, "A", "x", "32768", "y"], "port: '32768' is no whole number from -32768 to 32767"),
                (["openFMBaud", "COM1", "-1"], "baud: '-1' is no whole number from 0 to 4294967295"),
                (["rawWrite", "1c 0"], "bytes: '1c 0' are no bytes"),
                (["rawWrite", "zz"], "bytes: 'zz' are no bytes"),
                (["rawRead", "99999999"], "count: 99999999 bytes are too many")):
            self.assert_refused(telvofm("call", *words), WRONG_USE, sentence)

    def test_names_the_character_that_the_library_cannot_take(self):
        self.assert_refused(telvofm("call", "setPostline", 1, "dobrý deň 日本"), WRONG_USE,
                            "description: the character 日 at position 11 is not in Windows-1250")
        self.assert_refused(telvofm("call", "printReport", 1, "Ж", 0), WRONG_USE, "reportType: the character Ж")

    def test_wants_utf_8(self):
        ended = subprocess.run([program("telvofm"), "call", "setPostline", "1", b"Ah\xff"], capture_output=True, check=False)
        self.assertEqual((ended.returncode, ended.stdout), (WRONG_USE, b""))
        self.assertIn(b"description: the text is not in UTF-8 from position 3 on", ended.stderr)

    def test_looks_at_all_calls_before_the_first(self):
        printer = self.printer()
        said = telvofm("call", "-p", printer.address, *SALE, "--then", "paragonEnds", 1)
        self.assert_refused(said, WRONG_USE, "did you mean paragonEnd?")
        self.assertNotIn("Čaj", printer.paper)

    def test_answers_in_json_also_when_it_refuses(self):
        said = telvofm("call", "--json", "itemsSale", 1)
        self.assertEqual(said.json["error"]["exitCode"], WRONG_USE)
        self.assertIn("did you mean itemSale?", said.json["error"]["sentence"])
        self.assertEqual(said.sentences, ["telvofm: " + said.json["error"]["sentence"]])

    def test_wants_logs_that_can_be_written(self):
        for option in ("--call-log", "--raw-log"):
            log = self.folder / "missing" / "a.log"
            self.assert_refused(telvofm("call", option, log, "getVersion"), NO_FILE,
                                f"the log {log} cannot be written; name a file in a folder that is there")
            self.assert_refused(telvofm("call", option, self.folder, "getVersion"), NO_FILE, "cannot be written")

    def test_keeps_the_calls_that_a_log_holds(self):
        log = self.file("calls.log", b"earlier\n")
        self.assertEqual(telvofm("call", "--call-log", log, "getVersion").code, DONE)
        self.assertTrue(log.read_bytes().startswith(b"earlier\n"))

    def test_wants_files_for_bytes(self):
        for words in (["rawWrite"], ["printGraphic", 1, 0, 0]):
            for name in (self.folder, self.folder / "missing"):
                self.assert_refused(telvofm("call", *words, f"@{name}"), NO_FILE, f"the file {name} cannot be read")

    def test_wants_a_host_and_a_port_that_can_be(self):
        for command in (["call"], ["doctor"]):
            for address, sentence in (("127.0.0.1:99999", "99999 is no port; 1 to 65535"),
                                      ("127.0.0.1:65536", "65536 is no port; 1 to 65535"),
                                      ("127.0.0.1:0", "0 is no port; 1 to 65535"),
                                      ("127.0.0.1:-1", "-1 is no port; 1 to 65535"),
                                      (":36875", "no host"), (":", "no host")):
                said = telvofm(*command, "-p", address, *(["getVersion"] if command == ["call"] else []))
                self.assert_refused(said, WRONG_USE, sentence)

    def test_says_that_nobody_is_there(self):
        self.assert_refused(telvofm("call", "-p", "127.0.0.1:1", "repeatParagon", 1), NO_ANSWER,
                            "127.0.0.1:1 cannot be opened", "telvofm doctor --printer 127.0.0.1:1")


class OnAPrinter(ToolTest):
    def test_sells(self):
        printer = self.printer()
        said = telvofm("call", "-p", printer.address, "--json", *SALE, "--then", "getVariable", 1, "LAST_TOTAL")
        self.assertEqual(said.code, DONE)
        calls = said.json["calls"]
        self.assertEqual([call["returned"] for call in calls], [0] * 6)
        self.assertEqual(calls[-1]["data"], {"text": "12.50", "bytes": "31 32 2e 35 30"})
        self.assertIn("Čaj šťavnatý", printer.paper_showing("Hotovosť"))
        self.assertIn("Hotovosť", printer.paper)

    def test_stops_at_a_refusal_and_tells_its_meaning(self):
        printer = self.printer()
        said = telvofm("call", "-p", printer.address, "paragonEnd", 1, 0, 0, "--then", "repeatParagon", 1)
        self.assertEqual(said.code, REFUSED)
        self.assertRegex(said.output, r"^paragonEnd returned \d+, refused: .*has not carried it out")
        self.assertNotIn("repeatParagon", said.output)

    def test_shows_what_comes_in_each_way(self):
        printer = self.printer()
        telvofm("call", "-p", printer.address, *SALE)
        ways = ["getJournal", 1, "--then", "getJournal_str_count", 1, "--then", "getJournal_ResultObject", 1]
        calls = telvofm("call", "-p", printer.address, "--json", *ways).json["calls"]
        texts = [call["data"]["text"] for call in calls]
        self.assertIn("Čaj šťavnatý", texts[0])
        self.assertEqual(texts[1:], texts[:1] * 2)
        bytes_of_name = "c8 61 6a 20 9a 9d 61 76 6e 61 74 fd"  # in Windows-1250
        self.assertIn(bytes_of_name, calls[0]["data"]["bytes"])

    def test_writes_into_a_file_of_any_name(self):
        printer = self.printer()
        telvofm("call", "-p", printer.address, *SALE)
        file = self.folder / "účtenky.txt"
        said = telvofm("call", "-p", printer.address, "getJournal_str_tofile", 1, file)
        self.assertEqual(said.code, DONE, said)
        self.assertIn("Čaj šťavnatý", file.read_text(encoding="cp1250"))

    def test_sends_and_reads_bytes(self):
        printer = self.printer()
        self.file("request", b"\x1c\x01\xe0\x04\xf9")
        for request in ("1c 01 e0 04 f9", "@" + str(self.folder / "request")):
            calls = telvofm("call", "-p", printer.address, "--json", "rawWrite", request,
                            "--then", "rawRead", 1).json["calls"]
            self.assertEqual([call["returned"] for call in calls], [5, 1])
            self.assertEqual(calls[1]["data"]["bytes"], "06")

    def test_sells_on_a_serial_line(self):
        printer = self.printer("--pty")
        raw = self.folder / "raw.log"
        said = telvofm("call", "-p", "COM" + printer.address, "--raw-log", raw, *SALE, environment=MODEM_LINES)
        self.assertEqual(said.code, DONE, said)
        self.assertIn("Čaj šťavnatý", printer.paper_showing("Čaj šťavnatý"))
        self.assertIn('"Čaj šťavnatý"', telvofm("decode", "--serial", raw).output)
        printer.end()
        second = self.printer("--pty")
        again = telvofm("replay", "-p", "COM" + second.address, "--serial", raw, environment=MODEM_LINES)
        self.assertEqual(again.code, DONE, again)
        self.assertIn("Čaj šťavnatý", second.paper_showing("Čaj šťavnatý"))

    def test_writes_no_log_unless_it_is_told_to(self):
        printer = self.printer()
        logs = {"--call-log": self.folder / "calls.log", "--raw-log": self.folder / "raw.log"}
        telvofm("call", "-p", printer.address, "printJobCancel", 1)
        self.assertEqual([file.name for file in self.folder.iterdir() if file.suffix == ".log"], [])
        telvofm("call", "-p", printer.address, *(word for pair in logs.items() for word in pair), "printJobCancel", 1)
        self.assertEqual(logs["--call-log"].read_text().splitlines()[1], "printJobCancel device 1")
        self.assertIn("C: 1c 01 e0 04 f9 ", logs["--raw-log"].read_text())

    def test_keeps_the_document_clean_of_what_the_library_says(self):
        printer = self.printer()
        said = telvofm("call", "-p", printer.address, "--json", "printJobCancel", 1)
        self.assertEqual(list(said.json), ["calls"])
        self.assertIn("host: 127.0.0.1 port: ", said.errors)

    def test_keeps_pictures_between_the_calls_of_a_session(self):
        printer = self.printer()
        picture = SOURCE / "tests/wire/graphics/bitmaps/corner_12x10.bmp"
        said = telvofm("call", "-p", printer.address, "--raw-log", self.folder / "raw.log",
                       "prepareGraphicHeader", 1, picture, "--then", "loadGHMMC", 1, 1, 0)
        self.assertEqual(said.code, DONE, said)
        blocks = re.findall(r"C: (?:06 )?3a", (self.folder / "raw.log").read_text())
        self.assertNotEqual(blocks, [])


unittest.main()
