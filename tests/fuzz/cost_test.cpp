// The bounds on what an input costs.

#include "fuzz/cost.h"

#include <gtest/gtest.h>

#include <new>
#include <vector>

namespace fuzz {
namespace {

TEST(RequireShort, AllowsSixtyFourTimesTheInputAndSomeKilobytes) {
  RequireShort(4096, 0);
  RequireShort(std::string(4096 + 640, 'x'), 10);
  EXPECT_DEATH(RequireShort(4097 + 640, 10), "does not hold: what is printed: 4737 bytes, and at most 4736");
}

#ifdef ZUNA_COUNTS_MEMORY
TEST(Bounded, AllowsAMegabyteAndSixtyFourTimesTheInput) {
  const auto take = [](std::size_t size) {
    ::operator delete(::operator new(size));  // called by name, so that no compiler leaves them out
    return size;
  };
  constexpr std::size_t kMegabyte = std::size_t{1} << 20;
  EXPECT_EQ(Bounded("taking", 1000, [&] { return take(kMegabyte + 32000); }), kMegabyte + 32000);
  EXPECT_DEATH(Bounded("taking", 1000, [&] { return take(kMegabyte + 96000); }), "does not hold: taking");
}

TEST(Bounded, DoesNotCountWhatWasTakenBefore) {
  const std::vector<char> before(std::size_t{3} << 20);
  EXPECT_EQ(Bounded("taking nothing", 0, [&] { return before.size(); }), before.size());
}
#endif

}  // namespace
}  // namespace fuzz
