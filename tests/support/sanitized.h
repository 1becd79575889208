// What a sanitizer changes for tests.

#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZUNA_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ZUNA_SANITIZED
#endif
#endif

namespace zuna_test {

#ifdef ZUNA_SANITIZED
inline constexpr bool kSanitized = true;
#else
inline constexpr bool kSanitized = false;
#endif

/// The call that fails next in a test that lets the first, the second, ... fail. Under a sanitizer code takes
/// about twenty times as long: the later the calls, the fewer of them fail there. Other builds let all of
/// them fail.
inline std::size_t NextCall(std::size_t call) { return call + 1 + (kSanitized ? call / 4 : 0); }

/// The change that follows in a test that changes a byte in every way, by exclusive or from 1 to 255. Under a
/// sanitizer, one bit changes at a time.
inline int NextChange(int bits) { return kSanitized ? bits * 2 : bits + 1; }

/// The cut that follows in a test that cuts a file after every `step` bytes. Under a sanitizer they are
/// eleven times as far apart.
inline std::size_t NextCut(std::size_t cut, std::size_t step = 1) {
  return cut + step * (kSanitized ? 11 : 1);
}

/// How many of so many rounds of a test of random inputs there are: under a sanitizer, a quarter.
inline int Rounds(int rounds) { return kSanitized ? rounds / 4 : rounds; }

}  // namespace zuna_test
