#pragma once

// Reads a current log from an encrypted stream and checks its version.

#include <string>

#include "CL/change_log.h"
#include "cmn/file_version.h"
#include "zuna_sec/cipher_stream.h"

namespace zuna_converter {

/// A current log that was read from a file.
struct CurrentLog {
  /// The probed version. The text form is not probed; its version is the one that the log states.
  cmn::FileVersion version;
  CL::ChangeLog log;
};

/// Reads a log of version 1.1 or later. Throws FormatConverterError with the message `too_old` for an older
/// version, and kit::IoError ("Failed reading ", `name` and the failure's text) when the stream throws
/// std::ios_base::failure.
CurrentLog read_current_log(zuna_sec::TwoFishCipherStream& input, const char* too_old, const char* name);

}  // namespace zuna_converter
