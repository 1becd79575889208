// Where something is in a song.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zuna_toolkit {

/// Where something is in a song. Of two documents, it is a place in the first one, or in the second one for
/// what only that one has.
struct Place {
  std::string_view list;  ///< as the text form calls it, such as "tempos"; empty for a single field
  std::size_t index = 0;  ///< in the list
  std::optional<std::uint32_t> tick = std::nullopt;        ///< when
  std::optional<std::uint32_t> after_tick = std::nullopt;  ///< when in the second document, of what both have
  std::optional<std::uint16_t> voice = std::nullopt;       ///< the number of the voice
  std::string bar = {};  ///< the label of the bar that holds `tick`; empty where there is none
};

}  // namespace zuna_toolkit
