// The input: where the stream stands (1 byte) and its content. The version probes look at the beginning
// whatever the position is, and leave position and state as they were.

#include <sstream>
#include <string>

#include "cmn/version_probe.h"
#include "format_converter/file_version.h"
#include "fuzz/cost.h"
#include "fuzz/target.h"

namespace {

using Probe = cmn::FileVersion (*)(std::istream&);

/// The version that the probe gives from the beginning.
cmn::FileVersion FromStart(Probe probe, const std::string& bytes) {
  std::istringstream is(bytes);
  return fuzz::Bounded("a version probe", bytes.size(), [&] { return probe(is); });
}

void Check(Probe probe, const std::string& bytes, std::size_t position) {
  std::istringstream is(bytes);
  is.seekg(static_cast<std::streamoff>(position));
  fuzz::Require(probe(is) == FromStart(probe, bytes), "a probe does not depend on the position");
  fuzz::Require(is.good() && is.tellg() == static_cast<std::streamoff>(position),
                "a probe leaves position and state as they were");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string bytes(data + 1, data + size);
  const std::size_t position = bytes.empty() ? 0 : data[0] % bytes.size();
  for (const Probe probe :
       {cmn::get_showdata_version, cmn::get_logdata_version, WrapGetShowdataVersion, WrapGetLogdataVersion}) {
    Check(probe, bytes, position);
  }
  fuzz::Require(FromStart(cmn::get_showdata_version, bytes) == cmn::FileVersion{0, 0} ||
                    FromStart(cmn::get_logdata_version, bytes) == cmn::FileVersion{0, 0},
                "nothing is both a show and a log");
  return 0;
}
