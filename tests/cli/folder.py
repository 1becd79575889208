"""What the tests of commands on whole folders share."""

import json
import os

from tool import WithLogs, legacy_log, legacy_show, legacy_song, legacy_song_log, without_codes


class FolderTest(WithLogs):
    """A folder with two legacy shows and their logs, one of them in a folder below, and other files."""

    def setUp(self):
        super().setUp()
        os.makedirs(self.path("in/below"))
        self.encrypt("in/opera.showdata", legacy_show(legacy_song("2", "Two"), legacy_song("10", "Ten")))
        self.encrypt("in/opera.logdata", legacy_log(legacy_song_log("2", "Two", vamps=[(0, 480, 2)])))
        self.encrypt("in/below/gala.showdata", legacy_show(legacy_song("1", "One")))
        self.encrypt("in/below/gala.logdata", legacy_log(legacy_song_log("1", "One"), show_name="Gala"))
        self.write("in/notes.txt", "no show")
        self.write("in/.hidden.showdata", "no show")
        os.mkfifo(self.path("in/pipe.showdata"))

    def said(self, *arguments, **options):
        """What the tool says, line by line without its name and the codes."""
        lines = without_codes(self.run_tool(*arguments, **options).stderr.decode()).splitlines()
        return [line.removeprefix("zuna-convert: ") for line in lines]

    def written(self, folder):
        return sorted(name for name in self.files() if name.startswith(folder + "/"))

    def lines(self, report="report"):
        """The lines of a report, read as JSON."""
        return [json.loads(line) for line in self.read(report).splitlines()]
