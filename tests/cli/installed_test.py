"""What is installed for people at a terminal: the tool itself, completion scripts and manual pages."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

from terminal import run_on_terminal
from tool import DONE, IO, WithShows

BUILD = os.environ["ZUNA_BUILD"]


class InstalledTest(WithShows):
    @classmethod
    def setUpClass(cls):
        cls.place = tempfile.TemporaryDirectory(prefix="zuna-installed-")
        cls.addClassCleanup(cls.place.cleanup)
        cls.prefix = pathlib.Path(cls.place.name) / "prefix"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", cls.prefix], check=True, capture_output=True)
        cls.tool = str(cls.prefix / "bin/zuna-convert")


class TerminalTest(InstalledTest):
    def on_terminal(self, *arguments, code=DONE, **options):
        shown, ended = run_on_terminal([self.tool, *arguments], cwd=self.folder, env=self.environment, **options)
        self.assertEqual(ended, code, shown)
        return shown

    def test_shows_help(self):
        shown = self.on_terminal("help", "midi", "import")
        self.assertTrue(shown.startswith("Make a show of MIDI files"), shown)
        self.assertLessEqual(max(map(len, shown.splitlines())), 80)
        self.assertEqual(self.on_terminal("midi", "import", "--help"), shown)

    def test_shows_a_table_of_the_width_of_the_terminal(self):
        lines = self.on_terminal("info", "new.showdata", columns=80).splitlines()
        self.assertEqual(lines[1:3], ["  number  name  division  length  voices  events  bars  tempos  meters",
                                      "  2       Two        480    1920       1       1     1       1       1"])
        lines = self.on_terminal("explain", columns=60).splitlines()
        self.assertLessEqual(max(map(len, lines)), 60)
        self.assertTrue(any(line.endswith("\u2026") for line in lines))

    def test_shows_errors_in_colour_where_it_is_wanted(self):
        self.assertTrue(self.on_terminal("info", "none", code=IO).startswith("\x1b[31mzuna-convert:\x1b[0m none: "))
        self.environment["NO_COLOR"] = "1"
        self.assertTrue(self.on_terminal("info", "none", code=IO).startswith("zuna-convert: none: "))


class CompletionTest(InstalledTest):
    def test_is_where_the_shells_look_for_it(self):
        for shell, name in (("bash", "bash-completion/completions/zuna-convert"),
                            ("zsh", "zsh/site-functions/_zuna-convert"),
                            ("fish", "fish/vendor_completions.d/zuna-convert.fish")):
            self.assertEqual((self.prefix / "share" / name).read_bytes(), self.run_tool("completion", shell).stdout)

    @unittest.skipUnless(shutil.which("zsh"), "there is no zsh here")
    def test_is_found_by_zsh(self):
        script = ("fpath=($0 $fpath); autoload -U compinit; compinit -u -D; print $_comps[zuna-convert]; "
                  "autoload +X _zuna-convert && print loaded")
        done = subprocess.run(["zsh", "-f", "-c", script, self.prefix / "share/zsh/site-functions"], check=True,
                              capture_output=True, text=True)
        self.assertEqual((done.stdout, done.stderr), ("_zuna-convert\nloaded\n", ""))


class ManualTest(InstalledTest):
    def setUp(self):
        super().setUp()
        self.pages = sorted(self.prefix.glob("share/man/man?/*"))
        self.names = [page.name for page in self.pages]

    def test_has_a_page_for_the_library(self):
        self.assertIn("libzuna_format_converter.3", self.names)

    def test_has_a_page_for_every_command(self):
        if "zuna-convert.1" not in self.names:
            self.skipTest("the pages of the tool were not built")
        words = self.run_tool("completion", "fish").stdout.decode().split("__zuna_convert_at \\'")[1:]
        commands = {word.partition("\\'")[0] for word in words}
        self.assertIn("midi import", commands)
        wanted = {"-".join(["zuna-convert", *command.split()]) + ".1" for command in commands}
        self.assertEqual(wanted | {"libzuna_format_converter.3"}, set(self.names))
        for page in self.pages:
            name = page.name[:-2]
            self.assertIn(f"\n.SH NAME\n{name} " if page.suffix == ".1" else f"\n.Nm {name}\n", page.read_text())

    def test_is_without_warnings(self):
        for command in (["mandoc", "-T", "lint", "-W", "warning"],
                        ["man", "--warnings", "--local-file", "--troff-device=utf8", "--ditroff"]):
            if shutil.which(command[0]) is None:
                continue
            for page in self.pages:
                done = subprocess.run([*command, page], capture_output=True, text=True, check=False,
                                      env={**os.environ, "LC_ALL": "C.UTF-8"})
                said = done.stderr + (done.stdout if command[0] == "mandoc" else "")
                self.assertEqual((done.returncode, said), (0, ""), page.name)


if __name__ == "__main__":
    unittest.main()
