// Output in pieces of 64 KiB.

#include "platform/core/bytes/buffered_output.h"

#include <algorithm>
#include <ostream>

#include "kit/error.h"
#include "platform/core/bytes/coding.h"

namespace zuna_core {

BufferedOutput::BufferedOutput(std::ostream& os, bool checksum)
    : os_(os), buffer_(new char[kSize]), next_(buffer_.get()), end_(next_ + kSize), checksum_(checksum) {}

void BufferedOutput::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    char* to = Room(1);
    const std::string_view piece = bytes.substr(0, static_cast<std::size_t>(end_ - to));
    Commit(std::copy(piece.begin(), piece.end(), to));
    bytes.remove_prefix(piece.size());
  }
}

void BufferedOutput::Flush() {
  const auto size = static_cast<std::size_t>(next_ - buffer_.get());
  const std::string_view bytes(buffer_.get(), size);
  if (checksum_) crc_ = Crc32(crc_, bytes);
  os_.write(bytes.data(), static_cast<std::streamsize>(size));
  if (!os_) throw kit::IoError("The output stream cannot be written; check the free space");
  next_ = buffer_.get();
}

}  // namespace zuna_core
