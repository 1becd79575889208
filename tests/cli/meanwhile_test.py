"""What other programs do to an output of zuna-convert during the work, and signals that come then."""

import contextlib
import glob
import json
import os
import pathlib
import signal
import stat
import subprocess
import time
import unittest

from tool import DONE, IO, INTERRUPTED, REFUSED, TOOL, ToolTest, WithShows, without_codes

PLAINTEXT = bytes(200000)  # more than a pipe holds: when it is written, the tool has found its output and reads


class MeanwhileTest(WithShows):
    @contextlib.contextmanager
    def working(self, command, *options, **process_options):
        """Starts the tool with its plaintext or envelope on standard input, and ends it after the block."""
        arguments = [TOOL, command, "-", "-o", "out", *options]
        with subprocess.Popen(arguments, cwd=self.folder, env=self.environment, stdin=subprocess.PIPE,
                              stderr=subprocess.PIPE, **process_options) as process:
            process.stdin.write(self.input_of(command))
            process.stdin.flush()
            yield process
            process.stdin.close()
            process.message = process.stderr.read().decode()
            process.wait(timeout=60)

    def input_of(self, command):
        if command == "encrypt":
            return PLAINTEXT
        if "sealed" not in os.listdir(self.folder):
            self.encrypt("sealed", PLAINTEXT)
        return self.read("sealed")

    def expect(self, process, code, message):
        self.assertEqual((process.returncode, without_codes(process.message)), (code, f"zuna-convert: {message}\n"))

    def expect_done(self, process):
        self.assertEqual(process.returncode, DONE, process.message)

    def test_does_not_replace_what_appears(self):
        for command in ("encrypt", "decrypt"):
            self.input_of(command)
            before = self.files()
            with self.working(command) as process:
                self.write("out", "of another program")
            self.expect(process, REFUSED, "out: has appeared meanwhile; give --force to replace it, or another output")
            self.assertEqual(self.files(), {**before, "out": b"of another program"})
            os.remove(self.path("out"))

    def test_replaces_what_appears_when_forced(self):
        for command in ("encrypt", "decrypt"):
            with self.working(command, "--force") as process:
                self.write("out", "of another program")
                os.chmod(self.path("out"), 0o604)
            self.expect_done(process)
            self.assertNotEqual(self.read("out"), b"of another program")
            self.assertEqual(stat.S_IMODE(os.stat(self.path("out")).st_mode), 0o604)
            os.remove(self.path("out"))

    def test_does_not_follow_links_that_appear(self):
        self.write("victim", "untouched")
        for command in ("encrypt", "decrypt"):
            self.input_of(command)
            for target in ("victim", "absent"):
                before = self.files()
                os.symlink(target, self.path("link"))
                for options, code in (((), REFUSED), (("--force",), IO)):
                    with self.working(command, *options) as process:
                        os.rename(self.path("link"), self.path("out"))
                    self.assertEqual(process.returncode, code, process.message)
                    os.rename(self.path("out"), self.path("link"))
                os.remove(self.path("link"))
                self.assertEqual(self.files(), before)

    def test_follows_links_once(self):
        for command in ("encrypt", "decrypt"):
            self.write("first", "old")
            self.write("second", "untouched")
            os.symlink("first", self.path("out"))
            with self.working(command, "--force") as process:
                os.remove(self.path("out"))
                os.symlink("second", self.path("out"))
            self.expect_done(process)
            self.assertNotEqual(self.read("first"), b"old")
            self.assertEqual(self.read("second"), b"untouched")
            os.remove(self.path("out"))

    def test_lets_one_of_two_create_an_output(self):
        for command in ("encrypt", "decrypt"):
            for _ in range(20):
                with self.working(command) as first, self.working(command) as second:
                    first.stdin.close()
                    second.stdin.close()
                self.assertEqual(sorted((first.returncode, second.returncode)), [DONE, REFUSED])
                loser = first if first.returncode == REFUSED else second
                self.expect(loser, REFUSED,
                            "out: has appeared meanwhile; give --force to replace it, or another output")
                self.assertTrue(stat.S_ISREG(os.stat(self.path("out")).st_mode))
                os.remove(self.path("out"))
                self.assertFalse([name for name in self.files() if ".tmp" in name])

    def test_ends_at_signals(self):
        for number, code in ((signal.SIGINT, INTERRUPTED), (signal.SIGTERM, -signal.SIGTERM),
                             (signal.SIGHUP, -signal.SIGHUP)):
            before = self.files()
            with self.working("encrypt") as process:
                process.send_signal(number)
                process.wait(timeout=60)
            self.assertEqual(process.returncode, code)
            self.assertEqual(process.message, "zuna-convert: interrupted\n" if code == INTERRUPTED else "")
            self.assertEqual(self.files(), before)

    def test_ends_at_an_interrupt_that_nobody_reads_about(self):
        reading, writing = os.pipe()
        self.addCleanup(os.close, reading)
        os.set_blocking(writing, False)
        with contextlib.suppress(BlockingIOError):
            while True:
                os.write(writing, bytes(512))
        os.set_blocking(writing, True)
        with subprocess.Popen([TOOL, "info", "none"], cwd=self.folder, env=self.environment, stderr=writing) as process:
            os.close(writing)
            with self.assertRaises(subprocess.TimeoutExpired):
                process.wait(timeout=0.5)  # for its message
            process.send_signal(signal.SIGINT)
            try:
                self.assertEqual(process.wait(timeout=20), INTERRUPTED)
            finally:
                process.kill()

    def test_lets_signals_be_ignored(self):
        def ignore():
            for number in (signal.SIGINT, signal.SIGHUP):
                signal.signal(number, signal.SIG_IGN)

        with self.working("encrypt", preexec_fn=ignore) as process:
            process.send_signal(signal.SIGINT)
            process.send_signal(signal.SIGHUP)
        self.expect_done(process)


class ExportTest(ToolTest):
    """Signals while many files are made complete."""

    SONGS = 300

    def setUp(self):
        super().setUp()
        songs = [{"songNumber": str(number), "songName": "", "division": 480, "songLength": 480, "voices": [],
                  "timeline": {"tempos": [], "barsBeats": [], "keys": [], "pageNumbers": [],
                               "meters": [{"time": 0, "numerator": 4, "denominator": 4, "clocksPerClick": 24,
                                           "notated32PerQuarter": 8}]}}
                 for number in range(self.SONGS)]
        document = {"kind": "showdata", "fileVersion": "2.0", "showName": "", "songs": songs}
        self.encrypt("show", json.dumps(document).encode())
        self.songs = pathlib.Path(self.path("songs"))
        self.songs.mkdir()

    def is_being_made(self):
        """Whether no file has its place and not all are made."""
        return 0 < len(glob.glob(self.path("songs/.zuna-*.tmp/*"))) < self.SONGS // 2

    def is_being_placed(self):
        return (self.songs / "0.mid").exists() and glob.glob(self.path("songs/.zuna-*.tmp"))

    def signalled(self, number, is_time=is_being_made, **options):
        """Sends a signal at the time given; gives the finished process. A process that was too fast is run again on the
        old files."""
        old = {path: path.read_bytes() for path in self.songs.iterdir()}
        for _ in range(20):
            process = subprocess.Popen([TOOL, "midi", "export", "show", "--out-dir", "songs", "--force", "--quiet"],
                                       cwd=self.folder, env=self.environment, stderr=subprocess.PIPE, **options)
            with process:
                while not is_time(self) and process.poll() is None:
                    time.sleep(0.0001)
                process.send_signal(signal.SIGSTOP)
                in_time = is_time(self)
                process.send_signal(number)
                process.send_signal(signal.SIGCONT)
                process.wait(timeout=60)
                process.message = process.stderr.read().decode()
            if in_time:
                return process
            for path in self.songs.iterdir():
                path.unlink()
            for path, content in old.items():
                path.write_bytes(content)
        self.fail("the tool was never caught at work")

    def test_leaves_old_files_at_signals(self):
        (self.songs / "3.mid").write_bytes(b"old")
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGQUIT, signal.SIGXCPU, signal.SIGALRM,
                       signal.SIGUSR1, signal.SIGUSR2):
            code = INTERRUPTED if number == signal.SIGINT else -number
            process = self.signalled(number)
            self.assertEqual(process.returncode, code)
            self.assertEqual(process.message, "zuna-convert: interrupted\n" if code == INTERRUPTED else "")
            self.assertEqual(self.files(), {"show": self.read("show"), "songs/3.mid": b"old"})
            self.assertEqual(os.listdir(self.songs), ["3.mid"])

    def test_tells_of_files_that_have_their_places(self):
        process = self.signalled(signal.SIGINT, ExportTest.is_being_placed)
        self.assertEqual(process.returncode, INTERRUPTED)
        self.assertEqual(process.message, "zuna-convert: interrupted after all output was written\n")
        self.assertEqual(len(os.listdir(self.songs)), self.SONGS)

    def test_lets_one_of_two_create_all_files(self):
        for _ in range(3):
            command = [TOOL, "midi", "export", "show", "--out-dir", "songs", "--quiet"]
            both = [subprocess.Popen(command, cwd=self.folder, env=self.environment, stderr=subprocess.DEVNULL)
                    for _ in range(2)]
            self.assertEqual(sorted(process.wait(timeout=60) for process in both), [DONE, REFUSED])
            self.assertEqual(len(os.listdir(self.songs)), self.SONGS)
            for path in self.songs.iterdir():
                path.unlink()

    def test_goes_on_where_signals_are_ignored(self):
        process = self.signalled(signal.SIGHUP, preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        self.assertEqual((process.returncode, process.message), (DONE, ""))
        self.assertEqual(len(os.listdir(self.songs)), self.SONGS)


class ModeTest(WithShows):
    def mode(self, name):
        return stat.S_IMODE(os.stat(self.path(name)).st_mode)

    def test_gives_new_files_their_modes(self):
        os.mkdir(self.path("songs"))
        self.run_tool("convert", "new.showdata", "-o", "sealed", preexec_fn=lambda: os.umask(0))
        self.run_tool("decrypt", "new.showdata", "-o", "plain", preexec_fn=lambda: os.umask(0))
        self.run_tool("midi", "export", "new.showdata", "--out-dir", "songs", preexec_fn=lambda: os.umask(0o027))
        self.assertEqual([self.mode(name) for name in ("sealed", "plain", "songs/2 Two.mid")], [0o600, 0o600, 0o640])

    def test_drops_special_bits(self):
        os.mkdir(self.path("songs"))
        for command, name in ((["convert", "new.showdata", "-o", "out"], "out"),
                              (["decrypt", "new.showdata", "-o", "out"], "out"),
                              (["midi", "export", "new.showdata", "--out-dir", "songs"], "songs/2 Two.mid")):
            self.write(name, "old")
            os.chmod(self.path(name), 0o7755)
            self.run_tool(*command, "--force")
            self.assertEqual(self.mode(name), 0o755, command)

    def test_gives_another_group_no_more_than_others_had(self):
        if os.geteuid() != 0:
            self.skipTest("only root can give files to other groups")
        for path in (self.folder, self.environment["ZUNA_KEY_FILE"], self.path("new.showdata")):
            os.chown(path, 65534, 65534)
            self.addCleanup(os.chown, path, 0, 0)
        for command in ("convert", "decrypt"):
            self.write("out", "old")
            os.chown(self.path("out"), 65534, 54321)
            os.chmod(self.path("out"), 0o664)
            self.run_tool(command, "new.showdata", "-o", "out", "--force", user=65534, group=65534, extra_groups=[])
            self.assertEqual((self.mode("out"), os.stat(self.path("out")).st_gid), (0o644, 65534))

    def test_writes_the_longest_names(self):
        for command in ("convert", "decrypt"):
            self.run_tool(command, "new.showdata", "-o", command[0] * 255)
            self.run_tool(command, "new.showdata", "-o", command[0] * 255, "--force")
            self.assertGreater(len(self.read(command[0] * 255)), 0)


if __name__ == "__main__":
    unittest.main()
