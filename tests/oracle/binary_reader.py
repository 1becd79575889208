"""Reads the fields of binary shows and logs, in the fixed and in the compact layout (docs/format-1.md)."""

from current import (BAR_NUMBER, END, FLOAT, IDENTIFIER, MESSAGES, MODULUS, MOST_BAR_NUMBER, SIGNED, TAG_PAIR, TEXT, TIME,
                     U8, U16, U32, WIDTHS, FormatError, Part, settle)


class Reader:
    """What both layouts have in common; `time` is that of the list's entry before."""

    def __init__(self, data):
        self.data, self.position, self.time = data, 0, 0

    def take(self, size):
        end = self.position + size
        if end > len(self.data):
            raise FormatError("the body ends within a field")
        taken, self.position = self.data[self.position:end], end
        return taken

    def plain(self, width, signed=False):
        return int.from_bytes(self.take(width), "little", signed=signed)

    def record(self, fields):
        return {key: self.field(kind) for key, kind in fields}

    def field(self, kind):
        if isinstance(kind, Part):
            return self.record(kind.record)
        if kind in WIDTHS:
            return self.number(kind)
        if kind == TEXT:
            return self.text()
        if kind == BAR_NUMBER:
            return self.bar_number()
        if kind == IDENTIFIER:
            return self.take(16)
        if kind == TAG_PAIR:
            return [self.number(U16), self.number(U16)]
        if kind == MESSAGES:
            return self.messages(self.number(U32))
        return settle(self.entries(kind.record, self.number(U32)), kind)

    def text(self):
        return self.take(self.number(U32))

    def entries(self, fields, count):
        self.time, found = 0, []
        for _ in range(count):
            found.append(self.record(fields))
        return found


class FixedReader(Reader):
    """Every field has its full width."""

    def number(self, kind):
        return self.plain(WIDTHS[kind], kind in SIGNED)

    def bar_number(self):
        text, _, rest = self.take(MOST_BAR_NUMBER + 1).partition(b"\0")
        if len(text) > MOST_BAR_NUMBER or rest.strip(b"\0"):
            raise FormatError("a bar number is at most 7 bytes and zeros")
        return text

    def messages(self, count):
        found = []
        for _ in range(count):
            found.append([self.plain(4), self.plain(1), self.plain(1), self.plain(1)])
        return found


class CompactReader(Reader):
    """Numbers of more than 8 bits have variable length; times are differences."""

    def variable(self, bits):
        value = shift = 0
        more = True
        while more:
            byte = self.plain(1)
            value |= (byte & 0x7F) << shift
            shift += 7
            more = byte & 0x80
            if value >> bits or (shift > bits and more):
                raise FormatError("a number is above its range")
        if byte == 0 and shift > 7:
            raise FormatError("a number has more bytes than it needs")
        return value

    def number(self, kind):
        if kind in (U8, FLOAT):
            return self.plain(WIDTHS[kind])
        value = self.variable(8 * WIDTHS[kind])
        if kind in SIGNED:
            return ~(value >> 1) if value & 1 else value >> 1
        if kind == TIME:
            self.time = (self.time + value) % MODULUS
            return self.time
        return (self.time + value) % MODULUS if kind == END else value

    def bar_number(self):
        text = self.text()
        if len(text) > MOST_BAR_NUMBER or b"\0" in text:
            raise FormatError("a bar number has at most 7 bytes")
        return text

    def messages(self, count):
        found, time, status = [], 0, 0
        for _ in range(count):
            value = self.variable(33)
            time = (time + (value >> 1)) % MODULUS
            if not value & 1:
                status = self.plain(1)
            found.append([time, status, self.plain(1), self.plain(1)])
        return found
