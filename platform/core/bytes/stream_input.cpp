// Reading input streams whatever their exception mask is.

#include "platform/core/bytes/stream_input.h"

#include <istream>

#include "kit/stream_size.h"

namespace zuna_core {

namespace {

/// Throws for a stream in state `state`: std::ios_base::failure where its mask asks for it.
[[noreturn]] void ThrowUnreadable(std::istream& is, std::ios_base::iostate state) {
  is.setstate(state | std::ios_base::failbit);
  throw cmn::DataError("The stream cannot be read", "check where the data comes from");
}

}  // namespace

ScopedStreamMask::ScopedStreamMask(std::istream& is) : is_(is), mask_(is.exceptions()) {
  is.exceptions(std::ios_base::goodbit);
  is.clear();
}

ScopedStreamMask::~ScopedStreamMask() {
  try {
    is_.exceptions(mask_);
  } catch (const std::ios_base::failure&) {
    // The mask is restored before this is thrown. The next operation on the stream reports the state.
  }
}

std::size_t ReadSome(std::istream& is, char* to, std::size_t size) {
  if (!is) ThrowUnreadable(is, is.rdstate());
  std::ios_base::iostate state = std::ios_base::goodbit;
  std::size_t count = 0;
  {
    const ScopedStreamMask no_exceptions(is);
    is.read(to, static_cast<std::streamsize>(size));
    count = static_cast<std::size_t>(is.gcount());
    state = is.rdstate();
    is.clear();
  }
  if ((state & std::ios_base::badbit) != 0) ThrowUnreadable(is, std::ios_base::badbit);
  return count;
}

std::optional<std::uint64_t> RemainingBytes(std::istream& is) {
  if (!is) ThrowUnreadable(is, is.rdstate());
  std::streamoff ahead = -1;
  try {
    ahead = kit::BytesAhead(*is.rdbuf());
  } catch (...) {
    // What a stream buffer throws makes its stream bad, as in the stream's own functions.
    ThrowUnreadable(is, std::ios_base::badbit);
  }
  if (ahead < 0) return std::nullopt;
  return static_cast<std::uint64_t>(ahead);
}

void ThrowTruncated(std::istream& is, const cmn::CutOffError& error) {
  is.setstate(std::ios_base::eofbit | std::ios_base::failbit);
  throw error;
}

}  // namespace zuna_core
