#pragma once

// Numbers and checksums of binary files (docs/format-1.md).

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zuna_core {

/// The bytes of `value` in the order in which files hold them, lowest first.
inline std::uint64_t LittleEndian(std::uint64_t value) {
  return std::endian::native == std::endian::big ? __builtin_bswap64(value) : value;
}

/// Puts the `size` (at most 8) low bytes of `value`, lowest first. Writes 8 bytes whatever `size` is, which
/// is one store. Returns the end of the `size` bytes.
inline char* PutFixed(char* to, std::uint64_t value, std::size_t size) {
  const std::uint64_t bytes = LittleEndian(value);
  std::memcpy(to, &bytes, sizeof bytes);
  return to + size;
}

/// The number in `size` (at most 8) bytes, lowest first.
inline std::uint64_t GetFixed(const char* from, std::size_t size) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, from, size);
  return LittleEndian(bytes);
}

/// Longest variable-length integer in use: 35 bits hold every 33-bit number.
inline constexpr std::size_t kMaxVarintSize = 5;

/// The numbers below this take one or two bytes as variable-length integers. Nearly all are: that they are is
/// the one branch of what follows. The sizes within are hard to predict, and a wrong prediction costs more
/// than the computation.
inline constexpr std::uint64_t kVarintOfThreeBytes = std::uint64_t{1} << 14;

/// The bytes that PutVarint() takes for `value`: one for every 7 bits that it has, at least one.
inline std::size_t VarintSize(std::uint64_t value) {
  if (value < kVarintOfThreeBytes) return 1 + static_cast<std::size_t>(value > 0x7F);
  const auto bits = static_cast<std::size_t>(std::bit_width(value | 1));
  return (bits * 9 + 64) / 64;  // (bits + 6) / 7 for up to 63 bits, without a division
}

/// A variable-length integer: its `size` bytes, lowest first.
struct EncodedVarint {
  std::uint64_t bytes;
  std::size_t size;
};

/// `value` (below 2^35) in groups of 7 bits, lowest first; the high bit of a byte says that another one
/// follows (unsigned LEB128, DWARF 5 section 7.6). 300 is 10 0101100 in binary and gives AC 02: first 1
/// 0101100, then 0 0000010.
inline EncodedVarint EncodeVarint(std::uint64_t value) {
  const std::size_t size = VarintSize(value);
  if (value < kVarintOfThreeBytes) {
    return {(value & 0x7F) | (std::uint64_t{size} - 1) << 7 | value >> 7 << 8, size};
  }
  const std::uint64_t groups = (value & 0x7F) | (value << 1 & 0x7F00) | (value << 2 & 0x7F0000) |
                               (value << 3 & 0x7F000000) | (value << 4 & 0x7F00000000);
  const std::uint64_t before_last = (std::uint64_t{1} << (8 * (size - 1))) - 1;
  return {groups | (0x8080808080 & before_last), size};
}

/// Puts `value` (below 2^35) as a variable-length integer, and writes 8 bytes whatever it needs. Returns its
/// end.
inline char* PutVarint(char* to, std::uint64_t value) {
  const EncodedVarint varint = EncodeVarint(value);
  return PutFixed(to, varint.bytes, varint.size);
}

/// Reads what PutVarint() wrote and moves `from` past it. False where the bytes end first or are not the
/// shortest form of a number below 2^35; `from` does not move then.
inline bool GetVarint(const char*& from, const char* end, std::uint64_t& value) {
  value = 0;
  const char* next = from;
  for (unsigned shift = 0; shift < 7 * kMaxVarintSize && next != end; shift += 7) {
    const auto byte = static_cast<unsigned char>(*next++);
    value |= std::uint64_t{byte & 0x7FU} << shift;
    if (byte < 0x80) {
      if (byte == 0 && shift != 0) return false;
      from = next;
      return true;
    }
  }
  return false;
}

/// Signed numbers as unsigned ones, small where the number is near zero: 0, -1, 1, -2 become 0, 1, 2, 3.
inline std::uint32_t ZigZag(std::int32_t value) {
  return (static_cast<std::uint32_t>(value) << 1) ^ static_cast<std::uint32_t>(value >> 31);
}
inline std::int32_t UnZigZag(std::uint32_t value) {
  return static_cast<std::int32_t>((value >> 1) ^ (0U - (value & 1)));
}

/// The CRC-32 of zlib and Ethernet (reflected polynomial 0xEDB88320, RFC 1952 section 8) of `bytes`, which
/// follow those that gave `crc`; the first call takes 0.
std::uint32_t Crc32(std::uint32_t crc, std::string_view bytes);

}  // namespace zuna_core
