"""What is installed for people at a terminal: the tool itself, completion scripts and manual pages."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time
import unittest

import schemas
from terminal import run_on_terminal
from tool import DONE, IO, PART_FAILED, WithShows, legacy_log, legacy_show, legacy_song, legacy_song_log

BUILD = os.environ["ZUNA_BUILD"]
ESCAPE = re.compile("\\r?\x1b\\[[0-9;]*[A-Za-z]")


class InstalledTest(WithShows):
    @classmethod
    def setUpClass(cls):
        cls.place = tempfile.TemporaryDirectory(prefix="zuna-installed-")
        cls.addClassCleanup(cls.place.cleanup)
        cls.prefix = pathlib.Path(cls.place.name) / "prefix"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", cls.prefix], check=True, capture_output=True)
        cls.tool = str(cls.prefix / "bin/zuna-convert")


class TerminalTest(InstalledTest):
    """Every command that prints, on terminals of several widths and through pipes."""

    WIDTHS = (40, 80, 200)

    def setUp(self):
        super().setUp()
        os.mkdir(self.path("in"))
        long_name = "A very long name of a song that is wider than eighty columns of a terminal window"
        self.encrypt("in/opera.showdata", legacy_show(legacy_song("1", long_name), legacy_song("2", "Two")))
        self.encrypt("in/opera.logdata", legacy_log(legacy_song_log("2", "Two")))
        self.write("in/bad.showdata", "bad")

    def on_terminal(self, *arguments, code=DONE, **options):
        shown, ended = run_on_terminal([self.tool, *arguments], cwd=self.folder, env=self.environment, **options)
        self.assertEqual(ended, code, shown)
        return shown

    def through_pipes(self, *arguments, code=DONE):
        """What the tool prints, as on a terminal."""
        done = subprocess.run([self.tool, *arguments], cwd=self.folder, env=self.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False, timeout=60)
        self.assertEqual(done.returncode, code, done.stdout)
        text = done.stdout.decode()
        self.assertNotIn("\x1b", text)
        self.assertNotIn("\r", text)
        return text

    def slowly(self, run, *arguments, **options):
        """Runs `up` on two inputs, of which the first one comes when a moment has passed."""
        pipe = self.path("pipe.showdata")
        os.mkfifo(pipe)

        def feed():
            with open(pipe, "wb") as writing:  # opens once the tool reads
                time.sleep(0.3)
                writing.write(self.read("in/opera.showdata"))

        feeding = threading.Thread(target=feed)
        feeding.start()
        shown = run("up", "pipe.showdata", "in/opera.showdata", "--out-dir", "out", "--show-name", "X", "--force", "-j", "1",
                    *arguments, **options)
        feeding.join()
        os.remove(pipe)
        return shown

    def test_shows_help(self):
        piped = self.through_pipes("help", "midi", "import")
        self.assertTrue(piped.startswith("Make a show of MIDI files"), piped)
        self.assertLessEqual(max(map(len, piped.splitlines())), 80)
        for columns in self.WIDTHS:
            self.assertEqual(self.on_terminal("help", "midi", "import", columns=columns), piped)
        self.assertEqual(self.on_terminal("midi", "import", "--help"), piped)

    def test_shows_a_table_of_the_width_of_the_terminal(self):
        lines = self.on_terminal("info", "new.showdata", columns=80).splitlines()
        self.assertEqual(lines[1:3], ["  number  name  division  length  voices  events  bars  tempos  meters",
                                      "  2       Two        480    1920       1       1     1       1       1"])
        piped = self.through_pipes("explain")
        for columns in self.WIDTHS:
            lines = self.on_terminal("explain", columns=columns).splitlines()
            self.assertLessEqual(max(map(len, lines)), columns)
            self.assertEqual(len(lines), len(piped.splitlines()))
            self.assertEqual(any(line.endswith("\u2026") for line in lines), columns < 200)
        self.assertNotIn("\u2026", piped)

    def test_cuts_long_names_of_songs(self):
        for columns in self.WIDTHS:
            title, _, song, *_ = self.on_terminal("info", "in/opera.showdata", columns=columns).splitlines()
            self.assertTrue(title.startswith("in/opera.showdata: show, version 0.0"))
            self.assertEqual("a terminal window" in song, columns == 200)
            if columns == 80:
                self.assertEqual(len(song), columns)
        self.assertIn("a terminal window", self.through_pipes("info", "in/opera.showdata"))

    def test_cuts_no_path_and_no_message(self):
        for command in ("list", "check", "info"):
            piped = self.through_pipes(command, "in", "-j", "1", code=PART_FAILED)
            for columns in self.WIDTHS:
                shown = self.on_terminal(command, "in", "-j", "1", columns=columns, code=PART_FAILED)
                plain = ESCAPE.sub("", shown)
                self.assertEqual(plain.splitlines()[-1], piped.splitlines()[-1])
                if command != "info":
                    self.assertEqual(plain, piped)

    def test_shows_progress_in_one_line_of_the_terminal(self):
        for columns in (20, *self.WIDTHS):
            shown = self.slowly(self.on_terminal, columns=columns)
            _, progress, after = shown.split("\r\x1b[K")
            self.assertTrue(progress.startswith("1 of 2 files, "), shown)
            self.assertLess(len(progress), columns)
            self.assertEqual(progress.endswith(" left"), columns > 20)
            self.assertNotIn("\x1b", after)
            self.assertTrue(after.endswith("2 files: 2 done, 0 failed\n"), shown)

    def test_shows_no_progress_where_nobody_looks(self):
        said = self.slowly(self.through_pipes)
        self.assertNotIn(" of 2 files", said)
        self.assertNotIn("\x1b", self.slowly(self.on_terminal, streams=["stdout"]))
        self.assertEqual(self.slowly(self.on_terminal, "--quiet"), "")

    def test_shows_errors_in_colour_where_it_is_wanted(self):
        red = "\x1b[31mzuna-convert:\x1b[0m "
        self.assertTrue(self.on_terminal("info", "none", code=IO).startswith(f"{red}none: "))
        self.assertIn(f"{red}in/bad.showdata: ", self.on_terminal("check", "in", code=PART_FAILED))
        self.environment["NO_COLOR"] = "1"
        self.assertTrue(self.on_terminal("info", "none", code=IO).startswith("zuna-convert: none: "))
        for command in (("up", "in", "--out-dir", "out"), ("check", "in"), ("list", "in"), ("info", "in")):
            self.assertNotRegex(self.on_terminal(*command, code=PART_FAILED), "\x1b\\[[0-9;]*m")


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


class SchemasTest(InstalledTest):
    def test_are_all_installed(self):
        installed = {path.name: path.read_bytes() for path in (self.prefix / "share/zuna-convert/schemas").iterdir()}
        self.assertEqual(installed, {path.name: path.read_bytes() for path in schemas.FOLDER.iterdir()})


class PagesTest(InstalledTest):
    PLACE = "share/doc/libzuna-format-converter-dev"

    def test_are_where_headers_and_links_name_them(self):
        named = {page for header in self.prefix.glob("include/**/*.h")
                 for page in re.findall(r"docs/[\w-]+\.md", header.read_text())}
        self.assertIn("docs/format-0.md", named)
        self.assertEqual(named - {f"docs/{path.name}" for path in (self.prefix / self.PLACE / "docs").iterdir()}, set())
        links = pathlib.Path(__file__).parents[1] / "structure/links_test.py"
        subprocess.run([sys.executable, links, self.prefix / self.PLACE], check=True, capture_output=True)


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
