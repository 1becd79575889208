"""Companions of legacy files: where they are looked for, and what is refused."""

import json
import os
import unittest

from folder import FolderTest
from tool import BAD_INPUT, IO, OR_RESCUE, PART_FAILED, REFUSED, USAGE, legacy_log, legacy_show, legacy_song_log


class CompanionTest(FolderTest):
    def test_finds_companions_in_another_folder(self):
        os.makedirs(self.path("logs/below"))
        os.rename(self.path("in/opera.logdata"), self.path("logs/opera.logdata"))
        os.rename(self.path("in/below/gala.logdata"), self.path("logs/below/gala.logdata"))
        self.run_tool("up", "in", "-r", "--companions", "logs", "--out-dir", "out")
        info = json.loads(self.run_tool("info", "--json", "out/below/gala.showdata").stdout)
        self.assertEqual(info["showName"], "Gala")

    def test_wants_a_folder_of_companions(self):
        self.refuse("up", "in", "--companions", "none", "--out-dir", "out", code=IO,
                    message="none: is not a folder; give a folder to --companions")

    def test_tells_of_a_companion_in_another_case(self):
        os.rename(self.path("in/opera.logdata"), self.path("in/Opera.LOGDATA"))
        os.rename(self.path("in/below/gala.logdata"), self.path("in/below/gala-2.logdata"))
        remedy = "give --companion or --companions, or --show-name NAME"
        os.symlink("missing", self.path("in/below/gala.logdata"))  # is no other name for itself
        said = self.said("up", "in/opera.showdata", "in/below/gala.showdata", "--out-dir", "out", code=PART_FAILED)
        self.assertEqual(said[1:], [
            "in/opera.showdata: needs its log, which has the name of the show, and in/opera.logdata is not there, but "
            f"in/Opera.LOGDATA is; {remedy}",
            "in/below/gala.showdata: needs its log, which has the name of the show, and in/below/gala.logdata is not there; "
            f"{remedy}"])

    def test_tells_of_a_companion_that_looks_the_same(self):
        os.rename(self.path("in/opera.showdata"), self.path("in/Cos\u00ec.showdata"))
        os.rename(self.path("in/opera.logdata"), self.path("in/Cosi\u0300.logdata"))
        self.assertEqual(self.said("up", "in/Cos\u00ec.showdata", "-o", "out", code=IO), [
            "in/Cos\u00ec.showdata: needs its log, which has the name of the show, and in/Cos\u00ec.logdata is not there, but "
            "in/Cosi\u0300.logdata is, in other characters; give --companion or --companions, or --show-name NAME"])

    def test_takes_names_in_upper_case(self):
        for kind in ("showdata", "logdata"):
            os.rename(self.path(f"in/opera.{kind}"), self.path(f"in/OPERA.{kind.upper()}"))
        self.assertEqual(self.said("up", "in", "--out-dir", "out")[-1], "2 files: 2 done, 0 failed")
        self.assertEqual(sorted(os.listdir(self.path("out"))), ["OPERA.LOGDATA", "OPERA.SHOWDATA"])

    def test_takes_a_name_for_shows_whose_logs_are_lost_only(self):
        os.remove(self.path("in/opera.logdata"))
        self.assertEqual(self.said("up", "in", "-r", "--out-dir", "out", "--show-name", "Tosca", "--division", "96")[1:3], [
            'in/below/gala.showdata: 1 song, 1 voice, 1 event, 0.0 -> 1.2, named "Gala" by its log, lossless',
            'in/opera.showdata: 2 songs, 2 voices, 2 events, 0.0 -> 1.2, named "Tosca", lossless'])
        self.assertIn('named "Tosca"', self.said("up", "in/below/gala.showdata", "-o", "one", "--show-name", "Tosca")[0])

    def test_tells_that_a_companion_was_changed_in_transfer(self):
        content = self.read("in/opera.logdata")
        self.write("in/opera.logdata", content.replace(b"\r\n", b"\n", 1))
        said = self.said("up", "in/opera.showdata", "-o", "out", code=BAD_INPUT)
        self.assertIn("companion in/opera.logdata: was changed", said[0])

    def test_takes_a_name_in_place_of_a_log(self):
        os.remove(self.path("in/opera.logdata"))
        self.assertEqual(self.said("up", "in/opera.showdata", "-o", "out", "--show-name", "Tosca"), [
            'in/opera.showdata: 2 songs, 2 voices, 2 events, 0.0 -> 1.2, named "Tosca", lossless'])

    def test_refuses_a_companion_that_does_not_belong(self):
        self.encrypt("in/opera.logdata", legacy_log(legacy_song_log("2", "Other")))
        message = ("in/opera.showdata: companion in/opera.logdata: belongs to another show: no song agrees in number "
                   "and name; give the right file, or --any-companion to take this one")
        self.refuse("up", "in/opera.showdata", "-o", "out", code=REFUSED, message=message)
        self.assertEqual(self.said("up", "in/opera.showdata", "-o", "out", "--any-companion")[0],
                         'in/opera.showdata: song 2 has another name in in/opera.logdata: "Two", there "Other"')

    def test_refuses_a_companion_of_zeros(self):
        zeros = "is not an encrypted file of this kind (offset 0); give an encrypted show or log file" + OR_RESCUE
        for name, other in (("opera.logdata", "opera.showdata"), ("opera.showdata", "opera.logdata")):
            content = self.read(f"in/{other}")
            self.write(f"in/{other}", bytes(len(content)))
            for options in ((), ("--any-companion",)):
                self.refuse("up", f"in/{name}", "-o", "out", *options, code=BAD_INPUT,
                            message=f"in/{name}: companion in/{other}: {zeros}")
            self.write(f"in/{other}", content)
        self.encrypt("zeros", bytes(6000))
        self.refuse("up", "zeros", "-o", "out", "--show-name", "X", code=BAD_INPUT,
                    message="zeros: is no show and no log of any version; give an undamaged file" + OR_RESCUE)

    def test_refuses_a_show_without_songs_for_a_log(self):
        self.encrypt("in/opera.showdata", legacy_show())
        self.refuse("up", "in/opera.logdata", "-o", "out", code=REFUSED,
                    message="in/opera.logdata: companion in/opera.showdata: has no songs; give the right file, or "
                            "--any-companion to take this one")
        self.run_tool("up", "in/opera.logdata", "-o", "out", "--any-companion")

    def test_gives_a_division_to_the_songs_that_a_show_lacks(self):
        self.encrypt("in/opera.showdata", legacy_show())
        run = ("up", "in", "--out-dir", "out", "--any-companion", "--report", "report")
        self.run_tool(*run)
        said = self.said(*run, "--force", "--division", "480")
        self.assertEqual(said[:2], [
            "in/opera.logdata: song 2 is not in in/opera.showdata; the division is 480",
            "in/opera.logdata: 1 song, 1 edit, 0.0 -> 1.2, divisions from in/opera.showdata, lossless"])
        song, = self.log_document("out/opera.logdata")["songLogs"]
        self.assertEqual(song["division"], 480)

    def test_names_songs_of_another_length(self):
        self.encrypt("in/opera.logdata", legacy_log(legacy_song_log("2", "Two").replace(b"\x80\x07", b"\x81\x07")))
        self.assertEqual(self.said("up", "in/opera.showdata", "-o", "out")[0],
                         "in/opera.showdata: song 2 has another length in in/opera.logdata: 1920 ticks, there 1921")

    def test_refuses_one_companion_for_many_inputs(self):
        self.refuse("up", "in", "--out-dir", "out", "--companion", "in/opera.logdata", code=USAGE,
                    message="command line: --companion is for one input, and there are 2; give --companions DIR")

    def test_looks_beside_the_inputs_as_well(self):
        os.makedirs(self.path("logs/below"))
        os.rename(self.path("in/below/gala.logdata"), self.path("logs/below/gala.logdata"))
        self.encrypt("logs/opera.logdata", legacy_log(legacy_song_log("2", "Two"), show_name="Rescued"))
        said = self.said("up", "in", "-r", "--companions", "logs", "--out-dir", "out")
        self.assertIn('in/opera.showdata: 2 songs, 2 voices, 2 events, 0.0 -> 1.2, named "Rescued" by its log, lossless', said)
        self.assertIn("in/opera.logdata: 1 song, 1 edit, 0.0 -> 1.2, divisions from in/opera.showdata, lossless", said)
        self.assertIn("3 files: 3 done, 0 failed", said)
        os.remove(self.path("in/opera.logdata"))
        os.remove(self.path("logs/opera.logdata"))
        self.refuse("up", "in/opera.showdata", "--companions", "logs", "-o", "one", code=IO,
                    message="in/opera.showdata: needs its log, which has the name of the show, and neither logs/opera.logdata nor "
                            "in/opera.logdata is there; give --companion or --companions, or --show-name NAME")

    def test_names_a_place_once(self):
        os.remove(self.path("in/opera.logdata"))
        for folder in ("in", "./in", self.path("in")):
            self.refuse("up", "in/opera.showdata", "--companions", folder, "-o", "out", code=IO,
                        message="in/opera.showdata: needs its log, which has the name of the show, and "
                                f"{folder}/opera.logdata is not there; give --companion or --companions, or --show-name NAME")

    def test_takes_companions_that_were_rescued_to_go_on(self):
        os.mkdir(self.path("rescued"))
        log = bytearray(self.read("in/opera.logdata"))
        log[-1] ^= 1  # of the last song
        self.write("in/opera.logdata", bytes(log))
        run = ("up", "in/opera.showdata", "in/below/gala.showdata", "--out-dir", "out", "--report", "report", "--resume")
        self.assertEqual(self.said(*run, code=PART_FAILED)[-2], "2 files: 1 done, 1 failed")
        self.run_tool("rescue", "in/opera.logdata", "-o", "rescued/opera.logdata", code=PART_FAILED)
        self.assertEqual(self.said(*run, "--companions", "rescued")[-1], "2 files: 1 done, 1 skipped, 0 failed")

    def test_tells_where_it_looked_for_many(self):
        os.makedirs(self.path("many"))
        os.mkdir(self.path("logs"))
        for kind, others in (("showdata", "its log, which has the name of the show, and there is no NAME.logdata"),
                             ("logdata", "its show, which has the divisions of the songs, and there is no NAME.showdata")):
            for name in ("many/0", "many/1", "many/2", "many/3"):
                self.write(f"{name}.{kind}", self.read(f"in/opera.{kind}"))
            names = ", ".join(f"many/{n}.{kind}" for n in range(4))
            option = "--show-name NAME" if kind == "showdata" else "--division TICKS"
            for options, places in (((), "beside it"), (("--companions", "logs"), "below logs or beside it")):
                self.assertEqual(self.said("up", "many", "--out-dir", "out", *options, code=PART_FAILED)[-1],
                                 f"4 files: needs {others} {places} ({names}); give --companion or --companions, or {option}")
            for name in range(4):
                os.remove(self.path(f"many/{name}.{kind}"))

    def test_tells_of_a_companion_in_another_case_on_the_way_down(self):
        self.run_tool("up", "in", "--out-dir", "new")
        note = ("new/opera.showdata: its log new/opera.logdata is not there, but new/Opera.LOGDATA is; give both files the same "
                "name")
        os.rename(self.path("new/opera.logdata"), self.path("new/Opera.LOGDATA"))
        self.assertEqual(self.said("down", "new/opera.showdata", "-o", "old", "--report", "report")[0], note)
        self.assertEqual(json.loads(self.read("report"))["notes"], [note.partition(": ")[2]])
        self.assertEqual(self.said("check", "new/opera.showdata", "--to", "0.0"), [note])
        self.assertEqual(self.said("check", "new/opera.showdata"), [])
        os.rename(self.path("new/opera.showdata"), self.path("new/Cos\u00ec.showdata"))
        os.rename(self.path("new/Opera.LOGDATA"), self.path("new/Cosi\u0300.logdata"))
        self.assertEqual(self.said("down", "new/Cosi\u0300.logdata", "-o", "log")[0],
                         "new/Cosi\u0300.logdata: its show new/Cosi\u0300.showdata is not there, but new/Cos\u00ec.showdata is, in "
                         "other characters; give both files the same name")


if __name__ == "__main__":
    unittest.main()
