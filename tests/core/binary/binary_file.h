#pragma once

#include <string>
#include <string_view>

#include "cmn/file_version.h"
#include "platform/core/file/versions.h"

namespace zuna_test {

/// The bytes that hexadecimal digits spell, blanks left out.
std::string Hex(std::string_view digits);

/// A binary file with this body: the size in the header and the checksum are right.
std::string BinaryFile(zuna_core::FileKind kind, cmn::FileVersion version, const std::string& body);

/// The body of a binary file, without header and checksum.
std::string BodyOf(const std::string& file);

/// Calls `check(bad, place, change)` for every file that differs from a good one in one byte.
template <class Check>
void ChangeEveryByte(const std::string& good, const Check& check) {
  for (std::size_t place = 0; place < good.size(); ++place) {
    for (int change = 1; change < 256; ++change) {
      std::string bad = good;
      bad[place] = static_cast<char>(bad[place] ^ change);
      check(bad, place, change);
    }
  }
}

}  // namespace zuna_test
