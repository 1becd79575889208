// For random documents: a document is equal to itself, one edit gives one difference, and what one side adds
// the other one drops.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <random>

#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/support/show_equality.h"
#include "tests/toolkit/comparison/describe.h"
#include "tests/toolkit/comparison/random_documents.h"
#include "toolkit/comparison/comparison.h"

namespace zuna_toolkit {
namespace {

/// A show that shares nothing with `show`.
zuna_midi::ShowData CopyOf(const zuna_midi::ShowData& show) {
  zuna_midi::ShowData copy;
  copy.show_name = show.show_name;
  for (const auto& [number, song] : show.songs()) {
    auto song_copy = std::make_shared<zuna_midi::SongData>(*song);
    song_copy->timeline = std::make_shared<TL::Timeline>(*song->timeline);
    song_copy->voice_data = std::make_shared<zuna_midi::VoiceData>();
    for (const auto& [voice_number, voice] : song->voice_data->tracks()) {
      song_copy->voice_data->AddTrack(std::make_shared<zuna_midi::VoiceTrack>(*voice));
    }
    copy.AddSongData(song_copy);
  }
  return copy;
}

std::vector<Difference> Compared(const zuna_midi::ShowData& before, const zuna_midi::ShowData& after) {
  return Compare({before, {1, 2}, "before"}, {after, {1, 2}, "after"});
}

/// How many differences there are of each code.
std::map<std::string, std::size_t> Counts(const std::vector<Difference>& differences) {
  std::map<std::string, std::size_t> counts;
  for (const Difference& difference : differences) ++counts[CodeText(difference)];
  return counts;
}

/// The same from the other side.
std::map<std::string, std::size_t> Reverse(const std::map<std::string, std::size_t>& counts) {
  std::map<std::string, std::size_t> reverse;
  for (const auto& [code, count] : counts) {
    const std::size_t end = code.rfind('-') + 1;
    const std::string action = code.substr(end);
    const std::string other = action == "added" ? "dropped" : action == "dropped" ? "added" : action;
    reverse[code.substr(0, end) + other] = count;
  }
  return reverse;
}

/// A song with notes, tempos and pages that are all different.
std::shared_ptr<zuna_midi::SongData> PlainSong(const std::string& number, std::mt19937& random) {
  auto song = std::make_shared<zuna_midi::SongData>(number, "Song " + number, std::uint16_t{480}, 1920U);
  for (std::uint32_t i = 0; i < 12; ++i) {
    song->timeline->tempos.push_back({i * 960, 400000 + i});
    song->timeline->page_numbers.push_back({i * 960, i + 1});
  }
  auto voice = std::make_shared<zuna_midi::VoiceTrack>();
  voice->track_number = 1;
  voice->name = "Piano";
  for (std::uint32_t i = 0; i < 40; ++i) {
    const auto pitch = static_cast<std::uint8_t>(30 + random() % 60);
    voice->messages.emplace_back(i * 100, std_midi::VoiceMessage(0x90, pitch, 100));
    voice->messages.emplace_back(i * 100 + 50, std_midi::VoiceMessage(0x80, pitch, 0));
  }
  song->voice_data->AddTrack(voice);
  return song;
}

/// An edit of a song, and the code of the one difference that it makes.
struct Edit {
  const char* code;
  std::function<void(zuna_midi::SongData&, std::size_t)> apply;
};

zuna_midi::VoiceTrack& Voice(zuna_midi::SongData& song) { return *song.voice_data->GetTrack(1); }

const std::vector<Edit>& Edits() {
  static const std::vector<Edit> edits = {
      {"song-name-changed", [](auto& song, std::size_t) { song.song_name += 'x'; }},
      {"division-changed", [](auto& song, std::size_t) { song.division = 960; }},
      {"song-length-changed", [](auto& song, std::size_t) { ++song.song_length; }},
      {"tempo-changed", [](auto& song, std::size_t i) { song.timeline->tempos[i].microseconds = 1; }},
      {"tempo-moved", [](auto& song, std::size_t i) { ++song.timeline->tempos[i].time; }},
      {"tempo-dropped",
       [](auto& song, std::size_t i) {
         song.timeline->tempos.erase(song.timeline->tempos.begin() + static_cast<std::ptrdiff_t>(i));
       }},
      {"page-number-added",
       [](auto& song, std::size_t) {
         song.timeline->page_numbers.push_back({99999, 99});
       }},
      {"key-added",
       [](auto& song, std::size_t) {
         song.timeline->keys.push_back({0, 1, 0});
       }},
      {"meter-added",
       [](auto& song, std::size_t) {
         song.timeline->meters.push_back({0, 4, 4, 24, 8});
       }},
      {"voice-name-changed", [](auto& song, std::size_t) { Voice(song).name = "Harp"; }},
      {"reserved-field-changed", [](auto& song, std::size_t) { Voice(song).reserved = 1; }},
      {"note-changed", [](auto& song, std::size_t i) { Voice(song).messages[2 * i].second.data2 = 1; }},
      {"note-changed", [](auto& song, std::size_t i) { ++Voice(song).messages[2 * i + 1].first; }},
      {"note-moved",
       [](auto& song, std::size_t i) {
         ++Voice(song).messages[2 * i].first;
         ++Voice(song).messages[2 * i + 1].first;
       }},
      {"note-dropped",
       [](auto& song, std::size_t i) {
         const auto note = Voice(song).messages.begin() + static_cast<std::ptrdiff_t>(2 * i);
         Voice(song).messages.erase(note, note + 2);
       }},
      {"message-added",
       [](auto& song, std::size_t) {
         Voice(song).messages.emplace_back(0, std_midi::VoiceMessage(0xC0, 1, 0));
       }},
      {"message-channel-changed",
       [](auto& song, std::size_t) {
         for (auto& message : Voice(song).messages) ++message.second.status;
       }},
  };
  return edits;
}

TEST(DifferencesProperty, AreNoneBetweenADocumentAndItself) {
  std::mt19937 random(1);
  zuna_test::ShowOptions options;
  for (int round = 0; round < 200; ++round) {
    options.wild = round % 2 == 0;
    const zuna_midi::ShowData show = zuna_test::RandomShow(random, options);
    EXPECT_EQ(Compared(show, CopyOf(show)).size(), 0U) << round;
    const Document log(zuna_test::RandomLog(random, {}), {1, 2}, "log");
    EXPECT_EQ(Compare(log, log).size(), 0U) << round;
  }
}

TEST(DifferencesProperty, OfOneEditAreExactlyThatEdit) {
  std::mt19937 random(2);
  for (int round = 0; round < 40; ++round) {
    zuna_midi::ShowData before;
    for (const char* number : {"1", "2", "3"}) before.AddSongData(PlainSong(number, random));
    for (const Edit& edit : Edits()) {
      zuna_midi::ShowData after = CopyOf(before);
      edit.apply(*after.songs().at("2"), 1 + random() % 10);
      const std::vector<Difference> differences = Compared(before, after);
      ASSERT_EQ(differences.size(), 1U) << edit.code << ", " << round;
      EXPECT_EQ(CodeText(differences[0]), edit.code);
      EXPECT_EQ(differences[0].song, "2");
      EXPECT_EQ(Counts(Compared(after, before)), Reverse(Counts(differences))) << edit.code;
    }
  }
}

/// Changes single bytes of messages and takes some out.
void Disturb(zuna_midi::ShowData& show, std::mt19937& random) {
  for (const auto& [number, song] : show.songs()) {
    for (const auto& [voice_number, voice] : song->voice_data->tracks()) {
      auto& messages = voice->messages;
      for (auto& [time, message] : messages) {
        if (random() % 16 == 0) time += static_cast<std::uint32_t>(random() % 200);
        if (random() % 16 == 0) message.data2 = static_cast<std::uint8_t>(random() % 128);
      }
      if (!messages.empty() && random() % 2 == 0)
        messages.erase(messages.begin() + static_cast<std::ptrdiff_t>(random() % messages.size()));
    }
  }
}

TEST(DifferencesProperty, AreToldWhereAndOnlyWhereShowsDiffer) {
  std::mt19937 random(3);
  std::size_t different = 0;
  for (int round = 0; round < 400; ++round) {
    zuna_test::ShowOptions options;
    options.wild = round % 2 == 0;
    const zuna_midi::ShowData before = zuna_test::RandomShow(random, options);
    zuna_midi::ShowData after = CopyOf(before);
    if (round % 5 != 0) Disturb(after, random);
    const auto counts = Counts(Compared(before, after));
    EXPECT_EQ(counts.empty(), zuna_test::FirstDifference(before, after).empty()) << round;
    EXPECT_EQ(Counts(Compared(after, before)), Reverse(counts)) << round;
    if (!counts.empty()) ++different;
  }
  EXPECT_GT(different, 200U);
}

}  // namespace
}  // namespace zuna_toolkit
