"""That the preloaded library does what tests/faults/shim/plan.h says, with programs whose calls are known."""

import errno
import os
import signal
import tempfile
import sys
import unittest

from shim import run

CAT = "/bin/cat"


class ShimTest(unittest.TestCase):
    def setUp(self):
        file = tempfile.NamedTemporaryFile()
        self.addCleanup(file.close)
        file.write(b"content")
        file.flush()
        self.name = file.name

    def test_counts_calls(self):
        done = run([CAT, self.name])
        self.assertEqual((done.code, done.output, done.fired), (0, b"content", 0))
        self.assertEqual(done.counts["read"], 2)
        self.assertEqual(done.counts["write"], 1)
        self.assertGreater(done.counts["memory"], 0)
        self.assertGreaterEqual(done.calls, 3)
        self.assertEqual((done.at_exit, done.descriptors), (1, 0))

    def test_fails_one_call(self):
        done = run([CAT, self.name], f"read:1:{errno.EIO}")
        self.assertEqual((done.code, done.output, done.fired), (1, b"", 1))
        self.assertIn(os.strerror(errno.EIO).encode(), done.errors)
        self.assertEqual(run([CAT, self.name], f"read:3:{errno.EIO}").code, 0)

    def test_fails_all_later_calls(self):
        done = run([CAT, self.name, self.name], f"open:1:{errno.EMFILE}+")
        self.assertEqual((done.code, done.output, done.fired), (1, b"", 2))

    def test_fails_as_many_calls_as_told(self):
        done = run([CAT, self.name, self.name, self.name], f"open:1:{errno.EMFILE}x2")
        self.assertEqual((done.code, done.output, done.fired), (1, b"content", 2))

    def test_makes_transfers_short(self):
        done = run([CAT, self.name], "read:1:short+")
        self.assertEqual((done.code, done.output), (0, b"content"))
        self.assertEqual(done.fired, len("content") + 1)

    def test_fails_allocations(self):
        done = run([CAT, self.name], f"memory:1:{errno.ENOMEM}+")
        self.assertGreaterEqual(done.fired, 1)

    def test_kills(self):
        done = run([CAT, self.name], "write:1:kill")
        self.assertEqual((done.code, done.output, done.fired), (-signal.SIGKILL, b"", 1))
        self.assertEqual((done.at_exit, done.counts["read"]), (0, 1))
        calls = run([CAT, self.name]).calls
        for call in range(1, calls + 1):
            self.assertEqual(run([CAT, self.name], f"any:{call}:kill").code, -signal.SIGKILL)
        self.assertEqual(run([CAT, self.name], f"any:{calls + 1}:kill").code, 0)

    def test_kills_what_does_not_end(self):
        done = run(["/bin/sleep", "600"], timeout=1)
        self.assertEqual((done.code, done.at_exit), (-signal.SIGKILL, 0))

    def test_counts_descriptors_that_stay_open(self):
        done = run([sys.executable, "-c", f"import os; os.open({self.name!r}, 0); os._exit(3)"])
        self.assertEqual((done.code, done.at_exit, done.descriptors), (3, 1, 1))


if __name__ == "__main__":
    unittest.main()
