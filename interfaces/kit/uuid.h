// Identifiers of logs.

#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>
#include <string>

#include "kit/api.h"

namespace kit {

/// A universally unique identifier (RFC 4122), 16 bytes in network order.
class ZUNA_API UUID {
 public:
  /// The binary form.
  using Bytes = std::array<std::uint8_t, 16>;

  /// A new random identifier (version 4). Throws IoError where the system gives no random numbers.
  UUID();

  /// The identifier with these bytes.
  explicit UUID(const Bytes& bytes) : bytes_(bytes) {}

  /// Reads an identifier: its 16 bytes when `binary`, else its text of 36 characters.
  /// A short read leaves the stream in its fail state and the missing bytes zero; a text that is no
  /// identifier sets the fail state and gives the nil identifier.
  UUID(std::istream& is, bool binary);

  /// Writes the identifier in the form that the constructor with the same `binary` reads.
  void WriteBinary(std::ostream& os, bool binary) const;

  /// The identifier whose 16 bytes are zero.
  static UUID Nil() { return UUID(Bytes{}); }

  /// The lower-case text, "00112233-4455-6677-8899-aabbccddeeff".
  std::string ToString() const;

  /// The identifier that `text` spells. Throws std::invalid_argument where it spells none.
  static UUID FromString(const std::string& text);

  /// The 16 bytes in network order.
  const Bytes& bytes() const { return bytes_; }

  /// Whether all bytes are equal.
  bool operator==(const UUID& other) const { return bytes_ == other.bytes_; }

 private:
  Bytes bytes_;
};

}  // namespace kit
