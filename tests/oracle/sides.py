"""The two sides of the comparison: the readers of this folder, and the library in the program dump.

An answer is a pair: "accepted" and the model in the form of README.md, or "refused" and the class of the error. The class
is None where it depends on which of several errors a reader comes to first.
"""

import json
import subprocess

import probe
import version0
import version1
import version2
from current import FormatError, UnsupportedVersion

CURRENT = ("show", "log")
ENVELOPE = b"\x89"  # the first byte of an encrypted file; the library names a damaged one as such
MODEL = b'{"ok": true, "model": '  # how an answer of dump with a model begins; it ends with MODEL_END
MODEL_END = b"}\n"


class Library:
    """The program dump."""

    def __init__(self, program):
        self.program, self.process = program, None

    def answer(self, reader, data):
        """The answer of the library; ("ended", None) where the program ends without one."""
        if not self.process:
            self.process = subprocess.Popen([self.program], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.process.stdin.write(f"{reader} {data.hex()}\n".encode())
        self.process.stdin.flush()
        line = self.process.stdout.readline()
        if line.endswith(b"\n"):
            return read_answer(reader, line)
        self.close()
        return "ended", None

    def close(self):
        if self.process:
            self.process.communicate()
            self.process = None


def read_answer(reader, line):
    """An answer from a line of dump. The text form stays as it is spelled."""
    if reader in CURRENT and line.startswith(MODEL):
        return "accepted", line[len(MODEL):-len(MODEL_END)].decode()
    answer = json.loads(line)
    if not answer["ok"]:
        return "refused", answer["class"]
    return "accepted", in_order(answer["model"])


def answer(reader, data):
    """The answer of the readers of this folder."""
    try:
        return "accepted", model_of(reader, data)
    except UnsupportedVersion:
        return "refused", "UnsupportedVersionError"
    except FormatError:
        return "refused", "DataError" if reader in CURRENT and not data.startswith((b"{", ENVELOPE)) else None


def same(ours, theirs):
    return ours == theirs or ours == ("refused", None) == (theirs[0], None)


def model_of(reader, data):
    if reader == "probe":
        return probe.read(data)
    if reader in CURRENT:
        read = version2.read if data.startswith(b"{") else version1.read
        return version2.write(reader, read(reader, data)).decode().replace("\n", "")
    return in_order(plain(version0.read_show(data) if reader == "legacy-show" else version0.read_log(data)))


def plain(value, key=None):
    """A legacy model in the form of JSON."""
    if key == "identifier":
        return version2.spell_identifier(value)
    if key in ("songs", "songLogs"):
        return [plain(song) for song in value.values()]
    if isinstance(value, dict):
        return {key: plain(entry, key) for key, entry in value.items()}
    if isinstance(value, list):
        return [plain(entry) for entry in value]
    return json.loads(version2.spell_text(value)) if isinstance(value, bytes) else value


def in_order(model):
    """A legacy model with its songs in an order of their own."""
    for key in ("songs", "songLogs"):
        if key in model:
            model[key].sort(key=lambda song: json.dumps(song["songNumber"]))
    return model
