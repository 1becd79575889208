#!/usr/bin/env python3
"""Builds programs against an installation over examples/platform, and converts the sample show and its log with them.
The stages "without platform" and "packaging" of .ci/run make such installations.

    own_platform_test.py SOURCE_DIR PREFIX ZUNA_CONVERT CXX_COMPILER
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

from consumer_test import built_with_cmake, built_with_pkg_config, check_output, decrypted, run, secrets

SHOW = "three-tunes-0.0.showdata"
LOG = "three-tunes-0.0.logdata"

# Needs nothing of the platform libraries itself.
PROGRAM = """#include <format_converter/showdata.h>
int main(int, char** arguments) { showdata_up(arguments[1], arguments[2], arguments[3], {1, 2}, {}); }
"""


def main(source, prefix, tool, compiler):
    prefix = pathlib.Path(prefix)
    examples = pathlib.Path(source) / "examples"
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        samples = folder / "samples"
        samples.mkdir()
        shutil.copy(examples / "three-tunes.key", samples)
        for name in (SHOW, LOG):
            plaintext = decrypted(tool, examples, name, folder).read_bytes()
            (samples / name).write_bytes(sealed(plaintext, *map(bytes.fromhex, secrets(examples))))

        for program in (built_with_cmake(prefix, examples, folder, compiler, ""),
                        built_with_pkg_config(prefix, examples, folder, compiler, "")):
            check_output(program, samples, folder / LOG, folder)
        check_converter_alone(prefix, folder, compiler)


def check_converter_alone(prefix, folder, compiler):
    """A program that names only the converter's library links, starts and converts."""
    library = next(prefix.rglob("libzuna_format_converter.so")).parent
    (folder / "up.cpp").write_text(PROGRAM)
    run(compiler, "-std=c++20", f"-I{prefix / 'include/zuna'}", folder / "up.cpp", "-o", folder / "up",
        f"-L{library}", "-lzuna_format_converter", f"-Wl,-rpath,{library}")
    (folder / "in").write_bytes(sealed((folder / SHOW).read_bytes(), b"", b""))
    run(folder / "up", folder / "in", folder / "out", folder / LOG)
    assert (folder / "out").read_bytes().startswith(b"NOTSAFE\n")


def sealed(plaintext, key, iv):
    """A file as examples/platform/security.cpp writes it."""
    return b"NOTSAFE\n" + checksum(checksum(key) + checksum(iv)) + checksum(plaintext) + plaintext


def checksum(data):
    total = 0xCBF29CE484222325
    for byte in data:
        total = (total ^ byte) * 0x100000001B3 % 2**64
    return total.to_bytes(8, "little")


try:
    main(*sys.argv[1:])
except subprocess.CalledProcessError as error:
    sys.exit(f"{error}\n{error.stderr}")
