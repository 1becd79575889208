"""Conversions that go on after a report: what is done again, and what is told of work that is finished."""

import hashlib
import json
import os
import re
import shutil
import signal
import subprocess
import time
import unittest

from folder import FolderTest
from tool import IO, PART_FAILED, REFUSED, TOOL, legacy_log, legacy_show, legacy_song, legacy_song_log


class CompanionOptionsTest(FolderTest):
    """Options about companions are for what is left."""

    RUN = ("up", "in", "-r", "--out-dir", "out", "--report", "report", "--resume")
    PASSED = "4 files: 0 done, 4 skipped, 0 failed"

    def test_does_nothing_again_for_other_options(self):
        self.run_tool(*self.RUN)
        before = self.files()
        os.mkdir(self.path("none"))
        for options in (("--division", "96"), ("--any-companion",), ("--show-name", "X"), ("--companions", "none")):
            self.assertEqual(self.said(*self.RUN, *options)[-1], self.PASSED, options)
        self.assertEqual(self.files(), before)

    def test_leaves_what_was_done_with_an_option(self):
        self.encrypt("in/opera.showdata", legacy_show())
        os.remove(self.path("in/below/gala.logdata"))
        options = ("--any-companion", "--division", "480", "--show-name", "Tosca")
        self.run_tool(*self.RUN, *options)
        self.assertEqual(self.said(*self.RUN)[-1], "3 files: 0 done, 3 skipped, 0 failed")
        self.assertEqual([json.loads(line)["options"] for line in self.read("report").splitlines()], [
            "up --to 1.2 --show-name Tosca", "up --to 1.2 --any-companion --division 480",
            "up --to 1.2"])

    def test_looks_at_the_companion_that_was_read(self):
        run = ("up", "in/opera.showdata", "--out-dir", "out", "--report", "report", "--resume")
        for folder in ("logs", "a \\ \"b\" \u200b\U000e0041\x01"):
            os.mkdir(self.path(folder))
            os.rename(self.path("in/opera.logdata"), self.path(f"{folder}/opera.logdata"))
            self.run_tool(*run, "--companions", folder)
            self.assertEqual(self.said(*run), ["in/opera.showdata: is finished, as the report says"])
            self.encrypt(f"{folder}/opera.logdata", legacy_log(legacy_song_log("2", "Two"), show_name="Other"))
            self.run_tool(*run, code=IO)  # The companion has changed, and is not beside the show.
            self.assertIn('named "Other"', self.said(*run, "--companions", folder)[0])
            self.encrypt("in/opera.logdata", legacy_log(legacy_song_log("2", "Two")))
            os.remove(self.path("report"))
            os.remove(self.path("out/opera.showdata"))

    def test_takes_another_companion_that_is_named(self):
        run = ("up", "in/opera.showdata", "-o", "out", "--report", "report", "--resume")
        finished = ["in/opera.showdata: is finished, as the report says"]
        for name in ("A", "B"):
            self.encrypt(f"{name}.logdata", legacy_log(legacy_song_log("2", "Two"), show_name=name))
        self.run_tool(*run, "--companion", "A.logdata")
        self.assertEqual(self.said(*run, "--companion", "A.logdata"), finished)
        self.assertEqual(self.said(*run), finished)  # The one beside it was not named.
        self.assertIn('named "B" by its log', self.said(*run, "--companion", "B.logdata")[0])
        self.assertEqual(self.said(*run, "--companion", "B.logdata"), finished)
        os.rename(self.path("B.logdata"), self.path("in/B.logdata"))
        self.assertEqual(self.said(*run, "--companion", "in/B.logdata"), finished)
        self.run_tool(*run, "--companion", "B.logdata", code=IO)

    def test_takes_a_companion_that_is_named_in_place_of_an_option(self):
        run = ("up", "in/opera.showdata", "-o", "out", "--report", "report", "--resume")
        self.run_tool(*run, "--show-name", "X")
        self.assertIn('named "My Show" by its log', self.said(*run, "--companion", "in/opera.logdata")[0])
        self.assertEqual(self.said(*run, "--show-name", "X"), ["in/opera.showdata: is finished, as the report says"])

    def test_needs_no_companion_for_a_current_file(self):
        run = ("up", "new.showdata", "--to", "2.0", "-o", "out", "--report", "report", "--resume")
        for _ in range(2):
            said = self.said(*run, "--companion", "in/opera.logdata")
        self.assertEqual(said, ["new.showdata: is finished, as the report says"])

    def test_knows_a_companion_whose_name_is_no_utf8(self):
        folder = os.path.join(os.fsencode(self.folder), b"in")
        for kind in (b"showdata", b"logdata"):
            os.rename(os.path.join(folder, b"opera." + kind), os.path.join(folder, b"\xff." + kind))
        self.run_tool(*self.RUN)
        self.assertEqual(self.said(*self.RUN)[-1], self.PASSED)
        log = os.path.join(folder, b"\xff.logdata")
        self.encrypt("log", legacy_log(legacy_song_log("2", "Two"), show_name="Other"))
        os.rename(self.path("log"), log)
        self.assertEqual(self.said(*self.RUN)[-1], "4 files: 2 done, 2 skipped, 0 failed")

    def test_knows_companions_from_another_folder(self):
        self.run_tool(*self.RUN)
        run = ("up", "../in", "-r", "--out-dir", "../out", "--report", "../report", "--resume")
        folder = self.path("elsewhere")
        os.mkdir(folder)
        done = subprocess.run([TOOL, *run], cwd=folder, env=self.environment, stderr=subprocess.PIPE, check=True)
        self.assertIn(self.PASSED, done.stderr.decode())

    def test_digests_the_companion_that_was_read(self):
        run = ("up", "in/opera.showdata", "-o", "out", "--report", "report")
        log = self.read("in/opera.logdata")
        os.remove(self.path("in/opera.logdata"))
        self.run_tool(*run, "--companion", "-", stdin=log)
        line = json.loads(self.read("report"))
        self.assertEqual((line["companion"], line["companionDigest"]), ("-", hashlib.sha256(log).hexdigest()))
        self.run_tool(*run, "--resume", "--companion", "-", stdin=log)  # replaces what it has written
        self.assertEqual([json.loads(line)["status"] for line in self.read("report").splitlines()], ["done", "done"])

    def test_has_no_digest_of_a_companion_where_the_file_failed(self):
        self.encrypt("in/opera.showdata", legacy_show(legacy_song("2", "Two", labels=((0, "Prologue"),))))
        self.run_tool("up", "in/opera.showdata", "-o", "out", "--report", "report", "--fail-on", "loss", code=REFUSED)
        self.assertIsNone(json.loads(self.read("report"))["companionDigest"])


class EarlierLossesTest(FolderTest):
    """A run that was interrupted and resumed tells the losses of a single run."""

    def setUp(self):
        super().setUp()
        os.mkdir(self.path("odd"))
        for name in ("a", "b", "c"):
            self.encrypt(f"odd/{name}.showdata", legacy_show(legacy_song("2", labels=((0, "Prologue"),))) + b"tail")
        self.encrypt("odd/d.showdata", legacy_show(legacy_song("2")))

    def interrupted(self, *arguments, code):
        """Makes the folder "out" and the report as a run that was killed after two files leaves them; what a whole run said."""
        said = self.said(*arguments, code=code)
        lines = self.read("report").splitlines(keepends=True)
        self.write("report", b"".join(lines[:2]) + lines[2][:99])
        return said

    def test_tells_the_same_losses_with_the_same_exit_code(self):
        for policy, code, done, after, lost in (
                ((), 0, "4 done (3 with losses), 0 failed", "2 done (1 with losses), 2 skipped (2 with losses), 0 failed", 3),
                (("--fail-on", "loss"), PART_FAILED, "1 done, 3 failed", "1 done, 3 failed", 0),
                (("--fail-on", "loss", "--accept", "bar-label-cut"), 0, "4 done (3 with losses), 0 failed",
                 "2 done (1 with losses), 2 skipped (2 with losses), 0 failed", 3)):
            run = ("up", "odd", "--out-dir", "out", "--show-name", "X", "--report", "report", "--resume", *policy)
            whole = self.interrupted(*run, code=code)
            self.assertIn(f"4 files: {done}", whole)
            if lost:
                for name in ("c", "d"):
                    os.remove(self.path(f"out/{name}.showdata"))
            resumed = self.said(*run, code=code)
            self.assertIn(f"4 files: {after}", resumed)
            end = whole.index(f"4 files: {done}") + 1
            self.assertEqual(resumed[resumed.index(f"4 files: {after}") + 1:], whole[end:])
            self.assertEqual(sum("the current versions do not keep 3 whole bar labels" in line for line in resumed), lost // 3)
            for name in self.written("out") + ["report"]:
                os.remove(self.path(name))

    def test_ends_as_a_single_run_after_a_kill(self):
        content = self.read("odd/a.showdata")
        for number in range(400):
            self.write(f"odd/{number}.showdata", content)
        self.write("odd/bad.showdata", "bad")
        run = ("up", "odd", "--show-name", "X", "-j", "2")
        whole = self.said(*run, "--out-dir", "whole", code=PART_FAILED)
        run = (*run, "--out-dir", "out", "--report", "report", "--resume")
        with subprocess.Popen([TOOL, *run], cwd=self.folder, env=self.environment, stderr=subprocess.DEVNULL) as process:
            while not os.path.exists(self.path("report")) or not self.read("report"):
                time.sleep(0.01)
            process.kill()
        self.assertLess(len(self.written("out")), 403)
        resumed = self.said(*run, code=PART_FAILED)
        self.assertEqual(resumed[-3:], whole[-3:])
        self.assertEqual(whole[-3], "403 files: the current versions do not keep 403 whole bar labels")
        counts = re.fullmatch(r"405 files: (\d+) done \((\d+) with losses\), (\d+) skipped \((\d+) with losses\), 1 failed", resumed[-4])
        done, lossy, skipped, lossy_skipped = map(int, counts.groups())
        self.assertEqual((done + skipped, lossy + lossy_skipped), (404, 403))
        self.assertEqual([self.read(name) for name in self.written("out")], [self.read(name) for name in self.written("whole")])

    def test_tells_what_was_lost_in_place(self):
        run = ("up", "odd", "--in-place", "--show-name", "X", "--report", "report", "--resume")
        whole = self.said(*run)
        self.assertEqual(self.said(*run), [f"odd/{name}.showdata: is of version 1.2 already" for name in "abcd"] + [
            "4 files: 0 done, 4 already current (3 with losses), 0 failed", *whole[-2:]])
        begun = [line for line in self.read("report").splitlines(keepends=True) if b'"begun"' in line]
        self.write("report", b"".join(begun))  # as if it were killed before the other lines
        self.assertEqual(self.said(*run)[-3:], ["4 files: 0 done, 4 already current (3 with losses), 0 failed", *whole[-2:]])

    def test_does_not_tell_what_another_command_lost(self):
        self.run_tool("up", "odd", "--in-place", "--show-name", "X", "--report", "report")
        lines = self.read("report").splitlines(keepends=True)
        run = ("convert", "odd", "--in-place", "--to", "1.2", "--report", "report", "--resume")
        said = [f"odd/{name}.showdata: is of version 1.2 already" for name in "abcd"] + [
            "4 files: 0 done, 4 already current, 0 failed"]
        self.assertEqual(self.said(*run), said)
        self.assertEqual(self.read("report").splitlines(keepends=True), lines)
        self.write("report", b"".join(line for line in lines if b'"begun"' in line))
        self.assertEqual(self.said(*run), said)
        self.assertEqual({json.loads(line)["options"] for line in self.read("report").splitlines()},
                         {"up --to 1.2 --show-name X"})

    def test_tells_what_was_lost_in_place_under_another_spelling(self):
        run = ("--in-place", "--show-name", "X", "--report", "report", "--resume")
        whole = self.said("up", "odd", *run)
        begun = [line for line in self.read("report").splitlines(keepends=True) if b'"begun"' in line]
        self.write("report", b"".join(begun))  # as if it were killed before the other lines
        self.assertEqual(self.said("up", "./odd", *run)[-3:], [
            "4 files: 0 done, 4 already current (3 with losses), 0 failed", *whole[-2:]])

    def test_tells_what_was_lost_in_place_after_a_run_that_does_not_resume(self):
        run = ("up", "odd", "--in-place", "--show-name", "X", "--report", "report")
        whole = self.said(*run)
        self.run_tool(*run)  # finds all of them current
        self.assertEqual(self.said(*run, "--resume")[-3:], [
            "4 files: 0 done, 4 already current (3 with losses), 0 failed", *whole[-2:]])

    def test_counts_what_another_policy_would_let_through_as_finished(self):
        run = ("up", "odd", "--out-dir", "out", "--show-name", "X", "--report", "report", "--resume")
        self.run_tool(*run)
        before = self.files()
        for policy in (("--fail-on", "any-loss", "--accept", "bar-label-cut,trailing-bytes-dropped"), ()):
            self.assertIn("4 files: 0 done, 4 skipped (3 with losses), 0 failed", self.said(*run, *policy))
            self.assertEqual(self.files(), before)
        for policy in (("--fail-on", "loss"), ("--fail-on", "any-loss", "--accept", "trailing-bytes-dropped")):
            said = self.said(*run, *policy, code=PART_FAILED)
            self.assertEqual(said[0], "4 files: 0 done, 1 skipped, 3 failed")
            self.assertTrue(said[-1].startswith("odd/c.showdata: would not be lossless: 1 whole bar label; "), said)
        self.assertEqual([self.read(name) for name in self.written("out")], [before[name] for name in self.written("out")])
        self.assertIn("4 files: 0 done, 4 skipped (3 with losses), 0 failed", self.said(*run))

    def test_passes_over_finished_files_as_such_before_existing_ones(self):
        run = ("up", "odd", "--out-dir", "out", "--show-name", "X", "--report", "report", "--resume", "--skip-existing")
        os.mkdir(self.path("out"))
        self.write("out/b.showdata", "of another program")
        whole = self.said(*run)
        self.assertIn("4 files: 3 done (2 with losses), 1 skipped, 0 failed", whole)
        report = self.read("report").splitlines()
        said = self.said(*run)
        self.assertEqual(said, ["out/b.showdata: exists and is passed over",
                                "4 files: 0 done, 4 skipped (2 with losses), 0 failed", *whole[-2:]])
        self.assertEqual(self.read("report").splitlines()[:len(report)], report)
        self.assertEqual([json.loads(line)["path"] for line in self.read("report").splitlines()[len(report):]], ["odd/b.showdata"])

    def test_judges_finished_files_before_it_passes_over_existing_ones(self):
        run = ("up", "odd", "--out-dir", "out", "--show-name", "X", "--report", "report", "--resume", "--skip-existing")
        self.run_tool(*run)
        before = self.files()
        said = self.said(*run, "--fail-on", "loss", code=PART_FAILED)
        self.assertEqual(said[0], "4 files: 0 done, 1 skipped, 3 failed")
        self.assertEqual([json.loads(line)["status"] for line in self.read("report").splitlines()[4:]], ["failed"] * 3)
        self.assertIn("4 files: 0 done, 4 skipped (3 with losses), 0 failed", self.said(*run))
        self.assertEqual([self.read(name) for name in self.written("out")], [before[name] for name in self.written("out")])

    def test_looks_at_no_input_whose_output_exists_and_is_not_of_the_report(self):
        run = ("up", "odd/a.showdata", "-o", "out", "--show-name", "X", "--report", "report", "--resume", "--skip-existing")
        self.run_tool(*run)
        self.write("odd/a.showdata", "bad")
        self.assertEqual(self.said(*run), ["out: exists and is passed over"])

    def test_tells_the_losses_of_the_way_down(self):
        self.run_tool("up", "in", "--out-dir", "new")
        run = ("down", "new", "--out-dir", "old", "--report", "report", "--resume")
        whole = self.said(*run)
        said = self.said(*run)
        self.assertEqual(said, ["2 files: 0 done, 2 skipped (2 with losses), 0 failed", *whole[-2:]])
        self.assertEqual(whole[-2:], ["1 file: format 0.0 does not keep 1 division (up takes this from the show)",
                                      "1 file: format 0.0 does not keep 1 show name (up takes this from the log)"])

    def test_tells_the_losses_of_a_single_file(self):
        run = ("up", "odd/a.showdata", "-o", "out", "--show-name", "X", "--report", "report", "--resume")
        self.run_tool(*run)
        self.assertEqual(self.said(*run), [
            "odd/a.showdata: is finished, as the report says",
            "odd/a.showdata: the current versions do not keep 1 whole bar label",
            "odd/a.showdata: the current versions do not keep 4 bytes after the last song (the music is the same)"])
        self.run_tool(*run, "--fail-on", "loss", code=REFUSED)

    def test_has_the_kinds_of_losses_in_the_report(self):
        self.run_tool("up", "odd/a.showdata", "-o", "out", "--show-name", "X", "--report", "report")
        self.assertEqual(json.loads(self.read("report"))["lossKinds"], [
            {"code": "bar-label-cut", "count": 1, "harmless": False},
            {"code": "trailing-bytes-dropped", "count": 4, "harmless": True}])


class KilledInPlaceTest(FolderTest):
    """A file that a killed run has replaced, with its first line in the report and without its last one."""

    def killed(self):
        """Kills a run that works on a long show, and has replaced the short one after it, whose line waits for its turn."""
        long = legacy_show(*(legacy_song(str(i), tracks=[(track, "") for track in range(250)]) for i in range(255)))
        self.encrypt("long", long)
        short = legacy_show(legacy_song("2", labels=((0, "Prologue"),)))
        for _ in range(50):
            os.makedirs(self.path("pair"))
            self.write("pair/a.showdata", self.read("long"))
            self.encrypt("pair/b.showdata", short)
            before = self.read("pair/b.showdata")
            run = [TOOL, "up", "pair", "--in-place", "--show-name", "X", "-j", "2", "--report", "report"]
            with subprocess.Popen(run, cwd=self.folder, env=self.environment, stderr=subprocess.DEVNULL) as process:
                while self.read("pair/b.showdata") == before and process.poll() is None:
                    time.sleep(0.0005)
                process.send_signal(signal.SIGKILL)
            lines = self.read("report").splitlines() if os.path.exists(self.path("report")) else []
            told = [(json.loads(line)["path"], json.loads(line)["status"]) for line in lines]
            if ("pair/b.showdata", "begun") in told and ("pair/b.showdata", "done") not in told:
                return
            shutil.rmtree(self.path("pair"))
            os.remove(self.path("report"))
        self.fail("the tool was never caught at work")

    def test_is_known_from_another_working_folder(self):
        self.killed()
        folder = self.path("elsewhere")
        os.mkdir(folder)
        for lossy in ("1 already current (1 with losses)", "2 already current (1 with losses)"):
            run = [TOOL, "up", "../pair", "--in-place", "--show-name", "X", "--report", "../report", "--resume"]
            done = subprocess.run(run, cwd=folder, env=self.environment, stderr=subprocess.PIPE, check=True)
            self.assertIn(lossy, done.stderr.decode())
        begun, last = ([line for line in map(json.loads, self.read("report").splitlines())
                        if line["path"] == "pair/b.showdata" and line["status"] == status] for status in ("begun", "done"))
        self.assertEqual((len(begun), len(last)), (1, 1))
        self.assertEqual(last[0], {**begun[0], "status": "done"})
        self.assertEqual(last[0]["backup"], "pair/b.showdata.~1~")
        self.assertEqual(sorted(os.listdir(self.path("pair"))), [
            "a.showdata", "a.showdata.~1~", "b.showdata", "b.showdata.~1~"])


if __name__ == "__main__":
    unittest.main()
