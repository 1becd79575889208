// Bytes as tests write and read them.

#pragma once

#include <cstdint>
#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "kit/hex.h"

namespace zuna_test {

using ByteVector = std::vector<std::uint8_t>;

inline ByteVector FromText(std::string_view text) { return {text.begin(), text.end()}; }

/// The bytes that hexadecimal digits spell; blanks and line ends between them do not count. Throws
/// std::bad_optional_access for anything else.
inline ByteVector FromHex(std::string_view hex) {
  std::string digits;
  for (const char c : hex) {
    if (c != ' ' && c != '\n') digits += c;
  }
  return FromText(kit::DecodeHex(digits).value());
}

/// A byte string, written as numbers and characters.
inline std::string Bytes(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) bytes.push_back(static_cast<char>(value));
  return bytes;
}

/// What `value.write_binary` writes.
template <typename Value>
std::string Written(const Value& value) {
  std::ostringstream os;
  value.write_binary(os);
  return os.str();
}

/// The `Value` that stands in `bytes`.
template <typename Value>
Value Read(const std::string& bytes) {
  std::istringstream is(bytes);
  return Value(is);
}

/// The message of the `Error` that `action` throws, or a text that says that it threw none.
template <typename Error, typename Action>
std::string MessageOf(Action action) {
  try {
    action();
  } catch (const Error& error) {
    return error.what();
  }
  return "(nothing was thrown)";
}

}  // namespace zuna_test
