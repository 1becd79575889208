// The shows and logs that are measured.

#pragma once

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "format_converter/version0/containers/change_log.h"
#include "format_converter/version0/containers/show_data.h"
#include "zuna_sec/cipher_key.h"

namespace zuna_bench {

/// How many events a show has, or edits a log, and the words for it in the name of a row.
struct Size {
  std::size_t count;
  const char* name;
};

inline constexpr Size kSmallShow{20'000, "20 thousand events"};     ///< an ordinary show
inline constexpr Size kMiddleShow{300'000, "300 thousand events"};  ///< against which growth is measured
inline constexpr Size kLargeShow{5'000'000, "5 million events"};    ///< 60 MB of legacy plaintext
inline constexpr Size kSmallLog{2'000, "2 thousand edits"};
inline constexpr Size kLargeLog{1'000'000, "1 million edits"};

inline const CipherKey kKey{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, {1, 2, 3, 4}};

/// A show of ten songs with sixteen tracks each and as many notes as `events` allows, with a tempo, a meter
/// and a label for every bar.
version0::ShowData LegacyShow(std::size_t events);

/// A log of the songs of such a show, with as many edits of each kind as `edits` allows.
version0::ChangeLogV0 LegacyLog(std::size_t edits);

/// What a legacy show or log writes.
template <typename Legacy>
std::string PlaintextOf(const Legacy& legacy) {
  std::ostringstream os;
  legacy.write_binary(os);
  return os.str();
}

std::vector<std::uint8_t> Encrypted(const std::string& plaintext);

}  // namespace zuna_bench
