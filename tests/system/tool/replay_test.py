#!/usr/bin/env python3
"""`telvofm replay`: a call log or a raw log again, on another printer."""
import re
import unittest

from tool import DONE, MODEM_LINES, NO_ANSWER, NO_FILE, TROUBLE, WRONG_USE, ToolTest, telvofm

SALE = ["sellingDayBegin", 1, 0, "--then", "paragonBegin", 1, 0, 1, 0, 0, 1, 0,
        "--then", "itemSale_int", 1, 0, "Čaj, vat B, zelený", 1250, "A", 1500, 83333, "ks",
        "--then", "payment_str", 1, 0, 1, "12.50", "12.50", "0", "Hotovosť", "--then", "paragonEnd", 1, 0, 0]


def sold(paper):
    """What was sold, without what differs between two printers and two moments."""
    return [line for line in paper.splitlines() if re.search(r"Čaj|TOTAL|Hotovosť|8\.33", line)]


class LinesOfASale(unittest.TestCase):
    def test_are_not_those_of_a_printer_on_any_port(self):
        self.assertEqual(sold("listening on 127.0.0.1:38333"), [])


class WithLogsOfASale(ToolTest):
    def setUp(self):
        super().setUp()
        self.calls, self.raw = self.folder / "calls.log", self.folder / "raw.log"
        first = self.printer()
        said = telvofm("call", "-p", first.address, "--call-log", self.calls, "--raw-log", self.raw, *SALE,
                       "--then", "getVariable", 1, "LAST_TOTAL", "--then", "getVariable", 1, "DUE")
        self.assertEqual(said.code, DONE, said)
        self.sold = sold(first.paper_showing("Hotovosť"))
        first.end()
        self.second = self.printer()

    def replay(self, log, *options):
        """On the second printer; of a raw log it has to be said which link it is of."""
        link = ["--tcp"] if log == self.raw else []
        return telvofm("replay", "-p", self.second.address, *link, *options, log)

    def test_sells_the_same_from_either_log(self):
        for log, count in ((self.calls, 9), (self.raw, 7)):
            said = self.replay(log, "--json")
            self.assertEqual(said.code, DONE, said)
            self.assertEqual((said.json["repeated"], said.json["different"], said.json["damages"]), (count, 0, []))
            self.assertEqual(len(self.sold), 4)
            self.assertEqual(sold(self.second.paper_showing("Hotovosť")), self.sold)
            self.second.end()
            self.second = self.printer()

    def test_keeps_logs_of_its_own(self):
        """A raw log of either; a call log of the calls, without which the requests of a raw log are repeated."""
        for log in (self.calls, self.raw):
            again = self.folder / "again.log"
            said = self.replay(log, "--raw-log", again)
            self.assertEqual(said.code, DONE, said)
            self.assertEqual(telvofm("decode", again).output, telvofm("decode", self.raw).output)
            self.assertIn("Hotovosť", telvofm("decode", again).output)
            self.second.end()
            self.second = self.printer()
        again = self.folder / "calls_again.log"
        said = self.replay(self.calls, "--call-log", again)
        self.assertEqual(said.code, DONE, said)
        calls = self.calls.read_bytes().splitlines()[1:]
        self.assertEqual(again.read_bytes().splitlines()[1:len(calls) + 1], calls)  # the tool's own closing may follow

    def test_wants_logs_that_can_be_written(self):
        missing = self.folder / "missing" / "again.log"
        for log in (self.calls, self.raw):
            self.assert_refused(self.replay(log, "--raw-log", missing), NO_FILE,
                                f"the log {missing} cannot be written; name a file in a folder that is there")
        self.assertNotIn("Čaj", self.second.paper)

    def test_refuses_options_that_would_do_nothing(self):
        for option in ("--call-log", "--library", "--password", "--files"):
            self.assert_refused(telvofm("replay", "-p", self.second.address, option, self.folder / "x", self.raw), WRONG_USE,
                                f"{option} is for call logs, and {self.raw} is a raw log; leave it out")
        for option in ("--call-log", "--raw-log"):
            self.assert_refused(telvofm("replay", "--dry-run", option, self.folder / "x", self.calls), WRONG_USE,
                                "nothing is sent with --dry-run, and no log is written; leave out --dry-run or the log")
        self.assertFalse((self.folder / "x").exists())
        self.assertNotIn("Čaj", self.second.paper)

    def test_leaves_the_log_that_it_replays_alone(self):
        for log in (self.calls, self.raw):
            before = log.read_bytes()
            for option in ("--call-log", "--raw-log"):
                self.assert_refused(telvofm("replay", "-p", self.second.address, option, self.folder / "." / log.name, log), WRONG_USE,
                                    f"{log} is the log that is replayed; name another file for the new one")
            self.assertEqual(log.read_bytes(), before)

    def test_stops_at_the_first_difference_or_goes_on(self):
        telvofm("call", "-p", self.second.address, "sellingDayBegin", 1, 0)  # the second time it is refused
        for log, kind in ((self.calls, "calls"), (self.raw, "requests")):
            said = self.replay(log)
            self.assertEqual(said.code, TROUBLE)
            self.assertRegex(said.output, r"\n    (returned 6, refused: |refused with error 6 now, accepted in the log)")
            self.assertRegex(said.output.splitlines()[-1], rf"^\d of \d {kind} repeated, 1 different$")
            self.assertEqual(sold(self.second.paper), [])
        said = telvofm("replay", "-p", self.second.address, "--go-on", self.calls)
        self.assertEqual(said.code, TROUBLE)
        self.assertEqual(said.output.splitlines()[-1], "9 of 9 calls repeated, 1 different")
        self.assertEqual(sold(self.second.paper_showing("Hotovosť")), self.sold)

    def test_notices_another_answer(self):
        log = self.calls.read_bytes()
        self.calls.write_bytes(log.replace(b"LAST_TOTAL, result 12.50", b"LAST_TOTAL, result 12.49"))
        said = telvofm("replay", "-p", self.second.address, "--json", self.calls)
        self.assertEqual(said.code, TROUBLE)
        self.assertEqual([call["difference"] for call in said.json["calls"]][-1],
                         'the printer says "12.50", in the log it said "12.49"')
        self.second.end()
        self.second = self.printer()
        # The answer 12.50 as 12.51, with its checksum byte: one more bit in both.
        raw = self.raw.read_text()
        changed = re.sub(r"(31 32 2e 35) 30 (0d 0a 03) (\w\w)",
                         lambda found: f"{found[1]} 31 {found[2]} {int(found[3], 16) ^ 1:02x}", raw, count=1)
        self.assertNotEqual(changed, raw)
        self.raw.write_text(changed)
        said = self.replay(self.raw, "--json")
        self.assertEqual([request["difference"] for request in said.json["requests"]][-1],
                         'answered "12.50\\x0D\\x0A" now, answered "12.51\\x0D\\x0A" in the log')

    def test_shows_what_it_would_do(self):
        for log in (self.calls, self.raw):
            said = telvofm("replay", "--dry-run", log)
            self.assertEqual(said.code, DONE, said)
            self.assertIn("Čaj, vat B, zelený", said.output)
            self.assertTrue(said.output.splitlines()[-1].endswith("in the log, nothing was sent"))
        self.assertNotIn("Čaj", self.second.paper)
        calls = telvofm("replay", "--dry-run", "--json", self.calls).json["calls"]
        self.assertEqual(calls[3], {"line": 4, "function": "itemSale_int", "rounded": False, "arguments": [
            "1", "0", "Čaj, vat B, zelený", "1250", "A", "1500", "83333", "ks"]})

    def test_names_damaged_places_and_goes_on(self):
        lines = self.calls.read_bytes().splitlines(keepends=True)
        self.calls.write_bytes(b"".join([*lines[:2], b"nonsense\n", lines[2], b"itemSale Device 1, ro\n", *lines[3:-1],
                                         b"paragonEnd Device 1, row 0, graphics head"]))
        said = telvofm("replay", "-p", self.second.address, "--json", self.calls)
        self.assertEqual(said.code, TROUBLE)
        self.assertEqual([(one["line"], one["what"]) for one in said.json["damages"]], [
            (3, "not a line of a call log"), (5, "not a line of a call log"), (11, "the log is cut off here")])
        self.assertEqual((said.json["different"], sold(self.second.paper_showing("Hotovosť"))), (0, self.sold))

    def test_leaves_out_requests_that_are_broken_off(self):
        self.raw.write_text(self.raw.read_text() + "\nC: 1c 01 e0 ")
        said = self.replay(self.raw, "--json")
        self.assertEqual((said.code, said.json["repeated"], said.json["different"]), (TROUBLE, 7, 0))
        self.assertEqual(said.json["damages"][0]["what"], "a request is broken off")

    def test_knows_a_raw_log_whose_beginning_is_lost(self):
        self.raw.write_text(self.raw.read_text()[4:])
        said = telvofm("replay", "--dry-run", "--json", self.raw)
        self.assertEqual((said.code, len(said.json["requests"])), (TROUBLE, 6))

    def test_wants_a_log_and_a_printer(self):
        self.assert_refused(telvofm("replay", self.calls), WRONG_USE, "--printer", "--dry-run")
        self.assert_refused(telvofm("replay", "-p", "127.0.0.1:1", self.calls), NO_ANSWER, "cannot be opened")
        self.assert_refused(telvofm("replay", "-p", "127.0.0.1:1", "--tcp", self.raw), NO_ANSWER, "cannot be opened")
        self.assert_refused(telvofm("replay", "--dry-run", self.folder / "none"), NO_FILE, "none cannot be read")
        self.assert_refused(telvofm("replay", "--dry-run", self.file("text", b"Hello\n")), NO_FILE, "holds no call")
        self.assert_refused(telvofm("replay", "--dry-run", "--files", self.folder / "none", self.calls), NO_FILE,
                            "is no folder")

    def test_asks_which_link_a_raw_log_is_of(self):
        """Its texts are in the code page of that link, and nothing in the log says which it was."""
        self.assert_refused(telvofm("replay", "-p", self.second.address, self.raw), WRONG_USE,
                            f"{self.raw} holds characters that a serial link and TCP write differently",
                            "add --serial", "--tcp")
        self.assertEqual(sold(self.second.paper), [])
        self.assert_refused(telvofm("replay", "-p", self.second.address, "--tcp", "--serial", self.raw), WRONG_USE,
                            "a raw log is of one link; leave out --serial or --tcp")
        for link in ("--serial", "--tcp"):
            self.assert_refused(telvofm("replay", "--dry-run", link, self.calls), WRONG_USE,
                                f"{link} is for raw logs, and {self.calls} is a call log; leave it out")
        block = "3a 00 9f 03 a6 "
        qr_code, answer = f"C: 1c 01 ed 04 f4 \nS: 06 \nC: {block}\nS: 06 ", f"C: 1c 01 93 04 8a \nS: {block}\nC: 03 "
        for text in (qr_code, answer):
            self.assertEqual(telvofm("replay", "-p", self.second.address, self.file("text.log", text)).code, WRONG_USE)
        picture = f"C: 1c 01 de 30 00 30 00 04 c7 \nS: 06 \nC: {block}\nS: 06 "
        for plain in ("C: 1c 01 29 30 00 04 00 \nS: 06 ", picture):
            said = telvofm("replay", "-p", self.second.address, self.file("plain.log", plain))
            self.assertIn("1 of 1 requests repeated", said.output)

    def test_wants_a_request_in_a_raw_log(self):
        for contents in ("S: 06 \n", "C: 11 \nS: 11 ", "C: 1c 01 e0 "):
            log = self.file("empty.log", contents)
            for options in (["--dry-run"], ["-p", self.second.address]):
                self.assert_refused(telvofm("replay", *options, log), NO_FILE, f"{log} holds no whole request",
                                    f"telvofm decode {log}")


class BetweenLinksOfBothKinds(ToolTest):
    """Texts are in code page 852 on a serial line, and in Windows-1250 over TCP."""

    def on(self, kind):
        """A printer and its name."""
        link = ["--pty"] if kind == "--serial" else ["--listen", "127.0.0.1:0"]
        printer = self.printer(*link, "--clock", "2026-01-31 12:00")
        return printer, ("COM" if kind == "--serial" else "") + printer.address

    @staticmethod
    def printed(printer):
        """The dots of the QR code and the receipt, as far as the name of the payment."""
        lines = printer.paper_showing("Hotovosť").splitlines()
        return lines[1:next(number for number, line in enumerate(lines) if "Hotovosť" in line) + 1]

    def test_converts_the_texts_for_the_other_kind(self):
        papers = []
        for logged, other in (("--serial", "--tcp"), ("--tcp", "--serial")):
            log = self.folder / f"raw{logged}.log"
            printer, name = self.on(logged)
            said = telvofm("call", "-p", name, "--raw-log", log, "printQRCode", 1, "Žemľa ťažká", "--then", *SALE,
                           "--then", "getLastParagonResultObject", 1, environment=MODEM_LINES)
            self.assertEqual(said.code, DONE, said)
            papers.append(self.printed(printer))
            printer.end()
            for kind in (logged, other):
                printer, name = self.on(kind)
                said = telvofm("replay", "-p", name, logged, log, environment=MODEM_LINES)
                self.assertEqual(said.code, DONE, said)
                self.assertIn('"Čaj, vat B, zelený"', said.output)
                self.assertEqual(said.output.splitlines()[-1], "7 of 7 requests repeated, 0 different")
                papers.append(self.printed(printer))
                printer.end()
        self.assertIn("Čaj, vat B, zelený", "".join(papers[0]))
        self.assertGreater(len([line for line in papers[0] if "▀" in line]), 10)
        for paper in papers[1:]:
            self.assertEqual(paper, papers[0])

    def test_tells_differences_in_readable_characters(self):
        printer, _ = self.on("--tcp")
        log = self.file("raw.log", "C: 1c 01 93 04 8a \nS: 3a 00 9f 03 a6 \nC: 03 ")
        said = telvofm("replay", "-p", printer.address, "--serial", log)
        self.assertEqual(said.code, TROUBLE)
        self.assertIn('answered "" now, answered "č" in the log', said.output)

    def test_shows_the_texts_of_a_serial_line(self):
        log = self.file("raw.log", "C: 1c 01 2b 30 00 e6 a0 00 04 44 ")
        self.assertIn('"Šá"', telvofm("replay", "--dry-run", "--serial", log).output)
        self.assertIn('"Šá"', telvofm("replay", "--dry-run", "--serial", "-p", "127.0.0.1", log).output)


class OnAPrinter(ToolTest):
    def test_writes_files_into_its_own_folder(self):
        """Never where the shop's till had them."""
        printer = self.printer()
        theirs, ours = self.folder / "theirs.txt", self.folder / "ours"
        log = self.file("calls.log", f"getJournal_str_tofile device 1, fileName {theirs}\n")
        self.assertEqual(telvofm("replay", "-p", printer.address, log).code, DONE)
        ours.mkdir()
        self.assertEqual(telvofm("replay", "-p", printer.address, "--files", ours, log).code, DONE)
        self.assertEqual([file.name for file in ours.iterdir()], ["line-1"])
        self.assertFalse(theirs.exists())

    def test_wants_a_folder_for_files_before_anything_is_sent(self):
        printer = self.printer()
        log = self.file("calls.log", "sellingDayBegindeviceNumber 1, saleMode 0\n"
                                     "getJournal_str_tofile device 1, fileName a.txt\n")
        nowhere = {"TMPDIR": str(self.folder / "nowhere")}
        self.assert_refused(telvofm("replay", "-p", printer.address, log, environment=nowhere), NO_FILE,
                            "temporary files", "--files")
        self.assertEqual(telvofm("call", "-p", printer.address, "--json", "getVariable", 1, "DAY").json["calls"][0]["data"]["text"],
                         "closed")
        self.assertEqual(telvofm("replay", "-p", printer.address, "--files", self.folder, log, environment=nowhere).code, DONE)
        self.assertEqual(telvofm("replay", "--dry-run", log, environment=nowhere).code, DONE)
        log.write_bytes(log.read_bytes().splitlines(keepends=True)[0].replace(b"sellingDayBegin", b"printJobCancel ")
                        .replace(b"deviceNumber 1, saleMode 0", b"device 1"))
        self.assertEqual(telvofm("replay", "-p", printer.address, log, environment=nowhere).code, DONE)

    def test_asks_for_passwords_that_the_log_hides(self):
        printer = self.printer()
        log = self.file("calls.log", "setHeader device 1, password *****, rowNumber 1, text Shop\n")
        said = telvofm("replay", "-p", printer.address, log)
        self.assertEqual(said.code, TROUBLE)
        self.assertIn("left out: the log does not hold its password; give it with --password", said.output)
        said = telvofm("replay", "--dry-run", "--json", "--password", "heslo", log)
        self.assertEqual(said.json["calls"][0]["arguments"], ["1", "heslo", "1", "Shop"])

    def test_takes_the_lines_of_a_receipt_image_together(self):
        printer = self.printer()
        telvofm("call", "-p", printer.address, *SALE)
        log = self.folder / "calls.log"
        said = telvofm("call", "-p", printer.address, "--call-log", log, "getLastParagonResultObject", 1,
                       "--then", "getLastParagon", 1, "--then", "getJournal_ResultObject", 1, "--then", "repeatParagon", 1)
        self.assertEqual(said.code, DONE, said)
        self.assertGreater(len(log.read_bytes().splitlines()), 20)
        said = telvofm("replay", "-p", printer.address, "--json", "--go-on", log)
        self.assertEqual(said.code, DONE, said)
        self.assertEqual([call["function"] for call in said.json["calls"]], [
            "openFM", "getLastParagonResultObject", "getLastParagonResultObject", "getJournal_ResultObject",
            "repeatParagon", "closeFM"])


unittest.main()
