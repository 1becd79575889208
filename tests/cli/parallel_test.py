"""Several runs of zuna-convert that share a folder by --shard, started by GNU parallel."""

import json
import shutil
import subprocess
import unittest

from tool import TOOL, ToolTest, legacy_show, legacy_song


@unittest.skipUnless(shutil.which("parallel"), "GNU parallel is not installed")
class ParallelTest(ToolTest):
    def test_shares_a_folder(self):
        self.encrypt("0.showdata", legacy_show(legacy_song()))
        for number in range(1, 20):
            self.write(f"{number}.showdata", self.read("0.showdata"))
        command = f"{TOOL} up . --out-dir new --show-name X --shard {{}}/4 -j 1 --report up-{{}}.json"
        subprocess.run(["parallel", "--will-cite", command, ":::", "1", "2", "3", "4"], cwd=self.folder,
                       env=self.environment, check=True, capture_output=True)
        reports = [self.read(f"up-{shard}.json").splitlines() for shard in range(1, 5)]
        outputs = sorted(json.loads(line)["output"] for report in reports for line in report)
        self.assertEqual(outputs, sorted(f"new/{number}.showdata" for number in range(20)))
        self.assertEqual(outputs, sorted(name for name in self.files() if name.startswith("new/")))


if __name__ == "__main__":
    unittest.main()
