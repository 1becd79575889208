#pragma once

#include <optional>
#include <string_view>

#include "cmn/file_version.h"
#include "platform/core/binary/header.h"

namespace zuna_core {

/// What a text document of this kind has under "kind".
std::string_view KindText(FileKind kind);

/// The version that "fileVersion" states: two decimal numbers from 0 to 255 without leading zeros, joined by
/// a point. None for any other text.
std::optional<cmn::FileVersion> ParseVersion(std::string_view text);

/// What is wrong with the value of "kind", respectively of "fileVersion", in a text document of this kind;
/// null where nothing is. Throws cmn::UnsupportedVersionError for a version that text documents do not have.
const char* CheckKind(FileKind kind, std::string_view text);
const char* CheckVersion(FileKind kind, std::string_view text);

}  // namespace zuna_core
