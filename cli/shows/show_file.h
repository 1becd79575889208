#pragma once

#include <memory>
#include <optional>
#include <string>

#include "cmn/file_version.h"
#include "format_converter/version0/show_data.h"
#include "zuna_midi/show_data.h"
#include "zuna_sec/cipher_key.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_cli {

/// A decrypted input file.
class InputFile {
 public:
  /// Decrypts the file at `path`, or standard input for "-". Throws Failure.
  InputFile(const std::string& path, const CipherKey& key);

  /// What messages call it.
  const std::string& name() const { return name_; }
  std::iostream& stream() { return cipher_->GetStream(); }

 private:
  std::string name_;
  std::unique_ptr<zuna_sec::TwoFishCipherStream> cipher_;
};

/// The version of the show in `file`. Throws Failure (kBadInput) where it is a log, or a text form whose
/// version cannot be told.
cmn::FileVersion ShowVersion(InputFile& file);

/// Throws Failure (kBadInput) unless `file` is a legacy, respectively current, show.
void RequireLegacyShow(InputFile& file);
cmn::FileVersion RequireCurrentShow(InputFile& file);

/// Whether a legacy show can be read from the beginning of `stream`, which is put back there.
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

/// The show name that the legacy log at `path`, encrypted or plain, tells. Throws Failure.
std::string ReadCompanionShowName(const std::string& path, const CipherKey& key);

}  // namespace zuna_cli
