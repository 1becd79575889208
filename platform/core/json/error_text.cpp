// Messages about JSON: what is wrong with a text, where the parser is, and what it expected there.

#include "kit/format.h"
#include "platform/core/json/object_handler.h"
#include "platform/core/json/parse_stream.h"

namespace zuna_json {

std::string DescribeError(const boost::json::error_code& code) {
  using boost::json::error;
  if (code == error::incomplete) return "the text ends before its JSON value does";
  if (code == error::extra_data) return "more text follows the JSON value";
  if (code == error::too_deep) return "lists and objects are nested too deeply";
  return "this is not JSON (" + code.message() + ")";
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
