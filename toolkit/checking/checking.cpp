// Checks documents of every kind and version.
#include "toolkit/checking/checking.h"

#include "toolkit/checking/internal/check_models.h"
#include "toolkit/words.h"

namespace zuna_toolkit {

namespace {

void AddReplacedSongs(std::size_t count, const SongFindings& findings) {
  if (count == 0) return;
  findings.Add(FindingCode::kSongRepeated,
               Counted(count, "song was", "songs were") + " replaced by a later song of the same number");
}

void AddReplacedSequences(std::size_t count, const SongFindings& findings) {
  if (count == 0) return;
  findings.Add(FindingCode::kSequenceRepeated,
               Counted(count, "list was", "lists were") + " replaced by a later list of the same kind");
}

}  // namespace

void Check(const Document& document, const FindingSink& sink) {
  const SongFindings whole("", sink);
  if (const auto* legacy_show = document.As<LegacyShow>()) {
    AddReplacedSongs(legacy_show->replaced_songs, whole);
    AddReplacedSequences(legacy_show->replaced_sequences, whole);
    CheckShow(legacy_show->show, sink);
    if (legacy_show->trailing_bytes == 0) return;
    whole.Add(FindingCode::kTrailingBytes,
              Counted(legacy_show->trailing_bytes, "byte follows", "bytes follow") + " the last song");
  } else if (const auto* legacy_log = document.As<LegacyLog>()) {
    AddReplacedSongs(legacy_log->replaced_songs, whole);
    AddReplacedSequences(legacy_log->replaced_sequences, whole);
    CheckLog(legacy_log->log, sink);
  } else if (const auto* show = document.As<zuna_midi::ShowData>()) {
    CheckShow(*show, sink);
  } else if (const auto* log = document.As<CL::ChangeLog>()) {
    CheckLog(*log, sink);
  }
}

}  // namespace zuna_toolkit
