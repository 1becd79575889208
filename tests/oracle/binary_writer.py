"""Writes the fields of binary shows and logs, in the fixed and in the compact layout (docs/format-1.md)."""

import struct

from current import (BAR_NUMBER, END, FLOAT, IDENTIFIER, MESSAGES, MODULUS, MOST_BAR_NUMBER, SIGNED, TAG_PAIR, TEXT, TIME,
                     U8, U16, U32, WIDTHS, Part)


class Writer:
    """What both layouts have in common; `time` is that of the list's entry before."""

    def __init__(self):
        self.data, self.time = bytearray(), 0

    def record(self, fields, model):
        for key, kind in fields:
            self.field(kind, model[key])

    def field(self, kind, value):
        if isinstance(kind, Part):
            self.record(kind.record, value)
        elif kind in WIDTHS:
            self.number(kind, value)
        elif kind == TEXT:
            self.text(value)
        elif kind == BAR_NUMBER:
            self.bar_number(value)
        elif kind == IDENTIFIER:
            self.data += value
        elif kind == TAG_PAIR:
            self.number(U16, value[0])
            self.number(U16, value[1])
        else:
            self.number(U32, len(value))
            self.entries(kind, value)

    def text(self, value):
        self.number(U32, len(value))
        self.data += value

    def entries(self, kind, entries):
        if kind == MESSAGES:
            self.messages(entries)
            return
        self.time = 0
        for entry in entries:
            self.record(kind.record, entry)


class FixedWriter(Writer):
    """Writes what FixedReader reads."""

    def number(self, kind, value):
        self.data += value.to_bytes(WIDTHS[kind], "little", signed=kind in SIGNED)

    def bar_number(self, value):
        self.data += value.ljust(MOST_BAR_NUMBER + 1, b"\0")

    def messages(self, messages):
        for message in messages:
            self.data += struct.pack("<IBBB", *message)


class CompactWriter(Writer):
    """Writes what CompactReader reads; `repeats` is asked whether a message states its status even where it
    is that of the one before."""

    def __init__(self, repeats):
        super().__init__()
        self.repeats = repeats

    def variable(self, value):
        while value > 0x7F:
            self.data.append(value & 0x7F | 0x80)
            value >>= 7
        self.data.append(value)

    def number(self, kind, value):
        if kind in (U8, FLOAT):
            self.data += value.to_bytes(WIDTHS[kind], "little")
        elif kind in SIGNED:
            self.variable(~value << 1 | 1 if value < 0 else value << 1)
        elif kind == TIME:
            self.variable((value - self.time) % MODULUS)
            self.time = value
        else:
            self.variable((value - self.time) % MODULUS if kind == END else value)

    bar_number = Writer.text

    def messages(self, messages):
        before, running = 0, 0
        for time, status, *data in messages:
            same = status == running and not self.repeats()
            self.variable((time - before) % MODULUS << 1 | same)
            self.data += bytes(data) if same else bytes([status, *data])
            before, running = time, status
