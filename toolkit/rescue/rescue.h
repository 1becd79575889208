// What can still be read of a damaged file (docs/damaged-files.md).
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "kit/api.h"
#include "toolkit/document/document.h"
#include "toolkit/document/open.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_toolkit {

/// A part of the decrypted file.
struct ByteRange {
  std::uint64_t begin = 0;  ///< offset of its first byte
  std::uint64_t end = 0;    ///< offset after its last byte

  bool operator==(const ByteRange&) const = default;
};

/// What came back of a song.
enum class SongState {
  kWhole,   ///< all of it
  kPartly,  ///< some of it; its remarks tell what is missing
  kLost,    ///< nothing
};

/// A song of a damaged file, or a place where one or more must have been.
struct RescuedSong {
  std::string number = {};  ///< in the document; of a lost song as far as it is known, or empty
  std::string name = {};    ///< the title
  std::optional<std::uint64_t> offset = {};  ///< in the decrypted file, where it was looked for
  std::optional<std::uint64_t> end = {};     ///< after its last byte there
  SongState state = SongState::kWhole;       ///< what came back of it
  std::vector<std::string> remarks = {};     ///< what is missing, changed or odd: "its number is missing"
  bool vouched = false;                      ///< whether the encryption or a checksum shows no change
};

/// What became of a damaged file. Where songs have offsets, every byte of the decrypted file belongs to a
/// song that came back, is framing, or is unread. A song that came back in part may have unread bytes in it;
/// no other two of these overlap.
struct ZUNA_API RescueReport {
  std::vector<RescuedSong> songs;             ///< in the order of the file
  std::optional<std::uint64_t> stated_songs;  ///< how many the file says that it has
  std::optional<std::uint64_t> known_songs;   ///< how many it had; none where that cannot be known
  std::vector<std::string> missing;           ///< what is missing besides songs, such as "the show's name"
  std::vector<ByteRange> framing;    ///< what is read and of no song: head, separators, checksum; in order
  std::vector<ByteRange> unread;     ///< bytes of which nothing came back, in their order
  bool changed = false;              ///< the encryption, a checksum or a head shows that bytes were changed
  std::vector<std::string> remarks;  ///< what is wrong with the file as a whole

  /// How many songs came back, whole or partly.
  std::size_t saved() const;

  /// Whether everything came back, and nothing shows that it is not what it was.
  bool complete() const;
};

/// What could be saved of a file.
struct Rescued {
  Document document;    ///< of the file's kind and version; it can be written
  RescueReport report;  ///< what it holds, and what it lacks
};

/// Reads what can still be read of the file `bytes`, which `name` is what messages call. Encrypted files are
/// decrypted although they were changed or cut, and those that were copied as text where that can be undone.
/// In time and memory that grow with the size. Songs of one number are all kept, under numbers of their own.
/// Throws Error: kWrongKey and kNoKey, kCutOff for an encrypted file that ends inside its header,
/// kChangedInTransfer, kEncryptedTwice, kMidiFile and kArchive for files of other formats, what
/// OpenedFile::FromBytes() throws for a file that is not encrypted where `accept` wants that, kNothingToSave
/// where no song came back (kTextError for a text that is not encrypted), and kInternal where what came back
/// would not be read back as it is written.
ZUNA_API Rescued Rescue(std::span<const std::uint8_t> bytes, const std::string& name, const CipherKey& key,
                        Accept accept = Accept::kEncrypted);

}  // namespace zuna_toolkit
