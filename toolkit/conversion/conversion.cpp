// Conversion of documents (docs/conversion.md).
//
// This is a second driver of the conversions of version0 and the core library, beside showdata.cpp and
// logdata.cpp of the converter. Those convert one file with the results that their callers rely on. Here an
// error names the song and what to do about it, a companion may be of any form, and the legacy and the
// current form exist as documents, which the losses are computed from. That is why UpShow() and DownShow()
// repeat the loops over the songs in show_conversion.cpp: those cannot tell which song failed.
#include "toolkit/conversion/conversion.h"

#include <optional>
#include <utility>
#include <vector>

#include "format_converter/version0/conversions/repeated_tempos.h"
#include "toolkit/conversion/internal/legacy_limits.h"
#include "toolkit/document/internal/complete_songs.h"
#include "toolkit/document/internal/content.h"
#include "toolkit/error.h"
#include "toolkit/internal/translate.h"

namespace zuna_toolkit {

namespace {

/// Returns what `convert` returns for one song. Where it throws, the error names the song and, as far as
/// `diagnose` can tell, the reason; otherwise the remedy is `remedy`.
template <typename Convert, typename Diagnose>
auto ConvertSong(const std::string& file, const std::string& number, Convert convert, Diagnose diagnose,
                 const char* remedy) {
  try {
    return convert();
  } catch (const std::exception& error) {
    PassOnBadAlloc(error);
    const std::optional<Obstacle> known = diagnose();
    throw SongError(file, number, known ? *known : Obstacle{error.what(), remedy});
  }
}

zuna_midi::ShowData UpShow(const version0::ShowData& legacy, const std::string& file) {
  zuna_midi::ShowData show;
  for (const auto& entry : legacy.songs) {
    const version0::SongData& song = entry.second;
    show.AddSongData(ConvertSong(
        file, entry.first, [&] { return song.get_version_1_0(); }, [&] { return ObstacleUp(song); },
        kGetUndamagedCopy));
  }
  return show;
}

version0::ShowData DownShow(const zuna_midi::ShowData& show, const std::string& file) {
  version0::ShowData legacy;
  version0::RepeatedTempos repeated;
  for (const auto& entry : show.songs()) {
    const zuna_midi::SongData& song = *entry.second;
    const auto convert = [&] {
      version0::SongData converted(song);
      repeated.Add(*song.timeline, converted.timeline);
      return converted;
    };
    legacy.songs.emplace(entry.first,
                         ConvertSong(
                             file, entry.first, convert, [&] { return ObstacleDown(song); }, kCorrectSong));
  }
  return legacy;
}

Document UpLog(const LegacyLog& legacy, const std::string& name, const Companion& companion,
               cmn::FileVersion version) {
  CL::ChangeLog log = legacy.log.get_version_1_0();
  for (const auto& [number, song] : log.song_logs()) {
    const auto found = companion.songs.find(number);
    const std::uint16_t known = found == companion.songs.end() ? 0 : found->second.division.value_or(0);
    song->division = known == 0 ? companion.division : known;
  }
  return {std::move(log), version, name};
}

}  // namespace

Document Up(const Document& legacy, const Companion& companion, cmn::FileVersion version) {
  RequireLegacy(legacy.type(), legacy.name());
  if (const auto* log = legacy.As<LegacyLog>()) return UpLog(*log, legacy.name(), companion, version);
  zuna_midi::ShowData show = UpShow(legacy.As<LegacyShow>()->show, legacy.name());
  show.show_name = companion.show_name;
  return {std::move(show), version, legacy.name()};
}

Document Down(const Document& current) {
  RequireCurrent(current.type(), current.name());
  RequireCompleteSongs(current);
  RequireLegacyLimits(current);
  if (const auto* log = current.As<CL::ChangeLog>()) {
    return {LegacyLog{version0::ChangeLogV0(*log)}, kLegacyVersion, current.name()};
  }
  return {LegacyShow{DownShow(*current.As<zuna_midi::ShowData>(), current.name())}, kLegacyVersion,
          current.name()};
}

Document Convert(const Document& current, cmn::FileVersion version) {
  RequireCurrent(current.type(), current.name());
  return {current.model(), version, current.name()};
}

Document CurrentForm(const Document& document) {
  if (!document.type().is_legacy()) return document;
  if (const auto* file = document.As<LegacyLog>()) {
    return {file->log.get_version_1_0(), cmn::kDefaultVersion, document.name()};
  }
  return Up(document, Companion{}, cmn::kDefaultVersion);
}

}  // namespace zuna_toolkit
