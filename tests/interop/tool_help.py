#!/usr/bin/env python3
"""Help, man page and completion tell the same. Usage: tool_help.py RASTERLOOM TOOL_FOLDER"""
import os
import pathlib
import re
import subprocess
import sys
import unittest

TOOL, SOURCE = sys.argv[1], pathlib.Path(sys.argv[2])
COMMANDS = ("info", "convert", "thumbnail", "formats")
PAGE = SOURCE / "rasterloom.1"


def text_of(*command, **options):
    result = subprocess.run(command, capture_output=True, text=True, check=False, **options)
    return result.stdout + result.stderr


def help_of(command):
    return text_of(TOOL, command, "--help")


def options_of(command):
    """The long options of a command's help."""
    return set(re.findall(r"^  (?:-\w, )?(--[a-z-]+)", help_of(command), re.MULTILINE))


def complete(*words):
    """What bash offers at the end of a line."""
    script = (f'source "{SOURCE}/completions/rasterloom.bash"; compopt() {{ :; }}; COMP_WORDS=("$@"); '
              'COMP_CWORD=$(($# - 1)); _rasterloom; printf "%s\\n" "${COMPREPLY[@]}"')
    return set(text_of("bash", "-c", script, "bash", TOOL, *words).split())


class HelpTest(unittest.TestCase):
    def test_help_fits_a_terminal(self):
        for command in COMMANDS:
            for line in help_of(command).splitlines():
                self.assertLessEqual(len(line), 80, line)
            self.assertIn("--help", options_of(command))
        self.assertGreater(len(options_of("convert")), 25)

    def test_every_option_is_in_the_man_page(self):
        page = PAGE.read_text().replace("\\-", "-")
        for command in COMMANDS:
            missing = [option for option in options_of(command) if not re.search(option + r"\b(?!-)", page)]
            self.assertEqual(missing, [], command)
        known = set().union(*map(options_of, COMMANDS)) | {"--version"}
        self.assertEqual(set(re.findall(r"--[a-z][a-z-]*[a-z]", page)) - known, set())

    def test_the_man_page_is_well_formed(self):
        if subprocess.run(["sh", "-c", "command -v man"], capture_output=True, check=False).returncode != 0:
            self.skipTest("no man")
        environment = {**os.environ, "LC_ALL": "C.UTF-8", "MANROFFSEQ": "", "MANWIDTH": "80"}
        result = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", PAGE], capture_output=True,
                                text=True, env=environment, check=False)
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_every_option_is_completed(self):
        for command in COMMANDS:
            self.assertEqual(complete(command, "--"), options_of(command), command)
            self.assertEqual(complete(command[:3]), {command})

    def test_fish_knows_the_same_options(self):
        text = (SOURCE / "completions/rasterloom.fish").read_text()
        known = {"--" + name for name in re.findall(r"^complete .* -l ([a-z-]+)", text, re.MULTILINE)}
        self.assertEqual(known, set().union(*map(options_of, COMMANDS)) | {"--version"})

    def test_values_are_completed(self):
        for command, option in (("convert", "--interpolation"), ("thumbnail", "--interpolation"),
                                ("convert", "--rotate-flip"), ("convert", "--pixel-format"), ("convert", "--dither"),
                                ("convert", "--png-filter")):
            text = re.search(option + r" (.*?)\n(?:  -|\n)", help_of(command), re.DOTALL).group(1)
            listed = text.rpartition(":")[2]
            self.assertEqual(complete(command, option, ""), set(re.split(r"[,\s]+", listed)) - {""}, option)
        self.assertEqual(complete("convert", "--palette", "w"), {"websafe", "windows"})
        self.assertTrue({"bmp", "jpg", "png"} <= complete("convert", "--to", ""))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]], verbosity=2)
