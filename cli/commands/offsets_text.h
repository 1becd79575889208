// The fields of a file with the bytes that they take, as lines for people and as JSON.
#pragma once

#include <cstddef>
#include <string>

#include "toolkit/document/field_list.h"

namespace zuna_cli {

/// A file whose fields are printed.
struct OffsetsInput {
  std::string path;             ///< as it was given
  std::size_t header_size = 0;  ///< bytes of the encryption before the plaintext; 0 for a plain file
  zuna_toolkit::FieldSource source;
};

/// Writes a line for the file and one for each field to standard output, or one JSON value with a line for
/// each record. Throws Failure.
///@{
void PrintOffsets(const OffsetsInput& input);
void PrintOffsetsJson(const OffsetsInput& input);
///@}

}  // namespace zuna_cli
