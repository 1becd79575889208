#include "platform/core/file/beginning.h"

#include <istream>
#include <string_view>

#include "cmn/data_error.h"
#include "kit/format.h"
#include "platform/core/stream/input.h"

namespace zuna_core {

namespace {

[[noreturn]] void ThrowNoFile(std::istream& is, FileKind kind, std::string_view bytes) {
  const char* const name = cmn::KindName(kind).data();
  const std::string_view magic = cmn::BinaryMagic(kind);
  if (bytes.size() < kHeaderSize && bytes.substr(0, magic.size()) == magic.substr(0, bytes.size())) {
    const std::string problem = kit::format(
        "The %s file is cut off: it has %zu bytes and its header takes %zu", name, bytes.size(), kHeaderSize);
    ThrowTruncated(is, cmn::DataError(problem, kTakeAgain));
  }
  const FileKind other = kind == FileKind::kShow ? FileKind::kLog : FileKind::kShow;
  if (DecodeHeader(other, bytes)) {
    throw cmn::DataError(
        kit::format("This is a current %s file, not a %s file", cmn::KindName(other).data(), name));
  }
  throw cmn::DataError(kit::format("This is no current %s file: it has no header", name),
                       kit::format("a legacy %s (version 0.0) has to be converted up first", name));
}

}  // namespace

Beginning ReadBeginning(std::istream& is, FileKind kind) {
  Beginning beginning;
  beginning.bytes.resize(kHeaderSize);
  beginning.bytes.resize(ReadSome(is, beginning.bytes.data(), kHeaderSize));
  if (beginning.bytes.starts_with(cmn::kTextFormStart)) return beginning;
  beginning.header = DecodeHeader(kind, beginning.bytes);
  if (!beginning.header) ThrowNoFile(is, kind, beginning.bytes);
  return beginning;
}

}  // namespace zuna_core
