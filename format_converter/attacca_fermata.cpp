// Copies attaccas and fermatas from one current log to another.

#include "format_converter/attacca_fermata.h"

#include "format_converter/internal/current_log.h"
#include "format_converter/internal/streams.h"

namespace {

using Bytes = std::vector<unsigned char>;
using zuna_converter::CurrentLog;

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
  zuna_sec::TwoFishCipherStream input = zuna_converter::opened(source, key, iv);
  return zuna_converter::read_current_log(input, too_old, name);
}

/// Reads both logs and returns the new destination. Both are paths or both are encrypted bytes.
template <typename Source>
CurrentLog read_and_copy(const Source& source, const Source& destination, const Bytes& key, const Bytes& iv) {
  const CurrentLog from =
      read_log(source, key, iv, "Input file version must be at least 1.1", "source CL::ChangeLog");
  CurrentLog to = read_log(destination, key, iv, "Destination file version must be at least 1.1",
                           "destination CL::ChangeLog");
  copy_songs(from.log, to.log);
  return to;
}

}  // namespace

void copy_attaccas_and_fermatas(const std::string& source_path, const std::string& destination_path,
                                const CipherKey& key) {
  const CurrentLog copy = read_and_copy(source_path, destination_path, key.key, key.iv);
  zuna_converter::encrypt_current(copy.log, copy.version, key.key, key.iv).WriteToFile(destination_path);
}

Bytes copy_attaccas_and_fermatas_vector(const Bytes& source, const Bytes& destination, const Bytes& key,
                                        const Bytes& iv) {
  const CurrentLog copy = read_and_copy(source, destination, key, iv);
  return zuna_converter::encrypt_current(copy.log, copy.version, key, iv).GetEncryptedBytes();
}
