#!/usr/bin/env python3
"""`telvofm decode`: a raw log as exchanges, whole or damaged."""
import unittest

from tool import DONE, NO_FILE, TROUBLE, WRONG_USE, ToolTest, telvofm

# printJobCancel is refused; getVariable TOTAL answers 0.00 and a line end; destroyParagon is sent twice.
# 1c^01^92^54^4f^54^41^4c^00^04 is c9; 3a^05^30^2e^30^30^0d^0a^03 is 25; 1c^01^2b^30^00^8a^e1^00^04 is 69.
LOG = (b"C: 1c 01 e0 04 f9 \nS: 15 05 \n"
       b"C: 1c 01 92 54 4f 54 41 4c 00 04 c9 \nS: 3a 05 30 2e 30 30 0d 0a 03 25 \nC: 03 "
       b"1c 01 2b 30 00 8a e1 00 04 69 11 1c 01 2b 30 00 8a e1 00 04 69 \nS: 06 ")


class Decode(ToolTest):
    def test_shows_lines(self):
        said = telvofm("decode", self.file("raw.log", LOG))
        self.assertEqual(said.code, DONE, said)
        self.assertEqual(said.output.splitlines(), [
            "till     printJobCancel to device 1, checksum ok",
            "printer  refused with error 5",
            'till     getVariable to device 1 "TOTAL", checksum ok',
            'printer  last block "0.00\\x0D\\x0A", checksum ok',
            "till     last block received",
            'till     destroyParagon to device 1 "0" "Šá", checksum ok',
            "till     are you there?",
            'till     destroyParagon to device 1 "0" "Šá", checksum ok',
            "printer  accepted"])

    def test_shows_exchanges_in_json(self):
        document = telvofm("decode", "--json", self.file("raw.log", LOG)).json
        self.assertEqual(document["damages"], [])
        exchanges = document["exchanges"]
        self.assertEqual([exchange["outcome"] for exchange in exchanges], ["refused", "reply", "none", "accepted"])
        self.assertEqual(exchanges[0]["refusal"], 5)
        self.assertEqual(exchanges[1]["reply"], {"text": "0.00\r\n", "bytes": "30 2e 30 30 0d 0a"})
        self.assertEqual(exchanges[1]["request"], {
            "line": 3, "bytes": "1c 01 92 54 4f 54 41 4c 00 04 c9", "whole": True, "command": "getVariable",
            "device": 1, "fields": ["TOTAL"], "checksum": "right"})
        self.assertEqual(exchanges[3]["request"]["fields"], ["0", "Šá"])

    def test_reads_texts_of_serial_links_in_their_code_page(self):
        log = self.file("raw.log", b"C: 1c 01 2b 30 00 e6 a0 00 04 44 \n")
        self.assertIn('"Šá"', telvofm("decode", "--serial", log).output)

    def test_names_damaged_places_and_goes_on(self):
        log = self.file("raw.log", LOG.replace(b"S: 15 05 ", b"S: 15 0x 05 ").replace(b"S: 3a", b"gone\nS: 3a") + b"\nC: 1c 0")
        said = telvofm("decode", log)
        self.assertEqual(said.code, TROUBLE)
        self.assertEqual(said.sentences, [
            "telvofm: the log is damaged in 4 places, the first in line 2: '0x' is no byte"])
        lines = said.output.splitlines()
        self.assertIn("printer  refused with error 5", lines)
        self.assertIn("?        line 4: not a line of a raw log", lines)
        self.assertIn("printer  accepted", lines)
        self.assertIn("till     a request that is broken off: 1c", lines)
        self.assertIn("?        line 8: the log is cut off in the middle of a byte", lines)
        document = telvofm("decode", "--json", log).json
        self.assertEqual([(one["line"], one["what"]) for one in document["damages"]], [
            (2, "'0x' is no byte"), (4, "not a line of a raw log"), (8, "the log is cut off in the middle of a byte"),
            (8, "a request is broken off")])
        self.assertEqual(len(document["exchanges"]), 5)

    def test_says_that_a_log_ends_inside_a_reply(self):
        # getJournal is answered with a block and 17, behind which more comes: 3a^01^61^62^17 is 2f.
        whole = b"C: 1c 01 9f 04 86 \nS: 3a 01 61 62 17 2f \nC: 06 \nS: 3a 00 63 03 5a \nC: 03 "
        self.assertEqual(telvofm("decode", self.file("raw.log", whole)).code, DONE)
        block = whole.index(b"\nC: 06")
        for end, line, what in (
                (block, 2, "the log ends inside a reply"),
                (block + 4, 3, "the log is cut off in front of a byte"),
                (block + 7, 3, "the log ends inside a reply"),
                (whole.index(b"S: 3a 00") + 3, 4, "the log is cut off in front of a byte"),
                (whole.index(b"S: 3a 00") + 6, 4, "a block is broken off")):
            log = self.file("raw.log", whole[:end])
            said = telvofm("decode", log)
            self.assertEqual((said.code, said.sentences), (TROUBLE, [f"telvofm: the log is damaged in line {line}: {what}"]), end)
            self.assertEqual(telvofm("decode", "--json", log).json["damages"], [{"line": line, "what": what}])
            if what.startswith("the log"):
                self.assertEqual(said.output.splitlines()[-1], f"?        line {line}: {what}")

    def test_wants_a_raw_log(self):
        self.assert_refused(telvofm("decode", self.folder / "nothing"), NO_FILE, "nothing cannot be read")
        self.assert_refused(telvofm("decode", self.folder), NO_FILE, "cannot be read")
        self.assert_refused(telvofm("decode", self.file("empty", b"")), NO_FILE, "is no raw log")
        self.assert_refused(telvofm("decode", self.file("text", b"Hello\n")), NO_FILE, "is no raw log")
        self.assert_refused(telvofm("decode"), WRONG_USE, "no RAWLOG is named", "telvofm decode RAWLOG")


unittest.main()
