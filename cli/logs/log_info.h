#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "CL/change_log.h"
#include "cmn/file_version.h"

namespace zuna_cli {

/// A kind of edit.
struct EditKind {
  const char* key;  ///< as the text form calls the list
  const char* one;
  const char* many;
};

/// In the order of the text form.
constexpr std::array<EditKind, 9> kEditKinds{{{"vamps", "vamp", "vamps"},
                                              {"repeats", "repeat", "repeats"},
                                              {"cuts", "cut", "cuts"},
                                              {"transposes", "transpose", "transposes"},
                                              {"tempoScales", "tempo scale", "tempo scales"},
                                              {"clicks", "click", "clicks"},
                                              {"fermatas", "fermata", "fermatas"},
                                              {"markers", "marker", "markers"},
                                              {"caesuras", "caesura", "caesuras"}}};

/// How many edits a song has of each kind, in the order of kEditKinds.
using EditCounts = std::array<std::size_t, kEditKinds.size()>;
EditCounts CountEdits(const CL::SongLog& song);

/// "3 songs, 12 edits"
std::string CountsText(const CL::ChangeLog& log);

/// What there is to tell about a log file.
struct LogInfo {
  std::string path;
  cmn::FileVersion version;
  CL::ChangeLog log;  ///< in its current form; a legacy file has no divisions and attaccas
};

/// The whole as aligned text for people, with a line break at its end.
std::string InfoText(const LogInfo& info);

/// The whole as a JSON object.
std::string InfoJson(const LogInfo& info);

}  // namespace zuna_cli
