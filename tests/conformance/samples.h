// A show and a log of the current model, for the conformance tests.

#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "CL/change_log.h"
#include "TL/timeline.h"
#include "cmn/file_version.h"
#include "zuna_midi/show_data.h"

namespace conformance {

inline constexpr cmn::FileVersion kCurrent{1, 2};

/// A show of two songs, one of them with a voice and something in every list of its timeline.
inline zuna_midi::ShowData SampleShow() {
  const auto song = std::make_shared<zuna_midi::SongData>("10", "Tune", 480, 7680);
  song->timeline->tempos = {{0, 500000}};
  song->timeline->meters = {{0, 4, 4, 24, 8}};
  song->timeline->keys = {{0, -3, 1}};
  song->timeline->page_numbers = {{0, 70000}};
  TL::BarsBeats bar;
  bar.bar_number("1a");
  bar.tag = 7;
  song->timeline->bars_beats = {bar};
  const auto track = std::make_shared<zuna_midi::VoiceTrack>();
  track->track_number = 300;
  track->name = "Piano";
  track->messages = {{0, {0x90, 60, 100}}, {480, {0x80, 60, 0}}};
  song->voice_data->AddTrack(track);
  zuna_midi::ShowData show;
  show.show_name = "Opera";
  show.AddSongData(song);
  show.AddSongData(std::make_shared<zuna_midi::SongData>("2", "Other", 96, 100));
  return show;
}

/// A log of two songs, one of them with an edit of every class.
inline CL::ChangeLog SampleLog() {
  const auto song = std::make_shared<CL::SongLog>("10", "Tune", 480, 7680);
  song->attacca = 1;
  song->vamps->events.emplace_back(0, 480, "", 2);
  song->repeats->events.emplace_back(480, 960, "", 3);
  song->cuts->events.emplace_back(960, 1440, "", -1);
  song->transposes->events.emplace_back(0, 7680, "", -12);
  song->tempo_scales->events.emplace_back(0, 7680, "", 1.5F);
  song->markers->events.emplace_back(0, "", "A");
  song->clicks->events.emplace_back(0, 7680, "", 1);
  song->fermatas->events.emplace_back(100, 200, "", 4);
  song->caesuras->events.emplace_back(960, "");
  CL::ChangeLog log;
  log.show_name = "Opera";
  log.log_label = "First night";
  log.log_tag_pair = {1, 2};
  log.AddSongLog(song);
  log.AddSongLog(std::make_shared<CL::SongLog>("2", "Other", 96, 100));
  return log;
}

template <typename Model>
std::string Written(const Model& model, cmn::FileVersion version = kCurrent) {
  std::ostringstream os;
  model.WriteBinary(os, version);
  return os.str();
}

template <typename Map>
std::vector<std::string> Keys(const Map& map) {
  std::vector<std::string> keys;
  for (const auto& entry : map) keys.push_back(entry.first);
  return keys;
}

}  // namespace conformance
