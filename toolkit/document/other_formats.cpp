// Knows files of other formats by their first bytes.
#include "toolkit/document/internal/other_formats.h"

#include <array>

#include "toolkit/error.h"

namespace zuna_toolkit {

namespace {

/// What an archive or a compressed file begins with: at most eight bytes, as the caller may have no more.
struct ArchiveMark {
  std::string_view bytes;
  const char* problem;
};

constexpr std::array kArchiveMarks = {
    ArchiveMark{"PK\x03\x04", "is a zip archive"},
    ArchiveMark{"7z\xBC\xAF\x27\x1C", "is a 7z archive"},
    ArchiveMark{"Rar!\x1A\x07", "is a RAR archive"},
    ArchiveMark{"\x1F\x8B\x08", "is compressed with gzip"},
    ArchiveMark{"BZh91AY&", "is compressed with bzip2"},
    ArchiveMark{{"\xFD\67zXZ\0", 6}, "is compressed with xz"},
    ArchiveMark{"\x28\xB5\x2F\xFD", "is compressed with zstd"},
};

}  // namespace

void RequireNoOtherFormat(std::string_view bytes) {
  if (bytes.starts_with("MThd")) {
    throw Error(ErrorCode::kMidiFile, "", "is a MIDI file", "use midi import");
  }
  for (const ArchiveMark& mark : kArchiveMarks) {
    if (bytes.starts_with(mark.bytes)) {
      throw Error(ErrorCode::kArchive, "", mark.problem, "unpack it, and give the file that comes out");
    }
  }
}

}  // namespace zuna_toolkit
