"""The Python package zuna. ZUNA_PACKAGE is the folder that holds it, ZUNA_SOURCE the repository."""

import ast
import concurrent.futures
import gc
import json
import os
import pathlib
import pickle
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time
import unittest

import numpy

sys.path.insert(0, os.environ["ZUNA_PACKAGE"])
import zuna  # pylint: disable=wrong-import-position

SOURCE = pathlib.Path(os.environ["ZUNA_SOURCE"])
EXAMPLES = SOURCE / "examples"
KEY_FILE = EXAMPLES / "three-tunes.key"
KEY = bytes.fromhex("7a756e612d73616d706c652d6b657921")
IV = bytes.fromhex("73616d706c652d76")


def sample(name):
    return zuna.open(EXAMPLES / f"three-tunes-{name}", key_file=KEY_FILE)


def sample_bytes(name):
    return (EXAMPLES / f"three-tunes-{name}").read_bytes()


def plaintext(name):
    """The bytes of a sample without encryption."""
    command = [os.environ["ZUNA_CONVERT"], "decrypt", EXAMPLES / f"three-tunes-{name}", "-o", "-", "-qq", "--key-file", KEY_FILE]
    return subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout


class ZunaTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="zuna-python-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def refused(self, work, code):
        """The error of a call that is refused."""
        with self.assertRaises(zuna.Error) as caught:
            work()
        self.assertEqual(caught.exception.code, code, str(caught.exception))
        return caught.exception


class OpenTest(ZunaTest):
    def test_takes_paths_bytes_and_keys(self):
        path = EXAMPLES / "three-tunes-1.2.showdata"
        for given in (path, str(path), path.read_bytes(), bytearray(path.read_bytes()), memoryview(path.read_bytes())):
            for key in ({"key_file": KEY_FILE}, {"key_file": str(KEY_FILE)}, {"key": KEY, "iv": IV}):
                document = zuna.open(given, **key)
                self.assertEqual((document.kind, document.version, document.show_name), ("show", "1.2", "Three Tunes"))
        self.assertEqual(zuna.open(path, key=KEY, iv=IV).name, str(path))

    def test_tells_kind_and_version(self):
        self.assertEqual([(sample(name).kind, sample(name).version, sample(name).show_name)
                          for name in ("0.0.showdata", "0.0.logdata", "1.2.logdata")],
                         [("show", "0.0", None), ("log", "0.0", "Three Tunes"), ("log", "1.2", "Three Tunes")])

    def test_opens_plain_files_only_when_told(self):
        text = sample("1.2.showdata").to_text().encode()
        self.refused(lambda: zuna.open(text, key=KEY, iv=IV), "plain-file")
        self.assertEqual(zuna.open(text, plain=True).show_name, "Three Tunes")
        legacy_text = sample("0.0.showdata").to_text().encode()
        self.assertEqual(zuna.open(legacy_text, plain=True).version, "0.0")

    def test_refuses_with_all_that_is_known(self):
        error = self.refused(lambda: zuna.open(self.folder / "none"), "not-found")
        self.assertEqual((error.file, error.remedy, error.song, error.offset),
                         (str(self.folder / "none"), "check the path", None, None))
        self.assertTrue(str(error).endswith("; check the path"))
        self.refused(lambda: zuna.open(EXAMPLES / "three-tunes-1.2.showdata"), "no-key")
        self.refused(lambda: zuna.open(EXAMPLES / "three-tunes-1.2.showdata", key=IV, iv=IV), "wrong-key")
        self.refused(lambda: zuna.open(b"none", key=KEY), "not-encrypted")
        (self.folder / "key").write_text("key = 0x")
        error = self.refused(lambda: zuna.open(b"none", key_file=self.folder / "key"), "bad-key-file")
        self.assertEqual(error.problem, "has no whole bytes of hexadecimal digits after \"=\" (line 1)")
        with self.assertRaisesRegex(ValueError, "give key and iv, or key_file"):
            zuna.open(b"none", key=KEY, key_file=KEY_FILE)
        for wrong in (3, None, ["x"]):
            with self.assertRaises(TypeError):
                zuna.open(wrong)
        with self.assertRaisesRegex(TypeError, "the bytes of a file are one after another"):
            zuna.open(memoryview(b"abcd")[::2])

    def test_errors_can_be_pickled(self):
        error = self.refused(lambda: zuna.open(self.folder / "none"), "not-found")
        again = pickle.loads(pickle.dumps(error))
        self.assertEqual((type(again), str(again), again.code, again.file), (zuna.Error, str(error), "not-found", error.file))

    def test_takes_names_of_any_bytes(self):
        path = os.fsencode(self.folder) + b"/\xe4.showdata"
        with open(path, "wb") as file:
            file.write(sample_bytes("1.2.showdata"))
        self.assertEqual(zuna.open(os.fsdecode(path), key=KEY, iv=IV).name, os.fsdecode(path))
        error = self.refused(lambda: zuna.open(os.fsdecode(path)), "no-key")
        self.assertEqual(error.file, os.fsdecode(path))


class SongsTest(ZunaTest):
    def test_shows_a_song(self):
        song = sample("1.2.showdata").songs[0]
        self.assertEqual((song.number, song.name, song.division, song.length, song.attacca),
                         ("1", "Auld Lang Syne", 480, 15840, None))
        self.assertEqual(song.counts, {"voices": 3, "events": 119, "bars": 9, "tempos": 1, "meters": 1})
        tempo, = song.tempos
        self.assertEqual((tempo.time, tempo.microseconds), (0, 652174))
        self.assertEqual(tempo.bpm, 92)
        meter, = song.meters
        self.assertEqual((meter.time, meter.numerator, meter.denominator, meter.clocks_per_click,
                          meter.notated_32_per_quarter), (0, 4, 4, 24, 8))
        self.assertEqual([(bar.time, bar.label, bar.tag) for bar in song.bars[:2]], [(0, "0", 0), (480, "1", 0)])
        self.assertEqual([(key.time, key.key, key.mode) for key in song.keys], [(0, -1, 0)])
        self.assertEqual([(page.time, page.page) for page in song.pages], [(0, 1), (6240, 2)])
        self.assertEqual([(voice.number, voice.name) for voice in song.voices], [(1, "Fiddle"), (2, "Bass"), (9, "Drum Kit")])

    def test_shows_legacy_songs_as_they_come_up(self):
        legacy, up = sample("0.0.showdata").songs, sample("0.0.showdata").up().songs
        for one, other in zip(legacy, up, strict=True):
            self.assertEqual((one.number, one.name, one.length), (other.number, other.name, other.length))
            for voice, same in zip(one.voices, other.voices, strict=True):
                numpy.testing.assert_array_equal(voice.messages, same.messages)

    def test_shows_the_songs_of_a_log(self):
        song = sample("1.2.logdata").songs[0]
        self.assertEqual((song.number, song.division, song.attacca, song.voices, song.tempos), ("1", 480, 0, [], []))
        self.assertEqual(song.counts["repeats"], 1)
        self.assertIsNone(sample("0.0.logdata").songs[0].division)
        with self.assertRaisesRegex(TypeError, "the song of a log has no MIDI messages"):
            song.to_midi()

    def test_keeps_names_of_any_bytes(self):
        bytes_of_file = plaintext("0.0.showdata").replace(b"Greensleeves", b"Greensl\xe9eves")
        show = zuna.open(bytes_of_file, plain=True, key=KEY, iv=IV)
        self.assertEqual(show.songs[1].name, "Greensl\udce9eves")
        self.assertIn("Greensl\udce9eves", repr(show.songs[1]))
        self.assertEqual(zuna.open(show.up().down().to_bytes(), key=KEY, iv=IV).songs[1].name, "Greensl\udce9eves")
        self.assertEqual({finding.code for finding in show.check()}, {"text-not-utf8"})


class MessagesTest(ZunaTest):
    def test_are_the_memory_of_the_document(self):
        voice = sample("1.2.showdata").songs[0].voices[0]
        messages = voice.messages
        self.assertEqual(messages.dtype, zuna.message_type)
        self.assertEqual(messages.dtype.names, ("time", "status", "data1", "data2"))
        self.assertEqual(messages[:2].tolist(), [(0, 0xC1, 40, 0), (0, 0x91, 60, 80)])
        self.assertEqual(messages.ctypes.data, voice.messages.ctypes.data)
        self.assertFalse(messages.flags.writeable or messages.flags.owndata)
        with self.assertRaisesRegex(ValueError, "read-only"):
            messages["data1"] = 0
        with self.assertRaises(ValueError):
            messages.setflags(write=True)

    def test_outlive_everything_else(self):
        show = sample("0.0.showdata")
        messages = [voice.messages for song in show.songs for voice in song.voices]
        copies = [each.copy() for each in messages]
        del show
        gc.collect()
        others = [sample("1.2.showdata") for _ in range(20)]
        for each, copy in zip(messages, copies, strict=True):
            numpy.testing.assert_array_equal(each, copy)
        self.assertEqual(len(others), 20)

    def test_can_be_replaced_in_a_copy(self):
        show = sample("1.2.showdata")
        voice = show.songs[0].voices[0]
        messages = voice.messages.copy()
        notes = messages["status"] & 0xE0 == 0x80
        messages["data1"][notes] += 2
        higher = show.with_messages("1", voice.number, messages)
        self.assertEqual({change.name for difference in show.diff(higher) for change in difference.changes}, {"pitch"})
        numpy.testing.assert_array_equal(higher.songs[0].voices[0].messages, messages)
        self.assertEqual(show.diff(sample("1.2.showdata")), [])
        self.assertEqual(show.with_messages("1", 1, messages[::2]).songs[0].voices[0].messages.tolist(),
                         messages[::2].tolist())
        self.assertEqual(show.with_messages("1", 1, messages[:0]).songs[0].voices[0].messages.size, 0)

    def test_are_replaced_by_the_same_type_alone(self):
        show = sample("1.2.showdata")
        messages = show.songs[0].voices[0].messages
        for wrong in ([1], numpy.zeros(3), messages.reshape(1, -1), messages[["time", "status"]]):
            with self.assertRaisesRegex(TypeError, "give an array with one dimension and the type of Voice.messages"):
                show.with_messages("1", 1, wrong)
        with self.assertRaisesRegex(KeyError, "there is no song 9"):
            show.with_messages("9", 1, messages)
        with self.assertRaisesRegex(KeyError, "there is no voice 7"):
            show.with_messages("1", 7, messages)
        self.refused(lambda: sample("0.0.showdata").with_messages("1", 1, messages), "current-wanted")
        self.refused(lambda: sample("1.2.logdata").with_messages("1", 1, messages), "wrong-kind")


class ConversionTest(ZunaTest):
    def test_goes_up_and_down(self):
        show, log = sample("0.0.showdata"), sample("0.0.logdata")
        up = show.up(log)
        self.assertEqual((up.version, up.show_name), ("1.2", "Three Tunes"))
        self.assertEqual(up.to_bytes(), sample_bytes("1.2.showdata"))
        self.assertEqual(up.down().to_bytes(), sample_bytes("0.0.showdata"))
        self.assertEqual(log.up(show).to_bytes(), sample_bytes("1.2.logdata"))
        self.assertEqual(log.up(show, "2.0").version, "2.0")
        self.assertEqual(show.up().show_name, "")
        self.assertEqual(up.convert("2.0").convert("1.2").to_bytes(), sample_bytes("1.2.showdata"))

    def test_refuses_what_cannot_be(self):
        show, log = sample("0.0.showdata"), sample("1.2.logdata")
        self.refused(lambda: sample("1.2.showdata").up(), "legacy-wanted")
        self.refused(show.down, "current-wanted")
        self.refused(lambda: show.convert("1.2"), "current-wanted")
        self.refused(lambda: log.convert("1.0"), "no-such-version")
        error = self.refused(lambda: log.convert("new"), "no-such-version")
        self.assertEqual(str(error), "version: there is no version \"new\"; give 0.0, 1.0, 1.1, 1.2 or 2.0")
        error = self.refused(lambda: show.up(sample("1.2.showdata")), "wrong-companion")
        self.assertEqual(error.problem, "is a show itself")
        other = log.to_dict()
        for song in other["songLogs"]:
            song["songName"] += "!"
        error = self.refused(lambda: show.up(zuna.Document.from_dict(other)), "unrelated-companion")
        self.assertEqual(error.remedy, "give its own companion, or none")

    def test_tells_losses(self):
        show, log = sample("1.2.showdata"), sample("1.2.logdata")
        loss, = show.losses("0.0")
        self.assertEqual((loss.code, loss.before, loss.after, loss.song, loss.harmless),
                         ("show-name-dropped", "Three Tunes", None, None, True))
        self.assertEqual({loss.code for loss in log.losses("0.0")}, {"division-dropped"})
        self.assertEqual(show.losses("2.0"), [])
        self.assertEqual(sample("0.0.showdata").losses("1.2", sample("0.0.logdata")), [])
        self.refused(lambda: log.losses("1.0"), "no-such-version")

    def test_copies_fermatas(self):
        given = sample("1.2.logdata").to_dict()
        given["songLogs"][0]["fermatas"] = [{"start": 0, "end": 480, "label": "", "value": 2}]
        source = zuna.Document.from_dict(given)
        copy = source.down().up(sample("1.2.showdata")).with_fermatas_of(source)
        self.assertEqual(copy.to_dict()["songLogs"][0]["fermatas"], given["songLogs"][0]["fermatas"])


class ComparisonTest(ZunaTest):
    def test_tells_differences(self):
        show = sample("1.2.showdata")
        given = show.to_dict()
        given["songs"][0]["timeline"]["tempos"][0]["microseconds"] = 500000
        given["songs"][1]["songName"] = "Sleeves"
        tempo, name = show.diff(zuna.Document.from_dict(given))
        self.assertEqual((tempo.code, tempo.song, tempo.list, tempo.index, tempo.tick, tempo.after_tick, tempo.bar, tempo.voice),
                         ("tempo-changed", "1", "tempos", 0, 0, 0, "0", None))
        self.assertIn("652174", tempo.before)
        self.assertEqual((name.code, name.song, name.before, name.after), ("song-name-changed", "2", "Greensleeves", "Sleeves"))
        self.refused(lambda: show.diff(sample("1.2.logdata")), "wrong-kind")

    def test_tells_findings(self):
        self.assertEqual(sample("1.2.showdata").check(), [])
        given = sample("1.2.showdata").to_dict()
        given["songs"][0]["timeline"]["tempos"][0]["microseconds"] = 0
        still = zuna.Document.from_dict(given)
        self.assertEqual(still.songs[0].tempos[0].bpm, float("inf"))
        finding, = still.check()
        self.assertEqual((finding.code, finding.severity, finding.song, finding.list, finding.tick),
                         ("tempo-zero", "error", "1", "tempos", 0))
        self.assertTrue(finding.problem and finding.remedy)


class TextFormTest(ZunaTest):
    def test_comes_back(self):
        for name in ("0.0.showdata", "0.0.logdata", "1.2.showdata", "1.2.logdata"):
            document = sample(name)
            self.assertEqual(json.loads(document.to_text()), document.to_dict())
            for again in (zuna.Document.from_dict(document.to_dict(), key=KEY, iv=IV),
                          zuna.Document.from_text(document.to_text(), key_file=KEY_FILE)):
                self.assertEqual(again.to_bytes(), sample_bytes(name))

    def test_tells_the_place_of_an_error(self):
        error = self.refused(lambda: zuna.Document.from_text("{\n  1}"), "text-error")
        self.assertRegex(str(error), r"\(line 2, column 3\)")
        given = sample("1.2.showdata").to_dict()
        given["songs"][0]["divisoin"] = given["songs"][0].pop("division")
        self.assertIn("divisoin", str(self.refused(lambda: zuna.Document.from_dict(given), "text-error")))


class SaveTest(ZunaTest):
    def test_replaces_only_when_told(self):
        path = self.folder / "new.showdata"
        show = sample("1.2.showdata")
        show.save(path)
        self.assertEqual(path.read_bytes(), sample_bytes("1.2.showdata"))
        self.assertEqual(path.stat().st_mode & 0o777, 0o600)
        error = self.refused(lambda: show.save(path), "output-exists")
        self.assertEqual(error.remedy, "give overwrite=True to replace it, or another path")
        show.down().save(str(path), overwrite=True)
        self.assertEqual(path.read_bytes(), sample_bytes("0.0.showdata"))
        self.assertEqual(os.listdir(self.folder), ["new.showdata"])
        self.refused(lambda: show.save(self.folder / "none" / "new"), "not-found")


class KeyTest(ZunaTest):
    def test_writes_under_another_key(self):
        show = sample("1.2.showdata")
        other = show.with_key(key=b"other", iv=b"iv")
        self.assertEqual(show.to_bytes(), sample_bytes("1.2.showdata"))
        self.refused(lambda: zuna.open(other.to_bytes(), key=KEY, iv=IV), "wrong-key")
        again = zuna.open(other.down().to_bytes(), key=b"other", iv=b"iv")
        self.assertEqual(again.to_dict(), show.down().to_dict())
        self.assertEqual(show.with_key().to_bytes(), show.with_key(key=b"", iv=b"").to_bytes())
        path = self.folder / "key"
        path.write_text("key = 41\niv = 42\n")
        self.assertEqual(show.with_key(key_file=path).to_bytes(), show.with_key(key=b"A", iv=b"B").to_bytes())

    def test_is_in_no_pickle(self):
        with self.assertRaises(TypeError):
            pickle.dumps(sample("1.2.showdata"))


class MidiTest(ZunaTest):
    def test_goes_out_and_in(self):
        show = sample("1.2.showdata")
        data, report = show.songs[0].to_midi()
        self.assertTrue(data.startswith(b"MThd"))
        self.assertEqual((report.not_kept, report.remarks), ("9 bar labels, 2 page numbers, 1 voice number", []))
        (self.folder / "Second.mid").write_bytes(data)
        made, reports = zuna.from_midi([data, self.folder / "Second.mid"], "Made", key=KEY, iv=IV)
        self.assertEqual((made.version, made.show_name, len(reports)), ("1.2", "Made", 2))
        self.assertEqual([(song.number, song.name) for song in made.songs], [("1", "Auld Lang Syne"), ("2", "Auld Lang Syne")])
        numpy.testing.assert_array_equal(made.songs[0].voices[0].messages, show.songs[0].voices[0].messages)
        made, _ = zuna.from_midi([data], song_numbers=["7b"], version="2.0")
        self.assertEqual((made.songs[0].number, made.version), ("7b", "2.0"))

    def test_refuses_what_is_no_midi_file(self):
        error = self.refused(lambda: zuna.from_midi([b"none"]), "not-a-midi-file")
        self.assertEqual(error.file, "memory")
        data, _ = sample("1.2.showdata").songs[0].to_midi()
        with self.assertRaisesRegex(ValueError, "song 1 is there twice"):
            zuna.from_midi([data, data], song_numbers=["1", "1"])
        with self.assertRaisesRegex(ValueError, "give as many song numbers as files"):
            zuna.from_midi([data], song_numbers=[])
        for wrong in ([3], 3):
            with self.assertRaises(TypeError):
                zuna.from_midi(wrong)
        with self.assertRaises(TypeError):
            zuna.from_midi([data], song_numbers=[3])


class EntryPointsTest(ZunaTest):
    def test_convert_in_memory(self):
        points = zuna.format_converter
        show = points.showdata_down_vector(sample_bytes("1.2.showdata"), KEY, IV)
        self.assertEqual(show, sample_bytes("0.0.showdata"))
        log = points.logdata_down_vector(sample_bytes("1.2.logdata"), KEY, IV)
        self.assertEqual(log, sample_bytes("0.0.logdata"))
        self.assertEqual(points.logdata_up_vector(log, show, "1.2", KEY, IV), sample_bytes("1.2.logdata"))
        for convert, name in ((points.showdata_converter_vector, "1.2.showdata"),
                              (points.logdata_converter_vector, "1.2.logdata")):
            text = convert(sample_bytes(name), "2.0", KEY, IV)
            self.assertEqual(convert(text, "1.2", KEY, IV), sample_bytes(name))
        self.assertEqual(points.copy_attaccas_and_fermatas_vector(sample_bytes("1.2.logdata"), sample_bytes("1.2.logdata"),
                                                                  KEY, IV), sample_bytes("1.2.logdata"))

    def test_convert_files(self):
        points = zuna.format_converter
        for name in ("0.0.showdata", "0.0.logdata", "1.2.showdata", "1.2.logdata"):
            (self.folder / name).write_bytes(sample_bytes(name))
            (self.folder / f"plain-{name}").write_bytes(plaintext(name))
        out = self.folder / "out"
        self.assertEqual(points.showdata_up(self.folder / "0.0.showdata", out, self.folder / "plain-0.0.logdata", "1.2", KEY, IV),
                         str(out))
        self.assertEqual(out.read_bytes(), sample_bytes("1.2.showdata"))
        points.logdata_up(self.folder / "0.0.logdata", out, self.folder / "plain-0.0.showdata", "1.2", KEY, IV)
        self.assertEqual(out.read_bytes(), sample_bytes("1.2.logdata"))
        for down, convert, kind in ((points.showdata_down, points.showdata_converter, "showdata"),
                                    (points.logdata_down, points.logdata_converter, "logdata")):
            down(self.folder / f"1.2.{kind}", out, KEY, IV)
            self.assertEqual(out.read_bytes(), sample_bytes(f"0.0.{kind}"))
            convert(self.folder / f"1.2.{kind}", out, "2.0", KEY, IV)
            self.assertEqual(zuna.open(out, key=KEY, iv=IV).version, "2.0")
        points.copy_attaccas_and_fermatas(self.folder / "1.2.logdata", out, KEY, IV)
        self.assertEqual(zuna.open(out, key=KEY, iv=IV).version, "2.0")

    def test_refuse_by_one_exception(self):
        points = zuna.format_converter
        self.refused(lambda: points.showdata_down_vector(b"none", KEY, IV), "not-encrypted")
        self.refused(lambda: points.showdata_down_vector(sample_bytes("1.2.showdata"), IV, IV), "wrong-key")
        self.refused(lambda: points.showdata_down_vector(sample_bytes("0.0.showdata"), KEY, IV), "bad-content")
        self.refused(lambda: points.showdata_converter_vector(sample_bytes("1.2.showdata"), "3.0", KEY, IV), "unsupported-version")
        self.refused(lambda: points.showdata_down(self.folder / "none", self.folder / "out", KEY, IV), "not-found")


class ThreadsTest(ZunaTest):
    def test_eight_threads_share_a_document(self):
        show, log = sample("0.0.showdata"), sample("0.0.logdata")
        up = show.up(log)

        def work(number):
            for _ in range(20):
                self.assertEqual(show.up(log).to_bytes(), sample_bytes("1.2.showdata"))
                self.assertEqual(up.diff(show), [])
                self.assertEqual(len(show.songs), 3)
                self.assertEqual(up.check(), [])
                self.refused(lambda: zuna.open(b"none"), "not-encrypted")
            return number

        with concurrent.futures.ThreadPoolExecutor(8) as pool:
            self.assertEqual(list(pool.map(work, range(8))), list(range(8)))

    def test_other_threads_run_while_the_library_works(self):
        given = sample("1.2.showdata").to_dict()
        given["songs"][0]["voices"][0]["messages"] = [[i, 0x90, 60, 1] for i in range(300_000)]
        text = json.dumps(given)
        # A busy machine may keep the other thread from running once, but not each time.
        self.assertLess(min(longest_pause_during(lambda: zuna.Document.from_text(text)) for _ in range(5)), 0.5)


def longest_pause_during(work):
    """The longest time in which another thread does not run, as a part of the time that `work` takes."""
    times, done = [time.perf_counter()], threading.Event()

    def tick():
        while not done.is_set():
            times.append(time.perf_counter())

    thread = threading.Thread(target=tick)
    thread.start()
    begin = time.perf_counter()
    try:
        work()
        end = time.perf_counter()
    finally:
        done.set()
        thread.join()
    return max(later - earlier for earlier, later in zip(times, times[1:])) / (end - begin)


class DocumentationTest(ZunaTest):
    def test_examples_do_what_the_page_says(self):
        page = (SOURCE / "docs/python.md").read_text()
        examples = re.findall(r"```python\n(.*?)```\n(?:\n```\n(.*?)```\n)?", page, re.DOTALL)
        self.assertEqual(len(examples), 3)
        for path in EXAMPLES.glob("three-tunes*"):
            shutil.copy(path, self.folder)
        environment = {**os.environ, "PYTHONPATH": os.environ["ZUNA_PACKAGE"]}
        for program, output in examples:
            done = subprocess.run([sys.executable, "-B", "-c", program], cwd=self.folder, env=environment, capture_output=True,
                                  text=True, check=False)
            self.assertEqual((done.stdout, done.stderr, done.returncode), (output, "", 0))
        bad = sample("1.2.showdata").to_dict()
        bad["songs"][0]["timeline"]["tempos"][0]["microseconds"] = 0
        zuna.Document.from_dict(bad, key=KEY, iv=IV).save(self.folder / "bad.showdata")
        (self.folder / "none.showdata").write_bytes(b"")
        done = subprocess.run([sys.executable, "-B", "-c", examples[2][0]], cwd=self.folder, env=environment, capture_output=True,
                              text=True, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stderr, r"bad.showdata: song 1: .*0 us.*\nnone.showdata: is empty")

    def test_stubs_have_what_there_is(self):
        for module in (zuna, zuna.format_converter):
            stub = pathlib.Path(module.__file__).with_suffix(".pyi")
            names = stub_names(ast.parse(stub.read_text()).body)
            for name in module.__all__:
                self.assertIn(name, names if name != "format_converter" else [name])
            self.assertLessEqual({name for name in names if not name.startswith("_")}, set(module.__all__))
            for name, members in names.items():
                if members and not name.startswith("_") and name != "Error":
                    there = {member for member in dir(getattr(module, name)) if not member.startswith("_")}
                    self.assertEqual(members, there, name)

    def test_everything_is_explained(self):
        for module in (zuna, zuna.format_converter):
            for name in module.__all__:
                thing = getattr(module, name)
                if name == "message_type":
                    continue
                self.assertTrue(thing.__doc__, name)
                for member in vars(thing) if isinstance(thing, type) and thing is not zuna.Error else ():
                    if not member.startswith("_"):
                        self.assertTrue(getattr(thing, member).__doc__, f"{name}.{member}")


def stub_names(body):
    """The names that the statements of a stub define, with the members of classes."""
    names = {}
    for statement in body:
        if isinstance(statement, ast.ClassDef):
            names[statement.name] = set(stub_names(statement.body))
            for base in statement.bases:
                names[statement.name] |= names.get(base.id, set())
        elif isinstance(statement, ast.FunctionDef):
            names[statement.name] = set()
        elif isinstance(statement, ast.AnnAssign):
            names[statement.target.id] = set()
    return names


if __name__ == "__main__":
    unittest.main()
