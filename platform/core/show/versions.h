#pragma once

#include "cmn/file_version.h"

namespace zuna_core {

inline constexpr cmn::FileVersion kFixedVersion{1, 0};
inline constexpr cmn::FileVersion kCheckedVersion{1, 1};
inline constexpr cmn::FileVersion kCompactVersion{1, 2};
inline constexpr cmn::FileVersion kTextVersion{2, 0};

/// Throws cmn::UnsupportedVersionError for a show of this version in `form`, listing the supported ones.
[[noreturn]] void ThrowUnsupportedShow(cmn::FileVersion version, const char* form);

}  // namespace zuna_core
