"""Runs a program on a pseudo-terminal."""

import contextlib
import fcntl
import os
import pty
import struct
import subprocess
import termios
import unittest

BOTH = ("stdout", "stderr")


def open_terminal(columns):
    """Two ends, ours and that of programs, of a new terminal of this width, which is 0 where it shall not tell."""
    try:
        ours, theirs = pty.openpty()
    except OSError as error:  # a container without /dev/pts
        raise unittest.SkipTest(f"there are no terminals here: {error}") from error
    fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("HHHH", 25, columns, 0, 0))
    return ours, theirs


def run_on_terminal(command, *, columns=80, streams=BOTH, **options):
    """Runs `command` without input and with these streams on a terminal; the others go to pipes. Gives what it shows there,
    with "\\n" at the end of lines, and the exit code."""
    ours, theirs = open_terminal(columns)
    outputs = {name: theirs if name in streams else subprocess.PIPE for name in BOTH}
    shown = b""
    with os.fdopen(ours, "rb", buffering=0) as terminal:
        with subprocess.Popen(command, stdin=subprocess.DEVNULL, **outputs, **options) as process:
            os.close(theirs)
            with contextlib.suppress(OSError):  # That is how Linux says that the terminal is closed.
                while piece := terminal.read(4096):
                    shown += piece
            process.communicate(timeout=60)
    return shown.decode().replace("\r\n", "\n"), process.returncode
