"""Keys of zuna-convert: key files, which key is taken, and what is said about keys that protect nothing."""

import os
import unittest

from tool import (BAD_INPUT, IO, PART_FAILED, REFUSED, USAGE, WRONG_KEY, WithLogs, WithShows, legacy_log, legacy_show,
                  legacy_song, midi_file, NOTES)

NONE_GIVEN = "is encrypted with a key, and none was given; name its key file with --key-file or ZUNA_KEY_FILE"
WRONG = "the key or the IV is not the one that this was encrypted with; give the right key file"
NEEDS_NONE = "was encrypted with an empty key, and a key is given; give no --key-file and no ZUNA_KEY_FILE"
NO_KEY = ("states no key, and an empty one protects nothing; give it a line \"key = HEX\", or give --empty-key")
NO_NAME = "names no key file, and an empty key protects nothing; name one, or give --empty-key to use no key"
EMPTY = ("is encrypted with an empty key, which protects nothing; name a key file with --key-file or "
         "ZUNA_KEY_FILE")


class KeyTest(WithShows):
    def setUp(self):
        super().setUp()
        self.write_key("key", "# the key\nkey = 00112233\r\n\n  iv=AABBccdd # the IV\n")
        self.run_tool("--key-file", "key", "encrypt", "old.logdata", "-o", "secret")

    def test_tells_where_a_file_needs_no_key(self):
        self.run_tool("--empty-key", "encrypt", "old.logdata", "-o", "open", "--key-file", "")
        self.write_key("other", "key = 44\niv = 55\n")
        for keys in (["--key-file", "key"], ["--key-file", "key", "--key-file", "other"]):
            self.refuse("info", "open", *keys, code=WRONG_KEY, message="open: " + NEEDS_NONE)
            self.refuse("rescue", "open", "-o", "out", *keys, code=WRONG_KEY, message="open: " + NEEDS_NONE)

    def test_takes_the_key_from_option_or_environment(self):
        self.environment["ZUNA_KEY_FILE"] = "key"
        self.assertEqual(self.plaintext("secret"), legacy_log())
        self.environment["ZUNA_KEY_FILE"] = "missing"
        done = self.run_tool("decrypt", "secret", "-o", "-", "--key-file", "key")
        self.assertEqual(done.stdout, legacy_log())

    def test_reads_key_files_of_other_systems(self):
        self.write_key("other", b"\xef\xbb\xbfKEY = 00112233\r\nIV = aabbCCDD\r\n")
        done = self.run_tool("decrypt", "secret", "-o", "-", "--key-file", "other")
        self.assertEqual(done.stdout, legacy_log())

    def test_reads_a_key_file_from_a_pipe(self):
        key = self.read("key")
        done = self.run_tool("decrypt", "secret", "-o", "-", "--key-file", "-", stdin=key)
        self.assertEqual((done.stdout, b"chmod" in done.stderr), (legacy_log(), False))
        reading, writing = os.pipe()
        os.write(writing, key)
        os.close(writing)
        done = self.run_tool("info", "secret", "--key-file", f"/dev/fd/{reading}", pass_fds=[reading])
        os.close(reading)
        self.assertEqual(done.stderr, b"")
        self.refuse("info", "-", "--key-file", "-", stdin=key, code=USAGE,
                    message="standard input: is given more than once; give a file for the others")

    def test_tells_a_wrong_key_and_a_wrong_iv(self):
        self.write_key("wrong-key", "key = 00112234\niv = AABBCCDD\n")
        self.write_key("wrong-iv", "key = 00112233\niv = AABBCCDE\n")
        for options in (["--key-file", "wrong-key"], ["--key-file", "wrong-iv"]):
            self.refuse("decrypt", "secret", "-o", "out", *options, code=WRONG_KEY, message="secret: " + WRONG)
        secret = self.read("secret")
        self.refuse("decrypt", "-", "-o", "out", "--key-file", "wrong-key", stdin=secret, code=WRONG_KEY,
                    message="standard input: " + WRONG)

    def test_says_that_no_key_was_given(self):
        del self.environment["ZUNA_KEY_FILE"]
        self.refuse("decrypt", "secret", "-o", "out", code=WRONG_KEY, message="secret: " + NONE_GIVEN)
        self.refuse("info", "-", stdin=self.read("secret"), code=WRONG_KEY, message="standard input: " + NONE_GIVEN)
        self.refuse("up", "secret", "-o", "out", "--companion", "old.showdata", code=WRONG_KEY,
                    message="secret: " + NONE_GIVEN)

    def test_refuses_bad_key_files_without_repeating_them(self):
        cases = {
            "key = 00\niv = 0\n": "has no whole bytes of hexadecimal digits after \"=\" (line 2); correct the key "
                                  "file",
            "key = 5EC8ET\niv =\n": "has no whole bytes of hexadecimal digits after \"=\" (line 1); correct the "
                                    "key file",
            "5EC8E7": "is neither \"key = HEX\" nor \"iv = HEX\" (line 1); correct the key file",
            "\n\nsalt = 00\n": "is neither \"key = HEX\" nor \"iv = HEX\" (line 3); correct the key file",
            "key = 00\nkey = 00\n": "gives \"key\" a second time (line 2); correct the key file",
            "key = 00\n": "has no line \"iv = HEX\"; add it",
        }
        for content, message in cases.items():
            self.write_key("bad-key", content)
            self.refuse("decrypt", "secret", "-o", "out", "--key-file", "bad-key", code=BAD_INPUT,
                        message="bad-key: " + message)
        self.write_key("long-key", "#" * 65536)
        self.refuse("decrypt", "secret", "-o", "out", "--key-file", "long-key", code=BAD_INPUT,
                    message="long-key: holds more than 65535 bytes; give another file")
        done = self.run_tool("decrypt", "secret", "-o", "out", "--key-file", "none", code=IO)
        self.assertRegex(done.stderr, b"^zuna-convert: none: cannot be opened: ")

    def test_protects_the_key_files(self):
        self.write_key("second", "key = 01\niv =\n")
        for name in ("key", "second"):
            self.refuse("decrypt", "secret", "-o", name, "--force", "--key-file", "key", "--key-file", "second",
                        code=REFUSED, message=f"{name}: is an input as well; give another output")

    def test_warns_of_a_key_file_that_others_can_read(self):
        warning = "key: is open to other users (mode {}); let only its owner read it (chmod 600)"
        command = ["decrypt", "secret", "-o", "-", "--key-file", "key"]
        for mode in (0o640, 0o604, 0o620, 0o644, 0o444):
            os.chmod(self.path("key"), mode)
            self.assertIn(warning.format(f"{mode:04o}").encode(), self.run_tool(*command).stderr)
            self.assertEqual(self.run_tool(*command, "--quiet").stderr, b"")
        for mode in (0o600, 0o400):
            os.chmod(self.path("key"), mode)
            self.assertNotIn(b"chmod", self.run_tool(*command).stderr)


class SeveralKeysTest(WithLogs):
    def setUp(self):
        super().setUp()
        for number in (1, 2, 3):
            self.write_key(f"key{number}", f"key = 0{number}\niv = 0{number}\n")
        self.plain = self.plaintext("new.log")
        for number in (1, 2):
            self.run_tool("encrypt", "-", "-o", f"log{number}", "--key-file", f"key{number}", stdin=self.plain)

    def opens_with(self, name, number):
        self.run_tool("info", name, "--key-file", f"key{number}")

    def test_tries_each_key(self):
        for options in (["--key-file", "key1", "--key-file", "key2"], ["--key-file", "key2", "--key-file", "key1"],
                        ["--key-file=key1", "--key-file=key2"]):
            for name in ("log1", "log2"):
                self.assertEqual(self.run_tool("decrypt", name, "-o", "-", *options).stdout, self.plain)
                self.assertEqual(self.run_tool(*options, "decrypt", name, "-o", "-").stdout, self.plain)
        self.run_tool("--key-file", "key1", "info", "log1", "log2", "--key-file", "key2")
        done = self.run_tool("info", "log1", "log2", "new.log", "--key-file", "key1", "--key-file", "key2",
                             code=PART_FAILED)
        self.assertIn(b"zuna-convert: new.log: none of the 2 keys", done.stderr)

    def test_says_once_that_no_key_fits(self):
        self.refuse("decrypt", "log1", "-o", "out", "--key-file", "key2", "--key-file", "key3", code=WRONG_KEY,
                    message="log1: none of the 2 keys and IVs is the one that this was encrypted with; give the right "
                            "key file")

    def test_tells_damage_from_a_wrong_key(self):
        damaged = self.read("log2")
        self.write("damaged", damaged[:-1] + bytes([damaged[-1] ^ 1]))
        done = self.run_tool("info", "damaged", "--key-file", "key1", "--key-file", "key2", code=BAD_INPUT)
        self.assertRegex(done.stderr, b"^zuna-convert: damaged: was changed after it was encrypted, .*\n$")

    def test_gives_an_output_the_key_of_its_input(self):
        keys = ["--key-file", "key1", "--key-file", "key2"]
        self.run_tool("convert", "log2", "-o", "out", "--to", "1.1", *keys)
        self.opens_with("out", 2)
        self.run_tool("down", "log2", "-o", "legacy", *keys)
        self.opens_with("legacy", 2)
        self.run_tool("encrypt", "-", "-o", "show", "--key-file", "key1",
                      stdin=legacy_show(legacy_song("2", "Two"), legacy_song("10", "Ten")))
        self.run_tool("up", "legacy", "-o", "again", "--companion", "show", *keys)
        self.opens_with("again", 2)
        self.run_tool("copy-fermatas", "log1", "log2", *keys)
        self.opens_with("log2", 2)

    def test_gives_a_new_output_the_first_key(self):
        keys = ["--key-file", "key2", "--key-file", "key1"]
        self.run_tool("encrypt", "-", "-o", "out", *keys, stdin=self.plain)
        self.opens_with("out", 2)
        self.write("song.mid", midi_file(NOTES))
        self.run_tool("midi", "import", "song.mid", "-o", "show", *keys)
        self.opens_with("show", 2)


class EmptyKeyTest(WithShows):
    def setUp(self):
        super().setUp()
        self.plain = self.plaintext("new.showdata")
        del self.environment["ZUNA_KEY_FILE"]
        self.run_tool("encrypt", "-", "-o", "open", "--quiet", stdin=self.plain)

    def test_says_that_an_output_has_an_empty_key(self):
        self.write("song.mid", midi_file(NOTES))
        self.run_tool("down", "open", "-o", "legacy", "--quiet")
        for command in (["convert", "open"], ["down", "open"], ["up", "legacy", "--companion", "old.logdata"],
                        ["encrypt", "song.mid"], ["midi", "import", "song.mid"]):
            done = self.run_tool(*command, "-o", "out", "--force")
            self.assertEqual(done.stderr.decode().count(f"zuna-convert: out: {EMPTY}\n"), 1, command)
            self.assertEqual(self.run_tool(*command, "-o", "out", "--force", "-qq").stderr, b"")
            self.assertNotIn(b"empty key", self.run_tool(*command, "-o", "out", "--force", "--empty-key").stderr)
        self.assertIn(b"standard output: is encrypted with an empty key",
                      self.run_tool("convert", "open", "-o", "-").stderr)

    def test_says_nothing_where_nothing_is_encrypted(self):
        for command in (["info", "open"], ["print", "open"], ["decrypt", "open", "-o", "-"]):
            self.assertNotIn(b"empty key", self.run_tool(*command).stderr)

    def test_refuses_an_empty_name(self):
        self.refuse("convert", "open", "-o", "out", "--key-file", "", code=REFUSED, message="--key-file: " + NO_NAME)
        self.write_key("key", "key = 01\niv = 02\n")
        self.refuse("info", "open", "--key-file", "key", "--key-file", "", code=REFUSED,
                    message="--key-file: " + NO_NAME)
        self.environment["ZUNA_KEY_FILE"] = ""
        self.refuse("convert", "open", "-o", "out", code=REFUSED, message="ZUNA_KEY_FILE: " + NO_NAME)
        self.run_tool("list", ".", code=REFUSED)
        self.assertEqual(self.run_tool("decrypt", "open", "-o", "-", "--empty-key").stdout, self.plain)
        self.run_tool("info", "open", "--key-file", "key", "--key-file", "", "--empty-key")
        self.refuse("info", "open", "--key-file", "key", code=WRONG_KEY, message="open: " + NEEDS_NONE)

    def test_refuses_a_key_file_with_an_empty_key(self):
        for content in ("", "key =\niv =\n", "key =\niv = 00\n", "iv =\n", "# key = 00\n"):
            self.write_key("key", content)
            self.refuse("convert", "open", "-o", "out", "--key-file", "key", code=REFUSED, message="key: " + NO_KEY)
            self.environment["ZUNA_KEY_FILE"] = "key"
            self.refuse("convert", "open", "-o", "out", code=REFUSED, message="key: " + NO_KEY)
            del self.environment["ZUNA_KEY_FILE"]
        self.write_key("key", "key =\niv =\n")
        done = self.run_tool("--empty-key", "decrypt", "open", "-o", "-", "--key-file", "key")
        self.assertEqual(done.stdout, self.plain)


if __name__ == "__main__":
    unittest.main()
