// Mutates JSON texts by their values.

#include <array>
#include <utility>
#include <vector>

#include "fuzz/mutators/mutators.h"

namespace fuzz {

namespace {

/// A part of the text.
struct Span {
  std::size_t begin;
  std::size_t end;
};

/// The parts of a text that can be moved.
struct Parts {
  std::vector<Span> entries;  ///< elements of lists, members of objects with their keys
  std::vector<Span> values;   ///< the same without the keys
};

/// Finds the parts of a JSON text. Any other text gives some parts, or none.
Parts PartsOf(const std::string& text) {
  Parts parts;
  std::vector<Span> open;  // where the entry and the value that are being read begin
  bool in_string = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (in_string && c == '\\') ++i;
    if (c == '"') in_string = !in_string;
    if (in_string) continue;
    if (c == '{' || c == '[') open.push_back({i + 1, i + 1});
    if (open.empty()) continue;
    if (c == ':') open.back().end = i + 1;
    if (c != ',' && c != '}' && c != ']') continue;
    parts.entries.push_back({open.back().begin, i});
    parts.values.push_back({open.back().end, i});
    open.back() = {i + 1, i + 1};
    if (c != ',') open.pop_back();
  }
  return parts;
}

std::string TextAt(const std::string& text, Span span) {
  return text.substr(span.begin, span.end - span.begin);
}

template <typename List>
const auto& OneOf(const List& list, std::mt19937& random) {
  return list[random() % list.size()];
}

/// Most often once, sometimes very often: what costs more than its size allows shows only then.
std::string Repeated(const std::string& part, std::mt19937& random) {
  std::string repeated;
  for (std::size_t left = random() % 16 == 0 ? random() % 1000 : 1; left > 0; --left) repeated += part;
  return repeated;
}

/// Values at the edges of what fields hold.
const std::array<std::string, 20> kValues = {"0",
                                             "-1",
                                             "127",
                                             "128",
                                             "255",
                                             "256",
                                             "65535",
                                             "65536",
                                             "2147483647",
                                             "-2147483648",
                                             "4294967295",
                                             "4294967296",
                                             "1e38",
                                             "1e39",
                                             "-0.0",
                                             "\"\"",
                                             "[]",
                                             "{}",
                                             "{\"bytes\": \"ff\"}",
                                             "{\"bits\": 2143289344}"};

}  // namespace

std::string MutateJson(const std::string& text, std::mt19937& random) {
  const Parts parts = PartsOf(text);
  if (parts.entries.empty()) return text;
  std::string mutated = text;
  const Span entry = OneOf(parts.entries, random);
  const Span value = OneOf(parts.values, random);
  switch (random() % 4) {
    case 0:
      return mutated.insert(entry.end, Repeated(',' + TextAt(text, entry), random));
    case 1: {
      const bool has_comma = text[entry.end] == ',';
      return mutated.erase(entry.begin, entry.end - entry.begin + (has_comma ? 1 : 0));
    }
    case 2:
      return mutated.replace(value.begin, value.end - value.begin, TextAt(text, OneOf(parts.values, random)));
    default:
      return mutated.replace(value.begin, value.end - value.begin, OneOf(kValues, random));
  }
}

}  // namespace fuzz
