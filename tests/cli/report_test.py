"""The report of a conversion: what its lines have, and what it can be used for."""

import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import time
import unittest

import schemas
from folder import FolderTest
from tool import (BAD_INPUT, INTERRUPTED, IO, NOTHING_MATCHED, PART_FAILED, REFUSED, TOOL, USAGE, legacy_log,
                  legacy_show, legacy_song, legacy_song_log, undo_command)


class ReportTest(FolderTest):
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
        written = [line for line in self.lines() if line["status"] != "begun"]
        self.assertEqual([line["backup"] for line in written], [None] * 4 + [
            "in/opera.logdata.~1~", "in/opera.showdata.~1~", None, None, "in/opera.logdata.~2~"])
        self.assertEqual([line["output"] for line in written[4:]], [line["path"] for line in written[4:]])

    def test_names_the_file_that_a_link_leads_to(self):
        self.run_tool("up", "in", "--out-dir", "out")
        os.symlink("out/opera.showdata", self.path("link.showdata"))
        self.run_tool("down", "link.showdata", "--in-place", "--report", "report")
        path = os.path.realpath(self.path("out/opera.showdata"))
        self.assertEqual([(line["path"], line["output"], line["backup"]) for line in self.lines()],
                         [("link.showdata", path, path + ".~1~")] * 2)
        self.assertTrue(os.path.islink(self.path("link.showdata")))

    def test_has_the_bytes_of_names_that_are_not_utf8(self):
        show = self.read("in/opera.showdata")
        for name in (b"\xff", b"\xfe"):
            with open(os.path.join(self.folder.encode(), b"in/" + name + b".showdata"), "wb") as file:
                file.write(show)
        self.run_tool("up", "in", "--out-dir", "out", "--show-name", "X", "--report", "report")
        names = [b".showdata".join((b"/" + name, b"")) for name in (b"\xfe", b"\xff")]
        lines = self.lines()[-2:]
        self.assertEqual([line["path"] for line in lines], ["in/\ufffd.showdata"] * 2)
        self.assertEqual([bytes.fromhex(line["pathBytes"]) for line in lines], [b"in" + name for name in names])
        self.assertEqual([bytes.fromhex(line["outputBytes"]) for line in lines], [b"out" + name for name in names])
        self.assertNotIn("pathBytes", self.lines()[0])
        self.assertEqual(self.said("up", "in", "--out-dir", "out", "--show-name", "X", "--report", "report",
                                   "--resume")[-1], "4 files: 0 done, 4 skipped, 0 failed")

    def test_says_what_kept_a_run_from_its_first_input(self):
        os.mkdir(self.path("none"))
        run = ("up", "--out-dir", "out", "--report", "report")
        self.run_tool(*run, "none", code=NOTHING_MATCHED)
        nothing, = self.lines()
        self.assertEqual((nothing["status"], nothing["path"], nothing["exitCode"], nothing["error"]["code"]),
                         ("aborted", None, NOTHING_MATCHED, "nothing-matched"))
        self.run_tool(*run, "in", "--key-file", "no key", code=IO)
        self.run_tool(*run, "in", "-o", "out", code=USAGE)
        key, = self.lines()
        self.assertEqual((key["exitCode"], key["error"]["file"]), (IO, "no key"))
        for _ in range(2):
            self.run_tool(*run, "in", "--resume")
            self.assertEqual([line["status"] for line in self.lines()], ["done", "done"])
            self.run_tool(*run, "none", code=NOTHING_MATCHED)
            self.assertEqual(self.lines()[-1]["status"], "aborted")

    def test_has_no_failure_left_of_a_folder_that_can_be_listed_again(self):
        run = ("up", "in", "-r", "--out-dir", "out", "--report", "report")
        self.run_tool(*run)
        lines = self.read("report")
        failed = re.sub(rb', "finished".*', b"}", lines.splitlines()[0].replace(b'"done"', b'"failed"'))
        self.write("report", lines + re.sub(rb'"path": "[^"]*"', b'"path": "in/below"', failed) + b"\n")
        for _ in range(2):
            self.run_tool(*run, "--resume")
            self.assertEqual(len(self.lines()), len(lines.splitlines()) + 2)
            line = self.lines()[-1]
            self.assertEqual((line["status"], line["path"], line["output"]), ("skipped", "in/below", None))

    def test_has_the_options_that_counted_for_each_input(self):
        self.encrypt("in/opera.logdata", legacy_log(legacy_song_log("2", "Two"), legacy_song_log("4", "Four")))
        os.remove(self.path("in/below/gala.showdata"))
        self.write("in/bad.showdata", "bad")
        self.run_tool("convert", "new.showdata", "-o", "in/current.showdata", "--to", "2.0")
        self.run_tool("up", "in", "-r", "--out-dir", "out", "--report", "report", "--division", "96", "--any-companion",
                      "--show-name", "X", "--fail-on", "loss", code=PART_FAILED)
        self.assertEqual({line["path"]: line["options"] for line in self.lines()}, {
            "in/bad.showdata": "up --to 1.2 --fail-on loss",
            "in/below/gala.logdata": "up --to 1.2 --fail-on loss --division 96",
            "in/current.showdata": "up --to 1.2 --fail-on loss",
            "in/opera.logdata": "up --to 1.2 --fail-on loss --division 96",
            "in/opera.showdata": "up --to 1.2 --fail-on loss"})
        self.run_tool("up", "in/opera.showdata", "-o", "named", "--show-name", "X", "--division", "96", "--report", "report")
        self.assertEqual(self.lines()[-1]["options"], "up --to 1.2 --show-name X")

    def test_names_a_companion_that_was_read(self):
        self.run_tool("up", "in", "--out-dir", "out", "--report", "report")
        self.run_tool("up", "in/opera.showdata", "-o", "named", "--show-name", "X", "--report", "report")
        self.run_tool("up", "out", "--in-place", "--report", "report")
        self.assertEqual([line["companion"] for line in self.lines()],
                         ["in/opera.showdata", "in/opera.logdata", None, None, None])

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
        # What a run leaves that is killed once a file has its backup, and half a line.
        for name in ("opera.showdata", "it's $HOME `ls` \\.showdata"):
            os.link(self.path(f"in/{name}"), self.path(f"in/{name}.~9~"))
            self.write("up.json", self.read("up.json") + json.dumps(
                {"status": "begun", "backup": f"in/{name}.~9~", "output": f"in/{name}"}).encode() + b"\n")
        self.write("up.json", self.read("up.json") + b'{"schemaVersion": 1, "sta')
        subprocess.run(["sh", "-c", undo_command()], cwd=self.folder, check=True)
        os.remove(self.path("up.undone.json"))
        self.assertEqual(self.files(), before)

    def test_undoes_each_run_once(self):
        self.run_tool("up", "in", "--in-place", "--report", "up.json")
        subprocess.run(["sh", "-c", undo_command()], cwd=self.folder, check=True)
        self.write("in/opera.showdata.~1~", self.read("in/opera.showdata"))  # as an editor leaves it
        self.encrypt("in/opera.showdata", legacy_show(legacy_song("7", "Edited")))
        edited = self.read("in/opera.showdata")
        self.run_tool("up", "in/opera.showdata", "--in-place", "--any-companion", "--report", "up.json")
        self.assertEqual(self.lines("up.json")[0]["backup"], "in/opera.showdata.~2~")
        subprocess.run(["sh", "-c", undo_command()], cwd=self.folder, check=True)
        self.assertEqual(self.read("in/opera.showdata"), edited)

    def test_has_the_notes_about_a_companion(self):
        self.encrypt("in/opera.showdata", legacy_show(legacy_song("2", "Two"), legacy_song("3", "Three")))
        self.encrypt("in/opera.logdata", legacy_log(legacy_song_log("2", "Two"), legacy_song_log("3", "Drei"),
                                                    legacy_song_log("4", "Four")))
        self.run_tool("up", "in", "-qq", "--out-dir", "out", "--report", "report")
        log, show = self.lines()
        self.assertEqual(log["notes"], [
            "song 4 is not in in/opera.showdata",
            'song 3 has another name in in/opera.showdata: "Drei", there "Three"'])
        self.assertEqual([(loss["code"], loss["song"]) for loss in log["losses"]], [("division-defaulted", "4")])
        self.assertEqual(show["notes"], ['song 3 has another name in in/opera.logdata: "Three", there "Drei"'])
        self.run_tool("down", "out/opera.showdata", "-o", "old", "--report", "report")
        self.assertEqual(self.lines()[-1]["notes"], [])

    def test_loses_a_line_that_was_cut_off(self):
        self.run_tool("info", "in")
        self.write("report", '{"schemaVersion": 1, "status": "failed", "path": "a"}\n{"schemaVersion": 1, "st')
        self.run_tool("up", "in", "--out-dir", "out", "--report", "report")
        self.assertEqual([line["path"] for line in self.lines()], ["a", "in/opera.logdata", "in/opera.showdata"])

    @unittest.skipUnless(shutil.which("jq"), "there is no jq here")
    def test_can_be_read_though_a_line_was_cut_off(self):
        self.run_tool("up", "in", "--out-dir", "out", "--report", "up.json")
        lines = self.read("up.json").splitlines(keepends=True)
        self.write("up.json", lines[0] + lines[1][:100])
        page = pathlib.Path(__file__).parents[2] / "docs/scripts.md"
        command, = (line for line in page.read_text().splitlines() if line.startswith("jq -cR"))
        read = subprocess.run(["sh", "-c", command], cwd=self.folder, check=False, capture_output=True).stdout
        self.assertEqual([json.loads(line) for line in read.splitlines()], [json.loads(lines[0])])

    def shell(self, page, *parts):
        """What the commands of a page print that contain these parts, line by line."""
        lines = (pathlib.Path(__file__).parents[2] / "docs" / page).read_text().splitlines()
        said = []
        for part in parts:
            command, = (line for line in lines if part in line)
            done = subprocess.run(["sh", "-c", command], cwd=self.folder, check=True, capture_output=True)
            said += done.stdout.decode(errors="replace").splitlines()
        return said

    @unittest.skipUnless(shutil.which("jq"), "there is no jq here")
    def test_is_summed_up_as_the_documentation_says(self):
        for name in (b"\xff.showdata", b"\xfe.showdata"):  # the same text in JSON
            with open(os.path.join(os.fsencode(self.path("in")), name), "wb") as file:
                file.write(b"bad" if name[0] == 0xFF else self.read("in/opera.showdata"))
        run = ("up", "in", "--show-name", "X", "--out-dir", "out", "--report", "up.json")
        self.run_tool(*run, code=PART_FAILED)
        failed, = self.shell("scripts.md", '"\\(.error.code)\\t')
        self.assertRegex(failed, r"^not-encrypted\tin/.*\.showdata: is not an encrypted file of this kind")
        os.rename(self.path("up.json"), self.path("up-1.json"))
        self.run_tool("up", "in", "--out-dir", "out", "--report", "up-2.json", "--key-file", "none", code=IO)
        aborted = self.read("up-2.json")
        self.write("up-2.json", aborted + b'{"schemaVersion": 1, "st')
        self.assertEqual(self.shell("many-machines.md", "fromjson?' \"$f\""), [])
        self.assertEqual([line.split() for line in self.shell("many-machines.md", "uniq -c")], [["3", "done"], ["1", "failed"]])
        self.assertEqual(len(self.shell("many-machines.md", '"failed") | .error.message')), 1)
        self.write("up-2.json", aborted)
        aborted, = self.shell("many-machines.md", '"aborted"')
        self.assertRegex(aborted, "^none: ")

    def test_has_one_line_about_an_input_that_was_given_twice(self):
        self.run_tool("up", "in/opera.showdata", "in/opera.showdata", "--out-dir", "out", "--report", "report")
        self.assertEqual([line["status"] for line in self.lines()], ["done"])

    def test_has_the_losses_that_were_refused(self):
        self.run_tool("down", "new.showdata", "-o", "out", "--fail-on", "any-loss", "--report", "report", code=REFUSED)
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
        self.assertRegex(said, r"302 files: \d+ done, 0 failed, (\d+) not begun\nzuna-convert: \1 files: are not begun; "
                               r"give the same command again with --resume\n" + message + "$")
        lines = self.read("report").splitlines(keepends=True)
        schemas.check_lines("report", lines)
        finished = [json.loads(line)["output"] for line in lines]
        self.assertEqual(sorted(finished), self.written("out"))
        self.assertLess(len(finished), 302)


if __name__ == "__main__":
    unittest.main()
