"""What --resume takes for finished, and what it does again."""

import json
import os
import unittest

from folder import FolderTest
from tool import IO, PART_FAILED, USAGE, legacy_log, legacy_show, legacy_song, legacy_song_log


class FinishedWorkTest(FolderTest):
    def resume(self, *arguments, **options):
        return self.said("up", "in", "-r", "--out-dir", "out", "--report", "report", "--resume", *arguments, **options)

    def test_is_resumed_without_doing_anything_twice(self):
        self.write("in/bad.showdata", "bad")
        self.run_tool("up", "in", "-r", "--out-dir", "out", "--report", "report", code=PART_FAILED)
        before = self.files()
        self.assertEqual(self.resume(code=PART_FAILED)[-2], "5 files: 0 done, 4 skipped, 1 failed")
        after = self.files()
        self.assertEqual({name: after[name] for name in before if name != "report"},
                         {name: before[name] for name in before if name != "report"})
        self.assertEqual(len(self.lines()), 6)  # the failure again, and nothing else

    def test_knows_a_folder_by_every_spelling(self):
        run = ("up", "-r", "--report", "report", "--resume")
        self.run_tool(*run, "in", "--out-dir", "out")
        for folder in ("./in", "in/", "in/../in//", self.path("in")):
            for output in ("out/", self.path("out")):
                self.assertEqual(self.said(*run, folder, "--out-dir", output)[-1], "4 files: 0 done, 4 skipped, 0 failed")
        self.assertEqual(len(self.lines()), 4)
        self.encrypt("in/below/gala.showdata", legacy_show(legacy_song("1", "One", tracks=((1, "Organ"),))))
        self.assertEqual(self.said(*run, "./in", "--out-dir", "./out")[-1], "4 files: 2 done, 2 skipped, 0 failed")

    def test_does_again_what_has_changed(self):
        self.run_tool("up", "in", "-r", "--out-dir", "out", "--report", "report")
        os.remove(self.path("out/below/gala.showdata"))
        self.encrypt("in/opera.logdata", legacy_log(legacy_song_log("2", "Two"), show_name="New"))
        os.remove(self.path("out/opera.logdata"))
        os.remove(self.path("out/opera.showdata"))
        self.assertEqual(self.resume()[-1], "4 files: 3 done, 1 skipped, 0 failed")

    def test_replaces_what_it_wrote_for_an_older_input(self):
        self.run_tool("up", "in", "-r", "--out-dir", "out", "--report", "report")
        old = self.read("out/below/gala.showdata")
        self.encrypt("in/below/gala.showdata", legacy_show(legacy_song("1", "One", tracks=((1, "Organ"),))))
        before = self.files()
        self.assertEqual(self.resume("-n")[-1], "4 files: 2 would be done, 2 skipped, 0 failed")
        self.assertEqual({name: content for name, content in self.files().items() if name != "report"},
                         {name: content for name, content in before.items() if name != "report"})
        self.assertEqual(self.resume()[-1], "4 files: 2 done, 2 skipped, 0 failed")  # the show, and the log again
        self.assertNotEqual(self.read("out/below/gala.showdata"), old)
        self.assertEqual(self.resume()[-1], "4 files: 0 done, 4 skipped, 0 failed")

    def test_replaces_nothing_that_it_did_not_write(self):
        self.run_tool("up", "in", "-r", "--out-dir", "out", "--report", "report")
        self.encrypt("in/below/gala.showdata", legacy_show(legacy_song("1", "One", tracks=((1, "Organ"),))))
        for content in (b"another", self.read("out/opera.showdata")):
            self.write("out/below/gala.showdata", content)
            self.assertEqual(self.resume(code=PART_FAILED)[-1],
                             "out/below/gala.showdata: exists, and is not what the report says was written for "
                             "in/below/gala.showdata; give --force to replace it, or --skip-existing to pass over it")
            self.assertEqual(self.read("out/below/gala.showdata"), content)

    def test_knows_what_was_written_and_not_reported(self):
        self.run_tool("up", "in", "-r", "--out-dir", "out", "--report", "report")
        lines = self.read("report").splitlines(keepends=True)
        self.write("report", b"".join(lines[:2]) + lines[2][:100])
        self.assertEqual(self.resume()[-1], "4 files: 2 done, 2 skipped, 0 failed")
        self.write("out/opera.logdata", "another")
        self.write("report", b"")
        self.assertEqual(self.resume(code=PART_FAILED)[-1],
                         "out/opera.logdata: exists, and is not what the report says was written for in/opera.logdata; "
                         "give --force to replace it, or --skip-existing to pass over it")

    def test_does_again_what_is_not_there_as_it_was_written(self):
        self.run_tool("up", "in", "-r", "--out-dir", "out", "--report", "report")
        self.write("out/opera.logdata", "")
        self.assertEqual(self.resume(code=PART_FAILED)[-1],
                         "out/opera.logdata: exists, and is not what the report says was written for in/opera.logdata; "
                         "give --force to replace it, or --skip-existing to pass over it")
        self.run_tool("up", "in", "--in-place", "--report", "place")
        os.rename(self.path("in/opera.showdata.~1~"), self.path("in/opera.showdata"))
        said = self.said("up", "in", "--in-place", "--report", "place", "--resume")
        self.assertEqual(said[-1], "2 files: 1 done, 1 already current, 0 failed")

    def test_takes_nothing_for_finished_that_was_not_written(self):
        self.run_tool("up", "in", "--in-place", "-n", "--report", "report")
        self.assertNotIn(b"finished", self.read("report"))
        said = self.said("up", "in", "--in-place", "--report", "report", "--resume")
        self.assertEqual(said[-1], "2 files: 2 done, 0 failed")

    def test_keeps_the_line_of_finished_work_as_the_last_one(self):
        run = ("up", "in", "--in-place", "--report", "report")
        self.run_tool(*run)
        before = self.read("report")
        self.assertEqual(self.said(*run, "--resume")[-1], "2 files: 0 done, 2 already current, 0 failed")
        self.assertEqual(self.read("report"), before)

    def test_says_again_what_is_finished_after_a_failure(self):
        run = ("up", "in", "--out-dir", "out", "--report", "report", "--resume")
        self.run_tool(*run)
        os.rename(self.path("in/opera.logdata"), self.path("log"))
        self.run_tool(*run, code=IO)
        self.assertEqual(self.lines()[-1]["status"], "failed")
        os.rename(self.path("log"), self.path("in/opera.logdata"))
        self.run_tool(*run)
        self.assertEqual([(line["path"], line["status"]) for line in self.lines()[-1:]], [("in/opera.showdata", "skipped")])
        count = len(self.lines())
        self.run_tool(*run)
        self.assertEqual(len(self.lines()), count)

    def test_goes_on_with_a_name_for_lost_companions(self):
        os.remove(self.path("in/opera.logdata"))
        run = ("up", "in", "-r", "--out-dir", "out", "--report", "report", "--resume")
        self.run_tool(*run, code=PART_FAILED)
        self.assertEqual(self.said(*run, "--show-name", "Tosca")[-1], "3 files: 1 done, 2 skipped, 0 failed")

    def test_goes_on_with_what_a_killed_run_has_replaced(self):
        run = ("up", "in", "--in-place", "--report", "report")
        self.run_tool(*run)
        done = [line for line in self.lines() if line["status"] == "done"]
        with open(self.path("report"), encoding="utf-8") as file:
            begun = [line for line in file if json.loads(line)["status"] == "begun"]
        self.write("report", "".join(begun).encode())  # as if it were killed before the lines that follow
        self.run_tool(*run, "--resume")
        self.assertEqual(self.lines()[len(begun):], sorted(done, key=lambda line: line["path"]))
        self.assertEqual({line["status"] for line in done}, {"done"})
        self.run_tool(*run, "--resume")
        self.assertEqual(len(self.lines()), 2 * len(begun))

    def test_finds_nothing_in_a_report_that_is_a_pipe(self):
        os.mkfifo(self.path("report"))
        with open(os.open(self.path("report"), os.O_RDONLY | os.O_NONBLOCK), "rb") as reader:
            self.assertEqual(self.resume()[-1], "4 files: 4 done, 0 failed")
            self.assertEqual([json.loads(line)["status"] for line in reader], ["done"] * 4)

    def test_calls_standard_input_by_its_name(self):
        run = ("up", "-", "-o", "out", "--companion", "in/opera.logdata", "--report", "report", "--resume")
        show = self.read("in/opera.showdata")
        self.run_tool(*run, stdin=show)
        self.assertEqual(self.said(*run, stdin=show), ["standard input: is finished, as the report says"])

    def test_is_needed_to_resume(self):
        self.refuse("up", "in", "--out-dir", "out", "--resume", code=USAGE,
                    message="command line: --resume needs the report to resume; give --report FILE")


class CurrentInPlaceTest(FolderTest):
    """Files that --in-place leaves alone."""

    RUN = ("up", "in", "--in-place", "--report", "report", "--resume")

    def setUp(self):
        super().setUp()
        self.run_tool("up", "in", "--out-dir", "new")
        self.encrypt("in/opera.showdata", legacy_show(legacy_song("2", "Two", labels=((0, "Prologue"),))))

    def statuses(self):
        return [(line["path"], line["status"]) for line in self.lines() if line["status"] != "begun"]

    def test_has_one_line_about_each(self):
        os.rename(self.path("new/opera.logdata"), self.path("in/opera.logdata"))
        for _ in range(3):
            self.run_tool(*self.RUN)
            self.assertEqual(self.statuses(), [("in/opera.logdata", "current"), ("in/opera.showdata", "done")])
        self.run_tool("convert", "in/opera.logdata", "--to", "1.2", "--in-place", "--report", "report", "--resume")
        self.assertEqual(len(self.statuses()), 2)

    def test_has_another_line_about_another_content(self):
        self.run_tool(*self.RUN)
        self.encrypt("old.showdata", legacy_show(legacy_song("2", "Two")))
        self.run_tool("up", "old.showdata", "-o", "other.showdata", "--show-name", "X")
        for name in ("new/opera.showdata", "other.showdata"):
            self.write("in/opera.showdata", self.read(name))
            for _ in range(2):
                self.run_tool(*self.RUN)
                self.assertEqual(self.statuses().pop(), ("in/opera.showdata", "current"))
        self.assertEqual(len(self.statuses()), 4)

    def test_tells_once_that_a_failure_is_over(self):
        whole = self.said(*self.RUN)
        content = self.read("in/opera.showdata")
        self.write("in/opera.showdata", "bad")
        self.run_tool(*self.RUN, code=PART_FAILED)
        self.write("in/opera.showdata", content)
        for _ in range(2):
            said = self.said(*self.RUN)
            self.assertEqual(said[-2:], ["2 files: 0 done, 2 already current (1 with losses), 0 failed", whole[-1]])
            self.assertEqual(self.statuses()[2:], [("in/opera.showdata", "failed"), ("in/opera.showdata", "current")])

    def test_is_no_failure_of_an_earlier_run(self):
        self.write("in/opera.showdata", "bad")
        self.run_tool(*self.RUN, code=PART_FAILED)
        for kind in ("logdata", "showdata"):
            self.write(f"in/opera.{kind}", self.read(f"new/opera.{kind}"))
        self.run_tool(*self.RUN)
        self.write("in/a.showdata", "bad")
        self.assertIn("3 files: 0 done, 1 failed, 2 not begun (earlier: 2 finished)",
                      self.said(*self.RUN, "--fail-fast", "-j", "1", code=PART_FAILED))


class ExistingOutputTest(FolderTest):
    """What there is to do about outputs that exist."""

    EXISTS = "exists; give --force to replace it, --skip-existing to pass over it, or "
    RUN = ("up", "in", "--out-dir", "out", "--report", "report")

    def test_names_resume_where_the_report_has_the_outputs(self):
        self.run_tool(*self.RUN)
        said = self.said(*self.RUN, code=PART_FAILED)
        self.assertEqual(said[1:], [f"out/opera.{kind}: {self.EXISTS}--resume to go on after the report"
                                    for kind in ("logdata", "showdata")])
        self.assertEqual(self.said(*self.RUN, "--resume")[-1], "2 files: 0 done, 2 skipped, 0 failed")

    def test_names_another_output_where_the_report_does_not_have_them(self):
        self.run_tool(*self.RUN)
        os.remove(self.path("report"))
        for _ in range(2):  # The report is new, and has these failures.
            said = self.said(*self.RUN, code=PART_FAILED)
            self.assertEqual(said[1:], [f"out/opera.{kind}: {self.EXISTS}another output" for kind in ("logdata", "showdata")])

    @unittest.skipUnless(os.path.exists("/proc/self/mem"), "needs a regular file that fails when it is read")
    def test_passes_over_an_output_that_cannot_be_read(self):
        self.run_tool(*self.RUN)
        os.remove(self.path("out/opera.logdata"))
        os.symlink("/proc/self/mem", self.path("out/opera.logdata"))
        self.assertEqual(self.said(*self.RUN, "--resume", "--skip-existing"), [
            "out/opera.logdata: exists and is passed over", "2 files: 0 done, 2 skipped, 0 failed"])

    def test_tells_the_same_of_a_folder_with_a_report_as_without(self):
        self.run_tool(*self.RUN)
        os.remove(self.path("out/opera.logdata"))
        os.mkdir(self.path("out/opera.logdata"))
        for options in ((), ("--resume",), ("--resume", "--skip-existing"), ("--resume", "--force")):
            self.assertIn("out/opera.logdata: is not a regular file; give another output, or - for a pipe",
                          self.said(*self.RUN, *options, code=PART_FAILED))

    def test_tells_outputs_that_the_report_has_from_others(self):
        self.run_tool(*self.RUN)
        self.write("out/opera.logdata", "another")
        said = self.said(*self.RUN, code=PART_FAILED)
        self.assertEqual(said[1:], [f"out/opera.logdata: {self.EXISTS}another output",
                                    f"out/opera.showdata: {self.EXISTS}--resume to go on after the report"])


if __name__ == "__main__":
    unittest.main()
