"""list and print of zuna-convert."""

import json
import os
import socket
import unittest

from tool import (BAD_INPUT, IO, NEGATIVE, NOTHING_MATCHED, PART_FAILED, USAGE, WithLogs, legacy_log, legacy_show,
                  legacy_song, legacy_song_log)


class ListTest(WithLogs):
    def setUp(self):
        super().setUp()
        os.mkdir(self.path("shows"))
        for version in ("1.0", "1.1", "1.2", "2.0"):
            self.run_tool("convert", "new.showdata", "-o", f"shows/{version}.showdata", "--to", version)
        self.encrypt("shows/0.showdata", legacy_show(legacy_song()))
        self.run_tool("convert", "new.log", "-o", "shows/log.logdata", "--to", "1.1")
        os.mkdir(self.path("shows/below"))
        self.encrypt("shows/below/0.logdata", legacy_log())
        for name in ("upper.SHOWDATA.old", "more.showdata.bak", ".hidden.showdata"):
            self.write("shows/" + name, "is not looked at")

    def listed(self, *options, **more):
        return self.run_tool("list", "shows", *options, **more).stdout.decode().splitlines()

    def test_lists_shows_by_version(self):
        everything = [f"shows/{version}.showdata: show, version {version}" for version in ("1.0", "1.1", "1.2", "2.0")]
        everything = ["shows/0.showdata: show, version 0.0", *everything, "shows/log.logdata: log, version 1.1"]
        self.assertEqual(self.listed(), everything)
        self.assertEqual(self.listed("--recursive"),
                         [everything[0], *everything[1:5], "shows/below/0.logdata: log, version 0.0", everything[5]])
        self.assertEqual(self.listed("--from", "1.0", "--below", "1.1"), everything[1:2])
        self.assertEqual(self.listed("--from", "1.2"), everything[3:5])
        self.assertEqual(self.listed("--below", "1.0"), everything[:1])

    def test_writes_json(self):
        self.write("shows/bad.showdata", "bad")
        lines = [json.loads(line) for line in self.listed("--below", "1.1", "--json", code=PART_FAILED)]
        self.assertEqual(lines[0], {"schemaVersion": 1, "path": "shows/0.showdata", "kind": "showdata",
                                    "fileVersion": "0.0"})
        self.assertEqual([line["path"] for line in lines],
                         ["shows/0.showdata", "shows/1.0.showdata", "shows/bad.showdata"])
        self.assertEqual(lines[2]["error"]["code"], "not-encrypted")

    def test_says_in_json_what_kept_it_from_its_first_input(self):
        os.mkdir(self.path("empty"))
        for command in ("list", "info", "check"):
            for arguments, code, error in ((("empty",), NOTHING_MATCHED, "nothing-matched"),
                                           (("shows", "--key-file", "none"), IO, "not-found")):
                done = self.run_tool(command, *arguments, "--json", code=code)
                line = json.loads(done.stdout)
                self.assertEqual((line["schemaVersion"], line["path"], line["exitCode"], line["error"]["code"]),
                                 (1, None, code, error))
                self.assertIn(line["error"]["message"].encode(), done.stderr)
                self.assertEqual(self.run_tool(command, *arguments, code=code).stdout, b"")
            self.assertEqual(self.run_tool(command, "--json", code=USAGE).stdout, b"")
        done = self.run_tool("list", "shows", "--from", "3.0", "--json", code=NOTHING_MATCHED)
        self.assertEqual(json.loads(done.stdout)["error"]["code"], "nothing-matched")

    def test_tells_paths_apart_that_are_not_utf8(self):
        show = self.read("new.showdata")
        for name in (b"\xe9", b"\xe8"):
            with open(os.path.join(self.folder.encode(), name), "wb") as file:
                file.write(show)
        for command in ("list", "info", "check"):
            done = self.run_tool(command, b"\xe9", b"\xe8", b"\xe7", "new.showdata", "--json", code=PART_FAILED)
            lines = [json.loads(line) for line in done.stdout.splitlines()]
            self.assertEqual([line["path"] for line in lines], ["\ufffd"] * 3 + ["new.showdata"])
            self.assertEqual([line.get("pathBytes") for line in lines], ["e9", "e8", "e7", None])
            self.assertEqual(lines[2]["error"]["fileBytes"], "e7")

    def test_says_when_nothing_matches(self):
        message = "list: none of the files is of these versions; give another range"
        self.refuse("list", "shows", "--from", "3.0", code=NOTHING_MATCHED, message=message)
        self.refuse("list", "shows", "--from", "1.2", "--below", "1.2", code=NOTHING_MATCHED, message=message)

    def test_goes_on_past_files_that_it_cannot_read(self):
        self.write("shows/bad.showdata", "bad")
        self.encrypt("shows/noise.showdata", b"noise")
        self.write_key("key", "key = 01\niv = 02\n")
        self.run_tool("--key-file", "key", "encrypt", "new.showdata", "--no-verify", "-o", "shows/secret.showdata")
        done = self.run_tool("list", "shows", "--from", "2.0", code=PART_FAILED)
        self.assertEqual(done.stdout, b"shows/2.0.showdata: show, version 2.0\n")
        self.assertRegex(done.stderr.decode(), "^zuna-convert: shows/bad.showdata: .*; .*\n"
                                               "zuna-convert: shows/noise.showdata: is no show and no log .*; .*\n"
                                               "zuna-convert: shows/secret.showdata: .*; .*\n$")
        self.assertEqual(self.listed("--from", "3.0", code=PART_FAILED), [])

    def test_looks_at_regular_files_only(self):
        os.symlink("1.2.showdata", self.path("shows/link.showdata"))
        expected = self.listed()
        self.assertIn("shows/link.showdata: show, version 1.2", expected)
        os.mkfifo(self.path("shows/pipe.showdata"))
        os.mkdir(self.path("shows/folder.showdata"))
        os.symlink("pipe.showdata", self.path("shows/link-to-pipe.showdata"))
        os.symlink("/dev/zero", self.path("shows/device.showdata"))
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(self.path("shows/socket.showdata"))
            self.assertEqual(self.listed(), expected)

    def test_takes_a_key(self):
        self.write_key("key", "key = 01\niv = 02\n")
        show = legacy_show(legacy_song())
        self.run_tool("--key-file", "key", "encrypt", "-", "-o", "shows/secret.showdata", stdin=show)
        done = self.run_tool("list", "shows", "--key-file", "key", code=PART_FAILED)
        self.assertEqual(done.stdout, b"shows/secret.showdata: show, version 0.0\n")

    def test_refuses_what_is_no_folder_or_version(self):
        self.assertRegex(self.run_tool("list", "none", code=IO).stderr, b"^zuna-convert: none: cannot be opened: ")
        self.assertEqual(self.run_tool("list", "new.showdata").stdout, b"new.showdata: show, version 1.2\n")
        os.mkdir(self.path("empty"))
        self.refuse("list", "empty", code=NOTHING_MATCHED,
                    message='empty: has no show and no log in a file whose name ends in ".showdata" or ".logdata"; give '
                            "other files or folders, or -r for the folders below")
        for option in ("--from", "--below"):
            done = self.run_tool("list", "shows", option, "1", code=USAGE)
            self.assertIn(b"a version is MAJOR.MINOR, such as 1.2", done.stderr)


class PrintTest(WithLogs):
    def test_prints_legacy_logs(self):
        self.encrypt("log", legacy_log(legacy_song_log("7", "Tune", vamps=[(0, 480, -2)], tempo_scales=[(0, 9, 1.5)],
                                                       caesuras=[240], markers=[(5, "A")])))
        expected = """SongLogV0(songNumber_=7, songName_=Tune, songLength_=1920)
\tVampSequence(evt_count=1):
\t\tVamp(0, 480, -2)
\tRepeatSequence(evt_count=0):
\tCutSequence(evt_count=0):
\tTransposeSequence(evt_count=0):
\tTempoScaleSequence(evt_count=1):
\t\tTempoScale(0, 9, 1)
\tMarkerSequence(evt_count=1):
\t\tXScoreMarker(5, A)
\tClickSequence(evt_count=0):
\tCaesuraSequence(evt_count=1):
\t\tXCaesura(240)
"""
        self.assertEqual(self.run_tool("print", "log").stdout.decode(), expected)
        self.assertEqual(self.run_tool("print", "log", "--song", "7").stdout.decode(), expected)

    def test_prints_every_song_of_a_current_log(self):
        printed = self.run_tool("print", "new.log").stdout
        ten = self.run_tool("print", "new.log", "--song", "10").stdout
        two = self.run_tool("print", "new.log", "--song", "2").stdout
        self.assertEqual(printed, ten + two)
        self.assertIn(b"SongLog(songNumber=2, songName=Two, division=480, songLength=1920, attacca=0)\n"
                      b"\tVampSequence(evt_count=2):\n\t\tVamp(0, 480, 2)\n\t\tVamp(480, 960, -3)\n", two)

    def test_prints_the_program_changes_of_a_show(self):
        song = legacy_song("1", "One", tracks=((1, "Piano"), (2, "Bass")))
        song = song.replace(b"\x90\x3c\x64\x02", b"\xc0\x05\x00\x02")
        self.encrypt("old", legacy_show(song, legacy_song("2")))
        self.run_tool("up", "old", "-o", "new", "--companion", "old.logdata")
        for name in ("old", "new"):
            self.assertEqual(self.run_tool("print", name).stdout.decode(),
                             "Song 1: One:\n  Piano:\n  Bass:\n    0: Program Change(channel 3, 5)\n"
                             "Song 2: Song:\n  Piano:\n")
        self.assertEqual(self.run_tool("print", "-", "--song", "2", stdin=self.read("new")).stdout,
                         b"Song 2: Song:\n  Piano:\n")

    def test_answers_when_there_is_no_such_song(self):
        for name, numbers in (("old.log", "10, 2"), ("new.log", "10, 2"), ("new.showdata", "2, 10")):
            self.refuse("print", name, "--song", "02", code=NEGATIVE,
                        message=f"{name}: has no song 02; its songs are {numbers}")

    def test_prints_any_name_safely(self):
        self.encrypt("log", legacy_log(legacy_song_log("1", b"\x1b[31m\xff")))
        self.assertIn(b"songName_=\\x1b[31m\\xff, songLength_=1920)\n\tVamp", self.run_tool("print", "log").stdout)

    def test_keeps_each_name_on_its_line(self):
        fake = "x\n\tVampSequence(evt_count=9):\u0085\u202e\u200b"
        shown = "x\\x0a\\x09VampSequence(evt_count=9):\\u0085\\u202e\\u200b"
        self.encrypt("legacy", legacy_log(legacy_song_log("1\n", fake, markers=[(0, fake)]),
                                           legacy_song_log("2", "Two")))
        self.run_tool("up", "legacy", "-o", "log", "--companion", "old.showdata")
        document = self.log_document("log")
        document["songLogs"][0]["vamps"] = [{"start": 0, "end": 1, "label": fake, "value": 2}]
        document["songLogs"][0]["clicks"] = [{"start": 0, "end": 1, "label": fake, "value": 2}]
        self.write_log("labels", document)
        for name, count in (("legacy", 2), ("log", 2), ("labels", 4)):
            text = self.run_tool("print", name).stdout.decode()
            self.assertEqual(text.count(shown), count, text)
            self.assertNotIn("(evt_count=9):\n", text)
            self.assertIn("1\\x0a, songName", text)
        self.encrypt("old", legacy_show(legacy_song("1\n", fake, tracks=((1, fake),))))
        text = self.run_tool("print", "old").stdout.decode()
        self.assertEqual(text, f"Song 1\\x0a: {shown}:\n  {shown}:\n")

    def test_reports_what_it_cannot_read(self):
        self.write("bad", "bad")
        self.run_tool("print", "bad", code=BAD_INPUT)
        with open("/dev/full", "wb") as full:
            self.run_tool("print", "new.log", code=IO, stdout=full)


if __name__ == "__main__":
    unittest.main()
