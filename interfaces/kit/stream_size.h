#pragma once

// The number of bytes ahead in a stream buffer.

#include <algorithm>
#include <ios>
#include <streambuf>

namespace kit {

/// The bytes from the read position of `buffer` to its end, 0 where the position is after the end; -1
/// where the buffer cannot tell. Leaves the read position where it is; throws std::ios_base::failure where
/// the buffer does not go back there. Passes on what the buffer throws.
inline std::streamoff BytesAhead(std::streambuf& buffer) {
  const std::streamoff here = buffer.pubseekoff(0, std::ios_base::cur, std::ios_base::in);
  if (here < 0) return -1;
  const std::streamoff end = buffer.pubseekoff(0, std::ios_base::end, std::ios_base::in);
  if (buffer.pubseekpos(here, std::ios_base::in) < 0) throw std::ios_base::failure("the position is lost");
  return end < 0 ? -1 : std::max<std::streamoff>(end - here, 0);
}

}  // namespace kit
