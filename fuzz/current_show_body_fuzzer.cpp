// The input: a minor version (1 byte, modulo 3) and the body of a binary show file. The target puts header
// and checksum around it, so that the input reaches the fields.

#include <string>

#include "fuzz/framed.h"
#include "fuzz/round_trip.h"
#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string body(data + 1, data + size);
  fuzz::ReadAndConvert<zuna_midi::ShowData>(fuzz::Framed(cmn::FileKind::kShow, data[0] % 3, body));
  return 0;
}
