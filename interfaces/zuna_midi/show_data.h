#pragma once

// A whole show in the current model.

#include <iosfwd>
#include <map>
#include <memory>
#include <string>

#include "cmn/file_version.h"
#include "kit/api.h"
#include "kit/numeric_string_compare.h"
#include "zuna_midi/song_data.h"

namespace zuna_midi {

/// A whole show in the current model. A copy shares its songs with the original.
class ZUNA_API ShowData {
 public:
  /// In the order of song numbers: "2" comes before "10".
  using Songs = std::map<std::string, std::shared_ptr<SongData>, kit::NumericStringCompare>;

  std::string show_name;  ///< the title

  /// An empty show.
  ShowData();

  /// Reads a current show file of any supported version from a decrypted stream, from its position to its
  /// end. Throws cmn::UnsupportedVersionError for a version that this library does not know and
  /// cmn::DataError for data that is not a valid show; std::ios_base::failure where the stream's exception
  /// mask asks for it.
  explicit ShowData(std::istream& is);

  ShowData(const ShowData&);
  ShowData(ShowData&&) noexcept;
  ShowData& operator=(const ShowData&);
  ShowData& operator=(ShowData&&) noexcept;
  virtual ~ShowData();

  /// Adds a song under its song number and replaces one that is already there under that number. Throws
  /// std::invalid_argument for a null pointer.
  void AddSongData(std::shared_ptr<SongData> song);

  /// The songs by number, for walking them.
  const Songs& songs() const { return songs_; }

  /// Writes the show as a file of this version: bytes in 1.0, 1.1 and 1.2, text (JSON) in 2.0.
  /// Throws cmn::UnsupportedVersionError for a version that this library does not write, std::length_error
  /// for a show that the format cannot hold, and std::logic_error naming the song for one without timeline or
  /// voice data, or whose number (or a voice's) was changed after it was added; nothing has been written
  /// then. A stream that cannot be written gives kit::IoError, or std::ios_base::failure where its
  /// exception mask asks for it.
  void WriteBinary(std::ostream& os, const cmn::FileVersion& version) const;

 private:
  Songs songs_;
};

}  // namespace zuna_midi
