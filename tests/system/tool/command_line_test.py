#!/usr/bin/env python3
"""What is wrong with a command line, in one sentence of the tool's own that says what to write; with --json in a document too."""
import unittest

from tool import NO_FILE, WRONG_USE, ToolTest, telvofm


class WrongLine(ToolTest):
    def assert_says(self, words, sentence):
        """The whole sentence, and nothing but it; and the same in JSON."""
        said = telvofm(*words)
        self.assertEqual((said.code, said.sentences, said.output), (WRONG_USE, ["telvofm: " + sentence], ""), words)
        said = telvofm("--json", *words)
        self.assertEqual((said.code, said.sentences), (WRONG_USE, ["telvofm: " + sentence]), words)
        self.assertEqual(said.json, {"error": {"exitCode": WRONG_USE, "sentence": sentence}}, words)

    def test_value_that_cannot_be(self):
        for given in ("x", "9600", "", "57600 ", "5.76e4"):
            self.assert_says(["doctor", "-p", "COM7", "--baud", given], f"--baud: '{given}' is neither 57600 nor 115200")
        for given in ("3", "two", "", "-1"):
            self.assert_says(["call", "-p", "COM7", "--stop-bits", given, "getVersion"],
                             f"--stop-bits: '{given}' is none of 1, 2 and 15, which is one and a half")
        self.assert_says(["completion", "fish"], "there is no completion for 'fish'; write: telvofm completion bash")
        self.assert_says(["doctor", "--json=maybe"], "--json=maybe: this option takes no value; write it alone")
        self.assert_says(["replay", "--go-on=x", "a.log"], "--go-on=x: this option takes no value; write it alone")

    def test_value_that_is_missing(self):
        for option in ("-p", "--printer", "--baud", "--library"):
            self.assert_says(["doctor", option], f"nothing stands behind {option}; write its value there")
        self.assert_says(["call", "--call-log"], "nothing stands behind --call-log; write its value there")
        self.assert_says(["doctor", "--printer="], "nothing stands behind --printer=; write its value there")
        for option in ("-p", "--library"):
            name = {"-p": "--printer"}.get(option, option)
            self.assert_says(["doctor", option, ""], f"{name} is empty; write its value behind it")
            self.assert_says(["doctor", option, "--baud"], f"{name}: '--baud' reads like an option; write a value in front of it")
        self.assert_says(["replay", "--raw-log", "--go-on", "a.log"],
                         "--raw-log: '--go-on' reads like an option; write a value in front of it")

    def test_option_that_is_given_twice(self):
        self.assert_says(["doctor", "-p", "COM7", "--printer", "COM8"], "--printer is given 2 times; give it once")
        self.assert_says(["call", "-pCOM7", "-p", "COM8", "-p", "COM9", "getVersion"], "--printer is given 3 times; give it once")
        self.assert_says(["replay", "--files", "a", "--files", "b", "a.log"], "--files is given 2 times; give it once")

    def test_options_that_do_not_go_together(self):
        self.assert_says(["doctor", "--baud", "57600"], "--baud is the speed of a printer's port; name it with --printer")
        self.assert_says(["call", "--stop-bits", "2", "getVersion"], "--stop-bits are those of a printer's port; name it with --printer")
        self.assert_says(["call", "-p", "COM7", "--baud", "57600", "--stop-bits", "2", "getVersion"],
                         "a port is opened with --baud or with --stop-bits; leave one of them out")

    def test_option_that_there_is_not(self):
        self.assert_says(["--wrong"], "there is no option --wrong; 'telvofm --help' lists them")
        self.assert_says(["doctor", "--wrong"], "there is no option --wrong; 'telvofm doctor --help' lists them")
        self.assert_says(["doctor", "--printr", "COM7"], "there is no option --printr; did you mean --printer?")
        self.assert_says(["doctor", "-x"], "there is no option -x; 'telvofm doctor --help' lists them")
        self.assert_says(["replay", "--dry-rum", "a.log"], "there is no option --dry-rum; did you mean --dry-run?")
        self.assert_says(["call", "--raw-lag", "a.log", "getVersion"], "there is no option --raw-lag; did you mean --raw-log?")
        self.assert_says(["-p", "127.0.0.1:9100", "doctor"], "-p stands in front of the command; write it behind it")
        self.assert_says(["--printer=COM7", "doctor"], "--printer=COM7 stands in front of the command; write it behind it")

    def test_word_too_many_or_too_few(self):
        self.assert_says([], "no command is named; 'telvofm --help' lists them")
        self.assert_says([""], "no command is named; 'telvofm --help' lists them")
        self.assert_says(["call"], "no function is named; write: telvofm call FUNCTION ARGUMENT...")
        self.assert_says(["decode"], "no RAWLOG is named; write: telvofm decode RAWLOG")
        self.assert_says(["replay", "--dry-run"], "no LOG is named; write: telvofm replay LOG")
        self.assert_says(["completion"], "no SHELL is named; write: telvofm completion SHELL")
        self.assert_says(["decode", "a.log", "b.log"], "'b.log' is a word too many; 'telvofm decode --help' shows what can be written")
        self.assert_says(["codes", "1", "2"], "'2' is a word too many; 'telvofm codes --help' shows what can be written")
        self.assert_says(["doctor", ""], "'' is a word too many; 'telvofm doctor --help' shows what can be written")

    def test_stays_one_line_whatever_an_argument_holds(self):
        self.assert_says(["de\ncode"], r"there is no command de\x0Acode; did you mean decode?")
        self.assert_says(["codes", "1\r\n2"], r"'1\x0D\x0A2' is no code; a code is a whole number such as -10202")
        self.assert_says(["call", "itemsSale\n"], r"the library has no function itemsSale\x0A; did you mean itemSale?")
        self.assert_says(["doctor", "-p", "COM7", "--baud", "\x1b[31m"], r"--baud: '\x1B[31m' is neither 57600 nor 115200")
        self.assert_says(["doctor", "--wr\nong"], r"there is no option --wr\x0Aong; 'telvofm doctor --help' lists them")
        self.assert_says(["doctor", "\x7f\x85\u2028ž"],
                         r"'\x7F\xC2\x85\xE2\x80\xA8ž' is a word too many; 'telvofm doctor --help' shows what can be written")
        self.assert_says(["call", "setPostline", "1", "a\n日"],
                         "description: the character 日 at position 3 is not in Windows-1250, which the library takes; write it another way")
        self.assert_refused(telvofm("decode", self.folder / "a\nb"), NO_FILE, r"a\x0Ab cannot be read")
        said = telvofm("doctor", "-p", "no\nhost:9100")
        self.assertEqual(len(said.output.splitlines()), 2, said)
        self.assertEqual(telvofm("doctor", "--json", "-p", "no\nhost:9100").json["healthy"], False)


unittest.main()
