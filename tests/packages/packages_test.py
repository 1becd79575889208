#!/usr/bin/env python3
"""Installs, uses and removes the Debian packages in a clean root, and builds the source archive. scripts/package makes
them; the stage "packaging" of .ci/run runs both.

    packages_test.py
"""

import gzip
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from clean_root import CleanRoot, run

SOURCE = pathlib.Path(__file__).resolve().parents[2]
PACKAGES = SOURCE / "build/packages"
EXAMPLES = SOURCE / "examples"
SAMPLES = ("three-tunes-0.0.showdata", "three-tunes-0.0.logdata", "three-tunes-1.2.showdata", "three-tunes-1.2.logdata")
KEY_FILE = ("--key-file", "/tmp/three-tunes.key")

TOOLKIT_PROGRAM = """#include <iostream>
#include <toolkit/error_code.h>
int main() { for (const auto& error : zuna_toolkit::ErrorExplanations()) std::cout << error.code << '\\n'; }
"""

sys.path.append(str(SOURCE / "tests/structure"))
from consumer_test import built_with_cmake, built_with_pkg_config, secrets  # pylint: disable=wrong-import-position


def archive(name):
    found, = PACKAGES.glob(f"{name}_*.deb")
    return found


LIBRARIES, DEVELOPMENT, TOOL, PYTHON = ALL = [archive(name) for name in (
    "libzuna-format-converter1", "libzuna-format-converter-dev", "zuna-convert", "python3-zuna")]


class InstalledTest(unittest.TestCase):
    """A test with the packages in a clean root, which has the samples in /tmp."""

    @classmethod
    def setUpClass(cls):
        place = tempfile.TemporaryDirectory(prefix="zuna-packages-")
        cls.addClassCleanup(place.cleanup)
        cls.work = pathlib.Path(place.name) / "work"
        cls.work.mkdir()
        cls.root = CleanRoot(pathlib.Path(place.name) / "root", ALL)
        for name in ("three-tunes.key", *SAMPLES):
            shutil.copy(EXAMPLES / name, cls.root.folder / "tmp")
        os.chmod(cls.root.folder / "tmp/three-tunes.key", 0o600)
        cls.before = cls.root.files()
        cls.root.dpkg("--install", *ALL)
        cls.prefix = cls.root.folder / "usr"
        cls.libraries, = cls.prefix.glob("lib/*-linux-*")

    def flags(self, *question):
        """What pkg-config says."""
        return run("pkg-config", *question, env={**os.environ, "PKG_CONFIG_PATH": str(self.libraries / "pkgconfig")}).split()


class ToolTest(InstalledTest):
    def test_reads_the_samples(self):
        for name in SAMPLES:
            self.assertIn("Scarborough Fair", self.root.run("zuna-convert", "info", f"/tmp/{name}", *KEY_FILE))

    def test_converts_there_and_back(self):
        self.root.run("zuna-convert", "up", "/tmp/three-tunes-0.0.showdata", "-o", "/tmp/up", *KEY_FILE)
        self.root.run("zuna-convert", "down", "/tmp/up", "-o", "/tmp/down", *KEY_FILE)
        self.assertEqual((self.root.folder / "tmp/down").read_bytes(), (EXAMPLES / SAMPLES[0]).read_bytes())

    def test_has_manual_pages(self):
        page = self.prefix / "share/man/man1/zuna-convert-midi-import.1.gz"
        self.assertIn("Make a show of MIDI files", run("mandoc", "-T", "utf8", page))
        self.assertIn(b"libzuna_format_converter", gzip.decompress((self.prefix / "share/man/man3/libzuna_format_converter.3.gz")
                                                                   .read_bytes()))

    def test_has_the_schemas_of_its_json(self):
        schemas = {path.name: path.read_text() for path in (SOURCE / "schemas").iterdir()}
        self.assertEqual({path.name: path.read_text() for path in (self.prefix / "share/zuna-convert/schemas").iterdir()}, schemas)

    def test_has_completions_where_shells_look_for_them(self):
        for shell, place in (("bash", "bash-completion/completions/zuna-convert"),
                             ("zsh", "zsh/vendor-completions/_zuna-convert"),
                             ("fish", "fish/vendor_completions.d/zuna-convert.fish")):
            self.assertEqual((self.prefix / "share" / place).read_text(), self.root.run("zuna-convert", "completion", shell))


class DevelopmentTest(InstalledTest):
    """The consumer of examples/ is built outside and runs in the root, where it finds the libraries by itself."""

    def check(self, program):
        shutil.copy(program, self.root.folder / "tmp/consumer")
        self.root.run("zuna-convert", "decrypt", f"/tmp/{SAMPLES[1]}", "-o", "/tmp/plain", "--force", *KEY_FILE)
        said = self.root.run("/tmp/consumer", f"/tmp/{SAMPLES[0]}", f"/tmp/{SAMPLES[1]}", "/tmp/plain", *secrets(EXAMPLES),
                             f"/tmp/{program.parent.name}-out")
        self.assertIn("the same as before\n", said)

    def test_gives_cmake_what_it_needs(self):
        self.check(built_with_cmake(self.prefix, EXAMPLES, self.work, "c++", ""))

    def test_gives_pkg_config_what_it_needs(self):
        self.check(built_with_pkg_config(self.prefix, EXAMPLES, self.work, "c++", ""))

    def test_has_the_pages_that_its_headers_name(self):
        pages = {path.name: path.read_text() for path in (SOURCE / "docs").glob("*.md")}
        documents = self.prefix / "share/doc/libzuna-format-converter-dev"
        self.assertEqual({path.name: path.read_text() for path in (documents / "docs").iterdir()}, pages)
        self.assertEqual((documents / "examples/consumer/main.cpp").read_text(), (EXAMPLES / "consumer/main.cpp").read_text())

    def test_gives_pkg_config_the_toolkit(self):
        (self.work / "codes.cpp").write_text(TOOLKIT_PROGRAM)
        run("c++", "-std=c++20", self.work / "codes.cpp", "-o", self.root.folder / "tmp/codes",
            *self.flags("--cflags", "--libs", "zuna_toolkit"))
        self.assertIn("wrong-key\n", self.root.run("/tmp/codes"))


PYTHON_PROGRAM = """import zuna
show = zuna.open("/tmp/three-tunes-0.0.showdata", key_file="/tmp/three-tunes.key")
print(show.up().songs[2].name, show.songs[0].voices[0].messages["data1"].max())
"""


class PythonTest(InstalledTest):
    def test_opens_a_show(self):
        self.assertEqual(self.root.run("python3", "-c", PYTHON_PROGRAM), "Scarborough Fair 74\n")


class RemovalTest(InstalledTest):
    def test_leaves_nothing(self):
        self.assertIn("zuna-convert depends on libzuna-format-converter1",
                      self.root.refused_by_dpkg("--remove", "libzuna-format-converter1"))
        self.root.run("python3", "-c", "import zuna")  # which writes compiled files
        self.root.dpkg("--remove", "zuna-convert")
        self.assertFalse((self.prefix / "bin/zuna-convert").exists())
        self.root.dpkg("--purge", "zuna-convert", "python3-zuna", "libzuna-format-converter-dev", "libzuna-format-converter1")
        self.assertEqual(self.root.files(), self.before)
        self.assertNotIn("zuna", self.root.dpkg("--list"))


class LintianTest(unittest.TestCase):
    def test_finds_nothing(self):
        done = subprocess.run(["lintian", "--fail-on", "error,warning", *ALL], capture_output=True,
                              text=True, check=False)
        self.assertEqual((done.returncode, done.stdout), (0, ""))


class SourceArchiveTest(InstalledTest):
    """Someone with a security library of their own, written against the headers of the package."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        packed, = PACKAGES.glob("zuna-format-converter-*.tar.gz")
        run("tar", "-xf", packed, "-C", cls.work)
        cls.source = cls.work / packed.name.removesuffix(".tar.gz")

    def without_git(self):
        """An environment in which asking git anything fails, and is remembered."""
        programs = self.work / "programs"
        programs.mkdir()
        (programs / "git").write_text(f"#!/bin/sh\ntouch {self.work}/asked-git\nexit 1\n")
        (programs / "git").chmod(0o755)
        return {**os.environ, "PATH": f"{programs}:{os.environ['PATH']}"}

    def test_has_every_file_of_the_repository(self):
        kept = run("git", "-C", SOURCE, "ls-files").splitlines()
        packed = {str(path.relative_to(self.source)) for path in self.source.rglob("*") if path.is_file()}
        self.assertEqual(packed, set(kept))

    def test_builds_the_library_alone(self):
        own = self.work / "own/libown_security.so"
        own.parent.mkdir()
        run("c++", "-std=c++20", "-shared", "-fPIC", *self.flags("--cflags", "zuna_format_converter"),
            self.source / "examples/platform/security.cpp", "-o", own)

        environment, build, prefix = self.without_git(), self.work / "build", self.work / "prefix"
        run("cmake", "-S", self.source, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_UNITY_BUILD=ON",
            "-DZUNA_BUILD_TOOLKIT=OFF",
            f"-DZUNA_PLATFORM_LIBRARIES={own};{self.libraries / 'libzuna_core.so'};{self.libraries / 'libkit.so'}", env=environment)
        run("cmake", "--build", build, env=environment)
        for component in ("library", "library-dev"):
            run("cmake", "--install", build, "--prefix", prefix, "--component", component, env=environment)
        self.assertFalse((self.work / "asked-git").exists())

        self.assertEqual({path.name for path in prefix.glob("lib/*.so*")},
                         {f"libzuna_format_converter.so{end}" for end in ("", ".1", ".1.0.0")})
        self.assertFalse((prefix / "bin").exists())
        tool = self.work / "zuna-convert"
        tool.write_text(f'#!/bin/sh\nLD_LIBRARY_PATH={self.libraries} exec {self.prefix}/bin/zuna-convert "$@"\n')
        tool.chmod(0o755)
        run(sys.executable, SOURCE / "tests/structure/own_platform_test.py", self.source, prefix, tool, "c++")


if __name__ == "__main__":
    if os.getuid() != 0:  # chroot and the owners of files need a user namespace then
        os.execvp("unshare", ["unshare", "--map-root-user", sys.executable, *sys.argv])
    unittest.main()
