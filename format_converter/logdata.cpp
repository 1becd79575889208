// Converts encrypted log files. docs/conversion.md lists what a conversion keeps and drops.

#include "format_converter/logdata.h"

#include <fstream>
#include <istream>
#include <optional>
#include <stdexcept>

#include "CL/change_log.h"
#include "format_converter/errors.h"
#include "format_converter/file_version.h"
#include "format_converter/internal/current_log.h"
#include "format_converter/internal/streams.h"
#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/show_data.h"
#include "format_converter/version0/primitives/internal/primitives.h"
#include "kit/stream_size.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using zuna_converter::encrypt_current;
using zuna_converter::encrypt_legacy;
using zuna_converter::EncryptedOutput;
using zuna_converter::guarded_read;

/// The size of the whole stream in bytes, or nothing when the stream cannot tell. The position does not
/// change.
std::optional<std::uint64_t> plaintext_size(std::istream& stream) {
  std::streambuf& buffer = *stream.rdbuf();
  const std::streamoff here = buffer.pubseekoff(0, std::ios_base::cur, std::ios_base::in);
  const std::streamoff ahead = kit::BytesAhead(buffer);
  if (ahead < 0) return std::nullopt;
  return static_cast<std::uint64_t>(here + ahead);
}

version0::ChangeLogV0 read_legacy_log(zuna_sec::TwoFishCipherStream& input, const std::string& incomplete) {
  if (!check_log_size(input)) throw std::runtime_error(incomplete);
  std::istream& stream = input.GetStream();
  if (WrapGetLogdataVersion(stream) != cmn::FileVersion{0, 0}) {
    throw FormatConverterError("Input file version is not 0.0");
  }
  zuna_converter::seek_start(stream);
  return guarded_read("Failed reading version0::ChangeLogV0", [&] { return version0::ChangeLogV0(stream); });
}

/// The current form of a legacy log. Its plaintext is freed on return.
CL::ChangeLog converted_up(const std::string& path, const CipherKey& cipher_key) {
  zuna_sec::TwoFishCipherStream input = zuna_converter::opened(path, cipher_key.key, cipher_key.iv);
  return read_legacy_log(input, "Input does not contain a complete ChangeLog: " + path).get_version_1_0();
}
CL::ChangeLog converted_up(const Bytes& data, const Bytes& key, const Bytes& iv) {
  zuna_sec::TwoFishCipherStream input = zuna_converter::opened(data, key, iv);
  return read_legacy_log(input, "Input does not contain a complete ChangeLog.").get_version_1_0();
}

version0::ShowData read_plain_show(const std::string& path) {
  std::ifstream file;
  file.exceptions(std::ios_base::failbit);
  guarded_read("Failed reading " + zuna_converter::shown_path(path),
               [&] { zuna_converter::open_to_read(file, path); });
  version0::ShowData show =
      guarded_read("Failed reading verison0::ShowData", [&] { return version0::ShowData(file); });
  file.close();
  return show;
}

version0::ShowData read_encrypted_show(const Bytes& data, const Bytes& key, const Bytes& iv) {
  zuna_sec::TwoFishCipherStream input = zuna_converter::opened(data, key, iv);
  return version0::ShowData(input.GetStream());
}

/// The song log with this number, or null when there is none.
std::shared_ptr<CL::SongLog> find_song_log(CL::ChangeLog& log, const std::string& number) {
  try {
    return log.GetSongLog(number);
  } catch (const std::out_of_range&) {
    return nullptr;
  }
}

/// Copies the divisions of the songs, which a legacy log does not hold.
void copy_divisions(const version0::ShowData& show, CL::ChangeLog& log) {
  for (const auto& [number, song] : show.songs) {
    if (const auto song_log = find_song_log(log, number)) song_log->division = song.division;
  }
}

/// `source` is a path or the encrypted bytes. The plaintext is freed on return.
template <typename Source>
CL::ChangeLog read_log(const Source& source, const Bytes& key, const Bytes& iv, const char* name) {
  zuna_sec::TwoFishCipherStream input = zuna_converter::opened(source, key, iv);
  return zuna_converter::read_current_log(input, "Input file version must be at least 1.1", name).log;
}

// What an entry point writes. Each frees the models on return, because encrypting needs memory of its own.

EncryptedOutput encrypted_log_up(const std::string& path, const std::string& show_path,
                                 const cmn::FileVersion& version, const CipherKey& cipher_key) {
  CL::ChangeLog log = converted_up(path, cipher_key);
  copy_divisions(read_plain_show(show_path), log);
  return encrypt_current(log, version, cipher_key.key, cipher_key.iv);
}

EncryptedOutput encrypted_log_up(const Bytes& data, const Bytes& show_data, const cmn::FileVersion& version,
                                 const Bytes& key, const Bytes& iv) {
  CL::ChangeLog log = converted_up(data, key, iv);
  copy_divisions(read_encrypted_show(show_data, key, iv), log);
  return encrypt_current(log, version, key, iv);
}

template <typename Source>
EncryptedOutput encrypted_log_down(const Source& source, const Bytes& key, const Bytes& iv) {
  const version0::ChangeLogV0 log(read_log(source, key, iv, "CL::ShowData"));
  return encrypt_legacy(log, key, iv);
}

template <typename Source>
EncryptedOutput encrypted_log_as(const Source& source, const cmn::FileVersion& version, const Bytes& key,
                                 const Bytes& iv) {
  const CL::ChangeLog log = read_log(source, key, iv, "CL::ChangeLog");
  return encrypt_current(log, version, key, iv);
}

}  // namespace

bool check_log_size(zuna_sec::TwoFishCipherStream& stream) {
  std::istream& plaintext = stream.GetStream();
  version0::get_u32(plaintext);  // the magic
  const std::uint64_t stated = version0::get_u32(plaintext);
  return plaintext_size(plaintext) == stated + 8;
}

std::string logdata_up(const std::string& input, const std::string& output, const std::string& show_path,
                       const cmn::FileVersion& version, const CipherKey& cipher_key) {
  return encrypted_log_up(input, show_path, version, cipher_key).WriteToFile(output);
}

Bytes logdata_up_vector(const Bytes& data, const Bytes& show_data, const cmn::FileVersion& version,
                        const Bytes& key, const Bytes& iv) {
  return encrypted_log_up(data, show_data, version, key, iv).GetEncryptedBytes();
}

std::string logdata_down(const std::string& input, const std::string& output, const CipherKey& cipher_key) {
  return encrypted_log_down(input, cipher_key.key, cipher_key.iv).WriteToFile(output);
}

Bytes logdata_down_vector(const Bytes& data, const Bytes& key, const Bytes& iv) {
  return encrypted_log_down(data, key, iv).GetEncryptedBytes();
}

std::string logdata_converter(const std::string& input, const std::string& output,
                              const cmn::FileVersion& version, const CipherKey& cipher_key) {
  return encrypted_log_as(input, version, cipher_key.key, cipher_key.iv).WriteToFile(output);
}

Bytes logdata_converter_vector(const Bytes& data, const cmn::FileVersion& version, const Bytes& key,
                               const Bytes& iv) {
  return encrypted_log_as(data, version, key, iv).GetEncryptedBytes();
}
