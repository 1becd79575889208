// The input: two decrypted files (pair.h): what is converted, and its companion. Every entry point of the
// converter that works in memory refuses them with an exception, or returns an envelope that opens.

#include <exception>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "CL/change_log.h"
#include "cmn/version_probe.h"
#include "format_converter/attacca_fermata.h"
#include "format_converter/logdata.h"
#include "format_converter/showdata.h"
#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/change_log_header.h"
#include "format_converter/version0/containers/show_data.h"
#include "fuzz/cost.h"
#include "fuzz/pair.h"
#include "fuzz/target.h"
#include "tests/support/encrypted.h"
#include "zuna_midi/show_data.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using zuna_test::kKey;

constexpr cmn::FileVersion kVersions[] = {{1, 0}, {1, 1}, {1, 2}, {2, 0}, {3, 0}};

/// Calls an entry point. What it returns opens, and is read as a `Model`.
template <typename Model, typename Call>
void Check(const char* step, std::size_t size, Call call) {
  Bytes envelope;
  try {
    const fuzz::MemoryBound bound(step, fuzz::CommandHeapBound(size));
    envelope = call();
  } catch (const std::exception&) {
    return;
  }
  std::istringstream is(zuna_test::Decrypted(envelope));
  const Model model(is);
}

/// What comes back of a legacy log. One without songs can be written, but the reader of whole logs takes
/// none.
struct LegacyLog {
  explicit LegacyLog(std::istream& is) {
    const version0::ChangeLogHeader header(is);
    if (is.tellg() == std::streamoff{header.end_position}) return;
    is.seekg(0);
    const version0::ChangeLogV0 log(is);
  }
};

void ConvertShow(const Bytes& data, std::size_t size) {
  Check<version0::ShowData>("showdata_down_vector", size,
                            [&] { return showdata_down_vector(data, kKey.key, kKey.iv); });
  for (const cmn::FileVersion& version : kVersions) {
    Check<zuna_midi::ShowData>("showdata_converter_vector", size,
                               [&] { return showdata_converter_vector(data, version, kKey.key, kKey.iv); });
  }
}

void ConvertLog(const Bytes& data, const Bytes& companion, std::size_t size) {
  Check<LegacyLog>("logdata_down_vector", size, [&] { return logdata_down_vector(data, kKey.key, kKey.iv); });
  for (const cmn::FileVersion& version : kVersions) {
    Check<CL::ChangeLog>("logdata_up_vector", size,
                         [&] { return logdata_up_vector(data, companion, version, kKey.key, kKey.iv); });
    Check<CL::ChangeLog>("logdata_converter_vector", size,
                         [&] { return logdata_converter_vector(data, version, kKey.key, kKey.iv); });
  }
  Check<CL::ChangeLog>("copy_attaccas_and_fermatas_vector", size,
                       [&] { return copy_attaccas_and_fermatas_vector(data, companion, kKey.key, kKey.iv); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [file, companion] = fuzz::PairOf(data, size);
  const Bytes envelope = zuna_test::Encrypted(file);
  ConvertShow(envelope, size);
  ConvertLog(envelope, zuna_test::Encrypted(companion), size);
  return 0;
}
