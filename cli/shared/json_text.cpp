// Data of the toolkit as JSON.
#include "cli/shared/json_text.h"

#include <cstdint>
#include <span>

#include "cli/terminal/text.h"
#include "kit/hex.h"
#include "kit/utf8.h"
#include "toolkit/words.h"

namespace zuna_cli {

std::string TextOrNull(const std::string& text) { return text.empty() ? "null" : JsonString(text); }

std::string JsonStrings(const std::vector<std::string>& texts) {
  std::string list;
  for (const std::string& text : texts) zuna_toolkit::AppendListed(list, JsonString(text));
  return '[' + list + ']';
}

std::string PathJson(const std::string& key, const std::string& path) {
  std::string json = '"' + key + "\": " + TextOrNull(path);
  if (kit::IsUtf8(path)) return json;
  const std::span<const std::uint8_t> bytes(reinterpret_cast<const std::uint8_t*>(path.data()), path.size());
  return json + ", \"" + key + "Bytes\": \"" + kit::EncodeHex(bytes) + '"';
}

std::string ErrorJson(const zuna_toolkit::Error& error) {
  const zuna_toolkit::ErrorParts& parts = error.parts();
  return "{\"code\": \"" + std::string(CodeText(error.code())) + "\", " + PathJson("file", parts.file) +
         ", \"message\": " + JsonString(error.what()) + ", \"remedy\": " + TextOrNull(parts.remedy) +
         ", \"song\": " + TextOrNull(parts.song) + ", \"field\": " + TextOrNull(parts.field) +
         ", \"offset\": " + NumberOrNull(parts.offset) + "}";
}

std::string PlaceJson(const zuna_toolkit::Place& place) {
  return "\"list\": \"" + std::string(place.list) + "\", \"index\": " + std::to_string(place.index) +
         ", \"tick\": " + NumberOrNull(place.tick) + ", \"bar\": " + TextOrNull(place.bar) +
         ", \"voice\": " + NumberOrNull(place.voice);
}

std::string DifferenceJson(const zuna_toolkit::Difference& difference) {
  return "\"code\": \"" + CodeText(difference) + "\", \"song\": " + JsonString(difference.song) + ", " +
         PlaceJson(difference.place) + ", \"before\": " + JsonString(difference.before) +
         ", \"after\": " + JsonString(difference.after) + ", \"count\": " + std::to_string(difference.count);
}

std::string AfterTickJson(const zuna_toolkit::Place& place) {
  return "\"afterTick\": " + NumberOrNull(place.after_tick);
}

}  // namespace zuna_cli
