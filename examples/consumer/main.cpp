// Converts a show the way an application does: brings a legacy show to version 1.2, then takes it back down
// in memory.
//
//   consumer LEGACY_SHOW LEGACY_LOG KEY_HEX IV_HEX OUT

#include <format_converter/errors.h>
#include <format_converter/showdata.h>
#include <format_converter/version0/errors.h>
#include <kit/error.h>
#include <zuna_sec/errors.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace {

std::vector<std::uint8_t> FromHex(const std::string& hex) {
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes.push_back(static_cast<std::uint8_t>(std::stoi(hex.substr(i, 2), nullptr, 16)));
  }
  return bytes;
}

std::vector<std::uint8_t> ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

int Convert(char** arguments) {
  const CipherKey key{FromHex(arguments[3]), FromHex(arguments[4])};
  const std::string current = showdata_up(arguments[1], arguments[5], arguments[2], {1, 2}, key);
  const std::vector<std::uint8_t> legacy = showdata_down_vector(ReadFile(current), key.key, key.iv);
  std::cout << current << ": up to 1.2, and back down to " << legacy.size() << " bytes, "
            << (legacy == ReadFile(arguments[1]) ? "the same as before" : "other than before") << '\n';
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 6) {
    std::cerr << "usage: consumer LEGACY_SHOW LEGACY_LOG KEY_HEX IV_HEX OUT\n";
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
