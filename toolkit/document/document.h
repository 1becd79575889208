// A show or a log of any version in memory.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <variant>

#include "CL/change_log.h"
#include "cmn/file_format.h"
#include "cmn/file_version.h"
#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/show_data.h"
#include "kit/api.h"
#include "zuna_midi/show_data.h"

namespace zuna_toolkit {

/// The version of the legacy format.
inline constexpr cmn::FileVersion kLegacyVersion{0, 0};

/// What a file holds.
struct FileType {
  cmn::FileKind kind = cmn::FileKind::kShow;  ///< show or log
  cmn::FileVersion version;                   ///< kLegacyVersion, or a current one

  /// Whether it is a log.
  bool is_log() const { return kind == cmn::FileKind::kLog; }
  /// Whether it is of the legacy format.
  bool is_legacy() const { return version == kLegacyVersion; }

  bool operator==(const FileType&) const = default;
};

/// "a show of version 1.2"
ZUNA_API std::string TypeText(const FileType& type);

/// Throw Error (kLegacyWanted, kCurrentWanted, kWrongKind) where the document or file called `name` is
/// something else than what is asked for: of the legacy format, of a current version, a show.
///@{
ZUNA_API void RequireLegacy(const FileType& type, const std::string& name);
ZUNA_API void RequireCurrent(const FileType& type, const std::string& name);
ZUNA_API void RequireShow(const FileType& type, const std::string& name);
///@}

/// A legacy show, and what its file has that the show has not.
struct LegacyShow {
  version0::ShowData show;         ///< as far as the model holds the file
  std::size_t replaced_songs = 0;  ///< songs that were replaced by a later one of the same number
  std::size_t trailing_bytes = 0;  ///< bytes after the last song
  std::size_t replaced_sequences =
      0;  ///< sequences with records that were replaced by a later one of their kind
};

/// A legacy log, and what its file has that the log has not.
struct LegacyLog {
  version0::ChangeLogV0 log;       ///< as far as the model holds the file
  std::size_t replaced_songs = 0;  ///< song logs that were replaced by a later one of the same number
  std::size_t replaced_sequences =
      0;  ///< sequences with records that were replaced by a later one of their kind
};

/// A show or a log, read from a file or made by a conversion.
///
/// Documents are to be treated as read-only. Copies of a current document share their songs, and so do
/// documents that Convert() makes of one another: who changes a song through its pointer changes it in all of
/// them. To change a song, put a changed copy of it into a copy of the model, and make a new document of
/// that.
class ZUNA_API Document {
 public:
  /// One of the four models: both legacy ones and both current ones.
  using Model = std::variant<LegacyShow, LegacyLog, zuna_midi::ShowData, CL::ChangeLog>;

  /// A document of this version: 0.0 for a legacy model, a current version for a current one. `name` is what
  /// messages call it, such as the path of its file. Throws Error (kNoSuchVersion) for a version that the
  /// model has not.
  Document(Model model, cmn::FileVersion version, std::string name);

  /// Kind and version.
  const FileType& type() const { return type_; }

  /// What messages call the document.
  const std::string& name() const { return name_; }

  /// The show or log itself.
  const Model& model() const { return model_; }

  /// The model, where it is of this type; null otherwise.
  template <typename Type>
  const Type* As() const {
    return std::get_if<Type>(&model_);
  }

 private:
  FileType type_;
  std::string name_;
  Model model_;
};

}  // namespace zuna_toolkit
