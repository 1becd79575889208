// The shows and logs that are measured.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "format_converter/version0/containers/show_data.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_bench {

constexpr std::size_t kSmall = 20'000;     ///< events of an ordinary show
constexpr std::size_t kMiddle = 300'000;   ///< events against which growth is measured
constexpr std::size_t kLarge = 5'000'000;  ///< events of 60 MB of legacy plaintext

inline const CipherKey kKey{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, {1, 2, 3, 4}};

/// A show of ten songs with sixteen tracks each and as many notes as `events` allows, with a tempo, a meter
/// and a label for every bar.
version0::ShowData LegacyShow(std::size_t events);

/// What it writes.
std::string LegacyPlaintext(std::size_t events);

std::vector<std::uint8_t> Encrypted(const std::string& plaintext);

}  // namespace zuna_bench
