#include "toolkit/conversion/companion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/random_legacy_log.h"
#include "tests/support/random_legacy_show.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "toolkit/conversion/conversion.h"
#include "toolkit/error.h"

namespace zuna_toolkit {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using zuna_test::MessageOf;
using zuna_test::Written;

CL::ChangeLog LogOf(const std::vector<std::string>& numbers) {
  CL::ChangeLog log;
  for (const std::string& number : numbers) {
    log.AddSongLog(std::make_shared<CL::SongLog>(number, "Name", std::uint16_t{0}, 1U));
  }
  return log;
}

Document LegacyLogOf(const std::vector<std::string>& numbers) {
  return {LegacyLog{version0::ChangeLogV0(LogOf(numbers))}, {}, "log"};
}

TEST(Companions, TellNamesAndSongs) {
  auto song = std::make_shared<zuna_midi::SongData>("1", "Song", std::uint16_t{480}, 1920U);
  zuna_midi::ShowData show;
  show.show_name = "Revue";
  show.AddSongData(song);
  const Companion from_show = CompanionFrom({show, {1, 2}, "name"});
  EXPECT_EQ(from_show.name, "name");
  EXPECT_EQ(from_show.show_name, "Revue");
  EXPECT_EQ(from_show.songs.at("1").name, "Song");
  EXPECT_EQ(from_show.songs.at("1").division, 480);
  EXPECT_EQ(from_show.songs.at("1").length, 1920U);
  CL::ChangeLog log = LogOf({"4"});
  log.show_name = "Gala";
  EXPECT_EQ(CompanionFrom({log, {1, 2}, "name"}).show_name, "Gala");
  const Companion from_log = CompanionFrom({LegacyLog{version0::ChangeLogV0(log)}, {}, "name"});
  EXPECT_EQ(from_log.show_name, "Gala");
  EXPECT_EQ(from_log.songs.at("4").name, "Name");
  EXPECT_EQ(from_log.songs.at("4").division, std::nullopt);
  EXPECT_EQ(from_log.songs.at("4").length, 1U);
}

TEST(Companions, AreOfTheOtherKindAndOfAnyVersion) {
  std::mt19937 random(4);
  const auto read = [](const std::string& plaintext, cmn::FileKind kind) {
    OpenedFile file = OpenedFile::FromBytes(zuna_test::FromText(plaintext), "file", zuna_test::kKey,
                                            Accept::kEncryptedOrPlain);
    return ReadCompanion(file, kind);
  };
  const version0::ShowData legacy_show = zuna_test::RandomLegacyShow(random);
  EXPECT_EQ(read(Written(legacy_show), cmn::FileKind::kLog).songs.size(), legacy_show.songs.size());
  const version0::ChangeLogV0 legacy_log = zuna_test::RandomLegacyLog(random);
  EXPECT_EQ(read(Written(legacy_log), cmn::FileKind::kShow).show_name, legacy_log.show_name);
  const std::string zeros(100, '\0');
  for (const cmn::FileKind kind : {cmn::FileKind::kShow, cmn::FileKind::kLog}) {
    EXPECT_EQ(MessageOf<Error>([&] { read(zeros, kind); }),
              "file: is not an encrypted file of this kind (offset 0); give an encrypted show or log file");
  }
  EXPECT_EQ(MessageOf<Error>([&] { read(Written(legacy_log), cmn::FileKind::kLog); }),
            "file: is a log of version 0.0, no show; give the show of the log");
  EXPECT_EQ(MessageOf<Error>([&] { read(Written(legacy_show), cmn::FileKind::kShow); }),
            "file: is a show of version 0.0, no log; give the log of the show");
}

TEST(Companions, GiveDivisionsToTheSongsOfALog) {
  Companion companion;
  companion.songs["2"].division = 480;
  companion.songs["3"].division = std::nullopt;
  companion.songs["4"].division = 0;
  companion.division = 96;
  const Document up = Up(LegacyLogOf({"1", "2", "3", "4"}), companion, {1, 2});
  EXPECT_EQ(up.As<CL::ChangeLog>()->GetSongLog("1")->division, 96);
  EXPECT_EQ(up.As<CL::ChangeLog>()->GetSongLog("2")->division, 480);
  EXPECT_EQ(up.As<CL::ChangeLog>()->GetSongLog("3")->division, 96);
  EXPECT_EQ(up.As<CL::ChangeLog>()->GetSongLog("4")->division, 96);
}

TEST(CompanionFit, NamesTheSongsThatDiffer) {
  Companion companion;
  companion.songs["2"] = {"Other", 480, 1};
  companion.songs["3"] = {"Name", 480, 7};
  companion.songs["4"] = {"Name", 480, 1};
  companion.songs["9"] = {"Name", 480, 1};
  const CompanionFit fit = FitOf(LegacyLogOf({"1", "2", "3", "4"}), companion);
  EXPECT_TRUE(fit.belongs);
  EXPECT_THAT(fit.unknown_songs, ElementsAre("1"));
  ASSERT_EQ(fit.other_songs.size(), 2U);
  EXPECT_EQ(fit.other_songs[0].number, "2");
  EXPECT_EQ(fit.other_songs[0].name, "Name");
  EXPECT_EQ(fit.other_songs[0].companion_name, "Other");
  EXPECT_EQ(fit.other_songs[1].number, "3");
  EXPECT_EQ(fit.other_songs[1].length, 1U);
  EXPECT_EQ(fit.other_songs[1].companion_length, 7U);
}

TEST(CompanionFit, NeedsOneSongThatAgreesInNumberAndName) {
  Companion companion;
  companion.songs["1"] = {"Other", 480, 1};
  EXPECT_FALSE(FitOf(LegacyLogOf({"1", "2"}), companion).belongs);
  companion.songs["2"] = {"Name", 480, 99};
  EXPECT_TRUE(FitOf(LegacyLogOf({"1", "2"}), companion).belongs);
}

TEST(CompanionFit, ADocumentWithoutSongsFitsEveryCompanionAndALogWithoutSongsEveryShow) {
  zuna_midi::ShowData show;
  show.AddSongData(std::make_shared<zuna_midi::SongData>("1", "Song", std::uint16_t{480}, 1920U));
  Companion companion;
  EXPECT_TRUE(FitOf({show, {1, 2}, "show"}, companion).belongs);
  EXPECT_FALSE(FitOf(LegacyLogOf({"1"}), companion).belongs);
  companion.songs["7"] = {"Other", 480, 1};
  EXPECT_TRUE(FitOf(LegacyLogOf({}), companion).belongs);
  EXPECT_THAT(FitOf(LegacyLogOf({}), companion).unknown_songs, IsEmpty());
}

}  // namespace
}  // namespace zuna_toolkit
