"""The command line of zuna-convert."""

import unittest

from tool import IO, USAGE, WithShows


class UsageTest(WithShows):
    def test_tells_its_version(self):
        self.assertRegex(self.run_tool("--version").stdout, rb"^zuna-convert \d+\.\d+\.\d+\n$")

    def test_refuses_wrong_command_lines(self):
        for arguments in ([], ["frobnicate"], ["midi"], ["up", "old.showdata"],
                          ["convert", "new.showdata"], ["convert", "new.showdata", "-o", "out", "--frob"],
                          ["convert", "new.showdata", "-o", "out", "--to", "1"],
                          ["convert", "new.showdata", "-o", "out", "--to", "1.256"],
                          ["convert", "new.showdata", "-o", "out", "--to", "01.02"],
                          ["convert", "new.showdata", "-o", "out", "--to", "1.2.3"],
                          ["convert", "", "-o", "out"], ["convert", "new.showdata", "-o", ""],
                          ["info"], ["info", ""]):
            done = self.run_tool(*arguments, code=USAGE)
            self.assertRegex(done.stderr, b"^zuna-convert: command line: .*; .*\n$")

    def test_shared_options_stand_anywhere(self):
        for arguments in (["--quiet", "down", "new.showdata"], ["down", "--quiet", "new.showdata"]):
            self.assertNotIn(b"songs", self.run_tool(*arguments, "-o", "-").stderr)
            self.assertEqual(self.run_tool("-q", *arguments, "-o", "-").stderr, b"")
        self.write("song.mid", b"")
        self.run_tool("midi", "--key-file", "none", "import", "song.mid", "-o", "out", code=IO)

    def refuse_line(self, *arguments, message, at=""):
        """Requires that a command line is refused with this message, which points to the help of the command `at`."""
        name = f"zuna-convert {at}".rstrip()
        self.refuse(*arguments, code=USAGE, message=f"command line: {message}; see {name} --help")

    def test_suggests_commands_that_may_be_meant(self):
        for word, meant in (("conver", "convert"), ("dwon", "down"), ("ifno", "info"), ("copy-fermata", "copy-fermatas"),
                            ("decrpyt", "decrypt")):
            self.refuse_line(word, "new.showdata", "-o", "out",
                             message=f'"{word}" is not known here; did you mean "{meant}"?')
            self.refuse_line("help", word, message=f'"{word}" is not known here; did you mean "{meant}"?')
        self.refuse_line("midi", "imprt", "a.mid", message='"imprt" is not known here; did you mean "import"?', at="midi")
        self.refuse_line("help", "midi", "exprot", message='"exprot" is not known here; did you mean "export"?', at="midi")
        for word in ("frobnicate", "u", "dn"):
            self.refuse_line(word, message=f'"{word}" is not known here')

    def test_suggests_options_that_may_be_meant(self):
        self.refuse_line("down", "new.showdata", "--ouptut", "out",
                         message='"--ouptut" is not known here; did you mean "--output"?', at="down")
        self.refuse_line("down", "new.showdata", "-o", "out", "--forec=1",
                         message='"--forec" is not known here; did you mean "--force"?', at="down")
        self.refuse_line("--kye-file", "key", "info", "new.showdata",
                         message='"--kye-file" is not known here; did you mean "--key-file"?', at="info")
        self.refuse_line("--versoin", message='"--versoin" is not known here; did you mean "--version"?')
        for option in ("--frob", "-x"):
            self.refuse_line("info", "new.showdata", option, message=f'"{option}" is not known here', at="info")

    def test_names_what_is_missing(self):
        self.refuse_line(message="a command is missing")
        self.refuse_line("midi", message="a command is missing", at="midi")
        self.refuse("info", code=USAGE,
                    message="command line: no input is given; give files, folders or --files-from")
        self.refuse_line("copy-fermatas", "new.showdata", message="DESTINATION is missing", at="copy-fermatas")
        self.refuse_line("midi", "export", "new.showdata", message="--out-dir DIR is missing", at="midi export")

    def test_names_an_argument_too_many(self):
        self.refuse_line("copy-fermatas", "a", "b", "c", message='unexpected argument "c"', at="copy-fermatas")
        self.refuse_line("print", "a", "info", message='unexpected argument "info"', at="print")

    def test_names_options_without_their_value(self):
        self.refuse_line("print", "a", "--song", message="--song has no value", at="print")
        self.refuse_line("--key-file", message="--key-file has no value")
        self.refuse_line("convert", "a", "-o", message="-o has no value", at="convert")

    def test_names_options_that_are_given_too_often(self):
        self.refuse_line("print", "a", "--song", "1", "--song", "2", "--song", "3", message="--song is given 3 times",
                         at="print")

    def test_names_flags_with_a_value(self):
        self.refuse_line("info", "a", "--json=yes please", message="--json takes no value", at="info")
        self.refuse_line("info", "a", "--quiet=maybe", message="--quiet takes no value", at="info")

    def test_names_values_that_are_wrong(self):
        self.refuse_line("list", ".", "--from", "x", message="--from: a version is MAJOR.MINOR, such as 1.2", at="list")

    def test_refuses_empty_values(self):
        for command, option in (("up", "--report"), ("up", "--companion"), ("up", "--companions"), ("up", "--out-dir"),
                                ("down", "--output"), ("down", "--files-from"),
                                ("midi export", "--out-dir"), ("midi import", "--output"), ("print", "IN"),
                                ("copy-fermatas", "SOURCE"), ("explain", "CODE"), ("info", "IN")):
            value = [option, ""] if option.startswith("-") else [""]
            self.refuse_line(*command.split(), *value, *([] if option == "IN" else ["new.showdata"]), at=command,
                             message=f"{option}: its value is empty")
        self.refuse_line("info", "new.showdata", "", message="IN: its value is empty", at="info")

    def test_takes_an_empty_name(self):
        self.run_tool("up", "old.showdata", "-o", "out", "--show-name", "")
        self.assertIn(b'version 1.2, ""', self.run_tool("info", "out").stdout)

    def test_refuses_options_that_would_be_ignored(self):
        self.refuse("info", "new.showdata", "-0", code=USAGE,
                    message="command line: -0 is about the list of --files-from, and there is none; give --files-from, or "
                            "leave out -0")
        self.refuse("down", "new.showdata", "-o", "out", "--accept", "show-name-dropped", code=USAGE,
                    message="command line: --accept is about --fail-on, which is not given; give --fail-on loss, or leave "
                            "out --accept")

    def test_names_words_that_are_not_known(self):
        self.refuse_line("down", "new.showdata", "-o", "out", "--fail-on", "losses", at="down",
                         message="--fail-on: its value is loss or any-loss")
        self.refuse_line("down", "new.showdata", "-o", "out", "--fail-on", "loss", "--accept", "show-name-drop", at="down",
                         message='--accept: there is no loss of the code "show-name-drop"; did you mean "show-name-dropped"?')
        self.refuse_line("down", "new.showdata", "-o", "out", "--fail-on", "loss", "--accept", "", at="down",
                         message='--accept: there is no loss of the code ""')
        self.refuse_line("info", "new.showdata", "--progress", "xml", at="info", message="--progress: its value is json")

    def test_takes_every_argument_as_it_is(self):
        names = ["[a]", "[b,c]", "[]", "{}", "%%", "--json", "up", "*", "d e"]
        for name in names:
            self.write(name, self.read("new.showdata"))
            shown = self.run_tool("info", "--", name).stdout.decode()
            self.assertTrue(shown.startswith(f"{name}: show"), shown)
        self.assertTrue(self.run_tool("info", "[a]").stdout.startswith(b"[a]: show"))
        shown = self.run_tool("info", "--", *names).stdout.decode()
        self.assertEqual([line.partition(": show")[0] for line in shown.splitlines() if ": show" in line], names)

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
