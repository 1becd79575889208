// Random documents that lose something, but not too much, in a conversion.

#pragma once

#include <algorithm>
#include <memory>
#include <random>
#include <string>

#include "tests/support/random_legacy_show.h"
#include "tests/support/random_log.h"
#include "tests/support/random_show.h"

namespace zuna_test {

/// A random show that format 0.0 can hold, with a few oddities where `wild`.
inline zuna_midi::ShowData ConvertibleShow(std::mt19937& random, bool wild) {
  ShowOptions options;
  options.wild = wild;
  zuna_midi::ShowData show = RandomShow(random, options);
  for (const auto& [number, song] : show.songs()) {
    auto voice = std::make_shared<zuna_midi::VoiceTrack>();
    voice->track_number = 1;
    voice->name = random() % 2 == 0 ? "Drums" : "Piano";
    voice->messages = {{0, {0x91, 1, 1}}};
    song->voice_data->AddTrack(voice);
    if (random() % 4 == 0) song->timeline->meters.resize(1);
  }
  return show;
}

/// Leaves few things in the log that format 0.0 does not hold.
inline void Tame(CL::ChangeLog& log, std::mt19937& random) {
  const auto tame_list = [&](auto& list) {
    for (auto& event : list.events) {
      if (random() % 8 != 0) event.label.clear();
      if (random() % 8 != 0) event.SetIntValue(static_cast<std::int8_t>(event.IntValue()));
    }
  };
  for (const auto& [number, song] : log.song_logs()) {
    if (random() % 4 != 0) song->division = 0;
    if (random() % 4 != 0) song->attacca = 0;
    if (random() % 4 != 0) song->fermatas->events.clear();
    tame_list(*song->vamps);
    tame_list(*song->repeats);
    tame_list(*song->cuts);
    tame_list(*song->transposes);
    tame_list(*song->clicks);
    for (auto& event : song->tempo_scales->events) event.label.clear();
    for (auto& event : song->markers->events) event.label.clear();
    for (auto& event : song->caesuras->events) {
      event.label.clear();
      if (random() % 8 != 0) event.second_word = 0;
    }
  }
}

/// Puts a timeline out of the order and the form that a conversion keeps.
inline void MakeOdd(version0::SongData& song, std::mt19937& random) {
  const auto sometimes = [&] { return random() % 16 == 0; };
  version0::Timeline& timeline = song.timeline;
  if (sometimes()) timeline.name += 'x';
  if (sometimes()) ++timeline.song_length;
  for (version0::RBarsBeats& label : timeline.bars_beats) {
    if (sometimes()) label.label += "longer than 7";
  }
  for (version0::RTempo& tempo : timeline.tempos) {
    if (sometimes()) ++tempo.bpm;
    if (sometimes()) tempo.notated_32_per_click = static_cast<std::uint8_t>(random());
    if (sometimes()) tempo.seconds_per_tick *= 1.0001F;
    if (sometimes()) tempo.seconds_per_tick = -1;
    if (sometimes()) tempo.seconds_per_tick = 1e30F;
  }
  for (version0::RMeter& meter : timeline.meters) {
    if (sometimes()) ++meter.time;
    if (sometimes()) meter.time = 0;
  }
}

/// A random legacy show with a few things that no current version holds.
inline version0::ShowData OddLegacyShow(std::mt19937& random) {
  version0::ShowData show = RandomLegacyShow(random);
  const auto sometimes = [&] { return random() % 256 == 0; };
  for (auto& [number, song] : show.songs) {
    if (random() % 2 == 0) MakeOdd(song, random);
    if (sometimes()) song.division = 0;
    if (random() % 8 == 0) song.tracks.emplace_back(song.tracks.front());
    if (random() % 8 == 0) std::reverse(song.tracks.begin(), song.tracks.end());
    for (auto& [id, events] : song.events) {
      for (version0::EventObject& event : events) {
        if (sometimes()) event.status_high = static_cast<std::uint8_t>(event.status_high | (random() & 0x0F));
        if (sometimes()) ++event.delta_time;
      }
    }
  }
  return show;
}

}  // namespace zuna_test
