"""Commands of zuna-convert on many inputs: which files they take, where the results go, and what they say."""

import json
import os
import unittest

from folder import FolderTest
from tool import IO, NOTHING_MATCHED, PART_FAILED, REFUSED, USAGE, legacy_show, legacy_song


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


if __name__ == "__main__":
    unittest.main()
