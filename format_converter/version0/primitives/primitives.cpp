// Scalars, strings and positions of the legacy formats: docs/format-0.md.

#include "format_converter/version0/primitives/internal/primitives.h"

#include <array>
#include <bit>
#include <iostream>
#include <stdexcept>

namespace version0 {

namespace {

constexpr std::size_t kStringLimit = 256;
constexpr std::uint32_t kLengthFieldSize = 4;

/// Little-endian bytes to and from an unsigned number.
template <typename Unsigned>
Unsigned get_number(std::istream& is) {
  std::array<unsigned char, sizeof(Unsigned)> bytes{};
  is.read(reinterpret_cast<char*>(bytes.data()), bytes.size());
  Unsigned value = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i)
    value |= static_cast<Unsigned>(Unsigned{bytes[i]} << (8 * i));
  return value;
}

template <typename Unsigned>
void put_number(std::ostream& os, Unsigned value) {
  std::array<char, sizeof(Unsigned)> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(value >> (8 * i));
  os.write(bytes.data(), bytes.size());
}

}  // namespace

std::uint8_t get_u8(std::istream& is) { return static_cast<std::uint8_t>(is.get()); }
void put_u8(std::ostream& os, std::uint8_t value) { os.put(static_cast<char>(value)); }

std::uint16_t get_u16(std::istream& is) { return get_number<std::uint16_t>(is); }
void put_u16(std::ostream& os, std::uint16_t value) { put_number(os, value); }

std::uint32_t get_u32(std::istream& is) { return get_number<std::uint32_t>(is); }
void put_u32(std::ostream& os, std::uint32_t value) { put_number(os, value); }

float get_float(std::istream& is) { return std::bit_cast<float>(get_u32(is)); }
void put_float(std::ostream& os, float value) { put_u32(os, std::bit_cast<std::uint32_t>(value)); }

std::string get_string(std::istream& is) {
  const int length = is.get();
  if (length < 0) throw std::length_error("basic_string");
  std::string text(static_cast<std::size_t>(length), '\0');
  is.read(text.data(), length);
  return text;
}

void put_string(std::ostream& os, const std::string& text) {
  // The length must fit into one byte, so 256 bytes are too long although the message allows them.
  if (text.size() >= kStringLimit) throw std::length_error("String length is limited to 256 characters");
  put_u8(os, static_cast<std::uint8_t>(text.size()));
  os.write(text.data(), static_cast<std::streamsize>(text.size()));
}

std::uint32_t istream_tellg(std::istream& is) {
  return static_cast<std::uint32_t>(static_cast<std::streamoff>(is.tellg()));
}

bool at_end(std::istream& is, std::uint32_t end) {
  try {
    return end <= istream_tellg(is);
  } catch (const std::ios_base::failure&) {
    return true;
  }
}

void patch_u32(std::ostream& os, std::uint32_t position, std::uint32_t value, std::uint32_t end) {
  os.seekp(position);
  put_u32(os, value);
  os.seekp(end);
}

LengthField::LengthField(std::ostream& os) : position_(ostream_tellp(os)) { put_u32(os, 0); }

void LengthField::patch(std::ostream& os) const {
  // Where the position cannot be taken, `end` is 0xFFFFFFFF. Seeking there fails and sets the fail state.
  const std::uint32_t end = ostream_tellp(os);
  patch_u32(os, position_, end - position_ - kLengthFieldSize, end);
}

void print_istream_pos(std::istream& is) {
  std::cout << std::to_string(static_cast<std::streamoff>(is.tellg())) << std::endl;
}

std::uint32_t ostream_tellp(std::ostream& os) {
  if (os.fail()) return 0xFFFFFFFF;
  const std::streamoff position = os.rdbuf()->pubseekoff(0, std::ios_base::cur, std::ios_base::out);
  return static_cast<std::uint32_t>(position);
}

}  // namespace version0
