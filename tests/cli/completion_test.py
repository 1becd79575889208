"""The completion of command lines of zuna-convert, in the shells themselves."""

import os
import select
import shlex
import shutil
import subprocess
import unittest

from terminal import open_terminal
from tool import TOOL, USAGE, ToolTest

VERSIONS = ["1.0", "1.1", "1.2", "2.0"]
COMMANDS = {"convert", "copy-fermatas", "completion"}  # those that begin with "co"
MIDI = ["export", "import"]


class CompletionTest(ToolTest):
    """Completes in a folder that has two files and a folder."""

    shell = ""

    def setUp(self):
        if shutil.which(self.shell) is None:
            self.skipTest(f"there is no {self.shell} here")
        super().setUp()
        os.mkdir(self.path("songs"))
        self.write("opera.showdata", "")
        self.write("two words.mid", "")
        self.write("script", self.run_tool("completion", self.shell).stdout)
        self.environment["PATH"] = f"{os.path.dirname(TOOL)}:{os.environ['PATH']}"
        self.environment["HOME"] = self.folder

    def completed(self, line):
        """The words that the shell offers for the last word of a command line."""
        raise NotImplementedError


class OffersWords:
    """What every shell offers."""

    def test_commands(self):
        self.assertEqual(set(self.completed("zuna-convert co")), COMMANDS)
        self.assertEqual(set(self.completed("zuna-convert --quiet co")), COMMANDS)
        self.assertEqual(set(self.completed("zuna-convert --key-file info co")), COMMANDS)
        self.assertEqual(sorted(self.completed("zuna-convert midi ")), MIDI)
        self.assertEqual(set(self.completed("zuna-convert help co")), COMMANDS)

    def test_options_of_the_command(self):
        self.assertEqual(sorted(self.completed("zuna-convert midi import --s")), ["--show-name", "--song-number"])
        self.assertEqual(sorted(self.completed("zuna-convert convert a -o b --fo")), ["--force"])
        self.assertEqual(sorted(self.completed("zuna-convert info --js")), ["--json"])
        self.assertEqual(sorted(self.completed("zuna-convert --v")), ["--version"])

    def test_versions(self):
        self.assertEqual(sorted(self.completed("zuna-convert convert opera.showdata --to ")), VERSIONS)
        self.assertEqual(sorted(self.completed("zuna-convert list --below 1.")), VERSIONS[:3])

    def test_files(self):
        self.assertEqual(self.completed("zuna-convert info op"), ["opera.showdata"])
        self.assertEqual(self.completed("zuna-convert info songs op"), ["opera.showdata"])
        self.assertEqual(self.completed("zuna-convert convert a -o op"), ["opera.showdata"])
        self.assertEqual(self.completed("zuna-convert info --key-file op"), ["opera.showdata"])

    def test_folders(self):
        self.assertEqual([word.rstrip("/") for word in self.completed("zuna-convert midi export a --out-dir s")],
                         ["songs"])

    def test_codes(self):
        self.assertEqual(self.completed("zuna-convert explain wrong-k"), ["wrong-key", "wrong-kind"])

    def test_shells(self):
        self.assertEqual(sorted(self.completed("zuna-convert completion ")), ["bash", "fish", "zsh"])

    def test_nothing_for_free_text(self):
        self.assertEqual(self.completed("zuna-convert print a --song op"), [])


class BashTest(CompletionTest, OffersWords):
    shell = "bash"

    def completed(self, line):
        words = [*shlex.split(line), *([""] if line.endswith(" ") else [])]
        return self.completed_words(words)

    def completed_words(self, words):
        script = (". ./script\n"
                  f"COMP_WORDS=({shlex.join(words)}) COMP_CWORD={len(words) - 1}\n"
                  "_zuna_convert\n"
                  "[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\\n' \"${COMPREPLY[@]}\"")
        done = subprocess.run(["bash", "-c", script], cwd=self.folder, env=self.environment, capture_output=True, text=True,
                              timeout=60, check=True)
        self.assertEqual(done.stderr, "")
        return done.stdout.splitlines()

    def test_names_with_blanks(self):
        self.assertEqual(self.completed("zuna-convert midi import two"), ["two words.mid"])

    def test_values_behind_an_equals_sign(self):
        self.assertEqual(self.completed_words(["zuna-convert", "convert", "--to", "="]), VERSIONS)
        self.assertEqual(self.completed_words(["zuna-convert", "convert", "--to", "=", "2"]), ["2.0"])
        self.assertEqual(self.completed_words(["zuna-convert", "convert", "--to", "=", "2.0", "--fo"]), ["--force"])

    def test_is_used_for_the_tool(self):
        done = subprocess.run(["bash", "-c", ". ./script; complete -p zuna-convert"], cwd=self.folder, capture_output=True,
                              text=True, check=True)
        self.assertEqual(done.stdout, "complete -F _zuna_convert zuna-convert\n")


class FishTest(CompletionTest, OffersWords):
    shell = "fish"

    def completed(self, line):
        script = f"source ./script; complete -C {shlex.quote(line)}"
        done = subprocess.run(["fish", "--no-config", "-c", script], cwd=self.folder, env=self.environment,
                              capture_output=True, text=True, timeout=60, check=True)
        self.assertEqual(done.stderr, "")
        return [found.partition("\t")[0] for found in done.stdout.splitlines()]

    def test_values_behind_an_equals_sign(self):
        self.assertEqual(self.completed("zuna-convert convert --to=2"), ["--to=2.0"])


class ZshTest(CompletionTest, OffersWords):
    """In zsh, only an interactive shell completes. It lists several words, and types a single one."""

    shell = "zsh"

    def setUp(self):
        super().setUp()
        ours, theirs = open_terminal(200)
        self.environment.update(TERM="dumb", PS1="", ZDOTDIR=self.folder)
        self.process = subprocess.Popen(["zsh", "-f", "-i"], cwd=self.folder, env=self.environment, stdin=theirs,
                                        stdout=theirs, stderr=theirs, start_new_session=True)
        os.close(theirs)
        self.terminal = ours
        self.addCleanup(self.end)
        # The words go into a file as well.
        self.type("unsetopt zle_bracketed_paste; autoload -U compinit; compinit -u -D; . ./script; PS1='@''@> '\n"
                  "compadd() { local -a found; builtin compadd -O found \"$@\"; print -rl -- $found >>words; "
                  "builtin compadd \"$@\" }; print @''@done\n")

    def end(self):
        os.close(self.terminal)
        self.process.kill()
        self.process.wait()

    def type(self, keys):
        """Types, and reads until the shell has printed "@@done" and waits for more at its prompt. Keys that it gets before
        that would not be commands to edit the line."""
        os.write(self.terminal, keys.encode())
        shown = ""
        while "@@> " not in shown.partition("@@done\r\n")[2]:
            self.assertTrue(select.select([self.terminal], [], [], 60)[0], shown)
            shown += os.read(self.terminal, 4096).decode(errors="replace")

    def completed(self, line):
        self.write("words", "")
        self.type(f"{line}\t\x15print @''@done\n")  # complete, clear the line, say so
        return sorted({word for word in self.read("words").decode().splitlines() if word})


class UsageTest(ToolTest):
    def test_refuses_other_shells(self):
        self.refuse("completion", "tcsh", code=USAGE,
                    message='command line: "tcsh" is no shell that is known here; give bash, zsh or fish')
        self.refuse("completion", code=USAGE,
                    message="command line: SHELL is missing; see zuna-convert completion --help")


if __name__ == "__main__":
    unittest.main()
