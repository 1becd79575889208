"""encrypt and decrypt of zuna-convert, key files, and damaged envelopes."""

import os
import unittest

from tool import BAD_INPUT, IO, REFUSED, WRONG_KEY, WithShows, legacy_log


class KeyTest(WithShows):
    def setUp(self):
        super().setUp()
        self.write("key", "# the key\nkey = 00112233\r\n\n  iv=AABBccdd # the IV\n")
        self.run_tool("--key-file", "key", "encrypt", "old.logdata", "-o", "secret")

    def test_takes_the_key_from_option_or_environment(self):
        self.environment["ZUNA_KEY_FILE"] = "key"
        self.assertEqual(self.plaintext("secret"), legacy_log())
        self.environment["ZUNA_KEY_FILE"] = "missing"
        done = self.run_tool("decrypt", "secret", "-o", "-", "--key-file", "key")
        self.assertEqual(done.stdout, legacy_log())

    def test_tells_a_wrong_key_and_a_wrong_iv(self):
        self.write("wrong-key", "key = 00112234\niv = AABBCCDD\n")
        self.write("wrong-iv", "key = 00112233\niv = AABBCCDE\n")
        for options in (["--key-file", "wrong-key"], ["--key-file", "wrong-iv"]):
            self.refuse("decrypt", "secret", "-o", "out", *options, code=WRONG_KEY,
                        message="secret: the key or the IV is not the one that this was encrypted with; give the "
                                "right key file")
        secret = self.read("secret")
        self.refuse("decrypt", "-", "-o", "out", "--key-file", "wrong-key", stdin=secret, code=WRONG_KEY,
                    message="standard input: the key or the IV is not the one that this was encrypted with; give "
                            "the right key file")

    def test_says_that_no_key_was_given(self):
        needed = "is encrypted with a key, and none was given; name its key file with --key-file or ZUNA_KEY_FILE"
        self.refuse("decrypt", "secret", "-o", "out", code=WRONG_KEY, message="secret: " + needed)
        self.refuse("info", "-", stdin=self.read("secret"), code=WRONG_KEY, message="standard input: " + needed)
        self.refuse("up", "old.showdata", "-o", "out", "--companion", "secret", code=WRONG_KEY,
                    message="secret: " + needed)

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
            "iv = 00\n": "has no line \"key = HEX\"; add it",
        }
        for content, message in cases.items():
            self.write("bad-key", content)
            self.refuse("decrypt", "secret", "-o", "out", "--key-file", "bad-key", code=BAD_INPUT,
                        message="bad-key: " + message)
        done = self.run_tool("decrypt", "secret", "-o", "out", "--key-file", "none", code=IO)
        self.assertRegex(done.stderr, b"^zuna-convert: none: cannot be opened: ")

    def test_protects_the_key_file(self):
        self.refuse("decrypt", "secret", "-o", "key", "--force", "--key-file", "key", code=REFUSED,
                    message="key: is an input as well; give another output")


class EnvelopeTest(WithShows):
    def test_refuses_every_damage(self):
        good = self.read("new.showdata")
        for name, content in (("cut", good[:-1]), ("header", good[:40]), ("long", good + b"x"),
                              ("flipped", good[:-1] + bytes([good[-1] ^ 1])), ("empty", b""),
                              ("plain", b"just a text")):
            self.write(name, content)
            done = self.run_tool("convert", name, "-o", "out", code=BAD_INPUT)
            self.assertRegex(done.stderr.decode(), f"^zuna-convert: {name}: .*; .*\n$")
            done = self.run_tool("convert", "-", "-o", "out", stdin=content, code=BAD_INPUT)
            self.assertRegex(done.stderr.decode(), "^zuna-convert: standard input: .*; .*\n$")
        self.assertNotIn("out", self.files())

    def test_tells_other_kinds_of_files(self):
        for content, message in ((b"MThd\0\0\0\6", "is a MIDI file; use midi import"),
                                 (b"{}", "is plain text; use encrypt first"),
                                 (legacy_log(), "is a plain log; use encrypt first"),
                                 (b"\0ZLG\2\0\0\0\1\2", "is a plain log; use encrypt first"),
                                 (b"\0ZSH\2\0\0\0\1\2", "is a plain show; use encrypt first"),
                                 (b"\xef\xbb\xbf\r\n\t {", "is plain text; use encrypt first")):
            self.write("other", content)
            for command in (["info", "other"], ["convert", "other", "-o", "out"], ["decrypt", "other", "-o", "out"],
                            ["up", "other", "-o", "out", "--companion", "old.logdata"]):
                self.refuse(*command, code=BAD_INPUT, message="other: " + message)

    def test_gives_back_any_bytes(self):
        for content in (b"", b"\x00", bytes(range(256)) * 300):
            self.write("plain", content)
            self.run_tool("encrypt", "plain", "-o", "encrypted")
            self.run_tool("decrypt", "encrypted", "-o", "decrypted")
            self.assertEqual(self.read("decrypted"), content)
            for name in ("encrypted", "decrypted"):
                self.assertEqual(os.stat(self.path(name)).st_mode & 0o777, 0o600)
                os.remove(self.path(name))

    def test_says_what_it_did(self):
        self.write("plain", b"abc")
        for command, message in ((["encrypt", "plain", "-o", "sealed"], b"plain: 3 bytes encrypted"),
                                 (["decrypt", "sealed", "-o", "out"], b"sealed: 3 bytes decrypted")):
            self.assertEqual(self.run_tool(*command).stderr, b"zuna-convert: " + message + b"\n")
            self.assertEqual(self.run_tool(*command, "--force", "--quiet").stderr, b"")

    def test_does_not_encrypt_twice(self):
        for content in (self.read("new.showdata"), self.read("new.showdata")[:20]):
            self.write("sealed", content)
            self.refuse("encrypt", "sealed", "-o", "out", code=REFUSED,
                        message="sealed: is encrypted already; give --force to encrypt it again")
        self.run_tool("encrypt", "new.showdata", "-o", "out", "--force")
        self.assertEqual(self.plaintext("out"), self.read("new.showdata"))

    def test_reads_a_text_form_before_it_encrypts_it(self):
        self.run_tool("convert", "new.showdata", "-o", "text", "--to", "2.0")
        good = self.plaintext("text")
        self.run_tool("encrypt", "-", "-o", "good", stdin=good)
        self.assertEqual(self.read("good"), self.read("text"))
        self.write("edited", good.replace(b'"division"', b'"divison"', 1))
        done = self.run_tool("encrypt", "edited", "-o", "out", code=BAD_INPUT)
        self.assertRegex(done.stderr, rb"^zuna-convert: edited: .*divison.*at byte \d+\); correct the text\n$")
        self.assertNotIn("out", self.files())
        self.run_tool("encrypt", "edited", "-o", "out", "--force")
        self.refuse("encrypt", "-", "-o", "new", stdin=b"\xef\xbb\xbf" + good, code=BAD_INPUT,
                    message="standard input: a byte order mark or blanks stand before the text (at byte 0); remove "
                            'them, so that "{" comes first')
        for log in (b'{"kind": "logdata", "fileVersion": "2.0", "showName": ""}', b'{"kind": "logdata"}'):
            done = self.run_tool("encrypt", "-", "-o", "log", stdin=log, code=BAD_INPUT)
            self.assertRegex(done.stderr, rb"^zuna-convert: standard input: missing key .* \(at byte \d+\); correct")

    def test_is_a_filter(self):
        show = self.read("new.showdata")
        plain = self.run_tool("decrypt", "-", "-o", "-", stdin=show).stdout
        self.assertEqual(self.run_tool("encrypt", "-", "-o", "-", stdin=plain).stdout, show)
        old = self.run_tool("down", "-", "-o", "-", stdin=show).stdout
        self.assertEqual(old, self.read("old.showdata"))
        done = self.run_tool("up", "-", "-o", "-", "--companion", "old.logdata", stdin=old)
        self.assertEqual(done.stdout, show)
        self.assertEqual(done.stderr,
                         b"zuna-convert: standard input: 2 songs, 2 voices, 2 events, 0.0 -> 1.2, "
                         b'named "My Show" by its log\n')


if __name__ == "__main__":
    unittest.main()
