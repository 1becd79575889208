"""info of zuna-convert, as text and as JSON."""

import json
import unittest

from tool import BAD_INPUT, DONE, IO, PART_FAILED, WithShows, legacy_log, legacy_show, legacy_song


class InfoTest(WithShows):
    def test_tells_about_legacy_and_current_shows(self):
        table = ("  number  name  division  length  voices  events  bars  tempos  meters\n"
                 "  2       Two        480    1920       1       1     1       1       1\n"
                 "  10      Ten        480    1920       1       1     1       1       1\n")
        done = self.run_tool("info", "old.showdata", "new.showdata")
        self.assertEqual(done.stdout.decode(),
                         "old.showdata: show, version 0.0, 2 songs, 2 voices, 2 events\n" + table +
                         'new.showdata: show, version 1.2, "My Show", 2 songs, 2 voices, 2 events\n' + table)

    def test_writes_json(self):
        song = {"songNumber": "2", "songName": "Two", "division": 480, "songLength": 1920, "voices": 1,
                "events": 1, "bars": 1, "tempos": 1, "meters": 1}
        songs = [song, {**song, "songNumber": "10", "songName": "Ten"}]
        done = self.run_tool("info", "old.showdata", "new.showdata", "--json")
        self.assertEqual([json.loads(line) for line in done.stdout.splitlines()], [
            {"schemaVersion": 1, "path": "old.showdata", "kind": "showdata", "fileVersion": "0.0", "encrypted": True, "showName": None, "songs": songs},
            {"schemaVersion": 1, "path": "new.showdata", "kind": "showdata", "fileVersion": "1.2", "encrypted": True,
             "showName": "My Show", "songs": songs},
        ])

    def test_takes_plain_files(self):
        self.run_tool("convert", "new.showdata", "-o", "text", "--to", "2.0")
        for name, told in (("old.showdata", "show, version 0.0"), ("old.logdata", "log, version 0.0"),
                           ("new.showdata", "show, version 1.2"), ("text", "show, version 2.0")):
            plain = self.read(name) if name == "old.logdata" else self.plaintext(name)
            self.write("plain", plain)
            for path, options in (("plain", {}), ("-", {"stdin": plain})):
                said = self.run_tool("info", path, **options).stdout.decode()
                self.assertIn(f": {told}, not encrypted, ", said)
                info = json.loads(self.run_tool("info", path, "--json", **options).stdout)
                self.assertEqual((info["fileVersion"], info["encrypted"]), (told[-3:], False))
                for command in ("check", "list"):
                    said = self.run_tool(command, path, **options).stdout.decode()
                    self.assertIn(f": {told}", said)
                self.assertEqual(self.run_tool("print", path, **options).stdout, self.run_tool("print", name).stdout
                                 if name != "old.logdata" else b"")

    def test_tells_what_is_wrong_with_plain_files(self):
        show = self.plaintext("new.showdata")
        songs = self.plaintext("old.showdata")
        for content, code in ((show[:-9], "cut-off"), (show + b"x", "bytes-after-end"),
                              (show[:-9] + b"y" + show[-8:], "bad-content"), (songs[:-9], "cut-off"), (songs[:len(songs) // 2 - 9], "not-encrypted"),
                              (b"just a text", "not-encrypted"), (b"MThd\0\0\0\6", "midi-file"),
                              (b"\xef\xbb\xbf{}", "text-error"), (legacy_log()[:-1], "cut-off"),
                              (self.run_tool("dump", "new.showdata").stdout, "plain-file")):
            self.write("plain", content)
            reading = ["info", "check", "dump --offsets"]
            if code not in ("bad-content", "cut-off", "bytes-after-end"):  # list only looks for what tells the version
                reading.append("list")
            if code == "plain-file":  # A text of version 1.2 has no bytes of a file of that version.
                reading.remove("dump --offsets")
            for command in reading:
                done = self.run_tool(*command.split(), "plain", "--json", code=BAD_INPUT)
                self.assertEqual(json.loads(done.stdout)["error"]["code"], code, done.stdout)
            said = self.run_tool("print", "plain", code=BAD_INPUT).stderr
            self.assertTrue(said.endswith(f"[{code}]\n".encode()), said)

    def test_goes_on_past_bad_files(self):
        self.write("bad", "no show")
        done = self.run_tool("info", "bad", "new.showdata", "none", "--json", code=PART_FAILED)
        infos = [json.loads(line) for line in done.stdout.splitlines()]
        self.assertEqual([(info["path"], info.get("error", {}).get("code")) for info in infos],
                         [("bad", "not-encrypted"), ("new.showdata", None), ("none", "not-found")])
        self.assertEqual(infos[2]["error"]["remedy"], "check the path")
        self.assertEqual((infos[2]["error"]["file"], infos[2]["exitCode"]), (infos[2]["path"], IO))
        self.assertRegex(done.stderr, b"^zuna-convert: bad: .*\nzuna-convert: none: .*\n$")
        self.assertEqual(self.run_tool("info", "bad", code=BAD_INPUT).stdout, b"")

    def test_tells_an_empty_file_from_others(self):
        self.write("empty", "")
        done = self.run_tool("info", "empty", "--json", code=BAD_INPUT)
        self.assertEqual(json.loads(done.stdout)["error"]["code"], "empty-file")
        self.assertEqual(done.stderr, b"zuna-convert: empty: is empty, not an encrypted file; give another file [empty-file]\n")

    def test_shows_any_name_safely(self):
        name = b'\x1b[31m\xff"\\\n\xc3\xa9'
        self.encrypt("odd", legacy_show(legacy_song("1", name)))
        self.assertIn(b'  \\x1b[31m\\xff"\\\\x0a\xc3\xa9  ', self.run_tool("info", "odd").stdout)
        info = json.loads(self.run_tool("info", "--json", "odd").stdout)
        self.assertEqual(info["songs"][0]["songName"], '\x1b[31m\ufffd"\\\n\xe9')

    def test_keeps_its_columns_beside_a_long_name(self):
        longest, longer = "n" * 40, "x" * 41
        self.encrypt("long", legacy_show(legacy_song("1", longest), legacy_song("2", longer), legacy_song("3", "c")))
        lines = self.run_tool("info", "long").stdout.decode().splitlines()[1:]
        self.assertEqual([line[:70] for line in lines], [
            "  number  name" + " " * 38 + "division  length  ",
            f"  1       {longest}       480    1920  ",
            f"  2       {longer}       480    1920 ",
            "  3       c" + " " * 46 + "480    1920  "])

    def test_names_standard_input_in_json_as_it_was_named(self):
        for command in ("info", "check", "list"):
            for stdin, code in ((self.read("new.showdata"), DONE), (b"bad", BAD_INPUT)):
                done = self.run_tool(command, "-", "--json", stdin=stdin, code=code)
                self.assertEqual(json.loads(done.stdout)["path"], "-")

    def test_reads_standard_input(self):
        done = self.run_tool("info", "-", stdin=self.read("new.showdata"))
        self.assertTrue(done.stdout.startswith(b"standard input: show, version 1.2"))


if __name__ == "__main__":
    unittest.main()
