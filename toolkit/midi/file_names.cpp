// Names for the MIDI files of a show.
#include "toolkit/midi/file_names.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "kit/utf8.h"
#include "toolkit/words.h"

namespace zuna_toolkit::midi {

namespace {

constexpr const char* kExtension = ".mid";
constexpr std::size_t kMaxStem = 200;  // leaves room for a suffix and the extension within 255 bytes

/// Whether it may not stand in a file name on every system: controls, separators of paths, what shells and
/// Windows keep for themselves.
bool IsForbidden(std::string_view character) {
  constexpr std::string_view kReserved = "/\\:?*\"<>|";
  return kit::IsControl(kit::CodePoint(character)) || kReserved.find(character[0]) != std::string_view::npos;
}

/// `text` with "_" for everything that may not stand in a file name, cut after a whole character.
std::string Sanitised(std::string_view text) {
  std::string clean;
  while (!text.empty() && clean.size() < kMaxStem) {
    const std::size_t length = kit::Utf8Length(text);
    const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
    if (length == 0 || IsForbidden(character)) {
      clean += '_';
    } else {
      clean += character;
    }
    text.remove_prefix(character.size());
  }
  // No hidden file, and nothing that a command takes for an option.
  if (clean.starts_with('.') || clean.starts_with('-')) clean[0] = '_';
  return clean;
}

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return "song";
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Whether Windows takes a file called so for a device: whatever follows the first point.
bool IsDevice(const std::string& stem) {
  constexpr std::array<std::string_view, 6> kDevices = {"con", "prn", "aux", "nul", "com", "lpt"};
  std::string name = LowerCase(stem.substr(0, stem.find('.')));
  name.erase(name.find_last_not_of(' ') + 1);
  const auto device = std::find(kDevices.begin(), kDevices.end(), name.substr(0, 3));
  if (device == kDevices.end()) return false;
  const bool is_port = *device == "com" || *device == "lpt";
  return is_port ? name.size() == 4 && name[3] >= '1' && name[3] <= '9' : name.size() == 3;
}

}  // namespace

std::string FileNames::Make(const std::string& song_number, const std::string& song_name) {
  std::string stem = Sanitised(Trimmed(song_number + ' ' + song_name));
  if (IsDevice(stem)) stem.insert(stem.begin(), '_');
  std::string name = stem + kExtension;
  int& next = next_.emplace(LowerCase(stem), 2).first->second;
  while (!taken_.insert(LowerCase(name)).second) {
    name = stem + " (" + std::to_string(next) + ")" + kExtension;
    ++next;
  }
  return name;
}

}  // namespace zuna_toolkit::midi
