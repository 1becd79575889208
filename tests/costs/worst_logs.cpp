// Current logs with many records of few bytes.

#include <utility>

#include "tests/costs/worst_inputs.h"

namespace zuna_test {

namespace {

using Log = CL::ChangeLog;

std::shared_ptr<CL::SongLog> AddSong(Log& log, const std::string& number, const std::string& name = "") {
  auto song = std::make_shared<CL::SongLog>(number, name, static_cast<unsigned short>(0), 0U);
  log.AddSongLog(song);
  return song;
}

Log ManySongs() {
  Log log;
  for (unsigned i = 0; i < 12'000; ++i) AddSong(log, ShortNumber(i));
  return log;
}

/// Songs from number `first` on, each with a fermata and an attacca.
Log ManyFermatas(unsigned first) {
  Log log;
  for (unsigned i = first; i < first + 10'000; ++i) {
    auto song = AddSong(log, ShortNumber(i));
    song->attacca = 1;
    song->fermatas->events.emplace_back(0, 0, "", 0);
  }
  return log;
}

/// Every list of every song has an edit.
Log OneEditInEachList() {
  Log log;
  for (unsigned i = 0; i < 4'000; ++i) {
    auto song = AddSong(log, ShortNumber(i));
    song->vamps->events.emplace_back(0, 0, "", 0);
    song->repeats->events.emplace_back(0, 0, "", 0);
    song->cuts->events.emplace_back(0, 0, "", 0);
    song->transposes->events.emplace_back(0, 0, "", 0);
    song->tempo_scales->events.emplace_back(0, 0, "", 0.0F);
    song->clicks->events.emplace_back(0, 0, "", 0);
    song->fermatas->events.emplace_back(0, 0, "", 0);
    song->markers->events.emplace_back(0, "", "");
    song->caesuras->events.emplace_back(0, "");
  }
  return log;
}

Log ManyMarkers() {
  Log log;
  auto& markers = AddSong(log, "")->markers->events;
  for (unsigned i = 0; i < 65'000; ++i) markers.emplace_back(0, "", "");
  return log;
}

Log ManyCaesuras() {
  Log log;
  auto& caesuras = AddSong(log, "")->caesuras->events;
  for (unsigned i = 0; i < 65'000; ++i) caesuras.emplace_back(0, "");
  return log;
}

/// Late vamps whose values version 0.0 does not hold.
Log ManyVamps() {
  Log log;
  auto& vamps = AddSong(log, "")->vamps->events;
  for (unsigned i = 0; i < 50'000; ++i) vamps.emplace_back(0xFFFFFFF0U, 0xFFFFFFF0U, "", -200);
  return log;
}

Log LongTexts() {
  Log log;
  log.show_name = std::string(50'000, '\x01');
  AddSong(log, "", std::string(100'000, '\x7F'))
      ->markers->events.emplace_back(0, std::string(25'000, '\x02'), "");
  return log;
}

}  // namespace

std::vector<Named<Log>> WorstLogs() {
  std::vector<Named<Log>> logs;
  logs.push_back({"song-logs", ManySongs()});
  logs.push_back({"fermatas", ManyFermatas(0)});
  logs.push_back({"renumbered-song-logs", ManyFermatas(10'000)});
  logs.push_back({"each-list", OneEditInEachList()});
  logs.push_back({"markers", ManyMarkers()});
  logs.push_back({"caesuras", ManyCaesuras()});
  logs.push_back({"vamps", ManyVamps()});
  logs.push_back({"long-texts", LongTexts()});
  return logs;
}

}  // namespace zuna_test
