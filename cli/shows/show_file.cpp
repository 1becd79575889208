#include "cli/shows/show_file.h"

#include <istream>
#include <new>

#include "cli/base/errors.h"

namespace zuna_cli {

namespace {

/// The number of bytes that the stream has not given yet.
std::size_t BytesLeft(std::istream& stream) {
  stream.exceptions(std::ios_base::goodbit);
  const std::streamoff here = stream.tellg();
  stream.seekg(0, std::ios_base::end);
  return static_cast<std::size_t>(std::streamoff{stream.tellg()} - here);
}

}  // namespace

bool IsLegacyShow(std::istream& stream) {
  Rewind(stream);
  bool readable = true;
  try {
    const version0::ShowData show(stream);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    readable = false;
  }
  Rewind(stream);
  return readable;
}

LegacyShow ReadLegacyShow(InputFile& file) {
  std::iostream& stream = file.stream();
  Rewind(stream);
  return OnFile(file.name(), [&] {
    const int song_count = stream.peek();
    LegacyShow legacy{version0::ShowData(stream)};
    legacy.replaced_songs = static_cast<std::size_t>(song_count) - legacy.show.songs.size();
    legacy.trailing_bytes = BytesLeft(stream);
    return legacy;
  });
}

zuna_midi::ShowData ReadCurrentShow(InputFile& file) {
  Rewind(file.stream());
  return OnFile(file.name(), [&] { return zuna_midi::ShowData(file.stream()); });
}

}  // namespace zuna_cli
