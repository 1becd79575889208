// Undoes what a copy as text does to a file. Line ends that were replaced cannot always be told from bytes
// that were there before; in a small file, often only those of the magic were.
#include "toolkit/rescue/internal/transfer.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "toolkit/words.h"
#include "zuna_sec/damaged_envelope.h"

namespace zuna_toolkit {

namespace {

using FileContent = std::vector<std::uint8_t>;
using ContentView = std::span<const std::uint8_t>;

/// The bytes without the CR before each LF.
FileContent WithoutCarriageReturns(ContentView bytes) {
  FileContent without;
  without.reserve(bytes.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') continue;
    without.push_back(bytes[i]);
  }
  return without;
}

/// The bytes that became UTF-8 as if they had been Latin-1; none where these are not.
std::optional<FileContent> WithoutUtf8(ContentView bytes) {
  FileContent without;
  without.reserve(bytes.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] < 0x80) {
      without.push_back(bytes[i]);
      continue;
    }
    const bool is_latin1 = (bytes[i] == 0xC2 || bytes[i] == 0xC3) && i + 1 < bytes.size();
    if (!is_latin1 || (bytes[i + 1] & 0xC0) != 0x80) return std::nullopt;
    without.push_back(static_cast<std::uint8_t>(bytes[i] << 6 | (bytes[i + 1] & 0x3F)));
    ++i;
  }
  return without;
}

/// The magic, and then `rest`.
FileContent WithMagic(ContentView rest) {
  constexpr auto& kMagic = zuna_sec::kEnvelopeMagic;
  FileContent file(kMagic.size() + rest.size());
  std::copy(rest.begin(), rest.end(), std::copy(kMagic.begin(), kMagic.end(), file.begin()));
  return file;
}

}  // namespace

std::optional<FileContent> BeforeTransfer(ContentView bytes) {
  constexpr std::string_view kLfAlone = "\x89ZSC\n\x1a\n";           // CR LF became LF
  constexpr std::string_view kEachLfCrLf = "\x89ZSC\r\r\n\x1a\r\n";  // LF became CR LF
  constexpr std::string_view kLoneLfCrLf = "\x89ZSC\r\n\x1a\r\n";    // LF became CR LF, and CR LF stayed
  const std::string_view text = AsText(bytes);
  if (text.starts_with(kEachLfCrLf)) return WithoutCarriageReturns(bytes);
  if (text.starts_with(kLoneLfCrLf)) {
    return WithMagic(WithoutCarriageReturns(bytes.subspan(kLoneLfCrLf.size())));
  }
  if (text.starts_with(kLfAlone)) return WithMagic(bytes.subspan(kLfAlone.size()));
  return WithoutUtf8(bytes);
}

}  // namespace zuna_toolkit
