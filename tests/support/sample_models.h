#pragma once

// A small show and a small log in the current model, with something in every list and a text that is not
// UTF-8. tests/platform/core/show/sample_show_file.cpp and log/sample_log_file.cpp hold the bytes of their
// files.

#include <bit>
#include <cstdint>
#include <memory>
#include <string>

#include "CL/change_log.h"
#include "zuna_midi/show_data.h"

namespace zuna_test {

inline TL::BarsBeats SampleLabel(std::uint32_t time, const std::string& text, std::uint8_t tag) {
  TL::BarsBeats entry;
  entry.time = time;
  entry.tag = tag;
  entry.bar_number(text);
  return entry;
}

inline zuna_midi::ShowData SampleShow() {
  auto song = std::make_shared<zuna_midi::SongData>("2b", "Go", static_cast<unsigned short>(480), 7680U);
  TL::Timeline& timeline = *song->timeline;
  timeline.tempos = {{0, 500000}, {960, 545455}};
  timeline.bars_beats = {SampleLabel(0, "1", 0), SampleLabel(1920, "12a", 3)};
  timeline.keys = {{0, -1, 1}};
  timeline.page_numbers = {{480, 300}};
  timeline.meters = {{0, 6, 8, 36, 8}};

  auto piano = std::make_shared<zuna_midi::VoiceTrack>();
  piano->track_number = 1;
  piano->name = "Piano";
  piano->messages = {{0, {0x90, 60, 100}}, {480, {0x90, 60, 0}}, {480, {0xC1, 5, 0}}};
  song->voice_data->AddTrack(piano);
  auto empty = std::make_shared<zuna_midi::VoiceTrack>();
  empty->track_number = 300;
  empty->reserved = 7;
  song->voice_data->AddTrack(empty);

  zuna_midi::ShowData show;
  show.show_name = "Hä";
  show.AddSongData(song);
  return show;
}

inline CL::ChangeLog SampleLog() {
  auto song = std::make_shared<CL::SongLog>("2b", "Go", static_cast<unsigned short>(480), 7680U);
  song->attacca = 2;
  song->vamps->events = {{0, 480, "", 2}, {960, 1440, "til cue", -1}};
  song->repeats->events = {{480, 960, "", 3}};
  song->cuts->events = {{1920, 960, "\xFF", 1}};
  song->transposes->events = {{0, 7680, "", -2}};
  song->tempo_scales->events = {{0, 480, "", 1.5F}, {480, 960, "", std::bit_cast<float>(0x7FC00000)}};
  song->clicks->events = {{0, 960, "", 1}};
  song->fermatas->events = {{7200, 7680, "", 4}};
  song->markers->events = {{0, "", "A"}, {1920, "x", "B♭"}};
  song->caesuras->events = {{1920, ""}};
  song->caesuras->events[0].second_word = 300;

  CL::ChangeLog log;
  log.show_name = "Hä";
  log.log_label.assign(1, 'A');
  log.identifier = kit::UUID::FromString("00112233-4455-6677-8899-aabbccddeeff");
  log.log_tag_pair = {1, 65535};
  log.AddSongLog(song);
  return log;
}

}  // namespace zuna_test
