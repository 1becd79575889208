// Small files of every kind and version, as seeds.

#pragma once

#include <string>
#include <vector>

#include "cmn/file_format.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/sample_models.h"

namespace fuzz {

/// A decrypted file and what it is.
struct SampleFile {
  std::string name;  ///< such as "show-1.2"
  std::string bytes;
};

inline std::string SampleFileOf(cmn::FileKind kind, cmn::FileVersion version) {
  if (kind == cmn::FileKind::kShow) return zuna_test::WrittenAt(zuna_test::SampleShow(), version);
  return zuna_test::WrittenAt(zuna_test::SampleLog(), version);
}

inline std::vector<SampleFile> SampleFiles() {
  std::vector<SampleFile> files = {{"show-0.0", zuna_test::Written(zuna_test::SampleLegacyShow())},
                                   {"log-0.0", zuna_test::Written(zuna_test::SampleLegacyLog())}};
  for (const cmn::FileKind kind : {cmn::FileKind::kShow, cmn::FileKind::kLog}) {
    for (const cmn::FileVersion& version : cmn::SupportedVersions(kind)) {
      files.push_back(
          {std::string(cmn::KindName(kind)) + '-' + cmn::VersionText(version), SampleFileOf(kind, version)});
    }
  }
  return files;
}

/// The bytes of a seed.
inline std::vector<std::uint8_t> SeedBytes(const std::string& text) { return {text.begin(), text.end()}; }

}  // namespace fuzz
