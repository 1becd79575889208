"""Changes files: their bytes, with lengths and checksums mended afterwards, or the values of a text form."""

import copy
import struct

import version1
import version2
from version2 import Number, Object

BYTES = (0, 1, 0x7F, 0x80, 0xFF)
WORDS = (0, 1, 2, 0x7F, 0xFF, 0x100, 0x7FFF, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF)
INTEGERS = ("0", "-0", "1", "-1", "7", "127", "128", "255", "256", "-128", "32767", "32768", "-32768", "-32769", "65535",
            "65536", "2147483647", "2147483648", "-2147483648", "-2147483649", "4294967295", "4294967296",
            "9223372036854775807", "9223372036854775808", "-9223372036854775809", "18446744073709551615",
            "18446744073709551616", "1" + "0" * 400)
# Near the halves between floats, near the ends of their range, and with more digits or zeros than a double holds.
DECIMALS = ("1.0", "1e0", "0.5", "-0.0", "0e5", "1E5", "1e+2", "-1e-2", "0.1", "16777217", "16777216.99999999999",
            "16777217.0000000000000000000000000001", "3.4028234663852886e38", "3.4028235677973366e38",
            "340282356779733661637539395458142568447.9999", "340282356779733661637539395458142568448", "1e38", "1e39",
            "1e400", "-1e400", "1e-400", "1e2147483647", "1e-2147483647", "1e-2147483648", "0e2147483648",
            "1e-99999999999999999999", "1.401298464324817e-45", "7.006492321624085e-46", "7.0064923216240853e-46",
            "7.0064923216240854e-46", "1e-46", "5e-324", "0." + "0" * 400 + "1e401", "1" + "0" * 300 + "e-300",
            "1.17549435e-38")
NO_NUMBERS = ("00", "01", "+1", "1.", ".5", "0x1", "1e", "1e+", "NaN", "Infinity", "-Infinity", "-", "--1", "1 2")
PIECE = 1 << 16
BAR_NUMBERS = (b"", b"1234567", b"12345678", b"1\0", b"\0", b"\0" * 7, b"a\0b", b"1234567\0", b"\xff" * 7)
KEYS = ("kind", "fileVersion", "showName", "songs", "songNumber", "label", "value", "time", "bytes", "bits", "", "Kind")
STRINGS = ("", "showdata", "logdata", "2.0", "1.2", "2.1", "3.0", "02.0", "2.00", "2", "2.0 ", "256.0", "255.255", "2.-0",
           "2.0.0", "1234567", "12345678", "\0", "a\0b", "ÄÖÜß", "♭♭", "♭♭♭", "00112233-4455-6677-8899-aabbccddeeff",
           "00112233-4455-6677-8899-AABBCCDDEEFF", "0011223344556677-8899-aabbccddeeff0",
           "00112233445566778899aabbccddeeff", "{00112233-4455-6677-8899-aabbccddee}", "g0112233-4455-6677-8899-aabbccddeeff")
DIGITS = ("", "0", "00", "ff", "FF", "fF", "0g", "ff ", " ff", "f f", "0x41", "6100", "c3a4", "c3", "31323334353637",
          "3132333435363738")


def change_bytes(random, data, others=(b"",)):
    """The bytes with one to three small changes; `others` are files to take pieces from."""
    data = bytearray(data)
    for _ in range(random.choice((1, 1, 1, 2, 3))):
        random.choice(BYTE_CHANGES)(random, data, others)
    return bytes(data)


def place(random, data):
    return random.randrange(len(data) + 1)


def piece(random, data):
    begin = place(random, data)
    return slice(begin, min(len(data), begin + random.choice((1, 1, 2, 4, 8, random.randrange(1, 200)))))


def flip(random, data, _others):
    if data:
        data[random.randrange(len(data))] ^= 1 << random.randrange(8)


def set_byte(random, data, _others):
    if data:
        data[random.randrange(len(data))] = random.choice((*BYTES, random.randrange(256)))


def add_to_byte(random, data, _others):
    if data:
        at = random.randrange(len(data))
        data[at] = (data[at] + random.choice((-1, 1))) % 256


def set_number(random, data, _others):
    number = random.choice((*WORDS, len(data), random.getrandbits(32))).to_bytes(8, "little")[:random.choice((2, 4))]
    begin = place(random, data)
    data[begin:begin + len(number)] = number


def insert(random, data, _others):
    begin = place(random, data)
    size = random.choice((1, 2, 4, 8))
    data[begin:begin] = random.choice((bytes(size), random.randbytes(size)))


def delete(random, data, _others):
    del data[piece(random, data)]


def repeat(random, data, _others):
    taken = data[piece(random, data)]
    begin = random.choice((place(random, data), len(data)))
    data[begin:begin] = taken


def cut(random, data, _others):
    del data[place(random, data):]


def splice(random, data, others):
    other = random.choice(others)
    data[piece(random, data)] = other[piece(random, other)]


BYTE_CHANGES = (flip, flip, set_byte, set_byte, add_to_byte, set_number, set_number, insert, delete, repeat, cut,
                splice)


def mend(data):
    """The file with the size and the checksum that its bytes need, where it has them."""
    if data[:4] == b"ZUNA" and len(data) >= 8:
        return data[:4] + struct.pack("<I", len(data) - 8) + data[8:]
    if data[:4] not in version1.MAGIC.values() or len(data) < version1.HEADER.size:
        return data
    version = tuple(data[8:10])
    end = len(data) - version1.checksum_size(version)
    kind = "show" if data[:4] == version1.MAGIC["show"] else "log"
    return version1.frame(kind, version, data[version1.HEADER.size:max(end, version1.HEADER.size)])


def change_model(random, model):
    """A model of a current file with an entry that is there twice, or with a bar number that may be none."""
    model = copy.deepcopy(model)
    lists = [found for found in parts_of(model) if isinstance(found, list) and found]
    bars = [found for found in parts_of(model) if isinstance(found, dict) and "barNumber" in found]
    if bars and random.random() < 0.5:
        random.choice(bars)["barNumber"] = random.choice(BAR_NUMBERS)
    elif lists:
        inside = random.choice(lists)
        inside.insert(random.randrange(len(inside) + 1), copy.deepcopy(random.choice(inside)))
    return model


def parts_of(model):
    """The dictionaries and the lists of dictionaries in a model."""
    if isinstance(model, dict):
        yield model
        for value in model.values():
            yield from parts_of(value)
    elif isinstance(model, list) and model and isinstance(model[0], dict):
        yield model
        for value in model:
            yield from parts_of(value)


def change_values(random, data):
    """The text form with one to three changed values, spelled in another way."""
    tree = version2.parse(data)
    for _ in range(random.choice((1, 1, 1, 2, 3))):
        change_value(random, tree)
    return respell(random, tree)


def change_value(random, tree):
    containers = list(containers_of(tree))
    inside = random.choice(containers)
    if not inside:
        inside.append((random.choice(KEYS), any_value(random)) if isinstance(inside, Object) else any_value(random))
        return
    at = random.randrange(len(inside))
    action = random.random()
    if action < 0.1:
        del inside[at]
    elif action < 0.2:
        inside.insert(random.randrange(len(inside) + 1), inside[at])
    elif action < 0.3:
        random.shuffle(inside)
    elif isinstance(inside, Object):
        key, value = inside[at]
        inside[at] = (random.choice(KEYS), value) if action < 0.35 else (key, any_value(random, value))
    else:
        inside[at] = any_value(random, inside[at])


def containers_of(tree):
    yield tree
    for entry in tree:
        value = entry[1] if isinstance(tree, Object) else entry
        if isinstance(value, list):
            yield from containers_of(value)


def any_value(random, before=None):
    """A value, most often of the same type as the one before."""
    kind = type(before) if random.random() < 0.8 else random.choice((Number, str, Object, list, bool))
    if kind is Number:
        return any_number(random)
    if kind is str:
        return random.choice(STRINGS)
    if kind is Object:
        return Object([random.choice((("bytes", random.choice(DIGITS)), ("bits", any_number(random))))]
                      * random.choice((1, 1, 1, 0, 2)))
    if kind is list:
        return [any_number(random) for _ in range(random.randrange(5))]
    return random.choice((True, False, None))


def any_number(random):
    return Number(random.choice(random.choices((INTEGERS, DECIMALS, NO_NUMBERS), (10, 5, 1))[0]))


def pad(random, data):
    """A text form with so much white space that one of its places is near the end of a piece in which the text is read."""
    if not data.startswith(b"{"):
        return data
    return b"{" + b" " * (PIECE - random.randrange(min(PIECE, len(data)))) + data[1:]


def respell(random, tree):
    """The bytes of a tree with its keys in another order and with other white space, escapes and forms of texts."""
    return spell(random, tree).encode("utf-8", "surrogatepass") + blank(random).encode()


def blank(random):
    return random.choice(("", "", "", " ", "\n", "\t\r\n  "))


def spell(random, value):
    if isinstance(value, Object):
        entries = [f"{spell_string(random, key)}{blank(random)}:{spell(random, entry)}" for key, entry in value]
        if random.random() < 0.3:
            random.shuffle(entries)
        return "{" + blank(random) + (blank(random) + "," + blank(random)).join(entries) + "}"
    if isinstance(value, list):
        return "[" + ",".join(blank(random) + spell(random, entry) for entry in value) + blank(random) + "]"
    if isinstance(value, Number):
        return value + blank(random)
    if isinstance(value, str):
        return spell_string(random, value)
    return {True: "true", False: "false", None: "null"}[value]


def spell_string(random, value):
    if random.random() < 0.7:
        return version2.spell_text(value.encode("utf-8", "surrogatepass"))
    return '"' + "".join(spell_character(random, character) for character in value) + '"'


def spell_character(random, character):
    if character in '"\\/' and random.random() < 0.5:
        return "\\" + character
    if character >= " " and character not in '"\\' and random.random() < 0.6:
        return character
    units = character.encode("utf-16-be", "surrogatepass")
    return "".join(random.choice(("\\u{:04x}", "\\u{:04X}")).format(int.from_bytes(units[at:at + 2], "big"))
                   for at in range(0, len(units), 2))
