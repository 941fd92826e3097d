#!/usr/bin/env python3
"""instructions.py complains of what it has to complain of.

    instructions_test.py
"""
import unittest

from instructions import TAKES, complaint

KNOWN = {"compiler": "GNU 12", "log off": 2000, "log on": 6000, "serial": 4000, "journal": 100000, "layouts": 900000}


class Complaint(unittest.TestCase):
    def test_of_nothing_within_three_percent(self):
        for share in (0.97, 1.0, 1.03):
            found = {title: round(share * KNOWN[title]) for title in TAKES}
            self.assertIsNone(complaint(KNOWN | found, KNOWN))

    def test_of_more_and_of_less(self):
        for changed in ({"log off": 2061}, {"log off": 1939}, {"log on": 6181}, {"log on": 5819}, {"serial": 4121},
                        {"serial": 3879}, {"journal": 103001}, {"journal": 96999}, {"layouts": 927001}, {"layouts": 872999}):
            self.assertIn("were written down", complaint(KNOWN | changed, KNOWN))

    def test_of_more_than_three_thousand_whatever_is_written_down(self):
        many = KNOWN | {"log off": 3001}
        self.assertIn("at most 3000", complaint(many, many))

    def test_of_nothing_with_another_compiler(self):
        self.assertIsNone(complaint(KNOWN | {"log off": 1000}, KNOWN | {"compiler": "Clang 14"}))


if __name__ == "__main__":
    unittest.main()
