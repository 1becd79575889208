// Messages about JSON: what is wrong with a text, where the parser is, and what it expected there.

#include <algorithm>
#include <array>

#include "kit/format.h"
#include "kit/utf8.h"
#include "platform/core/json/object_handler.h"
#include "platform/core/json/parse_stream.h"

namespace zuna_json {

namespace {

constexpr std::size_t kLongestCharacter = 4;  // bytes
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

constexpr std::string_view kBeginsOfValues = "\"{[-0123456789";
constexpr std::string_view kEndsOfValues = "\"}]0123456789el";  // also of true, false and null
constexpr std::array<std::string_view, 4> kCurlyQuotes = {"\u2018", "\u2019", "\u201C", "\u201D"};

bool IsOneOf(char c, std::string_view characters) { return characters.find(c) != std::string_view::npos; }

/// Whether the first bytes of a line that a merge by git leaves are at the front.
bool IsConflictMark(std::string_view at) { return at == "<<<<" || at == "====" || at == ">>>>"; }

bool IsCurlyQuote(std::string_view at) {
  return std::any_of(kCurlyQuotes.begin(), kCurlyQuotes.end(),
                     [&](std::string_view quote) { return at.starts_with(quote); });
}

/// Why the text at a place breaks the rules, of what is easily mistyped; empty for anything else.
std::string SlipText(const ParseEnd& end) {
  if (end.at.empty()) return "";
  if (end.offset == 0 && end.at.starts_with(kByteOrderMark)) return "it begins with a byte order mark";
  if (IsCurlyQuote(end.at)) return "a curly quotation mark stands where a straight one belongs";
  if (end.at.size() == kLongestCharacter && kit::Utf8Length(end.at) == 0) return "these bytes are not UTF-8";
  if (IsConflictMark(end.at)) return "a merge has left a conflict here";
  const char c = end.at.front();
  if (IsOneOf(c, "/#")) return "there are no comments in JSON";
  if (c == '\'') return "strings need double quotation marks";
  if (IsOneOf(c, kBeginsOfValues) && IsOneOf(end.before, kEndsOfValues)) {
    return "a comma or a colon is missing before this";
  }
  if (IsOneOf(c, "}]") && end.before == ',') return "remove the comma before this";
  return "";
}

}  // namespace

void KeepPlace(std::string_view piece, std::size_t used, ParseEnd& end) {
  const std::size_t last = used == 0 ? std::string_view::npos : piece.find_last_not_of(" \t\r\n", used - 1);
  end.before = last == std::string_view::npos ? '\0' : piece[last];
  end.at = piece.substr(used, kLongestCharacter);
}

std::string DescribeError(const ParseEnd& end) {
  using boost::json::error;
  const boost::json::error_code& code = end.error;
  if (code == error::incomplete) return "the text ends before its JSON value does";
  if (code == error::extra_data) return "more text follows the JSON value";
  if (code == error::too_deep) return "lists and objects are nested too deeply";
  const std::string slip = SlipText(end);
  return "this is not JSON (" + (slip.empty() ? code.message() : slip) + ")";
}

std::string ObjectHandler::Expected() const {
  if (depth_ == 0) return "an object";
  const Frame& frame = top();
  switch (frame.level) {
    case Level::kList:
      return "an object";
    case Level::kRows:
      return "a list of integers";
    case Level::kBits:
      return IntegerText(kBitsRange);
    case Level::kBytes:
      return "a text";
    case Level::kRow:
      return column_ < columns_ ? IntegerText({0, maxima_[column_]}) : "the end of the list";
    case Level::kObject:
      break;
  }
  return ValueText(frame.member->kind);
}

std::string ObjectHandler::Path() const {
  std::string path;
  for (std::size_t i = 0; i < depth_; ++i) {
    const Frame& frame = frames_[i];
    const bool rows = frame.owner != nullptr && frame.owner->kind == ValueKind::kRows;
    if (frame.level == Level::kObject && frame.member != nullptr) {
      path.append(path.empty() ? "" : ".").append(frame.member->key);
    } else if (frame.level == Level::kList || rows) {
      path += kit::format("[%zu]", frame.index);
    }
    if (frame.level == Level::kRow) path += kit::format("[%zu]", column_);
  }
  return path;
}

}  // namespace zuna_json
