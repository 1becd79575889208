// What shows and logs of current versions have in common, for templates.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "CL/change_log.h"
#include "CL/log_records.h"
#include "toolkit/rescue/internal/salvage.h"
#include "zuna_midi/show_data.h"
#include "zuna_midi/show_records.h"

namespace zuna_toolkit {

/// Of a show.
struct CurrentShows {
  using Model = zuna_midi::ShowData;
  using Song = zuna_midi::SongData;

  static constexpr const char* kHead = "the show's name";
  static constexpr SongOrder kOrder = SongOrder::kNumeric;

  static std::pair<Model, std::uint32_t> ReadHead(std::string_view file, std::size_t& offset,
                                                  cmn::FileVersion version) {
    zuna_midi::ShowHead head = zuna_midi::ReadShowHead(file, offset, version);
    return {std::move(head.show), head.songs};
  }
  static std::shared_ptr<Song> ReadSong(std::string_view file, std::size_t& offset,
                                        cmn::FileVersion version) {
    return zuna_midi::ReadSong(file, offset, version);
  }
  static std::shared_ptr<Song> ReadBeginning(std::string_view file, std::size_t& offset,
                                             cmn::FileVersion version) {
    return zuna_midi::ReadBeginningOfSong(file, offset, version);
  }
  /// Whether it has a message.
  static bool HoldsSomething(const Song& song) {
    const auto& voices = song.voice_data->tracks();
    return std::any_of(voices.begin(), voices.end(),
                       [](const auto& voice) { return !voice.second->messages.empty(); });
  }
  static const auto& Songs(const Model& show) { return show.songs(); }
  static Model WithoutSongs(const Model& show) {
    Model head;
    head.show_name = show.show_name;
    return head;
  }
  static void Add(Model& show, std::shared_ptr<Song> song) { show.AddSongData(std::move(song)); }
};

/// Of a log.
struct CurrentLogs {
  using Model = CL::ChangeLog;
  using Song = CL::SongLog;

  static constexpr const char* kHead = "the head of the log: show name, label, identifier and tag pair";
  static constexpr SongOrder kOrder = SongOrder::kBytes;

  static std::pair<Model, std::uint32_t> ReadHead(std::string_view file, std::size_t& offset,
                                                  cmn::FileVersion version) {
    CL::LogHead head = CL::ReadLogHead(file, offset, version);
    return {std::move(head.log), head.songs};
  }
  static std::shared_ptr<Song> ReadSong(std::string_view file, std::size_t& offset,
                                        cmn::FileVersion version) {
    return CL::ReadSongLog(file, offset, version);
  }
  static std::shared_ptr<Song> ReadBeginning(std::string_view file, std::size_t& offset,
                                             cmn::FileVersion version) {
    return CL::ReadBeginningOfSongLog(file, offset, version);
  }
  /// Whether it has an edit.
  static bool HoldsSomething(const Song& song) {
    const auto have = [](const auto&... lists) { return (!lists->events.empty() || ...); };
    return have(song.vamps, song.repeats, song.cuts, song.transposes, song.tempo_scales, song.markers,
                song.clicks, song.fermatas, song.caesuras);
  }
  static const auto& Songs(const Model& log) { return log.song_logs(); }
  static Model WithoutSongs(Model log) {
    log.song_logs().clear();
    return log;
  }
  static void Add(Model& log, std::shared_ptr<Song> song) { log.AddSongLog(std::move(song)); }
};

/// The head of a file as it can be read.
template <typename Kind>
struct CurrentHead {
  typename Kind::Model model;
  std::uint64_t songs = 0;  ///< how many it states
  std::size_t end = 0;      ///< offset after it
};

/// Bytes that may be those of a song.
struct SongGap {
  std::size_t song = 0;   ///< how many songs are before it in the report
  std::size_t begin = 0;  ///< offset of its first byte
  std::size_t end = 0;    ///< offset after its last byte
};

/// Adds `songs`, which are those in `report` that are not lost, under numbers of their own.
template <typename Kind>
void AddNumbered(typename Kind::Model& model, RescueReport& report,
                 const std::vector<std::shared_ptr<typename Kind::Song>>& songs) {
  NumberSongs(report, Kind::kOrder, songs, [&model](const std::string& number, const auto& song) {
    song->song_number = number;
    Kind::Add(model, song);
  });
}

}  // namespace zuna_toolkit
