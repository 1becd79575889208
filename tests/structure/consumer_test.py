#!/usr/bin/env python3
"""Installs the build, moves the prefix and lets a project of its own build against it, with CMake and with pkg-config, and
convert the sample show and its log.

    consumer_test.py SOURCE_DIR BUILD_DIR CXX_COMPILER CXX_FLAGS
"""

import os
import pathlib
import shlex
import subprocess
import sys
import tempfile


def run(*command):
    return subprocess.run([str(word) for word in command], check=True, capture_output=True, text=True).stdout


def main(source, build, compiler, flags):
    examples = pathlib.Path(source) / "examples"
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        run("cmake", "--install", build, "--prefix", folder / "first")
        prefix = (folder / "first").rename(folder / "prefix")
        information = run(prefix / "bin/zuna-convert", "info", examples / "three-tunes-1.2.showdata",
                          "--key-file", examples / "three-tunes.key")
        assert "Scarborough Fair" in information, information

        for program in (built_with_cmake(prefix, examples, folder, compiler, flags),
                        built_with_pkg_config(prefix, examples, folder, compiler, flags)):
            check_output(program, prefix, examples, folder)


def built_with_cmake(prefix, examples, folder, compiler, flags):
    run("cmake", "-S", examples / "consumer", "-B", folder / "build", f"-DCMAKE_PREFIX_PATH={prefix}",
        f"-DCMAKE_CXX_COMPILER={compiler}", f"-DCMAKE_CXX_FLAGS={flags}")
    run("cmake", "--build", folder / "build")
    return folder / "build/consumer"


def built_with_pkg_config(prefix, examples, folder, compiler, flags):
    description = next(prefix.rglob("zuna_format_converter.pc"))
    output = subprocess.run(["pkg-config", "--cflags", "--libs", "zuna_format_converter"], check=True, text=True,
                            stdout=subprocess.PIPE, env={**os.environ, "PKG_CONFIG_PATH": str(description.parent)}).stdout
    program = folder / "consumer"
    run(compiler, "-std=c++20", *shlex.split(flags), examples / "consumer/main.cpp", "-o", program,
        *shlex.split(output), f"-Wl,-rpath,{description.parent.parent}")
    return program


def check_output(program, prefix, examples, folder):
    lines = [line.split(" = ") for line in (examples / "three-tunes.key").read_text().splitlines() if " = " in line]
    secrets = dict(lines)
    (folder / "out.showdata").unlink(missing_ok=True)
    output = run(program, examples / "three-tunes-0.0.showdata", examples / "three-tunes-0.0.logdata",
                 plain_log(prefix, examples, folder), secrets["key"], secrets["iv"], folder / "out.showdata")
    assert "the same as before\n" in output, output
    assert output.endswith("Song numbers for Three Tunes: \n1\n2\n2a\n"), output


def plain_log(prefix, examples, folder):
    """The sample log decrypted, as the library's entry point takes it."""
    plain = folder / "plain.logdata"
    plain.unlink(missing_ok=True)
    run(prefix / "bin/zuna-convert", "decrypt", examples / "three-tunes-0.0.logdata", "-o", plain,
        "--key-file", examples / "three-tunes.key")
    return plain


main(*sys.argv[1:])
