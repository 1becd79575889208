"""The command line of zuna-convert."""

import unittest

from tool import IO, USAGE, WithShows


class UsageTest(WithShows):
    def test_explains_itself(self):
        for arguments in (["--help"], ["up", "--help"], ["midi", "import", "--help"]):
            self.assertIn(b"Usage: ", self.run_tool(*arguments).stdout)
        self.assertIn(b"130 interrupted", self.run_tool("--help").stdout)

    def test_tells_its_version(self):
        self.assertRegex(self.run_tool("--version").stdout, rb"^zuna-convert \d+\.\d+\.\d+\n$")

    def test_refuses_wrong_command_lines(self):
        for arguments in ([], ["frobnicate"], ["midi"], ["up", "old.showdata", "-o", "out"],
                          ["convert", "new.showdata"], ["convert", "new.showdata", "-o", "out", "--frob"],
                          ["convert", "new.showdata", "-o", "out", "--to", "1"],
                          ["convert", "new.showdata", "-o", "out", "--to", "1.256"],
                          ["convert", "new.showdata", "-o", "out", "--to", "01.02"],
                          ["convert", "new.showdata", "-o", "out", "--to", "1.2.3"],
                          ["convert", "", "-o", "out"], ["convert", "new.showdata", "-o", ""],
                          ["info"], ["info", ""]):
            done = self.run_tool(*arguments, code=USAGE)
            self.assertRegex(done.stderr, b"^zuna-convert: command line: .*; .*\n$")

    def test_the_help_of_every_command_tells_the_shared_options(self):
        for command in (["up"], ["down"], ["convert"], ["info"], ["encrypt"], ["decrypt"], ["copy-fermatas"], ["list"],
                        ["print"], ["midi", "import"],
                        ["midi", "export"]):
            shown = self.run_tool(*command, "--help").stdout
            for option in (b"--key-file FILE", b"--empty-key", b"--quiet"):
                self.assertIn(option, shown)

    def test_shared_options_stand_anywhere(self):
        for arguments in (["--quiet", "down", "new.showdata"], ["down", "--quiet", "new.showdata"]):
            self.assertEqual(self.run_tool(*arguments, "-o", "-").stderr, b"")
        self.write("song.mid", b"")
        self.run_tool("midi", "--key-file", "none", "import", "song.mid", "-o", "out", code=IO)

    def test_names_words_that_are_not_known(self):
        for arguments, word in ((["dwon", "new.showdata"], "dwon"),
                                (["down", "new.showdata", "--ouptut", "out"], "--ouptut")):
            done = self.run_tool(*arguments, code=USAGE)
            self.assertIn(f'"{word}" is not known here'.encode(), done.stderr)

    def test_names_the_versions_that_it_writes(self):
        for version in ("0.0", "1.3", "3.0"):
            done = self.run_tool("convert", "new.showdata", "-o", "out", "--to", version, code=USAGE)
            self.assertIn(b"1.0, 1.1, 1.2 or 2.0 (text)", done.stderr)

    def test_refuses_standard_input_twice(self):
        message = "standard input: is given more than once; give a file for the others"
        self.refuse("up", "-", "-o", "out", "--companion", "-", code=USAGE, message=message)
        self.refuse("info", "-", "-", code=USAGE, message=message)
        self.refuse("encrypt", "-", "-o", "out", "--key-file", "-", code=USAGE, message=message)

    def test_reports_missing_inputs(self):
        for command in (["convert", "none", "-o", "out"], ["decrypt", "none", "-o", "out"],
                        ["encrypt", "none", "-o", "out"], ["info", "none"], ["print", "none"], ["list", "none"],
                        ["copy-fermatas", "none", "new.showdata"],
                        ["midi", "import", "none", "-o", "out"]):
            done = self.run_tool(*command, code=IO)
            self.assertRegex(done.stderr, b"^zuna-convert: none: .*; .*\n$")


if __name__ == "__main__":
    unittest.main()
