"""Reads and writes binary shows and logs of versions 1.0, 1.1 and 1.2 (docs/format-1.md)."""

import struct
import zlib

from binary_reader import CompactReader, FixedReader
from binary_writer import CompactWriter, FixedWriter
from current import RECORDS, FormatError, UnsupportedVersion

MAGIC = {"show": b"\0ZSH", "log": b"\0ZLG"}
VERSIONS = {"show": ((1, 0), (1, 1), (1, 2)), "log": ((1, 1), (1, 2))}
HEADER = struct.Struct("<4sIBB")
COUNTED_FROM = 8  # the size counts the bytes from here
CHECKSUM = 4


def read(kind, data):
    """The model of these bytes."""
    version, body = unframe(kind, data)
    reader = (CompactReader if version == (1, 2) else FixedReader)(body)
    model = reader.record(RECORDS[kind])
    if reader.position != len(body):
        raise FormatError("bytes follow the last field")
    return model


def never():
    return False


def write(kind, model, version, repeats=never):
    """The bytes of a model in this version, a pair of numbers."""
    writer = CompactWriter(repeats) if version == (1, 2) else FixedWriter()
    writer.record(RECORDS[kind], model)
    return frame(kind, version, bytes(writer.data))


def unframe(kind, data):
    """The version and the body of a file."""
    if data[:4] != MAGIC[kind]:
        raise FormatError("this is no such file")
    if len(data) < HEADER.size:
        raise FormatError("the file is cut off")
    _, size, *version = HEADER.unpack_from(data)
    version = tuple(version)
    if version not in VERSIONS[kind]:
        raise UnsupportedVersion(version)
    end = len(data) - checksum_size(version)
    if COUNTED_FROM + size != len(data) or end < HEADER.size:
        raise FormatError("the header states another size")
    if end < len(data) and struct.pack("<I", zlib.crc32(data[:end])) != data[end:]:
        raise FormatError("the checksum is wrong")
    return version, data[HEADER.size:end]


def frame(kind, version, body):
    """A file of this body."""
    size = HEADER.size - COUNTED_FROM + len(body) + checksum_size(version)
    data = HEADER.pack(MAGIC[kind], size, *version) + body
    return data + struct.pack("<I", zlib.crc32(data)) if checksum_size(version) else data


def checksum_size(version):
    return 0 if version == (1, 0) else CHECKSUM
