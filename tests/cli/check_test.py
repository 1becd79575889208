"""check of zuna-convert: what is wrong with a file, and what a conversion would lose."""

import json
import os
import unittest

from tool import (BAD_INPUT, NEGATIVE, OR_RESCUE, PART_FAILED, USAGE, WithLogs, legacy_log, legacy_show, legacy_song, legacy_song_log,
                  without_codes)


class CheckTest(WithLogs):
    def damaged_song(self):
        """The name of a show whose song has a meter of 0/4."""
        return self.encrypt("odd.showdata", legacy_show(legacy_song("7").replace(b"\4\4", b"\0\4")))

    def test_says_that_a_file_is_sensible(self):
        self.encrypt("good.log", legacy_log(legacy_song_log("2", "Two", vamps=[(0, 480, 2)])))
        self.assertEqual(self.run_tool("check", "good.log").stdout, b"good.log: log, version 0.0, no findings\n")

    def test_names_every_finding_with_song_place_and_remedy(self):
        done = self.run_tool("check", self.damaged_song(), code=NEGATIVE)
        lines = done.stdout.decode().splitlines()
        self.assertEqual(lines[0], "odd.showdata: show, version 0.0")
        self.assertRegex(done.stdout.decode(), r"\n  error: song 7: .*; .* \[meter-zero\]\n")

    def test_says_what_a_conversion_would_lose(self):
        done = self.run_tool("check", "new.showdata", "--to", "0.0", code=None)
        self.assertIn(b'  loss: format 0.0 does not keep 1 show name ("My Show"; no log beside it has this) [show-name-dropped]\n', done.stdout)
        done = self.run_tool("check", "new.log", "--to", "2.0")
        self.assertRegex(done.stdout, b"^new.log: log, version 1.2, to 2.0 lossless\n  warning: song 2: the vamp at 480 ")
        self.assertIn(b"old.showdata: show, version 0.0", self.run_tool("check", "old.showdata", "--to", "1.2",
                                                                       code=None).stdout)

    def test_says_what_up_would_lose_by_the_companion(self):
        log = legacy_log(legacy_song_log("2", "Two", vamps=[(0, 480, 2)]), legacy_song_log("9", "Nine"))
        self.encrypt("a.logdata", log)
        said = ("zuna-convert: a.logdata: up cannot take its companion: needs its show, which has the divisions of the songs, and "
                "a.showdata is not there [companion-missing]")
        done = self.run_tool("check", "a.logdata", "--to", "1.2")
        self.assertEqual(done.stderr.decode().splitlines()[0], said)
        self.assertEqual(done.stdout, b"a.logdata: log, version 0.0, no findings, to 1.2 lossless\n")
        self.encrypt("a.showdata", legacy_show(legacy_song("2", "Two")))
        done = self.run_tool("check", "a.logdata", "--to", "1.2")
        self.assertEqual(done.stderr, b"")
        self.assertEqual(done.stdout.decode().splitlines()[1],
                         "  loss: 1 song without a division (song 9: the show has none; --division gives one) [division-defaulted]")
        self.assertIn(b"lossless", self.run_tool("check", "-", "--to", "1.2", stdin=self.read("a.logdata")).stdout)

    def test_has_what_it_says_about_the_companion_in_json(self):
        self.encrypt("a.logdata", legacy_log(legacy_song_log("2", "Two", vamps=[(0, 480, 2)])))
        line = json.loads(self.run_tool("check", "a.logdata", "--to", "1.2", "--json").stdout)
        self.assertEqual(line["notes"], ["up cannot take its companion: needs its show, which has the divisions of the songs, and "
                                         "a.showdata is not there [companion-missing]"])
        self.assertEqual(json.loads(self.run_tool("check", "new.showdata", "--to", "1.1", "--json").stdout)["notes"], [])
        self.assertNotIn("notes", json.loads(self.run_tool("check", "a.logdata", "--json").stdout))

    def test_has_findings_of_what_cannot_be_converted(self):
        self.encrypt("late.showdata", legacy_show(legacy_song("2", "Two", tempos=())))
        self.encrypt("late.logdata", legacy_log(legacy_song_log("2", "Two")))
        done = self.run_tool("check", "late.showdata", "--to", "1.2", code=BAD_INPUT)
        self.assertRegex(done.stdout.decode(), r"^late.showdata: show, version 0.0\n  error: song 2: there is no tempo; .* \[tempo-missing\]\n")
        self.assertIn("song 2: the first meter has no tempo; ", done.stderr.decode())
        line = json.loads(self.run_tool("check", "late.showdata", "--to", "1.2", "--json", code=BAD_INPUT).stdout)
        self.assertIn("tempo-missing", [finding["code"] for finding in line["findings"]])
        self.assertEqual((line["exitCode"], line["error"]["code"]), (BAD_INPUT, "cannot-be-converted"))
        self.assertEqual((line["to"], line["notes"]), ("1.2", []))
        os.rename(self.path("late.logdata"), self.path("other"))
        self.write("late.logdata", b"no log")
        done = self.run_tool("check", "late.showdata", "--to", "1.2", "--json", code=BAD_INPUT)
        line = json.loads(done.stdout)
        self.assertEqual((len(line["notes"]), line["error"]["code"]), (1, "cannot-be-converted"))
        self.assertIn("up cannot take its companion: ", line["notes"][0])
        self.assertNotIn("losses", line)

    def folder_of_all_kinds(self):
        """A folder with files that are clean, have warnings, have errors, and cannot be read."""
        os.mkdir(self.path("all"))
        os.rename(self.path(self.damaged_song()), self.path("all/odd.showdata"))
        self.encrypt("all/good.logdata", legacy_log(legacy_song_log("2", "Two", vamps=[(0, 480, 2)])))
        document = self.log_document()
        document["songLogs"][1]["vamps"].pop()
        self.write_log("all/new.logdata", document)
        self.encrypt("all/vamp.logdata", legacy_log(legacy_song_log("2", "Two", vamps=[(0, 480, -2)])))
        return "all"

    def names(self, *arguments, **options):
        """The files that standard output has something about, and the severities."""
        lines = self.run_tool("check", *arguments, **options).stdout.decode().splitlines()
        return [line.partition(":")[0].strip() for line in lines]

    def test_leaves_out_files_without_findings_where_asked(self):
        folder = self.folder_of_all_kinds()
        self.assertEqual(self.names(folder, "-q", code=NEGATIVE),
                         ["all/odd.showdata", "error", "warning", "all/vamp.logdata", "warning"])
        self.assertEqual(self.names(folder, "-qq", code=NEGATIVE), ["all/odd.showdata", "error"])
        self.assertEqual(self.names("all/good.logdata", "-q"), [])
        self.assertEqual(self.names("all/new.logdata", "-q", "--to", "0.0"), ["all/new.logdata", "loss"])
        self.assertEqual(self.names("all/new.logdata", "-qq", "--to", "0.0"), [])
        self.assertEqual(len(self.names(folder, "-qq", "--json", code=NEGATIVE)), 4)

    def test_counts_files_by_severity(self):
        folder = self.folder_of_all_kinds()
        self.assertEqual(self.run_tool("check", folder, code=NEGATIVE).stderr.decode(),
                         "zuna-convert: 4 files: 2 clean, 1 with warnings, 1 with errors, 0 failed\n")
        self.write("all/bad.showdata", "bad")
        said = self.run_tool("check", folder, "--to", "0.0", code=PART_FAILED).stderr.decode().splitlines()
        self.assertEqual(said[:2], [
            "zuna-convert: 5 files: 2 clean, 1 with warnings, 1 with errors, 1 with losses, 1 failed",
            "zuna-convert: 1 file: format 0.0 does not keep 2 divisions (no show beside it has this) [division-dropped]"])
        self.assertEqual(self.run_tool("check", "all/good.logdata", "all/vamp.logdata", "-q").stderr, b"")

    def test_counts_files_that_up_would_refuse_for_their_companions(self):
        folder = self.folder_of_all_kinds()
        self.assertEqual(self.run_tool("check", folder, "--to", "1.2", code=NEGATIVE).stderr.decode().splitlines()[-1],
                         "zuna-convert: 4 files: 1 clean, 0 with warnings, 1 with errors, 2 without the companion that up needs, "
                         "0 failed")

    def test_counts_harmless_losses_of_many_files_in_their_headings(self):
        document = self.log_document()
        document["songLogs"][1]["attacca"] = 1
        self.write_log("new.logdata", document)
        lines = self.run_tool("check", "new.logdata", "new.showdata", "--to", "0.0").stdout.decode().splitlines()
        self.assertIn("new.logdata: log, version 1.2, to 0.0 with losses and without 2 divisions", lines)
        self.assertEqual(sum("loss:" in line for line in lines), 1)
        self.assertIn("new.showdata: show, version 1.2, to 0.0 without 1 show name", lines)
        self.assertEqual(self.names("new.logdata", "new.showdata", "--to", "0.0", "-q"),
                         ["new.logdata", "warning", "loss", "new.showdata", "warning", "warning"])

    def test_refuses_other_versions(self):
        for version in ("0.1", "3.0", "x"):
            self.run_tool("check", "new.log", "--to", version, code=USAGE)

    def test_writes_json(self):
        self.write("bad", "bad")
        done = self.run_tool("check", self.damaged_song(), "bad", "new.showdata", "--to", "0.0", "--json",
                             code=PART_FAILED)
        odd, bad, show = (json.loads(line) for line in done.stdout.splitlines())
        self.assertEqual((odd["path"], odd["fileVersion"]), ("odd.showdata", "0.0"))
        finding = next(finding for finding in odd["findings"] if finding["code"] == "meter-zero")
        self.assertEqual((finding["severity"], finding["song"], finding["list"], finding["index"], finding["tick"]),
                         ("error", "7", "meters", 0, 0))
        self.assertEqual(bad["error"]["code"], "not-encrypted")
        self.assertEqual([loss["code"] for loss in show["losses"]], ["show-name-dropped"])

    def test_has_an_exit_code_in_json_only_where_a_file_failed(self):
        self.encrypt("warned.showdata", self.plaintext("old.showdata") + b"tail")
        self.write("bad", "bad")
        for name, code, severities in ((self.damaged_song(), NEGATIVE, {"error"}), ("warned.showdata", 0, {"warning"}),
                                       ("new.showdata", 0, set()), ("bad", BAD_INPUT, None)):
            line = json.loads(self.run_tool("check", name, "--json", code=code).stdout)
            self.assertEqual(line.get("exitCode"), code if severities is None else None, name)
            if severities is not None:
                found = {finding["severity"] for finding in line["findings"]}
                self.assertEqual("error" in found, "error" in severities, found)
                self.assertLessEqual(severities, found)

    def test_tells_damage_and_points_to_rescue(self):
        good = self.read("new.log")
        self.write("cut", good[:-1])
        self.write("longer", good + b"x")
        self.write("changed", good[:-1] + bytes([good[-1] ^ 1]))
        self.write("version", good[:8] + b"x" + good[9:])
        self.write("front", b"x" + good[1:])
        self.encrypt("content", self.plaintext("new.log")[:-9])
        self.encrypt("other", b"something else")
        self.encrypt("text", b'{"kind": "logdata", "fileVersion": "2.0",')
        self.assertTrue(self.run_tool("check", "text", code=BAD_INPUT).stderr.rstrip().endswith(
            b"or correct its text" + OR_RESCUE.encode() + b" [text-error]"))
        for name in ("cut", "longer", "changed", "version", "front", "content", "other"):
            with self.subTest(name):
                other = {"content": ["convert"], "other": ["up", "--show-name", "Show"]}.get(name, ["decrypt"])
                said = without_codes(self.run_tool(*other, name, "-o", "out", code=BAD_INPUT).stderr.decode())
                self.assertTrue(said.endswith(OR_RESCUE + "\n"), said)
                for command in ("check", "info", "dump", "print"):
                    self.refuse(command, name, code=BAD_INPUT,
                                message=said.removeprefix("zuna-convert: ").rstrip("\n"))
                said = without_codes(self.run_tool("dump", "--offsets", name, code=BAD_INPUT).stderr.decode())
                self.assertTrue(said.endswith(OR_RESCUE + "\n"), said)

    def test_does_not_point_to_rescue_where_it_does_not_help(self):
        self.write("empty", b"")
        self.encrypt("newer", self.plaintext("new.log")[:8] + b"\x09" + self.plaintext("new.log")[9:])
        for name in ("empty", "newer"):
            with self.subTest(name):
                self.assertNotIn(b"rescue", self.run_tool("check", name, code=BAD_INPUT).stderr)


if __name__ == "__main__":
    unittest.main()
