#pragma once

#include <string>

#include "cli/midi/smf_file.h"

namespace zuna_cli::smf {

/// The bytes of `file`: a header and its tracks, each event with its own status byte. At equal times meta
/// events come before messages. Delta times are at most kMaxQuantity, statuses 0x80 to 0xEF and data bytes
/// below 0x80. Throws std::length_error where a count or length does not fit its field.
std::string Write(const File& file);

}  // namespace zuna_cli::smf
