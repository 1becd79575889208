#include "cmn/version_probe.h"

#include <array>
#include <istream>
#include <optional>
#include <string_view>

#include "cmn/data_error.h"
#include "platform/core/binary/header.h"
#include "platform/core/probe/text_probe.h"
#include "platform/core/stream/input.h"

namespace zuna_core {

namespace {

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

/// Takes a stream to its beginning while this lives; puts position, state and exception mask back at the end.
class AtBeginning {
 public:
  explicit AtBeginning(std::istream& is) : is_(is), state_(is.rdstate()), quiet_(is), position_(is.tellg()) {
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
  QuietStream quiet_;
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

FileVersion get_showdata_version(std::istream& is) {
  return zuna_core::Probe(is, zuna_core::FileKind::kShow);
}

FileVersion get_logdata_version(std::istream& is) { return zuna_core::Probe(is, zuna_core::FileKind::kLog); }

}  // namespace cmn
