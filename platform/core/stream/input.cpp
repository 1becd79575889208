#include "platform/core/stream/input.h"

#include <istream>

namespace zuna_core {

namespace {

/// Throws for a stream in state `state`, first the way its mask asks for.
[[noreturn]] void ThrowUnreadable(std::istream& is, std::ios_base::iostate state) {
  is.setstate(state | std::ios_base::failbit);
  throw cmn::DataError("The stream cannot be read", "check where the data comes from");
}

}  // namespace

QuietStream::QuietStream(std::istream& is) : is_(is), mask_(is.exceptions()) {
  is.exceptions(std::ios_base::goodbit);
  is.clear();
}

QuietStream::~QuietStream() {
  try {
    is_.exceptions(mask_);
  } catch (const std::ios_base::failure&) {
    // The mask is in force again; that it forbids the state matters to the next one who uses the stream.
  }
}

std::size_t ReadSome(std::istream& is, char* to, std::size_t size) {
  if (!is) ThrowUnreadable(is, is.rdstate());
  std::ios_base::iostate state = std::ios_base::goodbit;
  std::size_t count = 0;
  {
    const QuietStream quiet(is);
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
  std::streamoff here = -1;
  std::streamoff end = -1;
  std::ios_base::iostate state = std::ios_base::goodbit;
  {
    const QuietStream quiet(is);
    here = is.tellg();
    if (here >= 0) {
      is.seekg(0, std::ios_base::end);
      end = is.tellg();
      is.seekg(here);
    }
    state = is.rdstate();
    is.clear();
  }
  if (state != std::ios_base::goodbit) ThrowUnreadable(is, state);
  if (here < 0) return std::nullopt;
  return end > here ? static_cast<std::uint64_t>(end - here) : 0;
}

void ThrowTruncated(std::istream& is, const cmn::DataError& error) {
  is.setstate(std::ios_base::eofbit | std::ios_base::failbit);
  throw error;
}

}  // namespace zuna_core
