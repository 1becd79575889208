"""The records of current shows and logs: fields in the order of docs/format-1.md, with the keys of docs/format-2.md.

A model is a dictionary of these fields. Texts and the identifier are bytes, numbers are integers, a float is the integer
of its 32 bits, lists are lists, and a message is a list of four integers.
"""

import re
from collections import namedtuple


class FormatError(Exception):
    """These bytes are refused."""


class UnsupportedVersion(FormatError):
    """The file states a version that the reader does not know."""


# Numbers by their range. VALUE is the integer that is a value in a log.
U8, U16, U32, S16, VALUE = "u8", "u16", "u32", "s16", "value"
# TIME is the time of an entry in a list, END the end of an entry that has a time.
TIME, END = "time", "end"
TEXT, BAR_NUMBER, IDENTIFIER, TAG_PAIR = "text", "bar number", "identifier", "tag pair"
FLOAT, MESSAGES = "float", "messages"

# Entries of a list are records. No two of them are equal in the field `key`, and they are kept in the order of what
# `order` makes of it.
List = namedtuple("List", ("record", "key", "order"), defaults=(None, None))
Part = namedtuple("Part", "record")

RANGES = {U8: (0, 0xFF), U16: (0, 0xFFFF), U32: (0, 0xFFFFFFFF), TIME: (0, 0xFFFFFFFF), END: (0, 0xFFFFFFFF),
          S16: (-0x8000, 0x7FFF), VALUE: (-0x80000000, 0x7FFFFFFF)}


def by_number(text):
    """Orders song numbers: "2" before "10", "02" before "2"."""
    parts = re.findall(rb"[0-9]+|[^0-9]", text, re.DOTALL)
    return [(ord("0"), int(part)) if part.isdigit() else (ord(part), 0) for part in parts], text


def plainly(value):
    return value


# The bytes that a field takes in the fixed layout.
WIDTHS = {U8: 1, U16: 2, U32: 4, S16: 2, VALUE: 4, TIME: 4, END: 4, FLOAT: 4}
SIGNED = (S16, VALUE)
MODULUS = 1 << 32  # of times

TEMPO = (("time", TIME), ("microseconds", U32))
BARS_BEATS = (("time", TIME), ("barNumber", BAR_NUMBER), ("tag", U8))
KEY = (("time", TIME), ("key", S16), ("mode", U16))
PAGE_NUMBER = (("time", TIME), ("page", U32))
METER = (("time", TIME), ("numerator", U8), ("denominator", U8), ("clocksPerClick", U8), ("notated32PerQuarter", U8))
TIMELINE = (("tempos", List(TEMPO)), ("barsBeats", List(BARS_BEATS)), ("keys", List(KEY)),
            ("pageNumbers", List(PAGE_NUMBER)), ("meters", List(METER)))
VOICE = (("trackNumber", U16), ("name", TEXT), ("reserved", U16), ("messages", MESSAGES))
SONG = (("songNumber", TEXT), ("songName", TEXT), ("division", U16), ("songLength", U32), ("timeline", Part(TIMELINE)),
        ("voices", List(VOICE, "trackNumber", plainly)))
SHOW = (("showName", TEXT), ("songs", List(SONG, "songNumber", by_number)))

PAIRED_EVENT = (("start", TIME), ("end", END), ("label", TEXT), ("value", VALUE))
TEMPO_SCALE = (("start", TIME), ("end", END), ("label", TEXT), ("value", FLOAT))
MARKER = (("position", TIME), ("label", TEXT), ("text", TEXT))
CAESURA = (("position", TIME), ("label", TEXT), ("secondWord", U32))
SONG_LOG = (("songNumber", TEXT), ("songName", TEXT), ("division", U16), ("songLength", U32), ("attacca", U8),
            ("vamps", List(PAIRED_EVENT)), ("repeats", List(PAIRED_EVENT)), ("cuts", List(PAIRED_EVENT)),
            ("transposes", List(PAIRED_EVENT)), ("tempoScales", List(TEMPO_SCALE)), ("clicks", List(PAIRED_EVENT)),
            ("fermatas", List(PAIRED_EVENT)), ("markers", List(MARKER)), ("caesuras", List(CAESURA)))
LOG = (("showName", TEXT), ("logLabel", TEXT), ("identifier", IDENTIFIER), ("tagPair", TAG_PAIR),
       ("songLogs", List(SONG_LOG, "songNumber", plainly)))

RECORDS = {"show": SHOW, "log": LOG}
MOST_BAR_NUMBER = 7


def settle(entries, kind):
    """The entries of a list as a model has them; refuses two of the same key."""
    if not kind.key:
        return entries
    keys = [entry[kind.key] for entry in entries]
    if len(set(keys)) < len(keys):
        raise FormatError(f"two entries have the same {kind.key}")
    return sorted(entries, key=lambda entry: kind.order(entry[kind.key]))
