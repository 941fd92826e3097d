#!/usr/bin/env python3
"""figures.py misses what a load of the virtual printer has to keep, and what the trace may cost.

    figures_test.py
"""
import unittest

from figures import load, trace

ANSWERED = "only answered              60000 commands/s    7500 receipts/s\n"
ROW = "{:22} {:9} commands/s {:7} receipts/s {:6} % of a core   51.2 MB, {} not accepted\n"
BESIDE = "    4000 control calls: median 0.31 ms, 95th percentile {:.2f} ms, longest 4.00 ms\n"


def printed(core=9.5, commands=20000, receipts=2500, not_accepted=(0, 0, 0, 0), percentile=0.9):
    """What printer_load prints: each load alone, then each beside a test."""
    text = ""
    for beside, refused in (("", not_accepted[:2]), (BESIDE.format(percentile), not_accepted[2:])):
        text += ROW.format("50 x 1 receipt/s", 400, 50, core, refused[0]) + beside
        text += ROW.format("as fast as it goes", commands, receipts, 99.0, refused[1]) + beside
    return text + ANSWERED


def missed(text):
    return [figure.what.removeprefix("50 virtual printers, ") for figure in load(text, 3000) if not figure.is_kept()]


class Load(unittest.TestCase):
    def test_keeps_everything(self):
        self.assertEqual(missed(printed()), [])

    def test_misses_a_request_that_was_not_accepted_in_any_of_its_runs(self):
        for run in range(4):
            refused = [0, 0, 0, 0]
            refused[run] = 1
            self.assertEqual(missed(printed(not_accepted=refused)), ["requests not accepted"])

    def test_misses_each_figure(self):
        self.assertEqual(missed(printed(core=25.1)), ["a receipt a second each"])
        self.assertEqual(missed(printed(commands=3600)), [])
        self.assertEqual(missed(printed(commands=3599)), ["commands"])
        self.assertEqual(missed(printed(receipts=300)), [])
        self.assertEqual(missed(printed(receipts=299)), ["synchronised receipts"])
        self.assertEqual(missed(printed(percentile=5.01)), ["Control call, 50 printers sell a receipt a second each"])

    def test_wants_every_row_to_say_what_was_not_accepted(self):
        with self.assertRaises(SystemExit):
            missed(printed().replace(", 0 not accepted", "", 1))

    def test_says_what_the_commands_are_measured_against(self):
        figure, = [figure for figure in load(printed(commands=12000), 3000) if figure.what.endswith("commands")]
        self.assertEqual((figure.ours, figure.beside, figure.ratio),
                         ("12,000 a second", "printers that only answer: 60,000 a second", 0.2))
        with self.assertRaises(SystemExit):
            missed(printed().replace(ANSWERED, ""))


class Trace(unittest.TestCase):
    ALONE = "a command without its socket    1400 ns, trace and disarmed faults {:5} ns of them\n"
    WHOLE = "a command over TCP {} ns of processor, 65000 commands/s\n"

    def cost(self, ours, whole):
        figure, = trace(self.ALONE.format(ours), self.WHOLE.format(whole))
        return figure

    def test_is_a_share_of_the_whole_command(self):
        self.assertEqual(self.cost(450, 15000).ratio, 3)

    def test_costs_at_most_five_in_a_hundred(self):
        self.assertTrue(self.cost(750, 15000).is_kept())
        self.assertFalse(self.cost(751, 15000).is_kept())

    def test_wants_both_figures(self):
        for alone, whole in ((self.ALONE.format(450), ""), ("", self.WHOLE.format(15000))):
            with self.assertRaises(SystemExit):
                list(trace(alone, whole))


if __name__ == "__main__":
    unittest.main()
