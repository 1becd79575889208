#include "toolkit/conversion/conversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "tests/support/bytes.h"
#include "tests/support/encrypted.h"
#include "tests/support/log_equality.h"
#include "tests/support/random_legacy_log.h"
#include "tests/support/random_legacy_show.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/support/show_equality.h"
#include "toolkit/error.h"

namespace zuna_toolkit {
namespace {

using zuna_test::MessageOf;
using zuna_test::Written;

TEST(Conversion, BringsAShowUpAndDownToTheSameBytes) {
  std::mt19937 random(1);
  for (int round = 0; round < 20; ++round) {
    const version0::ShowData show = zuna_test::RandomLegacyShow(random);
    Companion companion;
    companion.show_name = "Gala";
    const Document up = Up({LegacyShow{show}, {}, "show"}, companion, {1, 1});
    EXPECT_EQ(up.type(), (FileType{cmn::FileKind::kShow, {1, 1}}));
    EXPECT_EQ(up.name(), "show");
    EXPECT_EQ(up.As<zuna_midi::ShowData>()->show_name, "Gala");
    EXPECT_EQ(Written(Down(up).As<LegacyShow>()->show), Written(show));
  }
}

TEST(Conversion, BringsALogUpAndDownToTheSameBytes) {
  std::mt19937 random(2);
  for (int round = 0; round < 20; ++round) {
    const version0::ChangeLogV0 log = zuna_test::RandomLegacyLog(random);
    Companion companion;
    for (const auto& [number, song] : log.songs) companion.songs[number].division = 96;
    const Document up = Up({LegacyLog{log}, {}, "log"}, companion, {2, 0});
    EXPECT_EQ(up.type(), (FileType{cmn::FileKind::kLog, {2, 0}}));
    for (const auto& [number, song] : up.As<CL::ChangeLog>()->song_logs()) EXPECT_EQ(song->division, 96);
    EXPECT_EQ(Written(Down(up).As<LegacyLog>()->log), Written(log));
  }
}

TEST(Conversion, ChangesNothingBetweenCurrentVersions) {
  std::mt19937 random(3);
  const zuna_midi::ShowData show = zuna_test::RandomShow(random);
  const Document converted = Convert({show, {1, 0}, "show"}, {2, 0});
  EXPECT_EQ(converted.type().version, (cmn::FileVersion{2, 0}));
  EXPECT_EQ(zuna_test::FirstDifference(*converted.As<zuna_midi::ShowData>(), show), "");
  EXPECT_EQ(MessageOf<Error>([] {
              Convert({CL::ChangeLog(), {1, 1}, "log"}, {1, 0});
            }),
            "log: logs have no version 1.0; use one of 1.1, 1.2, 2.0");
}

TEST(Conversion, RefusesTheWrongDirection) {
  EXPECT_EQ(MessageOf<Error>([] {
              Up({CL::ChangeLog(), {1, 2}, "x"}, {}, {1, 2});
            }),
            "x: is a log of version 1.2, not 0.0; use convert or down");
  EXPECT_EQ(MessageOf<Error>([] {
              Down({LegacyShow(), {}, "x"});
            }),
            "x: is a show of version 0.0, not a current one; use up first");
  EXPECT_EQ(MessageOf<Error>([] {
              Convert({LegacyLog(), {}, "x"}, {1, 2});
            }),
            "x: is a log of version 0.0, not a current one; use up first");
}

/// The message that bringing a changed show of one song down gives.
std::string DownError(const std::function<void(zuna_midi::SongData&)>& change) {
  auto song = std::make_shared<zuna_midi::SongData>("7", "Song", std::uint16_t{480}, 1920U);
  song->timeline->tempos = {{0, 500000}};
  song->timeline->meters = {{0, 4, 4, 24, 8}};
  auto voice = std::make_shared<zuna_midi::VoiceTrack>();
  voice->messages = {{0, {0x90, 1, 1}}};
  song->voice_data->AddTrack(voice);
  change(*song);
  zuna_midi::ShowData show;
  show.AddSongData(song);
  try {
    Down({show, {1, 2}, "x"});
  } catch (const Error& error) {
    EXPECT_EQ(error.kind(), ErrorKind::kBadInput);
    EXPECT_EQ(error.parts().song, song->song_number);
    EXPECT_FALSE(error.parts().remedy.empty());
    return error.what();
  }
  return "(nothing was thrown)";
}

TEST(Conversion, SaysWhatFormat0CannotHold) {
  const std::string correct = "; correct the song (edit its text form)";
  EXPECT_EQ(DownError([](auto&) {}), "(nothing was thrown)");
  EXPECT_EQ(DownError([](auto& song) { song.timeline->meters.clear(); }),
            "x: song 7: the timeline has no meter" + correct);
  EXPECT_EQ(
      DownError([](auto& song) {
        song.timeline->meters = {{0, 4, 4, 24, 8}, {0, 3, 4, 24, 8}};  // the second leaves the range open
        for (std::uint16_t number = 10; number < 259; ++number) {
          auto voice = std::make_shared<zuna_midi::VoiceTrack>();
          voice->track_number = number;
          song.voice_data->AddTrack(voice);
        }
      }),
      "x: song 7: has 250 voices besides drums, and format 0.0 holds 239; remove some of them");
  EXPECT_EQ(DownError([](auto& song) { song.timeline->tempos.clear(); }),
            "x: song 7: the first meter has no tempo" + correct);
  EXPECT_EQ(DownError([](auto& song) {
              song.timeline->meters = {{0, 4, 4, 24, 8}, {5, 3, 4, 24, 8}};
              song.timeline->tempos[0].time = 5;
            }),
            "x: song 7: the first meter has no tempo" + correct);
  EXPECT_EQ(DownError([](auto& song) { song.voice_data->GetTrack(0)->messages.clear(); }),
            "x: song 7 has no messages, and format 0.0 cannot hold such a song; remove it");
  EXPECT_EQ(DownError([](auto& song) { song.song_name = std::string(256, 'x'); }),
            "x: the name of song 7 has 256 bytes, and format 0.0 holds 255; shorten it");
  EXPECT_EQ(DownError([](auto& song) { song.voice_data->GetTrack(0)->name = std::string(300, 'x'); }),
            "x: the name of voice 0 of song 7 has 300 bytes, and format 0.0 holds 255; shorten it");
  EXPECT_EQ(DownError([](auto& song) { song.timeline = nullptr; }),
            "x: song 7 lacks a part; give every song all its lists");
  EXPECT_EQ(DownError([](auto& song) { song.song_number = std::string(256, '7'); }),
            "x: the number of a song has 256 bytes, and format 0.0 holds 255; shorten it");
  EXPECT_EQ(DownError([](auto& song) {
              song.timeline->tempos.assign(5000, {9, 500000});
              song.timeline->meters.assign(40, {9, 4, 4, 24, 8});
              for (std::size_t i = 1; i < 40; i += 2) song.timeline->meters[i].time = 0;
              song.timeline->meters[1].time = 10;
            }),
            "x: song 7: the meters are in disorder" + correct);
  const auto voices = [](zuna_midi::SongData& song, int count, const char* name) {
    for (int i = 1; i <= count; ++i) {
      auto voice = std::make_shared<zuna_midi::VoiceTrack>();
      voice->track_number = static_cast<std::uint16_t>(i);
      voice->name = name;
      song.voice_data->AddTrack(voice);
    }
  };
  EXPECT_EQ(DownError([&](auto& song) { voices(song, 238, ""); }), "(nothing was thrown)");
  EXPECT_EQ(DownError([&](auto& song) { voices(song, 239, ""); }),
            "x: song 7: has 240 voices besides drums, and format 0.0 holds 239; remove some of them");
  EXPECT_EQ(DownError([&](auto& song) { voices(song, 241, "Drums"); }),
            "x: song 7: has 242 voices, and format 0.0 holds 241; remove some of them");
}

TEST(Conversion, CountsTheSongsOfAShow) {
  zuna_midi::ShowData show;
  for (int i = 0; i < 256; ++i) {
    show.AddSongData(std::make_shared<zuna_midi::SongData>(std::to_string(i), "", std::uint16_t{1}, 1U));
  }
  EXPECT_EQ(MessageOf<Error>([&] {
              Down({show, {1, 2}, "x"});
            }),
            "x: has 256 songs, and format 0.0 holds 255; split the show");
}

TEST(Conversion, SaysWhichTextsOfALogAreTooLong) {
  const std::string text(256, 'x');
  const auto message = [&](const std::function<void(CL::ChangeLog&, CL::SongLog&)>& change) {
    CL::ChangeLog log;
    auto song = std::make_shared<CL::SongLog>("7", "Song", std::uint16_t{480}, 1920U);
    change(log, *song);
    log.AddSongLog(song);
    return MessageOf<Error>([&] { Down({log, {1, 2}, "x"}); });
  };
  const std::string rest = " has 256 bytes, and format 0.0 holds 255; shorten it";
  EXPECT_EQ(message([&](auto& log, auto&) { log.show_name = text; }), "x: the name of the show" + rest);
  EXPECT_EQ(message([&](auto& log, auto&) { log.log_label = text; }), "x: the label of the log" + rest);
  EXPECT_EQ(message([&](auto&, auto& song) { song.song_number = text; }), "x: the number of a song" + rest);
  EXPECT_EQ(message([&](auto&, auto& song) { song.song_name = text; }), "x: the name of song 7" + rest);
  EXPECT_EQ(message([&](auto&, auto& song) { song.markers->events.emplace_back(5U, "", text); }),
            "x: a marker at 5 of song 7" + rest);
}

TEST(Conversion, NamesTheLegacySongThatCannotBeConverted) {
  version0::ShowData show;
  show.songs["7"].song_number = "7";
  const auto message = [&] { return MessageOf<Error>([&] { Up({LegacyShow{show}, {}, "x"}, {}, {1, 2}); }); };
  EXPECT_EQ(message(), "x: song 7: the timeline has no meter; correct the song (edit its text form)");
  show.songs["7"].timeline.meters.emplace_back(0U, std::uint8_t{4}, std::uint8_t{4});
  EXPECT_EQ(message(), "x: song 7: the first meter has no tempo; correct the song (edit its text form)");
  show.songs["7"].timeline.tempos.emplace_back(0U, 0.001F, std::uint8_t{8}, std::uint8_t{8},
                                               std::uint16_t{120});
  show.songs["7"].events[5].emplace_back();
  EXPECT_EQ(message(),
            "x: song 7: a message belongs to track 5, which the song does not have; correct the "
            "song (edit its text form)");
}

}  // namespace
}  // namespace zuna_toolkit
