#include "format_converter/version0/stream_position.h"

#include <iostream>
#include <string>

namespace version0 {

void print_istream_pos(std::istream& is) {
  std::cout << std::to_string(static_cast<std::streamoff>(is.tellg())) << std::endl;
}

std::uint32_t ostream_tellp(std::ostream& os) {
  if (os.fail()) return 0xFFFFFFFF;
  const std::streamoff position = os.rdbuf()->pubseekoff(0, std::ios_base::cur, std::ios_base::out);
  return static_cast<std::uint32_t>(position);
}

}  // namespace version0
