#include "platform/core/log/log_builder.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "platform/core/text/quote.h"

namespace zuna_core {

std::shared_ptr<CL::SongLog> BlankSongLog() {
  return std::make_shared<CL::SongLog>("", "", static_cast<unsigned short>(0), 0U);
}

bool AddNewSongLog(CL::ChangeLog& log, std::shared_ptr<CL::SongLog> song) {
  if (log.song_logs().count(song->song_number) != 0) return false;
  log.AddSongLog(std::move(song));
  return true;
}

namespace {

/// The name of the first list of `song` that is null; null where there is none.
const char* MissingList(const CL::SongLog& song) {
  if (!song.vamps) return "vamps";
  if (!song.repeats) return "repeats";
  if (!song.cuts) return "cuts";
  if (!song.transposes) return "transposes";
  if (!song.tempo_scales) return "tempoScales";
  if (!song.clicks) return "clicks";
  if (!song.fermatas) return "fermatas";
  if (!song.markers) return "markers";
  if (!song.caesuras) return "caesuras";
  return nullptr;
}

}  // namespace

void CheckWritable(const CL::ChangeLog& log) {
  for (const auto& [number, song] : log.song_logs()) {
    const auto refuse = [name = "Song " + Quote(number)](const std::string& what) {
      throw std::logic_error(name + " cannot be written: " + what);
    };
    if (!song) refuse("its song log is null");
    if (song->song_number != number) refuse("its number was changed to " + Quote(song->song_number));
    if (const char* list = MissingList(*song)) refuse(std::string("its list ") + list + " is null");
  }
}

}  // namespace zuna_core
