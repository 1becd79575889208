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

#include "toolkit/conversion/internal/legacy_limits.h"
#include "toolkit/error.h"
#include "toolkit/internal/translate.h"

namespace zuna_toolkit {

namespace {

constexpr cmn::FileVersion kLegacy{0, 0};

/// Returns what `convert` returns for one song. Where it throws, the error names the song and, as far as
/// `diagnose` can tell, the reason.
template <typename Convert, typename Diagnose>
auto ConvertSong(const std::string& file, const std::string& number, Convert convert, Diagnose diagnose) {
  try {
    return convert();
  } catch (const std::exception& error) {
    PassOnBadAlloc(error);
    const std::optional<Obstacle> known = diagnose();
    throw SongError(file, number, known ? *known : Obstacle{error.what(), kCorrectSong});
  }
}

zuna_midi::ShowData UpShow(const version0::ShowData& legacy, const std::string& file) {
  zuna_midi::ShowData show;
  for (const auto& entry : legacy.songs) {
    const version0::SongData& song = entry.second;
    show.AddSongData(ConvertSong(
        file, entry.first, [&] { return song.get_version_1_0(); }, [&] { return ObstacleUp(song); }));
  }
  return show;
}

version0::ShowData DownShow(const zuna_midi::ShowData& show, const std::string& file) {
  version0::ShowData legacy;
  for (const auto& entry : show.songs()) {
    const zuna_midi::SongData& song = *entry.second;
    legacy.songs.emplace(entry.first, ConvertSong(
                                          file, entry.first, [&] { return version0::SongData(song); },
                                          [&] { return ObstacleDown(song); }));
  }
  return legacy;
}

/// Gives every song of the log the division that it has in the companion.
void TakeDivisions(CL::ChangeLog& log, const Companion& companion, UpResult& result) {
  for (const auto& [number, song] : log.song_logs()) {
    const auto found = companion.songs.find(number);
    if (found == companion.songs.end()) {
      result.unknown_songs.push_back(number);
      continue;
    }
    song->division = found->second.division;
    if (song->song_name == found->second.name) continue;
    result.renamed_songs.push_back({number, song->song_name, found->second.name});
  }
  if (result.unknown_songs.empty() || result.unknown_songs.size() < log.song_logs().size()) return;
  throw Error(ErrorKind::kBadInput, companion.name, "has none of the log's songs",
              "give the show of the log");
}

}  // namespace

void RequireLegacy(const FileType& type, const std::string& name) {
  if (type.is_legacy()) return;
  throw Error(ErrorKind::kBadInput, name, "is " + TypeText(type) + ", not 0.0", "use convert or down");
}

void RequireCurrent(const FileType& type, const std::string& name) {
  if (!type.is_legacy()) return;
  throw Error(ErrorKind::kBadInput, name, "is " + TypeText(type) + ", not a current one", "use up first");
}

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

Companion ReadCompanion(OpenedFile& file, cmn::FileKind of_kind) {
  if (of_kind == cmn::FileKind::kShow) return {file.name(), ReadLegacyShowName(file), {}};
  const FileType type = Detect(file);
  if (type == FileType{}) return CompanionFrom(ReadDocument(file, type));
  throw Error(ErrorKind::kBadInput, file.name(), "is " + TypeText(type) + ", no show of version 0.0",
              "give the show of the log");
}

UpResult Up(const Document& legacy, const Companion& companion, cmn::FileVersion version) {
  RequireLegacy(legacy.type(), legacy.name());
  if (const auto* file = legacy.As<LegacyShow>()) {
    zuna_midi::ShowData show = UpShow(file->show, legacy.name());
    show.show_name = companion.show_name;
    return {Document(std::move(show), version, legacy.name()), {}, {}};
  }
  CL::ChangeLog log = legacy.As<LegacyLog>()->log.get_version_1_0();
  UpResult result{Document(log, version, legacy.name()), {}, {}};
  TakeDivisions(log, companion, result);  // The document shares its songs with the log.
  return result;
}

Document Down(const Document& current) {
  RequireCurrent(current.type(), current.name());
  RequireLegacyLimits(current);
  if (const auto* log = current.As<CL::ChangeLog>()) {
    return {LegacyLog{version0::ChangeLogV0(*log)}, kLegacy, current.name()};
  }
  return {LegacyShow{DownShow(*current.As<zuna_midi::ShowData>(), current.name())}, kLegacy, current.name()};
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
