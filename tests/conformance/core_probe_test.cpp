// What the converter relies on in the version probes: the contract in interfaces/cmn/version_probe.h.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "cmn/version_probe.h"
#include "tests/conformance/samples.h"

namespace {

using conformance::kCurrent;
using conformance::SampleLog;
using conformance::SampleShow;
using conformance::Written;

constexpr cmn::FileVersion kLegacy{0, 0};

/// A text of a legacy file: its length in one byte, then the text.
std::string LegacyText(const std::string& text) { return static_cast<char>(text.size()) + text; }

/// The beginning of a legacy show: the count of its songs, a number and a name.
const std::string kLegacyShow = '\1' + LegacyText("12") + LegacyText("Tune") + std::string(20, '\0');

/// A legacy log without songs.
const std::string kLegacyLog = "ZUNA" +                                     //
                               std::string("\x20\0\0\0", 4) +               // log length: 16 + 6 + 6 + 4
                               std::string(16, '\x11') +                    // identifier
                               LegacyText("label") + LegacyText("Opera") +  // log label, show name
                               std::string(4, '\0');                        // log tag pair

TEST(VersionProbe, FindsCurrentAndLegacyVersions) {
  std::istringstream show(Written(SampleShow()));
  EXPECT_EQ(cmn::get_showdata_version(show), kCurrent);
  std::istringstream log(Written(SampleLog()));
  EXPECT_EQ(cmn::get_logdata_version(log), kCurrent);
  std::istringstream legacy_show(kLegacyShow);
  EXPECT_EQ(cmn::get_showdata_version(legacy_show), kLegacy);
  std::istringstream legacy_log(kLegacyLog);
  EXPECT_EQ(cmn::get_logdata_version(legacy_log), kLegacy);
}

TEST(VersionProbe, LooksAtTheBeginningWhereverTheStreamStands) {
  std::istringstream legacy(kLegacyLog);
  legacy.seekg(8);  // after the test that the log is complete
  EXPECT_EQ(cmn::get_logdata_version(legacy), kLegacy);
  std::istringstream current(Written(SampleLog()));
  current.seekg(0, std::ios_base::end);
  EXPECT_EQ(cmn::get_logdata_version(current), kCurrent);
}

TEST(VersionProbe, LeavesPositionStateAndMaskAsTheyWere) {
  std::istringstream is(Written(SampleShow()));
  is.seekg(3);
  is.setstate(std::ios_base::eofbit);
  cmn::get_showdata_version(is);
  EXPECT_EQ(is.rdstate(), std::ios_base::eofbit);
  EXPECT_EQ(is.exceptions(), std::ios_base::goodbit);
  is.clear();
  EXPECT_EQ(is.tellg(), 3);
}

}  // namespace
