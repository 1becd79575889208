"""zuna-convert on a terminal."""

import unittest

from terminal import run_on_terminal
from tool import DONE, IO, REFUSED, TOOL, WithShows, legacy_show, legacy_song

WIDE = "\u65e5\u672c\u8a9e"                   # three characters of two columns
SCIENTIST = "\U0001f469\u200d\U0001f52c"  # one character of two columns


class TerminalTest(WithShows):
    def on_terminal(self, *arguments, code=DONE, **options):
        shown, ended = run_on_terminal([TOOL, *arguments], cwd=self.folder, env=self.environment, **options)
        self.assertEqual(ended, code, shown)
        return shown

    def many_songs(self):
        """A show of 200 songs, of which every third one has a long name."""
        names = ("Short", WIDE, "A very long name of a song that is wider than eighty columns of a terminal window")
        songs = [legacy_song(str(i + 1), names[i % 3], tempos=()) for i in range(200)]
        return self.encrypt("many.showdata", legacy_show(*songs))


class TableTest(TerminalTest):
    def test_fits_a_table_to_the_terminal(self):
        lines = self.on_terminal("info", self.many_songs(), columns=80).splitlines()[1:]
        self.assertEqual({len(line) for line in lines if WIDE not in line}, {80})
        self.assertIn("\u2026  ", lines[3])
        self.assertEqual(len(lines), 201)

    def test_uses_the_room_of_a_wide_terminal(self):
        lines = self.on_terminal("info", self.many_songs(), columns=200).splitlines()[1:]
        self.assertIn("a terminal window  ", lines[3])
        self.assertNotIn("\u2026", "".join(lines))

    def test_cuts_nothing_for_a_pipe(self):
        self.environment["COLUMNS"] = "60"
        text = self.run_tool("info", self.many_songs()).stdout.decode()
        self.assertIn("a terminal window  ", text)
        self.assertNotIn("\u2026", text)

    def test_takes_the_width_from_the_environment_where_the_terminal_does_not_tell(self):
        name = self.many_songs()
        self.environment["COLUMNS"] = "90"
        self.assertEqual(len(self.on_terminal("info", name, columns=0).splitlines()[1]), 90)
        for unusable in ("", "0", "-1", "wide", "90x"):
            self.environment["COLUMNS"] = unusable
            self.assertIn("a terminal window  ", self.on_terminal("info", name, columns=0))

    def test_aligns_columns_behind_every_kind_of_character(self):
        names = (WIDE, "Cafe\u0301", "\U0001f3b5", SCIENTIST, b"\xff\xe2\x82")
        self.encrypt("old", legacy_show(*(legacy_song(str(i), name) for i, name in enumerate(names))))
        lines = self.on_terminal("info", "old", columns=100).splitlines()[2:]
        self.assertEqual([line[:line.index("480")] for line in lines], [
            f"  0       {WIDE}             ",
            "  1       Cafe\u0301               ",
            "  2       \U0001f3b5                 ",
            "  3       \U0001f469\u200d\U0001f52c                 ",
            "  4       \\xff\\xe2\\x82       "])


class OutputTest(TerminalTest):
    RED = "\x1b[31mzuna-convert:\x1b[0m none: "
    PLAIN = "zuna-convert: none: "

    def test_writes_no_binary_to_a_terminal(self):
        for command in ("convert", "decrypt"):
            self.assertEqual(self.on_terminal(command, "new.showdata", "-o", "-", streams=["stdout"], code=REFUSED), "")

    def test_shows_errors_in_colour(self):
        self.assertTrue(self.on_terminal("info", "none", streams=["stderr"], code=IO).startswith(self.RED))
        self.environment["NO_COLOR"] = ""  # means nothing
        self.assertTrue(self.on_terminal("info", "none", code=IO).startswith(self.RED))

    def test_shows_no_colour_where_it_is_not_wanted_or_there_is_no_terminal(self):
        self.assertTrue(self.run_tool("info", "none", code=IO).stderr.decode().startswith(self.PLAIN))
        self.environment["NO_COLOR"] = "1"
        self.assertTrue(self.on_terminal("info", "none", code=IO).startswith(self.PLAIN))


if __name__ == "__main__":
    unittest.main()
