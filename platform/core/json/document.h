#pragma once

#include <string_view>

#include "platform/core/binary/header.h"

namespace zuna_core {

/// What a text document of this kind has under "kind".
std::string_view KindText(FileKind kind);

/// What is wrong with the value of "kind", respectively of "fileVersion", in a text document of this kind;
/// null where nothing is. Throws cmn::UnsupportedVersionError for a version that text documents do not have.
const char* CheckKind(FileKind kind, std::string_view text);
const char* CheckVersion(FileKind kind, std::string_view text);

}  // namespace zuna_core
