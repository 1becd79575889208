#!/usr/bin/env python3
"""Installs the build, moves the prefix and lets a project of its own build against it, with CMake and with pkg-config, and
convert the sample show and its log. The library without toolkit and tool is enough for it.

    consumer_test.py SOURCE_DIR BUILD_DIR CXX_COMPILER CXX_FLAGS
"""

import os
import pathlib
import re
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

        log = decrypted(prefix / "bin/zuna-convert", examples, "three-tunes-0.0.logdata", folder)
        for program in (built_with_cmake(prefix, examples, folder, compiler, flags),
                        built_with_pkg_config(prefix, examples, folder, compiler, flags)):
            check_output(program, examples, log, folder)
            check_messages(program, examples, log, folder)
        check_older_standard(prefix, compiler, flags, folder)
        alone = library_alone(build, folder / "alone")
        check_output(built_with_cmake(alone, examples, folder / "of-library", compiler, flags), examples, log, folder)


def library_alone(build, prefix):
    """Installs the two components of the library, and nothing else comes with them."""
    for component in ("library", "library-dev"):
        run("cmake", "--install", build, "--prefix", prefix, "--component", component)
    files = {str(path.relative_to(prefix)) for path in prefix.rglob("*") if not path.is_dir()}
    libraries = {found[1] for name in files if (found := re.match(r"lib(\w+)\.", pathlib.Path(name).name))}
    assert libraries == {"zuna_format_converter", "zuna_core", "zuna_security", "kit"}, libraries
    others = [name for name in files if "toolkit" in name or not re.match(r"(include/zuna|lib\w*|share/man/man3|share/doc/libzuna-format-converter-dev)/", name)]
    assert not others, others
    return prefix


def built_with_cmake(prefix, examples, folder, compiler, flags):
    run("cmake", "-S", examples / "consumer", "-B", folder / "build", f"-DCMAKE_PREFIX_PATH={prefix}",
        f"-DCMAKE_CXX_COMPILER={compiler}", f"-DCMAKE_CXX_FLAGS={flags}")
    run("cmake", "--build", folder / "build")
    return folder / "build/consumer"


def built_with_pkg_config(prefix, examples, folder, compiler, flags):
    description = next(prefix.rglob("zuna_format_converter.pc"))
    output = subprocess.run(["pkg-config", "--cflags", "--libs", "zuna_format_converter"], check=True, text=True,
                            stdout=subprocess.PIPE, env={**os.environ, "PKG_CONFIG_PATH": str(description.parent)}).stdout
    words = shlex.split(output)
    folders = [description.parent.parent, *(pathlib.Path(word).parent for word in words if word.startswith("/"))]
    program = folder / "consumer"
    run(compiler, "-std=c++20", *shlex.split(flags), examples / "consumer/main.cpp", "-o", program, *words,
        *(f"-Wl,-rpath,{place}" for place in folders))
    return program


def check_older_standard(prefix, compiler, flags, folder):
    """A header says which standard of C++ it needs."""
    (folder / "older.cpp").write_text("#include <format_converter/showdata.h>\n")
    done = subprocess.run([compiler, "-std=c++17", *shlex.split(flags), "-fsyntax-only", f"-I{prefix / 'include/zuna'}",
                           folder / "older.cpp"], check=False, capture_output=True, text=True)
    assert done.returncode != 0 and "need C++20: compile with -std=c++20" in done.stderr, done.stderr


def secrets(samples):
    lines = (samples / "three-tunes.key").read_text().splitlines()
    found = dict(line.split(" = ") for line in lines if " = " in line)
    return found["key"], found["iv"]


def check_output(program, samples, plain_log, folder):
    (folder / "out.showdata").unlink(missing_ok=True)
    output = run(program, samples / "three-tunes-0.0.showdata", samples / "three-tunes-0.0.logdata", plain_log,
                 *secrets(samples), folder / "out.showdata")
    assert "the same as before\n" in output, output
    assert output.endswith("Song numbers for Three Tunes: \n1\n2\n2a\n"), output


def check_messages(program, samples, plain_log, folder):
    show, log = samples / "three-tunes-0.0.showdata", samples / "three-tunes-0.0.logdata"
    key, iv = secrets(samples)
    for arguments, message in (((show, folder / "none", plain_log, key, iv), f"cannot read or write: {folder / 'none'}: cannot be opened; "),
                               ((show, log, plain_log, key + "0", iv), "KEY_HEX is not made of pairs of hexadecimal digits\n"),
                               ((show, log, plain_log, "0x" + key, iv), "KEY_HEX is not made of pairs of hexadecimal digits\n"),
                               ((show, log, plain_log, key, "0g"), "IV_HEX is not made of pairs of hexadecimal digits\n"),
                               ((show, log, plain_log, "00", iv), "wrong key: ")):
        done = subprocess.run([program, *arguments, folder / "out.showdata"], check=False, capture_output=True, text=True)
        assert done.returncode == 1 and message in done.stderr, (message, done.stderr)


def decrypted(tool, examples, name, folder):
    """The plaintext of a sample, in a file of this folder. The library's entry points take a legacy log like that."""
    run(tool, "decrypt", examples / name, "-o", folder / name, "--key-file", examples / "three-tunes.key")
    return folder / name


if __name__ == "__main__":
    main(*sys.argv[1:])
