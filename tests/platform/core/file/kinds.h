#pragma once

// What a test of files has to know about shows and about logs, so that one test holds for both.

#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "cmn/data_error.h"
#include "cmn/file_format.h"
#include "tests/platform/core/file/binary_file.h"
#include "tests/support/bytes.h"
#include "tests/support/log_equality.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/support/sample_models.h"
#include "tests/support/show_equality.h"

namespace zuna_test {

/// The bytes of the file of SampleShow() and of SampleLog() in each version, written down by hand.
std::string SampleShowFile(cmn::FileVersion version);
std::string SampleLogFile(cmn::FileVersion version);

struct ShowKind {
  using Model = zuna_midi::ShowData;
  static constexpr cmn::FileKind kKind = cmn::FileKind::kShow;
  static constexpr cmn::FileKind kOther = cmn::FileKind::kLog;

  static Model Sample() { return SampleShow(); }
  static std::string SampleFile(cmn::FileVersion version) { return SampleShowFile(version); }
  static Model Random(std::mt19937& random) {
    ShowOptions options;
    options.wild = random() % 2 != 0;
    return RandomShow(random, options);
  }
  /// Several times as large as the buffer that files are written through.
  static Model Big() {
    std::mt19937 random(2);
    ShowOptions options;
    options.max_messages = 60000;
    options.max_entries = 9000;
    options.wild = true;
    Model show = RandomShow(random, options);
    while (show.songs().size() < 2) show = RandomShow(random, options);
    return show;
  }
};

struct LogKind {
  using Model = CL::ChangeLog;
  static constexpr cmn::FileKind kKind = cmn::FileKind::kLog;
  static constexpr cmn::FileKind kOther = cmn::FileKind::kShow;

  static Model Sample() { return SampleLog(); }
  static std::string SampleFile(cmn::FileVersion version) { return SampleLogFile(version); }
  static Model Random(std::mt19937& random) { return RandomLog(random); }
  static Model Big() {
    std::mt19937 random(2);
    return RandomLog(random, {20, 3000});
  }
};

/// The versions that files of this kind have, all or the binary ones.
template <typename Kind>
std::vector<cmn::FileVersion> Versions() {
  const auto versions = cmn::SupportedVersions(Kind::kKind);
  return {versions.begin(), versions.end()};
}
template <typename Kind>
std::vector<cmn::FileVersion> BinaryVersions() {
  std::vector<cmn::FileVersion> versions = Versions<Kind>();
  versions.pop_back();
  return versions;
}

template <typename Model>
std::string Write(const Model& model, cmn::FileVersion version) {
  std::ostringstream os;
  model.WriteBinary(os, version);
  return os.str();
}

/// The message of the cmn::DataError that reading gives; empty where the file is read.
template <typename Model>
std::string ReadError(const std::string& bytes) {
  try {
    Read<Model>(bytes);
  } catch (const cmn::DataError& error) {
    return error.what();
  }
  return "";
}

/// The text of the sample with its first `from` replaced.
template <typename Kind>
std::string PatchedText(const std::string& from, const std::string& to) {
  std::string text = Kind::SampleFile({2, 0});
  return text.replace(text.find(from), from.size(), to);
}

/// The error of that text, without the offset at its end.
template <typename Kind>
std::string PatchedTextError(const std::string& from, const std::string& to) {
  const std::string error = ReadError<typename Kind::Model>(PatchedText<Kind>(from, to));
  return error.substr(0, error.rfind(" (at byte "));
}

}  // namespace zuna_test
