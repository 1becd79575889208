// The input: a whole current log file, decrypted.

#include <sstream>
#include <string>

#include "cmn/version_probe.h"
#include "fuzz/log_round_trip.h"
#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  std::istringstream is(bytes);
  const cmn::FileVersion version = cmn::get_logdata_version(is);
  if (const auto log = fuzz::ReadAndConvertLog(bytes)) {
    fuzz::Require(log->file_version == version, "a log has the version that its file is probed as");
  }
  return 0;
}
