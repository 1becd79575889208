#!/usr/bin/env python3
"""Checks in the built files that what cmake/ZunaHardening.cmake asks for has arrived.

    hardening_test.py --program FILE --probe FILE [--fortified] LIBRARY...

The probe has a function that every protection of the compiler shows in; a file of the product may have no reason for
one of them.
"""

import argparse
import re
import subprocess
import sys


def readelf(file, option):
    return subprocess.run(["readelf", "--wide", option, file], check=True, capture_output=True, text=True).stdout


def linked_problems(file):
    """What the linker was asked for."""
    segments, dynamic = readelf(file, "--program-headers"), readelf(file, "--dynamic")
    if not re.search(r"\(FLAGS(_1)?\).*\b(BIND_NOW|NOW)\b", dynamic):
        yield "functions of other libraries are bound late (no BIND_NOW)"
    if "GNU_RELRO" not in segments:
        yield "its tables stay writable (no GNU_RELRO)"
    stack = re.search(r"GNU_STACK(?:\s+0x\w+){5}\s+([RWE ]{3})", segments)
    if not stack or "E" in stack[1]:
        yield "its stack is executable"


def program_problems(file):
    if not re.search(r"\(FLAGS_1\).*\bPIE\b", readelf(file, "--dynamic")):
        yield "it has a fixed address (no PIE)"


def compiled_problems(file, needed):
    names = set(re.findall(r"UND (\w+)", readelf(file, "--dyn-syms")))
    return [f"does not use {name}" for name in sorted(needed - names)]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True)
    parser.add_argument("--probe", required=True)
    parser.add_argument("--fortified", action="store_true")
    parser.add_argument("libraries", nargs="+")
    options = parser.parse_args()

    files = [options.program, options.probe, *options.libraries]
    problems = [(file, problem) for file in files for problem in linked_problems(file)]
    problems += [(options.program, problem) for problem in program_problems(options.program)]
    problems += [(file, problem) for file in files for problem in compiled_problems(file, {"__stack_chk_fail"})]
    if options.fortified:
        problems += [(options.probe, problem) for problem in compiled_problems(options.probe, {"__memcpy_chk"})]
    print(*(f"{file}: {problem}" for file, problem in problems), sep="\n")
    return 1 if problems else 0


sys.exit(main())
