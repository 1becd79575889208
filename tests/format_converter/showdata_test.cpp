#include "format_converter/showdata.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

#include "CL/change_log.h"
#include "cmn/data_error.h"
#include "format_converter/errors.h"
#include "format_converter/version0/containers/show_data.h"
#include "format_converter/version0/primitives/errors.h"
#include "kit/error.h"
#include "tests/format_converter/support/errors.h"
#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/nothing_opens.h"
#include "tests/support/random_legacy_show.h"
#include "tests/support/sanitized.h"
#include "tests/support/temporary_folder.h"
#include "zuna_midi/show_data.h"
#include "zuna_sec/errors.h"

namespace {

using testing::ElementsAre;
using zuna_test::Bytes;
using zuna_test::Decrypted;
using zuna_test::Encrypted;
using zuna_test::FileBytes;
using zuna_test::kKey;
using zuna_test::MessageOf;
using zuna_test::StreamFailureText;
using zuna_test::Written;
using zuna_test::WrittenAt;

constexpr const char* kNotLegacy = "Input file version is not 0.0";
constexpr const char* kNotCurrent = "Input file version must be 1.0 or higher";
const cmn::FileVersion kVersions[] = {{1, 0}, {1, 1}, {1, 2}, {2, 0}};

const std::string kLog =
    "ZUNA" + Bytes({36, 0, 0, 0}) + std::string(16, '\7') + Bytes({0, 5}) + "Opera" + Bytes({1, 0, 2, 0});

/// A legacy show of one song with one note, as it stands in a file.
version0::ShowData LegacyShow() {
  version0::SongData song;
  song.song_number = song.timeline.name = "12a";
  song.song_name = "Tune";
  song.division = 480;
  song.timeline.tempos = {{0, static_cast<float>(0.5 / 480), 8, 8, 120}};
  song.timeline.meters = {{0, 4, 4}};
  song.tracks = {{1, "Piano"}};
  song.events = {{1, {{480, 480, 0x90, 60, 100, 1}}}};
  version0::ShowData show;
  show.songs["12a"] = song;
  return show;
}

zuna_midi::ShowData CurrentShow() {
  zuna_midi::ShowData show = LegacyShow().get_version_1_0();
  show.show_name = "Opera";
  return show;
}

/// What begins like a current show of a version that there is not.
std::string ShowOfVersion(int major, int minor) {
  return Bytes({0x00, 'Z', 'S', 'H', 2, 0, 0, 0, major, minor});
}

class ShowdataTest : public testing::Test {
 protected:
  std::string Put(const std::string& name, const std::string& plaintext) const {
    const auto bytes = Encrypted(plaintext);
    return folder_.Put(name, std::string(bytes.begin(), bytes.end()));
  }

  std::string PutLegacy() const { return Put("legacy.showdata", Written(LegacyShow())); }
  std::string PutLog() const { return folder_.Put("plain.logdata", kLog); }

  zuna_test::TemporaryFolder folder_;
  const std::string out_ = folder_ / "out.showdata";
};

TEST_F(ShowdataTest, UpWritesTheShowWithTheNameFromTheLog) {
  for (const cmn::FileVersion& version : kVersions) {
    EXPECT_EQ(showdata_up(PutLegacy(), out_, PutLog(), version, kKey), out_);
    EXPECT_EQ(Decrypted(out_), WrittenAt(CurrentShow(), version));
  }
}

TEST_F(ShowdataTest, DownWritesTheLegacyShow) {
  for (const cmn::FileVersion& version : kVersions) {
    const std::string current = WrittenAt(CurrentShow(), version);
    EXPECT_EQ(showdata_down(Put("in.showdata", current), out_, kKey), out_);
    EXPECT_EQ(Decrypted(out_), Written(LegacyShow()));
    EXPECT_EQ(showdata_down_vector(Encrypted(current), kKey.key, kKey.iv), FileBytes(out_));
  }
}

TEST_F(ShowdataTest, ConverterWritesEveryVersionFromEveryOther) {
  for (const cmn::FileVersion& from : kVersions) {
    for (const cmn::FileVersion& to : kVersions) {
      const std::string current = WrittenAt(CurrentShow(), from);
      EXPECT_EQ(showdata_converter(Put("in.showdata", current), out_, to, kKey), out_);
      EXPECT_EQ(Decrypted(out_), WrittenAt(CurrentShow(), to));
      EXPECT_EQ(showdata_converter_vector(Encrypted(current), to, kKey.key, kKey.iv), FileBytes(out_));
    }
  }
}

TEST_F(ShowdataTest, RandomLegacyShowsComeBackByteForByteAtEveryVersion) {
  std::mt19937 random(20);
  const std::string log = PutLog();
  for (int i = 0; i < 60; ++i) {
    const std::string legacy = Written(zuna_test::RandomLegacyShow(random));
    const std::string in = Put("in.showdata", legacy);
    for (const cmn::FileVersion& version : kVersions) {
      showdata_up(in, out_, log, version, kKey);
      ASSERT_EQ(Decrypted(showdata_down_vector(FileBytes(out_), kKey.key, kKey.iv)), legacy) << "show " << i;
    }
  }
}

TEST_F(ShowdataTest, UpRefusesEveryVersionButZero) {
  for (const auto& plaintext : {ShowOfVersion(0, 1), ShowOfVersion(1, 0), WrittenAt(CurrentShow(), {1, 2}),
                                WrittenAt(CurrentShow(), {2, 0})}) {
    EXPECT_EQ(MessageOf<FormatConverterError>([&] {
                showdata_up(Put("in.showdata", plaintext), out_, "/no/such/log", {1, 2}, kKey);
              }),
              kNotLegacy);
  }
}

TEST_F(ShowdataTest, UpTakesWhatBeginsWithAZeroByteForAShowWithoutSongs) {
  const std::string log = folder_.Put("plain.logdata", kLog);
  zuna_midi::ShowData none;
  none.show_name = "Opera";
  for (const std::string& other : {WrittenAt(CL::ChangeLog(), {1, 2}), std::string(100, '\0')}) {
    EXPECT_EQ(showdata_up(Put("in.showdata", other), out_, log, {1, 2}, kKey), out_);
    EXPECT_EQ(Decrypted(out_), WrittenAt(none, {1, 2}));
  }
}

TEST_F(ShowdataTest, DownAndConverterRefuseMajorZero) {
  for (const auto& plaintext : {ShowOfVersion(0, 5), Written(LegacyShow()), std::string()}) {
    const std::string in = Put("in.showdata", plaintext);
    const auto data = Encrypted(plaintext);
    EXPECT_EQ(MessageOf<FormatConverterError>([&] { showdata_down(in, out_, kKey); }), kNotCurrent);
    EXPECT_EQ(MessageOf<FormatConverterError>([&] { showdata_down_vector(data, kKey.key, kKey.iv); }),
              kNotCurrent);
    EXPECT_EQ(MessageOf<FormatConverterError>([&] {
                showdata_converter(in, out_, {1, 2}, kKey);
              }),
              kNotCurrent);
    EXPECT_EQ(MessageOf<FormatConverterError>([&] {
                showdata_converter_vector(data, {1, 2}, kKey.key, kKey.iv);
              }),
              kNotCurrent);
  }
  EXPECT_THAT(folder_.Names(), ElementsAre("in.showdata"));
}

TEST_F(ShowdataTest, TextIsNotProbed) {
  // Probed, these would be of version 0.0; so it is the core library that refuses them.
  version0::ShowData many;
  for (int i = 0; i < '{'; ++i) {
    const std::string number = std::to_string(i);
    many.songs[number] = LegacyShow().songs.at("12a");
    many.songs[number].song_number = number;
  }
  for (const std::string& plaintext : {std::string("{}"), Written(many)}) {
    ASSERT_EQ(plaintext.front(), '{');
    EXPECT_THROW(showdata_down_vector(Encrypted(plaintext), kKey.key, kKey.iv), cmn::DataError);
    EXPECT_THROW(showdata_converter_vector(Encrypted(plaintext), {1, 2}, kKey.key, kKey.iv), cmn::DataError);
  }
}

TEST_F(ShowdataTest, UpTakesALegacyShowOf123SongsThoughItLooksLikeText) {
  version0::ShowData many;
  for (int i = 0; i < '{'; ++i) {
    const std::string number = std::to_string(i);
    many.songs[number] = LegacyShow().songs.at("12a");
    many.songs[number].song_number = many.songs[number].timeline.name = number;
  }
  const std::string legacy = Written(many);
  showdata_up(Put("in.showdata", legacy), out_, PutLog(), {1, 2}, kKey);
  EXPECT_EQ(Decrypted(showdata_down_vector(FileBytes(out_), kKey.key, kKey.iv)), legacy);
}

TEST_F(ShowdataTest, UpNamesALogThatDoesNotExistAfterTheShowWasConverted) {
  const std::string log = folder_ / "none.logdata";
  EXPECT_EQ(MessageOf<kit::IoError>([&] {
              showdata_up(PutLegacy(), out_, log, {1, 2}, kKey);
            }),
            "versionZeroLogdataFile: " + log + " does not exist!");
  const std::string cut = PutLog();
  EXPECT_EQ(MessageOf<kit::IoError>([&] {
              showdata_up(PutLegacy(), out_, cut + std::string("\0\0", 2), {1, 2}, kKey);
            }),
            "versionZeroLogdataFile: " + cut + "\\0\\0 does not exist!");
  std::filesystem::remove(cut);
  EXPECT_THAT(folder_.Names(), ElementsAre("legacy.showdata"));

  version0::ShowData broken = LegacyShow();
  broken.songs["12a"].timeline.tempos.clear();
  const std::string in = Put("broken.showdata", Written(broken));
  EXPECT_EQ(MessageOf<std::logic_error>([&] {
              showdata_up(in, out_, log, {1, 2}, kKey);
            }),
            "Expected RTempo event on first iteration!");
}

TEST_F(ShowdataTest, UpNamesALogThatIsCutOff) {
  for (std::size_t length = 0; length < kLog.size(); ++length) {
    const std::string log = folder_.Put("cut.logdata", kLog.substr(0, length));
    EXPECT_EQ(MessageOf<kit::IoError>([&] {
                showdata_up(PutLegacy(), out_, log, {1, 2}, kKey);
              }),
              "Problem getting show name from " + log);
  }
  EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(ShowdataTest, UpTakesThePlainLogOnly) {
  EXPECT_THROW(showdata_up(PutLegacy(), out_, Put("encrypted.logdata", kLog), {1, 2}, kKey),
               version0::IDError);
  EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(ShowdataTest, UpReportsEveryTruncationAndWritesNothing) {
  const std::string legacy = Written(LegacyShow());
  const std::string log = PutLog();
  for (std::size_t length = 0; length < legacy.size(); ++length) {
    const std::string in = Put("cut.showdata", legacy.substr(0, length));
    try {
      showdata_up(in, out_, log, {1, 2}, kKey);
      ADD_FAILURE() << "a show cut off after " << length << " bytes passed";
    } catch (const kit::IoError& error) {
      EXPECT_EQ(error.what(), "Problem reading the CipherStream" + StreamFailureText()) << length;
    }
    EXPECT_FALSE(std::filesystem::exists(out_));
  }
}

TEST_F(ShowdataTest, ReadsOrRefusesEveryChangedByteOfALegacyShow) {
  const std::string legacy = Written(LegacyShow());
  const std::string log = PutLog();
  int read = 0;
  for (std::size_t at = 0; at < legacy.size(); ++at) {
    for (const int change : {0x01, 0x80, 0xFF}) {
      std::string changed = legacy;
      changed[at] = static_cast<char>(changed[at] ^ change);
      std::filesystem::remove(out_);
      try {
        showdata_up(Put("changed.showdata", changed), out_, log, {1, 2}, kKey);
        ++read;
      } catch (const std::exception& error) {
        EXPECT_STRNE(error.what(), "");
        EXPECT_FALSE(std::filesystem::exists(out_));
      }
    }
  }
  EXPECT_GT(read, 0) << "a changed note is still a note";
}

TEST_F(ShowdataTest, LegacyErrorsPass) {
  zuna_midi::ShowData show = CurrentShow();
  show.songs().at("12a")->voice_data->GetTrack(1)->name = std::string(256, 'x');
  EXPECT_EQ(MessageOf<std::length_error>([&] {
              showdata_down_vector(Encrypted(WrittenAt(show, {1, 2})), kKey.key, kKey.iv);
            }),
            "String length is limited to 256 characters");
  show = CurrentShow();
  show.songs().at("12a")->voice_data->GetTrack(1)->messages.clear();
  const std::string in = Put("in.showdata", WrittenAt(show, {1, 2}));
  EXPECT_EQ(zuna_test::ExactMessageOf<std::out_of_range>([&] { showdata_down(in, out_, kKey); }), "vector");
  show.songs().at("12a")->timeline->meters.clear();
  EXPECT_THROW(showdata_down_vector(Encrypted(WrittenAt(show, {1, 2})), kKey.key, kKey.iv), std::logic_error);
  EXPECT_THAT(folder_.Names(), ElementsAre("in.showdata"));
}

TEST_F(ShowdataTest, UnknownDestinationVersionIsTheCoreLibrarysAffair) {
  for (const cmn::FileVersion version : {cmn::FileVersion{0, 0}, {0, 1}, {1, 3}, {3, 0}}) {
    EXPECT_THROW(showdata_up(PutLegacy(), out_, PutLog(), version, kKey), cmn::UnsupportedVersionError);
    EXPECT_THROW(
        showdata_converter_vector(Encrypted(WrittenAt(CurrentShow(), {1, 2})), version, kKey.key, kKey.iv),
        cmn::UnsupportedVersionError);
  }
  EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(ShowdataTest, CipherErrorsPass) {
  const CipherKey wrong_key{{9}, kKey.iv};
  const CipherKey wrong_iv{kKey.key, {9}};
  const std::string in = Put("in.showdata", WrittenAt(CurrentShow(), {1, 2}));
  EXPECT_THROW(showdata_down(in, out_, wrong_key), zuna_sec::WrongKeyError);
  EXPECT_THROW(showdata_down(in, out_, wrong_iv), zuna_sec::WrongKeyError);
  EXPECT_THROW(showdata_up(PutLegacy(), out_, PutLog(), {1, 2}, wrong_key), zuna_sec::WrongKeyError);
  EXPECT_THROW(showdata_down(folder_.Put("plain", "not encrypted"), out_, kKey), zuna_sec::NotEncryptedError);
  EXPECT_THROW(showdata_down(folder_ / "none", out_, kKey), kit::IoError);
  EXPECT_FALSE(std::filesystem::exists(out_));
}

TEST_F(ShowdataTest, FailedWriteLeavesTheOldOutput) {
  const std::string in = Put("in.showdata", WrittenAt(CurrentShow(), {1, 2}));
  EXPECT_THROW(showdata_down(in, folder_ / "none/out.showdata", kKey), kit::IoError);
  EXPECT_THROW(showdata_down(in, "/dev/full", kKey), kit::IoError);
  folder_.Put("out.showdata", "old");
  EXPECT_THROW(showdata_up(in, out_, PutLog(), {1, 2}, kKey), FormatConverterError);
  EXPECT_EQ(FileBytes(out_), (std::vector<std::uint8_t>{'o', 'l', 'd'}));
  EXPECT_THAT(folder_.Names(), testing::UnorderedElementsAre("in.showdata", "plain.logdata", "out.showdata"));
}

TEST_F(ShowdataTest, VectorFormsNeverTouchTheFileSystem) {
  if (zuna_test::kSanitized) GTEST_SKIP() << "a sanitizer opens files itself";
  const auto current = Encrypted(WrittenAt(CurrentShow(), {1, 2}));
  const auto down = [&] { return showdata_down_vector(current, kKey.key, kKey.iv); };
  const auto convert = [&] { return showdata_converter_vector(current, {2, 0}, kKey.key, kKey.iv); };
  const auto legacy = down();  // what libraries open once for all
  const auto text = convert();
  const std::string file = folder_.Put("file", "there");
  const zuna_test::NothingOpens limit;
  ASSERT_FALSE(std::ifstream(file).is_open());
  EXPECT_EQ(down(), legacy);
  EXPECT_EQ(convert(), text);
}

}  // namespace
