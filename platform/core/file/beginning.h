#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "platform/core/binary/header.h"

namespace zuna_core {

/// What a current file begins with.
struct Beginning {
  std::string bytes;             ///< those that have been read: kHeaderSize, fewer of a very short text
  std::optional<Header> header;  ///< of a binary file; none where a text document begins
};

/// Reads the beginning of a current file of this kind. Throws cmn::DataError where none begins here, or
/// std::ios_base::failure for one that is cut off, where the stream's mask asks for it.
Beginning ReadBeginning(std::istream& is, FileKind kind);

}  // namespace zuna_core
