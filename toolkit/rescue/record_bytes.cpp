// Numbers and texts of records as bytes that may be damaged.
#include "toolkit/rescue/internal/record_bytes.h"

#include "format_converter/version0/containers/timeline.h"

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

}  // namespace zuna_toolkit
