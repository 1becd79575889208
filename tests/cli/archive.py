#!/usr/bin/env python3
"""Makes an archive: many small shows and logs of several shapes and versions, some of which cannot be converted.

    ZUNA_CONVERT=TOOL tests/cli/archive.py FOLDER [--files N]

The files are in FOLDER/in, their key in FOLDER/key. Of 100 files, one is damaged, one has another key, one is of the
current version already, and one has no companion.
"""

import argparse
import dataclasses
import os
import pathlib
import random
import shutil
import subprocess
import tempfile

from tool import KEY_FILE, TOOL, legacy_log, legacy_show, legacy_song, legacy_song_log

EXTENSIONS = (".logdata", ".showdata")
SHAPES = 16  # neighbours have different ones, so that mixed outputs are found
LATER_VERSIONS = {6: "1.1", 7: "2.0"}  # of every eighth shape
PAIRS_IN_A_FOLDER = 50

DONE, CURRENT, DAMAGED, OTHER_KEY, ALONE = "done", "current", "damaged", "other key", "alone"
FAILING = (DAMAGED, OTHER_KEY, ALONE)


@dataclasses.dataclass(frozen=True)
class File:
    """A file of an archive: what becomes of it, and what a single conversion makes of it."""

    kind: str
    content: bytes
    converted: bytes


def plain_pair(shape):
    """A legacy log and its show."""
    numbers = [str(number) for number in range(1, 2 + shape % 4)]
    name = "Song {}.{}".format
    tracks = ((1, "Piano"), (2, "Bass"), (3, "Fl\u00f6te"))[:1 + shape % 3]
    labels = [(time, str(bar)) for bar, time in enumerate(range(0, 1920, 240), 1)]
    show = legacy_show(*(legacy_song(number, name(shape, number), tracks, labels) for number in numbers))
    log = legacy_log(*(legacy_song_log(number, name(shape, number), vamps=[(0, 480, 2)] * (shape % 2),
                                       cuts=[(480, 960, 0)] * (shape % 3), tempo_scales=[(0, 960, 1.5)],
                                       caesuras=range(0, 100 * (shape % 5), 100), markers=[(0, "A"), (480, f"B{shape}")])
                       for number in numbers[:1 + shape // 2 % 4]), show_name=f"Show {shape}")
    return log, show


class Workshop:
    """Makes the contents of files, each with a run of its own, in a folder that is gone afterwards."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.other_key = self.folder / "other-key"
        self.other_key.write_text("key = 01\niv = 02\n")
        self.other_key.chmod(0o600)

    def run(self, *arguments, key=KEY_FILE.name, stdin=b""):
        return subprocess.run([TOOL, "--key-file", key, *arguments], input=stdin, cwd=self.folder, check=True,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout

    def pair(self, shape):
        """A log and its show in the version of the shape, as {extension: (content, converted, with another key)}."""
        for extension, plain in zip(EXTENSIONS, plain_pair(shape)):
            self.run("encrypt", "-", "-o", f"legacy{extension}", "--force", stdin=plain)
        made = {}
        for extension, plain in zip(EXTENSIONS, plain_pair(shape)):
            version = LATER_VERSIONS.get(shape % 8)
            name = f"legacy{extension}"
            content = self.run("up", name, "--to", version, "-o", "-") if version else (self.folder / name).read_bytes()
            other = self.run("encrypt", "-", "-o", "-", stdin=plain, key=self.other_key) if shape == 0 else b""
            made[extension] = (content, self.run("up", name, "-o", "-"), other)
        return made


def damaged(content, way):
    middle = len(content) // 2
    return (content[:middle], content[:-1] + bytes([content[-1] ^ 1]), b"", content + b"x",
            content[:middle] + bytes([content[middle] ^ 0x80]) + content[middle + 1:])[way % 5]


def make_files(count):
    """The files of an archive by their names below its folder."""
    special = max(count // 200 * 2, 2)
    kinds = [kind for kind in (DAMAGED, OTHER_KEY, CURRENT) for _ in range(special // 2)] + [ALONE] * special
    kinds += [DONE] * ((count - 4 * special) // 2)
    random.Random(1).shuffle(kinds)
    with tempfile.TemporaryDirectory(prefix="zuna-archive-") as folder:
        workshop = Workshop(folder)
        pairs = [workshop.pair(shape) for shape in range(SHAPES)]
    files = {}
    for number, kind in enumerate(kinds):
        shape = number % SHAPES
        if kind == ALONE and shape % 8 in LATER_VERSIONS:
            shape = 0  # Only legacy files need a companion.
        for extension in EXTENSIONS[number % 2:number % 2 + 1] if kind == ALONE else EXTENSIONS:
            content, converted, _ = pairs[shape][extension]
            content = {DAMAGED: damaged(content, number), OTHER_KEY: pairs[0][extension][2], CURRENT: converted}.get(
                kind, content)
            name = f"{number // PAIRS_IN_A_FOLDER:03}/{number:05}{extension}"
            files[name] = File(kind, content, converted)
    return files


def write_files(files, folder):
    """Writes the contents below a new folder."""
    for name, file in files.items():
        path = os.path.join(folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as written:
            written.write(file.content)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--files", type=int, default=2000)
    options = parser.parse_args()
    write_files(make_files(options.files), options.folder / "in")
    shutil.copyfile(KEY_FILE.name, options.folder / "key")
    (options.folder / "key").chmod(0o600)


if __name__ == "__main__":
    main()
