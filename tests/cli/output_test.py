"""Where zuna-convert writes, and that nothing is left behind when it cannot."""

import os
import resource
import signal
import subprocess
import unittest

from tool import CLOSED_PIPE, IO, INTERRUPTED, REFUSED, TOOL, WithShows, legacy_show, legacy_song


class OutputTest(WithShows):
    def test_does_not_replace_files_unless_forced(self):
        self.refuse("convert", "new.showdata", "-o", "old.logdata", code=REFUSED,
                    message="old.logdata: exists; give --force to replace it, --skip-existing to pass over it, or another "
                            "output")
        self.run_tool("convert", "new.showdata", "-o", "old.logdata", "--force")
        self.assertEqual(self.read("old.logdata"), self.read("new.showdata"))

    def test_never_writes_over_an_input(self):
        os.symlink("new.showdata", self.path("link"))
        os.link(self.path("new.showdata"), self.path("twin"))
        for name in ("new.showdata", "link", "twin", "./new.showdata"):
            self.refuse("convert", "new.showdata", "-o", name, "--force", code=REFUSED,
                        message=f"{name}: is an input as well; give another output")
        self.refuse("up", "old.showdata", "-o", "old.logdata", "--companion", "old.logdata", "--force",
                    code=REFUSED, message="old.logdata: is an input as well; give another output")

    def test_writes_regular_files_only(self):
        os.mkfifo(self.path("pipe"))
        os.mkdir(self.path("folder"))
        for name in ("pipe", "folder", "/dev/full"):
            self.refuse("convert", "new.showdata", "-o", name, "--force", code=REFUSED,
                        message=f"{name}: is not a regular file; give another output, or - for a pipe")

    def test_reports_outputs_that_cannot_be_written(self):
        for command in (["convert", "new.showdata"], ["decrypt", "new.showdata"]):
            done = self.run_tool(*command, "-o", "no/such/folder/out", code=IO)
            self.assertRegex(done.stderr, b"^zuna-convert: no/such/folder/out: .*; .*\n$")

    def test_reports_a_full_device(self):
        with open("/dev/full", "wb") as full:
            for command in (["convert", "new.showdata", "-o", "-"], ["decrypt", "new.showdata", "-o", "-"],
                            ["info", "new.showdata"]):
                done = self.run_tool(*command, code=IO, stdout=full)
                self.assertRegex(done.stderr, b"^zuna-convert: standard output: cannot be written: ")
            self.run_tool("--help", code=IO, stdout=full)

    def test_says_nothing_about_losses_when_nothing_is_written(self):
        self.encrypt("odd", legacy_show(legacy_song(labels=((0, "Prologue"),))))
        self.assertIn(b"is cut", self.run_tool("up", "odd", "-o", "out", "--companion", "old.logdata").stderr)
        for command in (["up", "odd", "--companion", "old.logdata"], ["down", "new.showdata"]):
            done = self.run_tool(*command, "-o", "no/out", code=IO)
            self.assertRegex(done.stderr, b"^zuna-convert: no/out: .*\n$")

    def test_ends_silently_at_a_closed_pipe(self):
        reading, writing = os.pipe()
        os.close(reading)
        with os.fdopen(writing, "wb") as closed:
            for command in (["convert", "new.showdata", "-o", "-"], ["info", "new.showdata"], ["--help"]):
                self.assertEqual(self.run_tool(*command, code=CLOSED_PIPE, stdout=closed).stderr, b"")

    def test_leaves_nothing_behind_at_a_size_limit(self):
        self.write("big", bytes(100000))
        self.write("big-target", b"the old content")
        self.run_tool("encrypt", "big", "-o", "sealed")
        before = self.files()

        def limit_file_size():
            resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096))

        for command in (["encrypt", "big"], ["decrypt", "sealed"]):
            for target in ("out", "big-target"):
                done = self.run_tool(*command, "-o", target, "--force", code=IO, preexec_fn=limit_file_size)
                self.assertRegex(done.stderr.decode(), f"^zuna-convert: {target}: .*\n$")
                self.assertEqual(self.files(), before)

    def test_leaves_nothing_behind_on_a_full_disk(self):
        disk = self.path("disk")
        os.mkdir(disk)
        mount = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "tmpfs", disk], check=False,
                               stderr=subprocess.PIPE)
        if mount.returncode != 0:
            self.skipTest("a small disk cannot be mounted here: " + mount.stderr.decode().strip())
        self.addCleanup(subprocess.run, ["umount", disk], check=True)
        self.write("big", bytes(100000))
        self.write("disk/out", b"the old content")
        before = self.files()
        done = self.run_tool("encrypt", "big", "-o", "disk/out", "--force", code=IO)
        self.assertRegex(done.stderr, b"^zuna-convert: disk/out: ")
        self.assertEqual(self.files(), before)


class InterruptTest(WithShows):
    def test_ends_at_once_and_leaves_nothing(self):
        before = self.files()
        with subprocess.Popen([TOOL, "encrypt", "-", "-o", "out"], cwd=self.folder, env=self.environment,
                              stdin=subprocess.PIPE, stderr=subprocess.PIPE) as process:
            process.stdin.write(bytes(200000))  # more than a pipe holds: when this is done, the tool is reading
            process.stdin.flush()
            process.send_signal(signal.SIGINT)
            self.assertEqual(process.wait(timeout=60), INTERRUPTED)
            self.assertEqual(process.stderr.read(), b"zuna-convert: interrupted\n")
        self.assertEqual(self.files(), before)


if __name__ == "__main__":
    unittest.main()
