// Mending: a file whose lengths, counts and checksums were broken is whole again.

#include "fuzz/mend/mend.h"

#include <gtest/gtest.h>

#include "fuzz/mend/numbers.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/sample_models.h"
#include "toolkit/smf/file.h"

namespace fuzz {
namespace {

constexpr std::size_t kMost = 0xFFFFFFFF;

/// `bytes` with a little-endian number of 4 bytes that is far too large.
std::string WithMost(std::string bytes, std::size_t at) {
  PutNumber(bytes, at, 4, kMost);
  return bytes;
}

/// `bytes` with `text` in the place of the first `found`.
std::string Replaced(std::string bytes, const std::string& found, const std::string& text) {
  return bytes.replace(bytes.find(found), found.size(), text);
}

TEST(Mend, SizeAndChecksumOfCurrentFiles) {
  for (const cmn::FileVersion version : {cmn::FileVersion{1, 0}, {1, 1}, {1, 2}}) {
    const std::string file = zuna_test::WrittenAt(zuna_test::SampleShow(), version);
    std::string broken = WithMost(file, 4);
    if (version.minor != 0) broken = WithMost(broken, file.size() - 4);
    EXPECT_EQ(Mend(broken), file);
  }
  const std::string log = zuna_test::WrittenAt(zuna_test::SampleLog(), {1, 2});
  EXPECT_EQ(Mend(WithMost(log, 4)), log);
}

TEST(Mend, LogLengthOfLegacyLogs) {
  const std::string log = zuna_test::Written(zuna_test::SampleLegacyLog());
  EXPECT_EQ(Mend(log), log);
  EXPECT_EQ(Mend(WithMost(log, 4)), log);
}

TEST(Mend, LengthOfTheLastSequenceOfLegacyLogs) {
  const std::string log = zuna_test::Written(zuna_test::SampleLegacyLog());
  const std::size_t last = log.size() - 5;
  EXPECT_EQ(Mend(WithMost(log, last + 1)), log);
}

TEST(Mend, CountsAndMarksOfLegacyShows) {
  const std::string show = zuna_test::Written(zuna_test::SampleLegacyShow());
  EXPECT_EQ(Mend(show), show);
  EXPECT_EQ(Mend(Replaced(show, "TLMN", "tlmn")), show);
  const std::size_t last_timeline = show.rfind("TLMN");
  EXPECT_EQ(Mend(WithMost(show, last_timeline + 4 + 4 + 4)), show) << "the size of the last timeline";
}

TEST(Mend, ChunksOfMidiFiles) {
  zuna_toolkit::smf::File file;
  file.division = 480;
  file.tracks.resize(2);
  file.tracks[0].messages = {{0, {0x90, 60, 100}}};
  const std::string bytes = zuna_toolkit::smf::Write(file);
  const std::size_t second = bytes.rfind("MTrk");
  EXPECT_EQ(Mend(bytes), bytes);
  EXPECT_EQ(Mend(WithMost(WithMost(bytes, 18), second + 4)), bytes) << "the lengths of the tracks";
  EXPECT_EQ(Mend(WithMost(bytes, 4)), bytes) << "the length of the header";
}

TEST(Mend, LeavesTextsAndShortFilesAlone) {
  for (const std::string& bytes : {std::string("{\"kind\": 1}"), std::string(), std::string("ZUNA"),
                                   std::string("MThd"), std::string("\0ZSH", 4)}) {
    EXPECT_EQ(Mend(bytes), bytes);
  }
}

}  // namespace
}  // namespace fuzz
