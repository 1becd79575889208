#pragma once

#include <string>

#include "CL/change_log.h"
#include "tests/core/binary/binary_file.h"

namespace zuna_test {

/// A small log with something in every list.
CL::ChangeLog SampleLog();

/// The bytes of its file in each version, written down by hand.
std::string SampleLogFile(cmn::FileVersion version);

inline constexpr cmn::FileVersion kLogVersions[] = {{1, 1}, {1, 2}, {2, 0}};

std::string WriteLog(const CL::ChangeLog& log, cmn::FileVersion version);
CL::ChangeLog ReadLog(const std::string& bytes);

/// The message of the cmn::DataError that reading gives; empty where the file is read.
std::string LogReadError(const std::string& bytes);

/// A binary log file with this body: the size in the header and the checksum are right.
std::string BinaryLogFile(cmn::FileVersion version, const std::string& body);

}  // namespace zuna_test
