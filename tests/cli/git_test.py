"""That git shows what changed in shows, with the lines of docs/keeping-shows-in-git.md."""

import json
import os
import pathlib
import re
import subprocess
import unittest

from tool import BAD_INPUT, TOOL, WithLogs, legacy_show, legacy_song

PAGE = pathlib.Path(__file__).parents[2] / "docs/keeping-shows-in-git.md"


class GitTest(WithLogs):
    def setUp(self):
        super().setUp()
        self.repository = self.path("repository")
        os.mkdir(self.repository)
        self.git_environment = {
            **self.environment, "PATH": f"{os.path.dirname(TOOL)}:{os.environ['PATH']}", "HOME": self.folder,
            "GIT_CONFIG_NOSYSTEM": "1", "GIT_PAGER": "cat", "LC_ALL": "C",
            **{f"GIT_{who}_{what}": "tester@localhost" for who in ("AUTHOR", "COMMITTER") for what in ("NAME", "EMAIL")}}
        self.sh("git init -q")
        for block in re.findall(r"```sh\n(.*?)```", PAGE.read_text(), re.DOTALL):
            self.sh(block)

    def sh(self, command, code=0):
        """Runs a command of the shell in the repository; gives what it prints."""
        done = subprocess.run(["sh", "-c", command], cwd=self.repository, env=self.git_environment, text=True,
                              capture_output=True, check=False)
        self.assertEqual(done.returncode, code, (command, done.stdout, done.stderr))
        return done.stdout if code == 0 else done.stderr

    def put(self, name, content):
        os.makedirs(os.path.dirname(f"{self.repository}/{name}"), exist_ok=True)
        with open(f"{self.repository}/{name}", "wb") as file:
            file.write(content)

    def commit(self):
        self.sh("git add -A && git commit -qm all")

    def test_shows_what_changed(self):
        self.put("act one/a.showdata", self.read("new.showdata"))
        self.put("gone.logdata", self.read("new.log"))
        self.put("same.showdata", self.read("old.showdata"))
        self.commit()
        self.assertEqual(self.sh("git diff"), "")
        self.encrypt("fewer", legacy_show(legacy_song("2", "Two")))
        self.put("act one/a.showdata", self.read("fewer"))
        self.put("same.showdata", self.read("new.showdata"))
        self.put("new.showdata", self.read("new.showdata"))
        os.remove(f"{self.repository}/gone.logdata")
        self.sh("git add -A")
        expected = ('act one/a.showdata:\nsong 10 "Ten" is removed\ngone.logdata:\n  is deleted\nnew.showdata:\n  is new\n'
                    "same.showdata:\n")
        self.assertEqual(self.sh("git diff --cached"), expected)
        self.commit()
        self.assertEqual(self.sh("git show --ext-diff --format="), expected)
        self.assertEqual(self.sh("git log -p --ext-diff --format=%s -- same.showdata"),
                         "all\n\nsame.showdata:\nall\n\nsame.showdata:\n  is new\n")
        self.assertIn("Binary files", self.sh("git show --format="))

    def test_shows_edits(self):
        self.put("a.logdata", self.read("new.log"))
        self.commit()
        document = self.log_document()
        document["songLogs"][0]["attacca"] = 1
        self.encrypt("edited", json.dumps(document).encode())
        self.put("a.logdata", self.read("edited"))
        self.assertEqual(self.sh("git diff HEAD -- a.logdata"), "a.logdata:\nsong 10:\n  attacca is added: 1\n")

    def test_shows_the_new_path_of_a_renamed_file(self):
        self.put("opera.showdata", self.read("new.showdata"))
        self.commit()
        self.sh("git mv opera.showdata gala.showdata")
        self.assertEqual(self.sh("git diff --cached"), "opera.showdata -> gala.showdata:\n")

    def merge_block(self, theirs, ours):
        """Merges branches that give songs other names, as pairs of index and name; gives the commands of the page."""
        def change(song, name):
            document = json.loads(self.run_tool("dump", "new.showdata").stdout)
            document["songs"][song]["songName"] = name
            self.run_tool("build", "-", "-o", "changed", "--force", stdin=json.dumps(document).encode())
            self.put("opera.showdata", self.read("changed"))
            self.commit()

        self.put("opera.showdata", self.read("new.showdata"))
        self.commit()
        self.sh("git checkout -q -b other")
        change(*theirs)
        self.sh("git checkout -q -")
        change(*ours)
        self.sh("git merge -q other", code=1)
        return (block.replace("    ", "") for block in
                re.findall(r"((?:    (?:git|for|zuna-convert|rm) .*\n){3,})", PAGE.read_text())[-2:])

    def test_merges_text_forms(self):
        compare, merge = self.merge_block((0, "Deux"), (1, "Dix"))
        self.assertEqual(self.sh("git diff --ours"), "opera.showdata:\n  is in conflict\n")
        self.assertIn('name: "Two" becomes "Deux"', self.sh(compare.splitlines()[0]))
        self.sh(merge)
        self.assertEqual(self.sh("git diff HEAD"), 'opera.showdata:\nsong 2:\n  name: "Two" becomes "Deux"\n')
        self.assertEqual(self.sh("git status --porcelain"), "M  opera.showdata\n")

    def test_leaves_the_conflict_where_text_forms_have_one(self):
        _, merge = self.merge_block((0, "Deux"), (0, "Zwei"))
        self.assertIn("a merge has left a conflict here", self.sh(merge, code=BAD_INPUT))
        self.assertIn("UU opera.showdata\n", self.sh("git status --porcelain"))
        text = pathlib.Path(self.repository, "2.json")
        text.write_text(re.sub(r"<<<<<<<.*\n(?:.*\n)*?=======\n((?:.*\n)*?)>>>>>>>.*\n", r"\1", text.read_text()))
        self.sh(merge.splitlines()[-1])
        self.assertEqual(self.sh("git status --porcelain"), "M  opera.showdata\n")
        self.assertEqual(self.sh("git diff HEAD"), 'opera.showdata:\nsong 2:\n  name: "Zwei" becomes "Deux"\n')

    def test_stops_where_a_file_cannot_be_compared(self):
        self.put("a.logdata", self.read("new.log"))
        self.commit()
        self.put("a.logdata", b"not a log")
        said = self.sh("git diff", code=128)
        self.assertRegex(said, r"^zuna-convert: a\.logdata: .* \[.*\]\nfatal: external diff died, stopping at a.logdata\n$")


if __name__ == "__main__":
    unittest.main()
