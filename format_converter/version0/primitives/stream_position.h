#pragma once

// Positions in streams as the legacy formats count them.

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// Writes the read position to standard output as a decimal number, with a newline and a flush. The position
/// does not change.
ZUNA_API void print_istream_pos(std::istream& is);

/// The write position modulo 2^32; 0xFFFFFFFF for a failed stream. Unlike tellp it never flushes a tied
/// stream.
ZUNA_API std::uint32_t ostream_tellp(std::ostream& os);

}  // namespace version0
