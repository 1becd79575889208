#pragma once

// What holds for the bytes of any current file, for shows and for logs.

#include <optional>
#include <span>
#include <sstream>
#include <string>

#include "CL/change_log.h"
#include "cmn/data_error.h"
#include "cmn/file_format.h"
#include "fuzz/cost.h"
#include "fuzz/target.h"
#include "zuna_midi/show_data.h"

namespace fuzz {

inline cmn::FileKind KindOf(const zuna_midi::ShowData&) { return cmn::FileKind::kShow; }
inline cmn::FileKind KindOf(const CL::ChangeLog&) { return cmn::FileKind::kLog; }

template <typename Model>
std::string Write(const Model& model, const cmn::FileVersion& version) {
  std::ostringstream os;
  model.WriteBinary(os, version);
  return os.str();
}

template <typename Model>
Model Read(const std::string& bytes) {
  std::istringstream is(bytes);
  return Bounded("reading", bytes.size(), [&] { return Model(is); });
}

/// Reads `bytes` as a current file. What is refused is refused with a cmn::DataError; what is read can be
/// written in every version and comes back the same. Returns the model where the bytes were read.
template <typename Model>
std::optional<Model> ReadAndConvert(const std::string& bytes) {
  std::optional<Model> model;
  try {
    model = Read<Model>(bytes);
  } catch (const cmn::DataError&) {
    return std::nullopt;
  }
  const std::span<const cmn::FileVersion> versions = cmn::SupportedVersions(KindOf(*model));
  const std::string expected = Write(*model, versions.front());
  for (const cmn::FileVersion& version : versions) {
    const std::string written = Bounded("writing", bytes.size(), [&] { return Write(*model, version); });
    const Model again = Read<Model>(written);
    Require(Write(again, versions.front()) == expected, "every version holds the whole file");
  }
  return model;
}

}  // namespace fuzz
