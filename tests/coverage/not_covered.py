#!/usr/bin/env python3
"""Holds a report of gcovr against the list of the lines and branches that no test takes.

    not_covered.py REPORT LIST SOURCE

REPORT is gcovr's JSON about the folder SOURCE. A block of LIST is a reason and, indented, what it is the reason for:

    The reason, in as many lines as it needs.
      line folder/file.cpp: the text of a line that is never executed
      branch x2 folder/file.cpp: the text of a line of which 2 branches are never taken

Lines of a file that read the same are counted together. Fails where LIST lacks something, and where it has more than
the report. Branches that the compiler makes for exceptions do not count.
"""

import collections
import json
import pathlib
import re
import sys

ENTRY = re.compile(r"  (?P<kind>line|branch)(?: x(?P<count>\d+))? (?P<file>[^:\s]+): (?P<text>.+)")

# What an entry is about: "line" or "branch", the file, and the text of the line.
Place = collections.namedtuple("Place", "kind file text")


class ListError(Exception):
    """The list cannot be read."""


def read_list(text):
    """The number of lines or branches listed for each place, and of those with each reason."""
    listed = {}
    reasons = collections.Counter()
    blocks = re.split(r"\n\s*\n", "\n".join(line for line in text.splitlines() if not line.startswith("#")))
    for block in filter(str.strip, blocks):
        lines = block.strip("\n").splitlines()
        reason = " ".join(line for line in lines if not line.startswith(" "))
        entries = [line for line in lines if line.startswith(" ")]
        if not reason or not entries:
            raise ListError(f"a block needs a reason and entries:\n{block}")
        for line in entries:
            entry = ENTRY.fullmatch(line)
            if not entry:
                raise ListError(f"not an entry: {line}")
            place = Place(entry["kind"], entry["file"], entry["text"])
            if place in listed:
                raise ListError(f"listed twice: {line}")
            listed[place] = int(entry["count"] or 1)
            reasons[reason] += listed[place]
    return listed, reasons


def counted(report):
    """The file, the line and its branches, for all lines of the report that have code."""
    for file in report["files"]:
        for line in file["lines"]:
            if not line["gcovr/noncode"] and not line["gcovr/excluded"]:
                yield file["file"], line, [branch for branch in line["branches"] if not branch["throw"]]


def not_covered(report, source):
    """The number of lines or branches that were not taken for each place, and where they are."""
    missed = collections.Counter()
    where = collections.defaultdict(list)
    texts = {file["file"]: (source / file["file"]).read_text().splitlines() for file in report["files"]}
    for file, line, branches in counted(report):
        kind, count = "branch", sum(branch["count"] == 0 for branch in branches)
        if line["count"] == 0:
            kind, count = "line", 1
        if count:
            number = line["line_number"]
            place = Place(kind, file, texts[file][number - 1].strip())
            missed[place] += count
            where[place].append(number)
    return missed, where


def compare(missed, where, listed):
    """What is wrong, a line for each place."""
    for place in sorted(missed.keys() | listed.keys()):
        found, known = missed.get(place, 0), listed.get(place, 0)
        if found > known:
            numbers = ", ".join(map(str, where[place]))
            yield f"{place.file}:{numbers}: not covered: {place.kind} x{found}, listed x{known}: {place.text}"
        elif found < known:
            yield f"{place.file}: listed, but covered: {place.kind} x{known}, found x{found}: {place.text}"


def table(report):
    """The lines and branches of each folder, two levels deep."""
    folders = collections.defaultdict(lambda: [0, 0, 0, 0])
    for file, line, branches in counted(report):
        added = (line["count"] > 0, 1, sum(branch["count"] > 0 for branch in branches), len(branches))
        folder = "/".join(pathlib.PurePath(file).parent.parts[:2])
        folders[folder] = [total + more for total, more in zip(folders[folder], added)]
    yield f"{'':28}{'lines':>14}{'branches':>14}"
    for folder, (lines, all_lines, branches, all_branches) in sorted(folders.items()):
        yield f"{folder:28}{f'{lines}/{all_lines}':>14}{f'{branches}/{all_branches}':>14}"


def main():
    report = json.loads(pathlib.Path(sys.argv[1]).read_text())
    try:
        listed, reasons = read_list(pathlib.Path(sys.argv[2]).read_text())
    except ListError as error:
        sys.exit(f"{sys.argv[2]}: {error}")
    missed, where = not_covered(report, pathlib.Path(sys.argv[3]))
    problems = list(compare(missed, where, listed))
    print(*table(report), sep="\n")
    for reason, count in reasons.most_common():
        print(f"{count:4} not covered: {reason}")
    print(*problems, sep="\n", file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
