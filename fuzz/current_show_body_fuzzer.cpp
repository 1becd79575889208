// Any bytes as the body of a binary show file, behind a header and before a checksum that are right, so that
// the input reaches the fields. The first byte chooses the version. What is refused is refused with an error,
// and what is read can be written in every version and comes back the same.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>

#include "cmn/data_error.h"
#include "platform/core/binary/coding.h"
#include "platform/core/binary/crc32.h"
#include "platform/core/binary/document.h"
#include "zuna_midi/show_data.h"

namespace {

std::string Write(const zuna_midi::ShowData& show, cmn::FileVersion version) {
  std::ostringstream os;
  show.WriteBinary(os, version);
  return os.str();
}

zuna_midi::ShowData Read(const std::string& bytes) {
  std::istringstream is(bytes);
  return zuna_midi::ShowData(is);
}

std::string Frame(std::uint8_t minor, const std::string& body) {
  const std::size_t checksum_size = minor == 0 ? 0 : zuna_core::kChecksumSize;
  const auto size = static_cast<std::uint32_t>(zuna_core::kVersionSize + body.size() + checksum_size);
  std::string file = zuna_core::EncodeHeader(zuna_core::FileKind::kShow, {size, {1, minor}}) + body;
  char crc[8];
  return file.append(crc, zuna_core::PutFixed(crc, zuna_core::Crc32(0, file), checksum_size));
}

/// The show in `bytes`; none where they are refused.
std::optional<zuna_midi::ShowData> TryRead(const std::string& bytes) {
  try {
    return Read(bytes);
  } catch (const cmn::DataError&) {
    return std::nullopt;
  }
}

void Check(const std::string& bytes) {
  const std::optional<zuna_midi::ShowData> show = TryRead(bytes);
  if (!show) return;
  const std::string expected = Write(*show, {1, 0});
  for (const cmn::FileVersion& to : {cmn::FileVersion{1, 0}, {1, 1}, {1, 2}, {2, 0}}) {
    if (Write(Read(Write(*show, to)), {1, 0}) != expected) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  Check(Frame(data[0] % 3, std::string(reinterpret_cast<const char*>(data) + 1, size - 1)));
  return 0;
}
