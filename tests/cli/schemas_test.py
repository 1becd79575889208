"""The schemas in schemas/: outputs of every kind follow them, and what differs from such an output does not."""

import copy
import json
import os
import pathlib
import re
import unittest

import jsonschema

import schemas
from folder import FolderTest
from tool import BAD_INPUT, IO, NEGATIVE, NOTHING_MATCHED, PART_FAILED, legacy_log, legacy_show, legacy_song, legacy_song_log

DOCS = pathlib.Path(__file__).parents[2] / "docs"
NAMES = sorted(path.name.removesuffix(schemas.ENDING) for path in schemas.FOLDER.iterdir())
SHARED = {"common", "text-common"}  # what others refer to
PAGES = {"text-legacy": "text-form.md", "text": "format-2.md", "": "scripts.md"}  # by the beginning of a name

# The keys that an output may lack by itself.
OPTIONAL = {"dryRun", "pathBytes", "fileBytes", "beforeBytes", "afterBytes", "companionBytes", "outputBytes", "backupBytes"}


def parts_of(value):
    """Every object and array in a value, itself too."""
    if isinstance(value, (dict, list)):
        yield value
        for part in value.values() if isinstance(value, dict) else value:
            yield from parts_of(part)


def places_of(part):
    return list(part) if isinstance(part, dict) else range(len(part))


def keys_of(schema):
    """Every key that a schema allows."""
    return {key for part in parts_of(schema) if isinstance(part, dict) for key in part.get("properties", ())}


def changes_of(part):
    """(what is changed, change) of each way to spoil an object or an array. The change is undone by the caller."""
    for place in places_of(part):
        for wrong in ({}, -1e40):
            if not isinstance(part[place], dict) or wrong != {}:
                yield f"{place} becomes {wrong}", lambda at=place, value=wrong: part.__setitem__(at, value)
    if isinstance(part, dict):
        yield "one more key", lambda: part.__setitem__("unknown", None)
        for key in part.keys() - OPTIONAL:
            yield f"no {key}", lambda at=key: part.__delitem__(at)
    elif part and all(isinstance(element, int) for element in part):  # a row, whose length is fixed
        yield "one number more", lambda: part.append(0)
        yield "one number less", part.pop


class SchemasTest(unittest.TestCase):
    def test_are_valid_themselves(self):
        for name in NAMES:
            schema = schemas.read(name)
            self.assertEqual(schema["$schema"], "https://json-schema.org/draft/2020-12/schema")
            jsonschema.Draft202012Validator.check_schema(schema)

    def test_are_named_in_the_documentation(self):
        page = (DOCS / "scripts.md").read_text()
        self.assertEqual([name for name in NAMES if f"`{name}{schemas.ENDING}`" not in page], [])

    def test_have_only_keys_that_the_documentation_explains(self):
        for name in NAMES:
            page = next(page for begin, page in PAGES.items() if name.startswith(begin))
            text = re.sub(r"```.*?```", "", (DOCS / page).read_text(), flags=re.DOTALL)
            told = set(re.findall(r"\w+", " ".join(re.findall(r"`[^`]+`|^    .*", text, re.MULTILINE))))
            self.assertEqual(keys_of(schemas.read(name)) - told, set(), (name, page))


class OutputsTest(FolderTest):
    def lines(self, *arguments, **options):
        return [json.loads(line) for line in self.run_tool(*arguments, **options).stdout.splitlines()]

    def json(self, *arguments, **options):
        return json.loads(self.run_tool(*arguments, **options).stdout)

    def report(self):
        """Lines of every status, with every key."""
        self.encrypt("in/opera.logdata", legacy_log(legacy_song_log("2", "Zwei"), legacy_song_log("10", "Ten")))
        name = os.path.join(self.folder.encode(), b"in/\xff")
        for ending, old in ((b".showdata", "old.showdata"), (b".logdata", "old.logdata")):
            with open(name + ending, "wb") as file:
                file.write(self.read(old))
        self.write("in/bad.showdata", "bad")
        run = ("up", "in", "-r", "--report", "report")
        self.run_tool(*run, "--out-dir", "out", "-n", code=PART_FAILED)
        self.run_tool(*run, "--out-dir", "out", code=PART_FAILED)
        self.run_tool(*run, "--out-dir", "out", "--skip-existing", code=PART_FAILED)
        self.run_tool(*run, "--in-place", code=PART_FAILED)
        self.run_tool("up", "out", "--out-dir", "again", "--report", "report")
        self.run_tool("down", "out/opera.showdata", "-o", "old", "--report", "report")
        self.run_tool(*run, "--out-dir", "out", "--key-file", b"no\xff", code=IO)
        lines = [json.loads(line) for line in self.read("report").splitlines()]
        self.assertEqual({line["status"] for line in lines}, {"done", "current", "skipped", "failed", "begun", "aborted"})
        return lines

    def documents(self):
        """Text forms of a show and a log, with texts that are not UTF-8 and a number that is not finite."""
        self.encrypt("odd.showdata", legacy_show(legacy_song(b"\xff", b"\xff")))
        self.run_tool("up", "odd.showdata", "-o", "odd", "--show-name", "X", "--to", "2.0")
        show = json.loads(self.plaintext("odd"))
        show["songs"][0]["timeline"].update({"keys": [{"time": 0, "key": -1, "mode": 1}], "pageNumbers": [{"time": 0, "page": 2}]})
        self.encrypt("odd", json.dumps(show).encode())
        legacy = self.json("dump", "odd.showdata")
        timeline = legacy["songs"][0]["timeline"]
        timeline.update({"keys": [{"time": 0, "key": -1, "mode": 1}], "pageNumbers": [{"time": 0, "page": 2}]})
        timeline["tempos"][0]["secondsPerTick"] = {"bits": 0x7F800000}
        self.write("legacy.json", json.dumps(legacy))
        self.run_tool("build", "legacy.json", "-o", "odd.showdata", "--force")
        log = self.log_document()
        log["songLogs"][0].update({
            "tempoScales": [{"start": 0, "end": 1, "label": {"bytes": "ff"}, "value": {"bits": 0x7F800000}}],
            "caesuras": [{"position": 0, "label": "", "secondWord": 1}]})
        self.write_log("odd.log", log)
        return {"text-show": [self.json("decrypt", "odd", "-o", "-"), self.json("dump", "new.showdata")],
                "text-log": [self.log_document("odd.log"), self.json("dump", "new.log")],
                "text-legacy-show": [self.json("dump", "odd.showdata")], "text-legacy-log": [self.json("dump", "old.log")]}

    def rescues(self):
        """Reports of files with songs that are whole, partly there and lost."""
        old = self.read("old.showdata")
        self.write("changed", old[:-1] + bytes([old[-1] ^ 1]))
        self.write("cut", old[:-1])
        self.write("lost", self.read("new.showdata")[:-40])
        self.write("head", self.plaintext("odd")[:-4])
        lines = []
        for name in ("old.showdata", "changed", "cut", "lost", "head", "bad"):
            lines += self.lines("rescue", name, "-o", "saved", "--force", "--json", code=None)
        return lines

    def offsets(self):
        """Fields of whole and damaged files, with every kind of value."""
        names = ("odd.showdata", "odd", "odd.log", "new.showdata", b"log\xff")
        return [*(self.json("dump", "--offsets", "--json", name) for name in names),
                self.json("dump", "--offsets", "--json", "head", code=BAD_INPUT),
                self.json("dump", "--offsets", "--json", "bad", code=None)]

    def samples(self):
        """Outputs of the tool by schema."""
        self.write("bad", "bad")
        os.mkdir(self.path("none"))
        self.encrypt(b"\xff".decode(errors="surrogateescape"), legacy_show(legacy_song("1", "One", tempos=())))
        os.link(self.path("new.log"), os.path.join(os.fsencode(self.folder), b"log\xff"))
        files = (b"\xff", "bad", "new.showdata", "new.log", "old.log")
        return {
            **self.documents(),
            "info": self.lines("info", "--json", *files, code=PART_FAILED),
            "list": self.lines("list", "--json", *files, code=PART_FAILED)
                    + self.lines("list", "--json", "none", code=NOTHING_MATCHED),
            "check": self.lines("check", "--json", *files, "--to", "0.0", code=PART_FAILED),
            "diff": self.lines("diff", "--json", "new.log", "odd.log", code=NEGATIVE) + self.lines("diff", "--json", "old.log", "new.log")
                    + self.lines("diff", "--json", b"log\xff", b"log\xff") + self.lines("diff", "--json", "none", b"log\xff", code=IO),
            "explain": [self.json("explain", "--json"), *self.lines("explain", "cut-off", "--json")],
            "rescue": self.rescues(),
            "offsets": self.offsets(),
            "progress": [json.loads(self.run_tool("list", "new.log", "--progress", "json").stderr)],
            "report": self.report(),
        }

    def test_are_what_outputs_follow_and_nothing_else_does(self):
        samples = self.samples()
        self.assertEqual(sorted({*samples, *SHARED}), NAMES)
        for name, values in samples.items():
            for value in values:
                self.assertIsNone(schemas.problem(name, value))
                self.expect_no_change_to_be_allowed(name, value)

    def expect_no_change_to_be_allowed(self, name, value):
        if isinstance(value, list):
            value = value[:2]
        value = copy.deepcopy(value)
        for part in list(parts_of(value)):
            before = copy.copy(part)
            for what, change in changes_of(part):
                change()
                self.assertIsNotNone(schemas.problem(name, value), (name, what, before))
                part.clear()
                part.update(before) if isinstance(part, dict) else part.extend(before)

    def test_have_no_key_that_no_output_has(self):
        found = {key for values in self.samples().values() for part in parts_of(values) if isinstance(part, dict) for key in part}
        self.assertEqual({key for name in NAMES for key in keys_of(schemas.read(name))} - found, set())


if __name__ == "__main__":
    unittest.main()
