// Converts encrypted show files. docs/conversion.md lists what a conversion keeps and drops.

#include "format_converter/showdata.h"

#include <fstream>
#include <istream>

#include "format_converter/errors.h"
#include "format_converter/file_version.h"
#include "format_converter/internal/streams.h"
#include "format_converter/version0/containers/change_log_header.h"
#include "format_converter/version0/containers/show_data.h"
#include "zuna_midi/show_data.h"
#include "zuna_sec/cipher_stream.h"

namespace {

using Bytes = std::vector<std::uint8_t>;
using zuna_converter::encrypt_current;
using zuna_converter::encrypt_legacy;
using zuna_converter::EncryptedOutput;
using zuna_converter::guarded_read;

version0::ShowData read_legacy_show(const std::string& path, const CipherKey& cipher_key) {
  zuna_sec::TwoFishCipherStream input = zuna_converter::opened(path, cipher_key.key, cipher_key.iv);
  std::istream& stream = input.GetStream();
  if (WrapGetShowdataVersion(stream) != cmn::FileVersion{0, 0}) {
    throw FormatConverterError("Input file version is not 0.0");
  }
  return guarded_read("Problem reading the CipherStream", [&] {
    stream.seekg(0);
    return version0::ShowData(stream);
  });
}

/// `source` is a path or the encrypted bytes. The plaintext is freed on return.
template <typename Source>
zuna_midi::ShowData read_current_show(const Source& source, const Bytes& key, const Bytes& iv) {
  zuna_sec::TwoFishCipherStream input = zuna_converter::opened(source, key, iv);
  std::istream& stream = input.GetStream();
  if (!zuna_converter::begins_text_form(stream) && WrapGetShowdataVersion(stream).major == 0) {
    throw FormatConverterError("Input file version must be 1.0 or higher");
  }
  return guarded_read(zuna_converter::kReadingStream, [&] {
    stream.seekg(0);
    return zuna_midi::ShowData(stream);
  });
}

std::string read_show_name(const std::string& log_path) {
  std::ifstream log;
  log.exceptions(std::ios_base::failbit);
  try {
    zuna_converter::open_to_read(log, log_path);
  } catch (const std::ios_base::failure&) {
    throw kit::IoError("versionZeroLogdataFile: " + zuna_converter::shown_path(log_path) +
                       " does not exist!");
  }
  std::string show_name;
  try {
    show_name = version0::get_show_name(log);
  } catch (const std::ios_base::failure&) {
    throw kit::IoError("Problem getting show name from " + log_path);
  }
  log.close();
  return show_name;
}

// What an entry point writes. Each frees the models on return, because encrypting needs memory of its own.

EncryptedOutput encrypted_show_up(const std::string& input, const std::string& log_path,
                                  const cmn::FileVersion& version, const CipherKey& cipher_key) {
  zuna_midi::ShowData show = read_legacy_show(input, cipher_key).get_version_1_0();
  show.show_name = read_show_name(log_path);
  return encrypt_current(show, version, cipher_key.key, cipher_key.iv);
}

template <typename Source>
EncryptedOutput encrypted_show_down(const Source& source, const Bytes& key, const Bytes& iv) {
  const version0::ShowData show(read_current_show(source, key, iv));
  return encrypt_legacy(show, key, iv);
}

template <typename Source>
EncryptedOutput encrypted_show_as(const Source& source, const cmn::FileVersion& version, const Bytes& key,
                                  const Bytes& iv) {
  const zuna_midi::ShowData show = read_current_show(source, key, iv);
  return encrypt_current(show, version, key, iv);
}

}  // namespace

std::string showdata_up(const std::string& input, const std::string& output, const std::string& log_path,
                        const cmn::FileVersion& version, const CipherKey& cipher_key) {
  return encrypted_show_up(input, log_path, version, cipher_key).WriteToFile(output);
}

std::string showdata_down(const std::string& input, const std::string& output, const CipherKey& cipher_key) {
  return encrypted_show_down(input, cipher_key.key, cipher_key.iv).WriteToFile(output);
}

Bytes showdata_down_vector(const Bytes& data, const Bytes& key, const Bytes& iv) {
  return encrypted_show_down(data, key, iv).GetEncryptedBytes();
}

std::string showdata_converter(const std::string& input, const std::string& output,
                               const cmn::FileVersion& version, const CipherKey& cipher_key) {
  return encrypted_show_as(input, version, cipher_key.key, cipher_key.iv).WriteToFile(output);
}

Bytes showdata_converter_vector(const Bytes& data, const cmn::FileVersion& version, const Bytes& key,
                                const Bytes& iv) {
  return encrypted_show_as(data, version, key, iv).GetEncryptedBytes();
}
