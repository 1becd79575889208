"""The page of view in a real browser: what it shows, its script, paper, light and dark. It asks for nothing outside.

    ZUNA_CONVERT=build/release/cli/zuna-convert ZUNA_PICTURES=build/pictures python3 tests/view/browser_test.py
"""

import base64
import json
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import Select

ROOT = pathlib.Path(__file__).parents[2]
TOOL = os.environ["ZUNA_CONVERT"]
PICTURES = pathlib.Path(os.environ["ZUNA_PICTURES"])
SAMPLES = ROOT / "examples"
MUSIC = sorted(pathlib.Path("/usr/share/games/openttd/baseset/openmsx").glob("*.mid"))


def browser():
    options = Options()
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--window-size=1280,1000"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


class BrowserTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        PICTURES.mkdir(parents=True, exist_ok=True)
        cls.folder = tempfile.TemporaryDirectory(prefix="zuna-view-")
        cls.addClassCleanup(cls.folder.cleanup)
        cls.browser = browser()
        cls.addClassCleanup(cls.browser.quit)

    def run_tool(self, *arguments):
        arguments = [TOOL, *map(str, arguments), "--key-file", str(SAMPLES / "three-tunes.key"), "-q"]
        return subprocess.run(arguments, check=True, stdout=subprocess.PIPE, timeout=120).stdout

    def show(self, *inputs):
        """Opens the page of a show, and returns what info tells about it."""
        page = pathlib.Path(self.folder.name) / "page.html"
        self.run_tool("view", *inputs, "-o", page, "--force")
        for kind in ("browser", "performance"):
            self.browser.get_log(kind)
        self.browser.get(page.as_uri())
        return json.loads(self.run_tool("info", inputs[0], "--json"))["songs"]

    def all(self, selector):
        return self.browser.find_elements(By.CSS_SELECTOR, selector)

    def picture(self, name):
        self.browser.save_screenshot(str(PICTURES / f"{name}.png"))

    def expect_no_error_and_no_request(self):
        self.assertEqual(self.browser.get_log("browser"), [])
        messages = [json.loads(entry["message"])["message"] for entry in self.browser.get_log("performance")]
        requests = [message["params"]["request"]["url"] for message in messages
                    if message["method"] == "Network.requestWillBeSent"]
        self.assertEqual([url for url in requests if not url.startswith("file:")], [])
        self.assertLessEqual(len(requests), 1)

    def expect_counts(self, songs):
        self.assertEqual([heading.text for heading in self.all("h2")],
                         [f"{song['songNumber']} {song['songName']}".strip() for song in songs])
        self.assertEqual(len(self.all("g.voice")), sum(song["voices"] for song in songs))
        self.assertEqual(len(self.all("rect.bar")), sum(song["bars"] for song in songs))

    def expect_no_overlap(self, selector):
        """Texts of one row do not lie over each other."""
        boxes = self.browser.execute_script(
            "return [...document.querySelectorAll(arguments[0])].map(text => { const box = text.getBoundingClientRect();"
            " return [Math.round(box.top + scrollY), box.left, box.right]; });", selector)
        rows = {}
        for top, left, right in boxes:
            rows.setdefault(top, []).append((left, right))
        for row in rows.values():
            row.sort()
            for (_, end), (begin, _) in zip(row, row[1:]):
                self.assertLessEqual(end, begin + 1)

    def test_shows_the_samples(self):
        songs = self.show(SAMPLES / "three-tunes-1.2.showdata", SAMPLES / "three-tunes-1.2.logdata")
        self.expect_counts(songs)
        log = self.run_tool("print", SAMPLES / "three-tunes-1.2.logdata").decode()
        edits = re.findall(r"^\t\t(\w+)\(", log, re.MULTILINE)
        self.assertEqual(len(self.all("g.edit > g")), len(edits))
        self.expect_no_overlap("svg > text")
        self.picture("samples")
        self.expect_no_error_and_no_request()

    def changed_samples(self):
        """A show and a log that differ from the samples: a tempo, a page, an octave of a voice, and two edits."""
        documents = [json.loads(self.run_tool("dump", SAMPLES / f"three-tunes-1.2.{kind}")) for kind in ("showdata", "logdata")]
        song, edits = documents[0]["songs"][0], documents[1]["songLogs"][0]
        song["timeline"]["tempos"].append({"time": 8160, "microseconds": 500000})
        song["timeline"]["pageNumbers"][1]["time"] = 8160
        for message in song["voices"][0]["messages"]:
            if message[1] in (129, 145) and message[0] < 4320:
                message[2] += 12
        edits["vamps"].append({"start": 2400, "end": 4320, "label": "", "value": 3})
        edits["repeats"] = []
        paths = []
        for document in documents:
            path = pathlib.Path(self.folder.name) / f"changed.{document['kind']}"
            text = pathlib.Path(self.folder.name) / "changed.json"
            text.write_text(json.dumps(document))
            self.run_tool("build", text, "-o", path, "--force")
            paths.append(path)
        return paths

    def colours(self, selector, name):
        return {part.value_of_css_property(name) for part in self.all(selector)}

    def test_shows_what_changed_in_two_colours(self):
        earlier = [argument for kind in ("showdata", "logdata") for argument in ("--diff", SAMPLES / f"three-tunes-1.2.{kind}")]
        self.show(*self.changed_samples(), *earlier)
        self.assertEqual([summary.text for summary in self.all(".changes summary")], ["5 changes"])
        first = self.all("section")[0]
        for css_class, colour in (("here", "rgb(0, 100, 160)"), ("there", "rgb(192, 78, 0)")):
            self.assertEqual(self.colours(f".voice path.{css_class}", "stroke"), {colour})
            self.assertEqual(self.colours(f"text.{css_class}", "fill"), {colour})
            self.assertEqual(len(first.find_elements(By.CSS_SELECTOR, f".voice path.{css_class}")), 1)
        self.assertEqual(self.colours(".edit.there path", "stroke"), {"rgb(192, 78, 0)"})
        self.assertEqual(self.colours(".edit .here path", "stroke"), {"rgb(0, 100, 160)"})
        self.expect_no_overlap("svg > text")
        self.picture("changes")
        self.expect_no_error_and_no_request()

    def test_shows_what_the_legacy_format_loses(self):
        show, log = SAMPLES / "three-tunes-1.2.showdata", pathlib.Path(self.folder.name) / "fermata.logdata"
        document = json.loads(self.run_tool("dump", SAMPLES / "three-tunes-1.2.logdata"))
        document["songLogs"][0]["fermatas"] = [{"start": 13920, "end": 14400, "label": "", "value": 2}]
        text = pathlib.Path(self.folder.name) / "fermata.json"
        text.write_text(json.dumps(document))
        self.run_tool("build", text, "-o", log, "--force")
        self.show(show, log, "--losses", "0.0")
        self.assertEqual([edit.find_element(By.CSS_SELECTOR, "title").get_attribute("textContent").split()[0]
                          for edit in self.all(".edit > .here")], ["Fermata"])
        self.picture("losses")
        self.expect_no_error_and_no_request()

    def test_shows_the_picture_of_one_song(self):
        picture = pathlib.Path(self.folder.name) / "song.svg"
        self.run_tool("view", SAMPLES / "three-tunes-1.2.showdata", "--song", "2a", "--svg", "-o", picture, "--force")
        self.browser.get_log("browser")
        self.browser.get(picture.as_uri())
        self.assertEqual(self.browser.title, "2a Scarborough Fair")
        self.assertEqual(len(self.all("g.voice")), 3)
        self.assertEqual(self.browser.get_log("browser"), [])
        self.picture("song")

    def test_chooses_a_song_and_zooms(self):
        songs = self.show(SAMPLES / "three-tunes-1.2.showdata")
        Select(self.all("#choice")[0]).select_by_index(2)
        self.assertEqual([section.is_displayed() for section in self.all("section")], [False, True, False])
        width = self.all("svg")[1].size["width"]
        self.browser.execute_script("const zoom = document.getElementById('zoom'); zoom.value = 2;"
                                    " zoom.dispatchEvent(new Event('input'));")
        self.assertAlmostEqual(self.all("svg")[1].size["width"], 2 * width, delta=2)
        self.browser.execute_script("document.querySelectorAll('.scroll')[1].scrollLeft = 400;")
        self.browser.execute_async_script("requestAnimationFrame(() => requestAnimationFrame(arguments[0]));")
        self.assertEqual(self.all(".names")[1].get_attribute("transform"), "translate(200 0)")
        self.picture("zoomed")
        self.all("nav a")[0].click()
        self.assertTrue(all(section.is_displayed() for section in self.all("section")))
        self.assertEqual(len(songs), 3)
        self.expect_no_error_and_no_request()

    def test_is_dark_where_the_system_is(self):
        colours = []
        for scheme in ("light", "dark"):
            self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                         {"features": [{"name": "prefers-color-scheme", "value": scheme}]})
            self.show(SAMPLES / "three-tunes-1.2.showdata", SAMPLES / "three-tunes-1.2.logdata")
            colours.append(self.all("body")[0].value_of_css_property("background-color"))
            self.picture(scheme)
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": []})
        self.assertEqual(colours, ["rgba(255, 255, 255, 1)", "rgba(22, 24, 28, 1)"])

    def test_prints_a_song_a_page(self):
        self.show(SAMPLES / "three-tunes-1.2.showdata", SAMPLES / "three-tunes-1.2.logdata")
        printed = self.browser.execute_cdp_cmd("Page.printToPDF", {"landscape": True})
        pdf = base64.b64decode(printed["data"])
        (PICTURES / "samples.pdf").write_bytes(pdf)
        self.assertEqual(len(re.findall(rb"/Type\s*/Page\b", pdf)), 4)  # the head, and three songs

    def test_can_be_read_without_its_script(self):
        self.browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": True})
        self.addCleanup(self.browser.execute_cdp_cmd, "Emulation.setScriptExecutionDisabled", {"value": False})
        self.show(SAMPLES / "three-tunes-1.2.showdata")
        self.assertEqual(len(self.all("#choice")), 0)
        self.assertTrue(all(picture.is_displayed() for picture in self.all("svg")))

    def test_can_be_used_with_the_keyboard(self):
        self.show(SAMPLES / "three-tunes-1.2.showdata")
        reached = self.browser.execute_script(
            "return [...document.querySelectorAll('a, select, input, summary, .scroll')].every(part => part.tabIndex === 0);")
        self.assertTrue(reached)
        unnamed = self.browser.execute_script(
            "return [...document.querySelectorAll('svg, nav, .scroll')].filter(part => !part.getAttribute('aria-label')).length;")
        self.assertEqual(unnamed, 0)

    def test_shows_31_songs(self):
        self.assertEqual(len(MUSIC), 31)
        show = pathlib.Path(self.folder.name) / "music.showdata"
        self.run_tool("midi", "import", *MUSIC, "-o", show)
        songs = self.show(show)
        self.assertEqual(len(songs), 31)
        self.expect_counts(songs)
        self.expect_no_overlap("svg > text")
        self.picture("music")
        self.expect_no_error_and_no_request()


if __name__ == "__main__":
    unittest.main()
