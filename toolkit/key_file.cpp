// The text of a key file.
#include "toolkit/key_file.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "kit/hex.h"
#include "toolkit/error.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::string_view kLineBlanks = " \t\r";

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kLineBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kLineBlanks) - first + 1);
}

/// Whether `text` is `word`, which is in lower case, in any case.
bool IsWord(std::string_view text, std::string_view word) {
  const auto same = [](char letter, char lower) { return (letter | 0x20) == lower; };
  return std::equal(text.begin(), text.end(), word.begin(), word.end(), same);
}

/// Decodes into memory that never moves, so that no copy of a key stays behind.
bool DecodeHex(std::string_view digits, Bytes& bytes) {
  if (digits.size() % 2 != 0) return false;
  bytes.reserve(digits.size() / 2);
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const int high = kit::HexDigit(digits[i]);
    const int low = kit::HexDigit(digits[i + 1]);
    if (high < 0 || low < 0) return false;
    bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
  }
  return true;
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
    const bool is_key = IsWord(field, "key");
    if (equals == std::string_view::npos || (!is_key && !IsWord(field, "iv"))) {
      FailLine("is neither \"key = HEX\" nor \"iv = HEX\"");
    }
    bool& found = is_key ? has_key_ : has_iv_;
    if (found) FailLine(std::string("gives \"") + (is_key ? "key" : "iv") + "\" a second time");
    found = true;
    Bytes& bytes = is_key ? secret_.material().key : secret_.material().iv;
    if (!DecodeHex(Trim(line.substr(equals + 1)), bytes)) {
      FailLine("has no whole bytes of hexadecimal digits after \"=\"");
    }
  }

  SecretKey Finish(bool may_be_empty) {
    const bool is_empty = secret_.material().key.empty();
    if (is_empty && !may_be_empty) {
      throw Error(ErrorCode::kEmptyKey, name_, "states no key, and an empty one protects nothing",
                  "give it a line \"key = HEX\", or give "
                  "--empty-key");
    }
    if (!is_empty && !has_iv_) {
      throw Error(ErrorCode::kBadKeyFile, name_, "has no line \"iv = HEX\"", "add it");
    }
    return std::move(secret_);
  }

 private:
  [[noreturn]] void FailLine(const std::string& what) const {
    throw Error(ErrorCode::kBadKeyFile, name_, what + " (line " + std::to_string(line_number_) + ")",
                "correct the key file");
  }

  const std::string& name_;
  std::size_t line_number_ = 0;
  bool has_key_ = false;
  bool has_iv_ = false;
  SecretKey secret_;
};

}  // namespace

SecretKey ParseKeyFile(std::string_view text, const std::string& name, bool may_be_empty) {
  text = WithoutByteOrderMark(text);
  KeyFileParser parser(name);
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    parser.AddLine(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return parser.Finish(may_be_empty);
}

}  // namespace zuna_toolkit
