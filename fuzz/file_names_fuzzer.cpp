// The input: song numbers and song names by turns, a line each. Every name that is made for them is one that
// all systems take, and no two are alike.

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

#include "fuzz/cost.h"
#include "fuzz/target.h"
#include "kit/utf8.h"
#include "toolkit/midi/file_names.h"

namespace {

constexpr std::size_t kLongestName = 255;  // bytes, on most file systems
constexpr std::string_view kSeparators = "/\\:?*\"<>|";

/// Takes a line off the front; the line break goes too.
std::string TakeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  std::string line(text.substr(0, end));
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

std::string LowerCase(std::string text) {
  for (char& byte : text) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
  }
  return text;
}

bool HasControl(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = kit::Utf8Length(text);
    if (kit::IsControl(kit::CodePoint(text.substr(0, length)))) return true;
    text.remove_prefix(length);
  }
  return false;
}

void CheckName(const std::string& name) {
  fuzz::Require(name.size() <= kLongestName, "a name has at most 255 bytes");
  fuzz::Require(name.ends_with(".mid"), "a name has the extension of a MIDI file");
  fuzz::Require(name.find_first_of(kSeparators) == std::string::npos, "a name has no separator of paths");
  fuzz::Require(kit::IsUtf8(name), "a name is UTF-8");
  fuzz::Require(!HasControl(name), "a name has no control or bidirectional character");
  fuzz::Require(std::string_view(" .-").find(name.front()) == std::string_view::npos,
                "a name begins with no blank, point or hyphen");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  std::string_view text = bytes;
  std::set<std::string> taken;
  zuna_toolkit::midi::FileNames names;
  while (!text.empty()) {
    const std::string number = TakeLine(text);
    const std::string name = names.Make(number, TakeLine(text));
    CheckName(name);
    fuzz::Require(taken.insert(LowerCase(name)).second, "no two names are alike");
  }
  return 0;
}
