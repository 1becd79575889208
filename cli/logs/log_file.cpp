#include "cli/logs/log_file.h"

#include <istream>

#include "cli/base/errors.h"
#include "cli/files/file_type.h"
#include "format_converter/logdata.h"
#include "format_converter/version0/containers/change_log_header.h"

namespace zuna_cli {

namespace {

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

/// A log without song logs, which the reader of whole logs does not take.
version0::ChangeLogV0 EmptyLog(std::istream& stream) {
  const version0::ChangeLogHeader header(stream);
  version0::ChangeLogV0 log;
  log.identifier = header.identifier;
  log.log_label = header.log_label;
  log.show_name = header.show_name;
  log.log_tag_pair = {static_cast<std::uint16_t>(header.log_tag_pair & 0xFFFF),
                      static_cast<std::uint16_t>(header.log_tag_pair >> 16)};
  return log;
}

void RequireComplete(InputFile& file) {
  Rewind(file.stream());
  if (check_log_size(file.cipher())) return;
  throw Failure(
      ExitCode::kBadInput, file.name(),
      "is no complete log: its length is not what its header says; get a complete copy of the file");
}

}  // namespace

LegacyLog ReadLegacyLog(InputFile& file) {
  return OnFile(file.name(), [&]() -> LegacyLog {
    RequireComplete(file);
    const std::size_t count = CountSongLogs(file.stream());
    Rewind(file.stream());
    if (count == 0) return {EmptyLog(file.stream())};
    LegacyLog legacy{version0::ChangeLogV0(file.stream())};
    legacy.replaced_songs = count - legacy.log.songs.size();
    return legacy;
  });
}

CL::ChangeLog ReadCurrentLog(InputFile& file) {
  Rewind(file.stream());
  return OnFile(file.name(), [&] { return CL::ChangeLog(file.stream()); });
}

CL::ChangeLog ReadAnyLog(InputFile& file) {
  return TypeOf(file).is_legacy() ? ReadLegacyLog(file).log.get_version_1_0() : ReadCurrentLog(file);
}

}  // namespace zuna_cli
