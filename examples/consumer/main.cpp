// Converts a show and its log the way an application does: brings the legacy show to version 1.2, takes it
// back down in memory, and brings its log up in memory too.
//
//   consumer LEGACY_SHOW LEGACY_LOG PLAIN_LEGACY_LOG KEY_HEX IV_HEX OUT

#include <CL/change_log.h>
#include <format_converter/errors.h>
#include <format_converter/inspection.h>
#include <format_converter/logdata.h>
#include <format_converter/showdata.h>
#include <format_converter/version0/primitives/errors.h>
#include <kit/error.h>
#include <zuna_sec/cipher_stream.h>
#include <zuna_sec/errors.h>

#include <charconv>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::vector<std::uint8_t> FromHex(const std::string& name, const std::string& hex) {
  std::vector<std::uint8_t> bytes(hex.size() / 2);
  const char* at = hex.data();
  for (std::uint8_t& byte : bytes) {
    if (std::from_chars(at, at + 2, byte, 16).ptr != at + 2) break;
    at += 2;
  }
  if (at == hex.data() + hex.size()) return bytes;
  throw std::invalid_argument(name + " is not made of pairs of hexadecimal digits");
}

std::vector<std::uint8_t> ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw kit::IoError(path + ": cannot be opened; check the path");
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void ConvertShow(const std::string& show, const std::string& plain_log, const std::string& out,
                 const CipherKey& key) {
  const std::string current = showdata_up(show, out, plain_log, {1, 2}, key);
  const std::vector<std::uint8_t> legacy = showdata_down_vector(ReadFile(current), key.key, key.iv);
  std::cout << current << ": up to 1.2, and back down to " << legacy.size() << " bytes, "
            << (legacy == ReadFile(show) ? "the same as before" : "other than before") << '\n';
}

void ConvertLog(const std::string& log, const std::string& show, const CipherKey& key) {
  const std::vector<std::uint8_t> current =
      logdata_up_vector(ReadFile(log), ReadFile(show), {1, 2}, key.key, key.iv);
  zuna_sec::TwoFishCipherStream stream(current, key.key, key.iv);
  print_songs(CL::ChangeLog(stream.GetStream()));
}

int Convert(char** arguments) {
  const CipherKey key{FromHex("KEY_HEX", arguments[4]), FromHex("IV_HEX", arguments[5])};
  ConvertShow(arguments[1], arguments[3], arguments[6], key);
  ConvertLog(arguments[2], arguments[1], key);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 7) {
    std::cerr << "usage: consumer LEGACY_SHOW LEGACY_LOG PLAIN_LEGACY_LOG KEY_HEX IV_HEX OUT\n";
    return 2;
  }
  try {
    return Convert(argv);
  } catch (const FormatConverterError& error) {
    std::cerr << "wrong version: " << error.what() << '\n';
  } catch (const zuna_sec::WrongKeyError& error) {
    std::cerr << "wrong key: " << error.what() << '\n';
  } catch (const kit::IoError& error) {
    std::cerr << "cannot read or write: " << error.what() << '\n';
  } catch (const std::exception& error) {
    std::cerr << "cannot convert: " << error.what() << '\n';
  }
  return 1;
}
