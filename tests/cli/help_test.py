"""The help of zuna-convert and of its commands."""

import re
import shlex
import subprocess
import unittest

from tool import TOOL, USAGE, ToolTest


class HelpTest(ToolTest):
    def help(self, *command):
        return self.run_tool(*command, "--help").stdout.decode()

    def entries(self, title, *command):
        """The names of a section of a command's help."""
        section = self.help(*command).partition(f"\n{title}:\n")[2].partition("\n\n")[0]
        return re.findall(r"^  (\S.*?)(?:  .*)?$", section, re.MULTILINE)

    def commands(self, *above):
        """All commands below `above`, which comes first, as tuples of words."""
        found = [above]
        for name in self.entries("Commands", *above):
            found += self.commands(*above, name)
        return found

    def test_is_the_same_by_command_and_by_option(self):
        found = self.commands()
        self.assertIn(("midi", "import"), found)
        for command in found:
            self.assertEqual(self.run_tool("help", *command).stdout.decode(), self.help(*command))
            self.assertEqual(self.run_tool(*command, "-h").stdout.decode(), self.help(*command))

    def test_fits_into_80_columns(self):
        for command in self.commands():
            for line in self.help(*command).splitlines():
                self.assertLessEqual(len(line), 80, (command, line))
                self.assertEqual(line, line.rstrip(), command)

    def test_begins_with_what_the_command_does(self):
        for command in self.commands():
            name = " ".join(["zuna-convert", *command])
            self.assertRegex(self.help(*command), rf"^[A-Z][^:]*\n\nUsage: {name} \[OPTIONS\]")

    def test_names_what_is_required(self):
        self.assertIn("\nUsage: zuna-convert midi import [OPTIONS] -o OUT MID...\n", self.help("midi", "import"))
        self.assertIn("\nUsage: zuna-convert help [OPTIONS] [COMMAND...]\n", self.help("help"))
        self.assertIn("\nUsage: zuna-convert midi [OPTIONS] COMMAND\n", self.help("midi"))

    def test_has_the_shared_options_everywhere(self):
        for command in self.commands():
            if command == ("midi",):
                continue
            self.assertLessEqual({"-h, --help", "--key-file FILE", "--empty-key", "-q, --quiet"},
                                 set(self.entries("Options", *command)), command)

    def test_has_examples_that_are_correct(self):
        for command in self.commands():
            examples = self.entries("Examples", *command)
            self.assertIn(len(examples), (1, 2, 3), command)
            for line in examples:
                words = shlex.split(re.split(" [<>|]", line)[0])
                self.assertEqual(words[0], "zuna-convert")
                if command:
                    self.assertTrue(f"{line} ".startswith(" ".join(["zuna-convert", *command, ""])), line)
                done = subprocess.run([TOOL, *words[1:]], cwd=self.folder, env=self.environment, input=b"",
                                      capture_output=True, timeout=60, check=False)
                self.assertNotEqual(done.returncode, USAGE, (line, done.stderr))

    def test_tells_the_exit_codes_once(self):
        for command in self.commands():
            self.assertEqual(self.help(*command).count("\nExit codes:\n"), 0 if command else 1)
        self.assertIn("\n  130  interrupted\n", self.help())
        self.assertIn('\nKeys and exit codes are described by "zuna-convert help".\n', self.help("info"))

    def test_tells_about_the_version(self):
        version = self.run_tool("--version").stdout
        self.assertEqual(self.run_tool("info", "--version").stdout, version)
        self.assertIn("--version", self.entries("Options"))


if __name__ == "__main__":
    unittest.main()
