"""Tells the version of a show or log from its first bytes, as docs/format-1.md and docs/format-2.md describe it."""

import json
import re

import version1
from current import FormatError
from version2 import KINDS, Number, is_version, number, refuse_constant

LEGACY = "0.0"
DEEPEST = 32  # objects and lists inside each other, the outer object included
BLANK = re.compile(r"[ \t\r\n]*")
DECODER = json.JSONDecoder(parse_int=Number, parse_float=number, parse_constant=refuse_constant)


def read(data):
    """What both probes give."""
    return {KINDS[kind]: version_of(kind, data) for kind in KINDS}


def version_of(kind, data):
    if data[:4] == version1.MAGIC[kind] and len(data) >= version1.HEADER.size:
        return f"{data[8]}.{data[9]}"
    return text_version(kind, data) if data.startswith(b"{") else LEGACY


def text_version(kind, data):
    """The version that a text form states; what follows kind and version is not looked at."""
    found = {}
    for key, value in first_pairs(data.decode(errors="surrogateescape")):
        if key in ("kind", "fileVersion") and type(value) is str:
            found[key] = value
        if len(found) == 2:
            break
    version = found.get("fileVersion", "")
    return version if found.get("kind") == KINDS[kind] and is_version(version) else LEGACY


def first_pairs(characters):
    """The keys of the outer object and their values, up to the first place that is not JSON."""
    at = 0
    try:
        while characters[at] == ("," if at else "{"):
            key, at = DECODER.raw_decode(characters, BLANK.match(characters, at + 1).end())
            at = BLANK.match(characters, at).end()
            if not isinstance(key, str) or characters[at] != ":":
                return
            value, at = DECODER.raw_decode(characters, BLANK.match(characters, at + 1).end())
            json.dumps([key, value], ensure_ascii=False).encode()  # fails where they are not UTF-8
            if depth(value) >= DEEPEST:
                return
            yield key, value
            at = BLANK.match(characters, at).end()
    except (FormatError, ValueError, IndexError, RecursionError):
        return


def depth(value):
    """How many objects and lists are inside each other."""
    if not isinstance(value, (dict, list)):
        return 0
    return 1 + max(map(depth, value.values() if isinstance(value, dict) else value), default=0)
