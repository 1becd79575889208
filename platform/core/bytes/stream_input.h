#pragma once

// Reading input streams whatever their exception mask is.

#include <cstddef>
#include <cstdint>
#include <ios>
#include <iosfwd>
#include <optional>

#include "cmn/data_error.h"

namespace zuna_core {

/// Clears the state and the exception mask of a stream while it lives, so that operations on the stream do
/// not throw, and restores the mask when it ends. The state stays as it is then.
class ScopedStreamMask {
 public:
  explicit ScopedStreamMask(std::istream& is);
  ~ScopedStreamMask();
  ScopedStreamMask(const ScopedStreamMask&) = delete;
  ScopedStreamMask& operator=(const ScopedStreamMask&) = delete;

 private:
  std::istream& is_;
  std::ios_base::iostate mask_;
};

/// Reads up to `size` bytes; fewer only at the end of the stream, which is no failure: the state stays good.
/// A stream that cannot be read, or had failed before, throws std::ios_base::failure where its mask asks for
/// it, else cmn::DataError.
std::size_t ReadSome(std::istream& is, char* to, std::size_t size);

/// The bytes from the position of the stream to its end, where the stream can tell. Throws like ReadSome.
std::optional<std::uint64_t> RemainingBytes(std::istream& is);

/// Marks the stream as one that ended too early, which throws std::ios_base::failure where its mask asks for
/// it, and throws `error` otherwise.
[[noreturn]] void ThrowTruncated(std::istream& is, const cmn::CutOffError& error);

/// The remedies for a file that was damaged, and for one that is cut off.
inline constexpr const char* kGetUndamagedCopy = "get an undamaged copy of the file";
inline constexpr const char* kGetCompleteCopy = "get a complete copy of the file";

}  // namespace zuna_core
