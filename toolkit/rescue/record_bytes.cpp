// Numbers and texts of records as bytes that may be damaged.
#include "toolkit/rescue/internal/record_bytes.h"

#include <algorithm>

#include "format_converter/version0/containers/timeline.h"
#include "toolkit/rescue/internal/salvage.h"

namespace zuna_toolkit {

std::string_view RecordCursor::Take(std::size_t size) {
  ok_ = ok_ && size <= bytes_.size() - at_;
  if (!ok_) return {};
  const std::string_view taken = bytes_.substr(at_, size);
  at_ += size;
  return taken;
}

std::uint32_t RecordCursor::Number(std::size_t size) {
  const std::string_view bytes = Take(size);
  std::uint32_t number = 0;
  for (std::size_t i = bytes.size(); i > 0; --i) {
    number = number << 8 | static_cast<unsigned char>(bytes[i - 1]);
  }
  return number;
}

std::string_view RecordCursor::Text() { return Take(Number(1)); }

std::string WordBytes(std::size_t number) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift);
  return bytes;
}

bool HasTimelineAt(std::string_view bytes, std::size_t at) {
  return at < bytes.size() && bytes.substr(at).starts_with(version0::kTimelineMagic);
}

std::string TextBytes(std::string_view text) { return static_cast<char>(text.size()) + std::string(text); }

std::optional<std::string_view> TypedText(std::string_view bytes, std::size_t& at, bool compact,
                                          std::size_t longest) {
  std::size_t size = 0;
  bool more = true;
  for (unsigned i = 0; more && i < 4; ++i) {
    if (at == bytes.size()) return std::nullopt;
    const auto byte = static_cast<unsigned char>(bytes[at++]);
    size |= static_cast<std::size_t>(compact ? byte & 0x7F : byte) << ((compact ? 7 : 8) * i);
    more = !compact || byte > 0x7F;
  }
  if (size > std::min(longest, bytes.size() - at)) return std::nullopt;
  const std::string_view text = bytes.substr(at, size);
  at += size;
  return IsTyped(text) ? std::optional(text) : std::nullopt;
}

}  // namespace zuna_toolkit
