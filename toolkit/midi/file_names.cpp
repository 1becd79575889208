// Names for the MIDI files of a show.
#include "toolkit/midi/file_names.h"

#include <algorithm>
#include <string_view>

#include "kit/utf8.h"

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

std::string LowerCase(std::string text) {
  for (char& byte : text) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
  }
  return text;
}

}  // namespace

std::string FileNames::Make(const std::string& song_number, const std::string& song_name) {
  const std::string stem = Sanitised(Trimmed(song_number + ' ' + song_name));
  std::string name = stem + kExtension;
  int& next = next_.emplace(LowerCase(stem), 2).first->second;
  while (!taken_.insert(LowerCase(name)).second) {
    name = stem + " (" + std::to_string(next) + ")" + kExtension;
    ++next;
  }
  return name;
}

}  // namespace zuna_toolkit::midi
