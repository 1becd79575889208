"""dump, build and edit."""

import json
import os
import pathlib
import shutil
import signal
import stat
import subprocess
import unittest

from terminal import open_terminal
from tool import BAD_INPUT, DONE, IO, NEGATIVE, REFUSED, TOOL, USAGE, ToolTest

EXAMPLES = pathlib.Path(__file__).parents[2] / "examples"
KINDS = ("showdata", "logdata")


class TextFormTest(ToolTest):
    def setUp(self):
        super().setUp()
        self.environment["ZUNA_KEY_FILE"] = self.write_key("key", (EXAMPLES / "three-tunes.key").read_text())
        for version in ("0.0", "1.2"):
            for kind in KINDS:
                self.write(f"{version}.{kind}", (EXAMPLES / f"three-tunes-{version}.{kind}").read_bytes())

    def dump(self, name):
        return self.run_tool("dump", name).stdout

    def editor(self, script):
        """Makes `script` the editor: it runs with the path of the text as $1."""
        path = self.write("editor", "#!/bin/sh\n" + script)
        os.chmod(self.path(path), 0o700)
        self.environment["EDITOR"] = self.path(path)
        self.environment["TMPDIR"] = self.path("texts")
        os.makedirs(self.path("texts"), exist_ok=True)

    def kept(self):
        return [name for name in self.files() if name.startswith("texts/")]


class Dump(TextFormTest):
    def test_build_turns_it_back(self):
        for version in ("0.0", "1.2"):
            for kind in KINDS:
                name = f"{version}.{kind}"
                self.run_tool("dump", name, "-o", "text")
                self.assertEqual(stat.S_IMODE(os.stat(self.path("text")).st_mode), 0o600)
                self.assertEqual(json.loads(self.read("text"))["fileVersion"], version)
                self.run_tool("build", "text", "-o", "again", "--force")
                self.assertEqual(self.read("again"), self.read(name))
                os.remove(self.path("text"))

    def test_takes_every_version_encrypted_or_plain(self):
        for version in ("1.0", "1.1", "2.0"):
            self.run_tool("convert", "1.2.showdata", "-o", version, "--to", version)
            text = self.dump(version)
            self.assertEqual(json.loads(text)["fileVersion"], version)
            self.run_tool("decrypt", version, "-o", "plain", "--force")
            self.assertEqual(self.dump("plain"), text)
            self.assertEqual(self.run_tool("build", "-", "-o", "-", stdin=text).stdout, self.read(version))

    def test_says_what_the_text_leaves_out(self):
        self.run_tool("decrypt", "0.0.showdata", "-o", "plain")
        self.write("longer", self.read("plain") + b"abc")
        done = self.run_tool("dump", "longer", "-o", "text")
        self.assertEqual(done.stderr.decode(), "zuna-convert: longer: the text leaves out 3 bytes after the last song\n")

    def test_refuses_to_replace(self):
        self.write("text", "old")
        self.refuse("dump", "1.2.showdata", "-o", "text", code=REFUSED,
                    message="text: exists; give --force to replace it, or another output")


    def test_is_named_where_its_text_is_given(self):
        for version in ("0.0", "1.2"):
            for kind in KINDS:
                self.run_tool("dump", f"{version}.{kind}", "-o", "text")
                message = f"text: is plain text of version {version}; use build first: zuna-convert build TEXT -o OUT"
                for command in ("info", "check", "list", "print"):
                    self.refuse(command, "text", code=BAD_INPUT, message=message)
                self.refuse("encrypt", "text", "-o", "out", code=BAD_INPUT, message=message)
                os.remove(self.path("text"))
        self.run_tool("convert", "1.2.showdata", "-o", "2.0", "--to", "2.0")
        self.run_tool("dump", "2.0", "-o", "text")
        self.assertIn(b"not encrypted", self.run_tool("info", "text").stdout)
        self.run_tool("encrypt", "text", "-o", "out")


class Build(TextFormTest):
    def test_gives_another_version(self):
        text = self.dump("1.2.logdata")
        self.run_tool("build", "-", "-o", "out", "--to", "2.0", stdin=text)
        self.assertEqual(json.loads(self.dump("out")), {**json.loads(text), "fileVersion": "2.0"})

    def test_does_not_take_a_legacy_text_up(self):
        self.write("text", self.dump("0.0.logdata"))
        self.refuse("build", "text", "-o", "out", "--to", "1.2", code=BAD_INPUT,
                    message="text: is a log of version 0.0, not a current one; use up first")

    def test_names_the_place_of_an_error(self):
        self.write("text", self.dump("0.0.showdata").replace(b'"bpm"', b'"bmp"', 1))
        lines = self.read("text").decode().splitlines()
        line = next(i for i, text in enumerate(lines) if '"bmp"' in text)
        column = lines[line].index('"bmp"') + len('"bmp"')
        self.refuse("build", "text", "-o", "out", code=BAD_INPUT,
                    message='text: songs[0].timeline.tempos[0]: unknown key "bmp"; did you mean "bpm"? '
                            f"(line {line + 1}, column {column}); correct the text")

    def test_tells_where_the_name_is_that_of_the_other_kind(self):
        for kind, other, words in (("showdata", "LOGDATA", "is a show, and has the name of a log"),
                                   ("logdata", "showdata", "is a log, and has the name of a show")):
            done = self.run_tool("build", "-", "-o", f"out.{other}", stdin=self.dump(f"1.2.{kind}"))
            self.assertEqual(done.stderr.decode(), f"zuna-convert: out.{other}: {words}\n")

    def test_refuses_what_is_encrypted(self):
        self.refuse("build", "1.2.showdata", "-o", "out", code=REFUSED,
                    message="1.2.showdata: is encrypted already; give the text that dump writes")


class Edit(TextFormTest):
    def test_writes_the_file_again_and_keeps_the_old_one(self):
        self.editor("sed -i s/Greensleeves/Changed/ \"$1\"\n")
        for name in ("0.0.showdata", "1.2.showdata", "0.0.logdata", "1.2.logdata"):
            before, text = self.read(name), self.dump(name)
            os.chmod(self.path(name), 0o640)
            done = self.run_tool("edit", name)
            self.assertEqual(done.stderr.decode(), f"zuna-convert: {name}: is changed; the old file is {name}.~1~\n")
            self.assertEqual(self.read(f"{name}.~1~"), before)
            self.assertEqual(self.dump(name), text.replace(b"Greensleeves", b"Changed"))
            self.assertEqual(stat.S_IMODE(os.stat(self.path(name)).st_mode), 0o640)
        self.assertEqual(self.kept(), [])

    def test_says_that_the_music_has_errors(self):
        self.editor("sed -i 's/\"secondsPerTick\": [0-9.e-]*/\"secondsPerTick\": 0/' \"$1\"\n")
        errors = b"zuna-convert: {}: has errors; zuna-convert check lists them\n"
        done = self.run_tool("edit", "0.0.showdata")
        self.assertIn(errors.replace(b"{}", b"0.0.showdata"), done.stderr)
        self.run_tool("check", "0.0.showdata", code=NEGATIVE)
        done = self.run_tool("build", "-", "-o", "out", stdin=self.dump("0.0.showdata"))
        self.assertIn(errors.replace(b"{}", b"out"), done.stderr)

    def test_says_that_there_are_warnings(self):
        self.editor("sed -i 's/\"microseconds\": [0-9]*/\"microseconds\": 30000000/' \"$1\"\n")
        done = self.run_tool("edit", "1.2.showdata")
        self.assertIn(b"zuna-convert: 1.2.showdata: has warnings; zuna-convert check lists them\n", done.stderr)

    def test_tells_where_the_text_is_before_a_signal_ends_it(self):
        for name in ("TERM", "HUP"):
            self.editor(f"sed -i s/Greensleeves/Changed/ \"$1\"\nkill -{name} $(cut -d' ' -f4 /proc/$PPID/stat)\nsleep 1\n")
            before = self.read("1.2.showdata")
            done = self.run_tool("edit", "1.2.showdata", code=None)
            self.assertEqual(done.returncode, -getattr(signal, "SIG" + name))
            kept, = self.kept()
            self.assertEqual(done.stderr.decode(), f"zuna-convert: {self.path(kept)}: has the edited text, of which "
                             "zuna-convert build makes a file\n")
            self.assertIn(b"Changed", self.read(kept))
            self.assertEqual(self.read("1.2.showdata"), before)
            shutil.rmtree(self.path("texts"))

    def test_says_that_there_are_other_songs(self):
        self.editor("python3 - \"$1\" <<'end'\n"
                    "import json, sys\n"
                    "document = json.load(open(sys.argv[1]))\n"
                    "del document['songs'][0]\n"
                    "json.dump(document, open(sys.argv[1], 'w'))\n"
                    "end\n")
        for name in ("0.0.showdata", "1.2.showdata"):
            done = self.run_tool("edit", name)
            self.assertIn(f"zuna-convert: {name}: has 2 songs now, and had 3\n", done.stderr.decode())
        done = self.run_tool("edit", "1.2.showdata")
        self.assertIn("1.2.showdata: has 1 song now, and had 2\n", done.stderr.decode())

    def test_takes_an_editor_with_arguments(self):
        self.environment["VISUAL"] = "sed -i s/Greensleeves/Changed/"
        self.run_tool("edit", "1.2.showdata")
        self.assertIn(b"Changed", self.dump("1.2.showdata"))

    def test_follows_a_link(self):
        os.mkdir(self.path("there"))
        os.rename(self.path("1.2.showdata"), self.path("there/show"))
        os.symlink("there/show", self.path("link"))
        self.editor("sed -i s/Greensleeves/Changed/ \"$1\"\n")
        self.run_tool("edit", "link")
        self.assertTrue(os.path.islink(self.path("link")))
        self.assertIn(b"Changed", self.dump("there/show"))

    def test_leaves_the_file_as_it_was(self):
        self.editor("true\n")
        before = self.files()
        done = self.run_tool("edit", "1.2.showdata")
        self.assertEqual(done.stderr.decode(), "zuna-convert: 1.2.showdata: is left as it was\n")
        self.assertEqual(self.files(), before)

    def test_leaves_a_file_that_would_hold_the_same(self):
        self.editor("sed -i 's/^ *//' \"$1\"\n")
        before = self.files()
        for name in ("0.0.showdata", "1.2.showdata"):
            done = self.run_tool("edit", name)
            self.assertEqual(done.stderr.decode(), f"zuna-convert: {name}: holds the same as before, and is left as it was\n")
        self.assertEqual(self.files(), before)
        self.assertEqual(self.kept(), [])

    def test_lets_nobody_else_read_the_text(self):
        self.editor("stat -c %a \"$1\" \"$(dirname \"$1\")\" >modes\n")
        self.run_tool("edit", "1.2.showdata")
        self.assertEqual(self.read("modes"), b"600\n700\n")

    def test_keeps_a_text_that_is_not_correct(self):
        before = self.read("1.2.showdata")
        self.editor("sed -i 's/\"songName\"/\"songNam\"/' \"$1\"\n")
        done = self.run_tool("edit", "1.2.showdata", code=BAD_INPUT)
        kept, = self.kept()
        self.assertRegex(done.stderr.decode(), 'unknown key "songNam"; did you mean "songName"\\? '
                         r"\(line 8, column \d+\); correct the text \[text-error\]\n")
        self.assertIn(f"zuna-convert: {self.path(kept)}: has the edited text, of which zuna-convert build makes a file\n",
                      done.stderr.decode())
        self.assertEqual(self.read("1.2.showdata"), before)
        self.assertIn(b'"songNam"', self.read(kept))

    def test_takes_a_text_with_a_byte_order_mark(self):
        self.run_tool("convert", "1.2.showdata", "-o", "2.0.showdata", "--to", "2.0")
        for name in ("0.0.logdata", "1.2.showdata", "2.0.showdata"):
            self.write("text", b"\xef\xbb\xbf" + self.run_tool("dump", name).stdout)
            self.run_tool("build", "text", "-o", "built", "--force")
            self.assertEqual(self.dump("built"), self.dump(name))
            self.editor("sed -i '1s/^/\\xef\\xbb\\xbf/; s/Greensleeves/Marked/' \"$1\"\n")
            self.run_tool("edit", name)
            self.assertIn(b"Marked", self.dump(name))
        self.editor("sed -i '1s/^/\\xef\\xbb\\xbf/; s/\"1.2\"/\"1.1\"/' \"$1\"\n")
        done = self.run_tool("edit", "1.2.showdata", code=BAD_INPUT)
        self.assertIn("is a show of version 1.2, and the text states \"showdata\" and \"1.1\"", done.stderr.decode())

    def test_keeps_kind_and_version(self):
        for name, change, stated in (("1.2.showdata", 's/"1.2"/"1.1"/', '"showdata" and "1.1"'),
                                     ("0.0.showdata", 's/"0.0"/"1.2"/', '"showdata" and "1.2"'),
                                     ("1.2.logdata", 's/"1.2"/"0.0"/', '"logdata" and "0.0"'),
                                     ("1.2.logdata", 's/"logdata"/"showdata"/', '"showdata" and "1.2"')):
            self.editor(f"sed -i '{change}' \"$1\"\n")
            version, kind = name[:3], name[4:-4]
            done = self.run_tool("edit", name, code=BAD_INPUT)
            self.assertIn(f"{name}: is a {kind} of version {version}, and the text states {stated}; "
                          'leave "kind" and "fileVersion" as they are [text-error]', done.stderr.decode())

    def test_does_not_replace_what_changed_meanwhile(self):
        self.editor(f"cp '{self.path('0.0.showdata')}' '{self.path('1.2.showdata')}'; sed -i s/Greensleeves/Changed/ \"$1\"\n")
        done = self.run_tool("edit", "1.2.showdata", code=REFUSED)
        self.assertIn("1.2.showdata: was changed by another program meanwhile, and is not replaced; "
                      "compare both, and make a file of the kept text with build [changed-meanwhile]",
                      done.stderr.decode())
        self.assertEqual(self.read("1.2.showdata"), self.read("0.0.showdata"))
        kept, = self.kept()
        self.run_tool("build", kept, "-o", "out")
        self.assertIn(b"Changed", self.dump("out"))
        self.assertEqual([name for name in self.files() if "~" in name], [])

    def edit_on_terminal(self, answer, code):
        """Runs edit where the user answers questions so; gives what it says."""
        ours, theirs = open_terminal(80)
        self.addCleanup(os.close, ours)
        os.write(ours, answer)
        done = subprocess.run([TOOL, "edit", "1.2.showdata"], stdin=theirs, stderr=subprocess.PIPE, cwd=self.folder,
                              env=self.environment, timeout=60, check=False)
        os.close(theirs)
        self.assertEqual(done.returncode, code, done.stderr)
        return done.stderr.decode()

    def test_offers_to_edit_again(self):
        self.editor("if [ -e seen ]; then sed -i 's/\"songNam\"/\"songName\"/; s/Greensleeves/Changed/' \"$1\"\n"
                    "else sed -i 's/\"songName\"/\"songNam\"/' \"$1\"; touch seen; fi\n")
        said = self.edit_on_terminal(b"y\n", DONE)
        self.assertIn('unknown key "songNam"', said)
        self.assertIn("zuna-convert: edit the text again? [Y/n] ", said)
        self.assertIn(b"Changed", self.dump("1.2.showdata"))
        self.assertEqual(self.kept(), [])

    def test_keeps_the_text_for_who_does_not_want_to_edit_again(self):
        self.editor("sed -i 's/\"songName\"/\"songNam\"/' \"$1\"\n")
        before = self.read("1.2.showdata")
        said = self.edit_on_terminal(b"n\n", BAD_INPUT)
        self.assertIn("1.2.showdata: is left as it was; correct the text, and give it to build [text-error]", said)
        self.assertEqual(self.read("1.2.showdata"), before)
        self.assertEqual(len(self.kept()), 1)

    def test_tells_that_the_editor_failed(self):
        before = self.files()
        self.environment["EDITOR"] = "false"
        self.refuse("edit", "1.2.showdata", code=IO,
                    message="false: ended with exit code 1; name another editor with VISUAL or EDITOR")
        self.environment["EDITOR"] = "kill -9 $$;"
        self.refuse("edit", "1.2.showdata", code=IO,
                    message="kill -9 $$;: could not be run to its end; name another editor with VISUAL or EDITOR")
        self.assertEqual(self.files(), before)

    def test_keeps_what_an_editor_that_fails_has_written(self):
        before = self.read("1.2.showdata")
        self.editor("sed -i s/Greensleeves/Changed/ \"$1\"; exit 1\n")
        done = self.run_tool("edit", "1.2.showdata", code=IO)
        kept, = self.kept()
        self.assertIn(f"zuna-convert: {self.path(kept)}: has the edited text, ", done.stderr.decode())
        self.assertIn(b"Changed", self.read(kept))
        self.assertEqual(self.read("1.2.showdata"), before)

    def test_removes_a_text_that_became_what_it_was(self):
        self.editor("if [ -e seen ]; then sed -i 's/\"songNam\"/\"songName\"/' \"$1\"\n"
                    "else sed -i 's/\"songName\"/\"songNam\"/' \"$1\"; touch seen; fi\n")
        self.assertIn("1.2.showdata: is left as it was", self.edit_on_terminal(b"y\n", DONE))
        self.assertEqual(self.kept(), [])

    def test_says_what_the_edited_file_has_lost(self):
        self.run_tool("decrypt", "0.0.showdata", "-o", "plain")
        self.write("longer", self.read("plain") + b"abc")
        self.run_tool("encrypt", "longer", "-o", "long.showdata")
        self.editor("true\n")
        self.assertNotIn("lost", self.run_tool("edit", "long.showdata").stderr.decode())
        self.editor("sed -i s/Greensleeves/Changed/ \"$1\"\n")
        self.assertIn("long.showdata: has lost 3 bytes after the last song, which the text does not have\n",
                      self.run_tool("edit", "long.showdata").stderr.decode())

    def test_needs_a_folder_for_the_text(self):
        self.environment["TMPDIR"] = self.path("none")
        done = self.run_tool("edit", "1.2.showdata", code=IO)
        self.assertIn("/none: no folder can be created there: No such file or directory; "
                      "check that TMPDIR names a folder to write in [not-found]", done.stderr.decode())

    def test_refuses_standard_input(self):
        self.refuse("edit", "-", code=USAGE, message="command line: edit rewrites a file in its place; give a file")


if __name__ == "__main__":
    unittest.main()
