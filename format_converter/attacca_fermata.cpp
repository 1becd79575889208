// Copies attaccas and fermatas from one current log to another.

#include "format_converter/attacca_fermata.h"

#include "format_converter/internal/current_log.h"
#include "format_converter/internal/streams.h"

namespace {

using Bytes = std::vector<unsigned char>;

void copy_songs(const CL::ChangeLog& source, CL::ChangeLog& destination) {
  for (const auto& [number, song_log] : source.song_logs()) {
    destination.GetSongLog(number)->attacca = song_log->attacca;
    destination.GetSongLog(number)->fermatas->events = song_log->fermatas->events;
  }
}

/// `source` is a path or the encrypted bytes. The plaintext is freed on return.
template <typename Source>
CurrentLog read_log(const Source& source, const Bytes& key, const Bytes& iv, const char* too_old,
                    const char* name) {
  zuna_sec::TwoFishCipherStream input(source, key, iv);
  return read_current_log(input, too_old, name);
}

/// The new destination, encrypted. Source and destination are both paths or both encrypted bytes.
template <typename Source>
EncryptedOutput copied(const Source& source, const Source& destination, const Bytes& key, const Bytes& iv) {
  const CurrentLog from =
      read_log(source, key, iv, "Input file version must be at least 1.1", "source CL::ChangeLog");
  CurrentLog to = read_log(destination, key, iv, "Destination file version must be at least 1.1",
                           "destination CL::ChangeLog");
  copy_songs(from.log, to.log);
  const bool probed = to.probed_version != cmn::FileVersion{0, 0};
  const cmn::FileVersion version = probed ? to.probed_version : to.log.file_version;
  return {key, iv, [&](std::ostream& os) { to.log.WriteBinary(os, version); }};
}

}  // namespace

void copy_attaccas_and_fermatas(const std::string& source_path, const std::string& destination_path,
                                const CipherKey& key) {
  copied(source_path, destination_path, key.key, key.iv).WriteToFile(destination_path);
}

Bytes copy_attaccas_and_fermatas_vector(const Bytes& source, const Bytes& destination, const Bytes& key,
                                        const Bytes& iv) {
  return copied(source, destination, key, iv).GetEncryptedBytes();
}
