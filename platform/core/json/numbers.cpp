// Floats as decimal text.

#include "platform/core/json/numbers.h"

#include <cmath>
#include <cstdlib>
#ifdef __APPLE__
#include <xlocale.h>
#else
#include <locale.h>  // newlocale(), which <clocale> does not promise
#endif

namespace zuna_json {

std::string FloatText(float value) {
  if (value == 0 && std::signbit(value)) return "-0.0";
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::optional<float> ParseFloat(const std::string& number) {
  // std::from_chars does not read floats in every standard library; strtof() obeys the locale of the process.
  static const locale_t c_locale = newlocale(LC_ALL_MASK, "C", nullptr);
  const float value = strtof_l(number.c_str(), nullptr, c_locale);
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

}  // namespace zuna_json
