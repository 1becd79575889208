"""view of zuna-convert: the page is well formed, and holds what info counts."""

import html.parser
import json
import os
import stat
import unittest
import xml.etree.ElementTree

from tool import BAD_INPUT, IO, REFUSED, USAGE, WithLogs, legacy_show, legacy_song

# Elements without an end tag: those that have none, and those whose end is known from what follows (HTML, 13.1.2.4).
WITHOUT_END = {"meta", "th"}


class Page(html.parser.HTMLParser):
    """A page as data. Fails where an element ends that did not begin last."""

    def __init__(self, text):
        super().__init__()
        self.open = []
        self.classes = []
        self.texts = {}
        self.feed(text)
        self.close()
        if self.open:
            raise ValueError(f"not closed: {self.open}")

    def handle_starttag(self, tag, attrs):
        self.classes.append((tag, dict(attrs).get("class")))
        if tag not in WITHOUT_END:
            self.open.append(tag)

    def handle_startendtag(self, tag, attrs):
        self.classes.append((tag, dict(attrs).get("class")))

    def handle_endtag(self, tag):
        if self.open.pop() != tag:
            raise ValueError(f"</{tag}> inside of another element")

    def handle_data(self, data):
        if self.open:
            self.texts.setdefault(self.open[-1], []).append(data)

    def count(self, tag, css_class=None):
        return sum(1 for found in self.classes if found[0] == tag and (css_class is None or found[1] == css_class))


class ViewTest(WithLogs):
    def view(self, *arguments):
        self.run_tool("view", *arguments, "-o", "page.html", "--force")
        return Page(self.read("page.html").decode())

    def test_has_what_info_counts(self):
        for show in ("old.showdata", "new.showdata"):
            page = self.view(show)
            songs = json.loads(self.run_tool("info", show, "--json").stdout)["songs"]
            self.assertEqual(page.texts["h2"], [f"{song['songNumber']} {song['songName']}" for song in songs])
            self.assertEqual(page.count("section"), len(songs))
            self.assertEqual(page.count("g", "voice"), sum(song["voices"] for song in songs))
            self.assertEqual(page.count("rect", "bar"), sum(song["bars"] for song in songs))

    def test_has_the_edits_of_the_log(self):
        document = self.log_document()
        document["songLogs"][1]["vamps"] = [{"start": 0, "end": 480, "label": "</title><b>", "value": 3}]
        self.write_log("new.log", document)
        page = self.view("new.showdata", "new.log")
        self.assertEqual(page.count("g", "edit vamp"), 1)
        self.assertTrue(any(text.startswith('Vamp 3 "</title><b>" from ') for text in page.texts["title"]))
        self.assertEqual(page.count("b"), 0)

    def test_marks_what_changed(self):
        document = json.loads(self.run_tool("dump", "new.showdata").stdout)
        document["songs"][0]["songName"] = "Went"
        self.run_tool("build", "-", "-o", "now.showdata", stdin=json.dumps(document).encode())
        self.write_log("new.log", self.log_document())
        page = self.view("now.showdata", "new.log", "--diff", "new.showdata", "--diff", "new.log")
        self.assertEqual(page.count("details", "changes"), 1)
        self.assertTrue(any(text.startswith("name: ") and text.endswith(' becomes "Went"') for text in page.texts["li"]))
        self.assertEqual(page.count("svg", "compared"), len(document["songs"]))
        self.assertEqual(self.view("new.showdata", "--diff", "new.showdata").count("details", "changes"), 0)

    def test_marks_losses(self):
        document = self.log_document()
        document["songLogs"][1]["fermatas"] = [{"start": 0, "end": 480, "label": "", "value": 3}]
        self.write_log("new.log", document)
        page = self.view("new.showdata", "new.log", "--losses", "0.0")
        self.assertTrue(any(text.endswith("[fermata-dropped]") for text in page.texts["li"]))

    def test_draws_one_song(self):
        number = json.loads(self.run_tool("info", "new.showdata", "--json").stdout)["songs"][1]["songNumber"]
        self.run_tool("view", "new.showdata", "--song", number, "--svg", "-o", "song.svg")
        root = xml.etree.ElementTree.parse(self.path("song.svg")).getroot()
        self.assertEqual(root.tag, "{http://www.w3.org/2000/svg}svg")
        self.assertTrue(root.findtext("{http://www.w3.org/2000/svg}title").startswith(number))
        self.assertEqual(self.view("new.showdata", "--song", number).count("section"), 1)

    def test_refuses_what_it_cannot_compare(self):
        self.write_log("new.log", self.log_document())
        for arguments, message in (
                (["--svg"], "new.showdata: does not have just one song; name one of its songs, which are "),
                (["--song", "99"], "new.showdata: has no song 99; its songs are "),
                (["--diff", "new.log"], "new.log: is a log, and no log is drawn; give the log to draw after the show"),
                (["new.log", "--diff", "new.log", "--diff", "new.log"],
                 "new.log: is a second log; give --diff one show, one log or both"),
                (["--diff", "new.showdata", "--diff", "new.showdata"],
                 "new.showdata: is a second show; give --diff one show, one log or both"),
                (["--diff", "new.showdata", "--losses", "0.0"],
                 "command line: --diff and --losses contradict each other; give one of them"),
                (["--losses", "1.1"], "command line: --losses: only 0.0 loses anything of a current show; "),
                (["--losses", "x"], "command line: --losses: a version is MAJOR.MINOR, such as ")):
            done = self.run_tool("view", "new.showdata", *arguments, "-o", "page.html", code=None)
            self.assertNotEqual(done.returncode, 0)
            self.assertIn("zuna-convert: " + message, done.stderr.decode())
        self.refuse("view", "old.showdata", "--losses", "0.0", "-o", "page.html", code=BAD_INPUT,
                    message="old.showdata: is a show of version 0.0, not a current one; use up first")
        self.assertNotIn("page.html", self.files())

    def test_takes_standard_input_and_output(self):
        done = self.run_tool("view", "-", "-o", "-", stdin=self.read("new.showdata"))
        self.assertEqual(Page(done.stdout.decode()).texts["h1"], ["My Show"])

    def test_lets_nobody_else_read_the_page(self):
        self.view("new.showdata")
        self.assertEqual(stat.S_IMODE(os.stat(self.path("page.html")).st_mode), 0o600)

    def test_refuses_to_replace(self):
        self.write("page.html", b"old")
        self.refuse("view", "new.showdata", "-o", "page.html", code=REFUSED,
                    message="page.html: exists; give --force to replace it, or another output")
        self.assertEqual(self.read("page.html"), b"old")

    def test_refuses_what_is_no_show_with_its_log(self):
        self.encrypt("other.showdata", legacy_show(legacy_song("77", "Other")))
        self.refuse("view", "new.log", "-o", "page.html", code=BAD_INPUT,
                    message="new.log: is a log, and this command takes shows; give a show")
        self.refuse("view", "new.showdata", "old.showdata", "-o", "page.html", code=BAD_INPUT,
                    message="old.showdata: is a show of version 0.0, no log; give the log of the show")
        self.refuse("view", "other.showdata", "new.log", "-o", "page.html", code=REFUSED,
                    message="new.log: has no song of other.showdata with the same number and name; give the log of the show")
        self.refuse("view", "none.showdata", "-o", "page.html", code=IO,
                    message="none.showdata: cannot be opened: No such file or directory; check the path")
        self.run_tool("view", "new.showdata", code=USAGE)
        self.assertNotIn("page.html", self.files())


if __name__ == "__main__":
    unittest.main()
