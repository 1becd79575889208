#include "toolkit/comparison/comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/bytes.h"
#include "tests/toolkit/comparison/describe.h"
#include "toolkit/error.h"

namespace zuna_toolkit {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::shared_ptr<zuna_midi::SongData> AddSong(zuna_midi::ShowData& show, const std::string& number) {
  auto song = std::make_shared<zuna_midi::SongData>(number, "Song", std::uint16_t{480}, 1920U);
  show.AddSongData(song);
  return song;
}

zuna_midi::VoiceTrack& AddVoice(zuna_midi::SongData& song, std::uint16_t number, const std::string& name) {
  auto voice = std::make_shared<zuna_midi::VoiceTrack>();
  voice->track_number = number;
  voice->name = name;
  song.voice_data->AddTrack(voice);
  return *voice;
}

std::vector<std::string> Compared(const Document::Model& before, const Document::Model& after) {
  const Document a(before, {1, 2}, "a");
  const Document b(after, {2, 0}, "b");
  return zuna_test::Collected([&](const auto& sink) { Compare(a, b, sink); });
}

TEST(CompareShows, NamesSongsAndTheirFields) {
  zuna_midi::ShowData a;
  zuna_midi::ShowData b;
  a.show_name = "Old";
  b.show_name = "New";
  AddSong(a, "2")->song_name = "Two";
  AddSong(a, "3");
  const auto added = AddSong(b, "10");
  added->song_name = "Ten";
  added->song_length = 7;
  const auto changed = AddSong(b, "3");
  changed->song_name = "Tune";
  changed->division = 0;
  changed->song_length = 1;
  EXPECT_THAT(Compared(a, b),
              ElementsAre("show-name-changed: Old -> New", "song 2: song-dropped: Two -> ",
                          "song 3: song-name-changed: Song -> Tune", "song 3: division-dropped: 480 -> ",
                          "song 3: song-length-changed: 1920 -> 1", "song 10: song-added:  -> Ten"));
  EXPECT_THAT(Compared(a, a), IsEmpty());
}

TEST(CompareShows, PairsVoicesByNameThenByNumber) {
  zuna_midi::ShowData a;
  zuna_midi::ShowData b;
  const auto old_song = AddSong(a, "1");
  const auto new_song = AddSong(b, "1");
  for (const auto& [number, name] : {std::pair(1, "Piano"), std::pair(2, "Bass"), std::pair(3, "Horn")}) {
    AddVoice(*old_song, static_cast<std::uint16_t>(number), name);
  }
  for (const auto& [number, name] : {std::pair(2, "Piano"), std::pair(3, "Tuba"), std::pair(4, "Oboe")}) {
    AddVoice(*new_song, static_cast<std::uint16_t>(number), name);
  }
  EXPECT_THAT(
      Compared(a, b),
      ElementsAre(R"(song 1: voice-number-changed voices[0] (voice 1 "Piano"): voice 1 "Piano" -> voice 2)",
                  R"(song 1: voice-dropped voices[0] (voice 2 "Bass"): voice 2 "Bass" -> )",
                  R"(song 1: voice-name-changed voices[0] (voice 3 "Horn"): Horn -> Tuba)",
                  R"(song 1: voice-added voices[0] (voice 4 "Oboe"):  -> voice 4 "Oboe")"));
}

TEST(CompareShows, NamesMessages) {
  zuna_midi::ShowData a;
  zuna_midi::ShowData b;
  AddVoice(*AddSong(a, "1"), 1, "Piano").messages = {
      {0, {0x90, 1, 1}}, {5, {0x90, 2, 2}}, {9, {0x90, 3, 3}}, {9, {0x90, 4, 4}}};
  AddVoice(*AddSong(b, "1"), 1, "Piano").messages = {{0, {0x90, 1, 7}}, {6, {0x90, 2, 2}}, {9, {0x90, 4, 4}}};
  EXPECT_THAT(
      Compared(a, b),
      ElementsAre(
          R"(song 1: message-changed messages[0] at 0 (voice 1 "Piano"): Note On(channel 1, 1, 1) -> Note On(channel 1, 1, 7))",
          R"(song 1: message-moved messages[1] at 5 (voice 1 "Piano"): Note On(channel 1, 2, 2) -> Note On(channel 1, 2, 2))",
          R"(song 1: message-dropped messages[2] at 9 (voice 1 "Piano"): Note On(channel 1, 3, 3) -> )"));
  AddVoice(*AddSong(b, "1"), 1, "Piano").messages = {
      {0, {0x90, 1, 1}}, {5, {0x90, 2, 2}}, {9, {0x90, 4, 4}}, {9, {0x90, 3, 3}}};
  EXPECT_THAT(Compared(a, b),
              ElementsAre(R"(song 1: message-reordered messages[0] (voice 1 "Piano"):  -> )"));
}

TEST(CompareShows, NamesEntriesThatMoveAndLeave) {
  zuna_midi::ShowData a;
  zuna_midi::ShowData b;
  AddSong(a, "1")->timeline->page_numbers = {{0, 1}, {10, 2}, {20, 3}, {30, 4}};
  AddSong(b, "1")->timeline->page_numbers = {{0, 1}, {15, 3}, {30, 5}};
  EXPECT_THAT(Compared(a, b),
              ElementsAre("song 1: page-number-dropped pageNumbers[1] at 10: page 2 -> ",
                          "song 1: page-number-moved pageNumbers[2] at 20: page 3 -> page 3",
                          "song 1: page-number-changed pageNumbers[3] at 30: page 4 -> page 5"));
  AddSong(b, "1")->timeline->page_numbers = {{10, 2}, {0, 1}, {20, 3}, {30, 4}};
  EXPECT_THAT(Compared(a, b), ElementsAre("song 1: page-number-reordered pageNumbers[0]:  -> "));
}

TEST(CompareShows, PairOnlyEntriesThatShareATimeOrValues) {
  zuna_midi::ShowData a;
  zuna_midi::ShowData b;
  AddSong(a, "1")->timeline->tempos = {{0, 400000}, {480, 500000}};
  AddSong(b, "1")->timeline->tempos = {{480, 500000}, {960, 500000}};
  EXPECT_THAT(Compared(a, b), ElementsAre("song 1: tempo-dropped tempos[0] at 0: 400000 us (150 bpm) -> ",
                                          "song 1: tempo-added tempos[1] at 960:  -> 500000 us (120 bpm)"));
}

TEST(CompareShows, NamesAReorderingBesideAChange) {
  zuna_midi::ShowData a;
  zuna_midi::ShowData b;
  AddSong(a, "1")->timeline->page_numbers = {{0, 1}, {0, 2}, {0, 3}};
  AddSong(b, "1")->timeline->page_numbers = {{0, 2}, {0, 1}, {0, 4}};
  EXPECT_THAT(Compared(a, b), ElementsAre("song 1: page-number-changed pageNumbers[2] at 0: page 3 -> page 4",
                                          "song 1: page-number-reordered pageNumbers[0]:  -> "));
}

TEST(CompareShows, NamesTheTagsOfLabels) {
  zuna_midi::ShowData a;
  zuna_midi::ShowData b;
  TL::BarsBeats label;
  label.time = 5;
  label.bar_number("A");
  AddSong(a, "1")->timeline->bars_beats = {label};
  label.tag = 3;
  AddSong(b, "1")->timeline->bars_beats = {label};
  EXPECT_THAT(Compared(a, b),
              ElementsAre(R"(song 1: bar-label-changed barsBeats[0] at 5 in bar A: "A" -> "A" with tag 3)"));
}

TEST(CompareShows, CutsLongNamesOfVoicesInPlaces) {
  zuna_midi::ShowData a;
  zuna_midi::ShowData b;
  const std::string name(100, 'x');
  AddVoice(*AddSong(a, "1"), 1, name).messages = {{0, {0x90, 1, 1}}};
  AddVoice(*AddSong(b, "1"), 1, name);
  EXPECT_THAT(Compared(a, b), ElementsAre("song 1: message-dropped messages[0] at 0 (voice 1 \"" +
                                          std::string(64, 'x') + "...\"): Note On(channel 1, 1, 1) -> "));
}

TEST(CompareLogs, NamesEdits) {
  CL::ChangeLog a;
  CL::ChangeLog b;
  a.log_label = "x";
  b.identifier = kit::UUID::FromString("00112233-4455-6677-8899-aabbccddeeff");
  b.log_tag_pair = {1, 2};
  const auto old_song = std::make_shared<CL::SongLog>("1", "Name", std::uint16_t{0}, 1U);
  const auto new_song = std::make_shared<CL::SongLog>("1", "Name", std::uint16_t{0}, 1U);
  old_song->vamps->events = {CL::Vamp(0, 480, "a", 2), CL::Vamp(480, 960, "", 1)};
  new_song->vamps->events = {CL::Vamp(0, 480, "b", 3), CL::Vamp(480, 970, "", 1)};
  new_song->markers->events = {CL::Marker(5, "", "A")};
  a.AddSongLog(old_song);
  b.AddSongLog(new_song);
  EXPECT_THAT(
      Compared(a, b),
      ElementsAre(
          "log-label-dropped: x -> ",
          "identifier-changed: 00000000-0000-0000-0000-000000000000 -> "
          "00112233-4455-6677-8899-aabbccddeeff",
          "tag-pair-changed: 0, 0 -> 1, 2",
          R"(song 1: edit-label-changed vamps[0] at 0: to tick 480, value 2, label "a" -> to tick 480, value 3, label "b")",
          R"(song 1: edit-value-changed vamps[0] at 0: to tick 480, value 2, label "a" -> to tick 480, value 3, label "b")",
          "song 1: vamp-changed vamps[1] at 480: to tick 960, value 1 -> to tick 970, value 1",
          R"(song 1: marker-added markers[0] at 5:  -> "A")"));
}

TEST(Compare, TakesTwoShowsOrTwoLogs) {
  EXPECT_EQ(zuna_test::MessageOf<Error>([] { Compared(CL::ChangeLog(), zuna_midi::ShowData()); }),
            "b: is a show of version 2.0 and a is a log of version 1.2; give two shows or two logs");
}

TEST(CompareShows, NamesSongsThatHaveAnotherNumber) {
  zuna_midi::ShowData a;
  zuna_midi::ShowData b;
  for (const auto& [show, number] : {std::pair(&a, "1"), std::pair(&b, "7")}) {
    const auto song = AddSong(*show, number);
    AddVoice(*song, 1, "Piano").messages = {{0, {0x90, 1, 1}}};
    song->timeline->tempos = {{0, 500000}};
  }
  AddSong(a, "2");
  EXPECT_THAT(Compared(a, b),
              ElementsAre("song 1: song-renumbered: Song -> 7", "song 2: song-dropped: Song -> "));
  b.songs().at("7")->voice_data->GetTrack(1)->messages[0].second.data2 = 2;
  EXPECT_THAT(Compared(a, b), ElementsAre("song 1: song-dropped: Song -> ", "song 2: song-dropped: Song -> ",
                                          "song 7: song-added:  -> Song"));
}

TEST(CompareShows, PairsSongsThatAloneHaveTheirName) {
  zuna_midi::ShowData a;
  zuna_midi::ShowData b;
  AddSong(a, "1")->song_name = "Waltz";
  AddSong(a, "2")->song_name = "";
  AddSong(b, "3")->song_name = "";
  AddSong(b, "7")->song_name = "Waltz";
  b.songs().at("7")->division = 96;
  b.songs().at("3")->division = 96;
  EXPECT_THAT(Compared(a, b),
              ElementsAre("song 1: song-renumbered: Waltz -> 7", "song 1: division-changed: 480 -> 96",
                          "song 2: song-dropped:  -> ", "song 3: song-added:  -> "));
  AddSong(b, "8")->song_name = "Waltz";
  b.songs().at("8")->division = 960;
  EXPECT_THAT(Compared(a, b), testing::SizeIs(5));
}

TEST(CompareShows, NamesTheBarOfWhatWasAddedInTheSecondShow) {
  zuna_midi::ShowData a;
  zuna_midi::ShowData b;
  const auto add = [](zuna_midi::ShowData& show, const std::string& bar) {
    TL::BarsBeats label;
    label.bar_number(bar);
    const auto song = AddSong(show, "1");
    song->timeline->bars_beats = {label};
    return song;
  };
  add(a, "A");
  add(b, "B")->timeline->page_numbers = {{5, 1}};
  EXPECT_THAT(Compared(a, b),
              ElementsAre(R"(song 1: bar-label-changed barsBeats[0] at 0 in bar A: "A" -> "B")",
                          "song 1: page-number-added pageNumbers[0] at 5 in bar B:  -> page 1"));
}

TEST(CompareLogs, NamesSongsThatHaveAnotherNumber) {
  CL::ChangeLog a;
  CL::ChangeLog b;
  for (const auto& [log, number] : {std::pair(&a, "1"), std::pair(&b, "7")}) {
    const auto song = std::make_shared<CL::SongLog>(number, "Name", std::uint16_t{0}, 1U);
    song->markers->events = {CL::Marker(5, "", "A")};
    log->AddSongLog(song);
  }
  EXPECT_THAT(Compared(a, b), ElementsAre("song 1: song-edits-renumbered: Name -> 7"));
  EXPECT_THAT(Compared(a, CL::ChangeLog()), ElementsAre("song 1: song-edits-dropped: Name -> "));
  EXPECT_THAT(Compared(CL::ChangeLog(), a), ElementsAre("song 1: song-edits-added:  -> Name"));
  b.song_logs().at("7")->markers->events[0].position = 6;
  EXPECT_THAT(Compared(a, b), ElementsAre("song 1: song-edits-renumbered: Name -> 7",
                                          R"(song 1: marker-moved markers[0] at 5: "A" -> "A")"));
}

TEST(Compare, PassesOverWhatALegacyDocumentTakesFromItsCompanion) {
  zuna_midi::ShowData show;
  show.show_name = "Gala";
  const Document legacy_show(LegacyShow(), {}, "old");
  EXPECT_THAT(Compare(legacy_show, Document(show, {1, 2}, "new")), IsEmpty());
  EXPECT_THAT(Compare(Document(show, {1, 2}, "new"), legacy_show), IsEmpty());
  CL::ChangeLog log;
  log.AddSongLog(std::make_shared<CL::SongLog>("1", "Name", std::uint16_t{480}, 1U));
  const Document legacy_log(LegacyLog{version0::ChangeLogV0(log)}, {}, "old");
  EXPECT_THAT(Compare(legacy_log, Document(log, {1, 2}, "new")), IsEmpty());
}

TEST(Compare, TakesALegacyDocumentInItsCurrentForm) {
  CL::ChangeLog log;
  log.show_name = "Gala";
  const Document legacy(LegacyLog{version0::ChangeLogV0(log)}, {}, "old");
  EXPECT_THAT(Compare(legacy, Document(log, {1, 2}, "new")), IsEmpty());
  log.show_name = "Other";
  EXPECT_EQ(Compare(legacy, Document(log, {1, 2}, "new")).size(), 1U);
}

TEST(Compare, RefusesSongsWithoutTheirParts) {
  zuna_midi::ShowData show;
  AddSong(show, "1")->timeline = nullptr;
  EXPECT_EQ(zuna_test::MessageOf<Error>([&] { Compared(show, zuna_midi::ShowData()); }),
            "a: song 1 lacks a part; give every song all its lists");
  CL::ChangeLog log;
  const auto song = std::make_shared<CL::SongLog>("2", "Name", std::uint16_t{0}, 1U);
  song->caesuras = nullptr;
  log.AddSongLog(song);
  EXPECT_EQ(zuna_test::MessageOf<Error>([&] { Compared(CL::ChangeLog(), log); }),
            "b: song 2 lacks a part; give every song all its lists");
}

TEST(Losses, NeedBothFormsOfOneDocument) {
  const auto ignore = [](const Difference&) {};
  const Document legacy_show(LegacyShow(), {}, "old show");
  const Document legacy_log(LegacyLog(), {}, "old log");
  const Document show(zuna_midi::ShowData(), {1, 2}, "show");
  EXPECT_EQ(zuna_test::MessageOf<Error>([&] { LossesOfDown(show, legacy_log, ignore); }),
            "old log: is not the legacy form of show; give both forms of one document");
  EXPECT_EQ(zuna_test::MessageOf<Error>([&] { LossesOfUp(show, show, ignore); }),
            "show: is a show of version 1.2, not 0.0; use convert or down");
  EXPECT_EQ(zuna_test::MessageOf<Error>([&] { LossesOfDown(legacy_show, legacy_show, ignore); }),
            "old show: is a show of version 0.0, not a current one; use up first");
}

TEST(Losses, NameTheSongThatOneOfTheFormsLacks) {
  const auto ignore = [](const Difference&) {};
  version0::ShowData legacy;
  version0::SongData& song = legacy.songs["7"];
  song.song_number = "7";
  zuna_midi::ShowData show;
  EXPECT_EQ(zuna_test::MessageOf<Error>([&] {
              LossesOfUp({LegacyShow{legacy}, {}, "old"}, {show, {1, 2}, "show"}, ignore);
            }),
            "old: song 7 is not the same song in the other form; give both forms of one document");
  AddVoice(*AddSong(show, "7"), 1, "Piano");
  const std::string message =
      "show: song 7 is not the same song in the other form; give both forms of one document";
  EXPECT_EQ(zuna_test::MessageOf<Error>([&] {
              LossesOfDown({show, {1, 2}, "show"}, {LegacyShow{}, {}, "old"}, ignore);
            }),
            message);
  EXPECT_EQ(zuna_test::MessageOf<Error>([&] {  // with fewer tracks than voices
              LossesOfDown({show, {1, 2}, "show"}, {LegacyShow{legacy}, {}, "old"}, ignore);
            }),
            message);
  song.events[1].resize(1);  // of a voice with no messages
  song.timeline.meters.emplace_back(0U, std::uint8_t{4}, std::uint8_t{4});
  show.songs().at("7")->timeline->meters = {{0, 4, 4, 24, 8}};
  show.songs().at("7")->timeline->tempos = {{0, 500000}};
  EXPECT_THAT(zuna_test::MessageOf<Error>([&] {
                LossesOfUp({LegacyShow{legacy}, {}, "old"}, {show, {1, 2}, "show"}, ignore);
              }),
              testing::StartsWith("old: song 7 is not the same song in the other form"));
}

TEST(Losses, NameTheSongThatWouldNotComeUpAgain) {
  version0::ShowData legacy;
  legacy.songs["7"].song_number = "7";
  zuna_midi::ShowData show;
  AddSong(show, "7");
  EXPECT_EQ(zuna_test::MessageOf<Error>([&] {
              LossesOfDown({show, {1, 2}, "show"}, {LegacyShow{legacy}, {}, "old"}, [](const Difference&) {});
            }),
            "show: song 7 would not come up again from format 0.0: A timeline without meters cannot be "
            "converted: add a meter at its start; correct the song (edit its text form)");
}

TEST(DifferenceGroups, CountByCode) {
  DifferenceGroups groups;
  Difference tempo;
  tempo.subject = Subject::kTempo;
  tempo.before = "first";
  groups.Add(tempo);
  Difference dropped = tempo;
  dropped.action = Action::kDropped;
  groups.Add(dropped);
  tempo.before = "second";
  tempo.count = 3;
  groups.Add(tempo);
  ASSERT_EQ(groups.groups().size(), 2U);
  EXPECT_EQ(CodeText(groups.groups()[0].first), "tempo-changed");
  EXPECT_EQ(groups.groups()[0].first.before, "first");
  EXPECT_EQ(groups.groups()[0].count, 4U);
  EXPECT_EQ(CodeText(groups.groups()[1].first), "tempo-dropped");
  EXPECT_EQ(groups.groups()[1].count, 1U);
}

}  // namespace
}  // namespace zuna_toolkit
