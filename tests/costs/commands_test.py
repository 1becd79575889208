"""What the commands of zuna-convert take of the worst inputs: heap memory and printed text.

Prints a table of the largest costs with ZUNA_COSTS=1 in the environment."""

import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

LIBRARY = os.environ["ZUNA_HEAP_REPORT_LIBRARY"]
TOOL = os.environ["ZUNA_CONVERT"]
WRITER = os.environ["ZUNA_WORST_FILES"]

DIFFER, BAD_INPUT, PART_FAILED = 1, 4, 7


class CostsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="zuna-costs-")
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        plain = cls.path("plain")
        os.mkdir(plain)
        cls.bounds = json.loads(subprocess.run([WRITER, plain], check=True, stdout=subprocess.PIPE).stdout)
        with open(os.open(cls.path("key"), os.O_WRONLY | os.O_CREAT, 0o600), "w") as key:
            key.write("key = 6b6579\niv = 6976\n")
        cls.names = sorted(os.listdir(plain))
        for name in cls.names:
            subprocess.run([TOOL, "encrypt", f"plain/{name}", "-o", name, "--no-verify", "--quiet"], cwd=cls.folder,
                           env=cls.environment(), check=True)
        cls.rows = []

    @classmethod
    def tearDownClass(cls):
        if not os.environ.get("ZUNA_COSTS"):
            return
        print("   heap   text      bytes  command", file=sys.stderr)
        for heap, text, size, command in sorted(cls.rows, reverse=True)[:40]:
            print(f"{heap:7.1f}{text:7.1f}{size:11}  {command}", file=sys.stderr)

    @classmethod
    def path(cls, name):
        return os.path.join(cls.folder, name)

    @classmethod
    def read(cls, name):
        with open(cls.path(name), "rb") as file:
            return file.read()

    @classmethod
    def environment(cls, **others):
        return {**os.environ, "ZUNA_KEY_FILE": cls.path("key"), **others}

    def measure(self, inputs, *arguments, text_factor=1):
        """Runs a command, which may refuse its inputs, and requires that it costs no more than they allow.

        It may print `text_factor` times the text that is allowed.
        """
        report = self.path("report")
        done = subprocess.run([TOOL, *arguments], cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              env=self.environment(LD_PRELOAD=LIBRARY, ZUNA_HEAP_REPORT=report), check=False)
        self.assertIn(done.returncode, (0, DIFFER, BAD_INPUT, PART_FAILED), (arguments, done.stderr[-500:]))
        with open(report, encoding="ascii") as file:
            heap = int(file.read())
        os.remove(report)
        size = sum(os.path.getsize(self.path(name)) for name in inputs)
        printed = len(done.stdout) + len(done.stderr)
        self.rows.append((heap / size, printed / size, size, " ".join(arguments)))
        with self.subTest(arguments):
            self.assertLessEqual(heap, self.bound("heap", size))
            self.assertLessEqual(printed, text_factor * self.bound("printed", size))
        return done

    def bound(self, kind, size):
        constant, factor = self.bounds[kind]
        return constant + factor * size

    def measure_all(self, ending, *arguments):
        for name in self.names:
            if name.endswith(ending):
                self.measure([name], *(name if argument == "IN" else argument for argument in arguments))

    def test_info(self):
        self.measure_all(("-1.2", "-0.0"), "info", "IN")
        self.measure_all(("-1.2", "-0.0"), "info", "--json", "IN")

    def test_print(self):
        self.measure_all(("-1.2", "-0.0"), "print", "IN")

    def test_dump_offsets(self):
        self.measure_all(("-1.2", "-0.0", "-2.0"), "dump", "--offsets", "IN")
        self.measure_all(("-1.2", "-0.0", "-2.0"), "dump", "--offsets", "--json", "IN")

    def test_convert(self):
        self.measure_all("-1.2", "convert", "IN", "-o", "out", "--to", "1.1", "--force")
        self.measure_all("-1.2", "convert", "IN", "-o", "out", "--to", "2.0", "--force")
        self.measure_all("-2.0", "convert", "IN", "-o", "out", "--to", "1.2", "--force")

    def test_down(self):
        self.measure_all("-1.2", "down", "IN", "-o", "out", "--force")

    def test_up(self):
        for name in self.names:
            if not name.endswith("-0.0"):
                continue
            is_log = name in ("legacy-song-logs-0.0", "legacy-vamps-0.0", "legacy-caesuras-0.0", "legacy-markers-0.0")
            companion = "legacy-songs-0.0" if is_log else "legacy-vamps-0.0"
            self.measure([name, companion], "up", name, "-o", "out", "--companion", companion, "--any-companion", "--force")

    def test_rescue(self):
        for name in self.names:
            for damaged, content in (("cut", self.read(name)[:-20]), ("changed", self.read(name)[:-20] + bytes(20))):
                with open(self.path(damaged), "wb") as file:
                    file.write(content)
                self.measure([damaged], "rescue", damaged, "-o", "out", "--force")
                self.measure([damaged], "rescue", damaged, "-o", "out", "--force", "--json", text_factor=2)

    def test_diff(self):
        shows = ("notes-1.2", "moved-notes-1.2", "messages-1.2", "programs-1.2", "voices-1.2", "songs-1.2", "tempos-1.2",
                 "bar-labels-1.2", "down-songs-1.2", "down-voices-1.2", "one-long-name-1.2", "alike-1.2")
        for before, after in zip(shows, shows[1:]):
            self.measure([before, after], "diff", before, after)
            self.measure([before, after], "diff", after, before, "--json", text_factor=2)
        for name in ("vamps-1.2", "markers-1.2", "fermatas-1.2", "each-list-1.2", "renumbered-song-logs-1.2"):
            self.measure([name, "song-logs-1.2"], "diff", name, "song-logs-1.2")
        for name in ("each-list-1.2", "renumbered-song-logs-1.2"):
            self.measure([name, "fermatas-1.2"], "diff", name, "fermatas-1.2")

    def test_copy_fermatas(self):
        for name in ("fermatas-1.2", "song-logs-1.2", "each-list-1.2"):
            shutil.copy(self.path(name), self.path("copy"))
            self.measure([name, "copy"], "copy-fermatas", name, "copy")

    def test_list_encrypt_and_decrypt(self):
        for name in ("songs-1.2", "songs-2.0", "legacy-tracks-0.0", "song-logs-2.0"):
            os.mkdir(self.path("shows"))
            shutil.copy(self.path(name), self.path("shows/a.showdata"))
            self.measure([name], "list", "shows")
            shutil.rmtree(self.path("shows"))
            self.measure([f"plain/{name}"], "encrypt", f"plain/{name}", "-o", "out", "--force", "--no-verify")
            self.measure([name], "decrypt", name, "-o", "out", "--force")

    def test_midi(self):
        for name in self.names:
            if name.endswith(".mid"):
                self.measure([f"plain/{name}"], "midi", "import", f"plain/{name}", "-o", "out", "--force")
        for name in ("alike-1.2", "programs-1.2", "voices-1.2", "tempos-1.2", "down-voices-1.2"):
            os.mkdir(self.path("songs"))
            self.measure([name], "midi", "export", name, "--out-dir", "songs")
            shutil.rmtree(self.path("songs"))


if __name__ == "__main__":
    unittest.main()
