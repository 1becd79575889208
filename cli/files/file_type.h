#pragma once

#include <string>

#include "cli/files/input_file.h"
#include "cmn/file_version.h"

namespace zuna_cli {

enum class FileKind { kShow, kLog };

/// What a file holds, as its content tells.
struct FileType {
  FileKind kind = FileKind::kShow;
  cmn::FileVersion version;  ///< 0.0 is the legacy format

  bool is_log() const { return kind == FileKind::kLog; }
  bool is_legacy() const { return version == cmn::FileVersion{}; }
  bool operator==(const FileType&) const = default;
};

/// "a show of version 1.2"
std::string TypeText(const FileType& type);

/// What `file` holds; a legacy show where nothing tells otherwise. Throws Failure (kBadInput) for a text that
/// does not tell what it holds.
FileType TypeOf(InputFile& file);

/// The same. Throws Failure (kBadInput) unless it is of the legacy, respectively of a current version.
FileType RequireLegacy(InputFile& file);
FileType RequireCurrent(InputFile& file);

/// The version of the show in `file`, which has been looked at: a legacy show can be read. Throws Failure
/// (kBadInput) for anything else.
cmn::FileVersion RequireShow(InputFile& file);

/// Reads a text form once. Throws what is wrong with it: Failure or cmn::DataError.
void RequireReadableText(std::istream& stream, const std::string& name);

}  // namespace zuna_cli
