#pragma once

#include <memory>
#include <string>

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

}  // namespace fuzz
