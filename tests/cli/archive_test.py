"""A whole archive that zuna-convert brings up, killed three times on the way: what is there in the end, and what is said."""

import json
import os
import random
import shutil
import signal
import subprocess
import time
import unittest

import archive
from tool import BAD_INPUT, IO, PART_FAILED, TOOL, WRONG_KEY, ToolTest, undo_command

FILES = int(os.environ.get("ZUNA_ARCHIVE_FILES", "2000"))
KILLS = 3
CODES = {archive.DAMAGED: (BAD_INPUT, WRONG_KEY), archive.OTHER_KEY: (WRONG_KEY,), archive.ALONE: (IO,)}


class ArchiveTest(ToolTest):
    @classmethod
    def setUpClass(cls):
        cls.archive = archive.make_files(FILES)
        cls.failing = {f"in/{name}" for name, file in cls.archive.items() if file.kind in archive.FAILING}

    def setUp(self):
        super().setUp()
        archive.write_files(self.archive, self.path("in"))
        self.before = self.files()

    def kill_and_resume(self, *options, seed):
        """Runs a conversion, kills it at moments all over its life, and lets the last run end. Gives what that one says."""
        arguments = ["up", "in", "-r", "--report", "report", *options]
        chance, codes = random.Random(seed), set()
        for moment in sorted(chance.sample(range(FILES), KILLS)):
            with subprocess.Popen([TOOL, *arguments], cwd=self.folder, env=self.environment,
                                  stderr=subprocess.DEVNULL) as process:
                while process.poll() is None and self.lines_of_report() < moment:
                    time.sleep(0.002)
                time.sleep(chance.uniform(0, 0.01))
                process.kill()
            codes.add(process.returncode)
            arguments += [] if "--resume" in arguments else ["--resume"]
        self.assertLessEqual({-signal.SIGKILL}, codes)
        self.assertLessEqual(codes, {-signal.SIGKILL, PART_FAILED})
        return self.run_tool(*arguments, code=PART_FAILED).stderr.decode()

    def lines_of_report(self):
        return self.read("report").count(b"\n") if os.path.exists(self.path("report")) else 0

    def last_lines(self):
        """What the report has about each input in the end."""
        last = {}
        for line in self.read("report").splitlines():
            entry = json.loads(line)
            last[entry["path"]] = entry
        return last

    def expect_files(self, expected):
        """Requires these files and no others, not even empty folders of the tool's own."""
        found = self.files()
        found.pop("report")
        self.assertEqual(found.keys(), expected.keys())
        self.assertEqual([name for name in found if found[name] != expected[name]], [])
        hidden = [path for path, _, _ in os.walk(self.folder) if "/.zuna-" in path]
        self.assertEqual(hidden, [])

    def expect_failures(self, said):
        """Requires that each failure is told once, after the summary, and is the last that the report says of its file."""
        before, summary, after = said.partition(f"zuna-convert: {len(self.archive)} files: ")
        self.assertTrue(summary, said[-2000:])
        told = [line.removeprefix("zuna-convert: ").partition(": ")[0] for line in after.splitlines()[1:]]
        together = [name for name in told if name.endswith(" files")]  # with the same problem
        alone = set(told) - set(together)
        self.assertEqual(len(alone) + len(together), len(told))
        self.assertLessEqual(alone, self.failing)
        self.assertEqual(sum(int(name.split()[0]) for name in together) + len(alone), len(self.failing))
        self.assertFalse(self.failing & {line.split(": ")[1] for line in before.splitlines()})
        last = self.last_lines()
        self.assertEqual(last.keys(), {f"in/{name}" for name in self.archive})
        for name, file in self.archive.items():
            entry = last[f"in/{name}"]
            self.assertEqual(entry["status"] == "failed", file.kind in archive.FAILING, entry)
            self.assertIn(entry["exitCode"], CODES.get(file.kind, (0,)), entry)

    def test_goes_on_where_it_was_killed(self):
        reports = []
        outputs = {f"out/{name}": file.converted for name, file in self.archive.items() if file.kind not in archive.FAILING}
        for workers in ("1", "8"):
            with self.subTest(workers=workers):
                said = self.kill_and_resume("--out-dir", "out", "-j", workers, seed=int(workers))
                self.expect_files({**self.before, **outputs})
                self.expect_failures(said)
                reports.append(self.last_lines())
                shutil.rmtree(self.path("out"))
                os.remove(self.path("report"))
        self.assertEqual(*reports)

    def test_goes_on_in_place(self):
        said = self.kill_and_resume("--in-place", "-j", "8", seed=3)
        self.expect_failures(said)
        expected = dict(self.before)
        for name, file in self.archive.items():
            if file.kind == archive.DONE:
                expected[f"in/{name}"] = file.converted
                expected[f"in/{name}.~1~"] = file.content
        self.expect_files(expected)
        if shutil.which("jq"):
            undo = undo_command().replace("up.undone.json", "report").replace("up.json", "report-of-run")
            os.rename(self.path("report"), self.path("report-of-run"))
            subprocess.run(["sh", "-c", undo], cwd=self.folder, check=True)
            self.expect_files(self.before)


if __name__ == "__main__":
    unittest.main()
