// Any bytes as a current show file: what is refused is refused with an error, and what is read can be written
// in every version and comes back the same.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>

#include "cmn/data_error.h"
#include "cmn/version_probe.h"
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

/// The show in `bytes`; none where they are refused.
std::optional<zuna_midi::ShowData> TryRead(const std::string& bytes) {
  try {
    return Read(bytes);
  } catch (const cmn::DataError&) {
    return std::nullopt;
  }
}

void Check(const std::string& bytes) {
  std::istringstream is(bytes);
  const cmn::FileVersion version = cmn::get_showdata_version(is);
  cmn::get_logdata_version(is);
  const std::optional<zuna_midi::ShowData> show = TryRead(bytes);
  if (!show) return;
  if (version == cmn::FileVersion{}) std::abort();
  const std::string expected = Write(*show, {1, 0});
  for (const cmn::FileVersion& to : {cmn::FileVersion{1, 0}, {1, 1}, {1, 2}, {2, 0}}) {
    if (Write(Read(Write(*show, to)), {1, 0}) != expected) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Check(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
