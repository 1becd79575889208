#pragma once

#include <string>

#include "tests/core/binary/binary_file.h"
#include "zuna_midi/show_data.h"

namespace zuna_test {

/// A small show with something in every list.
zuna_midi::ShowData SampleShow();

/// The bytes of its file in each version, written down by hand.
std::string SampleFile(cmn::FileVersion version);

inline constexpr cmn::FileVersion kVersions[] = {{1, 0}, {1, 1}, {1, 2}, {2, 0}};

std::string WriteShow(const zuna_midi::ShowData& show, cmn::FileVersion version);
zuna_midi::ShowData ReadShow(const std::string& bytes);

/// The message of the cmn::DataError that reading gives; empty where the file is read.
std::string ReadError(const std::string& bytes);

/// A binary show file with this body: the size in the header and the checksum are right.
std::string BinaryFile(cmn::FileVersion version, const std::string& body);

}  // namespace zuna_test
