// The fields of a file with the bytes that they take in its plaintext (docs/text-form.md).
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cmn/field_list.h"
#include "kit/api.h"
#include "toolkit/document/open.h"
#include "toolkit/error.h"

namespace zuna_toolkit {

/// What is known of a file before its fields are listed.
struct FieldSource {
  FileType type;                ///< what the file holds, or is meant to hold where it is damaged
  std::string plaintext;        ///< whose fields are listed
  std::optional<Error> damage;  ///< why the file cannot be read; none for a file that can be
};

/// Reads the file. Throws Error where it is not meant to be a show or a log.
ZUNA_API FieldSource FieldSourceOf(OpenedFile& file);

/// Hands out every field of the plaintext, in its order: the ranges begin at 0, follow one another without
/// gaps and end with the plaintext. Paths are those of the text form, where entries of lists are counted in
/// the order of the file. Bytes that cannot be read, because of damage, are the last field, `unread`. A text
/// of a binary file begins with its length. In a text form, the range of a value begins after the value
/// before it.
ZUNA_API void ListFields(const FieldSource& source, const cmn::TakeField& take);

}  // namespace zuna_toolkit
