#pragma once

#include <string>
#include <string_view>

#include "zuna_midi/show_data.h"

namespace zuna_test {

/// A small show with something in every list.
zuna_midi::ShowData SampleShow();

/// The bytes of its file in each version, written down by hand.
std::string SampleFile(cmn::FileVersion version);

inline constexpr cmn::FileVersion kVersions[] = {{1, 0}, {1, 1}, {1, 2}, {2, 0}};

/// The bytes that hexadecimal digits spell, blanks left out.
std::string Hex(std::string_view digits);

std::string WriteShow(const zuna_midi::ShowData& show, cmn::FileVersion version);
zuna_midi::ShowData ReadShow(const std::string& bytes);

/// The message of the cmn::DataError that reading gives; empty where the file is read.
std::string ReadError(const std::string& bytes);

/// A binary file with this body: the size in the header and the checksum are right.
std::string BinaryFile(cmn::FileVersion version, const std::string& body);

/// The body of a binary file, without header and checksum.
std::string BodyOf(const std::string& file);

}  // namespace zuna_test
