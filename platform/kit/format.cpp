#include "kit/format.h"

#include <cstdarg>
#include <cstdio>
#include <stdexcept>

namespace kit {

namespace {

std::string FormatArguments(const char* fmt, std::va_list measured, std::va_list printed) {
  const int length = std::vsnprintf(nullptr, 0, fmt, measured);
  if (length < 0) throw std::invalid_argument("kit::format: the format cannot be printed");
  std::string text(static_cast<std::size_t>(length), '\0');
  std::vsnprintf(text.data(), text.size() + 1, fmt, printed);
  return text;
}

}  // namespace

std::string format(const char* fmt, ...) {
  std::va_list measured;
  std::va_list printed;
  va_start(measured, fmt);
  va_start(printed, fmt);
  struct Ended {
    std::va_list& a;
    std::va_list& b;
    ~Ended() {
      va_end(a);
      va_end(b);
    }
  } const ended{measured, printed};
  return FormatArguments(fmt, measured, printed);
}

}  // namespace kit
