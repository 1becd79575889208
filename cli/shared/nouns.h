// What the things in documents are called.
#pragma once

#include <string>

#include "toolkit/comparison/difference.h"

namespace zuna_cli {

/// What one and several of a kind are called.
struct Noun {
  std::string one;
  std::string many;
};

/// "tempo", "tempos"
Noun NounOf(zuna_toolkit::Subject subject);

}  // namespace zuna_cli
