"""up, down, convert, info and encrypt of zuna-convert on logs."""

import json
import struct
import unittest

from tool import (BAD_INPUT, IO, OR_RESCUE, REFUSED, USAGE, WRONG_KEY, WithLogs, legacy_log, legacy_show, legacy_song,
                  legacy_song_log)

VERSIONS = ("1.1", "1.2", "2.0")
UNDAMAGED = "get an undamaged copy of the file"


class UpTest(WithLogs):
    def test_brings_a_log_up(self):
        done = self.run_tool("up", "old.log", "-o", "out", "--companion", "old.showdata")
        self.assertEqual(done.stderr, b"zuna-convert: old.log: 2 songs, 6 edits, 0.0 -> 1.2, divisions from "
                                      b"old.showdata, lossless\n")
        self.assertEqual(done.stdout, b"")
        two = self.log_document("out")["songLogs"][1]
        self.assertEqual((two["songNumber"], two["division"], two["songLength"]), ("2", 480, 1920))
        self.assertEqual(two["vamps"], [{"start": 0, "end": 480, "label": "", "value": 2},
                                        {"start": 480, "end": 960, "label": "", "value": -3}])
        self.assertEqual(two["tempoScales"], [{"start": 0, "end": 960, "label": "", "value": 1.5}])

    def test_writes_the_version_asked_for(self):
        for version in VERSIONS:
            self.run_tool("up", "old.log", "-o", version, "--companion", "old.showdata", "--to", version)
            info = json.loads(self.run_tool("info", "--json", version).stdout)
            self.assertEqual((info["kind"], info["fileVersion"]), ("logdata", version))
        for command in (["up", "old.log", "--companion", "old.showdata"], ["convert", "new.log"]):
            self.refuse(*command, "-o", "out", "--to", "1.0", code=USAGE,
                        message=f"{command[1]}: is a log, which has no version 1.0; give --to 1.1, 1.2 or 2.0 (text)")

    def test_takes_a_plain_companion(self):
        self.write("plain", self.plaintext("old.showdata"))
        self.run_tool("up", "old.log", "-o", "out", "--companion", "plain")
        self.assertEqual(self.read("out"), self.read("new.log"))
        before = set(self.files())
        self.run_tool("up", "-", "-o", "-", "--companion", "old.showdata", stdin=self.read("old.log"))
        self.assertEqual(set(self.files()), before)

    def test_refuses_companions_that_are_no_legacy_show(self):
        arguments = ["up", "old.log", "-o", "out", "--companion"]
        for name, what in (("old.logdata", "a log of version 0.0"), ("new.log", "a log of version 1.2")):
            self.refuse(*arguments, name, code=BAD_INPUT,
                        message=f"old.log: companion {name}: is {what}, no show; give the show of the log")
        self.write("noise", "noise")
        self.assertRegex(self.run_tool(*arguments, "noise", code=BAD_INPUT).stderr,
                         b"^zuna-convert: old.log: companion noise: .*; .*")
        self.assertRegex(self.run_tool(*arguments, "none", code=IO).stderr,
                         b"^zuna-convert: old.log: companion none: cannot be opened")
        self.write_key("key", "key = 01\niv = 02\n")
        self.run_tool("--key-file", "key", "encrypt", "noise", "-o", "secret")
        done = self.run_tool(*arguments, "secret", code=WRONG_KEY)
        self.assertRegex(done.stderr, b"^zuna-convert: old.log: companion secret: .*; .*\n$")
        self.assertNotIn("out", self.files())

    def test_takes_a_companion_of_a_current_version(self):
        self.run_tool("up", "old.log", "-o", "out", "--companion", "new.showdata")
        self.assertEqual(self.read("out"), self.read("new.log"))

    def test_takes_a_division_in_place_of_the_show(self):
        done = self.run_tool("up", "old.log", "-o", "out", "--division", "480")
        self.assertEqual(done.stderr, b"zuna-convert: old.log: 2 songs, 6 edits, 0.0 -> 1.2, division 480, lossless\n")
        self.assertEqual(self.read("out"), self.read("new.log"))

    def test_says_what_the_companion_lacks(self):
        self.encrypt("other", legacy_show(legacy_song("2", "Zwei")))
        self.run_tool("up", "old.log", "-o", "out", "--companion", "other", code=REFUSED)
        self.encrypt("other", legacy_show(legacy_song("2", "Zwei"), legacy_song("3", "Three")))
        done = self.run_tool("up", "old.log", "-o", "out", "--companion", "other", "--any-companion")
        self.assertEqual(done.stderr.decode().splitlines(), [
            "zuna-convert: old.log: song 10 is not in other",
            'zuna-convert: old.log: song 2 has another name in other: "Two", there "Zwei"',
            "zuna-convert: old.log: 1 song without a division (song 10: the show has none; --division gives one) "
            "[division-defaulted]",
            "zuna-convert: old.log: 2 songs, 6 edits, 0.0 -> 1.2, divisions from other",
        ])
        self.assertEqual([song["division"] for song in self.log_document("out")["songLogs"]], [0, 480])
        done = self.run_tool("up", "old.log", "-o", "out", "--companion", "other", "--any-companion", "--force", "-q")
        self.assertEqual(done.stderr, b"zuna-convert: old.log: 1 song without a division (song 10: the show has none; "
                                      b"--division gives one) [division-defaulted]\n")
        for fail_on in ("loss", "any-loss"):
            self.refuse("up", "old.log", "-o", "out2", "--companion", "other", "--any-companion", "--fail-on", fail_on,
                        code=REFUSED, message="old.log: would not be lossless: 1 song without a division; give --accept "
                                              "division-defaulted to let it go, or leave out --fail-on")
        self.run_tool("up", "old.log", "-o", "out2", "--companion", "other", "--any-companion", "--fail-on", "loss",
                      "--accept", "division-defaulted")
        self.assertIn(b"song 10: the division is 0; convert the legacy log again with its show, or set the division "
                      b"[division-unknown]", self.run_tool("check", "out").stdout)

    def test_refuses_a_foreign_companion(self):
        self.encrypt("other", legacy_show(legacy_song("7")))
        self.refuse("up", "old.log", "-o", "out", "--companion", "other", code=REFUSED,
                    message="old.log: companion other: belongs to another show: no song agrees in number and name; "
                            "give the right file, or --any-companion to take this one")

    def test_says_which_songs_are_replaced(self):
        self.encrypt("twice", legacy_log(legacy_song_log("2", "First"), legacy_song_log("2", "Two")))
        done = self.run_tool("up", "twice", "-o", "out", "--companion", "old.showdata")
        self.assertEqual(done.stderr.decode().splitlines(), [
            "zuna-convert: twice: 1 song was replaced by a later song of the same number [song-replaced]",
            "zuna-convert: twice: 1 song, 0 edits, 0.0 -> 1.2, divisions from old.showdata"])

    def test_brings_a_log_without_songs_up(self):
        self.encrypt("empty", legacy_log())
        self.run_tool("up", "empty", "-o", "out", "--companion", "old.showdata")
        self.run_tool("down", "out", "-o", "back")
        self.assertEqual(self.plaintext("back"), legacy_log())

    def test_refuses_damaged_logs(self):
        good = legacy_log(legacy_song_log(vamps=[(0, 480, 2)]))
        begin, end = len(legacy_log()), len(good)
        for content, problem, remedy in (
                (good[:-1], f"ends inside song 1, number 1, which begins at byte {begin} (offset {end - 1})",
                 "a complete"),
                (good + b"\0", f"has another length than its header says (offset {end})", "another"),
                (good[:9], "ends before its first song (offset 9)", "a complete"),
                (good[:4], "ends before its first song (offset 4)", "a complete")):
            self.encrypt("bad", content)
            for command in (["up", "bad", "-o", "out", "--companion", "old.showdata"], ["info", "bad"],
                            ["print", "bad"]):
                self.refuse(*command, code=BAD_INPUT,
                            message=f"bad: cannot be read as a log of version 0.0: it {problem}; "
                                    f"get {remedy} copy of the file" + OR_RESCUE)
        for size in range(8, len(good)):  # Now the length fits.
            self.encrypt("bad", good[:4] + struct.pack("<I", size - 8) + good[8:size])
            done = self.run_tool("up", "bad", "-o", "out", "--force", "--companion", "old.showdata", "--quiet",
                                 code=BAD_INPUT if size != good.index(b"\3\0\4\0") + 4 else 0)
            self.assertRegex(done.stderr, rb"^(zuna-convert: bad: .*; get a complete copy of the file" + OR_RESCUE.encode() + rb" \[cut-off\]\n)?$")
        stray = good.replace(b"@", b"?")
        self.encrypt("bad", stray)
        done = self.run_tool("up", "bad", "-o", "none", "--companion", "old.showdata", code=BAD_INPUT)
        self.assertEqual(done.stderr.decode(),
                         "zuna-convert: bad: cannot be read as a log of version 0.0: it is damaged in song 1, "
                         f"number 1, which begins at byte {begin} (offset {stray.index(b'?')}); {UNDAMAGED}{OR_RESCUE} [bad-content]\n")
        self.assertNotIn("none", self.files())

    def test_takes_logs_of_current_versions(self):
        self.run_tool("up", "new.log", "-o", "out", "--to", "1.1")
        self.run_tool("up", "out", "-o", "again")
        self.assertEqual(self.read("again"), self.read("new.log"))


class DownTest(WithLogs):
    def test_comes_back_byte_for_byte(self):
        for version in VERSIONS:
            self.run_tool("convert", "new.log", "-o", version, "--to", version)
            done = self.run_tool("down", version, "-o", "out", "--force")
            self.assertEqual(done.stderr.decode().splitlines(), [
                f"zuna-convert: {version}: format 0.0 does not keep 2 divisions (song 10: 480; up takes it from the "
                "show) [division-dropped]",
                f"zuna-convert: {version}: 2 songs, 6 edits, {version} -> 0.0"])
            self.assertEqual(self.read("out"), self.read("old.log"))
            self.run_tool("up", "out", "-o", "again", "--companion", "old.showdata", "--force")
            self.assertEqual(self.read("again"), self.read("new.log"))

    def test_says_everything_that_is_lost(self):
        document = self.log_document()
        ten, two = document["songLogs"]
        ten["caesuras"] += [{"position": 5, "label": "", "secondWord": 1},
                            {"position": 6, "label": "", "secondWord": 2}]
        two.update(attacca=1, fermatas=[{"start": 0, "end": 10, "label": "f", "value": 2}])
        two["vamps"][0].update(value=300, label="lab")
        self.write_log("rich", document)
        done = self.run_tool("down", "rich", "-o", "out")
        self.assertEqual(done.stderr.decode().splitlines(), ["zuna-convert: rich: " + line for line in [
            "format 0.0 does not keep 2 divisions (song 10: 480; up takes it from the show) [division-dropped]",
            "format 0.0 does not keep 1 second word of a caesura (song 10: Caesura(5, 1) becomes Caesura(5, 0)) "
            "[second-word-defaulted]",
            "format 0.0 does not keep 1 caesura with a second word above 1 (song 10: Caesura(6, 2) is dropped) "
            "[caesura-dropped]",
            'format 0.0 does not keep 1 fermata (song 2: Fermata(0, 10, 2) "f"; copy-fermatas brings it back) '
            "[fermata-dropped]",
            "format 0.0 does not keep 1 attacca (song 2: 1; copy-fermatas brings it back) [attacca-dropped]",
            'format 0.0 does not keep 1 label (song 2: Vamp(0, 480, 300) "lab") [edit-label-dropped]',
            'format 0.0 does not keep 1 value beyond 8 bits (song 2: Vamp(0, 480, 300) "lab" becomes Vamp(0, 480, 44)) '
            "[edit-value-cut]",
            "2 songs, 9 edits, 1.2 -> 0.0"]])
        self.assertEqual(self.run_tool("down", "rich", "-o", "-", "-qq").stderr, b"")

    def test_refuses_texts_that_are_too_long(self):
        long = "x" * 256
        cases = {
            "the name of the show": lambda log: log.update(showName=long),
            "the label of the log": lambda log: log.update(logLabel=long),
            "the number of a song": lambda log: log["songLogs"][1].update(songNumber=long),
            "the name of song 10": lambda log: log["songLogs"][0].update(songName=long),
            "a marker at 480 of song 10": lambda log: log["songLogs"][0]["markers"][1].update(text=long),
        }
        for what, change in cases.items():
            document = self.log_document()
            change(document)
            self.write_log("long", document)
            self.refuse("down", "long", "-o", "out", code=BAD_INPUT,
                        message=f"long: {what} has 256 bytes, and format 0.0 holds 255; shorten it")


class ConvertTest(WithLogs):
    def test_converts_between_all_versions_without_loss(self):
        for source in VERSIONS:
            self.run_tool("convert", "new.log", "-o", source, "--to", source)
            for target in VERSIONS:
                done = self.run_tool("convert", source, "-o", "out", "--to", target, "--force")
                said = (f"is of version {source} already, and is written as it is" if source == target else
                        f"2 songs, 6 edits, {source} -> {target}, lossless")
                self.assertEqual(done.stderr.decode(), f"zuna-convert: {source}: {said}\n")
                self.run_tool("convert", "out", "-o", "back", "--to", "1.2", "--force")
                self.assertEqual(self.read("back"), self.read("new.log"))

    def test_refuses_what_is_no_current_log(self):
        self.refuse("convert", "old.log", "-o", "out", code=BAD_INPUT,
                    message="old.log: is a log of version 0.0, not a current one; use up first")
        damaged = bytearray(self.plaintext("new.log"))
        damaged[-1] ^= 1
        self.encrypt("bad", bytes(damaged))
        future = bytearray(self.plaintext("new.log"))
        self.assertEqual(future[8:10], b"\x01\x02")  # the version, after magic (4) and count (4)
        future[9] = 77
        self.encrypt("future", bytes(future))
        for command in (["down"], ["convert"]):
            done = self.run_tool(*command, "bad", "-o", "out", code=BAD_INPUT)
            self.assertRegex(done.stderr, b"^zuna-convert: bad: .*; .*\n$")
            done = self.run_tool(*command, "future", "-o", "out", code=BAD_INPUT)
            self.assertRegex(done.stderr.decode(), r"^zuna-convert: future: .*1\.77.*1\.2")
        self.assertNotIn("out", self.files())

    def test_names_logs_where_shows_are_needed(self):
        for name in ("old.log", "new.log"):
            self.refuse("midi", "export", name, "--out-dir", ".", code=BAD_INPUT,
                        message=f"{name}: is a log, and this command takes shows; give a show")

    def test_writes_like_every_command(self):
        for command in (["up", "old.log", "--companion", "old.showdata"], ["down", "new.log"], ["convert", "new.log"]):
            self.refuse(*command, "-o", "old.logdata", code=REFUSED,
                        message="old.logdata: exists; give --force to replace it, --skip-existing to pass over it, or another "
                                "output")
            with open("/dev/full", "wb") as full:
                done = self.run_tool(*command, "-o", "-", code=IO, stdout=full)
            self.assertRegex(done.stderr, b"^zuna-convert: standard output: cannot be written: .*\n$")

    def test_names_the_place_of_an_error_in_a_text(self):
        self.run_tool("convert", "new.log", "-o", "text", "--to", "2.0")
        good = self.plaintext("text")
        for bad in (good.replace(b'"attacca"', b'"atacca"', 1), b'{"kind": "logdata"}'):
            done = self.run_tool("encrypt", "-", "-o", "out", stdin=bad, code=BAD_INPUT)
            self.assertRegex(done.stderr, rb"^zuna-convert: standard input: .* \(line \d+, column \d+\); correct the text \[text-error\]\n$")
            self.encrypt("bad", bad)
            for command in (["convert", "bad", "-o", "out"], ["info", "bad"], ["print", "bad"]):
                done = self.run_tool(*command, code=BAD_INPUT)
                self.assertRegex(done.stderr, rb"^zuna-convert: bad: .*at byte \d+\); .*correct its text(, or .* rescue)? \[text-error\]\n$")
        self.run_tool("encrypt", "-", "-o", "out", stdin=good)
        self.assertEqual(self.read("out"), self.read("text"))


class InfoTest(WithLogs):
    def test_tells_about_logs(self):
        done = self.run_tool("info", "old.log", "new.log")
        self.assertEqual(done.stdout.decode(), """old.log: log, version 0.0, "My Show", 2 songs, 6 edits
  number  name  division  length  attacca  edits
  10      Ten          -    1920        -  2 markers, 1 caesura
  2       Two          -    1920        -  2 vamps, 1 tempo scale
new.log: log, version 1.2, "My Show", 2 songs, 6 edits
  number  name  division  length  attacca  edits
  10      Ten        480    1920        0  2 markers, 1 caesura
  2       Two        480    1920        0  2 vamps, 1 tempo scale
""")
        self.assertIn(b"  1       Song         -    1920        -  none\n",
                      self.run_tool("info", self.encrypt("plain", legacy_log(legacy_song_log()))).stdout)

    def test_writes_json(self):
        none = dict.fromkeys(["vamps", "repeats", "cuts", "transposes", "tempoScales", "clicks", "fermatas", "markers",
                              "caesuras"], 0)
        ten = {"songNumber": "10", "songName": "Ten", "division": 480, "songLength": 1920, "attacca": 0, **none,
               "markers": 2, "caesuras": 1}
        two = {**ten, "songNumber": "2", "songName": "Two", **none, "vamps": 2, "tempoScales": 1}
        log = {"schemaVersion": 1, "path": "new.log", "kind": "logdata", "fileVersion": "1.2", "encrypted": True,
               "showName": "My Show", "logLabel": "label", "identifier": "00010203-0405-0607-0809-0a0b0c0d0e0f", "tagPair": [3, 4], "songLogs": [ten, two]}
        unknown = {"division": None, "attacca": None}
        legacy = {**log, "path": "old.log", "fileVersion": "0.0", "songLogs": [{**ten, **unknown}, {**two, **unknown}]}
        self.assertEqual(json.loads(self.run_tool("info", "--json", "new.log").stdout), log)
        found = [json.loads(line) for line in
                 self.run_tool("info", "--json", "new.log", "new.showdata", "old.log").stdout.splitlines()]
        self.assertEqual([found[0], found[2]], [log, legacy])
        self.assertEqual(found[1]["kind"], "showdata")


if __name__ == "__main__":
    unittest.main()
