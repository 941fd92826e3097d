#!/usr/bin/env python3
"""instructions.py complains of what it has to complain of.

    instructions_test.py
"""
import unittest

from instructions import complaint

KNOWN = {"compiler": "GNU 12", "log off": 2000, "log on": 6000, "layouts": 900000}


class Complaint(unittest.TestCase):
    def test_of_nothing_within_three_percent(self):
        for off, on, layouts in ((2000, 6000, 900000), (2060, 6180, 927000), (1940, 5820, 873000)):
            self.assertIsNone(complaint(KNOWN | {"log off": off, "log on": on, "layouts": layouts}, KNOWN))

    def test_of_more_and_of_less(self):
        for changed in ({"log off": 2061}, {"log off": 1939}, {"log on": 6181}, {"log on": 5819}, {"layouts": 927001},
                        {"layouts": 872999}):
            self.assertIn("were written down", complaint(KNOWN | changed, KNOWN))

    def test_of_more_than_three_thousand_whatever_is_written_down(self):
        many = KNOWN | {"log off": 3001}
        self.assertIn("at most 3000", complaint(many, many))

    def test_of_nothing_with_another_compiler(self):
        self.assertIsNone(complaint(KNOWN | {"log off": 1000}, KNOWN | {"compiler": "Clang 14"}))


if __name__ == "__main__":
    unittest.main()
