"""Commands of zuna-convert on many inputs: which files they take, where the results go, and what they say."""

import json
import os
import unittest

from folder import FolderTest
from tool import (BAD_INPUT, IO, NOTHING_MATCHED, PART_FAILED, REFUSED, USAGE, legacy_log, legacy_show, legacy_song,
                  legacy_song_log)


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
                    message="list: names no file; give a list with a file in each line")
        self.refuse("info", "--files-from", "-", stdin=b"\r\n\n", code=NOTHING_MATCHED,
                    message="standard input: names no file; give a list with a file in each line")

    def test_takes_a_list_from_another_system(self):
        self.write("list", "\ufeffin/opera.showdata\r\nin/below/gala.showdata\r\n")
        shown = self.run_tool("list", "--files-from", "list").stdout.decode()
        self.assertEqual(len(shown.splitlines()), 2)
        os.rename(self.path("in/opera.showdata"), self.path("in/opera\r"))  # a name that only -0 can tell
        self.write("list", "in/opera\r\0")
        self.run_tool("info", "--files-from", "list", "-0")
        self.refuse("info", "--files-from", "list", code=USAGE, message="list: has NUL bytes between its names; give -0")

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
        zeros = "is not an encrypted file of this kind (offset 0); give an encrypted show or log file"
        for name, other in (("opera.logdata", "opera.showdata"), ("opera.showdata", "opera.logdata")):
            content = self.read(f"in/{other}")
            self.write(f"in/{other}", bytes(len(content)))
            for options in ((), ("--any-companion",)):
                self.refuse("up", f"in/{name}", "-o", "out", *options, code=BAD_INPUT,
                            message=f"in/{name}: companion in/{other}: {zeros}")
            self.write(f"in/{other}", content)
        self.encrypt("zeros", bytes(6000))
        self.refuse("up", "zeros", "-o", "out", "--show-name", "X", code=BAD_INPUT,
                    message="zeros: is no show and no log of any version; give an undamaged file")

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
        before = self.files()
        said = self.said("up", "in/opera.showdata", "in/below/gala.showdata", "--out-dir", "out", "--resume", "--report", "report",
                         code=REFUSED)
        self.assertEqual(said, ["out/opera.showdata: is the companion of in/below/gala.showdata; give another output"])
        os.remove(self.path("report"))
        self.assertEqual(self.files(), before)

    def test_works_on_a_file_by_its_own_name_and_not_by_a_link(self):
        os.symlink("opera.showdata", self.path("in/a.showdata"))  # has no log
        said = self.said("up", "in", "--in-place", "--report", "report")
        outputs = {line["path"]: line["output"] for line in map(json.loads, self.read("report").splitlines())}
        self.assertEqual(outputs["in/a.showdata"], "in/a.showdata")
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
