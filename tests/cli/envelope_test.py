"""encrypt and decrypt of zuna-convert, and damaged envelopes."""

import os
import pathlib
import shutil
import unittest

from tool import BAD_INPUT, REFUSED, WithShows, legacy_log, legacy_show, legacy_song


ROOT = pathlib.Path(__file__).parents[2]
SUITE_OFFSET = 9


class EnvelopeTest(WithShows):
    def test_opens_files_of_suite_1_and_writes_suite_2(self):
        self.environment["ZUNA_KEY_FILE"] = self.write_key("key", (ROOT / "examples/three-tunes.key").read_text())
        for old in sorted((ROOT / "tests/cli/suite-1").iterdir()):
            self.assertEqual(old.read_bytes()[SUITE_OFFSET], 1)
            shutil.copy(old, self.folder)
            plain = self.run_tool("decrypt", old.name, "-o", "-").stdout
            sealed = self.run_tool("encrypt", "-", "-o", "-", stdin=plain).stdout
            self.assertEqual(sealed, (ROOT / "examples" / old.name).read_bytes())
            self.assertEqual(sealed[SUITE_OFFSET], 2)
        self.run_tool("up", "three-tunes-0.0.showdata", "three-tunes-0.0.logdata", "--out-dir", "up")
        self.run_tool("down", "three-tunes-1.2.showdata", "three-tunes-1.2.logdata", "--out-dir", "down")
        for kind in ("showdata", "logdata"):
            for folder, version, source in (("up", "1.2", "0.0"), ("down", "0.0", "1.2")):
                self.assertEqual(self.read(f"{folder}/three-tunes-{source}.{kind}"),
                                 (ROOT / f"examples/three-tunes-{version}.{kind}").read_bytes())

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
                                 (b"PK\3\4\x14\0\0\0", "is a zip archive; unpack it, and give the file that comes out"),
                                 (b"{}", "is plain text; use encrypt first"),
                                 (legacy_log(), "is a plain log; use encrypt first"),
                                 (legacy_show(legacy_song()), "is a plain show; use encrypt first"),
                                 (b"\0ZLG\2\0\0\0\1\2", "is a plain log; use encrypt first"),
                                 (b"\0ZSH\2\0\0\0\1\2", "is a plain show; use encrypt first"),
                                 (b"\xef\xbb\xbf\r\n\t {", "is plain text; use encrypt first")):
            self.write("other", content)
            for command in (["convert", "other", "-o", "out"], ["decrypt", "other", "-o", "out"],
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
        plain = self.plaintext("new.showdata")
        self.write("plain", plain)
        for command, message in ((["encrypt", "plain", "-o", "sealed"], b"plain: %d bytes encrypted" % len(plain)),
                                 (["decrypt", "sealed", "-o", "out"], b"sealed: %d bytes decrypted" % len(plain))):
            self.assertEqual(self.run_tool(*command).stderr, b"zuna-convert: " + message + b"\n")
            self.assertEqual(self.run_tool(*command, "--force", "--quiet").stderr, b"")

    def test_warns_of_what_cannot_be_read(self):
        for content in (b"abc", b"", b"MThd\0\0\0\6", self.plaintext("old.showdata")[:-1],
                        self.plaintext("new.showdata")[:-1], legacy_log()[:-1]):
            self.write("other", content)
            said = self.run_tool("encrypt", "other", "-o", "out", "--force").stderr.decode().splitlines()
            self.assertEqual(said, ["zuna-convert: other: cannot be read as a show or log; check that it is whole, and the "
                                    "right file", f"zuna-convert: other: {len(content)} bytes encrypted"])
            self.assertEqual(self.run_tool("encrypt", "other", "-o", "out", "--force", "-q").stderr, b"")
            said = self.run_tool("encrypt", "other", "-o", "out", "--force", "--no-verify").stderr.decode()
            self.assertEqual(said, f"zuna-convert: other: {len(content)} bytes encrypted\n")
        self.run_tool("convert", "new.showdata", "-o", "text", "--to", "2.0")
        for name in ("old.showdata", "new.showdata", "text"):
            plain = self.plaintext(name)
            said = self.run_tool("encrypt", "-", "-o", "out", "--force", stdin=plain).stderr.decode()
            self.assertEqual(said, f"zuna-convert: standard input: {len(plain)} bytes encrypted\n")

    def test_does_not_encrypt_twice(self):
        for content in (self.read("new.showdata"), self.read("new.showdata")[:20]):
            self.write("sealed", content)
            self.refuse("encrypt", "sealed", "-o", "out", code=REFUSED,
                        message="sealed: is encrypted already; give --no-verify to encrypt it again")
        self.refuse("encrypt", "new.showdata", "-o", "out", "--force", code=REFUSED,
                    message="new.showdata: is encrypted already; give --no-verify to encrypt it again")
        self.run_tool("encrypt", "new.showdata", "-o", "out", "--no-verify")
        for command in (("info", "out"), ("dump", "out"), ("dump", "--offsets", "out"), ("check", "out"), ("print", "out"),
                        ("convert", "out", "--to", "1.1", "-o", "more"), ("up", "out", "-o", "more"),
                        ("down", "out", "-o", "more"), ("view", "out", "-o", "more"), ("diff", "out", "new.showdata"),
                        ("rescue", "out", "-o", "more")):
            done = self.run_tool(*command, code=BAD_INPUT)
            self.assertEqual(done.stderr, b"zuna-convert: out: was encrypted twice; use decrypt first [encrypted-twice]\n")
        self.run_tool("decrypt", "out", "-o", "more")
        self.assertEqual(self.read("more"), self.read("new.showdata"))
        self.assertEqual(self.plaintext("out"), self.read("new.showdata"))

    def test_reads_a_text_form_before_it_encrypts_it(self):
        self.run_tool("convert", "new.showdata", "-o", "text", "--to", "2.0")
        good = self.plaintext("text")
        self.run_tool("encrypt", "-", "-o", "good", stdin=good)
        self.assertEqual(self.read("good"), self.read("text"))
        self.write("edited", good.replace(b'"division"', b'"divison"', 1))
        done = self.run_tool("encrypt", "edited", "-o", "out", code=BAD_INPUT)
        self.assertRegex(done.stderr, rb"^zuna-convert: edited: .*divison.*line 9, column 15\); correct the text \[text-error\]\n$")
        self.assertNotIn("out", self.files())
        self.write("mine", self.read("text"))
        self.run_tool("encrypt", "edited", "-o", "mine", "--force", code=BAD_INPUT)
        self.assertEqual(self.read("mine"), self.read("text"))
        self.run_tool("encrypt", "edited", "-o", "mine", "--force", "--no-verify")
        self.assertIn(b"divison", self.run_tool("info", "mine", code=BAD_INPUT).stderr)
        self.refuse("encrypt", "-", "-o", "new", stdin=b"\xef\xbb\xbf" + good, code=BAD_INPUT,
                    message="standard input: a byte order mark stands before the text (at byte 0); save the text "
                            "without it")
        self.refuse("encrypt", "-", "-o", "new", stdin=b" \n" + good, code=BAD_INPUT,
                    message='standard input: blanks stand before the text (at byte 0); remove them, so that "{" comes '
                            "first")
        self.refuse("encrypt", "-", "-o", "new", code=BAD_INPUT,
                    stdin=b"\xef\xbb\xbf" + self.run_tool("dump", "new.showdata").stdout,
                    message="standard input: is plain text of version 1.2; use build first: zuna-convert build TEXT -o OUT")
        for log in (b'{"kind": "logdata", "fileVersion": "2.0", "showName": ""}', b'{"kind": "logdata"}'):
            done = self.run_tool("encrypt", "-", "-o", "log", stdin=log, code=BAD_INPUT)
            self.assertRegex(done.stderr, rb"^zuna-convert: standard input: missing key .* \(line 1, column \d+\); correct")

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
                         b'named "My Show" by its log, lossless\n')


if __name__ == "__main__":
    unittest.main()
