"""Tests the readers, writers and sources of this folder without the library."""

import json
import pathlib
import re
import tempfile
import unittest

import compare
import floats
import mutate
import probe
import sides
import version0
import version1
import version2
from current import FormatError, UnsupportedVersion, by_number

HERE = pathlib.Path(__file__).parent
SHOW = {"showName": b"", "songs": []}


def examples(page):
    """The indented blocks of a page that are JSON objects."""
    blocks = re.findall(r"(?:^    .*\n|^\n)+", page.read_text(), re.MULTILINE)
    lines = ["\n".join(line[4:] for line in block.strip("\n").split("\n")) for block in blocks]
    return [block.rstrip("\n") + "\n" for block in lines if block.startswith("{") and '"ok"' not in block]


class TextTest(unittest.TestCase):
    def test_writes_the_examples_of_the_page_as_they_are(self):
        show, log = examples(HERE.parents[1] / "docs" / "format-2.md")
        for kind, text in (("show", show), ("log", log)):
            self.assertEqual(version2.write(kind, version2.read(kind, text.encode())).decode(), text)

    def test_refuses_what_python_takes_for_json(self):
        for text in ("NaN", "Infinity", "-Infinity", '"\\ud800"', "1e2147483648", "\ufeff1", '{"bytes": "f"}', '"\t"'):
            with self.assertRaises(FormatError):
                version2.read("show", b'{"kind":"showdata","fileVersion":"2.0","songs":[],"showName":%b}' % text.encode())

    def test_knows_another_version(self):
        with self.assertRaises(UnsupportedVersion):
            version2.read("show", version2.write("show", SHOW).replace(b'"2.0"', b'"2.1"'))

    def test_spells_floats(self):
        for bits, literal in ((0x3FC00000, "1.5"), (0x3EAAAAAB, "0.33333334"), (1, "1e-45"), (0x80000000, "-0.0"),
                              (0, "0"), (0x47C35000, "1e+05"), (0x51C38CA2, "104984756224"), (0x6C800000, "1.2379401e+27")):
            self.assertEqual(floats.to_decimal(bits), literal)
            self.assertEqual(floats.from_decimal(literal), bits)

    def test_rounds_once_and_halves_to_even(self):
        self.assertEqual(floats.from_decimal("16777217"), floats.from_decimal("16777216"))
        self.assertEqual(floats.from_decimal("16777217.0000000000000000000000000001"), floats.from_decimal("16777218"))
        self.assertEqual(floats.from_decimal("340282356779733661637539395458142568447.9999"), 0x7F7FFFFF)
        with self.assertRaises(FormatError):
            floats.from_decimal("340282356779733661637539395458142568448")


class BinaryTest(unittest.TestCase):
    def test_reads_what_it_writes(self):
        for name in compare.FORMATS:
            source = compare.Source(name, "test")
            for _ in range(20):
                self.assertEqual(sides.answer(source.reader, source.file())[0], "accepted")
                if source.version == compare.LEGACY:
                    continue
                for version in ((1, 1), (1, 2)):
                    data = version1.write(source.kind, source.model, version)
                    self.assertEqual(version1.read(source.kind, data), source.model)

    def test_orders_song_numbers(self):
        numbers = [b"002", b"02", b"2", b"2A", b"2a", b"2a2", b"2a10", b"10"]
        self.assertEqual(sorted(reversed(numbers), key=by_number), numbers)

    def test_refuses_long_spellings_of_numbers(self):
        for body in (b"\x00\x80\x00", b"\x00\x80\x80\x80\x80\x10", b"\x00\x80\x80\x80\x80\x80\x00"):
            with self.assertRaises(FormatError):
                version1.read("show", version1.frame("show", (1, 2), body))
        self.assertEqual(version1.read("show", version1.frame("show", (1, 2), b"\x00\x00")), SHOW)

    def test_mends_sizes_and_checksums(self):
        for version in version1.VERSIONS["show"]:
            data = bytearray(version1.write("show", SHOW, version))
            data[4] ^= 1
            data[-1] ^= version != (1, 0)
            self.assertEqual(version1.read("show", mutate.mend(bytes(data))), SHOW)

    def test_probes(self):
        self.assertEqual(probe.read(version1.write("show", SHOW, (1, 2))), {"showdata": "1.2", "logdata": "0.0"})
        self.assertEqual(probe.read(b'{"a": [1], "kind": "logdata", "fileVersion": "7.8",!'),
                         {"showdata": "0.0", "logdata": "7.8"})
        self.assertEqual(probe.read(b""), {"showdata": "0.0", "logdata": "0.0"})


class LegacyTest(unittest.TestCase):
    def test_gives_the_examples_of_the_page(self):
        show, log = (json.loads(text) for text in examples(HERE / "README.md") if '"song' in text)
        self.assertEqual(sides.model_of("legacy-show", version0.write_show(keyed(show, "songs"))), show)
        self.assertEqual(sides.model_of("legacy-log", version0.write_log(keyed(log, "songLogs"))), log)

    def test_ends_a_sequence_after_one_record_where_its_end_wraps(self):
        log = {"identifier": bytes(16), "logLabel": b"", "showName": b"", "logTagPair": [0, 0], "songLogs": {0: {
            "songNumber": b"1", "songName": b"", "songLength": 0, **{key: [] for key, _ in version0.SONG_LOG.values()},
            "scoreMarkers": [[1, b"a"]]}}}
        data = version0.write_log(log)
        wrapped = data.replace(b"E\x06\0\0\0", b"E\xff\xff\xff\xff")
        self.assertEqual(version0.read_log(wrapped), version0.read_log(data))


def keyed(model, key):
    """A model of JSON as the writers take it."""
    model = {name: binary(value) for name, value in model.items()}
    if "identifier" in model:
        model["identifier"] = bytes.fromhex(model["identifier"].decode().replace("-", ""))
    return {**model, key: dict(enumerate(model[key]))}


def binary(value):
    if isinstance(value, dict):
        return {key: binary(entry) for key, entry in value.items()}
    if isinstance(value, list):
        return [binary(entry) for entry in value]
    return value.encode() if isinstance(value, str) else value


class ComparisonTest(unittest.TestCase):
    def test_makes_the_same_files_from_the_same_seed(self):
        one, other = (compare.Source("log-1.2", "7") for _ in range(2))
        for _ in range(5):
            self.assertEqual((one.file(), one.damaged()), (other.file(), other.damaged()))

    def test_reports_and_keeps_what_differs(self):
        said, folder = [], pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        library = FakeLibrary([("accepted", "{}"), ("refused", "DataError"), ("ended", None)])
        comparison = compare.Comparison("show-1.2-1", library, folder, said.append)
        for data in (version1.write("show", SHOW, (1, 2)), b"?", b"?"):
            comparison.compare("show", data)
        self.assertEqual(comparison.tally, {"different": 2, "both refused": 1})
        self.assertEqual(sorted(path.name for path in folder.iterdir()), ["show-1.2-1-1.show", "show-1.2-1-2.show"])
        self.assertRegex(said[0], "both accepted, but the models differ")
        self.assertRegex(said[1], "the page: refused DataError; the library: ended")


class FakeLibrary:
    def __init__(self, answers):
        self.answers = iter(answers)

    def answer(self, _reader, _data):
        return next(self.answers)


if __name__ == "__main__":
    unittest.main()
