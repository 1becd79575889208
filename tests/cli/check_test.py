"""check of zuna-convert: what is wrong with a file, and what a conversion would lose."""

import json
import unittest

from tool import (BAD_INPUT, NEGATIVE, PART_FAILED, USAGE, WithLogs, legacy_log, legacy_show, legacy_song, legacy_song_log,
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
        self.assertIn(b'  loss: format 0.0 does not keep 1 show name ("My Show"; up takes it from the log) [show-name-dropped]\n', done.stdout)
        done = self.run_tool("check", "new.log", "--to", "2.0")
        self.assertRegex(done.stdout, b"^new.log: log, version 1.2, to 2.0 lossless\n  warning: song 2: the vamp at 480 ")
        self.assertIn(b"old.showdata: show, version 0.0", self.run_tool("check", "old.showdata", "--to", "1.2",
                                                                       code=None).stdout)

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

    def test_tells_damage(self):
        self.write("cut", self.read("new.log")[:-1])
        said = without_codes(self.run_tool("info", "cut", code=BAD_INPUT).stderr.decode())
        self.refuse("check", "cut", code=BAD_INPUT, message=said.removeprefix("zuna-convert: ").rstrip("\n"))


if __name__ == "__main__":
    unittest.main()
