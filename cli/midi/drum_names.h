#pragma once

#include <string_view>

namespace zuna_cli::midi {

/// The name that percussion gets on import.
constexpr const char* kDrumKit = "Drum Kit";

/// Whether format 0.0 takes a voice of this name for drums and puts it on channel 10.
constexpr bool IsDrumName(std::string_view name) { return name == kDrumKit || name == "Drums"; }

}  // namespace zuna_cli::midi
