#!/usr/bin/env python3
"""Checks that a program calls every function that some libraries export: that it refers to its symbol.

    every_function.py PROGRAM LIBRARY...
"""

import re
import subprocess
import sys

# Reached otherwise: destructors by the end of an object, private functions by the library itself.
NOT_CALLED = re.compile(r"::~|TwoFishCipherStream::CipherName\(|CipherStream::CipherStream\(|"
                        r"(PairedEvent|PointEvent)::(PairedEvent|PointEvent)\(unsigned int|"
                        r"OpenedFile::OpenedFile\(.*std::unique_ptr")


def symbols(path, *options):
    listing = subprocess.run(["nm", "-D", "-P", *options, path], check=True, capture_output=True, text=True).stdout
    return {line.split()[0].partition("@")[0] for line in listing.splitlines() if line.split()[1] in "TU"}


def plain(names):
    """The names as the source has them: a constructor, which has two symbols, has one."""
    return set(subprocess.run(["c++filt", *sorted(names)], check=True, capture_output=True, text=True).stdout.splitlines())


def main(program, *libraries):
    called = plain(symbols(program, "--undefined-only"))
    exported = set().union(*(plain(symbols(library, "--defined-only")) for library in libraries))
    missing = sorted(name for name in exported - called if not NOT_CALLED.search(name))
    print(*(f"not called: {name}" for name in missing), sep="\n")
    print(f"{len(exported)} functions, {len(missing)} of them not called")
    return 1 if missing or not exported else 0


sys.exit(main(*sys.argv[1:]))
