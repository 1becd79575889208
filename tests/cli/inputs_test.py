"""Inputs of zuna-convert that are too large, and inputs that are pipes."""

import os
import resource
import sys
import threading
import unittest

from tool import BAD_INPUT, IO, WithLogs

LIMIT = (1 << 30) + 4096        # bytes of an encrypted file
KEY_LIMIT = (64 << 10) - 1   # bytes of a key file
MAXRSS_UNIT = 1 if sys.platform == "darwin" else 1024


class TooLargeTest(WithLogs):
    """A file that takes no room on the disk is larger than what is read."""

    def setUp(self):
        super().setUp()
        os.truncate(self.path(self.write("large", "")), LIMIT + 1)
        self.too_large = f"large: holds more than {LIMIT} bytes; give another file"

    def tearDown(self):
        peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss * MAXRSS_UNIT
        self.assertLess(peak, LIMIT, "of all processes so far")

    def refuse_large(self, *arguments, before=""):
        done = self.run_tool(*arguments, code=BAD_INPUT)
        self.assertEqual(done.stderr.decode(), f"zuna-convert: {before}{self.too_large} [too-large]\n")
        self.assertEqual(done.stdout, b"")
        self.assertFalse(os.path.exists(self.path("out")))

    def test_is_refused_by_every_command(self):
        self.refuse_large("up", "large", "-o", "out", "--companion", "old.logdata")
        self.refuse_large("up", "old.showdata", "-o", "out", "--companion", "large",
                          before="old.showdata: companion ")
        self.refuse_large("down", "large", "-o", "out")
        self.refuse_large("convert", "large", "-o", "out")
        self.refuse_large("info", "large")
        self.refuse_large("print", "large")
        self.refuse_large("encrypt", "large", "-o", "out")
        self.refuse_large("decrypt", "large", "-o", "out")
        self.refuse_large("copy-fermatas", "large", "new.log")
        self.refuse_large("copy-fermatas", "new.log", "large")
        self.refuse_large("midi", "import", "large", "-o", "out")
        os.mkdir(self.path("songs"))
        self.refuse_large("midi", "export", "large", "--out-dir", "songs")
        self.assertEqual(os.listdir(self.path("songs")), [])

    def test_is_passed_over_by_list(self):
        os.mkdir(self.path("shows"))
        os.rename(self.path("large"), self.path("shows/large.showdata"))
        done = self.run_tool("list", "shows", code=BAD_INPUT)
        self.assertEqual(done.stderr.decode(), "zuna-convert: shows/"
                         f"{self.too_large.replace('large:', 'large.showdata:')} [too-large]\n")

    def test_is_no_key_file(self):
        os.truncate(self.path(self.write_key("key", "")), LIMIT + 1)
        done = self.run_tool("info", "new.log", "--key-file", "key", code=BAD_INPUT)
        self.assertEqual(done.stderr.decode(), f"zuna-convert: key: holds more than {KEY_LIMIT} bytes; "
                         "give another file [too-large]\n")


class PipeTest(WithLogs):
    def test_is_read_when_it_is_named(self):
        os.mkfifo(self.path("pipe"))
        content = self.read("new.log")
        writer = threading.Thread(target=lambda: self.write("pipe", content))
        writer.start()
        done = self.run_tool("info", "pipe")
        writer.join()
        self.assertTrue(done.stdout.startswith(b"pipe: log, version 1.2"), done.stdout)


if __name__ == "__main__":
    unittest.main()
