#include "format_converter/showdata.h"

#include <fstream>
#include <istream>

#include "format_converter/errors.h"
#include "format_converter/file_version.h"
#include "format_converter/guarded_read.h"
#include "format_converter/version0/change_log_header.h"
#include "format_converter/version0/show_data.h"
#include "zuna_midi/show_data.h"
#include "zuna_sec/cipher_stream.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Text documents begin with this byte; they state their version in a place of their own, and are not probed.
constexpr int kTextDocument = '{';

version0::ShowData read_legacy_show(const std::string& path, const CipherKey& cipher_key) {
  zuna_sec::TwoFishCipherStream input(path, cipher_key.key, cipher_key.iv);
  std::istream& stream = input.GetStream();
  if (WrapGetShowdataVersion(stream) != cmn::FileVersion{0, 0}) {
    throw FormatConverterError("Input file version is not 0.0");
  }
  return guarded_read("Problem reading the CipherStream", [&] {
    stream.seekg(0);
    return version0::ShowData(stream);
  });
}

/// `source` is a path or the encrypted bytes. The plaintext is gone when this returns.
template <typename Source>
zuna_midi::ShowData read_current_show(const Source& source, const Bytes& key, const Bytes& iv) {
  zuna_sec::TwoFishCipherStream input(source, key, iv);
  std::istream& stream = input.GetStream();
  if (stream.peek() != kTextDocument && WrapGetShowdataVersion(stream).major == 0) {
    throw FormatConverterError("Input file version must be 1.0 or higher");
  }
  return guarded_read("Failed reading istream", [&] {
    stream.seekg(0);
    return zuna_midi::ShowData(stream);
  });
}

std::string read_show_name(const std::string& log_path) {
  std::ifstream log;
  log.exceptions(std::ios_base::failbit);
  try {
    log.open(log_path, std::ios_base::in | std::ios_base::binary);
  } catch (const std::ios_base::failure&) {
    throw kit::IoError("versionZeroLogdataFile: " + log_path + " does not exist!");
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

/// The stream of an empty output, which from now on throws std::ios_base::failure when it cannot take what is
/// written, so that no part is ever taken for a whole.
std::ostream& writable(zuna_sec::TwoFishCipherStream& output) {
  std::ostream& stream = output.GetStream();
  stream.exceptions(std::ios_base::failbit | std::ios_base::badbit);
  return stream;
}

}  // namespace

std::string showdata_up(const std::string& input, const std::string& output, const std::string& log_path,
                        const cmn::FileVersion& version, const CipherKey& cipher_key) {
  zuna_midi::ShowData show = read_legacy_show(input, cipher_key).get_version_1_0();
  show.show_name = read_show_name(log_path);
  zuna_sec::TwoFishCipherStream encrypted(std::string(), cipher_key.key, cipher_key.iv);
  show.WriteBinary(writable(encrypted), version);
  std::string result = output;  // before the file is there: copying can fail
  encrypted.WriteToFile(result);
  return result;
}

std::string showdata_down(const std::string& input, const std::string& output, const CipherKey& cipher_key) {
  const version0::ShowData show(read_current_show(input, cipher_key.key, cipher_key.iv));
  std::string result = output;  // before the file is there: copying can fail
  zuna_sec::TwoFishCipherStream encrypted(std::string(), cipher_key.key, cipher_key.iv);
  show.write_binary(writable(encrypted));
  encrypted.WriteToFile(result);
  return result;
}

Bytes showdata_down_vector(const Bytes& data, const Bytes& key, const Bytes& iv) {
  const version0::ShowData show(read_current_show(data, key, iv));
  zuna_sec::TwoFishCipherStream encrypted(std::string(), key, iv);
  show.write_binary(writable(encrypted));
  return encrypted.GetEncryptedBytes();
}

std::string showdata_converter(const std::string& input, const std::string& output,
                               const cmn::FileVersion& version, const CipherKey& cipher_key) {
  const zuna_midi::ShowData show = read_current_show(input, cipher_key.key, cipher_key.iv);
  zuna_sec::TwoFishCipherStream encrypted(std::string(), cipher_key.key, cipher_key.iv);
  show.WriteBinary(writable(encrypted), version);
  std::string result = output;  // before the file is there: copying can fail
  encrypted.WriteToFile(result);
  return result;
}

Bytes showdata_converter_vector(const Bytes& data, const cmn::FileVersion& version, const Bytes& key,
                                const Bytes& iv) {
  const zuna_midi::ShowData show = read_current_show(data, key, iv);
  zuna_sec::TwoFishCipherStream encrypted(std::string(), key, iv);
  show.WriteBinary(writable(encrypted), version);
  return encrypted.GetEncryptedBytes();
}
