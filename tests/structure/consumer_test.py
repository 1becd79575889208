#!/usr/bin/env python3
"""Installs the build, moves the prefix and lets a project of its own build against it, with CMake and with pkg-config, and
convert the sample show and its log. The library without toolkit and tool is enough for it.

    consumer_test.py SOURCE_DIR BUILD_DIR CXX_COMPILER CXX_FLAGS
"""

import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile


# Brings a show up in memory with the lines of docs/toolkit.md.
IN_MEMORY = """#include <toolkit/conversion/conversion.h>
#include <toolkit/document/write.h>
#include <fstream>
#include <iostream>
#include <iterator>
std::vector<std::uint8_t> ReadFile(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}
int main(int, char** argv) {
  const CipherKey key;
  const auto show_bytes = ReadFile(argv[1]), log_bytes = ReadFile(argv[2]);
  LINES
  std::ofstream(argv[3], std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}
"""


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
        tool = prefix / "bin/zuna-convert"
        for program in (built_with_cmake(prefix, examples, folder, compiler, flags, "songs"),
                        built_with_pkg_config(prefix, examples, folder, compiler, flags, "songs")):
            check_songs(program, tool, examples, folder)
        check_page(pathlib.Path(source), prefix, tool, compiler, flags, folder)
        for target in ("zuna::zuna_format_converter", "zuna::zuna_toolkit"):
            single = linking(examples, target, folder / target.replace("::", "-"))
            check_output(built_with_cmake(prefix, single, single, compiler, flags), examples, log, folder)
        alone = library_alone(build, folder / "alone")
        check_output(built_with_cmake(alone, examples, folder / "of-library", compiler, flags), examples, log, folder)
        check_components(prefix, alone, folder, compiler)


def library_alone(build, prefix):
    """Installs the two components of the library, and nothing else comes with them."""
    for component in ("library", "library-dev"):
        run("cmake", "--install", build, "--prefix", prefix, "--component", component)
    files = {str(path.relative_to(prefix)) for path in prefix.rglob("*") if not path.is_dir()}
    libraries = {found[1] for name in files if (found := re.match(r"lib(\w+)\.", pathlib.Path(name).name))}
    assert libraries == {"zuna_format_converter", "zuna_core", "zuna_security", "kit"}, libraries
    others = [name for name in files if "toolkit" in name and not name.endswith("/docs/toolkit.md") or not re.match(r"(include/zuna|lib\w*|share/man/man3|share/doc/libzuna-format-converter-dev)/", name)]
    assert not others, others
    return prefix


def built_with_cmake(prefix, examples, folder, compiler, flags, name="consumer"):
    """Builds the program of this name in the examples."""
    build = folder / f"build-{name}"
    run("cmake", "-S", examples / name, "-B", build, f"-DCMAKE_PREFIX_PATH={prefix}",
        f"-DCMAKE_CXX_COMPILER={compiler}", f"-DCMAKE_CXX_FLAGS={flags}")
    run("cmake", "--build", build)
    return build / name


def built_with_pkg_config(prefix, examples, folder, compiler, flags, name="consumer"):
    module = {"consumer": "zuna_format_converter", "songs": "zuna_toolkit"}[name]
    return built_of_file(prefix, examples / name / "main.cpp", folder / name, compiler, flags, module)


def built_of_file(prefix, source, program, compiler, flags, module):
    """Builds a program with what pkg-config says of the module."""
    description = next(prefix.rglob(f"{module}.pc"))
    output = subprocess.run(["pkg-config", "--cflags", "--libs", module], check=True, text=True,
                            stdout=subprocess.PIPE, env={**os.environ, "PKG_CONFIG_PATH": str(description.parent)}).stdout
    words = shlex.split(output)
    folders = [description.parent.parent, *(pathlib.Path(word).parent for word in words if word.startswith("/"))]
    run(compiler, "-std=c++20", *shlex.split(flags), source, "-o", program, *words, *(f"-Wl,-rpath,{place}" for place in folders))
    return program


def linking(examples, target, folder):
    """A copy of the consumer in the folder that links this target alone."""
    shutil.copytree(examples / "consumer", folder / "consumer")
    project = folder / "consumer/CMakeLists.txt"
    text = project.read_text()
    assert "zuna::all" in text, text
    project.write_text(text.replace("zuna::all", target))
    return folder


def check_songs(program, tool, examples, folder):
    """The example of docs/toolkit.md, with files that it can and cannot read."""
    expected = "1: Auld Lang Syne\n2: Greensleeves\n2a: Scarborough Fair\n"
    for name in ("three-tunes-0.0.showdata", "three-tunes-1.2.logdata"):
        (folder / name).unlink(missing_ok=True)
        assert run(program, decrypted(tool, examples, name, folder)) == expected
    for arguments, end in (((examples / "three-tunes-0.0.showdata",), "[no-key]\n"), ((folder / "none",), "[not-found]\n"),
                           ((), "[not-found]\n")):
        done = subprocess.run([program, *arguments], check=False, capture_output=True, text=True)
        assert done.returncode == 1 and done.stderr.endswith(end), (done.returncode, done.stderr)


def check_page(source, prefix, tool, compiler, flags, folder):
    """docs/toolkit.md has the example as it is compiled above, and its other program compiles and converts."""
    listing, in_memory = re.findall(r"```cpp\n(.*?)```", (source / "docs/toolkit.md").read_text(), re.DOTALL)
    assert (source / "examples/songs/main.cpp").read_text().endswith("\n\n" + listing), listing
    (folder / "in_memory.cpp").write_text(IN_MEMORY.replace("LINES", in_memory))
    program = built_of_file(prefix, folder / "in_memory.cpp", folder / "in_memory", compiler, flags, "zuna_toolkit")
    samples = []
    for name in ("three-tunes-0.0.showdata", "three-tunes-0.0.logdata"):
        (folder / name).unlink(missing_ok=True)
        plain = decrypted(tool, source / "examples", name, folder)
        samples.append(folder / f"empty-key-{name}")
        run(tool, "encrypt", plain, "-o", samples[-1], "--no-verify", "--empty-key")
    run(program, *samples, folder / "up.showdata")
    assert '"Three Tunes", 3 songs' in run(tool, "info", folder / "up.showdata", "--empty-key")


def check_components(prefix, alone, folder, compiler):
    """The components of the CMake package, and why one is not found."""
    refused = "there is no component \"tools\"; the components are library and toolkit"
    for place, components, message in ((prefix, "REQUIRED COMPONENTS library toolkit", ""),
                                       (alone, "REQUIRED COMPONENTS library OPTIONAL_COMPONENTS toolkit", ""),
                                       (alone, "REQUIRED COMPONENTS toolkit", f"the toolkit is not installed in {alone}"),
                                       (prefix, "REQUIRED COMPONENTS tools", refused)):
        project = folder / "components"
        shutil.rmtree(project, ignore_errors=True)
        project.mkdir()
        (project / "CMakeLists.txt").write_text("cmake_minimum_required(VERSION 3.25)\nproject(components LANGUAGES CXX)\n"
                                                f"find_package(zuna_format_converter 1.0 {components})\n")
        done = subprocess.run(["cmake", "-S", project, "-B", project / "build", f"-DCMAKE_PREFIX_PATH={place}",
                               f"-DCMAKE_CXX_COMPILER={compiler}"], check=False, capture_output=True, text=True)
        said = " ".join(done.stderr.split())
        assert (done.returncode != 0) == bool(message) and message in said, (components, said)


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
