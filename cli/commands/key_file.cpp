// Key files.
#include "cli/commands/key_file.h"

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <vector>

#include "cli/commands/input.h"
#include "cli/terminal/failure.h"
#include "cli/terminal/standard_streams.h"
#include "kit/hex.h"

namespace zuna_cli {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kMaxKeyFile = std::size_t{1} << 20;
constexpr std::string_view kBlanks = " \t\r";

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<Bytes> ParseHex(std::string_view text) {
  const std::optional<std::string> bytes = kit::DecodeHex(text);
  if (!bytes) return std::nullopt;
  return Bytes(bytes->begin(), bytes->end());
}

/// Reads the lines of a key file.
class KeyFileParser {
 public:
  explicit KeyFileParser(const std::string& name) : name_(name) {}

  void AddLine(std::string_view line) {
    ++line_number_;
    line = Trim(line.substr(0, line.find('#')));
    if (line.empty()) return;
    const std::size_t equals = line.find('=');
    const std::string_view field = Trim(line.substr(0, equals));
    if (equals == std::string_view::npos || (field != "key" && field != "iv")) {
      FailLine("is neither \"key = HEX\" nor \"iv = HEX\"");
    }
    std::optional<Bytes>& value = field == "key" ? key_ : iv_;
    if (value) FailLine("gives \"" + std::string(field) + "\" a second time");
    value = ParseHex(Trim(line.substr(equals + 1)));
    if (!value) FailLine("has no whole bytes of hexadecimal digits after \"=\"");
  }

  CipherKey Finish() {
    if (!key_ || !iv_) {
      throw Failure(ExitCode::kBadInput, name_,
                    std::string("has no line \"") + (key_ ? "iv" : "key") + " = HEX\"; add it");
    }
    return {std::move(*key_), std::move(*iv_)};
  }

 private:
  [[noreturn]] void FailLine(const std::string& what) const {
    throw Failure(ExitCode::kBadInput, name_,
                  what + " (line " + std::to_string(line_number_) + "); correct the key file");
  }

  const std::string& name_;
  std::size_t line_number_ = 0;
  std::optional<Bytes> key_;
  std::optional<Bytes> iv_;
};

}  // namespace

CipherKey ParseKeyFile(std::string_view text, const std::string& name) {
  KeyFileParser parser(name);
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    parser.AddLine(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return parser.Finish();
}

CipherKey LoadKey(const std::string& path) {
  if (path.empty()) return {};
  const std::vector<std::uint8_t> bytes = ReadInput(path, kMaxKeyFile);
  return ParseKeyFile({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, InputName(path));
}

std::string KeyFilePath(const std::string& option) {
  if (!option.empty()) return option;
  const char* variable = std::getenv("ZUNA_KEY_FILE");
  return variable == nullptr ? "" : variable;
}

}  // namespace zuna_cli
