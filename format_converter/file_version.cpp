// Probes and prints the version of a file.

#include "format_converter/file_version.h"

#include <iostream>

#include "cmn/version_probe.h"
#include "format_converter/internal/streams.h"
#include "format_converter/internal/version_text.h"
#include "zuna_sec/cipher_key.h"
#include "zuna_sec/cipher_stream.h"

cmn::FileVersion WrapGetShowdataVersion(std::istream& is) {
  return zuna_converter::guarded_read(zuna_converter::kReadingStream,
                                      [&] { return cmn::get_showdata_version(is); });
}

cmn::FileVersion WrapGetLogdataVersion(std::istream& is) {
  return zuna_converter::guarded_read(zuna_converter::kReadingStream,
                                      [&] { return cmn::get_logdata_version(is); });
}

cmn::FileVersion GetShowdataFileVersion(const std::string& path) {
  const CipherKey none;
  zuna_sec::TwoFishCipherStream stream = zuna_converter::opened(path, none.key, none.iv);
  return WrapGetShowdataVersion(stream.GetStream());
}

void print_file_version(const std::string& path) {
  std::cout << path << " has file version: ";
  std::cout << zuna_converter::version_text(GetShowdataFileVersion(path)) << std::endl;
}
