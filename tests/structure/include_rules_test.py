#!/usr/bin/env python3
"""Checks that include_rules.py finds what is against each rule."""

import pathlib
import tempfile

import include_rules

INTERNAL = "format_converter/internal/streams.h"
RECORD = "format_converter/version0/records/r_key.h"

# A file, a header that it includes, and what is wrong with that; nothing where it is empty.
INCLUDES = [
    ("interfaces/TL/a.h", '"kit/api.h"', ""),
    ("interfaces/TL/a.h", '"format_converter/errors.h"', "interfaces may not include format_converter/errors.h"),
    ("interfaces/TL/a.h", "<unistd.h>", "interfaces may include the standard library only, not unistd.h"),
    ("format_converter/a.cpp", f'"{INTERNAL}"', ""),
    ("format_converter/a.cpp", '"platform/kit/a.h"', "format_converter may not include platform/kit/a.h"),
    ("format_converter/a.cpp", "<boost/json.hpp>", "format_converter may include the standard library only, not boost/json.hpp"),
    ("platform/core/a.cpp", '"platform/security/a.h"', "platform/core may not include platform/security/a.h"),
    ("platform/core/a.cpp", '"format_converter/a.h"', "platform/core may not include format_converter/a.h"),
    ("platform/kit/a.cpp", "<gcrypt.h>", "only platform/security may include gcrypt.h"),
    ("cli/a.cpp", "<boost/json.hpp>", "only platform/core may include boost/json.hpp"),
    ("platform/kit/a.cpp", "<sys/stat.h>", ""),
    ("platform/kit/a.cpp", "<png.h>", "png.h is of no library that is known here"),
    ("toolkit/a.cpp", '"cli/a.h"', "toolkit may not include cli/a.h"),
    ("toolkit/a.cpp", "<platform/core/a.h>", "toolkit may not include platform/core/a.h"),
    ("toolkit/a.cpp", f'"{INTERNAL}"', f"{INTERNAL} is internal to format_converter"),
    ("cli/a.cpp", '"toolkit/internal/a.h"', "toolkit/internal/a.h is internal to toolkit"),
    ("cli/a.cpp", "<CLI/CLI.hpp>", ""),
    ("cli/a.cpp", '"tests/support/a.h"', "cli may not include tests/support/a.h"),
    ("tests/a.cpp", f'"{INTERNAL}"', ""),
    ("format_converter/version0/containers/a.h", f'"{RECORD}"', ""),
    ("format_converter/version0/primitives/a.h", f'"{RECORD}"', f"primitives may not include the later layer of {RECORD}"),
    ("format_converter/version0/records/a.h", '"TL/timeline.h"',
     "only conversions may include the current model, not TL/timeline.h"),
    ("format_converter/version0/conversions/a.h", '"TL/timeline.h"', ""),
    ("format_converter/version0/others/a.h", '"kit/uuid.h"', "others is not a layer of version0"),
]


def found(files):
    """The complaints about a source folder with these files."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = pathlib.Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        return include_rules.check(pathlib.Path(folder))[0]


def expect(files, expected):
    complaints = found(files)
    assert complaints == expected, f"{files}\nexpected {expected}\nfound    {complaints}"


for name, header, problem in INCLUDES:
    expect({name: f"#include {header}\n"}, [f"{name}: {problem}"] if problem else [])

expect({"cli/a.cpp": "//\n" * 250}, [])
expect({"cli/a.cpp": "//\n" * 251}, ["cli/a.cpp: has 251 lines, more than 250"])
expect({"tests/a.cpp": "//\n" * 251}, [])

# a/ includes b/, b/ includes c/, and c/internal/, a part of c/, includes a/.
CIRCLE = {
    "toolkit/a/a.h": '#include "toolkit/b/b.h"\n',
    "toolkit/b/b.h": '#include "toolkit/c/c.h"\n',
    "toolkit/c/internal/d.h": '#include "toolkit/a/a.h"\n',
}
expect(CIRCLE, ["a circle of folders: toolkit/a toolkit/b toolkit/c"])
expect({**CIRCLE, "toolkit/c/internal/d.h": '#include "toolkit/c/c.h"\n'}, [])
