"""up, down and convert of zuna-convert: what they write, say and refuse."""

import json
import os
import unittest

from tool import BAD_INPUT, IO, OR_RESCUE, WithShows, legacy_log, legacy_show, legacy_song

VERSIONS = ("1.0", "1.1", "1.2", "2.0")
UNDAMAGED = "get an undamaged copy of the file"
CORRECT_SONG = "correct the song (edit its text form)"


class UpTest(WithShows):
    def test_brings_a_show_up(self):
        done = self.run_tool("up", "old.showdata", "-o", "out", "--companion", "old.logdata")
        self.assertEqual(done.stderr, b"zuna-convert: old.showdata: 2 songs, 2 voices, 2 events, 0.0 -> 1.2, "
                                      b'named "My Show" by its log, lossless\n')
        self.assertEqual(done.stdout, b"")
        info = json.loads(self.run_tool("info", "--json", "out").stdout)
        self.assertEqual((info["fileVersion"], info["showName"]), ("1.2", "My Show"))
        self.assertEqual([song["songNumber"] for song in info["songs"]], ["2", "10"])

    def test_writes_every_current_version(self):
        for version in VERSIONS:
            self.run_tool("up", "old.showdata", "-o", version, "--to", version, "--companion", "old.logdata")
            info = json.loads(self.run_tool("info", "--json", version).stdout)
            self.assertEqual(info["fileVersion"], version)
        document = json.loads(self.plaintext("2.0"))
        self.assertEqual(document["songs"][0]["voices"][0]["messages"], [[0, 0x91, 60, 100]])

    def test_takes_an_encrypted_companion(self):
        self.encrypt("encrypted.logdata", legacy_log(show_name="Another"))
        self.run_tool("up", "old.showdata", "-o", "out", "--companion", "encrypted.logdata")
        self.assertEqual(json.loads(self.run_tool("info", "--json", "out").stdout)["showName"], "Another")

    def test_refuses_companions_that_are_no_log(self):
        arguments = ("up", "old.showdata", "-o", "out", "--companion")
        self.write("twin", self.read("old.showdata"))
        self.write("plain", self.plaintext("old.showdata"))
        for name, version in (("twin", "0.0"), ("plain", "0.0"), ("new.showdata", "1.2")):
            self.refuse(*arguments, name, code=BAD_INPUT,
                        message=f"old.showdata: companion {name}: is a show of version {version}, no log; give the log "
                                "of the show")
        for size in range(4, len(legacy_log())):
            self.write("short", legacy_log()[:size])
            done = self.run_tool(*arguments, "short", code=BAD_INPUT)
            self.assertRegex(done.stderr, b"^zuna-convert: old.showdata: companion short: cannot be read as a log of version 0.0: ")
        done = self.run_tool(*arguments, "missing", code=IO)
        self.assertRegex(done.stderr, b"^zuna-convert: old.showdata: companion missing: cannot be opened: .*; check the path")
        self.assertNotIn("out", self.files())

    def test_takes_shows_of_current_versions(self):
        done = self.run_tool("up", "new.showdata", "-o", "same")
        self.assertEqual(done.stderr, b"zuna-convert: new.showdata: is of version 1.2 already, and is written as it is\n")
        self.assertEqual(self.read("same"), self.read("new.showdata"))
        done = self.run_tool("up", "new.showdata", "-o", "text", "--to", "2.0")
        self.assertEqual(done.stderr,
                         b"zuna-convert: new.showdata: 2 songs, 2 voices, 2 events, 1.2 -> 2.0, lossless\n")

    def test_says_what_it_changes(self):
        song = legacy_song("7", tracks=((9, "Drums"), (1, "Bass"), (9, "Drum Kit")),
                           labels=((0, "Prologue"), (480, "1234567")))
        twin = legacy_song("8")
        self.encrypt("odd", legacy_show(song, twin, twin) + b"tail")
        done = self.run_tool("up", "odd", "-o", "out", "--companion", "old.logdata")
        self.assertEqual(done.stderr.decode().splitlines(), [
            'zuna-convert: odd: song 7: the label at 0 is cut: "Prologue" becomes "Prologu" [bar-label-cut]',
            "zuna-convert: odd: song 7: the order of the tracks is not kept: 9, 1 becomes 1, 9 [voice-reordered]",
            'zuna-convert: odd: song 7: 2 tracks share id 9 and become one voice named "Drum Kit": "Drums", '
            '"Drum Kit" [voice-merged]',
            "zuna-convert: odd: 1 song was replaced by a later song of the same number [song-replaced]",
            "zuna-convert: odd: 4 bytes after the last song are not kept [trailing-bytes-dropped]",
            'zuna-convert: odd: 2 songs, 3 voices, 4 events, 0.0 -> 1.2, named "My Show" by its log',
        ])

    def test_groups_other_losses_by_kind(self):
        late = legacy_song("7", tempos=(0, 480, 960)).replace(b"J\x06\0\0\0\0\0", b"J\x06\0\xc0\x03\0\0")
        self.encrypt("odd", legacy_show(late))
        done = self.run_tool("up", "odd", "-o", "out", "--companion", "old.logdata")
        self.assertEqual(done.stderr.decode().splitlines(), [
            "zuna-convert: odd: the current versions do not keep 2 tempos (song 7: 0.00104166672 s a tick and 120 bpm "
            "with a click of 8 of 8 32nds at 0 is dropped) [tempo-dropped]",
            'zuna-convert: odd: 1 song, 1 voice, 1 event, 0.0 -> 1.2, named "My Show" by its log'])
        quiet = self.run_tool("up", "odd", "-o", "-", "--companion", "old.logdata", "--quiet")
        self.assertEqual(quiet.stdout, self.read("out"))
        self.assertEqual(quiet.stderr.splitlines(), done.stderr.splitlines()[:1])

    def test_names_the_song_that_cannot_be_converted(self):
        stray = legacy_song("8").replace(b"\x00\x00\x00\x00\x90\x3c\x64\x01", b"\x00\x00\x00\x00\x90\x3c\x64\xff")
        for song, message in ((stray, "a message belongs to track 255, which the song does not have"),
                              (legacy_song("8", tempos=()), "the first meter has no tempo")):
            self.encrypt("bad", legacy_show(legacy_song("7"), song))
            for command in (["up", "bad", "-o", "out", "--companion", "old.logdata"],
                            ["midi", "export", "bad", "--out-dir", "."]):
                self.refuse(*command, code=BAD_INPUT, message=f"bad: song 8: {message}; {CORRECT_SONG}")

    def test_refuses_damaged_legacy_shows(self):
        good = legacy_show(legacy_song())
        for size in range(len(good)):
            self.encrypt("cut", good[:size])
            done = self.run_tool("up", "cut", "-o", "out", "--companion", "old.logdata", code=BAD_INPUT)
            self.assertRegex(done.stderr, b"^zuna-convert: cut: .*; .*\n$")
            os.remove(self.path("cut"))
        self.assertNotIn("out", self.files())


class DownTest(WithShows):
    def test_brings_a_show_down_to_the_same_bytes(self):
        for version in VERSIONS:
            self.run_tool("convert", "new.showdata", "-o", version, "--to", version)
            done = self.run_tool("down", version, "-o", version + ".old")
            self.assertEqual(done.stderr.decode().splitlines(), [
                f'zuna-convert: {version}: format 0.0 does not keep 1 show name ("My Show"; up takes it from the '
                "log) [show-name-dropped]",
                f"zuna-convert: {version}: 2 songs, 2 voices, 2 events, {version} -> 0.0",
            ])
            self.assertEqual(self.plaintext(version + ".old"), self.plaintext("old.showdata"))

    def test_says_what_is_lost(self):
        document = json.loads(self.convert_to_text())
        song = document["songs"][0]
        song["voices"][0]["trackNumber"] = 12
        song["voices"][0]["reserved"] = 5
        song["voices"].append({"trackNumber": 13, "name": "Drums", "reserved": 65535,
                               "messages": [[0, 0x99, 36, 1]]})
        song["voices"].append({"trackNumber": 14, "name": "Drum Kit", "reserved": 65535,
                               "messages": [[0, 0x93, 36, 1], [5, 0x93, 37, 1]]})
        song["timeline"]["tempos"] = [{"time": 0, "microseconds": 500000}, {"time": 700, "microseconds": 400000}]
        song["timeline"]["meters"].append({"time": 480, "numerator": 6, "denominator": 8, "clocksPerClick": 36,
                                           "notated32PerQuarter": 8})
        song["timeline"]["keys"] = [{"time": 0, "key": 300, "mode": 1}]
        song["timeline"]["pageNumbers"] = [{"time": 0, "page": 65537}]
        self.encrypt("rich", json.dumps(document).encode())
        done = self.run_tool("down", "rich", "-o", "out")
        prefix = "zuna-convert: rich: format 0.0 does not keep "
        self.assertEqual(done.stderr.decode().splitlines(), [
            prefix + '1 show name ("My Show"; up takes it from the log) [show-name-dropped]',
            prefix + '3 voice numbers (song 2: voice 12 "Piano" becomes voice 1) [voice-renumbered]',
            prefix + '1 reserved field (song 2: voice 12 "Piano": 5) [reserved-field-defaulted]',
            prefix + '1 voice name (song 2: voice 13 "Drums" becomes "Drum Kit") [voice-name-replaced]',
            prefix + '1 separate voice (song 2: voice 14 "Drum Kit" joins voice 9 "Drum Kit") [voice-merged]',
            prefix + '2 message channels (song 2: voice 14 "Drum Kit" at 0: status 147 becomes 153) '
                     "[message-channel-renumbered]",
            prefix + "1 key (song 2: key 300 mode 1 at 0 becomes key 44 mode 1 at 0) [key-cut]",
            prefix + "1 page number (song 2: page 65537 at 0 becomes page 1 at 0) [page-number-cut]",
            prefix + "1 meter (song 2: 6/8 with 36 clocks and 8 32nds at 480 becomes 6/8 with 36 clocks and 8 "
                     "32nds at 700) [meter-changed]",
            "zuna-convert: rich: 2 songs, 4 voices, 5 events, 2.0 -> 0.0",
        ])
        self.assertEqual(self.run_tool("-qq", "down", "rich", "-o", "quiet").stderr, b"")
        self.assertEqual(self.read("quiet"), self.read("out"))

    def convert_to_text(self):
        self.run_tool("convert", "new.showdata", "-o", "text", "--to", "2.0")
        return self.plaintext("text")

    def refuse_document(self, change, message):
        document = json.loads(self.convert_to_text())
        change(document)
        self.encrypt("changed", json.dumps(document).encode())
        os.remove(self.path("text"))
        self.refuse("down", "changed", "-o", "out", code=BAD_INPUT, message="changed: " + message)
        os.remove(self.path("changed"))

    def test_refuses_what_the_legacy_format_cannot_hold(self):
        def no_messages(document):
            document["songs"][0]["voices"][0]["messages"] = []

        def no_meters(document):
            document["songs"][1]["timeline"]["meters"] = []

        def no_tempos(document):
            document["songs"][1]["timeline"]["tempos"] = []

        def disorder_in_all_songs(document):
            for song in document["songs"]:
                for kind in ("tempos", "meters"):
                    song["timeline"][kind] = [{**song["timeline"][kind][0], "time": 0}] * 64

        def many_voices(document):
            voice = document["songs"][0]["voices"][0]
            document["songs"][0]["voices"] = [{**voice, "trackNumber": i} for i in range(1, 241)]

        def long_name(document):
            document["songs"][0]["songName"] = "x" * 256

        def long_voice_name(document):
            document["songs"][0]["voices"][0]["name"] = "x" * 300

        def long_number(document):
            document["songs"][0]["songNumber"] = "2" * 256

        def many_songs(document):
            document["songs"] = [{**document["songs"][0], "songNumber": str(i)} for i in range(256)]

        self.refuse_document(no_messages,
                             "song 2 has no messages, and format 0.0 cannot hold such a song; remove it")
        self.refuse_document(long_name, "the name of song 2 has 256 bytes, and format 0.0 holds 255; shorten it")
        self.refuse_document(long_voice_name,
                             "the name of voice 1 of song 2 has 300 bytes, and format 0.0 holds 255; shorten it")
        self.refuse_document(long_number,
                             "the number of a song has 256 bytes, and format 0.0 holds 255; shorten it")
        self.refuse_document(many_songs, "has 256 songs, and format 0.0 holds 255; split the show")
        self.refuse_document(no_meters, "song 10: the timeline has no meter; correct the song (edit its text form)")
        self.refuse_document(no_tempos, "song 10: the first meter has no tempo; correct the song (edit its text "
                                        "form)")
        self.refuse_document(disorder_in_all_songs, "song 10: The meters of the show are in disorder and would repeat its "
                                                    "tempos too often; correct the song (edit its text form)")
        self.refuse_document(many_voices, "song 2: has 240 voices besides drums, and format 0.0 holds 239; remove "
                                          "some of them")

    def test_refuses_legacy_shows(self):
        self.refuse("convert", "old.showdata", "-o", "out", code=BAD_INPUT,
                    message="old.showdata: is a show of version 0.0, not a current one; use up first")

    def test_takes_legacy_shows_as_they_are(self):
        done = self.run_tool("down", "old.showdata", "-o", "out")
        self.assertEqual(done.stderr, b"zuna-convert: old.showdata: is of version 0.0 already, and is written as it is\n")
        self.assertEqual(self.read("out"), self.read("old.showdata"))

    def test_does_not_suggest_up_for_what_is_no_show(self):
        cut_off = legacy_show(legacy_song())[:-1]
        for content, place in ((b"", "before its first song"), (b"hello", "inside song 1 of 104, which begins at byte 1"),
                               (cut_off, "inside song 1 of 1, number 1, which begins at byte 1")):
            self.encrypt("bad", content)
            self.refuse("convert", "bad", "-o", "out", code=BAD_INPUT,
                        message=f"bad: cannot be read as a show of version 0.0: it ends {place} (offset {len(content)}); "
                                "get a complete copy of the file" + OR_RESCUE)


class ConvertTest(WithShows):
    def test_converts_between_all_versions_without_loss(self):
        for source in VERSIONS:
            self.run_tool("convert", "new.showdata", "-o", source, "--to", source)
            for target in VERSIONS:
                name = source + "-" + target
                done = self.run_tool("convert", source, "-o", name, "--to", target)
                said = (f"is of version {source} already, and is written as it is" if source == target else
                        f"2 songs, 2 voices, 2 events, {source} -> {target}, lossless")
                self.assertEqual(done.stderr.decode(), f"zuna-convert: {source}: {said}\n")
                self.run_tool("convert", name, "-o", name + "-1.2")
                self.assertEqual(self.read(name + "-1.2"), self.read("new.showdata"))

    def test_refuses_unknown_versions(self):
        plain = bytearray(self.plaintext("new.showdata"))
        self.assertEqual(plain[8:10], b"\x01\x02")  # the version, after magic (4) and count (4)
        plain[9] = 77
        self.encrypt("future", bytes(plain))
        done = self.run_tool("convert", "future", "-o", "out", code=BAD_INPUT)
        self.assertRegex(done.stderr.decode(), r"^zuna-convert: future: .*1\.77.*1\.2")
        self.assertNotIn("out", self.files())

    def test_tells_what_is_wrong_with_a_text_that_hides_its_version(self):
        for content in (b'{"fileVersion": "2.0", "showName": "", "songs": []}', b'\xef\xbb\xbf{"kind": "showdata"}',
                        b' \n{"kind": "showdata"}', b'{/* a show */ "kind": "showdata"}', b"{"):
            self.encrypt("text", content)
            for command in (["convert", "text", "-o", "out"], ["down", "text", "-o", "out"], ["info", "text"],
                            ["up", "text", "-o", "out", "--companion", "old.logdata"]):
                done = self.run_tool(*command, code=BAD_INPUT)
                self.assertRegex(done.stderr, rb"^zuna-convert: text: .* \(at byte \d+\)")
                self.assertNotIn(b"use up", done.stderr)

    def test_takes_a_legacy_show_of_123_songs(self):
        content = legacy_show(*(legacy_song(str(i)) for i in range(ord("{"))))
        self.assertEqual(content[:1], b"{")
        self.run_tool("encrypt", "-", "-o", "many", stdin=content)
        self.run_tool("up", "many", "-o", "out", "--companion", "old.logdata")
        self.assertIn(b"is a show of version 0.0, not a current one; use up first",
                      self.run_tool("convert", "many", "-o", "old", code=BAD_INPUT).stderr)

    def test_refuses_an_edited_text_with_its_place(self):
        self.run_tool("convert", "new.showdata", "-o", "text", "--to", "2.0")
        self.encrypt("edited", self.plaintext("text").replace(b'"division"', b'"divison"', 1))
        done = self.run_tool("convert", "edited", "-o", "out", code=BAD_INPUT)
        self.assertRegex(done.stderr, b"^zuna-convert: edited: .*divison")


if __name__ == "__main__":
    unittest.main()
