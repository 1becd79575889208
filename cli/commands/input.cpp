// Reading inputs, standard input included.
#include "cli/commands/input.h"

#include <unistd.h>

#include "cli/terminal/failure.h"
#include "cli/terminal/standard_streams.h"
#include "kit/file.h"
#include "toolkit/conversion/conversion.h"

namespace zuna_cli {

using zuna_toolkit::FileType;
using zuna_toolkit::OpenedFile;

std::vector<std::uint8_t> ReadInput(const std::string& path, std::size_t limit) {
  const kit::FileBytes file = path == kStandardStream
                                  ? kit::ReadWholeFile(STDIN_FILENO, InputName(path), limit)
                                  : kit::ReadWholeFile(path, limit);
  return {file.bytes().begin(), file.bytes().end()};
}

OpenedFile OpenInput(const std::string& path, const CipherKey& key, zuna_toolkit::Accept accept) {
  if (path != kStandardStream) return {path, key, accept};
  return OpenedFile::FromBytes(ReadInput(path, zuna_toolkit::kMaxFileSize), InputName(path), key, accept);
}

zuna_toolkit::Document ReadAny(OpenedFile& file) {
  return zuna_toolkit::ReadDocument(file, zuna_toolkit::Detect(file));
}

zuna_toolkit::Document ReadShow(OpenedFile& file) {
  return zuna_toolkit::ReadDocument(file, RequireShow(file));
}

FileType RequireShow(OpenedFile& file) {
  const FileType type = zuna_toolkit::Detect(file);
  if (type.is_log()) {
    throw Failure(ExitCode::kBadInput, file.name(), "is a log, and this command takes shows; give a show");
  }
  zuna_toolkit::RequireRecognised(file, type);
  return type;
}

FileType RequireCurrent(OpenedFile& file) {
  const FileType type = zuna_toolkit::Detect(file);
  zuna_toolkit::RequireRecognised(file, type);
  zuna_toolkit::RequireCurrent(type, file.name());
  return type;
}

}  // namespace zuna_cli
