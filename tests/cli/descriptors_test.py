"""What zuna-convert does when it is started with closed standard descriptors, or with non-blocking ones."""

import contextlib
import itertools
import os
import subprocess
import unittest

from tool import DONE, IO, REFUSED, TOOL, WithShows

COMBINATIONS = [numbers for count in range(4) for numbers in itertools.combinations(range(3), count)]


def closing(numbers):
    """Closes these descriptors just before the tool starts."""
    def close():
        for number in numbers:
            os.close(number)
    return close


class ClosedDescriptorsTest(WithShows):
    def run_closed(self, closed, *arguments, code=DONE):
        return self.run_tool(*arguments, code=code, preexec_fn=closing(closed))

    @unittest.skipUnless(os.path.isdir("/proc/self/fd"), "needs /proc")
    def test_no_file_gets_the_number_of_a_standard_descriptor(self):
        os.mkfifo(self.path("pipe"))
        for closed in COMBINATIONS[1:]:
            with self.subTest(closed=closed), \
                    subprocess.Popen([TOOL, "encrypt", "pipe", "-o", "out", "--force"], cwd=self.folder,
                                     env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                     stderr=subprocess.PIPE, preexec_fn=closing(closed)) as process:
                with open(self.path("pipe"), "wb") as pipe:  # opens once the tool has opened the other end
                    for number in closed:
                        self.assertEqual(os.readlink(f"/proc/{process.pid}/fd/{number}"), "/dev/null")
                    pipe.write(b"content")
                process.communicate(timeout=60)
                self.assertEqual(process.returncode, DONE)

    def test_no_message_goes_into_an_output_file(self):
        self.run_tool("down", "new.showdata", "-o", "expected")
        for closed in COMBINATIONS:
            with self.subTest(closed=closed):
                self.run_closed(closed, "down", "new.showdata", "-o", "out")
                self.assertEqual(self.read("out"), self.read("expected"))
                os.remove(self.path("out"))

    def test_no_error_goes_into_an_output_file(self):
        self.write("out", b"the old content")
        for closed in COMBINATIONS:
            with self.subTest(closed=closed):
                done = self.run_closed(closed, "down", "new.showdata", "-o", "out", code=REFUSED)
                self.assertEqual(done.stderr == b"", 2 in closed)
                self.assertEqual(self.read("out"), b"the old content")

    def test_an_output_that_cannot_be_delivered_is_an_error(self):
        for command in (["info", "new.showdata"], ["convert", "new.showdata", "-o", "-"], ["--help"]):
            for closed in COMBINATIONS:
                with self.subTest(command=command, closed=closed):
                    done = self.run_closed(closed, *command, code=IO if 1 in closed else DONE)
                    if 1 in closed and 2 not in closed:
                        self.assertRegex(done.stderr, b"^zuna-convert: standard output: cannot be written: ")

    def test_an_input_that_is_closed_is_an_error(self):
        for closed in COMBINATIONS:
            if 0 not in closed:
                continue
            with self.subTest(closed=closed):
                done = self.run_closed(closed, "encrypt", "-", "-o", "out", code=IO)
                if 2 not in closed:
                    self.assertRegex(done.stderr, b"^zuna-convert: standard input: cannot be read")
                self.assertFalse(os.path.exists(self.path("out")))


class NonBlockingPipesTest(WithShows):
    """Another program that shares a pipe may have made it non-blocking."""

    def output_of(self, stream, *arguments):
        """What the tool writes to a full pipe in the place of `stream` that is read later on."""
        reading, writing = os.pipe()
        os.set_blocking(writing, False)
        with contextlib.suppress(BlockingIOError):
            while True:
                os.write(writing, b"x" * 512)
        with open(reading, "rb") as pipe, \
                subprocess.Popen([TOOL, *arguments], cwd=self.folder, env=self.environment,
                                 **{"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, stream: writing}) as process:
            os.close(writing)
            with contextlib.suppress(subprocess.TimeoutExpired):
                process.wait(timeout=0.5)
            return pipe.read().lstrip(b"x"), process.wait(timeout=60)

    def test_outputs_are_complete(self):
        self.write("plain", bytes(200000))
        self.run_tool("encrypt", "plain", "-o", "expected")
        output, code = self.output_of("stdout", "encrypt", "plain", "-o", "-")
        self.assertEqual(code, DONE)
        self.assertTrue(output == self.read("expected"))

    def test_messages_are_complete(self):
        message = b"zuna-convert: none: cannot be opened: No such file or directory; check the path [not-found]\n"
        self.assertEqual(self.output_of("stderr", "info", "none"), (message, IO))


if __name__ == "__main__":
    unittest.main()
