// printf into a string of the length that it needs.

#include "kit/format.h"

#include <cstdarg>
#include <cstdio>
#include <stdexcept>

namespace kit {

std::string format(const char* fmt, ...) {
  std::va_list arguments;
  va_start(arguments, fmt);
  const int length = std::vsnprintf(nullptr, 0, fmt, arguments);
  va_end(arguments);
  if (length < 0) throw std::invalid_argument("kit::format: the format cannot be printed");

  std::string text(static_cast<std::size_t>(length), '\0');
  va_start(arguments, fmt);
  std::vsnprintf(text.data(), text.size() + 1, fmt, arguments);
  va_end(arguments);
  return text;
}

}  // namespace kit
