// Knows files of other formats by their first bytes.
#include "toolkit/document/internal/other_formats.h"

#include <array>

#include "toolkit/error.h"

namespace zuna_toolkit {

namespace {

/// What an archive or a compressed file begins with.
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

/// Throws Error (kArchive) without a file.
[[noreturn]] void ThrowArchive(const char* problem) {
  throw Error(ErrorCode::kArchive, "", problem, "unpack it, and give the file that comes out");
}

/// Whether `bytes` begin like a tar archive, which has its mark behind the fields of its first file (POSIX,
/// pax, "ustar Interchange Format").
bool IsTar(std::string_view bytes) {
  constexpr std::size_t kMark = 257;
  return bytes.size() > kMark && bytes.substr(kMark).starts_with("ustar");
}

}  // namespace

void RequireNoOtherFormat(std::string_view bytes) {
  if (bytes.starts_with("MThd")) {
    throw Error(ErrorCode::kMidiFile, "", "is a MIDI file", "use midi import");
  }
  for (const ArchiveMark& mark : kArchiveMarks) {
    if (bytes.starts_with(mark.bytes)) ThrowArchive(mark.problem);
  }
  if (IsTar(bytes)) ThrowArchive("is a tar archive");
}

}  // namespace zuna_toolkit
