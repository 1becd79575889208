// The mutations of JSON texts.

#include <gtest/gtest.h>

#include <algorithm>

#include "fuzz/mutators/mutators.h"
#include "tests/support/encrypted.h"
#include "tests/support/sample_models.h"

namespace fuzz {
namespace {

/// How many more brackets are opened than closed outside of strings.
std::ptrdiff_t OpenBrackets(const std::string& text) {
  const auto opened = std::count_if(text.begin(), text.end(), [](char c) { return c == '{' || c == '['; });
  const auto closed = std::count_if(text.begin(), text.end(), [](char c) { return c == '}' || c == ']'; });
  return opened - closed;
}

TEST(MutateJson, ChangesATextAndKeepsItsBracketsInPairs) {
  const std::string text = zuna_test::WrittenAt(zuna_test::SampleLog(), {2, 0});
  std::size_t changed = 0;
  for (unsigned seed = 0; seed < 200; ++seed) {
    std::mt19937 random(seed);
    const std::string mutated = MutateJson(text, random);
    changed += mutated == text ? 0 : 1;
    EXPECT_EQ(OpenBrackets(mutated), 0) << mutated;
  }
  EXPECT_GT(changed, 150U);
}

TEST(MutateJson, TakesStringsAsTheyAre) {
  std::mt19937 random(1);
  EXPECT_EQ(MutateJson(R"("a, [b], \" c")", random), R"("a, [b], \" c")");
}

TEST(MutateJson, LeavesATextWithoutValuesAlone) {
  std::mt19937 random(1);
  for (const std::string text : {"", "1", "]]", "{\"a"}) EXPECT_EQ(MutateJson(text, random), text);
}

}  // namespace
}  // namespace fuzz
