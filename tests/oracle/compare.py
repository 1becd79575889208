#!/usr/bin/env python3
"""Sends random and damaged files to the readers of this folder and to the library, and reports each difference.

    compare.py DUMP [--count FILES] [--mutants N] [--seed S] [--formats NAME ...] [--keep FOLDER]

DUMP is the program of dump.cpp. For each format, FILES random files are made, and N damaged files from each. The exit
status is 1 where the two sides differ; these files are kept as FOLDER/FORMAT-SEED-NUMBER.READER.
"""

import argparse
import collections
import json
import pathlib
import random
import sys

import mutate
import sides
import version0
import version1
import version2
from random_models import Models

CURRENT = {"show": ("1.0", "1.1", "1.2", "2.0"), "log": ("1.1", "1.2", "2.0")}
FORMATS = ("show-0.0", "log-0.0", *(f"{kind}-{version}" for kind, versions in CURRENT.items() for version in versions))
LEGACY = "0.0"

# Shares of the random files: texts in another spelling, messages that state their status again, sequences and events in
# another order.
RESPELLED, REPEATED, ARRANGED = 0.5, 0.1, 0.3
# Shares of the damaged files: changed before they were written, changed values of a text, lengths and checksums that are
# right again.
MODELS_CHANGED, VALUES_CHANGED, MENDED = 0.1, 0.7, 0.8
PADDED = 0.02  # the share of damaged texts that are longer than the piece in which a reader takes them
RECENT = 50  # how many files the damage takes pieces from


class Source:
    """Random files of one format, and damaged ones."""

    def __init__(self, name, seed):
        self.kind, self.version = name.split("-")
        self.reader = f"legacy-{self.kind}" if self.version == LEGACY else self.kind
        self.random = random.Random(f"{name} {seed}")
        self.models = Models(self.random)
        self.model, self.data = None, b""
        self.recent = collections.deque([b""], RECENT)

    def file(self):
        """The next random file."""
        if self.version == LEGACY:
            self.model = self.models.legacy_show() if self.kind == "show" else self.models.legacy_log()
        else:
            self.model = self.models.current(self.kind)
        self.data = self.write(self.model)
        self.recent.append(self.data)
        return self.data

    def write(self, model):
        if self.version == LEGACY:
            write = version0.write_show if self.kind == "show" else version0.write_log
            return write(model, self.arrange if self.random.random() < ARRANGED else list)
        if self.version == "2.0":
            data = version2.write(self.kind, model)
            return mutate.respell(self.random, version2.parse(data)) if self.random.random() < RESPELLED else data
        version = tuple(map(int, self.version.split(".")))
        return version1.write(self.kind, model, version, lambda: self.random.random() < REPEATED)

    def arrange(self, parts):
        """The parts in another order, some of them twice or not at all."""
        if parts and self.random.random() < 0.5:
            return self.random.choices(parts, k=len(parts))
        return self.random.sample(parts, len(parts))

    def damaged(self):
        """The random file of before with some damage."""
        data = self.damage()
        return mutate.pad(self.random, data) if self.random.random() < PADDED else data

    def damage(self):
        if self.version != LEGACY and self.random.random() < MODELS_CHANGED:
            return self.write(mutate.change_model(self.random, self.model))
        if self.version == "2.0" and self.random.random() < VALUES_CHANGED:
            return mutate.change_values(self.random, self.data)
        changed = mutate.change_bytes(self.random, self.data, self.recent)
        return mutate.mend(changed) if self.random.random() < MENDED else changed


class Comparison:
    """What the two sides said about the files of one format."""

    def __init__(self, name, library, keep, report):
        self.name, self.library, self.keep, self.report = name, library, keep, report
        self.tally = collections.Counter()

    def compare(self, reader, data):
        if not data:
            return  # An empty file is refused before any reader sees it.
        ours, theirs = sides.answer(reader, data), self.library.answer(reader, data)
        if sides.same(ours, theirs):
            self.tally["both " + ours[0]] += 1
            return
        self.tally["different"] += 1
        path = self.keep / f"{self.name}-{self.tally['different']}.{reader}"
        path.write_bytes(data)
        self.report(f"{path}: {difference(ours, theirs)}")


def difference(ours, theirs):
    """One line about two answers."""
    if ours[0] == theirs[0] == "accepted":
        return "both accepted, but the models differ: " + first_difference(*map(spelled, (ours[1], theirs[1])))
    return f"the page: {ours[0]} {short(ours)}; the library: {theirs[0]} {short(theirs)}"


def spelled(model):
    return model if isinstance(model, str) else json.dumps(model, sort_keys=True)


def first_difference(ours, theirs):
    """The first place at which two spelled models differ, with what is around it."""
    at = next((at for at, (one, other) in enumerate(zip(ours, theirs)) if one != other), min(len(ours), len(theirs)))
    return f"{ours[max(0, at - 40):at + 20]!r}, the library: {theirs[max(0, at - 40):at + 20]!r}"


def short(answer):
    return "" if answer[0] == "accepted" else answer[1] or ""


def run(options):
    """Compares, prints a line for each format, and gives the number of differences."""
    library = sides.Library(options.dump)
    options.keep.mkdir(parents=True, exist_ok=True)
    total = collections.Counter()
    for name in options.formats:
        source = Source(name, options.seed)
        comparison = Comparison(f"{name}-{options.seed}", library, options.keep, print)
        for _ in range(options.count):
            for file in (source.file(), *(source.damaged() for _ in range(options.mutants))):
                comparison.compare(source.reader, file)
                if source.random.random() < options.probed:
                    comparison.compare("probe", file)
        total += comparison.tally
        print(f"{name}: {', '.join(f'{count} {what}' for what, count in sorted(comparison.tally.items()))}", flush=True)
    library.close()
    return total["different"]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("dump")
    parser.add_argument("--count", type=int, default=1000)
    parser.add_argument("--mutants", type=int, default=20)
    parser.add_argument("--probed", type=float, default=0.1, help="share of files that the version probes read too")
    parser.add_argument("--seed", default="1")
    parser.add_argument("--formats", nargs="+", choices=FORMATS, default=FORMATS)
    parser.add_argument("--keep", type=pathlib.Path, default=pathlib.Path("differences"))
    return 1 if run(parser.parse_args()) else 0


if __name__ == "__main__":
    sys.exit(main())
