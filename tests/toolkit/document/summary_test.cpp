#include "toolkit/document/summary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace zuna_toolkit {
namespace {

using Counts = std::map<std::string, std::size_t>;

/// The only song of `document`.
SongSummary SongOf(const Document& document) {
  std::vector<SongSummary> songs;
  SummariseSongs(document, [&](const SongSummary& song) { songs.push_back(song); });
  EXPECT_EQ(songs.size(), 1U);
  return songs.at(0);
}

/// The counts that are not 0.
Counts CountsOf(const SongSummary& song) {
  Counts counts;
  for (const Count& count : song.counts) {
    if (count.value != 0) counts[std::string(count.key)] = count.value;
  }
  return counts;
}

TEST(Summary, CountsWhatASongOfAShowHas) {
  auto song = std::make_shared<zuna_midi::SongData>("1a", "Song", std::uint16_t{480}, 1920U);
  auto voice = std::make_shared<zuna_midi::VoiceTrack>();
  voice->messages = {{0, {0x90, 60, 100}}, {10, {0x80, 60, 0}}};
  song->voice_data->AddTrack(voice);
  song->timeline->tempos = {{0, 500000}};
  song->timeline->meters = {{0, 4, 4, 24, 8}, {10, 3, 4, 24, 8}, {20, 3, 4, 24, 8}};
  song->timeline->bars_beats.resize(4);
  zuna_midi::ShowData show;
  show.show_name = "Gala";
  show.AddSongData(song);
  const Document current(show, {1, 2}, "name");
  EXPECT_EQ(SummariseWhole(current).show_name, "Gala");
  EXPECT_FALSE(SummariseWhole(current).log);
  const SongSummary summary = SongOf(current);
  EXPECT_EQ(summary.number, "1a");
  EXPECT_EQ(summary.name, "Song");
  EXPECT_EQ(summary.division, 480);
  EXPECT_EQ(summary.length, 1920U);
  EXPECT_FALSE(summary.attacca);
  const Counts expected{{"voices", 1}, {"events", 2}, {"bars", 4}, {"tempos", 1}, {"meters", 3}};
  EXPECT_EQ(CountsOf(summary), expected);
  const Document legacy(LegacyShow{version0::ShowData(show)}, {}, "name");
  EXPECT_FALSE(SummariseWhole(legacy).show_name);
  EXPECT_EQ(CountsOf(SongOf(legacy)), expected);
}

TEST(Summary, CountsTheEditsOfALog) {
  auto song = std::make_shared<CL::SongLog>("1", "Song", std::uint16_t{96}, 1920U);
  song->attacca = 3;
  song->vamps->events.emplace_back(0U, 1U, "", 2);
  song->tempo_scales->events.assign(2, CL::TempoScale(0, 1, "", 1.5F));
  song->markers->events.emplace_back(0U, "", "A");
  CL::ChangeLog log;
  log.show_name = "Gala";
  log.log_label = "label";
  log.log_tag_pair = {3, 4};
  log.AddSongLog(song);
  const Document current(log, {1, 2}, "name");
  const Summary summary = SummariseWhole(current);
  EXPECT_EQ(summary.show_name, "Gala");
  ASSERT_TRUE(summary.log);
  EXPECT_EQ(summary.log->label, "label");
  EXPECT_EQ(summary.log->identifier, "00000000-0000-0000-0000-000000000000");
  EXPECT_EQ(summary.log->tag_pair.second, 4);
  EXPECT_EQ(SongOf(current).division, 96);
  EXPECT_EQ(SongOf(current).attacca, 3);
  const Counts expected{{"vamps", 1}, {"tempoScales", 2}, {"markers", 1}};
  EXPECT_EQ(CountsOf(SongOf(current)), expected);
  const Document legacy(LegacyLog{version0::ChangeLogV0(log)}, {}, "name");
  EXPECT_EQ(SummariseWhole(legacy).show_name, "Gala");
  EXPECT_FALSE(SongOf(legacy).division);
  EXPECT_FALSE(SongOf(legacy).attacca);
  EXPECT_EQ(CountsOf(SongOf(legacy)), expected);
}

}  // namespace
}  // namespace zuna_toolkit
