#!/usr/bin/env python3
"""Checks the dependencies between the folders, from the #include lines alone, and the length of the files.

    include_rules.py SOURCE_DIR

A folder says by its place what it may include. The rules:

- OWN lists what each library or program may include of our own code, besides headers of interfaces/.
- A header in a folder named internal/ belongs to its library: nothing else includes it, apart from tests and fuzz.
- The folders of version0/ are layers; a file includes its own layer and those before it.
- No circle of folders. A folder internal/ counts as part of the folder that holds it.
- Each third-party library is used in one folder, apart from tests and benchmarks.
- No file of the product is longer than MOST_LINES.
"""

import pathlib
import re
import sys

# What each folder may include of our own code, besides headers of interfaces/.
OWN = {
    "interfaces": (),
    "format_converter": ("format_converter",),
    "platform/core": ("platform/core",),
    "platform/kit": ("platform/kit",),
    "platform/security": ("platform/security",),
    "toolkit": ("toolkit", "format_converter"),
    "cli": ("cli", "toolkit", "format_converter"),
    "python": ("python", "toolkit", "format_converter"),
    "fuzz": ("fuzz", "tests/support", "toolkit", "cli", "format_converter", "platform"),
    "benchmarks": ("benchmarks", "tests/support", "toolkit", "format_converter"),
    "examples": (),
    "tests/conformance": ("tests/conformance", "tests/support", "format_converter"),
    "tests": ("tests", "toolkit", "cli", "format_converter", "fuzz", "platform"),
}
PRODUCT = ("interfaces", "format_converter", "platform/core", "platform/kit", "platform/security", "toolkit", "cli",
           "python")
SEE_INTERNAL = ("tests", "tests/conformance", "fuzz")

INTERFACES = ("CL", "TL", "cmn", "codes", "kit", "std_midi", "zuna_json", "zuna_midi", "zuna_sec")
CURRENT_MODEL = ("CL", "TL", "std_midi", "zuna_midi")

VERSION0 = "format_converter/version0"
LAYERS = ("primitives", "records", "containers", "conversions")

# How the headers of each third-party library begin, and the one folder that uses it.
FOREIGN = {
    "CLI/": "cli",
    "boost/json": "platform/core",
    "boost/uuid": "platform/kit",
    "dtl/": "toolkit/comparison",
    "gcrypt.h": "platform/security",
    "utf8proc.h": "cli/terminal",
    "libdeflate.h": "platform/core",
    "pybind11/": "python",
}
ANY_FOREIGN = ("tests", "tests/conformance", "benchmarks", "fuzz")
SYSTEM = ("dirent.h", "fcntl.h", "ftw.h", "locale.h", "poll.h", "pthread.h", "signal.h", "sys", "unistd.h", "xlocale.h")
STANDARD_ONLY = ("interfaces", "format_converter")

MOST_LINES = 250

STANDARD = re.compile(r"[a-z_0-9]+")
INCLUDE = re.compile(r'^\s*#\s*include\s+(["<])([^">]+)[">]', re.MULTILINE)


def below(name, folders):
    """Whether `name` is one of these folders or files, or below one."""
    return any(name == folder or name.startswith(folder + "/") for folder in folders)


def library_of(name):
    """The entry of OWN that the file or header belongs to, None for what is not ours."""
    if below(name, INTERFACES):
        return "interfaces"
    return next((folder for folder in OWN if below(name, (folder,))), None)


def folder_of(name):
    """The folder of a file or header, with internal/ as part of the folder that holds it."""
    parts = pathlib.PurePosixPath(name.removeprefix("interfaces/")).parent.parts
    return "/".join(part for part in parts if part != "internal")


def own_complaints(name, header):
    """What is wrong where the file `name` includes our own `header`."""
    library = library_of(name)
    if not below(header, INTERFACES + OWN[library]):
        yield f"{library} may not include {header}"
    if "internal" in header.split("/") and library not in (library_of(header), *SEE_INTERNAL):
        yield f"{header} is internal to {library_of(header)}"
    if below(name, (VERSION0,)):
        yield from layer_complaints(name, header)


def layer_complaints(name, header):
    layer = name.removeprefix(VERSION0 + "/").split("/")[0]
    if layer not in LAYERS:
        yield f"{layer} is not a layer of version0"
        return
    later = LAYERS[LAYERS.index(layer) + 1:]
    if below(header, [f"{VERSION0}/{other}" for other in later]):
        yield f"{layer} may not include the later layer of {header}"
    if below(header, CURRENT_MODEL) and layer != LAYERS[-1]:
        yield f"only {LAYERS[-1]} may include the current model, not {header}"


def foreign_complaints(name, header):
    """What is wrong where the file `name` includes a `header` that is not ours."""
    library = library_of(name)
    if STANDARD.fullmatch(header) or library in ANY_FOREIGN:
        return
    if library in STANDARD_ONLY:
        yield f"{library} may include the standard library only, not {header}"
        return
    homes = [home for foreign, home in FOREIGN.items() if header.startswith(foreign)]
    if homes and not below(name, homes):
        yield f"only {homes[0]} may include {header}"
    elif not homes and not below(header, SYSTEM):
        yield f"{header} is of no library that is known here"


def circles(graph):
    """The groups of folders that lead to each other."""
    found, reach = [], {folder: reachable(graph, folder) for folder in graph}
    for folder in sorted(graph):
        group = sorted(other for other in reach[folder] if folder in reach.get(other, ()))
        if len(group) > 1 and group not in found:
            found.append(group)
    return [f"a circle of folders: {' '.join(group)}" for group in found]


def reachable(graph, start):
    seen, waiting = set(), [start]
    while waiting:
        for other in graph.get(waiting.pop(), ()):
            if other not in seen:
                seen.add(other)
                waiting.append(other)
    return seen


def check(root):
    """What is against the rules below `root`, and the number of #include lines read."""
    found, graph, lines = [], {}, 0
    for path in sorted(path for folder in OWN for path in (root / folder).rglob("*") if path.suffix in (".h", ".cpp")):
        name, text = path.relative_to(root).as_posix(), path.read_text()
        product = library_of(name) in PRODUCT
        length = len(text.splitlines())
        if product and length > MOST_LINES:
            found.append(f"{name}: has {length} lines, more than {MOST_LINES}")
        for quote, header in INCLUDE.findall(text):
            lines += 1
            if below(name, ("examples",)):
                continue  # sees the installed package only
            ours = quote == '"' or library_of(header) is not None
            wrong = own_complaints(name, header) if ours else foreign_complaints(name, header)
            found += [f"{name}: {text}" for text in wrong]
            if ours and product and folder_of(header) != folder_of(name):
                graph.setdefault(folder_of(name), set()).add(folder_of(header))
    return found + circles(graph), lines


def main(root):
    found, lines = check(pathlib.Path(root))
    print(*found, sep="\n")
    print(f"{lines} #include lines read, {len(found)} against the rules")
    if lines < 100:
        sys.exit("too few lines: is this the source folder?")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main(sys.argv[1])
