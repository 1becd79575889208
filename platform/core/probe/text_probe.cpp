#include "platform/core/probe/text_probe.h"

#include <algorithm>
#include <optional>
#include <string>

#include "platform/core/json/document.h"
#include "platform/core/json/feed.h"

namespace zuna_core {

namespace {

/// Collects the texts under "kind" and "fileVersion" at the top level and stops the parser at the second one.
class ProbeHandler {
 public:
  using Code = boost::json::error_code;
  using Part = boost::json::string_view;

  static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);

  const std::optional<std::string>& kind() const { return kind_; }
  const std::optional<std::string>& version() const { return version_; }

  bool on_document_begin(Code&) { return true; }
  bool on_document_end(Code&) { return true; }
  bool on_object_begin(Code&) { return Enter(); }
  bool on_object_end(std::size_t, Code&) { return Leave(); }
  bool on_array_begin(Code&) { return Enter(); }
  bool on_array_end(std::size_t, Code&) { return Leave(); }
  bool on_key_part(Part part, std::size_t, Code&) { return Append(part); }
  bool on_key(Part part, std::size_t, Code&) {
    Append(part);
    if (depth_ == 1) key_ = text_;
    text_.clear();
    return true;
  }
  bool on_string_part(Part part, std::size_t, Code&) { return Append(part); }
  bool on_string(Part part, std::size_t, Code& code) {
    Append(part);
    if (depth_ == 1 && key_ == "kind") kind_ = text_;
    if (depth_ == 1 && key_ == "fileVersion") version_ = text_;
    text_.clear();
    if (!kind_ || !version_) return true;
    code = boost::json::error::extra_data;  // enough is known
    return false;
  }
  bool on_number_part(Part, Code&) { return true; }
  bool on_int64(std::int64_t, Part, Code&) { return true; }
  bool on_uint64(std::uint64_t, Part, Code&) { return true; }
  bool on_double(double, Part, Code&) { return true; }
  bool on_bool(bool, Code&) { return true; }
  bool on_null(Code&) { return true; }
  bool on_comment_part(Part, Code&) { return true; }
  bool on_comment(Part, Code&) { return true; }

 private:
  /// Longer than any text that matters; what is beyond is not kept.
  static constexpr std::size_t kKept = 16;

  bool Enter() {
    ++depth_;
    return true;
  }
  bool Leave() {
    --depth_;
    return true;
  }
  bool Append(Part part) {
    if (depth_ == 1 && text_.size() < kKept) text_.append(part.data(), std::min(part.size(), kKept));
    return true;
  }

  int depth_ = 0;
  std::string key_;
  std::string text_;
  std::optional<std::string> kind_;
  std::optional<std::string> version_;
};

}  // namespace

cmn::FileVersion ProbeText(std::istream& is, FileKind kind) {
  boost::json::parse_options options;
  options.max_depth = kMaxJsonDepth;
  boost::json::basic_parser<ProbeHandler> parser(options);
  FeedJson(is, {}, parser);
  const ProbeHandler& found = parser.handler();
  if (found.kind() != KindText(kind) || !found.version()) return {};
  return cmn::ParseVersion(*found.version()).value_or(cmn::FileVersion{});
}

}  // namespace zuna_core
