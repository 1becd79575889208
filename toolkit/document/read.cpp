// Reads the model out of an opened file.
#include <istream>

#include "format_converter/logdata.h"
#include "format_converter/version0/containers/change_log_header.h"
#include "kit/stream_size.h"
#include "toolkit/document/internal/content.h"
#include "toolkit/document/internal/legacy_damage.h"
#include "toolkit/document/internal/replaced_sequences.h"
#include "toolkit/document/open.h"
#include "toolkit/error.h"
#include "toolkit/internal/translate.h"

namespace zuna_toolkit {

namespace {

constexpr unsigned kHalf = 16;  // bits

LegacyShow ReadLegacyShow(std::istream& stream) {
  Rewind(stream);
  const int song_count = stream.peek();
  LegacyShow legacy{ReadUnmarkedShow(stream)};
  legacy.replaced_songs = static_cast<std::size_t>(song_count) - legacy.show.songs.size();
  legacy.trailing_bytes = static_cast<std::size_t>(kit::BytesAhead(*stream.rdbuf()));
  legacy.replaced_sequences = ReplacedSequencesOfShow(stream);
  return legacy;
}

/// How many song logs stand in the stream.
std::size_t CountSongLogs(std::istream& stream) {
  Rewind(stream);
  stream.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  const version0::ChangeLogHeader header(stream);
  std::size_t count = 0;
  while (stream.tellg() < std::streamoff{header.end_position}) {
    const version0::SongLogV0 song(stream);
    ++count;
  }
  return count;
}

/// A log without song logs, which the reader of whole logs does not accept.
version0::ChangeLogV0 EmptyLog(std::istream& stream) {
  const version0::ChangeLogHeader header(stream);
  version0::ChangeLogV0 log;
  log.identifier = header.identifier;
  log.log_label = header.log_label;
  log.show_name = header.show_name;
  log.log_tag_pair = {static_cast<std::uint16_t>(header.log_tag_pair),
                      static_cast<std::uint16_t>(header.log_tag_pair >> kHalf)};
  return log;
}

LegacyLog ReadLegacyLog(std::istream& stream) {
  const std::size_t count = CountSongLogs(stream);
  Rewind(stream);
  if (count == 0) return {EmptyLog(stream)};
  LegacyLog legacy{version0::ChangeLogV0(stream)};
  legacy.replaced_songs = count - legacy.log.songs.size();
  legacy.replaced_sequences = ReplacedSequencesOfLog(stream);
  return legacy;
}

/// Returns what `read` returns. Where it fails, the error names the place of the damage.
template <typename Read>
auto OrDamage(OpenedFile& file, cmn::FileKind kind, Read read) {
  try {
    return read(file.stream());
  } catch (const std::exception& error) {
    PassOnBadAlloc(error);
    if (kind == cmn::FileKind::kShow) RequireEncryptedOrLegacySong(file);
    if (dynamic_cast<const Error*>(&error) != nullptr) throw;
    if (kind == cmn::FileKind::kShow) RequireNoDamagedMark(file.stream());
    throw LegacyDamage(file.stream(), kind);
  }
}

Document::Model ReadModel(OpenedFile& file, const FileType& type) {
  if (type.is_legacy()) {
    if (!type.is_log()) return OrDamage(file, type.kind, ReadLegacyShow);
    Rewind(file.stream());
    if (!check_log_size(file.cipher())) throw LegacyDamage(file.stream(), type.kind);
    return OrDamage(file, type.kind, ReadLegacyLog);
  }
  Rewind(file.stream());
  if (type.is_log()) return CL::ChangeLog(file.stream());
  return zuna_midi::ShowData(file.stream());
}

/// A file without a mark must have been read before: only then it is known to be a legacy show.
void RequireExpected(Expected expected, const FileType& type, const std::string& name) {
  switch (expected) {
    case Expected::kAny:
      return;
    case Expected::kShow:
      return RequireShow(type, name);
    case Expected::kLegacy:
      return RequireLegacy(type, name);
    case Expected::kCurrent:
      return RequireCurrent(type, name);
  }
}

}  // namespace

Document ReadDocument(OpenedFile& file, Expected expected) {
  const FileType type = TypeByMark(file);
  if (!LacksMark(type)) RequireExpected(expected, type, file.name());
  Document document = OnFile(
      file.name(), [&] { return Document(ReadModel(file, type), type.version, file.name()); },
      DataCodeOf(file.stream()));
  if (LacksMark(type)) RequireExpected(expected, type, file.name());
  return document;
}

}  // namespace zuna_toolkit
