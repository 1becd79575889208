#pragma once

// A whole change log in the current model.

#include <cstdint>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "CL/song_log.h"
#include "cmn/file_version.h"
#include "kit/api.h"
#include "kit/uuid.h"

namespace CL {

/// A whole log in the current model. A copy shares its song logs with the original.
class ZUNA_API ChangeLog {
 public:
  /// In plain byte order of the song numbers: "10" comes before "2".
  using SongLogs = std::map<std::string, std::shared_ptr<SongLog>>;

  std::string show_name;                                 ///< the show that the log belongs to
  std::string log_label;                                 ///< carried unchanged
  kit::UUID identifier = kit::UUID::Nil();               ///< of this log
  std::pair<std::uint16_t, std::uint16_t> log_tag_pair;  ///< carried unchanged

  /// An empty log of version 0.0: it has not been in a file.
  ChangeLog();

  /// Reads a current log file of any supported version from a decrypted stream, from its position to its end.
  /// Throws cmn::UnsupportedVersionError for a version that this library does not know and cmn::DataError for
  /// data that is not a valid log; std::ios_base::failure where the stream's exception mask asks for it.
  explicit ChangeLog(std::istream& is);

  ChangeLog(const ChangeLog&);
  ChangeLog(ChangeLog&&) noexcept;
  ChangeLog& operator=(const ChangeLog&);
  ChangeLog& operator=(ChangeLog&&) noexcept;
  virtual ~ChangeLog();

  /// Adds a song log under its song number and replaces one that is already there under that number. Throws
  /// std::invalid_argument for a null pointer.
  void AddSongLog(std::shared_ptr<SongLog> song);

  /// The song log under this key; the caller may change it. Throws std::out_of_range naming the key when
  /// there is none.
  ///@{
  std::shared_ptr<SongLog> GetSongLog(const std::string& key);
  std::shared_ptr<SongLog> GetSongLog(const std::string& key) const;
  ///@}

  /// The song logs by number. The map may be changed: AddSongLog() is only the safe way to add to it.
  ///@{
  SongLogs& song_logs() { return song_logs_; }
  const SongLogs& song_logs() const { return song_logs_; }
  ///@}

  /// Writes the log as a file of this version: bytes in 1.1 and 1.2, text (JSON) in 2.0. Throws
  /// cmn::UnsupportedVersionError for a version that this library does not write, std::length_error for a log
  /// that the format cannot hold, and std::logic_error naming the song where its song log or one of its lists
  /// is null or where its number is not its key; nothing has been written then. A stream that cannot be
  /// written gives kit::IoError, or std::ios_base::failure where its exception mask asks for it.
  void WriteBinary(std::ostream& os, const cmn::FileVersion& version) const;

 private:
  SongLogs song_logs_;

 public:
  cmn::FileVersion file_version;  ///< of the file that the log was read from; 0.0 where it was not
};

}  // namespace CL
