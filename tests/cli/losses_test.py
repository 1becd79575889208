"""What commands say about the losses of conversions, and which they refuse."""

import json
import os
import unittest

from folder import FolderTest
from tool import REFUSED, legacy_log, legacy_show, legacy_song, legacy_song_log


class LossTest(FolderTest):
    def setUp(self):
        super().setUp()
        self.run_tool("up", "in", "--out-dir", "new")

    def damage(self):
        """Gives the logs a fermata, which format 0.0 does not hold."""
        for name in ("new/opera.logdata", "new/gala.logdata"):
            self.run_tool("convert", name, "-o", "text", "--to", "2.0", "--force")
            text = self.plaintext("text").replace(b'"fermatas": []', b'"fermatas": [{"start": 0, "end": 9, '
                                                  b'"label": "", "value": 2}, {"start": 9, "end": 9, "label": "", "value": 1}]')
            self.encrypt(name, text)

    def test_tells_losses_by_kind(self):
        self.run_tool("up", "in/below", "--out-dir", "new")
        self.damage()
        lost = "format 0.0 does not keep 2 fermatas (song {}: Fermata(0, 9, 2); copy-fermatas brings it back) [fermata-dropped]"
        harmful = [f"new/gala.logdata: {lost.format(1)}", f"new/opera.logdata: {lost.format(2)}"]
        totals = ["2 files: format 0.0 does not keep 4 fermatas [fermata-dropped]",
                  "2 files: format 0.0 does not keep 2 divisions (up takes this from the show) [division-dropped]",
                  "2 files: format 0.0 does not keep 2 show names (up takes this from the log) [show-name-dropped]"]
        said = self.run_tool("down", "new", "--out-dir", "1").stderr.decode().replace("zuna-convert: ", "").splitlines()
        self.assertEqual(said, [
            harmful[0], "new/gala.logdata: 1 song, 2 edits, 2.0 -> 0.0, without 1 division",
            "new/gala.showdata: 1 song, 1 voice, 1 event, 1.2 -> 0.0, without 1 show name",
            harmful[1], "new/opera.logdata: 1 song, 3 edits, 2.0 -> 0.0, without 1 division",
            "new/opera.showdata: 2 songs, 2 voices, 2 events, 1.2 -> 0.0, without 1 show name",
            "4 files: 4 done (4 with losses), 0 failed", *totals])
        said = self.run_tool("down", "new", "--out-dir", "2", "-q").stderr.decode().replace("zuna-convert: ", "").splitlines()
        self.assertEqual(said, harmful + totals)
        self.assertEqual(self.said("down", "new", "--out-dir", "3", "-qq"), [])

    def test_tells_the_losses_of_the_way_up(self):
        os.mkdir(self.path("odd"))
        for name in ("a", "b"):
            self.encrypt(f"odd/{name}.showdata", legacy_show(legacy_song("2", labels=((0, "Prologue"), (9, "Epilogue")))) + b"tail")
        said = self.run_tool("up", "odd", "--show-name", "X", "--out-dir", "out").stderr.decode().splitlines()
        self.assertEqual([line.removeprefix("zuna-convert: ") for line in said if "b.showdata" not in line], [
            'odd/a.showdata: song 2: the label at 0 is cut: "Prologue" becomes "Prologu" [bar-label-cut]',
            'odd/a.showdata: song 2: the label at 9 is cut: "Epilogue" becomes "Epilogu" [bar-label-cut]',
            'odd/a.showdata: 1 song, 1 voice, 1 event, 0.0 -> 1.2, named "X", without 4 bytes after the last song',
            "2 files: 2 done (2 with losses), 0 failed",
            "2 files: the current versions do not keep 4 whole bar labels [bar-label-cut]",
            "2 files: the current versions do not keep 8 bytes after the last song (the music is the same) "
            "[trailing-bytes-dropped]"])

    def test_counts_songs_without_a_division(self):
        for folder in ("lack", "shows"):
            os.mkdir(self.path(folder))
        for name in ("a", "b"):
            self.encrypt(f"lack/{name}.logdata", legacy_log(*(legacy_song_log(str(n), str(n)) for n in (1, 2, 3))))
            self.encrypt(f"shows/{name}.showdata", legacy_show(legacy_song("1", "1")))
        run = ("up", "lack", "--companions", "shows", "--out-dir", "out")
        self.assertEqual(self.said(*run)[-2:], ["2 files: 2 done (2 with losses), 0 failed", "2 files: 4 songs without a division"])
        said = self.said(*run, "--force", "--division", "96")
        self.assertEqual(said[0], "lack/a.logdata: songs 2, 3 are not in shows/a.showdata; the division is 96")
        self.assertEqual(said[-1], "2 files: 2 done, 0 failed")

    def test_tells_every_loss_of_a_single_file(self):
        self.assertEqual(self.said("down", "new/opera.showdata", "-o", "out"), [
            'new/opera.showdata: format 0.0 does not keep 1 show name ("My Show"; up takes it from the log)',
            "new/opera.showdata: 2 songs, 2 voices, 2 events, 1.2 -> 0.0"])

    def test_tells_that_no_companion_has_what_is_lost(self):
        loss = 'new/opera.showdata: format 0.0 does not keep 1 show name ("My Show"; no log beside it has this)'
        run = ("down", "new/opera.showdata", "-o", "out", "--fail-on", "loss")
        self.run_tool(*run)
        document = json.loads(self.run_tool("dump", "new/opera.logdata").stdout)
        document["showName"] = "Another"
        self.run_tool("build", "-", "-o", "new/opera.logdata", "--force", stdin=json.dumps(document).encode())
        self.run_tool(*run, "--force", code=REFUSED)
        self.write("new/opera.logdata", "bad")
        self.run_tool(*run, "--force", code=REFUSED)
        os.remove(self.path("new/opera.logdata"))
        self.run_tool(*run, "--force", code=REFUSED)
        self.assertEqual(self.said("down", "new/opera.showdata", "-o", "1")[0], loss)
        self.assertEqual(self.said("down", "new", "--out-dir", "2"), [
            loss, "new/opera.showdata: 2 songs, 2 voices, 2 events, 1.2 -> 0.0"])

    def test_tells_that_no_show_has_the_divisions_that_are_lost(self):
        run = ("down", "new/opera.logdata", "-o", "out", "--fail-on", "loss")
        self.run_tool(*run)
        document = json.loads(self.run_tool("dump", "new/opera.showdata").stdout)
        document["songs"][0]["division"] = 96
        self.run_tool("build", "-", "-o", "new/opera.showdata", "--force", stdin=json.dumps(document).encode())
        self.run_tool(*run, "--force", code=REFUSED)
        self.assertIn("no show beside it has this", self.said("down", "new/opera.logdata", "-o", "1")[0])

    def test_writes_a_current_file_as_it_is(self):
        self.encrypt("odd.showdata", legacy_show(legacy_song()) + b"tail")
        self.run_tool("down", "odd.showdata", "-o", "out")
        self.assertEqual(self.read("out"), self.read("odd.showdata"))

    def test_refuses_losses_where_asked(self):
        self.refuse("down", "new/opera.showdata", "-o", "out", "--fail-on", "any-loss", code=REFUSED,
                    message="new/opera.showdata: would not be lossless: 1 show name; give --accept "
                            "show-name-dropped to let it go, or leave out --fail-on")
        self.run_tool("down", "new", "--out-dir", "out", "--fail-on", "any-loss", "--accept",
                      "show-name-dropped,division-dropped")
        self.assertEqual(self.written("out"), ["out/opera.logdata", "out/opera.showdata"])

    def test_refuses_only_losses_that_matter_where_asked(self):
        self.run_tool("down", "new", "--out-dir", "out", "--fail-on", "loss")
        self.assertEqual(self.written("out"), ["out/opera.logdata", "out/opera.showdata"])
        self.encrypt("odd.showdata", legacy_show(legacy_song(labels=((0, "Epilogue"),))) + b"tail")
        self.refuse("up", "odd.showdata", "-o", "other", "--show-name", "X", "--fail-on", "loss", code=REFUSED,
                    message="odd.showdata: would not be lossless: 1 whole bar label; give --accept bar-label-cut to let it go, or leave "
                            "out --fail-on")
        self.refuse("up", "odd.showdata", "-o", "other", "--show-name", "X", "--fail-on", "any-loss", code=REFUSED,
                    message="odd.showdata: would not be lossless: 1 whole bar label, 4 bytes after the last song; give --accept "
                            "bar-label-cut,trailing-bytes-dropped to let it go, or leave out --fail-on")


if __name__ == "__main__":
    unittest.main()
