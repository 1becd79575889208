#!/usr/bin/env python3
"""Installs the build and lets a project of its own find the package, build against it and convert the sample show and its log.

    consumer_test.py SOURCE_DIR BUILD_DIR CXX_COMPILER CXX_FLAGS
"""

import pathlib
import subprocess
import sys
import tempfile


def run(*command):
    return subprocess.run([str(word) for word in command], check=True, capture_output=True, text=True).stdout


def main(source, build, compiler, flags):
    source = pathlib.Path(source)
    examples = source / "examples"
    with tempfile.TemporaryDirectory() as folder:
        prefix = pathlib.Path(folder) / "prefix"
        consumer = pathlib.Path(folder) / "consumer"
        run("cmake", "--install", build, "--prefix", prefix)
        key_file = examples / "three-tunes.key"
        information = run(prefix / "bin/zuna-convert", "info", examples / "three-tunes-1.2.showdata",
                          "--key-file", key_file)
        assert "Scarborough Fair" in information, information

        run("cmake", "-S", examples / "consumer", "-B", consumer, f"-DCMAKE_PREFIX_PATH={prefix}",
            f"-DCMAKE_CXX_COMPILER={compiler}", f"-DCMAKE_CXX_FLAGS={flags}")
        run("cmake", "--build", consumer)
        lines = [line.split(" = ") for line in key_file.read_text().splitlines() if " = " in line]
        secrets = dict(lines)
        output = run(consumer / "consumer", examples / "three-tunes-0.0.showdata",
                     examples / "three-tunes-0.0.logdata", plain_log(prefix, folder),
                     secrets["key"], secrets["iv"], pathlib.Path(folder) / "out.showdata")
        assert "the same as before\n" in output, output
        assert output.endswith("Song numbers for Three Tunes: \n1\n2\n2a\n"), output


def plain_log(prefix, folder):
    """The sample log decrypted, as the library's entry point takes it."""
    examples = pathlib.Path(sys.argv[1]) / "examples"
    plain = pathlib.Path(folder) / "plain.logdata"
    run(prefix / "bin/zuna-convert", "decrypt", examples / "three-tunes-0.0.logdata", "-o", plain,
        "--key-file", examples / "three-tunes.key")
    return plain


main(*sys.argv[1:])
