"""Two runs of zuna-convert at once that are given one report."""

import contextlib
import json
import os
import signal
import subprocess
import time
import unittest

import schemas
from folder import FolderTest
from tool import DONE, NOTHING_MATCHED, REFUSED, TOOL

RUN = ("up", "in", "-r", "--out-dir", "other", "--report")
IN_USE = "report: is in use by another run; wait until that run ends, or give another file to --report"


class ReportLockTest(FolderTest):
    @contextlib.contextmanager
    def working(self):
        """A run that has reported its first input and waits for its second one, which comes through a pipe."""
        command = [TOOL, "up", "in/opera.showdata", "in/pipe.showdata", "--out-dir", "out", "--show-name", "X",
                   "--report", "report", "-j", "1"]
        with subprocess.Popen(command, cwd=self.folder, env=self.environment, stderr=subprocess.DEVNULL) as process:
            try:
                while not os.path.exists(self.path("report")) or not self.read("report"):
                    self.assertIsNone(process.poll())
                    time.sleep(0.005)
                yield process
            finally:
                process.kill()

    def end(self, process):
        """Lets it read its second input."""
        with open(self.path("in/pipe.showdata"), "wb") as pipe:
            pipe.write(self.read("in/opera.showdata"))
        self.assertEqual(process.wait(timeout=60), DONE)

    def test_refuses_the_second_run(self):
        with self.working() as first:
            for options in ((), ("--resume",), ("-n",)):
                self.refuse(*RUN, "report", *options, code=REFUSED, message=IN_USE)
            self.assertIn(b"[report-in-use]", self.run_tool(*RUN, "report", code=REFUSED).stderr)
            self.run_tool(*RUN, "own")
            self.end(first)
        self.assertEqual(len(self.read("report").splitlines()), 2)
        self.run_tool("up", "in", "-r", "--out-dir", "third", "--report", "report")
        self.assertEqual(len(self.read("report").splitlines()), 6)

    def test_knows_the_report_by_every_name(self):
        with self.working():
            os.link(self.path("report"), self.path("second"))
            os.symlink("report", self.path("third"))
            for name in ("second", "third", self.path("report")):
                self.refuse(*RUN, name, code=REFUSED, message=IN_USE.replace("report", name, 1))

    def test_leaves_nothing_behind_when_it_is_killed(self):
        with self.working() as first:
            first.send_signal(signal.SIGKILL)
            first.wait(timeout=60)
            self.assertEqual(self.said("up", "in", "--out-dir", "out", "--show-name", "X", "--report", "report",
                                       "--resume")[-1], "2 files: 1 done, 1 skipped, 0 failed")

    def test_keeps_other_failures_out_of_the_report(self):
        os.mkdir(self.path("none"))
        with self.working():
            before = self.read("report")
            said = self.said("up", "none", "--out-dir", "other", "--report", "report", code=NOTHING_MATCHED)
            self.assertTrue(said[0].startswith("none: "), said)
            self.assertEqual(self.read("report"), before)

    def test_lets_runs_in_one_after_the_other(self):
        commands = [[TOOL, *RUN, "report", "--resume"] for _ in range(8)]
        runs = [subprocess.Popen(command, cwd=self.folder, env=self.environment, stderr=subprocess.PIPE)
                for command in commands]
        said = [run.communicate(timeout=60)[1].decode() for run in runs]
        codes = [run.returncode for run in runs]
        self.assertLessEqual(set(codes), {DONE, REFUSED}, said)
        self.assertIn(DONE, codes)
        for code, text in zip(codes, said):
            self.assertEqual(code == REFUSED, "[report-in-use]" in text, said)
        lines = self.read("report").splitlines(keepends=True)
        schemas.check_lines("report", lines)
        self.assertEqual([json.loads(line)["status"] for line in lines], ["done"] * 4)


if __name__ == "__main__":
    unittest.main()
