// For random documents: the losses that are reported are those that a comparison of its own finds between the
// document and its way there and back, list by list.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <set>

#include "kit/format.h"
#include "tests/support/bytes.h"
#include "tests/support/log_equality.h"
#include "tests/support/random_legacy_log.h"
#include "tests/support/random_legacy_show.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"
#include "tests/support/show_equality.h"
#include "tests/toolkit/comparison/describe.h"
#include "tests/toolkit/comparison/random_documents.h"
#include "toolkit/comparison/comparison.h"
#include "toolkit/error.h"

namespace zuna_toolkit {
namespace {

/// A song and a list of it, or a song and the name of a field.
using ListName = std::pair<std::string, std::string>;

ListName ListOf(const Difference& difference) {
  switch (difference.subject) {
    case Subject::kVoice:
    case Subject::kVoiceName:
    case Subject::kVoiceNumber:
    case Subject::kReservedField:
    case Subject::kMessage:
    case Subject::kMessageChannel:
      return {difference.song, "voices"};
    default:
      break;
  }
  if (!difference.place.list.empty()) return {difference.song, std::string(difference.place.list)};
  const std::string code = CodeText(difference);
  return {difference.song, code.substr(0, code.rfind('-'))};
}

std::set<ListName> ListsOf(const Document& document, const Document& legacy) {
  std::set<ListName> lists;
  LossesOfDown(document, legacy, [&](const Difference& difference) { lists.insert(ListOf(difference)); });
  return lists;
}

bool SameVoices(const zuna_midi::SongData& a, const zuna_midi::SongData& b) {
  const auto same = [](const auto& x, const auto& y) { return *x.second == *y.second; };
  const auto& before = a.voice_data->tracks();
  const auto& after = b.voice_data->tracks();
  return std::equal(before.begin(), before.end(), after.begin(), after.end(), same);
}

std::set<ListName> DifferingLists(const zuna_midi::ShowData& a, const zuna_midi::ShowData& b) {
  std::set<ListName> lists;
  if (a.show_name != b.show_name) lists.insert({"", "show-name"});
  for (const auto& entry : a.songs()) {
    const zuna_midi::SongData& before = *entry.second;
    const zuna_midi::SongData& after = *b.songs().at(entry.first);
    const auto add = [&](bool same, const char* list) {
      if (!same) lists.insert({entry.first, list});
    };
    add(SameVoices(before, after), "voices");
    add(before.timeline->tempos == after.timeline->tempos, "tempos");
    add(before.timeline->bars_beats == after.timeline->bars_beats, "barsBeats");
    add(before.timeline->keys == after.timeline->keys, "keys");
    add(before.timeline->page_numbers == after.timeline->page_numbers, "pageNumbers");
    add(before.timeline->meters == after.timeline->meters, "meters");
  }
  return lists;
}

TEST(ShowLossesProperty, AreThoseOfTheWayThereAndBack) {
  std::mt19937 random(1);
  std::size_t lossless = 0;
  std::size_t converted = 0;
  for (int round = 0; round < 600; ++round) {
    zuna_midi::ShowData show = zuna_test::ConvertibleShow(random, round % 3 == 0);
    if (round % 5 == 1) show = version0::ShowData(zuna_test::RandomLegacyShow(random)).get_version_1_0();
    const Document document(show, {1, 2}, "show");
    try {
      const Document legacy = Down(document);
      const std::set<ListName> lists = ListsOf(document, legacy);
      const zuna_midi::ShowData back = legacy.As<LegacyShow>()->show.get_version_1_0();
      EXPECT_EQ(lists, DifferingLists(show, back)) << round;
      EXPECT_EQ(lists.empty(), zuna_test::FirstDifference(show, back).empty()) << round;
      ++converted;
      if (lists.empty()) ++lossless;
    } catch (const Error&) {
      EXPECT_EQ(round % 3, 0) << round;  // Only wild shows are refused.
    }
  }
  EXPECT_GT(converted, 400U);
  EXPECT_GT(lossless, 50U);
  EXPECT_LT(lossless, converted - 50);
}

/// The tempos of a timeline, as their times and texts.
using Entries = std::vector<std::pair<std::uint32_t, std::string>>;

Entries TemposOf(const zuna_midi::SongData& song) {
  Entries entries;
  for (const TL::Tempo& tempo : song.timeline->tempos) {
    entries.emplace_back(tempo.time, std::to_string(tempo.microseconds) + " us");
    if (tempo.microseconds > 0) entries.back().second += kit::format(" (%.6g bpm)", tempo.bpm(24));
  }
  return entries;
}

/// Applies differences to `before`, and takes what came from elsewhere out of `after`. Then both are the same
/// entries, and in the same order unless a reordering is reported (which may be one of
/// entries that became alike).
void ExpectExplained(const Entries& before, Entries after, const std::vector<Difference>& differences) {
  std::map<std::size_t, std::optional<Entries::value_type>> changed;
  bool reordered = false;
  for (const Difference& difference : differences) {
    const Place& place = difference.place;
    if (difference.action == Action::kReordered) reordered = true;
    if (!place.tick) continue;
    const bool added = difference.action == Action::kAdded;
    if (!added) changed[place.index] = std::nullopt;
    if (difference.action == Action::kDropped) continue;
    const Entries::value_type entry(added ? *place.tick : place.after_tick.value(), difference.after);
    if (!added && place.tick == place.after_tick) {
      changed[place.index] = entry;
      continue;
    }
    const auto last = std::find(after.rbegin(), after.rend(), entry);
    ASSERT_NE(last, after.rend()) << difference.after;
    after.erase(std::next(last).base());
  }
  Entries kept;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const auto found = changed.find(i);
    if (found == changed.end()) kept.push_back(before[i]);
    if (found != changed.end() && found->second) kept.push_back(*found->second);
  }
  EXPECT_TRUE(kept == after || reordered);
  std::sort(kept.begin(), kept.end());
  std::sort(after.begin(), after.end());
  EXPECT_EQ(kept, after);
}

TEST(ShowDifferencesProperty, ExplainTheTempos) {
  std::mt19937 random(4);
  const auto tempos = [&] {
    std::vector<TL::Tempo> list;
    for (auto left = random() % 7; left > 0; --left) {
      list.push_back({static_cast<std::uint32_t>(random() % 4), static_cast<std::uint32_t>(random() % 4)});
    }
    return list;
  };
  for (int round = 0; round < 3000; ++round) {
    Entries lists[2];
    zuna_midi::ShowData shows[2];
    for (int side = 0; side < 2; ++side) {
      const auto song = std::make_shared<zuna_midi::SongData>("1", "Song", std::uint16_t{480}, 1920U);
      song->timeline->tempos = tempos();
      lists[side] = TemposOf(*song);
      shows[side].AddSongData(song);
    }
    SCOPED_TRACE(round);
    ExpectExplained(lists[0], lists[1], Compare({shows[0], {1, 2}, "a"}, {shows[1], {1, 2}, "b"}));
  }
}

template <typename Event>
bool SameEdits(const std::shared_ptr<CL::EventList<Event>>& a,
               const std::shared_ptr<CL::EventList<Event>>& b) {
  const auto text = [](const CL::EventList<Event>& list) {
    std::ostringstream os;
    for (const Event& event : list.events) event.WriteBinary(os, {1, 1});
    return os.str();
  };
  return text(*a) == text(*b);
}

std::set<ListName> DifferingLists(const CL::ChangeLog& a, const CL::ChangeLog& b) {
  std::set<ListName> lists;
  for (const auto& entry : a.song_logs()) {
    const CL::SongLog& before = *entry.second;
    const CL::SongLog& after = *b.song_logs().at(entry.first);
    const auto add = [&](bool same, const char* list) {
      if (!same) lists.insert({entry.first, list});
    };
    add(before.division == after.division, "division");
    add(before.attacca == after.attacca, "attacca");
    add(SameEdits(before.vamps, after.vamps), "vamps");
    add(SameEdits(before.repeats, after.repeats), "repeats");
    add(SameEdits(before.cuts, after.cuts), "cuts");
    add(SameEdits(before.transposes, after.transposes), "transposes");
    add(SameEdits(before.tempo_scales, after.tempo_scales), "tempoScales");
    add(SameEdits(before.clicks, after.clicks), "clicks");
    add(SameEdits(before.fermatas, after.fermatas), "fermatas");
    add(SameEdits(before.markers, after.markers), "markers");
    add(SameEdits(before.caesuras, after.caesuras), "caesuras");
  }
  return lists;
}

TEST(LogLossesProperty, AreThoseOfTheWayThereAndBack) {
  std::mt19937 random(2);
  std::size_t lossless = 0;
  for (int round = 0; round < 600; ++round) {
    zuna_test::LogOptions options;
    options.max_songs = 2;
    options.max_events = 3;
    CL::ChangeLog log = zuna_test::RandomLog(random, options);
    if (round % 4 != 0) zuna_test::Tame(log, random);
    const Document document(log, {1, 2}, "log");
    const Document legacy = Down(document);
    const CL::ChangeLog back = legacy.As<LegacyLog>()->log.get_version_1_0();
    const std::set<ListName> lists = ListsOf(document, legacy);
    EXPECT_EQ(lists, DifferingLists(log, back)) << round;
    EXPECT_EQ(lists.empty(), zuna_test::FirstDifference(log, back).empty()) << round;
    if (lists.empty()) ++lossless;
  }
  EXPECT_GT(lossless, 50U);
  EXPECT_LT(lossless, 550U);
}

TEST(UpLossesProperty, AreNoneForShowsThatComeBackByteForByte) {
  std::mt19937 random(3);
  for (int round = 0; round < 100; ++round) {
    const Document legacy(LegacyShow{zuna_test::RandomLegacyShow(random)}, {}, "show");
    const Document current = Up(legacy, {}, {1, 2});
    LossesOfUp(legacy, current, [&](const Difference& difference) {
      ADD_FAILURE() << round << ": " << zuna_test::Describe(difference);
    });
  }
}

TEST(UpLossesProperty, AreNoneForLogs) {
  std::mt19937 random(5);
  for (int round = 0; round < 100; ++round) {
    const Document legacy(LegacyLog{zuna_test::RandomLegacyLog(random)}, {}, "log");
    Companion companion;
    companion.division = 480;
    const Document current = Up(legacy, companion, {1, 2});
    const version0::ChangeLogV0 back(*current.As<CL::ChangeLog>());
    EXPECT_EQ(zuna_test::Written(back), zuna_test::Written(legacy.As<LegacyLog>()->log)) << round;
    LossesOfUp(legacy, current, [&](const Difference& difference) {
      ADD_FAILURE() << round << ": " << zuna_test::Describe(difference);
    });
  }
}

/// Whether every meter of the timeline comes down as it is.
bool IsInOrder(const TL::Timeline& timeline) {
  const auto not_before = [](const TL::Meter& a, const TL::Meter& b) { return a.time >= b.time; };
  const auto later = [](const TL::Tempo& a, const TL::Tempo& b) { return a.time > b.time; };
  const auto& meters = timeline.meters;
  const auto& tempos = timeline.tempos;
  return std::adjacent_find(meters.begin(), meters.end(), not_before) == meters.end() &&
         std::adjacent_find(tempos.begin(), tempos.end(), later) == tempos.end();
}

template <typename Entry, typename Field>
auto FieldsOf(const std::vector<Entry>& entries, Field field) {
  std::vector<std::decay_t<decltype(field(entries.front()))>> fields;
  for (const Entry& entry : entries) fields.push_back(field(entry));
  return fields;
}

/// The lists of a legacy timeline that do not come back down from the current one.
template <typename Add>
void AddTimelineLists(const version0::SongData& song, const zuna_midi::SongData& current, Add add) {
  const version0::Timeline& before = song.timeline;
  add(before.name == song.song_number, "timeline-name");
  add(before.song_length == song.song_length, "timeline-length");
  const auto label_fields = [](const version0::RBarsBeats& e) { return std::tuple(e.time, e.label, e.tag); };
  const auto current_label = [](const TL::BarsBeats& e) {
    return std::tuple(e.time, std::string(e.bar_number()), e.tag);
  };
  add(FieldsOf(before.bars_beats, label_fields) == FieldsOf(current.timeline->bars_beats, current_label),
      "barsBeats");
  if (IsInOrder(*current.timeline)) {
    const version0::Timeline after(*current.timeline, song.song_number, song.song_length, song.division);
    const auto tempo_fields = [](const version0::RTempo& e) {
      return std::tuple(e.time, std::bit_cast<std::uint32_t>(e.seconds_per_tick), e.bpm,
                        e.notated_32_per_click, e.notated_32_per_quarter);
    };
    add(FieldsOf(before.tempos, tempo_fields) == FieldsOf(after.tempos, tempo_fields), "tempos");
    add(before.meters == after.meters, "meters");
    return;
  }
  const auto microseconds = [&](const version0::RTempo& e) {
    return std::pair(e.time, static_cast<std::uint32_t>(e.microseconds(song.division)));
  };
  const auto current_tempo = [](const TL::Tempo& e) { return std::pair(e.time, e.microseconds); };
  add(FieldsOf(before.tempos, microseconds) == FieldsOf(current.timeline->tempos, current_tempo), "tempos");
  const auto signature = [](const auto& e) { return std::tuple(e.time, e.numerator, e.denominator); };
  add(FieldsOf(before.meters, signature) == FieldsOf(current.timeline->meters, signature), "meters");
}

/// Whether the tracks of a legacy song are the voices, and their events the messages.
bool SameTracks(const version0::SongData& song, const zuna_midi::SongData& current) {
  std::vector<unsigned> ids;
  for (const version0::TrackObject& track : song.tracks) ids.push_back(track.track_id);
  return std::adjacent_find(ids.begin(), ids.end(), std::greater_equal<>()) == ids.end() &&
         ids.size() == current.voice_data->tracks().size();
}

/// The fields of events that do not come back down from the messages.
template <typename Add>
void AddEventFields(const version0::SongData& song, Add add) {
  for (const auto& [id, events] : song.events) {
    std::uint32_t previous = 0;
    for (const version0::EventObject& event : events) {
      const unsigned channel = event.status_high & 0x0FU;
      add((channel | (id & 0x0FU)) == channel || channel == 0, "channel");
      add(event.delta_time == event.abs_time - previous, "delta");
      previous = event.abs_time;
    }
  }
}

std::set<ListName> DifferingLists(const version0::ShowData& legacy, const zuna_midi::ShowData& current) {
  std::set<ListName> lists;
  for (const auto& entry : legacy.songs) {
    const auto add = [&](bool same, const char* list) {
      if (!same) lists.insert({entry.first, list});
    };
    const zuna_midi::SongData& song = *current.songs().at(entry.first);
    AddTimelineLists(entry.second, song, add);
    add(SameTracks(entry.second, song), "tracks");
    AddEventFields(entry.second, add);
  }
  return lists;
}

/// The same of a reported loss.
ListName UpListOf(const Difference& difference) {
  if (difference.subject == Subject::kMessageChannel) return {difference.song, "channel"};
  if (difference.subject == Subject::kDeltaTime) return {difference.song, "delta"};
  if (difference.subject == Subject::kVoice) return {difference.song, "tracks"};
  return ListOf(difference);
}

TEST(UpLossesProperty, AreThoseOfTheWayThereAndBack) {
  std::mt19937 random(6);
  std::size_t lossless = 0;
  std::size_t lossy = 0;
  for (int round = 0; round < 400; ++round) {
    const Document legacy(LegacyShow{zuna_test::OddLegacyShow(random)}, {}, "show");
    std::optional<Document> current;
    try {
      current = Up(legacy, {}, {1, 2});
    } catch (const Error&) {
      continue;  // A meter moved away from its tempos.
    }
    std::set<ListName> lists;
    LossesOfUp(legacy, *current, [&](const Difference& difference) { lists.insert(UpListOf(difference)); });
    const auto& show = legacy.As<LegacyShow>()->show;
    EXPECT_EQ(lists, DifferingLists(show, *current->As<zuna_midi::ShowData>())) << round;
    ++(lists.empty() ? lossless : lossy);
  }
  EXPECT_GT(lossless, 20U);
  EXPECT_GT(lossy, 100U);
}

}  // namespace
}  // namespace zuna_toolkit
