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

/// The numbers of the songs of the log that the companion lacks. Throws Error where it lacks all of them.
std::vector<std::string> UnknownSongs(const CL::ChangeLog& log, const Companion& companion) {
  std::vector<std::string> unknown;
  for (const auto& [number, song] : log.song_logs()) {
    if (!companion.songs.contains(number)) unknown.push_back(number);
  }
  if (unknown.empty() || unknown.size() < log.song_logs().size()) return unknown;
  throw Error(ErrorCode::kUnrelatedCompanion, companion.name, "has none of the log's songs",
              "give the show of the log");
}

/// Gives every song of the log the division that it has in the companion. Returns those that have another
/// name there.
std::vector<UpResult::RenamedSong> TakeDivisions(CL::ChangeLog& log, const Companion& companion) {
  std::vector<UpResult::RenamedSong> renamed;
  for (const auto& [number, song] : log.song_logs()) {
    const auto found = companion.songs.find(number);
    if (found == companion.songs.end()) continue;
    song->division = found->second.division;
    if (song->song_name != found->second.name) {
      renamed.push_back({number, song->song_name, found->second.name});
    }
  }
  return renamed;
}

UpResult UpLog(const LegacyLog& legacy, const std::string& name, const Companion& companion,
               cmn::FileVersion version) {
  CL::ChangeLog log = legacy.log.get_version_1_0();
  std::vector<std::string> unknown = UnknownSongs(log, companion);
  std::vector<UpResult::RenamedSong> renamed = TakeDivisions(log, companion);
  return {Document(std::move(log), version, name), std::move(unknown), std::move(renamed)};
}

}  // namespace

Companion CompanionFrom(const Document& document) {
  Companion companion{document.name(), "", {}};
  if (const auto* legacy_log = document.As<LegacyLog>()) {
    companion.show_name = legacy_log->log.show_name;
  } else if (const auto* log = document.As<CL::ChangeLog>()) {
    companion.show_name = log->show_name;
  } else if (const auto* legacy_show = document.As<LegacyShow>()) {
    for (const auto& [number, song] : legacy_show->show.songs) {
      companion.songs[number] = {song.song_name, song.division};
    }
  } else {
    for (const auto& [number, song] : document.As<zuna_midi::ShowData>()->songs()) {
      companion.songs[number] = {song->song_name, song->division};
    }
  }
  return companion;
}

Companion ReadLogAsCompanion(OpenedFile& file) { return {file.name(), ReadLegacyShowName(file), {}}; }

Companion ReadShowAsCompanion(OpenedFile& file) {
  const FileType type = TypeByMark(file);
  if (type.is_legacy() && !type.is_log()) return CompanionFrom(ReadDocument(file, Expected::kLegacy));
  throw Error(ErrorCode::kWrongCompanion, file.name(), "is " + TypeText(type) + ", no show of version 0.0",
              "give the show of the log");
}

UpResult Up(const Document& legacy, const Companion& companion, cmn::FileVersion version) {
  RequireLegacy(legacy.type(), legacy.name());
  if (const auto* file = legacy.As<LegacyShow>()) {
    zuna_midi::ShowData show = UpShow(file->show, legacy.name());
    show.show_name = companion.show_name;
    return {Document(std::move(show), version, legacy.name()), {}, {}};
  }
  return UpLog(*legacy.As<LegacyLog>(), legacy.name(), companion, version);
}

Document Down(const Document& current) {
  RequireCurrent(current.type(), current.name());
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
  return Up(document, Companion{}, cmn::kDefaultVersion).document;
}

}  // namespace zuna_toolkit
