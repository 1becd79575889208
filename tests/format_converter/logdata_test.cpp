#include "format_converter/logdata.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

#include "CL/change_log.h"
#include "cmn/data_error.h"
#include "format_converter/errors.h"
#include "format_converter/version0/primitives/errors.h"
#include "kit/error.h"
#include "tests/format_converter/support/errors.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/legacy_samples.h"
#include "tests/support/nothing_opens.h"
#include "tests/support/random_legacy_log.h"
#include "tests/support/random_log.h"
#include "tests/support/sanitized.h"
#include "tests/support/temporary_folder.h"
#include "zuna_midi/show_data.h"
#include "zuna_sec/errors.h"

namespace {

using testing::ElementsAre;
using zuna_test::Bytes;
using zuna_test::Decrypted;
using zuna_test::Encrypted;
using zuna_test::ExactMessageOf;
using zuna_test::FileBytes;
using zuna_test::kKey;
using zuna_test::MessageOf;
using zuna_test::SampleCurrentLog;
using zuna_test::SampleLegacyLog;
using zuna_test::SampleLegacyShow;
using zuna_test::StreamFailureText;
using zuna_test::Written;
using zuna_test::WrittenAt;

constexpr const char* kNotLegacy = "Input file version is not 0.0";
constexpr const char* kTooOld = "Input file version must be at least 1.1";
const cmn::FileVersion kVersions[] = {{1, 1}, {1, 2}, {2, 0}};

/// What begins like a current log of a version that there is not, and is as long as it says.
std::string LogOfVersion(int major, int minor) {
  return Bytes({0x00, 'Z', 'L', 'G', 2, 0, 0, 0, major, minor});
}

std::vector<std::uint8_t> Up(const std::string& log, const std::string& show,
                             const cmn::FileVersion& version) {
  return logdata_up_vector(Encrypted(log), Encrypted(show), version, kKey.key, kKey.iv);
}

class LogdataTest : public testing::Test {
 protected:
  std::string Put(const std::string& name, const std::string& plaintext) const {
    const auto bytes = Encrypted(plaintext);
    return folder_.Put(name, std::string(bytes.begin(), bytes.end()));
  }

  std::string PutLegacy() const { return Put("legacy.logdata", Written(SampleLegacyLog())); }
  std::string PutShow() const { return folder_.Put("plain.showdata", Written(SampleLegacyShow())); }

  zuna_test::TemporaryFolder folder_;
  const std::string out_ = folder_ / "out.logdata";
};

TEST_F(LogdataTest, UpWritesTheLogWithTheDivisionsOfTheShow) {
  const std::string log = Written(SampleLegacyLog());
  const std::string show = Written(SampleLegacyShow());
  for (const cmn::FileVersion& version : kVersions) {
    EXPECT_EQ(logdata_up(PutLegacy(), out_, PutShow(), version, kKey), out_);
    EXPECT_EQ(Decrypted(out_), WrittenAt(SampleCurrentLog(), version));
    EXPECT_EQ(Up(log, show, version), FileBytes(out_));
  }
}

TEST_F(LogdataTest, SongsOfOnlyOneFileAreLetBe) {
  const std::string plaintext =
      Decrypted(Up(Written(SampleLegacyLog()), Written(SampleLegacyShow()), {1, 2}));
  std::istringstream is(plaintext);
  const CL::ChangeLog log(is);
  EXPECT_EQ(log.song_logs().size(), 2U) << "no song log for the song that stands in the show only";
  EXPECT_EQ(log.GetSongLog("12a")->division, 480);
  EXPECT_EQ(log.GetSongLog("2")->division, 0);
}

TEST_F(LogdataTest, UpTakesACurrentFileInPlaceOfTheShowForOneWithoutSongs) {
  const std::string log = Written(SampleLegacyLog());
  const std::vector<std::uint8_t> without_songs = Up(log, Bytes({0}), {1, 2});
  EXPECT_EQ(Up(log, WrittenAt(SampleCurrentLog(), {1, 2}), {1, 2}), without_songs);
  EXPECT_EQ(Up(log, WrittenAt(SampleLegacyShow().get_version_1_0(), {1, 2}), {1, 2}), without_songs);
}

TEST_F(LogdataTest, DownWritesTheLegacyLog) {
  for (const cmn::FileVersion& version : kVersions) {
    const std::string current = WrittenAt(SampleCurrentLog(), version);
    EXPECT_EQ(logdata_down(Put("in.logdata", current), out_, kKey), out_);
    EXPECT_EQ(Decrypted(out_), Written(SampleLegacyLog()));
    EXPECT_EQ(logdata_down_vector(Encrypted(current), kKey.key, kKey.iv), FileBytes(out_));
  }
}

TEST_F(LogdataTest, ConverterWritesEveryVersionFromEveryOther) {
  for (const cmn::FileVersion& from : kVersions) {
    for (const cmn::FileVersion& to : kVersions) {
      const std::string current = WrittenAt(SampleCurrentLog(), from);
      EXPECT_EQ(logdata_converter(Put("in.logdata", current), out_, to, kKey), out_);
      EXPECT_EQ(Decrypted(out_), WrittenAt(SampleCurrentLog(), to));
      EXPECT_EQ(logdata_converter_vector(Encrypted(current), to, kKey.key, kKey.iv), FileBytes(out_));
    }
  }
}

TEST_F(LogdataTest, RandomLegacyLogsComeBackByteForByteAtEveryVersion) {
  std::mt19937 random(21);
  const auto show = Encrypted(Written(SampleLegacyShow()));
  for (int i = 0; i < 100; ++i) {
    const std::string legacy = Written(zuna_test::RandomLegacyLog(random));
    for (const cmn::FileVersion& version : kVersions) {
      const auto up = logdata_up_vector(Encrypted(legacy), show, version, kKey.key, kKey.iv);
      ASSERT_EQ(Decrypted(logdata_down_vector(up, kKey.key, kKey.iv)), legacy) << "log " << i;
    }
  }
}

TEST_F(LogdataTest, RandomCurrentLogsGoThroughEveryPairOfVersionsUnchanged) {
  std::mt19937 random(22);
  for (int i = 0; i < 30; ++i) {
    const CL::ChangeLog log = zuna_test::RandomLog(random);
    for (const cmn::FileVersion& from : kVersions) {
      const auto in = Encrypted(WrittenAt(log, from));
      for (const cmn::FileVersion& to : kVersions) {
        ASSERT_EQ(Decrypted(logdata_converter_vector(in, to, kKey.key, kKey.iv)), WrittenAt(log, to));
      }
    }
  }
}

TEST_F(LogdataTest, CheckLogSizeComparesTheCountWithThePlaintext) {
  const auto check = [](const std::string& plaintext) {
    zuna_sec::TwoFishCipherStream stream(Encrypted(plaintext), kKey.key, kKey.iv);
    const bool complete = check_log_size(stream);
    EXPECT_TRUE(plaintext.size() < 8 || stream.GetStream().tellg() == 8);
    return complete;
  };
  EXPECT_TRUE(check(Written(SampleLegacyLog())));
  EXPECT_TRUE(check(WrittenAt(SampleCurrentLog(), {1, 2}))) << "a current log passes too";
  EXPECT_TRUE(check(Bytes({'Z', 'U', 'N', 'A', 3, 0, 0, 0, 1, 2, 3})));
  EXPECT_TRUE(check(Bytes({0, 0, 0, 0, 0, 0, 0, 0}))) << "the magic is not examined";
  EXPECT_FALSE(check(Bytes({'Z', 'U', 'N', 'A', 2, 0, 0, 0, 1, 2, 3})));
  EXPECT_FALSE(check(Bytes({'Z', 'U', 'N', 'A', 4, 0, 0, 0, 1, 2, 3})));
  for (std::size_t length = 0; length < 8; ++length) {
    EXPECT_FALSE(check(std::string(length, '\0'))) << length;
    EXPECT_FALSE(check(std::string(length, '\xFF'))) << length;
  }
}

TEST_F(LogdataTest, CheckLogSizeLeavesAStreamThatHasEndedFailed) {
  zuna_sec::TwoFishCipherStream stream(Encrypted("ZUNA\3"), kKey.key, kKey.iv);
  EXPECT_FALSE(check_log_size(stream));
  EXPECT_EQ(stream.GetStream().rdstate(), std::ios_base::failbit | std::ios_base::eofbit);
  stream.GetStream().clear();
  EXPECT_EQ(stream.GetStream().tellg(), 5);
  stream.GetStream().exceptions(std::ios_base::failbit);
  EXPECT_THROW(check_log_size(stream), std::ios_base::failure);
}

TEST_F(LogdataTest, UpRefusesAnIncompleteLogBeforeItsVersion) {
  std::string longer = Written(SampleLegacyLog());
  std::string shorter = longer;
  ++longer[4];
  --shorter[4];
  for (const std::string& plaintext :
       {longer, shorter, std::string(), LogOfVersion(9, 9) + "x", WrittenAt(SampleCurrentLog(), {2, 0})}) {
    const std::string in = Put("in.logdata", plaintext);
    EXPECT_EQ(ExactMessageOf<std::runtime_error>([&] {
                logdata_up(in, out_, "/no/such/show", {1, 2}, kKey);
              }),
              "Input does not contain a complete ChangeLog: " + in);
    EXPECT_EQ(ExactMessageOf<std::runtime_error>([&] {
                Up(plaintext, "", {1, 2});
              }),
              "Input does not contain a complete ChangeLog.");
  }
  EXPECT_THAT(folder_.Names(), ElementsAre("in.logdata"));
}

TEST_F(LogdataTest, UpRefusesEveryVersionButZero) {
  for (const std::string& plaintext :
       {LogOfVersion(0, 1), LogOfVersion(1, 0), WrittenAt(SampleCurrentLog(), {1, 2})}) {
    EXPECT_EQ(MessageOf<FormatConverterError>([&] {
                logdata_up(Put("in.logdata", plaintext), out_, "/no/such/show", {1, 2}, kKey);
              }),
              kNotLegacy);
    EXPECT_EQ(MessageOf<FormatConverterError>([&] { Up(plaintext, "", {1, 2}); }), kNotLegacy);
  }
}

TEST_F(LogdataTest, DownAndConverterRefuseVersionsBefore11) {
  for (const std::string& plaintext : {LogOfVersion(0, 0), LogOfVersion(0, 5), LogOfVersion(1, 0),
                                       Written(SampleLegacyLog()), std::string()}) {
    const std::string in = Put("in.logdata", plaintext);
    const auto data = Encrypted(plaintext);
    EXPECT_EQ(MessageOf<FormatConverterError>([&] { logdata_down(in, out_, kKey); }), kTooOld);
    EXPECT_EQ(MessageOf<FormatConverterError>([&] { logdata_down_vector(data, kKey.key, kKey.iv); }),
              kTooOld);
    EXPECT_EQ(MessageOf<FormatConverterError>([&] { logdata_converter(in, out_, {1, 2}, kKey); }), kTooOld);
    EXPECT_EQ(MessageOf<FormatConverterError>([&] {
                logdata_converter_vector(data, {1, 2}, kKey.key, kKey.iv);
              }),
              kTooOld);
  }
  EXPECT_THAT(folder_.Names(), ElementsAre("in.logdata"));
}

TEST_F(LogdataTest, VersionsFrom11OnAreForTheCoreLibraryToRead) {
  for (const std::string& plaintext : {LogOfVersion(1, 9), LogOfVersion(2, 0), LogOfVersion(9, 0)}) {
    EXPECT_THROW(logdata_down_vector(Encrypted(plaintext), kKey.key, kKey.iv), cmn::DataError);
  }
}

TEST_F(LogdataTest, TextIsNotProbed) {
  // Probed, this would be of version 0.0; so it is the core library that refuses it.
  EXPECT_THROW(logdata_down_vector(Encrypted("{}"), kKey.key, kKey.iv), cmn::DataError);
  EXPECT_THROW(logdata_converter_vector(Encrypted("{}"), {1, 2}, kKey.key, kKey.iv), cmn::DataError);
}

TEST_F(LogdataTest, UpNamesAShowThatCannotBeOpenedAfterTheLogWasConverted) {
  const std::string show = folder_ / "none.showdata";
  EXPECT_EQ(MessageOf<kit::IoError>([&] {
              logdata_up(PutLegacy(), out_, show, {1, 2}, kKey);
            }),
            "Failed reading " + show + StreamFailureText());
  const std::string cut = folder_.Put("plain.showdata", Written(SampleLegacyShow()));
  EXPECT_EQ(MessageOf<kit::IoError>([&] {
              logdata_up(PutLegacy(), out_, cut + std::string("\0x", 2), {1, 2}, kKey);
            }),
            "Failed reading " + cut + "\\0x" + StreamFailureText());
  std::filesystem::remove(cut);
  EXPECT_THAT(folder_.Names(), ElementsAre("legacy.logdata"));

  std::string broken = Written(SampleLegacyLog());
  broken[0] = 'X';
  EXPECT_EQ(MessageOf<version0::IDError>([&] {
              logdata_up(Put("broken.logdata", broken), out_, show, {1, 2}, kKey);
            }),
            "Version0 ChangeLog must begin with ZUNA. Begins with XUNA at 4");
}

TEST_F(LogdataTest, UpNamesAShowThatIsCutOff) {
  const std::string plaintext = Written(SampleLegacyShow());
  for (std::size_t length = 0; length < plaintext.size(); ++length) {
    const std::string show = folder_.Put("cut.showdata", plaintext.substr(0, length));
    EXPECT_EQ(MessageOf<kit::IoError>([&] {
                logdata_up(PutLegacy(), out_, show, {1, 2}, kKey);
              }),
              "Failed reading verison0::ShowData" + StreamFailureText());
    EXPECT_THROW(Up(Written(SampleLegacyLog()), plaintext.substr(0, length), {1, 2}), std::ios_base::failure);
  }
  EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(LogdataTest, UpTakesThePlainShowAsPathAndTheEncryptedOneInMemory) {
  const auto encrypted = Encrypted(Written(SampleLegacyShow()));
  const std::string path = folder_.Put("encrypted.showdata", std::string(encrypted.begin(), encrypted.end()));
  EXPECT_EQ(MessageOf<kit::IoError>([&] {
              logdata_up(PutLegacy(), out_, path, {1, 2}, kKey);
            }),
            "Failed reading verison0::ShowData" + StreamFailureText());
  const std::string plain = Written(SampleLegacyShow());
  EXPECT_THROW(logdata_up_vector(Encrypted(Written(SampleLegacyLog())), {plain.begin(), plain.end()}, {1, 2},
                                 kKey.key, kKey.iv),
               zuna_sec::NotEncryptedError);
  EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(LogdataTest, UpReportsALogWhoseLastSongIsCutOff) {
  // The count says what is there, so the log is complete as far as check_log_size() can tell.
  const std::string whole = Written(SampleLegacyLog());
  const std::string show = PutShow();
  for (std::size_t length = 8; length < whole.size(); ++length) {
    std::string cut = whole.substr(0, length);
    cut[4] = static_cast<char>(length - 8);
    cut[5] = static_cast<char>((length - 8) >> 8);
    try {
      logdata_up(Put("cut.logdata", cut), out_, show, {1, 2}, kKey);
      // Cut off exactly behind the first song log, this is a log of one song.
      EXPECT_EQ(length, whole.size() - (4 + 2 + 1 + 4 + 40));
      std::filesystem::remove(out_);
    } catch (const kit::IoError& error) {
      EXPECT_EQ(error.what(), "Failed reading version0::ChangeLogV0" + StreamFailureText()) << length;
    }
    EXPECT_FALSE(std::filesystem::exists(out_));
  }
}

TEST_F(LogdataTest, ReadsOrRefusesEveryChangedByteOfALegacyLog) {
  const std::string legacy = Written(SampleLegacyLog());
  const auto show = Encrypted(Written(SampleLegacyShow()));
  int read = 0;
  for (std::size_t at = 0; at < legacy.size(); ++at) {
    for (const int change : {0x01, 0x80, 0xFF}) {
      std::string changed = legacy;
      changed[at] = static_cast<char>(changed[at] ^ change);
      try {
        const auto up = logdata_up_vector(Encrypted(changed), show, {1, 2}, kKey.key, kKey.iv);
        logdata_down_vector(up, kKey.key, kKey.iv);
        ++read;
      } catch (const std::exception& error) {
        EXPECT_STRNE(error.what(), "");
      }
    }
  }
  EXPECT_GT(read, 0) << "a changed value is still a value";
}

TEST_F(LogdataTest, LegacyErrorsPass) {
  CL::ChangeLog log = SampleCurrentLog();
  log.GetSongLog("12a")->song_name = std::string(256, 'x');
  const std::string in = Put("in.logdata", WrittenAt(log, {1, 2}));
  EXPECT_EQ(MessageOf<std::length_error>([&] { logdata_down(in, out_, kKey); }),
            "String length is limited to 256 characters");
  EXPECT_THAT(folder_.Names(), ElementsAre("in.logdata"));
  version0::ShowData show = SampleLegacyShow();
  std::string broken = Written(show);
  broken.replace(broken.find("TLMN"), 4, "XLMN");
  EXPECT_THROW(Up(Written(SampleLegacyLog()), broken, {1, 2}), version0::IDError);
}

TEST_F(LogdataTest, UnknownDestinationVersionIsTheCoreLibrarysAffair) {
  const std::string current = WrittenAt(SampleCurrentLog(), {1, 2});
  for (const cmn::FileVersion version : {cmn::FileVersion{0, 0}, {1, 0}, {1, 3}, {3, 0}}) {
    EXPECT_THROW(logdata_up(PutLegacy(), out_, PutShow(), version, kKey), cmn::UnsupportedVersionError);
    EXPECT_THROW(logdata_converter_vector(Encrypted(current), version, kKey.key, kKey.iv),
                 cmn::UnsupportedVersionError);
  }
  EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(LogdataTest, CipherErrorsPass) {
  const CipherKey wrong_key{{9}, kKey.iv};
  const std::string in = Put("in.logdata", WrittenAt(SampleCurrentLog(), {1, 2}));
  EXPECT_THROW(logdata_down(in, out_, wrong_key), zuna_sec::WrongKeyError);
  EXPECT_THROW(logdata_converter(in, out_, {1, 2}, wrong_key), zuna_sec::WrongKeyError);
  EXPECT_THROW(logdata_up(PutLegacy(), out_, PutShow(), {1, 2}, wrong_key), zuna_sec::WrongKeyError);
  EXPECT_THROW(logdata_down(folder_.Put("plain", "not encrypted"), out_, kKey), zuna_sec::NotEncryptedError);
  EXPECT_THROW(logdata_down(folder_ / "none", out_, kKey), kit::IoError);
  EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(LogdataTest, FailedWriteLeavesTheOldOutput) {
  const std::string in = Put("in.logdata", WrittenAt(SampleCurrentLog(), {1, 2}));
  EXPECT_THROW(logdata_down(in, folder_ / "none/out.logdata", kKey), kit::IoError);
  EXPECT_THROW(logdata_down(in, "/dev/full", kKey), kit::IoError);
  folder_.Put("out.logdata", "old");
  EXPECT_THROW(logdata_up(in, out_, PutShow(), {1, 2}, kKey), FormatConverterError);
  EXPECT_EQ(FileBytes(out_), (std::vector<std::uint8_t>{'o', 'l', 'd'}));
  EXPECT_THAT(folder_.Names(), testing::UnorderedElementsAre("in.logdata", "plain.showdata", "out.logdata"));
}

TEST_F(LogdataTest, VectorFormsNeverTouchTheFileSystem) {
  if (zuna_test::kSanitized) GTEST_SKIP() << "a sanitizer opens files itself";
  const std::string log = Written(SampleLegacyLog());
  const std::string show = Written(SampleLegacyShow());
  const auto up = [&] { return Up(log, show, {1, 2}); };
  const auto current = up();  // what libraries open once for all
  const auto down = [&] { return logdata_down_vector(current, kKey.key, kKey.iv); };
  const auto convert = [&] { return logdata_converter_vector(current, {2, 0}, kKey.key, kKey.iv); };
  const auto legacy = down();
  const auto text = convert();
  const std::string file = folder_.Put("file", "there");
  const zuna_test::NothingOpens limit;
  ASSERT_FALSE(std::ifstream(file).is_open());
  EXPECT_EQ(up(), current);
  EXPECT_EQ(down(), legacy);
  EXPECT_EQ(convert(), text);
}

}  // namespace
