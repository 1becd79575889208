#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cmn/file_version.h"
#include "format_converter/version0/containers/show_data.h"
#include "zuna_midi/show_data.h"

namespace zuna_cli {

/// What there is to tell about a song.
struct SongInfo {
  std::string number;
  std::string name;
  std::uint16_t division = 0;  ///< ticks of a quarter note
  std::uint32_t length = 0;    ///< ticks
  std::size_t voices = 0;
  std::size_t events = 0;
  std::size_t bars = 0;
  std::size_t tempos = 0;
  std::size_t meters = 0;
};

/// What there is to tell about a show file.
struct ShowInfo {
  std::string path;
  cmn::FileVersion version;
  std::optional<std::string> show_name;  ///< a legacy show file has none
  std::vector<SongInfo> songs;
};

/// The songs of a show.
std::vector<SongInfo> SongInfosOf(const zuna_midi::ShowData& show);
std::vector<SongInfo> SongInfosOf(const version0::ShowData& show);

/// "3 songs, 12 voices, 4711 events"
std::string CountsText(const std::vector<SongInfo>& songs);

/// The whole as aligned text for people, with a line break at its end.
std::string InfoText(const ShowInfo& info);

/// The whole as a JSON object.
std::string InfoJson(const ShowInfo& info);

}  // namespace zuna_cli
