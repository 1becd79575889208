"""Reads and writes text shows and logs, version 2.0 (docs/format-2.md)."""

import json
import re
import uuid

import floats
from current import (BAR_NUMBER, FLOAT, IDENTIFIER, MESSAGES, MOST_BAR_NUMBER, RANGES, RECORDS, TAG_PAIR, TEXT, U8, U16,
                     U32, VALUE, FormatError, Part, UnsupportedVersion, settle)

KINDS = {"show": "showdata", "log": "logdata"}
VERSION = "2.0"
VERSION_FORM = re.compile(r"(0|[1-9][0-9]{0,2})\.(0|[1-9][0-9]{0,2})")
UUID_FORM = re.compile(r"[0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}")
INTEGER = re.compile(r"-?(0|[1-9][0-9]*)")
MOST_EXPONENT = 0x7FFFFFFF
MESSAGE = (U32, U8, U8, U8)
READ_VALUE = (RANGES[VALUE][0], 0xFFFFFFFF)


class Number(str):
    """A number as it is spelled."""


class Object(list):
    """The pairs of an object, of which keys may repeat."""


def parse(data):
    """The JSON value of these bytes: Object, list, str, Number, True, False or None."""
    if not data.startswith(b"{"):
        raise FormatError("does not begin with {")
    try:
        return json.loads(data.decode(), parse_int=Number, parse_float=number, parse_constant=refuse_constant,
                          object_pairs_hook=Object)
    except (ValueError, RecursionError) as error:
        raise FormatError(f"is not JSON: {error}") from error


def number(literal):
    """A number with a point or an exponent."""
    if abs(int(literal.lower().partition("e")[2] or "0")) > MOST_EXPONENT:
        raise FormatError("the exponent of a number is out of range")
    return Number(literal)


def refuse_constant(name):
    raise FormatError(f"{name} is not JSON")


def read(kind, data):
    """The model of these bytes. A text of another version is refused as such only where nothing else is wrong with it."""
    pairs = keyed(parse(data))
    if plain(pairs.pop("kind", None)) != KINDS[kind]:
        raise FormatError("is of another kind")
    version = plain(pairs.pop("fileVersion", None))
    if not is_version(version):
        raise FormatError("the version is not two numbers")
    model = fields_of(RECORDS[kind], pairs)
    if version != VERSION:
        raise UnsupportedVersion(version)
    return model


def is_version(text):
    """Whether a text is two numbers from 0 to 255 without leading zeros."""
    form = VERSION_FORM.fullmatch(text)
    return form is not None and max(map(int, form.groups())) <= 255


def keyed(value):
    """The object as a dictionary."""
    if not isinstance(value, Object):
        raise FormatError("an object is expected")
    found = dict(value)
    if len(found) < len(value):
        raise FormatError("a key is there twice")
    return found


def plain(value):
    if type(value) is not str:
        raise FormatError("a string is expected")
    return value


def entries_of(value, size=None):
    if type(value) is not list or size not in (None, len(value)):
        raise FormatError("a list is expected")
    return value


def fields_of(fields, pairs):
    """The record of a dictionary, in the order of its fields."""
    if set(pairs) != {key for key, _ in fields}:
        raise FormatError("a key is missing or not known")
    return {key: field(kind, pairs[key]) for key, kind in fields}


def field(kind, value):
    if isinstance(kind, Part):
        return fields_of(kind.record, keyed(value))
    if kind == VALUE:
        number = integer(READ_VALUE, value)
        return number - (1 << 32) if number > RANGES[VALUE][1] else number
    if kind in RANGES:
        return integer(RANGES[kind], value)
    if kind == TEXT:
        return text(value)
    if kind == BAR_NUMBER:
        return bar_number(value)
    if kind == FLOAT:
        return single(value)
    if kind == IDENTIFIER:
        return identifier(value)
    if kind == TAG_PAIR:
        return [integer(RANGES[U16], number) for number in entries_of(value, 2)]
    if kind == MESSAGES:
        return [row(MESSAGE, message) for message in entries_of(value)]
    return settle([fields_of(kind.record, keyed(entry)) for entry in entries_of(value)], kind)


def row(kinds, value):
    return [integer(RANGES[kind], number) for kind, number in zip(kinds, entries_of(value, len(kinds)))]


def integer(limits, value):
    least, most = limits
    if type(value) is not Number or not INTEGER.fullmatch(value):
        raise FormatError("an integer is expected")
    if len(value) > len(str(least)) + len(str(most)) or not least <= int(value) <= most:
        raise FormatError("an integer is out of range")
    return int(value)


def text(value):
    if isinstance(value, Object):
        (key, digits), = value if len(value) == 1 else [(None, "")]
        if key != "bytes" or not re.fullmatch("([0-9a-fA-F]{2})*", plain(digits)):
            raise FormatError('a string or {"bytes": hexadecimal digits} is expected')
        return bytes.fromhex(digits)
    try:
        return plain(value).encode()
    except UnicodeEncodeError as error:
        raise FormatError("half of a surrogate pair is no character") from error


def bar_number(value):
    found = text(value)
    if len(found) > MOST_BAR_NUMBER or b"\0" in found:
        raise FormatError("a bar number has at most 7 bytes")
    return found


def single(value):
    if isinstance(value, Object):
        (key, bits), = value if len(value) == 1 else [(None, None)]
        if key != "bits":
            raise FormatError('a number or {"bits": N} is expected')
        return integer(RANGES[U32], bits)
    if type(value) is not Number:
        raise FormatError("a number is expected")
    return floats.from_decimal(value)


def identifier(value):
    if not UUID_FORM.fullmatch(plain(value)):
        raise FormatError("an identifier has 36 characters")
    return bytes.fromhex(value.replace("-", ""))


def write(kind, model):
    """The text form, with the layout of the page."""
    head = [f'"kind": "{KINDS[kind]}"', f'"fileVersion": "{VERSION}"']
    return (spell_object(RECORDS[kind], model, 0, head) + "\n").encode()


def spell_object(fields, model, depth, head=()):
    """An object with each field on a line of its own."""
    lines = [*head, *(f'"{key}": {spell(kind, model[key], depth + 2)}' for key, kind in fields)]
    return "{\n" + ",\n".join(" " * (depth + 2) + line for line in lines) + "\n" + " " * depth + "}"


def spell(kind, value, depth):
    if isinstance(kind, Part):
        return spell_object(kind.record, value, depth)
    if kind in RANGES:
        return str(value)
    if kind in (TEXT, BAR_NUMBER):
        return spell_text(value)
    if kind == FLOAT:
        return floats.to_decimal(value) if floats.finite(value) else f'{{"bits": {value}}}'
    if kind == IDENTIFIER:
        return f'"{spell_identifier(value)}"'
    if kind == TAG_PAIR:
        return f"[{value[0]}, {value[1]}]"
    return spell_list(kind, value, depth)


def spell_list(kind, entries, depth):
    if not entries:
        return "[]"
    if kind == MESSAGES:
        lines = ["[" + ",".join(map(str, message)) + "]" for message in entries]
    elif kind.key:
        lines = [" " * (depth + 2) + spell_object(kind.record, entry, depth + 2) for entry in entries]
    else:
        lines = [" " * (depth + 2) + spell_row(kind.record, entry) for entry in entries]
    return "[\n" + ",\n".join(lines) + "\n" + " " * depth + "]"


def spell_row(fields, entry):
    """A short object, on one line."""
    return "{" + ", ".join(f'"{key}": {spell(kind, entry[key], 0)}' for key, kind in fields) + "}"


def spell_identifier(value):
    return str(uuid.UUID(bytes=value))


def spell_text(value):
    try:
        characters = value.decode()
    except UnicodeDecodeError:
        return f'{{"bytes": "{value.hex()}"}}'
    return '"' + "".join(spell_character(character) for character in characters) + '"'


def spell_character(character):
    short = {'"': '\\"', "\\": "\\\\", "\b": "\\b", "\f": "\\f", "\n": "\\n", "\r": "\\r", "\t": "\\t"}
    if character in short:
        return short[character]
    return f"\\u{ord(character):04x}" if character < " " else character
