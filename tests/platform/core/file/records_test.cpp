// The records of binary files one by one.

#include <gtest/gtest.h>

#include <stdexcept>

#include "CL/log_records.h"
#include "cmn/data_error.h"
#include "tests/support/encrypted.h"
#include "tests/support/sample_models.h"
#include "zuna_midi/show_records.h"

namespace {

constexpr std::size_t kHeader = 4 + 4 + 1 + 1;
constexpr std::size_t kChecksum = 4;
constexpr cmn::FileVersion kText{2, 0};

class Records : public testing::TestWithParam<cmn::FileVersion> {
 protected:
  static std::size_t ChecksumSize() { return GetParam() == cmn::FileVersion{1, 0} ? 0 : kChecksum; }
};

TEST_P(Records, OfAShow) {
  const zuna_midi::ShowData sample = zuna_test::SampleShow();
  const std::string bytes = zuna_test::WrittenAt(sample, GetParam());
  std::size_t offset = kHeader;
  zuna_midi::ShowHead head = zuna_midi::ReadShowHead(bytes, offset, GetParam());
  EXPECT_EQ(head.show.show_name, "Hä");
  EXPECT_EQ(head.songs, 1U);
  const bool is_compact = GetParam() == cmn::FileVersion{1, 2};
  EXPECT_EQ(offset, is_compact ? kHeader + 1 + 3 + 1 : kHeader + 4 + 3 + 4);
  head.show.AddSongData(zuna_midi::ReadSong(bytes, offset, GetParam()));
  EXPECT_EQ(offset + ChecksumSize(), bytes.size());
  EXPECT_EQ(zuna_test::WrittenAt(head.show, kText), zuna_test::WrittenAt(sample, kText));
}

TEST_P(Records, OfALog) {
  if (GetParam() == cmn::FileVersion{1, 0}) return;  // which has no logs
  const CL::ChangeLog sample = zuna_test::SampleLog();
  const std::string bytes = zuna_test::WrittenAt(sample, GetParam());
  std::size_t offset = kHeader;
  CL::LogHead head = CL::ReadLogHead(bytes, offset, GetParam());
  EXPECT_EQ(head.log.identifier, sample.identifier);
  EXPECT_EQ(head.songs, 1U);
  head.log.AddSongLog(CL::ReadSongLog(bytes, offset, GetParam()));
  EXPECT_EQ(offset + ChecksumSize(), bytes.size());
  EXPECT_EQ(zuna_test::WrittenAt(head.log, kText), zuna_test::WrittenAt(sample, kText));
}

TEST_P(Records, ThatAreCutOff) {
  const std::string bytes = zuna_test::WrittenAt(zuna_test::SampleShow(), GetParam());
  std::size_t song = kHeader;
  zuna_midi::ReadShowHead(bytes, song, GetParam());
  for (std::size_t size = song; size < bytes.size() - ChecksumSize(); ++size) {
    std::size_t offset = song;
    EXPECT_THROW(zuna_midi::ReadSong(bytes.substr(0, size), offset, GetParam()), cmn::DataError);
    EXPECT_EQ(offset, song);
  }
}

INSTANTIATE_TEST_SUITE_P(Versions, Records,
                         testing::Values(cmn::FileVersion{1, 0}, cmn::FileVersion{1, 1},
                                         cmn::FileVersion{1, 2}));

TEST(RecordsOfATextForm, AreNotRead) {
  std::size_t offset = 0;
  EXPECT_THROW(zuna_midi::ReadShowHead("{}", offset, kText), std::invalid_argument);
  EXPECT_THROW(zuna_midi::ReadSong("{}", offset, kText), std::invalid_argument);
  EXPECT_THROW(CL::ReadLogHead("{}", offset, kText), std::invalid_argument);
  EXPECT_THROW(CL::ReadSongLog("{}", offset, kText), std::invalid_argument);
}

}  // namespace
