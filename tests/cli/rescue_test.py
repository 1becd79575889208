"""rescue: what comes back of damaged files, what is said about it, and that nothing is written otherwise."""

import json
import os
import stat
import unittest

from tool import BAD_INPUT, DONE, PART_FAILED, REFUSED, USAGE, WRONG_KEY, ToolTest, legacy_show, legacy_song

HEADER = 72  # bytes of the envelope before the ciphertext


class RescueTest(ToolTest):
    def setUp(self):
        super().setUp()
        self.songs = [legacy_song(number, "Tune") for number in ("1", "2", "3")]
        self.encrypt("good", legacy_show(*self.songs))

    def damage(self, offset, name="bad", source="good"):
        """A copy with another byte at `offset`."""
        content = bytearray(self.read(source))
        content[offset] ^= 1
        return self.write(name, bytes(content))

    def cut(self, size, name="bad", source="good"):
        return self.write(name, self.read(source)[:size])

    def rescue(self, name="bad", code=PART_FAILED, *options):
        """What is said about it, line by line."""
        return self.run_tool("rescue", name, "-o", "out", *options, code=code).stderr.decode().splitlines()

    def test_an_undamaged_file_comes_back(self):
        self.assertEqual(self.rescue("good", DONE), ["zuna-convert: out: everything came back: 3 songs"])
        self.assertEqual(self.plaintext("out"), self.plaintext("good"))
        self.assertEqual(stat.S_IMODE(os.stat(self.path("out")).st_mode), 0o600)

    def test_an_undamaged_file_with_odd_events_comes_back(self):
        self.run_tool("up", "good", "-o", "new", "--show-name", "Opera")
        show = json.loads(self.run_tool("dump", "new").stdout)
        show["songs"][0]["voices"][0]["messages"] = [[480, 144, 60, 100], [0, 128, 60, 0]]
        self.run_tool("build", "-", "-o", "odd", stdin=json.dumps(show).encode())
        self.assertEqual(self.rescue("odd", DONE)[:2], ["zuna-convert: odd: song 1: 1 time goes back",
                                                        "zuna-convert: out: everything came back: 3 songs"])
        self.assertEqual(self.plaintext("out"), self.plaintext("odd"))

    def test_the_songs_before_a_cut_come_back(self):
        begin = 1 + len(self.songs[0])
        self.cut(HEADER + begin + 15)
        said = self.rescue()
        self.assertEqual(said[0], f"zuna-convert: bad: has {begin + 15} encrypted bytes, and its header states "
                                  f"{len(self.plaintext('good'))}")
        self.assertEqual(said[1], f"zuna-convert: bad: song 2 at byte {begin} is lost: its beginning cannot be read")
        self.assertEqual(said[2], "zuna-convert: bad: 15 bytes of its content cannot be read")
        self.assertEqual(said[3], "zuna-convert: bad: nothing shows whether 1 song is unchanged; look through what is "
                                  "saved before it is used")
        self.assertEqual(said[4:], ["zuna-convert: out: 1 of 3 songs are saved"])
        self.assertEqual(self.plaintext("out"), legacy_show(self.songs[0]))

    def test_the_songs_around_changed_bytes_come_back(self):
        second = HEADER + 1 + len(self.songs[0])
        for offset in (0, 8, 40, 200):  # length of the record, number, event or timeline
            if offset >= len(self.songs[1]):
                continue
            with self.subTest(offset):
                self.damage(second + offset)
                self.rescue("bad", PART_FAILED, "--force")
                saved = self.plaintext("out")
                self.assertIn(self.songs[0], saved)
                self.assertIn(self.songs[2], saved)

    def test_a_damaged_header_loses_nothing(self):
        for offset, field in ((0, "magic"), (8, "version"), (9, "suite"), (12, "reserved bytes"), (18, "length"),
                              (30, "key check")):
            with self.subTest(field):
                self.damage(offset)
                self.assertEqual(self.rescue("bad", DONE, "--force"), [
                    f"zuna-convert: bad: the header of its encryption is damaged ({field})",
                    "zuna-convert: out: everything came back: 3 songs"])
                self.assertEqual(self.read("out"), self.read("good"))

    def test_current_files_keep_their_version(self):
        self.run_tool("up", "good", "-o", "new", "--show-name", "Opera")
        self.cut(len(self.read("new")) - 20, "bad", "new")
        self.rescue()
        said = self.run_tool("info", "out").stdout.decode()
        self.assertTrue(said.startswith('out: show, version 1.2, "Opera", 2 songs'), said)

    def test_plain_files(self):
        self.write("plain", legacy_show(*self.songs)[:-5])
        self.assertEqual(self.rescue("plain")[0], "zuna-convert: plain: is not encrypted")
        self.assertIn(self.songs[1], self.plaintext("out"))

    def test_songs_that_come_back_in_part(self):
        for count, rest, told in ((1, b"", "1 of 1 song is saved in part"),
                                  (2, self.songs[1], "2 of 2 songs are saved, 1 of them in part")):
            with self.subTest(told):
                self.write("plain", bytes([count]) + self.songs[0][:-8] + rest)
                self.assertEqual(self.rescue("plain", PART_FAILED, "--force")[-1], f"zuna-convert: out: {told}")

    def test_a_long_number_is_cut_in_messages(self):
        self.write("plain", legacy_show(legacy_song("7" * 200, "Tune"), legacy_song("7" * 200, "Tune")))
        said = self.rescue("plain")
        self.assertIn(f": song {'7' * 40}... at byte ", "\n".join(said))
        self.assertLess(max(len(line) for line in said), 300)

    def test_a_second_encrypted_file(self):
        good = self.read("good")
        self.write("bad", good + good)
        lines = [f"zuna-convert: bad: not saved: the encrypted file that begins at byte {len(good)} of this one "
                 f"(tail -c +{len(good) + 1} takes it)", "zuna-convert: out: 3 of 3 songs are saved"]
        self.assertEqual(self.rescue(), lines)
        self.damage(len(good) - 1, "bad", "bad")
        said = self.rescue("bad", PART_FAILED, "--force")
        self.assertEqual(said[0], "zuna-convert: bad: was changed after it was encrypted")
        self.assertIn(lines[0], said)

    def test_an_encrypted_file_behind_other_bytes(self):
        self.write("bad", b"\r\n" + self.read("good"))
        self.refuse("rescue", "bad", "-o", "out", code=BAD_INPUT,
                    message="bad: holds no song that can be read before byte 2, where an encrypted file begins; take that "
                            "file with tail -c +3")

    def test_a_count_of_songs_that_cannot_be_right(self):
        self.encrypt("bad", b"\x5c" + legacy_show(*self.songs)[1:])
        self.assertEqual(self.rescue(), [
            "zuna-convert: bad: states 92 songs, and 3 were found",
            "zuna-convert: bad: nothing shows whether 3 songs are unchanged; look through what is saved before it is used",
            "zuna-convert: out: 3 songs are saved; how many there were is not known"])
        self.assertEqual(self.plaintext("out"), legacy_show(*self.songs))

    def test_zeros_are_no_show(self):
        for name, content in (("front", bytes(512) + self.read("good")[512:]), ("all", bytes(5000))):
            with self.subTest(name):
                self.write("bad", content)
                self.refuse("rescue", "bad", "-o", "out", code=BAD_INPUT,
                            message="bad: holds no song that can be read; give its key if it is encrypted with another "
                                    "one, or get another copy of the file")

    def test_a_text_of_another_version(self):
        self.run_tool("up", "good", "-o", "new", "--show-name", "Opera")
        text = self.run_tool("dump", "new").stdout
        self.write("text", text)
        self.rescue("text", DONE)
        self.assertEqual(self.plaintext("out"), self.plaintext("new"))
        self.write("text", text[:-40])
        self.rescue("text", PART_FAILED, "--force")
        said = self.run_tool("info", "out").stdout.decode()
        self.assertTrue(said.startswith('out: show, version 1.2, "Opera", 2 songs'), said)

    def test_a_text_of_which_nothing_comes_back(self):
        text = self.run_tool("dump", "good").stdout
        self.write("text", text.replace(b'"division": 480', b'"division": x'))
        self.refuse("rescue", "text", "-o", "out", code=BAD_INPUT,
                    message="text: songs[0].division: this is not JSON (syntax error) (line 8, column 19); correct the text")

    def test_json(self):
        self.damage(HEADER + 1 + len(self.songs[0]))
        done = self.run_tool("rescue", "bad", "-o", "out", "--json", "--quiet", code=PART_FAILED)
        self.assertEqual(done.stderr, b"")
        line, = done.stdout.splitlines()
        told = json.loads(line)
        self.assertEqual(list(told), ["schemaVersion", "path", "kind", "fileVersion", "complete", "changed", "saved",
                                      "statedSongs", "knownSongs", "songs", "missing", "unread", "remarks"])
        self.assertEqual((told["path"], told["kind"], told["fileVersion"]), ("bad", "showdata", "0.0"))
        self.assertEqual((told["complete"], told["changed"], told["saved"], told["statedSongs"]), (False, True, 3, 3))
        self.assertEqual(told["knownSongs"], 3)
        self.assertEqual(told["songs"][0], {"number": "1", "name": "Tune", "offset": 1, "end": 1 + len(self.songs[0]),
                                            "state": "whole", "remarks": [], "vouched": False})
        self.assertEqual(told["remarks"], ["was changed after it was encrypted"])

    def test_json_of_a_failure(self):
        self.cut(HEADER + 5)
        done = self.run_tool("rescue", "bad", "-o", "out", "--json", code=BAD_INPUT)
        told = json.loads(done.stdout)
        self.assertEqual((told["path"], told["exitCode"], told["error"]["code"]), ("bad", BAD_INPUT, "nothing-to-save"))
        self.assertFalse(os.path.exists(self.path("out")))

    def test_quiet(self):
        self.damage(HEADER + 1 + len(self.songs[0]))
        self.assertEqual(len(self.rescue("bad", PART_FAILED, "-q")), 2)
        self.assertEqual(self.rescue("bad", PART_FAILED, "--force", "-qq"), [])

    def test_standard_output(self):
        self.cut(HEADER + 1 + len(self.songs[0]))
        done = self.run_tool("rescue", "-", "-o", "-", stdin=self.read("bad"), code=PART_FAILED)
        self.write("out", done.stdout)
        self.assertEqual(self.plaintext("out"), legacy_show(self.songs[0]))
        self.assertIn(b"standard input: has ", done.stderr)

    def test_the_right_one_of_several_keys(self):
        other = self.write_key("other", "key = 00\niv = 00\n")
        self.damage(0)  # so that it looks like a plain file under the other key
        environment = dict(self.environment)
        self.environment.pop("ZUNA_KEY_FILE")
        self.run_tool("rescue", "bad", "-o", "out", "--key-file", other, "--key-file", environment["ZUNA_KEY_FILE"])
        self.environment = environment
        self.assertEqual(self.read("out"), self.read("good"))

    def test_a_wrong_key_does_not_make_a_plain_file(self):
        other = self.write_key("other", "key = 00\niv = 00\n")
        environment = dict(self.environment)
        self.environment.pop("ZUNA_KEY_FILE")
        sealed = self.read("good")
        for name, damaged in (("magic", b"x" + sealed[1:]), ("version", sealed[:8] + b"x" + sealed[9:])):
            with self.subTest(name):
                # The song at the end could be read without a key.
                self.write("bad", damaged + self.songs[0])
                self.run_tool("rescue", "bad", "-o", "out", "--force", "--key-file", other,
                              "--key-file", environment["ZUNA_KEY_FILE"], code=PART_FAILED)
                self.assertEqual(self.read("out"), sealed)
        self.environment = environment

    def test_refusals(self):
        self.damage(HEADER)
        self.write("old", "old")
        self.refuse("rescue", "bad", "-o", "old", code=REFUSED,
                    message="old: exists; give --force to replace it, or another output")
        self.refuse("rescue", "bad", "-o", "-", "--json", code=USAGE,
                    message="command line: --json and the output cannot both go to standard output; give -o a file")
        self.damage(56)
        self.refuse("rescue", "bad", "-o", "out", code=BAD_INPUT,
                    message="bad: holds no song that can be read; get another copy of the file")
        self.cut(50)
        self.refuse("rescue", "bad", "-o", "out", code=BAD_INPUT,
                    message="bad: ends inside the header (offset 50 of 72); get a complete copy of the file")
        other = self.write_key("other", "key = 00\niv = 00\n")
        self.damage(0)
        self.refuse("rescue", "bad", "-o", "out", "--key-file", other, code=BAD_INPUT,
                    message="bad: holds no song that can be read; give its key if it is encrypted with another one, or "
                            "get another copy of the file")
        self.refuse("rescue", "good", "-o", "out", "--key-file", other, code=WRONG_KEY,
                    message="good: the key or the IV is not the one that this was encrypted with, or its key check is "
                            "damaged; give the right key file")


if __name__ == "__main__":
    unittest.main()
