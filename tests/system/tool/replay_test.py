#!/usr/bin/env python3
"""`telvofm replay`: a call log or a raw log again, on another printer."""
import re
import unittest

from tool import DONE, NO_ANSWER, NO_FILE, TROUBLE, WRONG_USE, ToolTest, telvofm

SALE = ["sellingDayBegin", 1, 0, "--then", "paragonBegin", 1, 0, 1, 0, 0, 1, 0,
        "--then", "itemSale_int", 1, 0, "Čaj, vat B, zelený", 1250, "A", 1500, 83333, "ks",
        "--then", "payment_str", 1, 0, 1, "12.50", "12.50", "0", "Hotovosť", "--then", "paragonEnd", 1, 0, 0]


def sold(paper):
    """What was sold, without what differs between two printers and two moments."""
    return [line for line in paper.splitlines() if re.search("Čaj|TOTAL|Hotovosť|8.33", line)]


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

    def test_sells_the_same_from_either_log(self):
        for log, count in ((self.calls, 9), (self.raw, 7)):
            said = telvofm("replay", "-p", self.second.address, "--json", log)
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
            said = telvofm("replay", "-p", self.second.address, "--raw-log", again, log)
            self.assertEqual(said.code, DONE, said)
            self.assertEqual(telvofm("decode", again).output, telvofm("decode", self.raw).output)
            self.assertIn("Hotovosť", telvofm("decode", again).output)
            self.second.end()
            self.second = self.printer()
        again = self.folder / "calls_again.log"
        said = telvofm("replay", "-p", self.second.address, "--call-log", again, self.calls)
        self.assertEqual(said.code, DONE, said)
        calls = self.calls.read_bytes().splitlines()[1:]
        self.assertEqual(again.read_bytes().splitlines()[1:len(calls) + 1], calls)  # the tool's own closing may follow

    def test_wants_logs_that_can_be_written(self):
        missing = self.folder / "missing" / "again.log"
        for log in (self.calls, self.raw):
            self.assert_refused(telvofm("replay", "-p", self.second.address, "--raw-log", missing, log), NO_FILE,
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
            said = telvofm("replay", "-p", self.second.address, log)
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
        said = telvofm("replay", "-p", self.second.address, "--json", self.raw)
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
        said = telvofm("replay", "-p", self.second.address, "--json", self.raw)
        self.assertEqual((said.code, said.json["repeated"], said.json["different"]), (TROUBLE, 7, 0))
        self.assertEqual(said.json["damages"][0]["what"], "a request is broken off")

    def test_knows_a_raw_log_whose_beginning_is_lost(self):
        self.raw.write_text(self.raw.read_text()[4:])
        said = telvofm("replay", "--dry-run", "--json", self.raw)
        self.assertEqual((said.code, len(said.json["requests"])), (TROUBLE, 6))

    def test_wants_a_log_and_a_printer(self):
        self.assert_refused(telvofm("replay", self.calls), WRONG_USE, "--printer", "--dry-run")
        self.assert_refused(telvofm("replay", "-p", "127.0.0.1:1", self.calls), NO_ANSWER, "cannot be opened")
        self.assert_refused(telvofm("replay", "-p", "127.0.0.1:1", self.raw), NO_ANSWER, "cannot be opened")
        self.assert_refused(telvofm("replay", "--dry-run", self.folder / "none"), NO_FILE, "none cannot be read")
        self.assert_refused(telvofm("replay", "--dry-run", self.file("text", b"Hello\n")), NO_FILE, "holds no call")
        self.assert_refused(telvofm("replay", "--dry-run", "--files", self.folder / "none", self.calls), NO_FILE,
                            "is no folder")


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
