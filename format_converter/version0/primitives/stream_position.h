#pragma once

#include <cstdint>
#include <iosfwd>

#include "kit/api.h"

namespace version0 {

/// Writes the read position to standard output as a decimal number and a line end. The position does not
/// change.
ZUNA_API void print_istream_pos(std::istream& is);

/// The write position modulo 2^32; 0xFFFFFFFF on a failed stream. Unlike tellp it never flushes a tied
/// stream.
ZUNA_API std::uint32_t ostream_tellp(std::ostream& os);

}  // namespace version0
