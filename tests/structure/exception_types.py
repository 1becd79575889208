#!/usr/bin/env python3
"""Checks that the libraries share the type information of the exceptions that cross from one to another.

    exception_types.py LIBRARY...

A handler recognises an exception of another library by its type information. Some standard libraries compare addresses, so a
library that keeps a copy of its own catches nothing.
"""

import re
import subprocess
import sys

HIDDEN = re.compile(r"[0-9a-f]+ [a-z] (typeinfo for (?:kit|cmn|zuna_sec|zuna_toolkit|version0)::\w+Error)")


def hidden_types(library):
    listing = subprocess.run(["nm", "-C", library], check=True, capture_output=True, text=True).stdout
    return [match[1] for match in map(HIDDEN.fullmatch, listing.splitlines()) if match]


def main(*libraries):
    problems = [f"{library}: hides the {name}" for library in libraries for name in hidden_types(library)]
    print(*problems, sep="\n")
    return 1 if problems or not libraries else 0


sys.exit(main(*sys.argv[1:]))
