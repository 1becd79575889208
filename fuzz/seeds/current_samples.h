// A current show and a current log that the seeds are made from.

#pragma once

#include <limits>
#include <memory>
#include <string>

#include "CL/change_log.h"
#include "zuna_midi/show_data.h"

namespace fuzz {

/// A show that uses every list and every kind of text.
inline zuna_midi::ShowData SampleShow() {
  auto song =
      std::make_shared<zuna_midi::SongData>("12a", "T\xC3\xA4nze", static_cast<unsigned short>(480), 1920U);
  song->timeline->tempos = {{0, 500000}, {960, 600000}};
  song->timeline->keys = {{0, -1, 1}};
  song->timeline->page_numbers = {{0, 1}};
  song->timeline->meters = {{0, 4, 4, 24, 8}};
  TL::BarsBeats bar;
  bar.bar_number("1");
  song->timeline->bars_beats = {bar};
  for (const int number : {1, 9}) {
    auto voice = std::make_shared<zuna_midi::VoiceTrack>();
    voice->track_number = static_cast<std::uint16_t>(number);
    voice->name = number == 9 ? "Drum Kit" : "not UTF-8: \xFF";
    voice->messages = {{0, {0x90, 60, 100}}, {480, {0x90, 60, 0}}, {300, {0x12, 200, 255}}};
    song->voice_data->AddTrack(voice);
  }
  zuna_midi::ShowData show;
  show.show_name = "\"Opera\"\n";
  show.AddSongData(song);
  return show;
}

/// A log that uses every list and every kind of text and float.
inline CL::ChangeLog SampleLog() {
  auto song = std::make_shared<CL::SongLog>("12a", "T\xC3\xA4nze", static_cast<unsigned short>(480), 1920U);
  song->attacca = 1;
  song->vamps->events = {{0, 480, "", 2}, {480, 960, "not UTF-8: \xFF", -1}};
  song->repeats->events = {{0, 480, "", 3}};
  song->cuts->events = {{960, 480, "", 1}};
  song->transposes->events = {{0, 1920, "", -2}};
  song->tempo_scales->events = {
      {0, 480, "", 1.5F}, {480, 960, "", -0.0F}, {960, 1920, "", std::numeric_limits<float>::quiet_NaN()}};
  song->clicks->events = {{0, 1920, "", 1}};
  song->fermatas->events = {{1440, 1920, "", 4}};
  song->markers->events = {{0, "", "A"}, {960, "x", "\"B\"\n"}};
  song->caesuras->events = {{1920, ""}};
  CL::ChangeLog log;
  log.show_name = "\"Opera\"\n";
  log.log_label.assign(3, 'L');
  log.identifier = kit::UUID::FromString("00112233-4455-6677-8899-aabbccddeeff");
  log.log_tag_pair = {1, 65535};
  log.AddSongLog(song);
  log.AddSongLog(std::make_shared<CL::SongLog>("2", "", static_cast<unsigned short>(0), 0U));
  return log;
}

}  // namespace fuzz
