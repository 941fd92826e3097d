#!/usr/bin/env python3
"""`telvofm codes`, the help, the version and the completion: what needs neither library nor printer."""
import json
import re
import subprocess
import unittest

from tool import DONE, NO_FILE, SOURCE, WRONG_USE, ToolTest, program, telvofm

COMMANDS = ["call", "codes", "completion", "decode", "doctor", "replay"]


class Codes(ToolTest):
    def test_says_what_every_code_of_the_table_means(self):
        table = json.loads((SOURCE / "api/codes.json").read_text(encoding="utf-8"))
        for entry in table:
            code = entry.get("code", entry.get("from"))
            said = telvofm("codes", "--json", code)
            self.assertEqual(said.code, DONE)
            wanted = {**{key: entry[key] for key in ("name", "happened", "executed", "advice")}, "code": code}
            self.assertEqual(said.json["codes"], [wanted])

    def test_knows_the_printers_own_codes(self):
        for code in (1, 63, 65, 255):
            self.assertEqual(telvofm("codes", code, "--json").json["codes"][0]["name"], "refused")

    def test_says_it_in_sentences(self):
        said = telvofm("codes", "-10202")
        self.assertEqual(said.output.splitlines()[0], "-10202  timeout")
        self.assertIn("    Whether the printer has carried it out is unknown.", said.output.splitlines())
        self.assertIn("    The printer has not carried it out.", telvofm("codes", "-1").output.splitlines())

    def test_lists_all(self):
        names = [entry["name"] for entry in telvofm("codes", "--json").json["codes"]]
        table = json.loads((SOURCE / "api/codes.json").read_text(encoding="utf-8"))
        self.assertEqual(sorted(names), sorted(entry["name"] for entry in table))
        self.assertIn("1 to 255  refused", telvofm("codes").output.splitlines())

    def test_refuses_what_is_no_code(self):
        for code in ("256", "-2", "-10003"):
            self.assert_refused(telvofm("codes", code), WRONG_USE, "returns no code " + code)
        for code in ("many", "1.5", "99999999999"):
            self.assert_refused(telvofm("codes", code), WRONG_USE, "'" + code + "' is no code")
        self.assert_refused(telvofm("codes", 1, 2), WRONG_USE, "telvofm codes --help")


class Help(ToolTest):
    def test_tells_the_version(self):
        version = re.search(r"project\(TelvoFM VERSION ([\d.]+)", (SOURCE / "CMakeLists.txt").read_text())[1]
        self.assertEqual(telvofm("--version").output, f"telvofm {version}\n")

    def test_gives_examples_with_every_command(self):
        for words in ([], *([command] for command in COMMANDS)):
            said = telvofm(*words, "--help")
            self.assertEqual((said.code, said.errors), (DONE, ""))
            examples = said.output.split("Examples:\n")[1]
            self.assertIn(" ".join(["  telvofm", *words]), examples)
            self.assertIn("\n" + " ".join(["Usage: telvofm", *words, "[OPTIONS]"]), said.output)
        self.assertIn("FUNCTION [ARGUMENT...]", telvofm("call", "--help").output)

    def test_lists_the_exit_codes(self):
        listed = re.findall(r"^  (\d)  ", telvofm("--help").output, re.MULTILINE)
        self.assertEqual(listed, list("01234567"))

    def test_refuses_what_is_no_command_in_one_sentence(self):
        self.assert_refused(telvofm(), WRONG_USE, "no command is named")
        self.assert_refused(telvofm("decod"), WRONG_USE, "there is no command decod; did you mean decode?")
        self.assert_refused(telvofm("xyzzy"), WRONG_USE, "telvofm --help")
        self.assert_refused(telvofm("--wrong"), WRONG_USE, "--wrong", "telvofm --help")
        self.assert_refused(telvofm("codes", "--wrong"), WRONG_USE, "--wrong", "telvofm codes --help")
        self.assert_refused(telvofm("doctor", "--baud", 57600), WRONG_USE, "--printer")
        self.assert_refused(telvofm("doctor", "-p", "COM7", "--baud", 9600), WRONG_USE, "9600")

    def test_answers_in_json_also_then(self):
        self.assertEqual(telvofm("codes", "--json", "--wrong").json["error"]["exitCode"], WRONG_USE)
        for words in ([], ["decod"], ["--wrong"]):
            self.assertEqual(telvofm("--json", *words).json["error"]["exitCode"], WRONG_USE)
        self.assertEqual(telvofm("--json", "decod").json["error"]["sentence"], "there is no command decod; did you mean decode?")


class Output(ToolTest):
    def test_that_cannot_be_written_is_an_error(self):
        with open("/dev/full", "wb") as full:
            ended = subprocess.run([program("telvofm"), "codes"], stdout=full, stderr=subprocess.PIPE, check=False)
        self.assertEqual(ended.returncode, NO_FILE)
        self.assertEqual(ended.stderr, b"telvofm: standard output cannot be written to; make room for it\n")

    def test_holds_help_and_version_in_json_too(self):
        for words in (["codes", "--json", "--help"], ["--json", "codes", "--help"], ["codes", "--help", "--json"]):
            self.assertTrue(telvofm(*words).json["said"].startswith("Say what a returned code means"))
        for words in (["--json", "--help"], ["--help", "--json"]):
            self.assertEqual(telvofm(*words).json["said"] + "\n", telvofm("--help").output)
        for words in (["--json", "--version"], ["--version", "--json"]):
            self.assertEqual(telvofm(*words).json["said"] + "\n", telvofm("--version").output)

    def test_is_json_wherever_that_is_asked_for(self):
        said = telvofm("--json", "codes", -1)
        self.assertEqual((said.code, said.json), (DONE, telvofm("codes", "--json", -1).json))
        self.assertEqual([entry["code"] for entry in said.json["codes"]], [-1])
        self.assertIn("completion", telvofm("--json", "completion", "bash").json)


class Completion(ToolTest):
    def completed(self, *words):
        """What a shell offers for the last of the words."""
        script = self.file("completion.bash", telvofm("completion", "bash").output.encode())
        line = " ".join(f"'{word}'" for word in words)
        asked = subprocess.run(
            ["bash", "-c", f"source '{script}'; COMP_WORDS=({line}); COMP_CWORD={len(words) - 1}; _telvofm; "
                           'printf "%s\\n" "${COMPREPLY[@]}"'],
            capture_output=True, text=True, check=True)
        self.assertEqual(asked.stderr, "")
        return asked.stdout.split()

    def test_knows_the_commands(self):
        self.assertEqual(self.completed("telvofm", ""), [*COMMANDS, "--help", "--json", "--version"])
        self.assertEqual(self.completed("telvofm", "--json", "de"), ["decode"])
        self.assertEqual(self.completed("telvofm", "--json", "codes", "-1020"), ["-10202", "-10201", "-10200"])
        self.assertEqual(self.completed("telvofm", "--js"), ["--json"])
        self.assertEqual(self.completed("telvofm", "de"), ["decode"])

    def test_knows_functions_codes_and_options(self):
        self.assertEqual(self.completed("telvofm", "call", "getJournalStructU"), [
            "getJournalStructU", "getJournalStructU_ResultObject", "getJournalStructU_tofile"])
        self.assertEqual(self.completed("telvofm", "call", "-p", "x", "getVersi"), ["getVersion"])
        self.assertEqual(self.completed("telvofm", "codes", "-1020"), ["-10202", "-10201", "-10200"])
        self.assertEqual(self.completed("telvofm", "replay", "--d"), ["--dry-run"])
        self.assertEqual(self.completed("telvofm", "completion", ""), ["bash"])

    def test_knows_files_where_they_are_wanted(self):
        self.file("raw.log", b"")
        self.assertEqual(self.completed("telvofm", "decode", f"{self.folder}/ra"), [f"{self.folder}/raw.log"])
        self.assertEqual(self.completed("telvofm", "call", "--raw-log", f"{self.folder}/ra"),
                         [f"{self.folder}/raw.log"])

    def test_refuses_other_shells(self):
        self.assert_refused(telvofm("completion", "fish"), WRONG_USE, "fish", "telvofm completion bash")


unittest.main()
