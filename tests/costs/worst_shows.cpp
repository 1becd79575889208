// Current shows with many records of few bytes.

#include <utility>

#include "tests/costs/worst_inputs.h"

namespace zuna_test {

namespace {

using Show = zuna_midi::ShowData;
using Song = zuna_midi::SongData;

std::shared_ptr<Song> AddSong(Show& show, const std::string& number, const std::string& name = "") {
  auto song = std::make_shared<Song>(number, name, static_cast<unsigned short>(1), 0U);
  song->SetTimeline(std::make_shared<TL::Timeline>());
  show.AddSongData(song);
  return song;
}

std::shared_ptr<zuna_midi::VoiceTrack> AddVoice(Song& song, std::uint16_t number,
                                                const std::string& name = "") {
  auto voice = std::make_shared<zuna_midi::VoiceTrack>();
  voice->track_number = number;
  voice->name = name;
  voice->reserved = 0;
  song.voice_data->AddTrack(voice);
  return voice;
}

/// A song with one message, one tempo and one meter, which version 0.0 holds.
std::shared_ptr<Song> AddWholeSong(Show& show, const std::string& number) {
  auto song = AddSong(show, number);
  AddVoice(*song, 1)->messages.resize(1);
  song->timeline->tempos.push_back({});
  song->timeline->meters.push_back({});
  return song;
}

Show ManySongs() {
  Show show;
  for (unsigned i = 0; i < 15'000; ++i) AddSong(show, ShortNumber(i));
  return show;
}

Show OneName(const std::string& name, unsigned songs) {
  Show show;
  for (unsigned i = 0; i < songs; ++i) AddSong(show, ShortNumber(i), i == 0 ? name : "");
  return show;
}

/// Numbers of characters that no file name has, so all files would have the same name.
Show AlikeAsFiles() {
  Show show;
  for (unsigned i = 0; i < 4'000; ++i) {
    const auto control = [](unsigned digit) { return static_cast<char>(1 + digit % 30); };
    AddSong(show, {control(i), control(i / 30), control(i / 900)});
  }
  return show;
}

Show ManyVoices() {
  Show show;
  auto song = AddSong(show, "");
  for (unsigned i = 0; i < 30'000; ++i) AddVoice(*song, static_cast<std::uint16_t>(i));
  return show;
}

/// Voices whose one message is a program change, which `print` shows.
Show ManyPrograms() {
  Show show;
  auto song = AddSong(show, "");
  auto voice = AddVoice(*song, 1);
  for (unsigned i = 0; i < 75'000; ++i) {
    voice->messages.emplace_back(0xFFFFFFF0U, std_midi::VoiceMessage(0xCF, 127, 0));
  }
  return show;
}

Show ManyMessages() {
  Show show;
  AddVoice(*AddSong(show, ""), 1)->messages.resize(75'000);
  return show;
}

/// Notes of changing pitches, each moved from its place by a number of ticks below `spread`: two such shows
/// share few notes.
Show ManyNotes(unsigned spread) {
  Show show;
  auto voice = AddVoice(*AddSong(show, ""), 1);
  for (unsigned i = 0; i < 40'000; ++i) {
    const unsigned time = i * 8 + i * i % spread;
    const auto pitch = static_cast<unsigned char>(i * 7 % 120);
    voice->messages.emplace_back(time, std_midi::VoiceMessage(0x90, pitch, 1));
    voice->messages.emplace_back(time + 1, std_midi::VoiceMessage(0x90, pitch, 0));
  }
  return show;
}

template <typename Fill>
Show OneTimeline(Fill fill) {
  Show show;
  fill(*AddSong(show, "")->timeline);
  return show;
}

template <typename Fill>
Named<Show> ForDown(std::string name, unsigned songs, Fill fill) {
  Named<Show> named{std::move(name), {}};
  for (unsigned i = 0; i < songs; ++i) fill(*AddWholeSong(named.model, ShortNumber(i)));
  return named;
}

void AddVoicesForDown(Song& song) {
  for (std::uint16_t i = 2; i <= 100; ++i) AddVoice(song, static_cast<std::uint16_t>(i * 100));
}

/// Every message gets another channel than its neighbours and than its track.
void AddChannels(Song& song) {
  auto& messages = song.voice_data->tracks().begin()->second->messages;
  for (unsigned i = 0; i < 50'000; ++i) {
    messages.emplace_back(0, std_midi::VoiceMessage(static_cast<unsigned char>(0x90 + i % 16), 0, 0));
  }
}

/// Tempos that no meter has.
void AddLostTempos(Song& song) {
  song.timeline->meters.front().time = 1;
  song.timeline->tempos.assign(100'000, {});
  song.timeline->tempos.push_back({1, 500'000});
}

/// Every tempo comes back with other microseconds.
void AddChangedTempos(Song& song) {
  song.timeline->tempos.assign(100'000, {0, 1});
  song.timeline->meters.front().clocks_per_click = 1;
}

/// Each meter has all tempos: as many as are always taken.
void AddRepeatedTempos(Song& song) {
  song.timeline->tempos.assign(64, {});
  song.timeline->meters.assign(64, {});
}

void AddDisorder(Song& song) {
  for (std::uint32_t i = 50'000; i > 0; --i) song.timeline->keys.push_back({i, 0, 0x100});
}

void AddWidePages(Song& song) { song.timeline->page_numbers.assign(100'000, {0, 0x10000}); }

}  // namespace

std::string ShortNumber(unsigned i) {
  constexpr unsigned kLetters = 26;
  std::string number;
  for (++i; i > 0; i = (i - 1) / (2 * kLetters)) {
    const unsigned letter = (i - 1) % (2 * kLetters);
    number += static_cast<char>(letter < kLetters ? 'A' + letter : 'a' + letter - kLetters);
  }
  return number;
}

std::vector<Named<Show>> WorstShows() {
  std::vector<Named<Show>> shows;
  shows.push_back({"songs", ManySongs()});
  shows.push_back({"one-long-name", OneName(std::string(96'000, 'n'), 8'000)});
  shows.push_back({"controls", OneName(std::string(150'000, '\x01'), 1)});
  shows.push_back({"not-text", OneName(std::string(150'000, '\xFF'), 1)});
  shows.push_back({"alike", AlikeAsFiles()});
  shows.push_back({"voices", ManyVoices()});
  shows.push_back({"programs", ManyPrograms()});
  shows.push_back({"messages", ManyMessages()});
  shows.push_back({"notes", ManyNotes(1)});
  shows.push_back({"moved-notes", ManyNotes(7)});
  shows.push_back({"tempos", OneTimeline([](auto& timeline) { timeline.tempos.resize(100'000); })});
  shows.push_back({"bar-labels", OneTimeline([](auto& timeline) { timeline.bars_beats.resize(65'000); })});
  shows.push_back({"keys", OneTimeline([](auto& timeline) { timeline.keys.resize(65'000); })});
  shows.push_back({"pages", OneTimeline([](auto& timeline) { timeline.page_numbers.resize(100'000); })});
  shows.push_back({"meters", OneTimeline([](auto& timeline) { timeline.meters.resize(40'000); })});
  return shows;
}

std::vector<Named<Show>> WorstShowsForDown() {
  std::vector<Named<Show>> shows;
  shows.push_back(ForDown("down-songs", 255, [](Song&) {}));
  shows.push_back(ForDown("down-voices", 255, AddVoicesForDown));
  shows.push_back(ForDown("down-channels", 1, AddChannels));
  shows.push_back(ForDown("down-lost-tempos", 1, AddLostTempos));
  shows.push_back(ForDown("down-changed-tempos", 1, AddChangedTempos));
  shows.push_back(ForDown("down-repeated-tempos", 255, AddRepeatedTempos));
  shows.push_back(ForDown("down-disorder", 1, AddDisorder));
  shows.push_back(ForDown("down-pages", 1, AddWidePages));
  return shows;
}

}  // namespace zuna_test
