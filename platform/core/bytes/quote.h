#pragma once

// Text from a file as it appears in messages.

#include <string>
#include <string_view>

namespace zuna_core {

/// `text` between quotation marks for a message: at most 40 bytes of it, control characters and whatever is
/// not UTF-8 as \xNN.
std::string Quote(std::string_view text);

}  // namespace zuna_core
