// Encrypted files that a program has copied as text.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace zuna_toolkit {

/// What a file that was copied as text may have been before; none where it does not look like one. Only the
/// encryption tells whether it was: the tag is right then.
std::optional<std::vector<std::uint8_t>> BeforeTransfer(std::span<const std::uint8_t> bytes);

}  // namespace zuna_toolkit
