#pragma once

// Binary files put together and taken apart.

#include <string>
#include <string_view>

#include "cmn/file_format.h"

namespace zuna_test {

/// The bytes that hexadecimal digits spell, blanks left out.
std::string Hex(std::string_view digits);

/// A binary file with this body: the size in the header and the checksum are right.
std::string BinaryFile(cmn::FileKind kind, cmn::FileVersion version, const std::string& body);

/// The body of a binary file, without header and checksum.
std::string BodyOf(const std::string& file);

/// The body of a binary file with the `size` bytes at `place` replaced by what `digits` spell.
std::string PatchedBody(const std::string& file, std::size_t place, std::size_t size,
                        std::string_view digits);

}  // namespace zuna_test
