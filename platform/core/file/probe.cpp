// The version of the data in a stream: the header of a binary file (docs/format-1.md), or what the text form
// states (docs/format-2.md).

#include <algorithm>
#include <array>
#include <istream>
#include <optional>
#include <string>
#include <string_view>

#include "cmn/version_probe.h"
#include "platform/core/bytes/stream_input.h"
#include "platform/core/file/preamble.h"
#include "platform/core/json/ignore_events.h"
#include "platform/core/json/parse_stream.h"

namespace zuna_core {

namespace {

/// Collects the texts under "kind" and "fileVersion" at the top level and stops the parser at the second one.
class ProbeHandler : public zuna_json::IgnoreEvents {
 public:
  const cmn::StatedType& stated() const { return stated_; }

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
    if (depth_ == 1 && key_ == "kind") stated_.kind = text_;
    if (depth_ == 1 && key_ == "fileVersion") stated_.version = text_;
    text_.clear();
    if (!stated_.kind || !stated_.version) return true;
    code = boost::json::error::extra_data;  // enough is known
    return false;
  }

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
  cmn::StatedType stated_;
};

/// The version that the text form of this kind states that begins at the position of the stream; 0.0 where
/// none of this kind is there.
cmn::FileVersion ProbeText(std::istream& is, FileKind kind) {
  const cmn::StatedType stated = cmn::StatedInText(is);
  if (stated.kind != cmn::KindText(kind) || !stated.version) return {};
  return cmn::ParseVersion(*stated.version).value_or(cmn::FileVersion{});
}

/// Looks at the stream from its position. A stream that has too few bytes for a header ends up in its fail
/// state, like every stream that is asked for more than it has.
cmn::FileVersion ProbeHere(std::istream& is, FileKind kind) {
  std::array<char, kHeaderSize> buffer{};
  is.read(buffer.data(), buffer.size());
  if (!is) return {};
  if (buffer.front() == cmn::kTextFormStart) {
    is.seekg(0);
    return is ? ProbeText(is, kind) : cmn::FileVersion{};
  }
  const std::optional<Header> header = DecodeHeader(kind, {buffer.data(), buffer.size()});
  return header ? header->version : cmn::FileVersion{};
}

/// Moves a stream to its beginning while this lives; restores position, state and exception mask at the end.
class AtBeginning {
 public:
  explicit AtBeginning(std::istream& is)
      : is_(is), state_(is.rdstate()), no_exceptions_(is), position_(is.tellg()) {
    is.seekg(0);
  }
  ~AtBeginning() {
    is_.clear();
    is_.seekg(position_);
    is_.clear(state_);
  }
  AtBeginning(const AtBeginning&) = delete;
  AtBeginning& operator=(const AtBeginning&) = delete;

 private:
  std::istream& is_;
  std::ios_base::iostate state_;
  ScopedStreamMask no_exceptions_;
  std::istream::pos_type position_;
};

cmn::FileVersion Probe(std::istream& is, FileKind kind) {
  cmn::FileVersion version;
  std::ios_base::iostate outcome = std::ios_base::goodbit;
  {
    const AtBeginning beginning(is);
    try {
      if (is) version = ProbeHere(is, kind);
    } catch (const cmn::DataError&) {
      // The stream cannot be read, and its state says so.
    }
    outcome = is.rdstate();
  }
  if ((outcome & is.exceptions()) != 0) {
    throw std::ios_base::failure("the data ends before its version or cannot be read");
  }
  return version;
}

}  // namespace

}  // namespace zuna_core

namespace cmn {

StatedType StatedInText(std::istream& is) {
  boost::json::parse_options options;
  options.max_depth = zuna_json::kMaxDepth;
  boost::json::basic_parser<zuna_core::ProbeHandler> parser(options);
  zuna_json::ParseStream(is, {}, parser);
  return parser.handler().stated();
}

FileVersion get_showdata_version(std::istream& is) {
  return zuna_core::Probe(is, zuna_core::FileKind::kShow);
}

FileVersion get_logdata_version(std::istream& is) { return zuna_core::Probe(is, zuna_core::FileKind::kLog); }

}  // namespace cmn
