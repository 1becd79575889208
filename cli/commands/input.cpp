// Reading inputs, standard input included.
#include "cli/commands/input.h"

#include <unistd.h>

#include "cli/terminal/standard_streams.h"
#include "kit/file.h"

namespace zuna_cli {

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

}  // namespace zuna_cli
