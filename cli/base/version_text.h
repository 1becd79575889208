#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "cmn/file_version.h"

namespace zuna_cli {

/// The version that files get unless told otherwise.
constexpr const char* kDefaultVersion = "1.2";

/// The versions that files are written at, but for 0.0, which has a command of its own. The first one is for
/// shows only.
constexpr std::array<cmn::FileVersion, 4> kWritableVersions{{{1, 0}, {1, 1}, {1, 2}, {2, 0}}};

/// "1.0, 1.1, 1.2 or 2.0 (text)", from `first` on.
std::string WritableVersionsText(const cmn::FileVersion& first = kWritableVersions.front());

/// "MAJOR.MINOR", both 0 to 255 in decimal; nothing for any other text.
std::optional<cmn::FileVersion> ParseVersion(std::string_view text);

/// "1.2"
std::string VersionText(const cmn::FileVersion& version);

}  // namespace zuna_cli
