// The input: the text of a key file. What is read comes back the same from a key file that is written from
// it, and no message tells a key.

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/cost.h"
#include "fuzz/target.h"
#include "toolkit/error.h"
#include "toolkit/key_file.h"

namespace {

using zuna_toolkit::ParseKeyFile;
using zuna_toolkit::SecretKey;

constexpr const char* kName = "keys";

std::string Hex(const std::vector<std::uint8_t>& bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0x0F];
  }
  return text;
}

std::string UpperCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char byte) { return static_cast<char>(std::toupper(byte)); });
  return text;
}

void RequireSame(const SecretKey& key, const std::string& text) {
  const SecretKey other = ParseKeyFile(text, kName, true);
  fuzz::Require(key.material().key == other.material().key && key.material().iv == other.material().iv,
                "a key file that is written from a key and an IV is read as them");
}

/// Requires that a message about `text` is one of a few, whatever the text says.
void RequireSecret(const std::string& message, const std::string& text) {
  constexpr std::size_t kLongestMessage = 160;  // bytes
  constexpr std::size_t kTelling = 8;           // hexadecimal digits
  fuzz::Require(message.starts_with("keys: ") && message.size() <= kLongestMessage, "a message is short");
  const auto is_digit = [](unsigned char byte) { return std::isxdigit(byte) != 0; };
  auto from = text.begin();
  while ((from = std::find_if(from, text.end(), is_digit)) != text.end()) {
    const auto to = std::find_if_not(from, text.end(), is_digit);
    if (to - from >= static_cast<std::ptrdiff_t>(kTelling)) {
      fuzz::Require(message.find(std::string(from, to)) == std::string::npos, "a message tells no key");
    }
    from = to;
  }
}

void Check(const std::string& text, bool may_be_empty) {
  try {
    const SecretKey key =
        fuzz::Bounded("a key file", text.size(), [&] { return ParseKeyFile(text, kName, may_be_empty); });
    fuzz::Require(may_be_empty || !key.material().key.empty(), "an empty key must be allowed");
    const std::string again = "key = " + Hex(key.material().key) + "\niv = " + Hex(key.material().iv) + "\n";
    RequireSame(key, again);
    RequireSame(key, UpperCase(again));
  } catch (const zuna_toolkit::Error& error) {
    RequireSecret(error.what(), text);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  Check(text, true);
  Check(text, false);
  return 0;
}
