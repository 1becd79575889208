"""diff of zuna-convert: what changed, in words and as JSON."""

import copy
import json
import os
import unittest

from tool import (BAD_INPUT, IO, NEGATIVE, USAGE, WRONG_KEY, WithLogs, legacy_show, legacy_song, without_codes)

NOTE = [[0, 144, 60, 100], [480, 128, 60, 0]]


class DiffTest(WithLogs):
    def setUp(self):
        super().setUp()
        self.run_tool("convert", "new.showdata", "-o", "text", "--to", "2.0")
        self.show = json.loads(self.plaintext("text"))
        for song in self.show["songs"]:
            song["voices"][0]["messages"] = copy.deepcopy(NOTE)
            song["timeline"]["barsBeats"] = [{"time": 0, "barNumber": "1", "tag": 0},
                                             {"time": 1920, "barNumber": "2", "tag": 0}]

    def diff(self, before, after, code=NEGATIVE, *options):
        """What is printed of two documents of JSON."""
        self.write("before", json.dumps(before))
        self.write("after", json.dumps(after))
        return self.run_tool("diff", "before", "after", *options, code=code).stdout.decode()

    def changed(self, change):
        """What is printed where `change` changes the first song of the show."""
        after = copy.deepcopy(self.show)
        change(after["songs"][0])
        return self.diff(self.show, after)

    def test_prints_nothing_for_the_same(self):
        for after in ("old.showdata", "new.showdata", "text"):
            done = self.run_tool("diff", "old.showdata", after)
            self.assertEqual((done.stdout, done.stderr), (b"", b""))
        self.assertEqual(self.run_tool("diff", "new.log", "old.log").stdout, b"")

    def test_tells_songs(self):
        after = copy.deepcopy(self.show)
        after["showName"] = "Other"
        after["songs"][0]["songNumber"] = "3"
        after["songs"][1] = {**after["songs"][1], "songNumber": "4", "songName": "Four", "songLength": 7}
        self.assertEqual(self.diff(self.show, after),
                         'show name: "My Show" becomes "Other"\nsong 2 "Two" becomes song 3\nsong 4 "Four" is added\n'
                         'song 10 "Ten" is removed\n')

    def test_compares_a_song_that_got_another_number(self):
        self.assertEqual(self.changed(lambda song: song.update(songNumber="3", division=960)),
                         'song 2 "Two" becomes song 3\nsong 2:\n  division: 480 becomes 960\n')

    def test_pairs_songs_by_their_content(self):
        self.show["songs"][1]["songLength"] += 1
        first, second = (song["songNumber"] for song in self.show["songs"])

        def renumbered(*numbers, name=None):
            after = copy.deepcopy(self.show)
            for song, number in zip(after["songs"], numbers):
                song["songNumber"] = number
            after["songs"][0]["songName"] = name or after["songs"][0]["songName"]
            return after
        swapped = 'song 2 "Two" becomes song 10\nsong 10 "Ten" becomes song 2\n'
        self.assertEqual(self.diff(self.show, renumbered(second, first)), swapped)
        shifted = renumbered("10", "11")
        shifted["songs"].insert(0, {**copy.deepcopy(shifted["songs"][0]), "songNumber": "2", "songName": "Prologue",
                                    "songLength": 1})
        self.assertEqual(self.diff(self.show, shifted),
                         'song 2 "Two" becomes song 10\nsong 2 "Prologue" is added\nsong 10 "Ten" becomes song 11\n')
        self.assertEqual(self.diff(self.show, renumbered("5", "10", name="Zwei")),
                         'song 2 "Two" becomes song 5\nsong 2:\n  name: "Two" becomes "Zwei"\n')
        self.assertEqual(self.diff(self.show, renumbered("2", "10", name="Zwei")),
                         'song 2:\n  name: "Two" becomes "Zwei"\n')

    def test_tells_the_fields_of_a_song(self):
        def change(song):
            song.update(songName="New\n", division=960, songLength=1)
            song["voices"][0]["name"] = "Harp"
            song["voices"].append({"trackNumber": 5, "name": "Oboe", "reserved": 0, "messages": []})
        self.assertEqual(self.changed(change), 'song 2:\n  name: "Two" becomes "New\\x0a"\n'
                         "  division: 480 becomes 960\n  length: 1920 becomes 1\n"
                         '  voice 1 "Piano": voice name: "Piano" becomes "Harp"\n  voice 5 "Oboe" is added\n')

    def test_tells_the_timeline(self):
        def change(song):
            timeline = song["timeline"]
            timeline["tempos"] = [{"time": 0, "microseconds": 400000}, {"time": 1920, "microseconds": 454545}]
            timeline["pageNumbers"] = [{"time": 1921, "page": 2}]
            timeline["keys"] = [{"time": 0, "key": -1, "mode": 1}]
            timeline["meters"][0]["time"] = 480
        self.assertEqual(self.changed(change),
                         "song 2:\n  tempo at bar 1 (tick 0): 500000 us (120 bpm) becomes 400000 us (150 bpm)\n"
                         "  tempo at bar 2 (tick 1920) is added: 454545 us (132 bpm)\n"
                         "  key at bar 1 (tick 0) is added: key -1 mode 1\n"
                         "  page number at bar 2 (tick 1921) is added: page 2\n"
                         "  meter at bar 1 (tick 0) moves to tick 480: 4/4 with 24 clocks and 8 32nds\n")

    def test_tells_that_a_bar_was_inserted(self):
        labels = [{"time": 1920 * i, "barNumber": str(i + 1), "tag": 0} for i in range(9)]
        self.show["songs"][0]["timeline"]["barsBeats"] = labels

        def insert(song):
            later = [{**label, "time": label["time"] + 1920} for label in labels[3:]]
            song["timeline"]["barsBeats"] = labels[:3] + [{"time": 5760, "barNumber": "3a", "tag": 0}] + later
        after = copy.deepcopy(self.show)
        insert(after["songs"][0])
        self.assertEqual(self.diff(self.show, after),
                         "song 2:\n  6 bar labels from bar 4 (tick 5760) to bar 9 (tick 15360) move 1920 ticks later\n"
                         '  bar label at bar 3a (tick 5760) is added: "3a"\n')
        self.assertEqual(self.diff(after, self.show),
                         'song 2:\n  bar label at bar 3a (tick 5760) is removed: "3a"\n'
                         "  6 bar labels from bar 4 (tick 7680) to bar 9 (tick 17280) move 1920 ticks earlier\n")

        def rename(song):  # More labels keep their times than the one at the end, which moves.
            song["timeline"]["barsBeats"][-1]["time"] += 1
        self.assertEqual(self.changed(rename), 'song 2:\n  bar label at bar 9 (tick 15360) moves to tick 15361: "9"\n')

    def test_tells_notes(self):
        def change(song):
            song["voices"][0]["messages"] = [[0, 144, 60, 90], [0, 192, 5, 0], [480, 128, 60, 0], [1920, 144, 62, 1],
                                             [1930, 128, 62, 0]]
        self.assertEqual(self.changed(change),
                         "song 2:\n"
                         '  voice 1 "Piano": note at bar 1 (tick 0): C4 (60) velocity 100 becomes C4 (60) velocity 90\n'
                         '  voice 1 "Piano": note at bar 2 (tick 1920) is added: '
                         "D4 (62) velocity 1 length 10 channel 1 release 0\n"
                         '  voice 1 "Piano": message at bar 1 (tick 0) is added: Program Change(channel 1, 5)\n')

    def test_tells_other_channels_and_another_order(self):
        def change(song):
            song["voices"][0]["messages"] = [[time, status + 1, *data] for time, status, *data in NOTE]
        self.assertEqual(self.changed(change),
                         "song 2:\n"
                         '  voice 1 "Piano": 2 message channels from bar 1 (tick 0): channel 1 becomes channel 2\n')
        self.show["songs"][0]["voices"][0]["messages"] = [[0, 176, 1, 1], [0, 176, 2, 2]]
        self.assertEqual(self.changed(lambda song: song["voices"][0]["messages"].reverse()),
                         'song 2:\n  voice 1 "Piano": the order of the messages changes\n')

    def test_tells_many_alike_in_one_line(self):
        notes = [[[480 * i, 144, 40 + i, 100], [480 * i + 240, 128, 40 + i, 0]] for i in range(10)]
        messages = self.show["songs"][0]["voices"][0]["messages"]
        messages[:] = sum(notes, [])
        prefix = 'song 2:\n  voice 1 "Piano": '
        several = " notes from bar 1 (tick 1440) to bar 2 (tick 4320) "

        def moved(song):
            song["voices"][0]["messages"] = sum(notes[:3], []) + [
                [time + 960, *data] for note in notes[3:] for time, *data in note]
        self.assertEqual(self.changed(moved), f"{prefix}7{several}move 960 ticks later\n")

        def fewer(song):
            song["voices"][0]["messages"] = messages[:6]
        self.assertEqual(self.changed(fewer), f"{prefix}7{several}are removed\n")

        def softer(song):
            song["voices"][0]["messages"] = messages[:6] + [[*rest, data // 2] for *rest, data in messages[6:]]
        self.assertEqual(self.changed(softer), f"{prefix}7{several[:-1]}: velocity 100 becomes 50\n")

        def notes_with(change):
            def apply(song):
                song["voices"][0]["messages"] = sum((change(i, copy.deepcopy(note)) if i > 2 else note
                                                     for i, note in enumerate(notes)), [])
            return self.changed(apply)

        def higher(_, note):
            return [[time, status, pitch + 2, data] for time, status, pitch, data in note]
        self.assertEqual(notes_with(higher), f"{prefix}7{several}are 2 semitones higher\n")

        def later_and_higher(_, note):
            return [[time + 7200, status, pitch + 2, data] for time, status, pitch, data in note]
        self.assertEqual(notes_with(later_and_higher),
                         f"{prefix}7{several}move 7200 ticks later and are 2 semitones higher\n")

        def higher_and_louder(_, note):
            on, off = higher(0, note)
            return [[*on[:3], 109], off]
        self.assertEqual(notes_with(higher_and_louder),
                         f"{prefix}7{several[:-1]}: pitch is 2 higher, velocity 100 becomes 109\n")

        def longer(i, note):
            return [[*note[0][:3], 60 + i], [note[1][0] + 10, *note[1][1:]]]
        self.assertEqual(notes_with(longer), f"{prefix}7{several[:-1]}: velocity changes, length 240 becomes 250\n")

        def louder(i, note):
            return [[*note[0][:3], 80 + i], note[1]]
        messages[1::2] = [list(message) for message in messages[1::2]]
        for i in range(10):
            messages[2 * i][3] = 70 + i
            notes[i][0] = messages[2 * i]
        self.assertEqual(notes_with(louder), f"{prefix}7{several[:-1]}: velocity is 10 higher\n")

    def test_says_that_very_many_notes_differ(self):
        messages = [[[480 * i, 144, 40 + i * i % 31, 100], [480 * i + 240, 128, 40 + i * i % 31, 0]] for i in range(200)]
        self.show["songs"][0]["voices"][0]["messages"] = sum(messages, [])

        def change(song):
            song["voices"][0]["messages"] = [
                [time + 1 + i * 7 % 97, *data] for i, note in enumerate(messages) for time, *data in note]
        self.assertIn('\n  voice 1 "Piano": many notes differ; those that moved far are told as removed and added\n',
                      self.changed(change))

    def test_tells_edits(self):
        before = self.log_document()
        after = copy.deepcopy(before)
        ten, two = after["songLogs"]
        ten["markers"][1]["text"] = "C"
        ten["attacca"] = 1
        ten["caesuras"] = []
        two["vamps"][0]["value"] = 3
        two["vamps"][1]["label"] = "x"
        self.assertEqual(self.diff(before, after),
                         'song 10:\n  attacca is added: 1\n  marker at tick 480: text "B" becomes "C"\n'
                         "  caesura at tick 240 is removed: second word 0\n"
                         "song 2:\n  vamp at tick 0: value 2 becomes 3\n"
                         '  vamp at tick 480: label "" becomes "x"\n')

    def test_tells_of_songs_that_only_one_log_has(self):
        before = self.log_document()
        after = copy.deepcopy(before)
        del after["songLogs"][0]
        self.assertEqual(self.diff(before, after), 'edits of song 10 "Ten" are removed\n')
        self.assertEqual(self.diff(after, before), 'edits of song 10 "Ten" are added\n')
        after = copy.deepcopy(before)
        after["songLogs"][0]["songNumber"] = "11"
        self.assertEqual(self.diff(before, after), 'edits of song 10 "Ten" become those of song 11\n')

    def test_takes_a_legacy_document_in_its_current_form(self):
        self.write_log("new.log", {**self.log_document(), "showName": "Other"})
        self.assertEqual(self.run_tool("diff", "old.log", "new.log", code=NEGATIVE).stdout.decode(),
                         'show name: "My Show" becomes "Other"\n')
        self.encrypt("two.showdata", legacy_show(legacy_song("2", "Two")))
        self.assertEqual(self.run_tool("diff", "two.showdata", "new.showdata", code=NEGATIVE).stdout.decode(),
                         'song 10 "Ten" is added\n')

    def test_compares_all_that_two_legacy_files_hold(self):
        legacy = json.loads(self.run_tool("dump", "old.showdata").stdout)
        after = copy.deepcopy(legacy)
        song = after["songs"][0]
        song["timeline"]["name"] = "x"
        song["timeline"]["tempos"][0]["bpm"] += 1
        song["events"][0][0] += 5
        said = self.diff(legacy, after)
        self.assertIn("  name of a timeline: ", said)
        self.assertIn(" bpm with a click of 8 of 8 32nds becomes ", said)
        self.assertIn("delta time at ", said)
        old = legacy_show(legacy_song("1", "One"))
        self.write("old", old)
        self.write("more", old + b"abc")
        self.assertEqual(self.run_tool("diff", "old", "more", code=NEGATIVE).stdout,
                         b"bytes after the last song: 0 becomes 3\n")
        self.write("other", old[:1] + b"x" + old[2:])  # the record length, which nothing needs
        self.assertRegex(self.run_tool("diff", "old", "other", code=NEGATIVE).stdout.decode(),
                         "^byte differences that no field shows: .. at byte 1 becomes 78\n$")
        self.write("two", legacy_show(legacy_song("1", "One"), legacy_song("2", "Two")))
        self.write("swapped", legacy_show(legacy_song("2", "Two"), legacy_song("1", "One")))
        self.assertIn(b"byte differences that no field shows: ", self.run_tool("diff", "two", "swapped", code=NEGATIVE).stdout)
        self.run_tool("diff", "two", "two")

    def test_compares_the_texts_of_dump(self):
        for name in ("old.showdata", "new.showdata", "old.log", "new.log"):
            self.run_tool("dump", name, "-o", "text", "--force")
            self.assertEqual(self.run_tool("diff", name, "text").stdout, b"")
            self.write("changed", self.read("text").replace(b"Two", b"Drei"))
            self.assertIn(b'  name: "Two" becomes "Drei"\n', self.run_tool("diff", "text", "changed", code=NEGATIVE).stdout)
        self.write("bad", self.read("text") + b"x")
        said = self.run_tool("diff", "text", "bad", code=BAD_INPUT).stderr.decode()
        self.assertRegex(said, r"^zuna-convert: bad: .*\(line \d+, column \d+\)")

    def test_cuts_long_song_numbers_in_json(self):
        numbers = ["x" * 64, "y" * 63 + "\u00e9", "z" * 9999]
        before = {**self.show, "songs": [{**self.show["songs"][0], "songNumber": number} for number in numbers]}
        after = {**before, "songs": [{**song, "division": 96} for song in before["songs"]]}
        line = json.loads(self.diff(before, after, NEGATIVE, "--json"))
        self.assertEqual([difference["song"] for difference in line["differences"]],
                         ["x" * 64, "y" * 63 + "...", "z" * 64 + "..."])

    def test_tells_a_failure_in_json(self):
        done = self.run_tool("diff", "--json", "new.log", "none", code=IO)
        line = json.loads(done.stdout)
        self.assertEqual((line["before"], line["after"], line["exitCode"], line["error"]["code"], line["error"]["file"]),
                         ("new.log", "none", IO, "not-found", "none"))
        self.assertNotIn("same", line)
        self.assertIn(b"zuna-convert: none: ", done.stderr)
        line = json.loads(self.run_tool("diff", "--json", "new.log", "new.showdata", code=BAD_INPUT).stdout)
        self.assertEqual(line["error"]["code"], "wrong-kind")
        self.assertEqual(self.run_tool("diff", "--json", "-", "-", code=USAGE).stdout, b"")

    def test_writes_json(self):
        after = copy.deepcopy(self.show)
        after["songs"][0]["voices"][0]["messages"] = [[time + 5, *data] for time, *data in NOTE]
        after["songs"][0]["timeline"]["tempos"][0]["microseconds"] = 400000
        printed = self.diff(self.show, after, NEGATIVE, "--json")
        self.assertEqual(printed.count("\n"), 1)
        place = {"song": "2", "index": 0, "tick": 0, "bar": "1", "count": 1}
        self.assertEqual(json.loads(printed), {
            "schemaVersion": 1, "before": "before", "after": "after", "same": False, "differences": [
                {"code": "tempo-changed", **place, "list": "tempos", "voice": None, "before": "500000 us (120 bpm)",
                 "after": "400000 us (150 bpm)", "afterTick": 0},
                {"code": "note-moved", **place, "list": "messages", "voice": 1, "before": "C4 (60)", "after": "C4 (60)",
                 "afterTick": 5}]})
        self.assertEqual(json.loads(self.diff(after, after, 0, "--json")), {
            "schemaVersion": 1, "before": "before", "after": "after", "same": True, "differences": []})

    def test_names_its_inputs_in_json(self):
        name = os.fsencode(self.path("")) + b"\xe9.showdata"
        os.link(self.path("new.showdata"), name)
        line = json.loads(self.run_tool("diff", "--json", "-", name, stdin=self.read("new.showdata")).stdout)
        self.assertEqual((line["before"], line["afterBytes"]), ("-", name.hex()))
        self.assertNotIn("beforeBytes", line)

    def test_reads_one_of_both_from_standard_input(self):
        self.run_tool("diff", "-", "old.showdata", stdin=self.read("new.showdata"))
        self.run_tool("diff", "new.showdata", "-", stdin=self.read("old.showdata"))
        self.refuse("diff", "-", "-", code=USAGE,
                    message="standard input: is given more than once; give a file for the others")

    def test_refuses_what_cannot_be_compared(self):
        self.refuse("diff", "new.showdata", "new.log", code=BAD_INPUT,
                    message="new.log: is a log of version 1.2 and new.showdata is a show of version 1.2; "
                    "give two shows or two logs")
        self.write("bad", "neither")
        self.assertIn("zuna-convert: bad: ", self.run_tool("diff", "new.log", "bad", code=BAD_INPUT).stderr.decode())
        self.assertEqual(without_codes(self.run_tool("diff", "none", "new.log", code=IO).stderr.decode()),
                         "zuna-convert: none: cannot be opened: No such file or directory; check the path\n")
        other = self.write_key("other.key", "key = 00\niv = 01\n")
        self.run_tool("diff", "new.log", "old.log", "--key-file", other, code=WRONG_KEY)


if __name__ == "__main__":
    unittest.main()
