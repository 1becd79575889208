#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cmn/file_version.h"

namespace zuna_cli {

/// The version that files get unless told otherwise.
constexpr const char* kDefaultVersion = "1.2";

/// "MAJOR.MINOR", both 0 to 255 in decimal; nothing for any other text.
std::optional<cmn::FileVersion> ParseVersion(std::string_view text);

/// "1.2"
std::string VersionText(const cmn::FileVersion& version);

}  // namespace zuna_cli
