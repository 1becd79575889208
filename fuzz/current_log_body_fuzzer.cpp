// The input: a minor version (1 byte: odd for 1.1, even for 1.2) and the body of a binary log
// file. The target puts header and checksum around it, so that the input reaches the fields.

#include <string>

#include "fuzz/framed.h"
#include "fuzz/round_trip.h"
#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string body(data + 1, data + size);
  const std::uint8_t minor = data[0] % 2 == 0 ? 2 : 1;
  fuzz::ReadAndConvert<CL::ChangeLog>(fuzz::Framed(cmn::FileKind::kLog, minor, body));
  return 0;
}
