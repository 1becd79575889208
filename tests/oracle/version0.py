"""Reads and writes legacy shows and logs, version 0.0 (docs/format-0.md).

The models are those of README.md, with texts and the identifier as bytes and songs by their number. A writer does not look
at what the songs are found by, so that it can write two of the same number.
"""

import struct

from current import FormatError

BYTE, SIGNED_BYTE, HALF, WORD, FLOAT, TEXT = "<B", "<b", "<H", "<I", "<I", "text"  # a float is its bits

# The sequences of a timeline by their code: the key in the model, and the fields of a record after its frame.
TIMELINE = {
    ord("F"): ("tempos", (WORD, FLOAT, BYTE, BYTE, HALF)),
    ord("G"): ("barsBeats", (WORD, TEXT, BYTE)),
    ord("H"): ("keys", (WORD, SIGNED_BYTE, BYTE)),
    ord("I"): ("pageNumbers", (WORD, HALF)),
    ord("J"): ("meters", (WORD, BYTE, BYTE)),
}
PAIRED = (WORD, WORD, SIGNED_BYTE)
# The sequences of a song log, in the order of the writer.
SONG_LOG = {
    ord("B"): ("cuts", PAIRED),
    ord("@"): ("vamps", PAIRED),
    ord("A"): ("repeats", PAIRED),
    ord("L"): ("clicks", PAIRED),
    ord("D"): ("tempoScales", (WORD, WORD, FLOAT)),
    ord("C"): ("transposes", PAIRED),
    ord("N"): ("caesuras", (WORD,)),
    ord("E"): ("scoreMarkers", (WORD, TEXT)),
}
MODULUS = 1 << 32  # of the positions at which sequences end
CHECKED = b"@ABCDL"  # the records whose own code is compared with that of their sequence
FRAMELESS = b"E"
EVENT = struct.Struct("<IIBBBB")
RECORD_LENGTH_LACKS = 4  # the record length of a song log is that much less than the bytes of its sequences


class Reader:
    """A position in the bytes of a file."""

    def __init__(self, data):
        self.data, self.position = data, 0

    def take(self, size):
        end = self.position + size
        if end > len(self.data):
            raise FormatError("the file ends within a field")
        taken, self.position = self.data[self.position:end], end
        return taken

    def field(self, kind):
        if kind == TEXT:
            return self.take(self.field(BYTE))
        return struct.unpack(kind, self.take(struct.calcsize(kind)))[0]

    def fields(self, kinds):
        return [self.field(kind) for kind in kinds]

    def magic(self, expected):
        if self.take(len(expected)) != expected:
            raise FormatError(f"{expected} is missing")

    def sequence(self, table):
        """The key of the next sequence and its records."""
        code = self.field(BYTE)
        if code not in table:
            raise FormatError("a sequence of this code is not known")
        key, kinds = table[code]
        length = self.field(WORD)
        end, records = self.end_after(length), []
        while length and not (records and self.position >= end):
            if code not in FRAMELESS and self.frame() != code and code in CHECKED:
                raise FormatError("a record has another code than its sequence")
            record = self.fields(kinds)
            records.append(record if len(record) > 1 else record[0])
        return key, records

    def end_after(self, length):
        return (self.position + length) % MODULUS

    def frame(self):
        code, _length = self.fields((BYTE, HALF))
        return code


def read_show(data):
    """The model of a show."""
    reader = Reader(data)
    songs = [read_song(reader) for _ in range(reader.field(BYTE))]
    kept = {song["songNumber"]: song for song, _ in songs}
    if any(without_track for song, without_track in songs if kept[song["songNumber"]] is song):
        raise FormatError("an event has no track")
    return {"songs": kept}


def read_song(reader):
    """A song, and how many of its events have no track."""
    _record_length, number, name, division, length = reader.fields((WORD, TEXT, TEXT, HALF, WORD))
    tracks = {}
    for _ in range(reader.field(BYTE)):
        track, title = reader.fields((BYTE, TEXT))
        tracks[track] = {"trackId": track, "name": title, "events": []}
    without_track = 0
    for _ in range(reader.field(WORD)):
        *event, track = EVENT.unpack(reader.take(EVENT.size))
        if track in tracks:
            tracks[track]["events"].append(event)
        else:
            without_track += 1
    song = {"songNumber": number, "songName": name, "division": division, "songLength": length,
            "tracks": [tracks[track] for track in sorted(tracks)], "timeline": read_timeline(reader)}
    return song, without_track


def read_timeline(reader):
    reader.magic(b"TLMN")
    name, song_length, body_length = reader.fields((TEXT, WORD, WORD))
    timeline = {"name": name, "songLength": song_length, **{key: [] for key, _ in TIMELINE.values()}}
    end = reader.end_after(body_length)
    while True:
        timeline.update([reader.sequence(TIMELINE)])
        if reader.position >= end:
            return timeline


def read_log(data):
    """The model of a log."""
    reader = Reader(data)
    reader.magic(b"ZUNA")
    length = reader.field(WORD)
    end = reader.position + length
    if end != len(data):
        raise FormatError("the log has another length")
    identifier = reader.take(16)
    label, name, *tags = reader.fields((TEXT, TEXT, HALF, HALF))
    song_logs = {}
    while True:
        song_log = read_song_log(reader)
        song_logs[song_log["songNumber"]] = song_log
        if reader.position >= end:
            return {"identifier": identifier, "logLabel": label, "showName": name, "logTagPair": tags,
                    "songLogs": song_logs}


def read_song_log(reader):
    record_length, number, name, length = reader.fields((WORD, TEXT, TEXT, WORD))
    song_log = {"songNumber": number, "songName": name, "songLength": length,
                **{key: [] for key, _ in SONG_LOG.values()}}
    begin = reader.position
    while True:
        song_log.update([reader.sequence(SONG_LOG)])
        if reader.position - begin >= record_length:
            return song_log


def spell_fields(kinds, values):
    return b"".join(bytes([len(value)]) + value if kind == TEXT else struct.pack(kind, value)
                    for kind, value in zip(kinds, values))


def spell_sequence(code, kinds, records):
    body = b""
    for record in records:
        payload = spell_fields(kinds, record if isinstance(record, list) else [record])
        body += payload if code in FRAMELESS else struct.pack("<BH", code, len(payload)) + payload
    return struct.pack("<BI", code, len(body)) + body


def spell_sequences(table, model, arrange):
    return b"".join(arrange([spell_sequence(code, kinds, model[key]) for code, (key, kinds) in table.items()]))


def write_show(model, arrange=list):
    """The bytes of a show; `arrange` may change the list of the events of a song and of the sequences of a timeline."""
    songs = model["songs"].values()
    return bytes([len(songs)]) + b"".join(spell_song(song, arrange) for song in songs)


def spell_song(song, arrange):
    tracks = song["tracks"]
    events = arrange([EVENT.pack(*event, track["trackId"]) for track in tracks for event in track["events"]])
    body = spell_fields((TEXT, TEXT, HALF, WORD, BYTE),
                        (song["songNumber"], song["songName"], song["division"], song["songLength"], len(tracks)))
    body += b"".join(spell_fields((BYTE, TEXT), (track["trackId"], track["name"])) for track in tracks)
    body += struct.pack("<I", len(events)) + b"".join(events)
    timeline, sequences = song["timeline"], spell_sequences(TIMELINE, song["timeline"], arrange)
    return (struct.pack("<I", len(body)) + body + b"TLMN"
            + spell_fields((TEXT, WORD, WORD), (timeline["name"], timeline["songLength"], len(sequences))) + sequences)


def write_log(model, arrange=list):
    """The bytes of a log; `arrange` may change the list of the sequences of a song log."""
    body = model["identifier"] + spell_fields((TEXT, TEXT, HALF, HALF),
                                              (model["logLabel"], model["showName"], *model["logTagPair"]))
    body += b"".join(spell_song_log(song_log, arrange) for song_log in model["songLogs"].values())
    return b"ZUNA" + struct.pack("<I", len(body)) + body


def spell_song_log(song_log, arrange):
    sequences = spell_sequences(SONG_LOG, song_log, arrange)
    return spell_fields((WORD, TEXT, TEXT, WORD), (len(sequences) - RECORD_LENGTH_LACKS, song_log["songNumber"],
                                                   song_log["songName"], song_log["songLength"])) + sequences
