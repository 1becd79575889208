// Reads a current log from an encrypted stream and checks its version.

#include "format_converter/internal/current_log.h"

#include <istream>

#include "format_converter/errors.h"
#include "format_converter/file_version.h"
#include "format_converter/internal/streams.h"

namespace zuna_converter {

namespace {

constexpr cmn::FileVersion kFirstVersion{1, 1};

cmn::FileVersion probe_current_log(std::istream& stream, const char* too_old) {
  const cmn::FileVersion version = WrapGetLogdataVersion(stream);
  if (version < kFirstVersion) throw FormatConverterError(too_old);
  return version;
}

}  // namespace

CurrentLog read_current_log(zuna_sec::TwoFishCipherStream& input, const char* too_old, const char* name) {
  std::istream& stream = input.GetStream();
  const bool is_text = begins_text_form(stream);
  cmn::FileVersion version;
  if (!is_text) version = probe_current_log(stream, too_old);
  seek_start(stream);
  CurrentLog result{
      version, guarded_read(std::string("Failed reading ") + name, [&] { return CL::ChangeLog(stream); })};
  if (is_text) result.version = result.log.file_version;
  return result;
}

}  // namespace zuna_converter
