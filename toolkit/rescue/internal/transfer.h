// Encrypted files that a program has copied as text.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace zuna_toolkit {

/// What a file that was copied as text may have been before. Only the encryption tells which one it was: the
/// tag is right then.
std::vector<std::vector<std::uint8_t>> BeforeTransfer(std::span<const std::uint8_t> bytes);

}  // namespace zuna_toolkit
