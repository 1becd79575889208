// The input: the plaintext of a legacy log.

#include <exception>
#include <sstream>
#include <string>

#include "CL/change_log.h"
#include "format_converter/version0/containers/change_log.h"
#include "fuzz/cost.h"
#include "fuzz/target.h"

namespace {

using version0::ChangeLogV0;

std::string Written(const ChangeLogV0& log) {
  std::ostringstream os;
  log.write_binary(os);
  return os.str();
}

ChangeLogV0 Read(const std::string& bytes) {
  std::istringstream is(bytes);
  return fuzz::Bounded("reading a log", bytes.size(), [&] { return ChangeLogV0(is); });
}

void Check(const ChangeLogV0& log, std::size_t size) {
  const std::string bytes = fuzz::Bounded("writing a log", size, [&] { return Written(log); });
  const ChangeLogV0 back = Read(bytes);
  fuzz::Require(Written(back) == bytes, "a written log reads back");
  fuzz::Require(back == log, "a written log reads back equal");
  const CL::ChangeLog up = fuzz::Bounded("conversion up", size, [&] { return log.get_version_1_0(); });
  const ChangeLogV0 down = fuzz::Bounded("conversion down", size, [&] { return ChangeLogV0(up); });
  fuzz::Require(Written(down) == bytes, "a log comes up and down unchanged");
  std::ostringstream text;
  for (const auto& [number, song] : log.songs) song.write_string_detailed(text, 0);
  fuzz::Require(!text.str().empty(), "a log prints");
  fuzz::RequireShort(text.str(), size);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ChangeLogV0 log;
  try {
    log = Read(std::string(data, data + size));
  } catch (const std::exception&) {
    return 0;  // refused, as most inputs are
  }
  Check(log, size);
  return 0;
}
