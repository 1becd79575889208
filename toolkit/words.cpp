// Small helpers for texts.
#include "toolkit/words.h"

#include <algorithm>

namespace zuna_toolkit {

std::string Counted(std::size_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

void AppendListed(std::string& list, const std::string& text) {
  if (!list.empty()) list += ", ";
  list += text;
}

std::string LowerCase(std::string text) {
  for (char& byte : text) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
  }
  return text;
}

void Tally::Add(const std::string& one, const std::string& many, std::size_t count) {
  if (count == 0) return;
  const auto same = [&](const Kind& kind) { return kind.one == one; };
  const auto found = std::find_if(kinds_.begin(), kinds_.end(), same);
  if (found == kinds_.end()) {
    kinds_.push_back({one, many, count});
  } else {
    found->count += count;
  }
}

std::string Tally::ToString() const {
  std::string text;
  for (const Kind& kind : kinds_) {
    AppendListed(text, Counted(kind.count, kind.one, kind.many));
  }
  return text;
}

}  // namespace zuna_toolkit
