"""Commands of zuna-convert on many inputs: which files they take, where the results go, and what they say."""

import json
import os
import shutil
import signal
import subprocess
import time
import unittest

from tool import (BAD_INPUT, INTERRUPTED, IO, NOTHING_MATCHED, PART_FAILED, REFUSED, TOOL, USAGE, WithLogs,
                  legacy_log, legacy_show, legacy_song, legacy_song_log, without_codes, undo_command)


class FolderTest(WithLogs):
    """A folder with two legacy shows and their logs, one of them in a folder below, and other files."""

    def setUp(self):
        super().setUp()
        os.makedirs(self.path("in/below"))
        self.encrypt("in/opera.showdata", legacy_show(legacy_song("2", "Two"), legacy_song("10", "Ten")))
        self.encrypt("in/opera.logdata", legacy_log(legacy_song_log("2", "Two", vamps=[(0, 480, 2)])))
        self.encrypt("in/below/gala.showdata", legacy_show(legacy_song("1", "One")))
        self.encrypt("in/below/gala.logdata", legacy_log(legacy_song_log("1", "One"), show_name="Gala"))
        self.write("in/notes.txt", "no show")
        self.write("in/.hidden.showdata", "no show")
        os.mkfifo(self.path("in/pipe.showdata"))

    def said(self, *arguments, **options):
        """What the tool says, line by line without its name and the codes."""
        lines = without_codes(self.run_tool(*arguments, **options).stderr.decode()).splitlines()
        return [line.removeprefix("zuna-convert: ") for line in lines]

    def written(self, folder):
        return sorted(name for name in self.files() if name.startswith(folder + "/"))


class InputsTest(FolderTest):
    def test_takes_the_shows_and_logs_of_folders(self):
        self.assertEqual(self.said("up", "in", "--out-dir", "out"), [
            "in/opera.logdata: 1 song, 1 edit, 0.0 -> 1.2, divisions from in/opera.showdata, lossless",
            'in/opera.showdata: 2 songs, 2 voices, 2 events, 0.0 -> 1.2, named "My Show" by its log, lossless',
            "2 files: 2 done, 0 failed"])
        self.assertEqual(self.written("out"), ["out/opera.logdata", "out/opera.showdata"])

    def test_keeps_the_paths_below_a_folder(self):
        self.run_tool("up", "in", "-r", "--out-dir", "out")
        self.assertEqual(self.written("out"), ["out/below/gala.logdata", "out/below/gala.showdata", "out/opera.logdata",
                                               "out/opera.showdata"])
        self.run_tool("down", "out", "-r", "--out-dir", "back", "-q")
        for name in self.written("back"):
            self.assertEqual(self.read(name), self.read(name.replace("back", "in", 1)), name)

    def test_does_not_take_its_own_outputs(self):
        self.run_tool("up", "in", "-r", "--out-dir", "in/new")
        self.assertEqual(self.said("up", "in", "-r", "--out-dir", "in/new", "--force")[-1], "4 files: 4 done, 0 failed")

    def test_takes_a_list_of_files(self):
        paths = ["in/opera.showdata", "", "in/below/gala.showdata"]
        for options, separator in (((), "\n"), (("-0",), "\0")):
            self.write("list", separator.join(paths))
            for source, stdin in (("list", b""), ("-", self.read("list"))):
                shown = self.run_tool("info", "--files-from", source, *options, stdin=stdin).stdout.decode()
                self.assertEqual([line.partition(":")[0] for line in shown.splitlines() if ": show" in line],
                                 [paths[0], paths[2]])
        self.write("list", "")
        self.refuse("info", "--files-from", "list", code=NOTHING_MATCHED,
                    message='command line: has no show and no log in a file whose name ends in ".showdata" or '
                            '".logdata"; give other files or folders, or -r for the folders below')

    def test_takes_whatever_is_named(self):
        os.rename(self.path("in/opera.showdata"), self.path("in/.opera"))
        self.assertIn(b"in/.opera: show, version 0.0", self.run_tool("info", "in/.opera").stdout)

    def test_takes_a_folder_that_is_the_output_too(self):
        self.run_tool("up", "in", "--out-dir", "in", code=REFUSED)
        self.run_tool("info", "none/", code=IO)

    def test_tells_of_a_folder_that_cannot_be_looked_at(self):
        deep, name = os.open(self.path("in"), os.O_RDONLY), "d" * 250
        for _ in range(20):  # longer than a path may be
            os.mkdir(name, dir_fd=deep)
            below = os.open(name, os.O_RDONLY, dir_fd=deep)
            os.close(deep)
            deep = below
        os.close(deep)
        done = self.run_tool("list", "in", "-r", code=PART_FAILED)
        self.assertEqual(len(done.stdout.splitlines()), 4)
        self.assertRegex(done.stderr.decode(), f"^zuna-convert: in/{name}/{name}/.*: File name too long; .*\n$")

    def test_checks_the_inputs_of_all_machines(self):
        for shard in ("1/3", "2/3", "3/3"):
            self.refuse("up", "in/opera.showdata", "in/opera.logdata", "--out-dir", "in", "--force", "--shard", shard,
                        code=REFUSED, message="in/opera.showdata: is an input as well; give another output")

    def test_shares_the_inputs_among_machines(self):
        for count in (1, 2, 5):
            names = []
            for index in range(1, count + 1):
                lines = self.run_tool("list", "in", "-r", "--json", "--shard", f"{index}/{count}").stdout
                names += [json.loads(line)["path"] for line in lines.splitlines()]
            self.assertEqual(sorted(names), sorted("in/" + name for name in (
                "below/gala.logdata", "below/gala.showdata", "opera.logdata", "opera.showdata")))
        for shard in ("0/2", "3/2", "1", "a/b", "1/2/3", "/2"):
            self.refuse("list", "in", "--shard", shard, code=USAGE,
                        message="command line: --shard: a shard is I/N, such as 1/4, with I from 1 to N; see zuna-convert "
                                "list --help")

    def test_says_the_same_with_any_number_of_workers(self):
        self.write("in/bad.showdata", "bad")
        one = self.run_tool("up", "in", "-r", "--out-dir", "1", "-j", "1", "--report", "1.json", code=PART_FAILED)
        many = self.run_tool("up", "in", "-r", "--out-dir", "8", "-j", "8", "--report", "8.json", code=PART_FAILED)
        self.assertEqual(one.stderr, many.stderr)
        self.assertEqual([self.read(name) for name in self.written("1")], [self.read(name) for name in self.written("8")])
        reports = [[json.loads(line) for line in self.read(name).splitlines()] for name in ("1.json", "8.json")]
        for line in reports[0] + reports[1]:
            line.pop("output")
            line.pop("finished", None)
            line.pop("written", None)
        self.assertEqual(*reports)
        for number in ("0", "-1", "x", "2000"):
            self.run_tool("info", "in", "-j", number, code=USAGE)


class FailureTest(FolderTest):
    def test_goes_on_past_failures_and_tells_them_last(self):
        self.write("in/a.showdata", "bad")
        os.remove(self.path("in/below/gala.logdata"))
        self.assertEqual(self.said("up", "in", "-r", "--out-dir", "out", code=PART_FAILED)[-3:], [
            "4 files: 2 done, 2 failed",
            "in/a.showdata: is not an encrypted file of this kind (offset 0); give an encrypted show or log file",
            "in/below/gala.showdata: needs its log, which has the name of the show, and in/below/gala.logdata is not "
            "there; give --companion or --companions, or --show-name NAME"])
        self.assertEqual(self.written("out"), ["out/opera.logdata", "out/opera.showdata"])

    def test_stops_at_the_first_failure_where_asked(self):
        self.write("in/a.showdata", "bad")
        said = self.said("up", "in", "-r", "--out-dir", "out", "--fail-fast", "-j", "1", code=PART_FAILED)
        self.assertEqual(said[0], "5 files: 0 done, 1 failed, 4 not begun")
        self.assertEqual(self.written("out"), [])

    def test_fails_with_its_own_code_for_a_single_input(self):
        self.write("bad.showdata", "bad")
        self.run_tool("up", "bad.showdata", "-o", "out", code=BAD_INPUT)

    def test_ends_what_can_be_explained_with_its_code(self):
        self.write("in/a.showdata", "bad")
        os.remove(self.path("in/opera.logdata"))
        said = self.run_tool("up", "in", "--out-dir", "out", code=PART_FAILED).stderr.decode()
        self.assertRegex(said, r"(?m)^zuna-convert: in/a\.showdata: .*; .* \[not-encrypted\]$")
        self.assertRegex(said, r"(?m)^zuna-convert: in/opera\.showdata: .*; .* \[companion-missing\]\n\Z")
        self.assertRegex(self.run_tool("up", "in", code=USAGE).stderr, rb"--in-place\n$")

    def test_tells_which_input_a_companion_was_for(self):
        self.write("in/opera.logdata", "bad")
        self.assertIn("in/opera.showdata: companion in/opera.logdata: is no show and no log of any version; give an "
                      "undamaged file", self.said("up", "in", "--out-dir", "out", code=PART_FAILED))


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
        message = ("in/opera.showdata: companion in/opera.logdata: does not belong to it: no song agrees in number and "
                   "name; give the right file, or --any-companion to take this one")
        self.refuse("up", "in/opera.showdata", "-o", "out", code=REFUSED, message=message)
        self.assertEqual(self.said("up", "in/opera.showdata", "-o", "out", "--any-companion")[0],
                         'in/opera.showdata: song 2 has another name in in/opera.logdata: "Two", there "Other"')

    def test_names_songs_of_another_length(self):
        self.encrypt("in/opera.logdata", legacy_log(legacy_song_log("2", "Two").replace(b"\x80\x07", b"\x81\x07")))
        self.assertEqual(self.said("up", "in/opera.showdata", "-o", "out")[0],
                         "in/opera.showdata: song 2 has another length in in/opera.logdata: 1920 ticks, there 1921")

    def test_refuses_one_companion_for_many_inputs(self):
        self.refuse("up", "in", "--out-dir", "out", "--companion", "in/opera.logdata", code=USAGE,
                    message="command line: --companion is for one input, and there are 2; give --companions DIR")


class OutputsTest(FolderTest):
    def test_keeps_the_folders_of_files_in_a_list(self):
        self.write("list", "./in/opera.showdata\nin/below/gala.showdata\n" + self.path("in/opera.logdata") + "\n")
        self.run_tool("up", "--files-from", "list", "--out-dir", "out")
        self.assertEqual(self.written("out"), ["out/in/below/gala.showdata", "out/in/opera.showdata", "out/opera.logdata"])

    def test_wants_exactly_one_kind_of_output(self):
        self.refuse("up", "in/opera.showdata", code=USAGE,
                    message="command line: the outputs are not named; give one of -o, --out-dir and --in-place")
        for options in (("-o", "out", "--in-place"), ("--in-place", "--out-dir", "out")):
            self.refuse("up", "in/opera.showdata", *options, code=USAGE,
                        message="command line: the outputs are named twice; give only one of -o, --out-dir and --in-place")

    def test_wants_a_folder_for_the_outputs(self):
        self.write("file", "")
        self.refuse("up", "in", "--out-dir", "file", code=IO,
                    message="file: is not a folder; give a folder to --out-dir")
        self.refuse("up", "in", "-o", "out", code=USAGE,
                    message="command line: -o is for one input, and there are 2; give --out-dir or --in-place")
        self.refuse("up", "-", "--in-place", code=USAGE, message="command line: standard input has no name; give -o")
        for option in ("--force", "--skip-existing"):
            self.refuse("up", "in", "--in-place", option, code=USAGE,
                        message="command line: --in-place keeps the old files beside the new ones; leave out --force and "
                                "--skip-existing")
        self.refuse("up", "in", "--out-dir", "out", "--force", "--skip-existing", code=USAGE,
                    message="command line: --force and --skip-existing contradict each other; give one of them")

    def test_names_each_file_whose_folder_cannot_be_made(self):
        self.write("out", "a file")
        said = self.said("up", "in", "--out-dir", "out/new", code=PART_FAILED)
        for line, name in zip(said[-2:], ("opera.logdata", "opera.showdata")):
            self.assertTrue(line.startswith(f"out/new/{name}: its folder cannot be made: Not a directory; check"), line)

    def test_refuses_a_folder_as_the_output(self):
        os.mkdir(self.path("out"))
        self.refuse("up", "in/opera.showdata", "-o", "out", "--force", code=REFUSED,
                    message="out: is not a regular file; give another output, or - for a pipe")
        self.refuse("up", "in/opera.showdata", "in/opera.logdata", "-o", "out", code=USAGE,
                    message="command line: -o is for one input, and there are 2; give --out-dir or --in-place")

    def test_refuses_one_output_for_two_inputs(self):
        self.encrypt("opera.showdata", legacy_show(legacy_song("2", "Two")))
        self.refuse("up", "in/opera.showdata", "opera.showdata", "--out-dir", "out", code=USAGE,
                    message="command line: in/opera.showdata and opera.showdata have the same output "
                            "out/opera.showdata; name their folder instead, or convert them one after the other")

    def test_never_writes_over_another_input(self):
        self.refuse("up", "in/opera.showdata", "in/opera.logdata", "--out-dir", "in", "--force", code=REFUSED,
                    message="in/opera.showdata: is an input as well; give another output")

    def test_never_writes_over_a_companion(self):
        os.makedirs(self.path("out/below"))
        os.link(self.path("in/below/gala.logdata"), self.path("out/opera.showdata"))
        self.refuse("up", "in/opera.showdata", "in/below/gala.showdata", "--out-dir", "out", "--force", code=REFUSED,
                    message="out/opera.showdata: is the companion of in/below/gala.showdata; give another output")
        self.refuse("up", "in/opera.showdata", "in/below/gala.showdata", "--out-dir", "out", "--resume", "--report", "report",
                    code=REFUSED,
                    message="out/opera.showdata: is the companion of in/below/gala.showdata; give another output")

    def test_works_on_a_file_by_its_own_name_and_not_by_a_link(self):
        os.symlink("opera.showdata", self.path("in/a.showdata"))  # has no log
        said = self.said("up", "in", "--in-place")
        self.assertEqual(said[0], "in/a.showdata: is the same file as in/opera.showdata, and is passed over")
        self.assertEqual(said[-1], "3 files: 2 done, 1 skipped, 0 failed")

    def test_works_once_on_a_file_with_two_names(self):
        os.symlink("opera.showdata", self.path("in/z.showdata"))
        os.symlink("opera.logdata", self.path("in/z.logdata"))
        said = self.said("up", "in", "--out-dir", "out")
        self.assertEqual(said[-1], "4 files: 4 done, 0 failed")
        self.assertEqual(self.read("out/z.showdata"), self.read("out/opera.showdata"))
        said = self.said("up", "in", "in/../in/opera.showdata", "--in-place")
        self.assertEqual(said[2:], [
            "in/z.logdata: is the same file as in/opera.logdata, and is passed over",
            "in/z.showdata: is the same file as in/opera.showdata, and is passed over",
            "in/../in/opera.showdata: is the same file as in/opera.showdata, and is passed over",
            "5 files: 2 done, 3 skipped, 0 failed"])
        self.assertEqual([name for name in self.written("in") if "~" in name], ["in/opera.logdata.~1~",
                                                                                "in/opera.showdata.~1~"])
        self.assertTrue(os.path.islink(self.path("in/z.showdata")))
        said = self.said("up", "in/opera.showdata", "in/opera.showdata", "--out-dir", "new")
        self.assertEqual(said[1:], ["in/opera.showdata: is the same file as in/opera.showdata, and is passed over",
                                    "2 files: 0 done, 1 already current, 1 skipped, 0 failed"])

    def test_refuses_outputs_that_are_links_to_each_other(self):
        os.mkdir(self.path("out"))
        self.write("out/opera.logdata", "old")
        os.symlink("opera.logdata", self.path("out/opera.showdata"))
        self.refuse("up", "in", "--out-dir", "out", "--force", code=USAGE,
                    message="command line: in/opera.logdata and in/opera.showdata have the same output out/opera.showdata; "
                            "name their folder instead, or convert them one after the other")

    def test_passes_over_outputs_that_exist(self):
        os.mkdir(self.path("out"))
        self.write("out/opera.logdata", "there")
        said = self.said("up", "in", "--out-dir", "out", code=PART_FAILED)
        self.assertEqual(said[-1], "out/opera.logdata: exists; give --force to replace it, --skip-existing to pass over "
                                   "it, or another output")
        self.write("report", '{"schemaVersion": 1, "status": "done"}\n')
        said = self.said("up", "in/opera.logdata", "-o", "out/opera.logdata", "--report", "report", code=REFUSED)
        self.assertEqual(said[-1], "out/opera.logdata: exists; give --force to replace it, --skip-existing to pass over "
                                   "it, or --resume to go on after the report")
        os.remove(self.path("out/opera.showdata"))
        said = self.said("up", "in", "--out-dir", "out", "--skip-existing")
        self.assertEqual([said[0], said[-1]], ["out/opera.logdata: exists and is passed over",
                                               "2 files: 1 done, 1 skipped, 0 failed"])
        self.assertEqual(self.read("out/opera.logdata"), b"there")
        os.mkdir(self.path("folder"))
        self.run_tool("up", "in/opera.showdata", "-o", "folder", "--skip-existing", code=REFUSED)

    def test_writes_nothing_in_a_dry_run(self):
        before = self.files()
        for output in (("--out-dir", "out"), ("--in-place",)):
            self.assertEqual(self.said("up", "in", "-n", *output)[-1], "2 files: 2 would be done, 0 failed")
        self.assertEqual(self.files(), before)
        self.assertFalse(os.path.exists(self.path("out")))

    def test_keeps_the_old_file_in_place(self):
        old = self.read("in/opera.showdata")
        os.chmod(self.path("in/opera.showdata"), 0o640)
        self.run_tool("up", "in/opera.showdata", "--in-place")
        self.assertEqual(self.read("in/opera.showdata.~1~"), old)
        new = self.read("in/opera.showdata")
        self.assertNotEqual(new, old)
        self.assertEqual(os.stat(self.path("in/opera.showdata")).st_mode & 0o777, 0o640)
        self.run_tool("down", "in/opera.showdata", "--in-place")
        self.assertEqual(self.read("in/opera.showdata.~2~"), new)
        self.assertEqual(self.read("in/opera.showdata"), old)

    def test_leaves_what_is_current_in_place(self):
        self.run_tool("up", "in", "--in-place")
        before = self.files()
        self.assertEqual(self.said("up", "in", "--in-place"), [
            "in/opera.logdata: is of version 1.2 already", "in/opera.showdata: is of version 1.2 already",
            "2 files: 0 done, 2 already current, 0 failed"])
        self.assertEqual(self.files(), before)

    def test_follows_a_link_in_place(self):
        os.symlink("in/opera.showdata", self.path("link"))
        old = self.read("link")
        self.run_tool("up", "link", "--in-place", "--companion", "in/opera.logdata")
        self.assertTrue(os.path.islink(self.path("link")))
        self.assertEqual(self.read("in/opera.showdata.~1~"), old)

    def test_removes_what_killed_runs_have_left(self):
        os.makedirs(self.path("out/.zuna-0123456789abcdef.tmp"))
        self.write("out/.zuna-0123456789abcdef.tmp/new-0", "left")
        self.run_tool("up", "in", "--out-dir", "out")
        self.assertEqual(self.written("out"), ["out/opera.logdata", "out/opera.showdata"])
        self.assertEqual(sorted(os.listdir(self.path("out"))), ["opera.logdata", "opera.showdata"])

    def test_leaves_an_old_file_that_was_replaced(self):
        os.makedirs(self.path("out/.zuna-0123456789abcdef.tmp"))
        self.write("out/.zuna-0123456789abcdef.tmp/old-0", "the only copy")
        self.run_tool("up", "in", "--out-dir", "out")
        self.assertIn("out/.zuna-0123456789abcdef.tmp/old-0", self.files())


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

    def test_tells_every_loss_of_a_single_file(self):
        self.assertEqual(self.said("down", "new/opera.showdata", "-o", "out"), [
            'new/opera.showdata: format 0.0 does not keep 1 show name ("My Show"; up takes it from the log)',
            "new/opera.showdata: 2 songs, 2 voices, 2 events, 1.2 -> 0.0"])

    def test_writes_a_current_file_as_it_is(self):
        self.encrypt("odd.showdata", legacy_show(legacy_song()) + b"tail")
        self.run_tool("down", "odd.showdata", "-o", "out")
        self.assertEqual(self.read("out"), self.read("odd.showdata"))

    def test_refuses_losses_where_asked(self):
        self.refuse("down", "new/opera.showdata", "-o", "out", "--fail-on", "loss", code=REFUSED,
                    message="new/opera.showdata: would lose 1 show name; give --accept "
                            "show-name-dropped to let it go, or leave out --fail-on")
        self.run_tool("down", "new", "--out-dir", "out", "--fail-on", "loss", "--accept",
                      "show-name-dropped,division-dropped")
        self.assertEqual(self.written("out"), ["out/opera.logdata", "out/opera.showdata"])


class ReportTest(FolderTest):
    def lines(self):
        return [json.loads(line) for line in self.read("report").splitlines()]

    def test_has_a_line_for_each_input(self):
        self.write("in/bad.showdata", "bad")
        self.run_tool("up", "in", "--out-dir", "out", "--report", "report", code=PART_FAILED)
        bad, log, show = self.lines()
        self.assertEqual((bad["path"], bad["status"], bad["exitCode"], bad["error"]["code"]),
                         ("in/bad.showdata", "failed", BAD_INPUT, "not-encrypted"))
        self.assertEqual(bad["error"]["remedy"], "give an encrypted show or log file")
        self.assertEqual((log["status"], log["options"], log["companion"], log["losses"]),
                         ("done", "up --to 1.2", "in/opera.showdata", []))
        self.assertEqual((show["output"], show["exitCode"]), ("out/opera.showdata", 0))
        sums = subprocess.run(["sha256sum", "in/opera.showdata"], cwd=self.folder, check=True, capture_output=True)
        self.assertEqual(show["digest"], sums.stdout.decode().split()[0])

    def test_has_every_loss(self):
        self.run_tool("up", "in", "--out-dir", "new")
        self.run_tool("down", "new/opera.showdata", "-o", "out", "--report", "report")
        loss = self.lines()[0]["losses"][0]
        self.assertEqual((loss["code"], loss["before"], loss["count"]), ("show-name-dropped", "My Show", 1))

    def test_names_the_backups_of_old_files(self):
        self.run_tool("up", "in", "--out-dir", "out", "--report", "report")
        self.run_tool("up", "in", "--in-place", "-n", "--report", "report")
        self.run_tool("up", "in", "--in-place", "--report", "report")
        self.run_tool("up", "in", "--in-place", "--report", "report")
        self.run_tool("down", "in/opera.logdata", "--in-place", "--report", "report")
        path = os.path.realpath(self.path("in/opera."))
        self.assertEqual([line["backup"] for line in self.lines() if line["status"] != "begun"], [None] * 4 + [
            path + "logdata.~1~", path + "showdata.~1~", None, None, path + "logdata.~2~"])

    @unittest.skipUnless(shutil.which("jq"), "there is no jq here")
    def test_undoes_what_was_done_in_place(self):
        for name in ("-q", "it's $HOME `ls` \\", "two\nlines", "\u00e9 \"x\""):
            self.write(f"in/{name}.showdata", self.read("in/opera.showdata"))
            self.write(f"in/{name}.logdata", self.read("in/opera.logdata"))
            self.write(f"in/{name}.showdata.~1~", "an older backup")
        before = self.files()
        for command in ("up", "down", "up"):
            self.run_tool(command, "in", "-r", "--in-place", "--report", "up.json")
        self.assertNotEqual(self.files()["in/-q.showdata"], before["in/-q.showdata"])
        subprocess.run(["sh", "-c", undo_command()], cwd=self.folder, check=False)
        os.remove(self.path("up.json"))
        self.assertEqual(self.files(), before)

    def test_has_the_notes_about_a_companion(self):
        self.encrypt("in/opera.showdata", legacy_show(legacy_song("2", "Two"), legacy_song("3", "Three")))
        self.encrypt("in/opera.logdata", legacy_log(legacy_song_log("2", "Two"), legacy_song_log("3", "Drei"),
                                                    legacy_song_log("4", "Four")))
        self.run_tool("up", "in", "-qq", "--out-dir", "out", "--report", "report")
        log, show = self.lines()
        self.assertEqual(log["notes"], [
            "song 4 is not in in/opera.showdata; the division stays 0",
            'song 3 has another name in in/opera.showdata: "Drei", there "Three"'])
        self.assertEqual(show["notes"], ['song 3 has another name in in/opera.logdata: "Three", there "Drei"'])
        self.run_tool("down", "out/opera.showdata", "-o", "old", "--report", "report")
        self.assertEqual(self.lines()[-1]["notes"], [])

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

    def test_loses_a_line_that_was_cut_off(self):
        self.run_tool("info", "in")
        self.write("report", '{"schemaVersion": 1, "status": "failed", "path": "a"}\n{"schemaVersion": 1, "st')
        self.run_tool("up", "in", "--out-dir", "out", "--report", "report")
        self.assertEqual([line["path"] for line in self.lines()], ["a", "in/opera.logdata", "in/opera.showdata"])

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

    def test_has_one_line_about_an_input_that_was_given_twice(self):
        self.run_tool("up", "in/opera.showdata", "in/opera.showdata", "--out-dir", "out", "--report", "report")
        self.assertEqual([line["status"] for line in self.lines()], ["done"])

    def test_has_the_losses_that_were_refused(self):
        self.run_tool("down", "new.showdata", "-o", "out", "--fail-on", "loss", "--report", "report", code=REFUSED)
        line, = self.lines()
        self.assertEqual([line["error"]["code"], line["losses"][0]["code"]], ["loss-refused", "show-name-dropped"])

    def test_is_a_file(self):
        self.refuse("up", "in", "--out-dir", "out", "--report", "-", code=USAGE,
                    message="command line: a report is added to a file; give --report FILE")

    def test_is_no_output(self):
        done = self.run_tool("up", "in/opera.showdata", "-o", "report", "--report", "report", "--force", code=REFUSED)
        self.assertEqual(done.stderr, b"zuna-convert: report: is an input as well; give another output [output-is-input]\n")

    def test_leaves_files_that_begin_alike(self):
        for content in ("{", '{"schemaVersion": 3, "mine": "precious"}', '{"schemaVersion": 1, "path": "of check"}\n'):
            self.write("mine", content)
            self.refuse("up", "in", "--out-dir", "out", "--report", "mine", code=REFUSED,
                        message="mine: exists and is no report; give another file to --report")
            self.assertEqual(self.read("mine"), content.encode())

    def test_says_where_nothing_was_written(self):
        self.run_tool("up", "in", "--out-dir", "out", "-n", "--report", "report")
        self.assertEqual([line["dryRun"] for line in self.lines()], [True, True])

    def test_names_failures_though_it_cannot_be_written(self):
        os.rename(self.path("in/opera.logdata"), self.path("in/gone.logdata"))
        done = self.run_tool("up", "in/opera.showdata", "in/gone.logdata", "--out-dir", "out", "--report", "/dev/full", code=IO)
        self.assertIn(b"in/opera.showdata: needs its log", done.stderr)

    def test_is_no_other_file(self):
        before = self.read("new.showdata")
        self.refuse("up", "in", "--out-dir", "out", "--report", "new.showdata", code=REFUSED,
                    message="new.showdata: exists and is no report; give another file to --report")
        self.assertEqual(self.read("new.showdata"), before)

    def test_names_the_companion_of_a_failure(self):
        self.write("in/opera.logdata", self.read("in/opera.logdata")[:-1])
        self.run_tool("up", "in/opera.showdata", "-o", "out", "--report", "report", code=BAD_INPUT)
        line = self.lines()[0]
        self.assertEqual((line["companion"], line["error"]["code"], line["error"]["file"]),
                         ("in/opera.logdata", "cut-off", "in/opera.logdata"))

    def test_is_needed_to_resume(self):
        self.refuse("up", "in", "--out-dir", "out", "--resume", code=USAGE,
                    message="command line: --resume needs the report to resume; give --report FILE")

    def test_is_no_reason_to_write_without_it(self):
        done = self.run_tool("up", "in", "--out-dir", "out", "--report", "no/report", code=IO)
        self.assertRegex(done.stderr, b"^zuna-convert: no/report: cannot be written: ")
        self.assertEqual(self.written("out"), [])


class InterruptTest(FolderTest):
    def test_finishes_files_that_are_begun(self):
        self.interrupt((signal.SIGINT,), INTERRUPTED, "zuna-convert: interrupted\n")

    def test_does_so_where_another_program_says_it_twice(self):
        self.interrupt((signal.SIGTERM, signal.SIGTERM), -signal.SIGTERM, "")

    def interrupt(self, signals, code, message):
        show = legacy_show(*(legacy_song(str(i), "Song") for i in range(200)))
        for i in range(300):
            self.encrypt(f"in/{i}.showdata", show) if i == 0 else self.write(f"in/{i}.showdata", self.read("in/0.showdata"))
        with subprocess.Popen([TOOL, "up", "in", "--out-dir", "out", "--show-name", "X", "--report", "report", "-j", "2"],
                              cwd=self.folder, env=self.environment, stderr=subprocess.PIPE) as process:
            while not os.path.exists(self.path("report")) or not self.read("report"):
                time.sleep(0.01)
            for number in signals:
                process.send_signal(number)
                time.sleep(0.002)  # Two that come at once are one.
            said = process.stderr.read().decode()
            self.assertEqual(process.wait(timeout=60), code, said)
        self.assertRegex(said, r"302 files: \d+ done, 0 failed, \d+ not begun\n" + message + "$")
        finished = [json.loads(line)["output"] for line in self.read("report").splitlines()]
        self.assertEqual(sorted(finished), self.written("out"))
        self.assertLess(len(finished), 302)


if __name__ == "__main__":
    unittest.main()
