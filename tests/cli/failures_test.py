"""Failures of zuna-convert on many inputs: what is said about them, how often, and what goes on."""

import json
import os
import unittest

from folder import FolderTest
from tool import BAD_INPUT, OR_RESCUE, PART_FAILED, USAGE, legacy_log, legacy_song_log


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
        self.assertEqual(said[-1], "4 files: are not begun; correct what failed or leave out --fail-fast, and give the same "
                                   "command again with --skip-existing")
        self.assertFalse(os.path.exists(self.path("out")))

    def test_says_how_to_go_on(self):
        self.write("in/a.showdata", "bad")
        run = ("up", "in", "--fail-fast", "-j", "1")
        again = ("2 files: are not begun; correct what failed or leave out --fail-fast, and give the same command "
                 "again")
        self.assertEqual(self.said(*run, "--in-place", code=PART_FAILED)[-1], again)
        self.assertEqual(self.said(*run, "--out-dir", "out", "--skip-existing", code=PART_FAILED)[-1], again)
        self.assertEqual(self.said(*run, "--out-dir", "out", "--force", code=PART_FAILED)[-1],
                         again + " with --skip-existing in place of --force")
        reported = (*run, "--out-dir", "out", "--report", "report")
        self.assertEqual(self.said(*reported, code=PART_FAILED)[-1], again + " with --resume")
        self.assertEqual(self.said(*reported, "--resume", code=PART_FAILED)[-1], again)
        self.assertNotIn("not begun", self.said(*run, "--out-dir", "out", "-n", code=PART_FAILED)[-1])
        for quiet in ("-q", "-qq"):
            self.assertIn("not begun", self.said(*run, "--out-dir", "out", quiet, code=PART_FAILED)[-1])
        self.assertNotIn("not begun", self.said("list", "in", "--fail-fast", "-j", "1", code=PART_FAILED)[-1])

    def test_tells_what_earlier_runs_made_of_files_that_are_not_begun(self):
        run = ("up", "in", "--out-dir", "out", "--report", "report", "--fail-fast", "--resume", "-j", "1")
        show, log = self.read("in/opera.showdata"), self.read("in/opera.logdata")
        for number in range(4):
            self.write(f"in/{number}.showdata", show)
            self.write(f"in/{number}.logdata", log)
        self.write("in/1.logdata", "bad")
        self.assertIn("10 files: 2 done, 1 failed, 7 not begun", self.said(*run, code=PART_FAILED))
        self.write("in/1.logdata", log)
        self.write("in/3.showdata", "bad")
        self.run_tool(*(argument for argument in run if argument != "--fail-fast"), code=PART_FAILED)
        self.write("in/1.logdata", "bad")
        self.write("in/new.showdata", show)
        said = self.said(*run, code=PART_FAILED)
        self.assertIn("11 files: 0 done, 2 skipped, 1 failed, 8 not begun (earlier: 5 finished, 2 failed)", said)
        self.assertEqual(said[-1], "3 files: are not begun; correct what failed or leave out --fail-fast, and give the same "
                                   "command again")
        self.assertIn("11 files: 0 would be done, 2 skipped, 1 failed, 8 not begun (earlier: 5 finished, 2 failed)",
                      self.said(*run, "-n", code=PART_FAILED))
        again = self.said(*run, "--to", "1.1", "--force", code=PART_FAILED)  # what another command has finished
        self.assertIn("11 files: 2 done, 1 failed, 8 not begun", again)
        self.write("in/1.logdata", log)
        self.write("in/3.showdata", show)
        os.remove(self.path("in/new.showdata"))
        self.run_tool(*run, "--force")
        self.write("in/0.logdata", "bad")
        said = self.said(*run, code=PART_FAILED)
        self.assertEqual(said[0], "10 files: 0 done, 1 failed, 9 not begun (earlier: 9 finished)")
        self.assertNotIn("are not begun; ", "\n".join(said))

    def test_leaves_no_folder_that_it_made_for_nothing(self):
        self.write("in/below/gala.showdata", "bad")
        self.write("in/below/gala.logdata", "bad")
        os.mkdir(self.path("there"))
        for folder in ("out", "there/out"):
            self.run_tool("up", "in", "-r", "--out-dir", folder, "--fail-on", "any-loss", code=PART_FAILED)
            self.assertEqual(sorted(os.listdir(self.path(folder))), ["opera.logdata", "opera.showdata"])
        self.run_tool("up", "in/below", "--out-dir", "new/folder", code=PART_FAILED)
        self.run_tool("up", "in/below/gala.showdata", "--out-dir", "new/folder", code=BAD_INPUT)
        self.assertFalse(os.path.exists(self.path("new")))
        os.mkdir(self.path("mine"))
        self.run_tool("up", "in/below", "--out-dir", "mine", code=PART_FAILED)
        self.assertEqual(os.listdir(self.path("mine")), [])

    def test_tells_a_damaged_companion_once(self):
        self.write("in/opera.logdata", self.read("in/opera.logdata")[:-1])
        said = self.said("up", "in", "--out-dir", "out", "--report", "report", code=PART_FAILED)
        self.assertEqual(said[0], "2 files: 0 done, 2 failed")
        self.assertRegex(said[1], r"^in/opera\.logdata: ends after .* \(needed by in/opera\.showdata\); get a complete copy")
        self.assertEqual(len(said), 2)
        codes = [json.loads(line)["error"]["code"] for line in self.read("report").splitlines()]
        self.assertEqual(codes, ["cut-off", "cut-off"])

    def test_tells_a_companion_once_that_is_not_encrypted_any_more(self):
        content = bytearray(self.read("in/opera.logdata"))
        content[0] ^= 1
        self.write("in/opera.logdata", content)
        said = self.said("up", "in", "--out-dir", "out", "--report", "report", code=PART_FAILED)
        self.assertEqual(said, [
            "2 files: 0 done, 2 failed",
            "in/opera.logdata: is not an encrypted file of this kind (offset 0) (needed by in/opera.showdata); give an "
            "encrypted show or log file" + OR_RESCUE])
        codes = [json.loads(line)["error"]["code"] for line in self.read("report").splitlines()]
        self.assertEqual(codes, ["not-encrypted", "not-encrypted"])

    def test_tells_damage_of_many_companions_once(self):
        os.mkdir(self.path("many"))
        for number in range(5):
            self.write(f"many/{number}.showdata", self.read("in/opera.showdata"))
            self.write(f"many/{number}.logdata", "bad")
        self.assertEqual(self.said("up", "many", "--out-dir", "out", code=PART_FAILED), [
            "10 files: 0 done, 10 failed",
            "5 files: is not an encrypted file of this kind (offset 0) (" +
            ", ".join(f"many/{number}.logdata (needed by many/{number}.showdata)" for number in range(5)) +
            "); give an encrypted show or log file"])

    def test_tells_many_unrelated_companions_once(self):
        os.mkdir(self.path("many"))
        other = self.encrypt("other", legacy_log(legacy_song_log("2", "Other")))
        for number in range(4):
            self.write(f"many/{number}.showdata", self.read("in/opera.showdata"))
            self.write(f"many/{number}.logdata", self.read(other))
        self.assertEqual(self.said("up", "many", "--out-dir", "out", code=PART_FAILED)[1].partition(" (")[0],
                         "8 files: belongs to another show: no song agrees in number and name")

    def test_tells_a_problem_of_many_files_once(self):
        self.write_key("key", "key = 01\niv = 02\n")
        said = self.said("up", "in", "-r", "--out-dir", "out", "--key-file", "key", code=PART_FAILED)
        self.assertEqual(said[0], "4 files: 0 done, 4 failed")
        self.assertRegex(said[1], r"^4 files: .* \(in/below/gala\.logdata, in/below/gala\.showdata, in/opera\.logdata, "
                                  r"in/opera\.showdata\); give the right key file$")
        self.assertEqual(len(said), 2)
        for number in range(6):
            self.write(f"in/{number}.showdata", self.read("in/opera.showdata"))
        said = self.said("list", "in", "-r", "--key-file", "key", code=PART_FAILED)
        self.assertRegex(said[0], r"^10 files: .* \((in/\S+, ){4}in/\S+ and 5 more\); give the right key file$")
        os.remove(self.path("in/1.showdata"))
        lines = self.run_tool("list", "in", "-r", "--json", "--key-file", "key", code=PART_FAILED).stdout.splitlines()
        self.assertEqual(len({json.loads(line)["path"] for line in lines}), 9)
        os.rename(self.path("in/below"), self.path("below"))
        said = self.said("list", "below", "in/0.showdata", "--key-file", "key", code=PART_FAILED)
        self.assertEqual([line.split(": ")[0] for line in said],
                         ["below/gala.logdata", "below/gala.showdata", "in/0.showdata"])

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
        self.assertIn("in/opera.showdata: companion in/opera.logdata: is not an encrypted file of this kind (offset 0); "
                      "give an encrypted show or log file",
                      self.said("up", "in/opera.showdata", "-o", "out", code=BAD_INPUT))

class DamagedInputTest(FolderTest):
    """All commands that read a damaged file tell the same."""

    COMMANDS = (("list", "bad"), ("info", "bad"), ("up", "bad", "-o", "out", "--show-name", "X"), ("down", "bad", "-o", "out"),
                ("convert", "bad", "--to", "2.0", "-o", "out"), ("dump", "bad"), ("print", "bad"), ("diff", "bad", "new.showdata"),
                ("diff", "new.showdata", "bad"), ("edit", "bad"), ("midi", "export", "bad", "--out-dir", "."))

    def test_of_the_encryption_has_its_place_in_json(self):
        good = self.read("new.showdata")
        self.assertEqual(good[9], 2)
        for content, offset in ((good[:-1], len(good) - 1), (good[:30], 30), (good + b"x", len(good)), (b"x" + good[1:], 0),
                                (good[:9] + b"\7" + good[10:], 9), (good[:4] + good[5:], 4),
                                (good[:60] + bytes([good[60] ^ 1]) + good[61:], None)):
            self.write("bad", content)
            for command in (["info"], ["check"], ["dump", "--offsets"]):
                error = json.loads(self.run_tool(*command, "bad", "--json", code=BAD_INPUT).stdout)["error"]
                self.assertEqual(error["offset"], offset, error["message"])

    def require_same(self, code, *commands):
        """Requires that the commands say what `check` says, whose JSON has this code."""
        for command in commands:
            said = self.said(*command, code=BAD_INPUT)
            self.assertEqual(said, self.said("check", "bad", code=BAD_INPUT), command)
            self.assertTrue(said[0].endswith(OR_RESCUE), said)
            self.assertEqual(json.loads(self.run_tool("check", "bad", "--json", code=BAD_INPUT).stdout)["error"]["code"], code)

    def test_is_told_the_same_where_it_does_not_open(self):
        good = self.read("new.showdata")
        commands = (*self.COMMANDS, ("decrypt", "bad", "-o", "out"), ("copy-fermatas", "bad", "new.log"),
                    ("copy-fermatas", "new.log", "bad"))
        for content, code in ((good[:-1], "cut-off"), (good + b"x", "bytes-after-end"),
                              (good[:-1] + bytes([good[-1] ^ 1]), "damaged")):
            self.write("bad", content)
            self.require_same(code, *commands)
        self.write("bad", 30 * "bad")
        self.require_same("not-encrypted", *commands)

    def test_names_no_rescue_of_a_file_without_content(self):
        good = self.read("new.showdata")
        for content, names_rescue in ((b"bad", False), (good[:3], False), (good[:40], False), (good[:72], False), (good[:73], True),
                                      (b"x" + good[1:72], False), (b"x" + good[1:], True), (good[:9] + b"\7" + good[10:30], False)):
            self.write("bad", content)
            for command in self.COMMANDS:
                if command[0] == "diff" and content[0] != good[0]:
                    continue  # It takes two files, and does not know whose content is at fault.
                self.assertEqual(self.said(*command, code=BAD_INPUT)[0].endswith(OR_RESCUE), names_rescue, (command, content))

    def test_is_told_the_same_where_its_content_is_damaged(self):
        self.encrypt("bad", self.plaintext("new.showdata")[:-1])
        self.require_same("cut-off", *(command for command in self.COMMANDS if command[0] != "list"))
        self.encrypt("bad", self.plaintext("new.log")[:-1])
        self.require_same("cut-off", ("copy-fermatas", "bad", "new.log"), ("copy-fermatas", "new.log", "bad"))
        self.encrypt("bad", b"nothing of this kind")
        self.assertTrue(self.said("list", "bad", code=BAD_INPUT)[0].endswith(OR_RESCUE))  # It reads the beginning only.

    def test_is_told_the_same_in_the_report(self):
        self.write("bad", self.read("new.showdata")[:-1])
        self.run_tool("convert", "bad", "--to", "2.0", "-o", "out", "--report", "report", code=BAD_INPUT)
        self.assertEqual(json.loads(self.read("report"))["error"],
                         json.loads(self.run_tool("check", "bad", "--json", code=BAD_INPUT).stdout)["error"])


if __name__ == "__main__":
    unittest.main()
