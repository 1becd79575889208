#pragma once

#include <string>

#include "CL/change_log.h"
#include "cmn/file_version.h"
#include "zuna_sec/cipher_stream.h"

/// A current log out of a file.
struct CurrentLog {
  cmn::FileVersion probed_version;  ///< 0.0 for a text document, which is not probed
  CL::ChangeLog log;
};

/// Reads a log of version 1.1 or later. Throws FormatConverterError with `too_old` for another version, and
/// kit::IoError ("Failed reading " and `name`) where the stream throws a failure.
CurrentLog read_current_log(zuna_sec::TwoFishCipherStream& input, const char* too_old, const char* name);
