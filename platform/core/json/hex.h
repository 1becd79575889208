#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zuna_core {

/// The bytes that pairs of hexadecimal digits spell; none where `digits` are something else.
std::optional<std::string> DecodeHex(std::string_view digits);

}  // namespace zuna_core
