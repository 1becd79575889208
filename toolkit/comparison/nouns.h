// What the things in documents are called.
#pragma once

#include <string>

#include "kit/api.h"
#include "toolkit/comparison/difference.h"

namespace zuna_toolkit {

/// What one and several of a kind are called.
struct Noun {
  std::string one;   ///< "tempo"
  std::string many;  ///< "tempos"
};

/// "tempo", "tempos"
ZUNA_API Noun NounOf(Subject subject);

}  // namespace zuna_toolkit
