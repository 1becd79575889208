#!/usr/bin/env python3
"""Makes the sample show of three traditional tunes and its log, from the melodies and edits below.

    make_samples.py ZUNA_CONVERT FOLDER

Writes the show and the log at 1.2 and at 0.0, all encrypted with the key file, and one MIDI file for each tune. The
encryption is deterministic, so the same melodies and edits always give the same bytes.
"""

import json
import pathlib
import subprocess
import sys

TICKS = 480  # of a quarter note
KEY_FILE = "# The key of the sample files. It is published, so it protects nothing.\n" \
           "key = 7a756e612d73616d706c652d6b657921\niv = 73616d706c652d76\n"

# A note is its name, octave and length in units of the tune; "-" is a rest. A bar ends at "|".
TUNES = [
    {
        "songNumber": "1", "songName": "Auld Lang Syne", "meter": (4, 4, 24), "bpm": 92, "key": (-1, 0), "unit": TICKS,
        "voices": [("Fiddle", 40), ("Bass", 32)],
        "melody": """C4:1 | F4:1.5 F4:.5 F4:1 A4:1 | G4:1.5 F4:.5 G4:1 A4:1 | F4:1.5 F4:.5 A4:1 C5:1 | D5:3 D5:1 |
                     C5:1.5 A4:.5 A4:1 F4:1 | G4:1.5 F4:.5 G4:1 A4:1 | F4:1.5 D4:.5 D4:1 C4:1 | F4:3""",
        "bass": "-:1 | F2:2 C3:2 | C2:2 E2:2 | F2:2 A2:2 | B2b:4 | F2:2 A2:2 | C2:2 E2:2 | B2b:2 C2:2 | F2:3",
        "drums": [(0, 36), (2, 38)],
    },
    {
        "songNumber": "2", "songName": "Greensleeves", "meter": (6, 8, 36), "bpm": 54, "key": (0, 1), "unit": TICKS // 2,
        "voices": [("Flute", 73), ("Lute", 24)],
        "melody": """A4:1 | C5:2 D5:1 E5:1.5 F5:.5 E5:1 | D5:2 B4:1 G4:1.5 A4:.5 B4:1 | C5:2 A4:1 A4:1.5 G4#:.5 A4:1 |
                     B4:2 G4#:1 E4:2 A4:1 | C5:2 D5:1 E5:1.5 F5:.5 E5:1 | D5:2 B4:1 G4:1.5 A4:.5 B4:1 |
                     C5:1.5 B4:.5 A4:1 G4#:1.5 F4#:.5 G4#:1 | A4:5""",
        "bass": """-:1 | A2:3 C3:3 | G2:3 B2:3 | A2:3 F2:3 | E2:6 | A2:3 C3:3 | G2:3 B2:3 | A2:3 E2:3 | A2:5""",
        "drums": [],
    },
    {
        "songNumber": "2a", "songName": "Scarborough Fair", "meter": (3, 4, 24), "bpm": 110, "key": (0, 1), "unit": TICKS,
        "voices": [("Voice", 53), ("Harp", 46)],
        "melody": """D4:2 D4:1 | A4:2 A4:1 | E4:1.5 F4:.5 E4:1 | D4:3 | -:1 A4:1 C5:1 | D5:2 C5:1 | A4:1 B4:1 G4:1 |
                     A4:3 | -:2 D5:1 | D5:2 D5:1 | C5:2 A4:1 | A4:1 G4:1 F4:1 | E4:1 C4:2 | D4:2 A4:1 | G4:2 F4:1 |
                     E4:1 D4:1 C4:1 | D4:3""",
        "bass": """D3:3 | D3:3 | C3:3 | D3:3 | D3:3 | F3:3 | F3:1 G3:2 | D3:3 | D3:3 | D3:3 | F3:3 | F3:3 | C3:3 | D3:3 |
                   G3:3 | C3:3 | D3:3""",
        "drums": [(0, 36), (1, 42), (2, 42)],
    },
]

# What the musicians do to each tune: (start, end, value) of edits that reach over a part, in ticks; markers and
# caesuras stand at one place.
EDITS = {
    "1": {"repeats": [(480, 8160, 2)], "transposes": [(8160, 15840, 2)], "clicks": [(0, 480, 1)],
          "markers": [(480, "A"), (8160, "B")], "caesuras": [15360]},
    "2": {"vamps": [(240, 1680, 4)], "tempoScales": [(6000, 11760, 0.875)], "markers": [(240, "Lute alone")]},
    "2a": {"cuts": [(10080, 12960, 1)], "caesuras": [5760, 21600]},
}

PITCHES = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}
ACCIDENTALS = {"": 0, "#": 1, "b": -1}


def pitch(name):
    """The MIDI note number of a name such as C4 (60), G4# or B2b."""
    return 12 * (int(name[1]) + 1) + PITCHES[name[0]] + ACCIDENTALS[name[2:]]


def notes(line, unit):
    """(time, length, note number) of every note of a line, in ticks."""
    time = 0
    for word in line.replace("|", " ").split():
        name, length = word.split(":")
        ticks = round(float(length) * unit)
        if name != "-":
            yield time, ticks, pitch(name)
        time += ticks


def bar_starts(line, unit):
    """The time of every bar; a pickup before the first full one is bar 0."""
    time = 0
    for bar in line.split("|"):
        yield time
        time += sum(round(float(word.split(":")[1]) * unit) for word in bar.split())


def messages(channel, program, line, velocity):
    """A program change, and a note on and a note off for every note."""
    found = [[0, 0xC0 | channel, program, 0]]
    for time, length, number in line:
        found.append([time, 0x90 | channel, number, velocity])
        found.append([time + length - 10, 0x80 | channel, number, 64])
    return found


def voice(number, name, channel_messages):
    return {"trackNumber": number, "name": name, "reserved": 0xFFFF, "messages": channel_messages}


def voices(tune):
    """Melody and bass as voices 1 and 2, the drums as voice 9; each voice on the channel of its number."""
    lines = [notes(tune["melody"], tune["unit"]), notes(tune["bass"], tune["unit"])]
    found = []
    for number, ((name, program), line) in enumerate(zip(tune["voices"], lines), start=1):
        found.append(voice(number, name, messages(number, program, line, 96 - 16 * number)))
    if tune["drums"]:
        starts = list(bar_starts(tune["melody"], tune["unit"]))[1:]
        hits = [(start + beat * TICKS, 60, number) for start in starts for beat, number in tune["drums"]]
        found.append(voice(9, "Drum Kit", messages(9, 0, hits, 72)))
    return found


def song(tune):
    numerator, denominator, clocks = tune["meter"]
    starts = list(bar_starts(tune["melody"], tune["unit"]))
    first = 0 if len(tune["melody"].split("|")[0].split()) == 1 else 1  # a pickup is bar 0
    return {
        "songNumber": tune["songNumber"], "songName": tune["songName"], "division": TICKS,
        "songLength": starts[-1] + numerator * 4 * TICKS // denominator,
        "timeline": {
            "tempos": [{"time": 0, "microseconds": round(1.44e9 / (tune["bpm"] * clocks))}],
            "barsBeats": [{"time": time, "barNumber": str(bar), "tag": 0} for bar, time in enumerate(starts, first)],
            "keys": [{"time": 0, "key": tune["key"][0], "mode": tune["key"][1]}],
            "pageNumbers": [{"time": 0, "page": 1}, {"time": starts[len(starts) // 2], "page": 2}],
            "meters": [{"time": 0, "numerator": numerator, "denominator": denominator, "clocksPerClick": clocks,
                        "notated32PerQuarter": 8}],
        },
        "voices": voices(tune),
    }


PAIRED = ("vamps", "repeats", "cuts", "transposes", "tempoScales", "clicks", "fermatas")


def song_log(tune):
    edits = EDITS[tune["songNumber"]]

    def paired(kind):
        return [{"start": start, "end": end, "label": "", "value": value} for start, end, value in edits.get(kind, [])]

    whole = song(tune)
    return {
        **{key: whole[key] for key in ("songNumber", "songName", "division", "songLength")}, "attacca": 0,
        **{kind: paired(kind) for kind in PAIRED},
        "markers": [{"position": time, "label": "", "text": text} for time, text in edits.get("markers", [])],
        "caesuras": [{"position": time, "label": "", "secondWord": 0} for time in edits.get("caesuras", [])],
    }


def main(tool, folder):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    key_file = folder / "three-tunes.key"
    key_file.write_text(KEY_FILE)

    def convert(*arguments, data=None):
        command = [tool, *map(str, arguments), "--quiet", "--key-file", str(key_file)]
        return subprocess.run(command, check=True, input=data, stdout=subprocess.PIPE).stdout

    def write(document):
        kind = document["kind"]
        text = convert("encrypt", "-", "-o", "-", data=json.dumps(document).encode())
        (folder / f"three-tunes-1.2.{kind}").write_bytes(convert("convert", "-", "-o", "-", "--to", "1.2", data=text))
        (folder / f"three-tunes-0.0.{kind}").write_bytes(convert("down", "-", "-o", "-", data=text))

    name = {"fileVersion": "2.0", "showName": "Three Tunes"}
    write({"kind": "showdata", **name, "songs": [song(tune) for tune in TUNES]})
    write({"kind": "logdata", **name, "logLabel": "rehearsal", "identifier": "00010203-0405-0607-0809-0a0b0c0d0e0f",
           "tagPair": [0, 0], "songLogs": [song_log(tune) for tune in TUNES]})
    (folder / "midi").mkdir(exist_ok=True)
    convert("midi", "export", folder / "three-tunes-1.2.showdata", "--out-dir", folder / "midi", "--force")


main(*sys.argv[1:])
