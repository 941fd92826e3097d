#!/usr/bin/env python3
"""figures.py misses each figure that is promised, and a benchmark that has come to print something else.

    figures_test.py
"""
import unittest

from figures import Figure, complaint, exchange, journal, line_rate, load, load_of, loading_time, missed_of, pictures, table, trace, write_by_modbus

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


def missed(*texts, disk=3000):
    figures = load([load_of(text, disk) for text in texts])
    return [figure.what.removeprefix("50 virtual printers, ") for figure in figures if not figure.is_kept()]


class Load(unittest.TestCase):
    def test_keeps_everything(self):
        self.assertEqual(missed(printed()), [])

    def test_misses_a_request_that_was_not_accepted_in_any_of_its_runs(self):
        for run in range(4):
            refused = [0, 0, 0, 0]
            refused[run] = 1
            self.assertEqual(missed(printed(), printed(not_accepted=refused)), ["requests not accepted"])

    def test_misses_each_figure(self):
        self.assertEqual(missed(printed(core=25.1)), ["a receipt a second each"])
        self.assertEqual(missed(printed(commands=3600)), [])
        self.assertEqual(missed(printed(commands=3599)), ["commands"])
        self.assertEqual(missed(printed(receipts=300)), [])
        self.assertEqual(missed(printed(receipts=299)), ["synchronised receipts"])
        self.assertEqual(missed(printed(percentile=5.01)), ["Control call, 50 printers sell a receipt a second each"])

    def test_the_best_of_its_runs_counts(self):
        self.assertEqual(missed(printed(core=25.1, commands=3599, receipts=299, percentile=5.01), printed()), [])

    def test_so_does_the_best_of_what_it_is_measured_against(self):
        many = printed(commands=3600).replace("60000", "60020")
        self.assertEqual(missed(many, printed(commands=3600)), ["commands"])
        figures = load([load_of(printed(receipts=300), disk) for disk in (3001, 3000)])
        self.assertEqual(missed_of(figures), ["50 virtual printers, synchronised receipts"])

    def test_wants_every_row_to_say_what_was_not_accepted(self):
        with self.assertRaises(SystemExit):
            missed(printed().replace(", 0 not accepted", "", 1))

    def test_says_what_the_commands_are_measured_against(self):
        figure, = [figure for figure in load([load_of(printed(commands=12000), 3000)]) if figure.what.endswith("commands")]
        self.assertEqual((figure.ours, figure.beside, figure.ratio),
                         ("12,000 a second", "printers that only answer: 60,000 a second", 0.2))
        with self.assertRaises(SystemExit):
            missed(printed().replace(ANSWERED, ""))


class Exchange(unittest.TestCase):
    TEXT = ("log off   itemSale   31.00 us   bare loop   30.00 us   ratio {:.3f}\n"
            "          heap allocations of one itemSale: 0\n"
            "log on    itemSale   41.00 us   bare loop   40.00 us   ratio {:.3f}\n")

    def missed(self, *runs, title="Linux"):
        return missed_of(exchange(title, [self.TEXT.format(*run) for run in runs]))

    def test_the_best_of_its_runs_counts_for_each_log(self):
        self.assertEqual(self.missed((1.03, 1.2), (1.2, 1.03)), [])

    def test_misses_more_than_is_promised(self):
        self.assertEqual(self.missed((1.031, 1.0)), ["Exchange, Linux, log off"])
        self.assertEqual(self.missed((1.0, 1.031)), ["Exchange, Linux, log on"])

    def test_misses_more_than_is_promised_under_wine(self):
        self.assertEqual(self.missed((1.1, 1.1), title="DLL under Wine"), [])
        self.assertEqual(self.missed((1.101, 1.101), title="DLL under Wine"),
                         ["Exchange, DLL under Wine, log off", "Exchange, DLL under Wine, log on"])

    def test_misses_more_than_1_4_times_libmodbus(self):
        text = "itemSale   14.00 us   libmodbus   10.00 us   ratio {}"
        self.assertEqual(missed_of(write_by_modbus(text.format("1.400"))), [])
        self.assertEqual(missed_of(write_by_modbus(text.format("1.401"))), ["Exchange, Linux, log off, in another run"])

    def test_wants_its_rows(self):
        for figures in (exchange("Linux", ["log off 31 us"]), write_by_modbus("itemSale 14 us")):
            with self.assertRaises(SystemExit):
                list(figures)


class Journal(unittest.TestCase):
    def printed(self, ratios=("0.900", "0.970", "0.970", "0.970"), peaks=("2.00", "2.00")):
        text = ("       bytes library ns/B keeping ns/B  thrown ns/B   kept/library  thrown/library  of processor time  "
                "peak/reply\n")
        for size, ratio in zip((65536, 1 << 20, 16 << 20, 64 << 20), ratios):
            text += (f"{size:12} {'100.00':>12} {'97.00':>12} {'80.00':>12} {ratio:>14} {'0.800':>15} {'0.900':>18} "
                     f"{'1.02':>11}\n")
        for log, peak in zip(("off", "on"), peaks):
            text += f"    67108865 bytes with the call log {log}: peak/reply {peak}\n"
        return text

    def test_promises_nothing_of_64_kilobytes(self):
        self.assertEqual(missed_of(journal(self.printed())), [])

    def test_says_both_loops_that_it_is_measured_against(self):
        kept, thrown = list(journal(self.printed()))[:2]
        self.assertEqual((kept.beside, kept.ratio), ("the same system calls, data kept: 10.3 MB/s", 0.9))
        self.assertEqual((thrown.beside, thrown.ratio), ("the same, data thrown away: 12.5 MB/s", 0.8))

    def test_misses_each_larger_one(self):
        for index, what in ((1, "Journal of 1 MB"), (2, "Journal of 16 MB"), (3, "Journal of 64 MB")):
            ratios = ["1.000"] * 4
            ratios[index] = "0.969"
            self.assertEqual(missed_of(journal(self.printed(ratios))), [what])

    def test_misses_more_memory_than_a_growing_string_takes(self):
        self.assertEqual(missed_of(journal(self.printed(peaks=("2.11", "2.10")))), ["Journal of 64 MB, log off: most memory"])

    def test_wants_each_size_and_the_memory_with_both_logs(self):
        for text in (self.printed(ratios=("1.000",) * 3), self.printed(peaks=("2.00",))):
            with self.assertRaises(SystemExit):
                list(journal(text))


class Pictures(unittest.TestCase):
    ROW = "{} x {}: 13.83 billion dots/s, plain loop 0.78, ratio {}; copying the output takes 1/7.0 of it\n"

    def test_misses_less_than_twenty_times_the_loop_over_the_dots(self):
        text = self.ROW.format(576, 1200, "19.9") + self.ROW.format(4096, 4096, "20.0")
        self.assertEqual(missed_of(pictures(text)), ["Layouts of a picture of 576 x 1200"])

    def test_wants_both(self):
        with self.assertRaises(SystemExit):
            list(pictures(self.ROW.format(576, 1200, "30.0")))


class LineRate(unittest.TestCase):
    ROWS = "bare loop         5.800      5.843        99.27           2.54\n" \
           "library           5.800      5.841        {}           {}\n"

    def test_keeps_99_percent_of_the_line_and_5_of_a_core(self):
        self.assertEqual(missed_of(line_rate(self.ROWS.format("99.00", "5.00"))), [])

    def test_misses_either(self):
        self.assertEqual(missed_of(line_rate(self.ROWS.format("98.99", "5.00"))), ["Serial reply at 115,200 baud"])
        self.assertEqual(missed_of(line_rate(self.ROWS.format("99.00", "5.01"))), ["Serial reply at 115,200 baud, processor"])


class Loading(unittest.TestCase):
    TEXT = "loaded in 7000 microseconds, the control library in 6000: {} longer\n"

    def test_misses_more_than_a_millisecond_beyond_the_control_library(self):
        self.assertTrue(loading_time("libtelvofm.so", self.TEXT.format(1000)).is_kept())
        self.assertFalse(loading_time("libtelvofm.so", self.TEXT.format(1001)).is_kept())

    def test_may_be_shorter(self):
        self.assertEqual(loading_time("libtelvofm.so", self.TEXT.format(-3)).ratio, -0.003)


class Complaint(unittest.TestCase):
    KEPT = Figure("the one", "1", "", 1, most=1)
    MISSED = Figure("the other", "2", "", 2, most=1)

    def test_names_what_is_missed_and_nothing_else(self):
        self.assertEqual(complaint([self.KEPT, self.MISSED]), "figures: missed: the other; is the machine quiet?")

    def test_is_none_when_nothing_is(self):
        self.assertIsNone(complaint([self.KEPT]))

    def test_stands_below_the_table_too(self):
        self.assertTrue(table([self.KEPT, self.MISSED]).endswith("\n\nMissed: the other."))
        self.assertTrue(table([self.KEPT]).endswith("\n\nNothing that is promised was missed."))


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
