"""Several runs of zuna-convert that share a folder by --shard."""

import contextlib
import json
import os
import shutil
import signal
import subprocess
import time
import unittest

import schemas
from tool import TOOL, ToolTest, legacy_show, legacy_song


class ParallelTest(ToolTest):
    @unittest.skipUnless(shutil.which("parallel"), "GNU parallel is not installed")
    def test_shares_a_folder(self):
        self.encrypt("0.showdata", legacy_show(legacy_song()))
        for number in range(1, 20):
            self.write(f"{number}.showdata", self.read("0.showdata"))
        command = f"{TOOL} up . --out-dir new --show-name X --shard {{}}/4 -j 1 --report up-{{}}.json"
        subprocess.run(["parallel", "--will-cite", command, ":::", "1", "2", "3", "4"], cwd=self.folder,
                       env=self.environment, check=True, capture_output=True)
        self.expect_shared(20)

    def test_goes_on_where_a_run_was_killed(self):
        show = legacy_show(*(legacy_song(str(number)) for number in range(200)))
        self.encrypt("0.showdata", show)
        for number in range(1, 60):
            self.write(f"{number}.showdata", self.read("0.showdata"))
        arguments = [TOOL, "up", ".", "--out-dir", "new", "--show-name", "X", "-j", "1", "--resume"]
        runs = [[*arguments, "--shard", f"{shard}/4", "--report", f"up-{shard}.json"] for shard in range(1, 5)]
        with contextlib.ExitStack() as stack:
            processes = [stack.enter_context(subprocess.Popen(run, cwd=self.folder, env=self.environment,
                                                              stderr=subprocess.DEVNULL)) for run in runs]
            while not any(self.has_line(f"up-{shard}.json") for shard in range(1, 5)):
                time.sleep(0.001)
            for process in processes[::2]:
                process.kill()
            codes = [process.wait(timeout=60) for process in processes]
        self.assertIn(-signal.SIGKILL, codes[::2])
        self.assertEqual(codes[1::2], [0, 0])
        for run in runs:
            self.run_tool(*run[1:])
        self.expect_shared(60)

    def has_line(self, report):
        return os.path.exists(self.path(report)) and b"\n" in self.read(report)

    def expect_shared(self, count):
        """Requires that each output is there, and once in one report."""
        reports = [self.read(f"up-{shard}.json").splitlines(keepends=True) for shard in range(1, 5)]
        for lines in reports:
            schemas.check_lines("report", lines)
        outputs = sorted(json.loads(line)["output"] for report in reports for line in report)
        self.assertEqual(outputs, sorted(f"new/{number}.showdata" for number in range(count)))
        written = [name for name in self.files() if name.startswith("new/")]
        # What a killed run has left stays: another machine may be using it.
        self.assertEqual(outputs, sorted(name for name in written if not name.startswith("new/.zuna-")))


if __name__ == "__main__":
    unittest.main()
