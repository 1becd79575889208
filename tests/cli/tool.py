"""Runs zuna-convert as a process, in a folder of its own, and knows how to make small inputs for it."""

import json
import os
import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import unittest

import schemas

TOOL = os.environ["ZUNA_CONVERT"]

# The key that every test uses unless it says otherwise; readable by its owner only.
KEY_FILE = tempfile.NamedTemporaryFile("w", prefix="zuna-key-")
KEY_FILE.write("key = 6b6579\niv = 6976\n")
KEY_FILE.flush()

# The exit codes.
DONE, NEGATIVE, USAGE, REFUSED, BAD_INPUT, WRONG_KEY, IO, PART_FAILED, NOTHING_MATCHED = range(9)
INTERRUPTED, CLOSED_PIPE = 130, 141

# What the messages of commands that read a file end with, where it may be a damaged one.
OR_RESCUE = ", or save what is left of a damaged file with rescue"


def undo_command():
    """The command of docs/folders.md that undoes --in-place by the report up.json."""
    page = pathlib.Path(__file__).parents[2] / "docs/folders.md"
    command, = (line for line in page.read_text().splitlines() if ".backup" in line and "| sh -e" in line)
    return command


def without_codes(said):
    """The lines of a text without the codes at their ends."""
    return re.sub(r" \[[a-z-]+\]$", "", said, flags=re.MULTILINE)


class ToolTest(unittest.TestCase):
    """A test whose commands run in a new folder, which is gone afterwards."""

    maxDiff = None

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="zuna-convert-")
        self.addCleanup(shutil.rmtree, self.folder)
        self.environment = {k: v for k, v in os.environ.items() if k != "NO_COLOR"}
        self.environment["ZUNA_KEY_FILE"] = KEY_FILE.name

    def run_tool(self, *arguments, stdin=b"", code=DONE, **options):
        """Runs the tool and requires this exit code, or any for None, and JSON that follows its schemas; gives the finished
        process."""
        options.setdefault("stdout", subprocess.PIPE)
        options.setdefault("stderr", subprocess.PIPE)
        run = schemas.Run(arguments, self.folder)
        done = subprocess.run([TOOL, *arguments], input=stdin, cwd=self.folder, env=self.environment,
                              timeout=300, check=False, **options)
        if code is not None:
            self.assertEqual(done.returncode, code, (arguments, done.stderr))
        run.check(done.stdout, done.stderr)
        return done

    def refuse(self, *arguments, code, message, **options):
        """Requires that the tool fails with this exit code and message, and leaves the folder as it was.

        The message is without the code of the error, which all but usage errors must have.
        """
        before = self.files()
        said = self.run_tool(*arguments, code=code, **options).stderr.decode()
        self.assertEqual(without_codes(said), f"zuna-convert: {message}\n")
        self.assertEqual(said == without_codes(said), code == USAGE)
        self.assertEqual(self.files(), before)

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, content):
        with open(self.path(name), "wb") as file:
            file.write(content.encode() if isinstance(content, str) else content)
        return name

    def write_key(self, name, content):
        """Writes a key file that only its owner may read."""
        self.write(name, content)
        os.chmod(self.path(name), 0o600)
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
        self.run_tool("encrypt", "-", "-o", name, "--force", "--no-verify", stdin=content)
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


def paired(code, start, end, value):
    """A legacy paired event: event code (1), length (2), start, end, value (a byte, or a float)."""
    number = struct.pack("<f", value) if isinstance(value, float) else struct.pack("<b", value)
    return code + struct.pack("<HII", 8 + len(number), start, end) + number


def legacy_song_log(number="1", name="Song", vamps=(), cuts=(), tempo_scales=(), caesuras=(), markers=()):
    """A song log of 1920 ticks, with (start, end, value) of paired events, times, and (time, text) of markers."""
    lists = sequence(b"B", [paired(b"B", *cut) for cut in cuts]) + sequence(b"@", [paired(b"@", *v) for v in vamps])
    lists += sequence(b"A", []) + sequence(b"L", [])
    lists += sequence(b"D", [paired(b"D", *scale) for scale in tempo_scales]) + sequence(b"C", [])
    lists += sequence(b"N", [b"N" + struct.pack("<HI", 4, time) for time in caesuras])
    lists += sequence(b"E", [struct.pack("<I", time) + text(title) for time, title in markers])
    return struct.pack("<I", len(lists) - 4) + text(number) + text(name) + struct.pack("<I", 1920) + lists


def legacy_log(*songs, show_name="My Show"):
    """A legacy log: magic (4), length (4), identifier (16), label, show name, tag pair (2 + 2), song logs."""
    body = bytes(range(16)) + text("label") + text(show_name) + struct.pack("<HH", 3, 4) + b"".join(songs)
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


class WithLogs(WithShows):
    """Tests that have a legacy log with edits and its current form as well."""

    def setUp(self):
        super().setUp()
        self.encrypt("old.log", legacy_log(
            legacy_song_log("10", "Ten", caesuras=[240], markers=[(0, "A"), (480, "B")]),
            legacy_song_log("2", "Two", vamps=[(0, 480, 2), (480, 960, -3)], tempo_scales=[(0, 960, 1.5)])))
        self.run_tool("up", "old.log", "-o", "new.log", "--companion", "old.showdata")

    def log_document(self, name="new.log"):
        """The log as its text form holds it."""
        self.run_tool("convert", name, "-o", "document", "--to", "2.0")
        document = json.loads(self.plaintext("document"))
        os.remove(self.path("document"))
        return document

    def write_log(self, name, document, version="1.2"):
        """Writes the log of a document."""
        self.run_tool("encrypt", "-", "-o", "document", stdin=json.dumps(document).encode())
        self.run_tool("convert", "document", "-o", name, "--to", version, "--force")
        os.remove(self.path("document"))
        return name
