"""copy-fermatas of zuna-convert."""

import os
import unittest

from tool import BAD_INPUT, IO, REFUSED, USAGE, WRONG_KEY, WithLogs

FERMATA = {"start": 0, "end": 10, "label": "f", "value": 2}
OTHER = {"start": 20, "end": 30, "label": "", "value": 3}


class CopyFermatasTest(WithLogs):
    def setUp(self):
        super().setUp()
        document = self.log_document()
        document["songLogs"][0].update(attacca=1)
        document["songLogs"][1].update(attacca=2, fermatas=[FERMATA, FERMATA])
        self.write_log("source", document)

    def test_brings_back_what_down_and_up_lost(self):
        for version in ("1.1", "1.2", "2.0"):
            self.run_tool("down", "source", "-o", "legacy", "--quiet", "--force")
            self.run_tool("up", "legacy", "-o", version, "--companion", "old.showdata", "--to", version)
            os.chmod(self.path(version), 0o640)
            done = self.run_tool("copy-fermatas", "source", version)
            self.assertEqual(done.stderr.decode(), f"zuna-convert: {version}: 2 fermatas and 2 attaccas copied from "
                                                   "source, in 2 songs\n")
            self.assertEqual(os.stat(self.path(version)).st_mode & 0o777, 0o640)
            self.assertIn(f"log, version {version}".encode(), self.run_tool("info", version).stdout)
            self.assertEqual(self.log_document(version), self.log_document("source"))

    def test_reads_the_source_from_standard_input(self):
        self.run_tool("copy-fermatas", "-", "new.log", stdin=self.read("source"))
        self.assertEqual(self.read("new.log"), self.read("source"))

    def write_own(self):
        """Writes a log with another fermata, one that the source has too, and another attacca."""
        document = self.log_document("source")
        document["songLogs"][0].update(attacca=0, fermatas=[OTHER])
        document["songLogs"][1].update(attacca=7, fermatas=[FERMATA])
        self.write_log("destination", document)

    def test_erases_nothing_of_the_destination_unless_forced(self):
        self.write_own()
        message = ("destination: 1 fermata and 1 attacca of its own would be erased (songs 10, 2); give --force to replace "
                   "them")
        self.refuse("copy-fermatas", "source", "destination", code=REFUSED, message=message)
        self.refuse("copy-fermatas", "source", "destination", "-o", "out", code=REFUSED, message=message)
        done = self.run_tool("copy-fermatas", "source", "destination", "--force")
        self.assertEqual(done.stderr.decode().splitlines(), [
            "zuna-convert: destination: 1 fermata and 1 attacca of destination erased",
            "zuna-convert: destination: 2 fermatas and 2 attaccas copied from source, in 2 songs"])
        self.assertEqual(self.read("destination"), self.read("source"))
        self.run_tool("copy-fermatas", "source", "destination")  # once more changes nothing

    def test_keeps_the_old_file_beside_the_new_one(self):
        old = self.read("new.log")
        os.symlink("new.log", self.path("link"))
        self.run_tool("copy-fermatas", "source", "link")
        self.run_tool("copy-fermatas", "source", "new.log")  # once more changes nothing
        self.assertEqual((self.read("new.log"), self.read("new.log.~1~")), (self.read("source"), old))
        self.assertEqual([name for name in self.files() if ".~" in name], ["new.log.~1~"])
        self.assertTrue(os.path.islink(self.path("link")))
        self.run_tool("copy-fermatas", "source", "new.log", "-o", "out")
        self.assertFalse([name for name in self.files() if name.startswith("out.~")])

    def test_writes_nothing_where_asked(self):
        self.write_own()
        before = self.files()
        done = self.run_tool("copy-fermatas", "source", "destination", "-n", "--force")
        self.assertEqual(done.stderr.decode().splitlines(), [
            "zuna-convert: destination: 1 fermata and 1 attacca of destination would be erased",
            "zuna-convert: destination: 2 fermatas and 2 attaccas would be copied from source, in 2 songs"])
        self.assertEqual(self.run_tool("copy-fermatas", "source", "new.log", "-o", "-", "-n").stdout, b"")
        self.refuse("copy-fermatas", "source", "destination", "-n", code=REFUSED,
                    message="destination: 1 fermata and 1 attacca of its own would be erased (songs 10, 2); give --force "
                            "to replace them")
        self.refuse("copy-fermatas", "source", "new.log", "-o", "destination", "-n", code=REFUSED,
                    message="destination: exists; give --force to replace it, or another output")
        self.assertEqual(self.files(), before)

    def test_writes_another_file(self):
        before = self.read("new.log")
        done = self.run_tool("copy-fermatas", "source", "new.log", "-o", "out")
        self.assertEqual(done.stderr, b"zuna-convert: out: 2 fermatas and 2 attaccas copied from source, in 2 songs\n")
        self.assertEqual((self.read("out"), self.read("new.log")), (self.read("source"), before))
        self.refuse("copy-fermatas", "source", "new.log", "-o", "out", code=REFUSED,
                    message="out: exists; give --force to replace it, or another output")
        for name in ("source", "new.log"):
            self.refuse("copy-fermatas", "source", "new.log", "-o", name, "--force", code=REFUSED,
                        message=f"{name}: is an input as well; give another output")
        done = self.run_tool("copy-fermatas", "source", "-", "-o", "-", stdin=before)
        self.assertEqual(done.stdout, self.read("source"))

    def test_leaves_other_songs_alone(self):
        document = self.log_document("source")
        del document["songLogs"][0]
        self.write_log("two", document)
        document["songLogs"][0].update(attacca=0, fermatas=[])
        self.write_log("less", document)
        self.assertEqual(self.run_tool("copy-fermatas", "less", "source", "--quiet", "--force").stderr, b"")
        ten, two = self.log_document("source")["songLogs"]
        self.assertEqual((ten["attacca"], two["attacca"], two["fermatas"]), (1, 0, []))
        self.refuse("copy-fermatas", "source", "two", code=BAD_INPUT,
                    message="two: lacks songs of source: 10; give a log of the same songs")

    def test_refuses_what_holds_no_fermatas(self):
        what = "is a log of version 0.0, which holds no attaccas and fermatas;"
        self.refuse("copy-fermatas", "old.log", "new.log", code=BAD_INPUT,
                    message=f"old.log: {what} give the log from before it went down")
        self.refuse("copy-fermatas", "source", "old.log", code=BAD_INPUT, message=f"old.log: {what} use up first")
        for logs in (["new.showdata", "new.log"], ["source", "new.showdata"]):
            self.refuse("copy-fermatas", *logs, code=BAD_INPUT,
                        message="new.showdata: is a show, and this command takes logs; give a log")

    def test_leaves_the_destination_when_it_fails(self):
        self.write("cut", self.read("new.log")[:-1])
        done = self.run_tool("copy-fermatas", "source", "cut", code=BAD_INPUT)
        self.assertRegex(done.stderr, b"^zuna-convert: cut: ends after .*; .*\n$")
        self.assertEqual(self.read("cut"), self.read("new.log")[:-1])
        self.write_key("key", "key = 01\niv = 02\n")
        self.run_tool("copy-fermatas", "source", "new.log", "--key-file", "key", code=WRONG_KEY)
        self.assertRegex(self.run_tool("copy-fermatas", "source", "none", code=IO).stderr,
                         b"^zuna-convert: none: cannot be opened")
        self.assertNotIn("none", self.files())

    def test_refuses_destinations_that_are_no_other_file(self):
        self.refuse("copy-fermatas", "source", "-", code=USAGE,
                    message="command line: the destination is rewritten in its place; give a file, or -o")
        self.refuse("copy-fermatas", "source", "./source", code=REFUSED,
                    message="./source: is an input as well; give another output")
        self.refuse("copy-fermatas", "source", ".", code=REFUSED,
                    message=".: is not a regular file; give another output, or - for a pipe")


if __name__ == "__main__":
    unittest.main()
