// The input: a whole current show file, decrypted.

#include <sstream>
#include <string>

#include "cmn/version_probe.h"
#include "fuzz/round_trip.h"
#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  std::istringstream is(bytes);
  const cmn::FileVersion version = cmn::get_showdata_version(is);
  cmn::get_logdata_version(is);
  if (fuzz::ReadAndConvert<zuna_midi::ShowData>(bytes)) {
    fuzz::Require(version != cmn::FileVersion{0, 0},
                  "what is read as a current show is not probed as a legacy one");
  }
  return 0;
}
