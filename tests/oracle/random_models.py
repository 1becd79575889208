"""Random models of every kind, with the edges of every range, and texts of any bytes."""

import floats
import version0
from current import (BAR_NUMBER, FLOAT, IDENTIFIER, MESSAGES, MOST_BAR_NUMBER, RANGES, RECORDS, TAG_PAIR, TEXT, TIME, U8,
                     U16, U32, Part, settle)

SONG_NUMBERS = [b"1", b"2", b"10", b"2a", b"2b", b"02", b"002", b"12A", b"12a", b"", b" 2", b"-1", b"+2", b"2.5", b"\xff",
                b"2\0", b"\xc3\xa4", b"4294967296", b"18446744073709551616", b"99999999999999999999a"]
CHARACTERS = 'ab Z09"\\/\b\f\n\r\t\0\x01\x1f\x7f\x80\xe9\xdf\u2028\u266d\ud7ff\ue000\ufeff\uffff\U0001d11e\U0010ffff'
# Bytes that are not UTF-8: a lone continuation, overlong forms, surrogates, above U+10FFFF, cut sequences.
MALFORMED = [b"\x80", b"\xc0\x80", b"\xc1\xbf", b"\xe0\x80\x80", b"\xed\xa0\x80", b"\xed\xbf\xbf", b"\xf4\x90\x80\x80",
             b"\xf8\x88\x80\x80\x80", b"\xff", b"\xe2\x99", b"\xf0\x9d\x84", b"\xc3"]
FLOATS = [0, 0x80000000, 1, 0x80000001, 0x007FFFFF, 0x00800000, 0x3F800000, 0x3FC00000, 0x3EAAAAAB, 0x7F7FFFFF, 0xFF7FFFFF,
          0x7F800000, 0xFF800000, 0x7FC00000, 0x7F800001, 0xFFFFFFFF, 0x4B800000, 0x4B000001, 0x60AD78EC, 0x5A000000]
MOST_LEGACY_TEXT = 255


class Models:
    """Random values from one source of random numbers."""

    def __init__(self, random):
        self.random = random

    def text(self, most=300):
        random = self.random
        choice = random.random()
        if choice < 0.2:
            value = b""
        elif choice < 0.5:
            value = "".join(random.choices(CHARACTERS, k=random.randrange(1, 6))).encode()
        elif choice < 0.6:
            value = random.choice(MALFORMED).join([b"a", b"\xc3\xa9", b""][:random.randrange(2, 4)])
        elif choice < 0.65:
            value = random.randbytes(random.randrange(1, 10))
        elif choice < 0.68:
            value = b"x" * random.choice([127, 128, 255, 256, 300])
        else:
            value = random.choice([b"Piano", b"Drums", b"Drum Kit", b"Go", b"1", b"a b"])
        return value[:most]

    def number(self, least, most):
        random = self.random
        choice = random.random()
        if choice < 0.5:
            return min(most, random.randrange(0, 128))
        if choice < 0.75:
            return random.randint(least, most)
        edges = [least, least + 1, most - 1, most, 0, *(edge for bits in (7, 8, 14, 15, 16, 21, 28, 31)
                                                       for edge in ((1 << bits) - 1, 1 << bits))]
        return random.choice([edge for edge in edges if least <= edge <= most])

    def float(self):
        random = self.random
        choice = random.random()
        if choice < 0.3:
            return random.choice(FLOATS)
        if choice < 0.4:
            return random.randrange(512) << 23  # a power of two, or an infinity
        if choice < 0.6:
            return floats.from_decimal(f"{random.randrange(100000)}e{random.randrange(-12, 12)}")
        return random.getrandbits(32)

    def count(self):
        return self.random.choice([0, 0, 0, 1, 1, 2, 3, 5])

    def song_number(self):
        return self.random.choice(SONG_NUMBERS) if self.random.random() < 0.7 else self.text(20)

    def current(self, kind):
        return self.record(RECORDS[kind])

    def record(self, fields):
        return {key: self.song_number() if key == "songNumber" else self.field(kind) for key, kind in fields}

    def field(self, kind):
        if isinstance(kind, Part):
            return self.record(kind.record)
        if kind in RANGES:
            return self.number(*RANGES[kind])
        if kind == TEXT:
            return self.text()
        if kind == BAR_NUMBER:
            return self.text(MOST_BAR_NUMBER).replace(b"\0", b"")
        if kind == FLOAT:
            return self.float()
        if kind == IDENTIFIER:
            return self.random.randbytes(16)
        if kind == TAG_PAIR:
            return [self.field(U16), self.field(U16)]
        if kind == MESSAGES:
            return self.messages()
        entries = [self.record(kind.record) for _ in range(self.count())]
        return settle(list({entry[kind.key]: entry for entry in entries}.values()) if kind.key else entries, kind)

    def messages(self):
        time, status, found = 0, 0x90, []
        for _ in range(self.count() * self.count()):
            time = (time + self.random.randrange(480)) if self.random.random() < 0.9 else self.field(TIME)
            status = status if self.random.random() < 0.6 else self.field(U8)
            found.append([time & 0xFFFFFFFF, status, self.field(U8), self.field(U8)])
        return found

    def legacy_field(self, kind):
        if kind == version0.TEXT:
            return self.text(MOST_LEGACY_TEXT)
        return self.number(*{version0.BYTE: RANGES[U8], version0.SIGNED_BYTE: (-128, 127), version0.HALF: RANGES[U16],
                             version0.WORD: RANGES[U32]}[kind])

    def sequences(self, table):
        found = {}
        for key, kinds in table.values():
            records = [[self.legacy_field(kind) for kind in kinds] for _ in range(self.count())]
            found[key] = records if len(kinds) > 1 else [record[0] for record in records]
        return found

    def legacy_show(self):
        return {"songs": dict(enumerate(self.legacy_song() for _ in range(self.count())))}

    def legacy_song(self):
        tracks = [self.field(U8) for _ in range(self.count())]
        tracks = tracks if self.random.random() < 0.1 else sorted(set(tracks))
        return {**self.legacy_song_start(), "division": self.field(U16),
                "tracks": [{"trackId": track, "name": self.legacy_text(), "events": self.legacy_events()} for track in tracks],
                "timeline": {"name": self.legacy_text(), "songLength": self.field(U32), **self.sequences(version0.TIMELINE)}}

    def legacy_song_start(self):
        return {"songNumber": self.song_number(), "songName": self.legacy_text(), "songLength": self.field(U32)}

    def legacy_text(self):
        return self.text(MOST_LEGACY_TEXT)

    def legacy_events(self):
        return [[self.field(kind) for kind in (U32, U32, U8, U8, U8)] for _ in range(self.count())]

    def legacy_log(self):
        songs = ({**self.legacy_song_start(), **self.sequences(version0.SONG_LOG)} for _ in range(1 + self.count()))
        return {"identifier": self.random.randbytes(16), "logLabel": self.legacy_text(), "showName": self.legacy_text(),
                "logTagPair": [self.field(U16), self.field(U16)], "songLogs": dict(enumerate(songs))}
