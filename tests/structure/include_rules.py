#!/usr/bin/env python3
"""Holds the dependencies between the folders to the architecture, from the #include lines alone.

    include_rules.py SOURCE_DIR
"""

import pathlib
import re
import sys

INTERFACES = {"CL", "TL", "cmn", "codes", "kit", "std_midi", "zuna_midi", "zuna_sec"}

# What each folder may include of our own, besides headers of interfaces/.
OWN = {
    "interfaces": (),
    "format_converter": ("format_converter/",),
    "platform/core": ("platform/core/",),
    "platform/kit": ("platform/kit/",),
    "platform/security": ("platform/security/",),
    "toolkit": ("toolkit/", "format_converter/"),
    "cli": ("cli/", "toolkit/", "format_converter/"),
    "fuzz": ("fuzz/", "toolkit/", "format_converter/", "platform/"),
    "benchmarks": ("benchmarks/", "format_converter/"),
    "examples": (),
    "tests": ("tests/", "toolkit/", "cli/", "format_converter/", "platform/"),
}

# A header of ours is held to the rules however it is included.
OURS = INTERFACES | {folder.split("/")[0] for folder in OWN}

# Third-party headers and the one folder that each may be used in, apart from tests and benchmarks.
FOREIGN = {
    "gcrypt.h": "platform/security",
    "boost/json": "platform/core",
    "zlib.h": "platform/core",
    "boost/uuid": "platform/kit",
    "CLI/": "cli",
}

# A header in a folder of this name is not installed.
PRIVATE = "internal"

# The layers of version0/, each a folder: a file may include its own layer and those before it.
LAYERS = ["primitives", "records", "containers", "conversions"]
CURRENT_MODEL = {"CL", "TL", "zuna_midi", "std_midi"}

STANDARD = re.compile(r"[a-z_0-9]+")  # <vector>; a header with a point or a slash is POSIX's or somebody else's
INCLUDE = re.compile(r'^\s*#\s*include\s+(["<])([^">]+)[">]', re.MULTILINE)


def layer(path):
    """The number of the layer that a path below format_converter/version0/ lies in."""
    folder = pathlib.PurePath(path).parts[2]
    return LAYERS.index(folder) if folder in LAYERS else None


def folder_of(path):
    parts = path.parts
    return "/".join(parts[:2]) if parts[0] == "platform" else parts[0]


def complaints(path, quote, header):
    """What is wrong with one #include line of the file at `path`."""
    folder = folder_of(path)
    first = header.split("/")[0]
    if quote == '"' or first in OURS:
        if first not in INTERFACES and not header.startswith(OWN[folder]):
            yield f"{folder} may not include {header}"
        if (header.startswith("format_converter/") and PRIVATE in header.split("/")
                and folder not in ("format_converter", "tests")):
            yield f"{header} is private to the converter"
    elif folder in ("interfaces", "format_converter") and not STANDARD.fullmatch(header):
        yield f"{folder} may include the standard library only"
    for foreign, home in FOREIGN.items():
        if header.startswith(foreign) and folder not in (home, "tests", "benchmarks"):
            yield f"only {home} may include {header}"
    if path.is_relative_to("format_converter/version0"):
        yield from version0_complaints(path, header, first)


def version0_complaints(path, header, first):
    own = layer(path)
    if own is None:
        yield "belongs to no layer of version0"
        return
    if first in CURRENT_MODEL and own != len(LAYERS) - 1:
        yield f"only conversions may include the current model, not {header}"
    if header.startswith("format_converter/version0/"):
        other = layer(header)
        if other is None or other > own:
            yield f"includes {header} of a later layer"


def main(root):
    root = pathlib.Path(root)
    found, lines = [], 0
    for folder in OWN:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            relative = path.relative_to(root)
            for quote, header in INCLUDE.findall(path.read_text()):
                lines += 1
                if folder == "examples":
                    continue  # sees the installed package only
                found += [f"{relative}: {text}" for text in complaints(relative, quote, header)]
    print(*found, sep="\n")
    print(f"{lines} #include lines read, {len(found)} against the rules")
    if lines < 100:
        sys.exit("too few lines: is this the source folder?")
    sys.exit(1 if found else 0)


main(sys.argv[1])
