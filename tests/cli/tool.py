"""Runs zuna-convert as a process, in a folder of its own, and knows how to make small inputs for it."""

import os
import shutil
import struct
import subprocess
import tempfile
import unittest

TOOL = os.environ["ZUNA_CONVERT"]

# The exit codes.
DONE, USAGE, REFUSED, BAD_INPUT, WRONG_KEY, IO, PART_FAILED = 0, 2, 3, 4, 5, 6, 7
INTERRUPTED, CLOSED_PIPE = 130, 141


class ToolTest(unittest.TestCase):
    """A test whose commands run in a new folder, which is gone afterwards."""

    maxDiff = None

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="zuna-convert-")
        self.addCleanup(shutil.rmtree, self.folder)
        self.environment = {k: v for k, v in os.environ.items() if k not in ("ZUNA_KEY_FILE", "NO_COLOR")}

    def run_tool(self, *arguments, stdin=b"", code=DONE, **options):
        """Runs the tool and requires this exit code; gives the finished process."""
        options.setdefault("stdout", subprocess.PIPE)
        options.setdefault("stderr", subprocess.PIPE)
        done = subprocess.run([TOOL, *arguments], input=stdin, cwd=self.folder, env=self.environment,
                              timeout=300, check=False, **options)
        self.assertEqual(done.returncode, code, (arguments, done.stderr))
        return done

    def refuse(self, *arguments, code, message, **options):
        """Requires that the tool fails with this code and message, and leaves the folder as it was."""
        before = self.files()
        done = self.run_tool(*arguments, code=code, **options)
        self.assertEqual(done.stderr.decode(), f"zuna-convert: {message}\n")
        self.assertEqual(self.files(), before)

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, content):
        with open(self.path(name), "wb") as file:
            file.write(content.encode() if isinstance(content, str) else content)
        return name

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def files(self):
        """Every file below the folder with its content."""
        found = {}
        for folder, _, names in os.walk(self.folder):
            for name in names:
                path = os.path.join(folder, name)
                found[os.path.relpath(path, self.folder)] = self.read(path) if os.path.isfile(path) else None
        return found

    def plaintext(self, name):
        return self.run_tool("decrypt", name, "-o", "-").stdout

    def encrypt(self, name, content):
        self.run_tool("encrypt", "-", "-o", name, "--force", stdin=content)
        return name


def text(value):
    """A legacy string: length (1 byte), bytes."""
    data = value if isinstance(value, bytes) else value.encode()
    return bytes([len(data)]) + data


def sequence(code, records):
    """A legacy sequence: event code (1), length of the body (4), records."""
    body = b"".join(records)
    return code + struct.pack("<I", len(body)) + body


def legacy_song(number="1", name="Song", tracks=((1, "Piano"),), labels=((0, "1"),), tempos=(0,)):
    """A song of 480 ticks a quarter note with a note on every track and a meter of 4/4."""
    events = b"".join(struct.pack("<IIBBBB", 0, 0, 0x90, 60, 100, track) for track, _ in tracks)
    body = text(number) + text(name)
    body += struct.pack("<HI", 480, 1920)  # division, song length
    body += bytes([len(tracks)]) + b"".join(bytes([track]) + text(title) for track, title in tracks)
    body += struct.pack("<I", len(tracks)) + events
    lists = sequence(b"F", [b"F" + struct.pack("<HIfBBH", 12, time, 0.5 / 480, 8, 8, 120) for time in tempos])
    lists += sequence(b"G", [b"G" + struct.pack("<HI", 6 + len(label.encode()), time) + text(label) + b"\0"
                             for time, label in labels])
    lists += sequence(b"H", []) + sequence(b"I", [])
    lists += sequence(b"J", [b"J" + struct.pack("<HIBB", 6, 0, 4, 4)])
    timeline = b"TLMN" + text(number) + struct.pack("<II", 1920, len(lists)) + lists
    return struct.pack("<I", len(body)) + body + timeline


def legacy_show(*songs):
    return bytes([len(songs)]) + b"".join(songs)


def legacy_log(show_name="My Show"):
    """A legacy log without song logs."""
    body = bytes(16) + text("label") + text(show_name) + bytes(4)  # identifier, label, show name, tag pair
    return b"ZUNA" + struct.pack("<I", len(body)) + body


def chunk(kind, body):
    return kind + struct.pack(">I", len(body)) + body


def quantity(value):
    """A variable-length quantity of at most 2 bytes."""
    return bytes([value]) if value < 0x80 else bytes([value >> 7 | 0x80, value & 0x7F])


def midi_file(*tracks, division=480, ends=None):
    """A MIDI file of format 1. A track is its events; End of Track follows `ends` ticks after the last one."""
    header = chunk(b"MThd", struct.pack(">HHH", 1, len(tracks), division))
    ends = ends or [0] * len(tracks)
    return header + b"".join(chunk(b"MTrk", track + quantity(end) + b"\xff\x2f\x00")
                             for track, end in zip(tracks, ends))


NOTES = b"\x00\xff\x03\x05Piano\x00\xc0\x05\x00\x90\x3c\x64\x83\x60\x80\x3c\x00"


class WithShows(ToolTest):
    """Tests that begin with a legacy show, its log, and a current show."""

    def setUp(self):
        super().setUp()
        self.encrypt("old.showdata", legacy_show(legacy_song("2", "Two"), legacy_song("10", "Ten")))
        self.write("old.logdata", legacy_log())
        self.run_tool("up", "old.showdata", "-o", "new.showdata", "--companion", "old.logdata")
