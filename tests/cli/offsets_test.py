"""dump --offsets."""

import json
import pathlib
import re
import unittest

from terminal import run_on_terminal
from tool import BAD_INPUT, IO, OR_RESCUE, TOOL, USAGE, ToolTest, midi_file, without_codes

EXAMPLES = pathlib.Path(__file__).parents[2] / "examples"
KINDS = ("showdata", "logdata")
EVENT = ("deltaTime", "absoluteTime", "statusHigh", "data1", "data2", "trackId")
MESSAGE = ("time", "status", "data1", "data2")
FRAME = {"magic", "size", "major", "minor", "crc32", "end", "logLength"}  # what the text form does not have
FRAMES = re.compile(r"(\.|^)(recordLength|eventCode|payloadLength|bodyLength|magic)$")


def values_of(value, path=""):
    """(path, value) of every value of a text form. A list has its length, too."""
    if isinstance(value, dict):
        for key, part in value.items():
            yield from values_of(part, f"{path}.{key}" if path else key)
    elif isinstance(value, list) and path.endswith("]") and isinstance(value[0], int):
        yield from ((f"{path}.{key}", part) for key, part in zip(EVENT if ".events[" in path else MESSAGE, value))
    elif isinstance(value, list):
        yield path, len(value)
        for index, part in enumerate(value):
            yield from values_of(part, f"{path}[{index}]")
    else:
        yield path, value


class OffsetsTest(ToolTest):
    def setUp(self):
        super().setUp()
        self.environment["ZUNA_KEY_FILE"] = self.write_key("key", (EXAMPLES / "three-tunes.key").read_text())
        for kind in KINDS:
            for version in ("0.0", "1.2"):
                self.write(f"{version}.{kind}", (EXAMPLES / f"three-tunes-{version}.{kind}").read_bytes())
            for version in ("1.1", "2.0"):
                self.run_tool("convert", f"1.2.{kind}", "-o", f"{version}.{kind}", "--to", version)
        self.run_tool("convert", "1.2.showdata", "-o", "1.0.showdata", "--to", "1.0")
        self.names = [name for name in self.files() if name.endswith(KINDS)]

    def lines(self, name, **options):
        """The head, and (begin, end, path, value) of every field."""
        head, *lines = self.run_tool("dump", "--offsets", name, **options).stdout.decode().splitlines()
        fields, record = [], ""
        for line in lines:
            place, path, *value = line.split("  ", 2)
            begin, end = map(int, place.split(".."))
            if path.startswith("."):
                path = record + path
            record = path.rpartition(".")[0]
            fields.append((begin, end, path, json.loads(value[0]) if value else None))
        return head, fields

    def json(self, name, **options):
        return json.loads(self.run_tool("dump", "--offsets", "--json", name, **options).stdout)

    def json_fields(self, output):
        for record in output["records"]:
            at = record["begin"]
            for key, size, value in record["fields"]:
                yield at, at + size, f"{record['path']}.{key}" if record["path"] else key, value
                at += size

    def expect_all_bytes(self, fields, size):
        ends = [0, *(end for _, end, _, _ in fields)]
        self.assertEqual([begin for begin, _, _, _ in fields], ends[:-1])
        self.assertEqual(ends[-1], size)

    def test_lists_no_fields_of_other_formats(self):
        for content, message in ((midi_file(b""), "is a MIDI file; use midi import"),
                                 (b"PK\3\4" + bytes(50), "is a zip archive; unpack it, and give the file that comes out"),
                                 (b"a" * 257 + b"ustar", "is a tar archive; unpack it, and give the file that comes out")):
            self.write("other", content)
            self.refuse("dump", "--offsets", "other", code=BAD_INPUT, message=f"other: {message}")

    def test_takes_every_byte_of_every_version(self):
        self.assertEqual(len(self.names), 9)
        for name in self.names:
            size = len(self.plaintext(name))
            head, fields = self.lines(name)
            what = "log" if name.endswith("logdata") else "show"
            self.assertEqual(head, f"{name}: a {what} of version {name[:3]}, {size} bytes of plaintext; the header of the "
                                   "encryption, 72 bytes, stands before them")
            self.expect_all_bytes(fields, size)
            output = self.json(name)
            self.assertEqual(list(self.json_fields(output)), fields)
            del output["records"]
            self.assertEqual(output, {"schemaVersion": 1, "path": name, "kind": name[4:], "fileVersion": name[:3],
                                      "headerSize": 72, "size": size, "error": None})

    def test_has_the_values_that_dump_has(self):
        for name in self.names:
            text = dict(values_of(json.loads(self.run_tool("dump", name).stdout)))
            fields = {path: value for _, _, path, value in self.lines(name)[1]}
            for path, value in fields.items():
                if path not in FRAME and not FRAMES.search(path):
                    self.assertEqual(text.pop(path), len(value) if isinstance(value, list) else value, (name, path))
            left = {re.sub(r".*[.]", "", path) for path in text}
            self.assertLessEqual(left, self.left_of(name), name)

    def left_of(self, name):
        """What the text form has that a file of this version does not have as a field."""
        if name.startswith("2.0"):  # which has brackets in place of a length
            return {"songs", "songLogs", "voices", "messages", "tempos", "barsBeats", "keys", "pageNumbers", "meters", "tagPair",
                    "vamps", "repeats", "cuts", "transposes", "tempoScales", "clicks", "fermatas", "markers", "caesuras"}
        own = {"kind", "fileVersion", "tagPair"}
        if name.startswith("0.0"):  # whose sequences have their length in bytes
            return own | {"songLogs", "tempos", "barsBeats", "keys", "pageNumbers", "meters", "vamps", "repeats", "cuts",
                          "transposes", "tempoScales", "clicks", "markers", "caesuras"}
        return own | {"status"}  # a message may take the status of the one before it

    def test_of_a_plain_file_names_no_header(self):
        self.run_tool("decrypt", "1.2.logdata", "-o", "plain")
        self.assertEqual(self.lines("plain")[0], "plain: a log of version 1.2, 224 bytes of plaintext; the file is not encrypted")
        self.assertEqual(self.json("plain")["headerSize"], 0)

    def test_of_a_damaged_file_ends_at_the_damage(self):
        self.run_tool("decrypt", "1.2.showdata", "-o", "plain")
        self.write("cut", self.read("plain")[:1000])
        done = self.run_tool("dump", "--offsets", "cut", code=BAD_INPUT)
        message = ('cut: song "2", voice 1, messages: The show file is cut off: its header states 2350 bytes, only 1000 are present '
                   "(at byte 1000); get a complete copy of the file" + OR_RESCUE)
        self.assertEqual(without_codes(done.stderr.decode()), f"zuna-convert: {message}\n")
        _, whole = self.lines("1.2.showdata")
        _, fields = self.lines("cut", code=BAD_INPUT)
        self.expect_all_bytes(fields, 1000)
        self.assertEqual(fields.pop(), (999, 1000, "unread", None))
        self.assertEqual(fields, whole[:len(fields)])
        self.assertEqual(self.json("cut", code=BAD_INPUT)["error"]["message"], message)

    def test_of_a_text_behind_a_byte_order_mark_has_every_byte(self):
        for kind in KINDS:
            text = b"\xef\xbb\xbf" + self.plaintext(f"2.0.{kind}")
            self.write("marked", text)
            head, fields = self.lines("marked", code=BAD_INPUT)
            self.assertIn({"showdata": ": a show of version 2.0, ", "logdata": ": a log of version 2.0, "}[kind], head)
            self.expect_all_bytes(fields, len(text))
            self.assertEqual(list(self.json_fields(self.json("marked", code=BAD_INPUT))), fields)

    def test_of_a_file_that_cannot_be_opened(self):
        self.write("bad", b"hello world")
        self.refuse("dump", "--offsets", "bad", code=BAD_INPUT,
                    message="bad: is not an encrypted file of this kind (offset 0); give an encrypted show or log file")
        self.assertEqual(self.json("bad", code=BAD_INPUT)["exitCode"], BAD_INPUT)
        self.assertEqual(self.json("none", code=IO)["error"]["file"], "none")

    def test_on_a_terminal_escapes_what_could_steer_it(self):
        log = json.loads(self.plaintext("2.0.logdata"))
        log["showName"] = "a\x9b\u202eb"
        self.write("quo\"te.json", json.dumps(log, ensure_ascii=False))
        for option in ((), ("--json",)):
            shown, _ = run_on_terminal([TOOL, "dump", "--offsets", *option, "quo\"te.json"], cwd=self.folder, env=self.environment)
            self.assertIn('"a\\u009b\\u202eb"', shown)

    def test_is_refused_with_options_of_the_text(self):
        self.refuse("dump", "--offsets", "1.2.showdata", "-o", "out", code=USAGE,
                    message="command line: --offsets prints to standard output only; leave -o out")
        self.refuse("dump", "--json", "1.2.showdata", code=USAGE,
                    message="command line: --json is given without --offsets; give both, or neither: the text is JSON anyway")


if __name__ == "__main__":
    unittest.main()
