#include "format_converter/attacca_fermata.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

#include "CL/change_log.h"
#include "cmn/data_error.h"
#include "format_converter/errors.h"
#include "format_converter/logdata.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/nothing_opens.h"
#include "tests/support/sanitized.h"
#include "tests/support/temporary_folder.h"
#include "zuna_sec/errors.h"

namespace {

using zuna_test::Bytes;
using zuna_test::Decrypted;
using zuna_test::Encrypted;
using zuna_test::kKey;
using zuna_test::MessageOf;
using zuna_test::SampleCurrentLog;
using zuna_test::WrittenAt;

const cmn::FileVersion kVersions[] = {{1, 1}, {1, 2}, {2, 0}};

/// The sample log with an attacca and two fermatas in "12a".
CL::ChangeLog WithFermatas() {
  CL::ChangeLog log = SampleCurrentLog();
  log.GetSongLog("12a")->attacca = 3;
  log.GetSongLog("12a")->fermatas->events.emplace_back(480, 960, "held", 2);
  log.GetSongLog("12a")->fermatas->events.emplace_back(960, 970, "", -1);
  return log;
}

std::string Copied(const std::string& source, const std::string& destination) {
  return Decrypted(
      copy_attaccas_and_fermatas_vector(Encrypted(source), Encrypted(destination), kKey.key, kKey.iv));
}

std::string LogOfVersion(int major, int minor) {
  return Bytes({0x00, 'Z', 'L', 'G', 2, 0, 0, 0, major, minor});
}

class AttaccaFermataTest : public testing::Test {
 protected:
  std::string Put(const std::string& name, const std::string& plaintext) const {
    const auto bytes = Encrypted(plaintext);
    return folder_.Put(name, std::string(bytes.begin(), bytes.end()));
  }

  zuna_test::TemporaryFolder folder_;
};

TEST_F(AttaccaFermataTest, ComeBackAfterDownAndUp) {
  for (const cmn::FileVersion& version : kVersions) {
    const std::string before = WrittenAt(WithFermatas(), version);
    const auto legacy = logdata_down_vector(Encrypted(before), kKey.key, kKey.iv);
    const auto show = Encrypted(zuna_test::Written(zuna_test::SampleLegacyShow()));
    const auto up = logdata_up_vector(legacy, show, version, kKey.key, kKey.iv);
    EXPECT_NE(Decrypted(up), before);
    EXPECT_EQ(Copied(before, Decrypted(up)), before);
  }
}

TEST_F(AttaccaFermataTest, TheDestinationKeepsItsVersion) {
  for (const cmn::FileVersion& from : kVersions) {
    for (const cmn::FileVersion& to : kVersions) {
      const std::string source = Put("source", WrittenAt(WithFermatas(), from));
      const std::string destination = Put("destination", WrittenAt(SampleCurrentLog(), to));
      copy_attaccas_and_fermatas(source, destination, kKey);
      EXPECT_EQ(Decrypted(destination), WrittenAt(WithFermatas(), to));
      EXPECT_EQ(Decrypted(source), WrittenAt(WithFermatas(), from));
      EXPECT_EQ(Copied(WrittenAt(WithFermatas(), from), WrittenAt(SampleCurrentLog(), to)),
                Decrypted(destination));
    }
  }
}

TEST_F(AttaccaFermataTest, TheDestinationsOwnAreGone) {
  EXPECT_EQ(Copied(WrittenAt(SampleCurrentLog(), {1, 2}), WrittenAt(WithFermatas(), {1, 2})),
            WrittenAt(SampleCurrentLog(), {1, 2}));
}

TEST_F(AttaccaFermataTest, EverythingElseOfTheDestinationStays) {
  CL::ChangeLog source = WithFermatas();
  source.show_name.assign("Another");
  source.GetSongLog("12a")->division = 1;
  source.GetSongLog("12a")->vamps->events.clear();
  EXPECT_EQ(Copied(WrittenAt(source, {2, 0}), WrittenAt(SampleCurrentLog(), {1, 1})),
            WrittenAt(WithFermatas(), {1, 1}));
}

TEST_F(AttaccaFermataTest, SongsThatTheSourceLacksKeepTheirs) {
  CL::ChangeLog source;
  source.AddSongLog(std::make_shared<CL::SongLog>("2", "", std::uint16_t{0}, 0U));
  EXPECT_EQ(Copied(WrittenAt(source, {1, 2}), WrittenAt(WithFermatas(), {1, 2})),
            WrittenAt(WithFermatas(), {1, 2}));
}

TEST_F(AttaccaFermataTest, ASongThatTheDestinationLacksIsNamedAndNothingIsWritten) {
  CL::ChangeLog source = WithFermatas();
  source.AddSongLog(std::make_shared<CL::SongLog>("99", "", std::uint16_t{0}, 0U));
  const std::string from = Put("source", WrittenAt(source, {1, 2}));
  const std::string to = Put("destination", WrittenAt(SampleCurrentLog(), {1, 2}));
  EXPECT_THAT(MessageOf<std::out_of_range>([&] { copy_attaccas_and_fermatas(from, to, kKey); }),
              testing::HasSubstr("99"));
  EXPECT_EQ(Decrypted(to), WrittenAt(SampleCurrentLog(), {1, 2}));
}

TEST_F(AttaccaFermataTest, VersionsBefore11AreRefused) {
  const std::string good = WrittenAt(WithFermatas(), {1, 2});
  for (const std::string& old : {LogOfVersion(0, 0), LogOfVersion(0, 9), LogOfVersion(1, 0), std::string(),
                                 zuna_test::Written(zuna_test::SampleLegacyLog())}) {
    EXPECT_EQ(MessageOf<FormatConverterError>([&] { Copied(old, good); }),
              "Input file version must be at least 1.1");
    EXPECT_EQ(MessageOf<FormatConverterError>([&] { Copied(good, old); }),
              "Destination file version must be at least 1.1");
    const std::string from = Put("source", good);
    const std::string to = Put("destination", old);
    EXPECT_EQ(MessageOf<FormatConverterError>([&] { copy_attaccas_and_fermatas(from, to, kKey); }),
              "Destination file version must be at least 1.1");
    EXPECT_EQ(MessageOf<FormatConverterError>([&] { copy_attaccas_and_fermatas(to, from, kKey); }),
              "Input file version must be at least 1.1");
    EXPECT_EQ(Decrypted(to), old);
    EXPECT_EQ(Decrypted(from), good);
  }
}

TEST_F(AttaccaFermataTest, ADestinationOf10IsRefusedWithASourceOf20) {
  EXPECT_EQ(MessageOf<FormatConverterError>([&] {
              Copied(WrittenAt(WithFermatas(), {2, 0}), LogOfVersion(1, 0));
            }),
            "Destination file version must be at least 1.1");
}

TEST_F(AttaccaFermataTest, TheSourceIsReadBeforeTheDestinationIsOpened) {
  const std::string from = Put("source", LogOfVersion(1, 0));
  EXPECT_THROW(copy_attaccas_and_fermatas(from, folder_ / "none", kKey), FormatConverterError);
}

TEST_F(AttaccaFermataTest, TextIsNotProbed) {
  const std::string good = WrittenAt(WithFermatas(), {2, 0});
  EXPECT_THROW(Copied("{}", good), cmn::DataError);
  EXPECT_THROW(Copied(good, "{}"), cmn::DataError);
}

TEST_F(AttaccaFermataTest, CipherErrorsPass) {
  const std::string path = Put("log", WrittenAt(WithFermatas(), {1, 2}));
  EXPECT_THROW(copy_attaccas_and_fermatas(path, path, CipherKey{{9}, {}}), zuna_sec::WrongKeyError);
}

TEST_F(AttaccaFermataTest, VectorFormNeverTouchesTheFileSystem) {
  if (zuna_test::kSanitized) GTEST_SKIP() << "a sanitizer opens files itself";
  const std::string source = WrittenAt(WithFermatas(), {1, 2});
  const std::string destination = WrittenAt(SampleCurrentLog(), {1, 2});
  const std::string expected = Copied(source, destination);  // what libraries open once for all
  const std::string file = folder_.Put("file", "there");
  const zuna_test::NothingOpens limit;
  ASSERT_FALSE(std::ifstream(file).is_open());
  EXPECT_EQ(Copied(source, destination), expected);
}

}  // namespace
