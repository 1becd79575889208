// Data of the toolkit as JSON.
#include "cli/shared/json_text.h"

#include "cli/terminal/text.h"

namespace zuna_cli {

namespace {

template <typename Number>
std::string NumberOrNull(const std::optional<Number>& number) {
  return number ? std::to_string(*number) : "null";
}

}  // namespace

std::string TextOrNull(const std::string& text) { return text.empty() ? "null" : JsonString(text); }

std::string ErrorJson(const zuna_toolkit::Error& error) {
  const zuna_toolkit::ErrorParts& parts = error.parts();
  return "{\"code\": \"" + std::string(CodeText(error.code())) + "\", \"file\": " + TextOrNull(parts.file) +
         ", \"message\": " + JsonString(error.what()) + ", \"remedy\": " + TextOrNull(parts.remedy) +
         ", \"song\": " + TextOrNull(parts.song) + ", \"field\": " + TextOrNull(parts.field) +
         ", \"offset\": " + NumberOrNull(parts.offset) + "}";
}

std::string PlaceJson(const zuna_toolkit::Place& place) {
  return "\"list\": \"" + std::string(place.list) + "\", \"index\": " + std::to_string(place.index) +
         ", \"tick\": " + NumberOrNull(place.tick) + ", \"bar\": " + TextOrNull(place.bar) +
         ", \"voice\": " + NumberOrNull(place.voice);
}

}  // namespace zuna_cli
