#pragma once

// Parsing a stream of JSON in constant memory.

#include <boost/json/basic_parser_impl.hpp>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include "platform/core/bytes/stream_input.h"

namespace zuna_json {

/// The deepest nesting that is parsed; no file of ours reaches it.
inline constexpr std::size_t kMaxDepth = 32;

/// Where and why a parser stopped; no error where the whole text is one JSON value.
struct ParseEnd {
  boost::json::error_code error;
  std::uint64_t offset = 0;  ///< in bytes from the beginning of the text
  char before = 0;           ///< the last character before it that is no white space; 0 for none
  std::string at;            ///< the bytes that stand there, at most 4
};

/// What is wrong with the text, for a message.
std::string DescribeError(const ParseEnd& end);

/// Keeps what stands where a parser stopped in `piece`, after `used` bytes of it.
void KeepPlace(std::string_view piece, std::size_t used, ParseEnd& end);

/// Parses a JSON text in pieces of 64 KiB: `prefix`, at most that long, was read before; the rest is what
/// the stream has left. The handler of the parser gets the events and may stop it by an error.
template <typename Handler>
ParseEnd ParseStream(std::istream& is, std::string_view prefix, boost::json::basic_parser<Handler>& parser) {
  constexpr std::size_t kPiece = std::size_t{64} * 1024;
  const std::unique_ptr<char[]> piece(new char[kPiece]);
  std::size_t size = prefix.copy(piece.get(), kPiece);
  ParseEnd end;
  for (bool more = true; more; size = 0) {
    size += zuna_core::ReadSome(is, piece.get() + size, kPiece - size);
    more = size == kPiece;
    const std::size_t used = parser.write_some(more, piece.get(), size, end.error);
    end.offset += used;
    if (!end.error && used < size) end.error = boost::json::error::extra_data;
    if (end.error) {
      KeepPlace({piece.get(), size}, used, end);
      break;
    }
  }
  return end;
}

}  // namespace zuna_json
