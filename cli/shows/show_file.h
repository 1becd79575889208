#pragma once

#include <cstddef>
#include <iosfwd>

#include "cli/files/input_file.h"
#include "format_converter/version0/containers/show_data.h"
#include "zuna_midi/show_data.h"

namespace zuna_cli {

/// Whether the stream holds a legacy show that can be read; the stream is at its beginning then.
bool IsLegacyShow(std::istream& stream);

/// A legacy show, and what its file has that the show has not.
struct LegacyShow {
  version0::ShowData show;
  std::size_t replaced_songs = 0;  ///< songs that gave way to a later one of their number
  std::size_t trailing_bytes = 0;  ///< bytes after the last song
};

/// Reads the show in `file`. Throws Failure.
LegacyShow ReadLegacyShow(InputFile& file);
zuna_midi::ShowData ReadCurrentShow(InputFile& file);

}  // namespace zuna_cli
