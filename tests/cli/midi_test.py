"""midi import and midi export of zuna-convert."""

import json
import os
import resource
import unittest

from tool import BAD_INPUT, IO, NOTES, REFUSED, USAGE, ToolTest, legacy_log, legacy_show, legacy_song, midi_file


class MidiTest(ToolTest):
    def test_imports_songs_in_order(self):
        self.write("one.mid", midi_file(b"\x00\xff\x03\x05First", NOTES))
        self.write("two.mid", midi_file(NOTES))
        done = self.run_tool("midi", "import", "one.mid", "two.mid", "-o", "The Show.showdata")
        self.assertEqual(done.stderr,
                         b"zuna-convert: The Show.showdata: 2 songs, 2 voices, 6 events, MIDI -> 1.2\n")
        info = json.loads(self.run_tool("info", "--json", "The Show.showdata").stdout)
        self.assertEqual(info["showName"], "The Show")
        self.assertEqual([(song["songNumber"], song["songName"]) for song in info["songs"]],
                         [("1", "First"), ("2", "two")])

    def test_takes_numbers_and_names(self):
        self.write("one.mid", midi_file(NOTES))
        self.write("two.mid", midi_file(NOTES))
        self.run_tool("midi", "import", "one.mid", "two.mid", "-o", "out", "--show-name", "Gala", "--song-number",
                      "12a", "--song-number", "3", "--to", "2.0")
        document = json.loads(self.plaintext("out"))
        self.assertEqual(document["showName"], "Gala")
        self.assertEqual([(song["songNumber"], song["songName"]) for song in document["songs"]],
                         [("3", "two"), ("12a", "one")])

    def test_refuses_unclear_numbers(self):
        self.write("one.mid", midi_file(NOTES))
        self.refuse("midi", "import", "one.mid", "-o", "out", "--song-number", "1", "--song-number", "2",
                    code=USAGE, message="--song-number: stands for 2 songs and there is 1 file; give it once for "
                                        "each, or not at all")
        self.refuse("midi", "import", "one.mid", "one.mid", "-o", "out", "--song-number", "1", "--song-number",
                    "1", code=USAGE, message="--song-number: gives one number twice; give each song its own")

    def test_takes_numbers_from_names(self):
        names = ("10 Finale.mid", "2 Air.mid", "2a Dance.mid")
        for name in names:
            self.write(name, midi_file(NOTES))
        done = self.run_tool("midi", "import", *names, "-o", "sorted", "--force")
        self.assertIn(b"10 Finale.mid: becomes song 1; with --numbers-from-names it would be song 10\n", done.stderr)
        self.assertEqual(done.stderr.count(b"becomes song"), 1)
        done = self.run_tool("midi", "import", *names, "-o", "out", "--numbers-from-names", "--to", "2.0")
        self.assertNotIn(b"becomes song", done.stderr)
        self.assertEqual([(song["songNumber"], song["songName"]) for song in json.loads(self.plaintext("out"))["songs"]],
                         [("2", "Air"), ("2a", "Dance"), ("10", "Finale")])
        self.write("Air.mid", midi_file(NOTES))
        self.write("2 Other.mid", midi_file(NOTES))
        run = ("midi", "import", "2 Air.mid", "-o", "no", "--numbers-from-names")
        self.refuse(*run, "Air.mid", code=USAGE, message="Air.mid: does not begin with a number and a space; give "
                                                         "--song-number for each file in place of --numbers-from-names")
        self.refuse(*run, "2 Other.mid", code=USAGE,
                    message="--numbers-from-names: gives one number twice; give each song its own")
        self.refuse(*run, "--song-number", "2", code=USAGE,
                    message="command line: --song-number and --numbers-from-names contradict each other; give one of them")

    def test_takes_numbers_with_a_count_from_names(self):
        names = ("1 Air.mid", "1 (2) Air.mid", "1 (12) Air (2).mid", "3 (b) Air.mid", "4 () Air.mid", "5 (2).mid")
        for name in names:
            self.write(name, midi_file(NOTES))
        self.run_tool("midi", "import", *names, "-o", "out", "--numbers-from-names", "--to", "2.0")
        self.assertEqual([(song["songNumber"], song["songName"]) for song in json.loads(self.plaintext("out"))["songs"]],
                         [("1", "Air"), ("1 (2)", "Air"), ("1 (12)", "Air (2)"), ("3", "(b) Air"), ("4", "() Air"),
                          ("5", "(2)")])

    def test_takes_song_numbers_before_the_files(self):
        self.write("one.mid", midi_file(NOTES))
        self.write("two.mid", midi_file(NOTES))
        self.run_tool("midi", "import", "--song-number", "5", "--song-number", "7a", "one.mid", "two.mid", "-o", "out")
        information = self.run_tool("info", "out").stdout
        self.assertRegex(information, rb"(?m)^  5 ")
        self.assertRegex(information, rb"(?m)^  7a ")

    def test_refuses_a_file_that_lacks_a_track(self):
        self.write("cut.mid", midi_file(NOTES).replace(b"\x00\x01\x01\xe0", b"\x00\x02\x01\xe0", 1))
        done = self.run_tool("midi", "import", "cut.mid", "-o", "out", code=BAD_INPUT)
        self.assertIn(b"truncated: the header promises 2 tracks, and the file has 1", done.stderr)

    def test_says_what_is_not_kept(self):
        body = b"\x00\xff\x05\x02la" * 2 + b"\x00\xf0\x02\x7e\xf7" + NOTES
        content = midi_file(body) + b"XFIH\x00\x00\x00\x00" + b"tail"
        self.write("song.mid", content.replace(b"\x00\x01\x01\xe0", b"\x00\x00\x01\xe0", 1)[:-4])
        done = self.run_tool("midi", "import", "song.mid", "-o", "out")
        self.assertEqual(done.stderr.decode().splitlines(), [
            "zuna-convert: song.mid: the header says 0 tracks, and the file has 1",
            "zuna-convert: song.mid: skipped: 1 unknown chunk",
            "zuna-convert: song.mid: not kept: 1 system-exclusive message, 2 lyrics",
            "zuna-convert: out: 1 song, 1 voice, 3 events, MIDI -> 1.2",
        ])
        self.write("tail.mid", midi_file(NOTES) + b"tail")
        done = self.run_tool("midi", "import", "tail.mid", "-o", "out", "--force")
        self.assertIn(b"tail.mid: skipped: 4 bytes after the last chunk\n", done.stderr)
        self.write("endless.mid", midi_file(NOTES).replace(b"\x00\xff\x2f\x00", b"\x00\x90\x01\x00"))
        done = self.run_tool("midi", "import", "endless.mid", "-o", "out", "--force")
        self.assertIn(b"endless.mid: 1 track has no End of Track\n", done.stderr)

    def test_refuses_bad_midi_files(self):
        self.write("good.mid", midi_file(NOTES))
        self.write("smpte.mid", midi_file(NOTES, division=0xE728))
        self.refuse("midi", "import", "good.mid", "smpte.mid", "-o", "out", code=BAD_INPUT,
                    message="smpte.mid: times are in SMPTE frames (offset 12); export the file with ticks of a "
                            "quarter note instead")
        self.run_tool("midi", "import", "good.mid", "none.mid", "-o", "out", code=IO)
        self.assertNotIn("out", self.files())

    def test_exports_what_it_imported(self):
        timeline = b"\x00\xff\x03\x04Song\x00\xff\x58\x04\x03\x02\x18\x08\x00\xff\x51\x03\x07\xa1\x20"
        content = midi_file(timeline, NOTES, ends=(480, 0))
        self.write("song.mid", content)
        self.run_tool("midi", "import", "song.mid", "-o", "show")
        os.mkdir(self.path("out"))
        done = self.run_tool("midi", "export", "show", "--out-dir", "out")
        self.assertEqual(done.stderr, b"zuna-convert: show: song 1: not kept: 1 bar label\n"
                                      b"zuna-convert: out: 1 MIDI file written\n")
        self.assertEqual(self.read("out/1 Song.mid").hex(), content.hex())

    def test_exports_legacy_shows(self):
        self.encrypt("old.showdata", legacy_show(legacy_song("4", "Four")))
        os.mkdir(self.path("out"))
        self.run_tool("midi", "export", "old.showdata", "--out-dir", "out")
        self.assertIn("out/4 Four.mid", self.files())

    def test_exports_shows_that_are_not_encrypted(self):
        self.write("plain.showdata", legacy_show(legacy_song("4", "Four")))
        os.mkdir(self.path("out"))
        self.run_tool("midi", "export", "plain.showdata", "--out-dir", "out")
        self.assertIn("out/4 Four.mid", self.files())

    def test_does_not_export_a_log(self):
        self.write("plain.logdata", legacy_log())
        self.refuse("midi", "export", "plain.logdata", "--out-dir", ".", code=BAD_INPUT,
                    message="plain.logdata: is a log, and this command takes shows; give a show")

    def test_keeps_file_names_inside_the_folder(self):
        songs = [legacy_song("../1", "../../etc"), legacy_song("2", "a\x07\\b:c"), legacy_song("3", "é" * 120),
                 legacy_song("", ""), legacy_song("4", b"\xff\x00"), legacy_song("5", "x/y"),
                 legacy_song("5 x", "y"), legacy_song("5", "X y")]
        self.encrypt("show", legacy_show(*songs[:7]))
        os.mkdir(self.path("out"))
        self.run_tool("midi", "export", "show", "--out-dir", "out")
        self.assertEqual(sorted(name for name in self.files() if name != "show"), sorted([
            "out/_._1 .._.._etc.mid", "out/2 a__b_c.mid", "out/3 " + "é" * 99 + ".mid", "out/song.mid",
            "out/4 __.mid", "out/5 x_y.mid", "out/5 x y.mid"]))

    def test_replaces_midi_files_only_when_forced(self):
        self.encrypt("show", legacy_show(legacy_song("1", "One"), legacy_song("2", "Two")))
        os.mkdir(self.path("out"))
        self.write("out/2 Two.mid", "mine")
        self.refuse("midi", "export", "show", "--out-dir", "out", code=REFUSED,
                    message="out/2 Two.mid: exists; give --force to replace it, or another output")
        self.run_tool("midi", "export", "show", "--out-dir", "out", "--force")
        self.assertTrue(self.read("out/2 Two.mid").startswith(b"MThd"))

    def test_never_writes_over_its_key_file(self):
        self.encrypt("show", legacy_show(legacy_song("1", "One")))
        os.mkdir(self.path("out"))
        with open(self.environment["ZUNA_KEY_FILE"], "rb") as key:
            self.write_key("out/1 One.mid", key.read())
        self.refuse("midi", "export", "show", "--out-dir", "out", "--force", "--key-file", "out/1 One.mid",
                    code=REFUSED, message="out/1 One.mid: is an input as well; give another output")

    def test_removes_what_it_created_when_it_cannot_go_on(self):
        tracks = tuple((i, "x" * 200) for i in range(1, 60))
        self.encrypt("show", legacy_show(legacy_song("1", "One"), legacy_song("2", "Two"),
                                         legacy_song("3", "Big", tracks=tracks)))
        os.mkdir(self.path("out"))
        self.write("out/2 Two.mid", "mine")

        def limit_file_size():
            resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096))

        done = self.run_tool("midi", "export", "show", "--out-dir", "out", "--force", code=IO,
                             preexec_fn=limit_file_size)
        self.assertRegex(done.stderr, b"^zuna-convert: out/3 Big.mid: cannot be written \\(.*\n$")
        self.assertEqual(sorted(self.files()), ["out/2 Two.mid", "show"])

    def test_refuses_songs_that_midi_cannot_hold(self):
        song = legacy_song("1", "One").replace(b"\xe0\x01", b"\x00\x80", 1)
        self.encrypt("show", legacy_show(legacy_song("0", "Zero"), song))
        os.mkdir(self.path("out"))
        done = self.run_tool("midi", "export", "show", "--out-dir", "out", code=BAD_INPUT)
        self.assertEqual(done.stderr.decode().splitlines()[-1],
                         "zuna-convert: show: song 1: a quarter note has 32768 ticks, and a MIDI file holds 1 to "
                         "32767; change the song's division [beyond-midi-limits]")
        self.assertEqual(list(self.files()), ["show"])
        self.refuse("midi", "export", "show", "--out-dir", "none", code=IO,
                    message="none: is not a folder; create it first")


if __name__ == "__main__":
    unittest.main()
