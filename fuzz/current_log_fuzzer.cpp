// The input: a whole current log file, decrypted.

#include <sstream>
#include <string>

#include "cmn/version_probe.h"
#include "fuzz/round_trip.h"
#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  std::istringstream is(bytes);
  const cmn::FileVersion version = cmn::get_logdata_version(is);
  if (const auto log = fuzz::ReadAndConvert<CL::ChangeLog>(bytes)) {
    fuzz::Require(log->file_version == version, "a log has the version that its file is probed as");
    std::ostringstream text;
    for (const auto& [number, song] : log->song_logs()) song->WriteStringDetailed(text, 0);
    for (const cmn::FileVersion& to : cmn::SupportedVersions(cmn::FileKind::kLog)) {
      fuzz::Require(fuzz::Read<CL::ChangeLog>(fuzz::Write(*log, to)).file_version == to,
                    "a log has the version of its file");
    }
  }
  return 0;
}
