// The count of the heap itself, on which the other tests of costs rely.

#include "tests/support/heap_peak.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <thread>

#include "tests/support/cost_bounds.h"

namespace {

using zuna_test::HeapPeak;

constexpr std::size_t kBlock = 100'000;
constexpr std::size_t kRounding = 4096;  // what an allocator adds to some blocks

void ExpectAbout(std::size_t bytes, std::size_t expected) {
  EXPECT_GE(bytes, expected);
  EXPECT_LE(bytes, expected + kRounding);
}

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
using Memory = std::unique_ptr<void, Free>;

/// Memory of an operator that is called by its name: compilers may leave out a new expression.
struct Delete {
  void operator()(void* memory) const { ::operator delete(memory); }
};
using NewMemory = std::unique_ptr<void, Delete>;

TEST(HeapPeak, IsZeroWhileNothingIsAllocated) {
  const HeapPeak peak;
  EXPECT_EQ(peak.bytes(), 0U);
}

TEST(HeapPeak, CountsTheWorstMoment) {
  const HeapPeak peak;
  for (int i = 0; i < 3; ++i) {
    const NewMemory one(::operator new(kBlock));
    const NewMemory two(::operator new(kBlock));
  }
  const NewMemory after(::operator new(kBlock));
  ExpectAbout(peak.bytes(), 2 * kBlock);
}

TEST(HeapPeak, CountsEveryWayToAllocate) {
  const HeapPeak peak;
  const Memory plain(std::malloc(kBlock));
  const Memory zeroed(std::calloc(kBlock / 8, 8));
  const Memory aligned(std::aligned_alloc(4096, 4096 * 25));
  void* posix = nullptr;
  ASSERT_EQ(::posix_memalign(&posix, 64, kBlock), 0);
  const Memory owned(posix);
  void* const over_aligned = ::operator new(kBlock, std::align_val_t(256));
  ExpectAbout(peak.bytes(), 4 * kBlock + 4096 * 25);
  ::operator delete(over_aligned, std::align_val_t(256));
}

TEST(HeapPeak, FollowsABlockThatGrowsAndShrinks) {
  const HeapPeak peak;
  void* grown = std::realloc(nullptr, kBlock);
  grown = std::realloc(grown, 3 * kBlock);
  EXPECT_GE(peak.bytes(), 3 * kBlock);
  grown = std::realloc(grown, 8);
  const Memory owned(grown);
  const HeapPeak second;
  const Memory other(std::malloc(kBlock));
  ExpectAbout(second.bytes(), kBlock);
}

TEST(HeapPeak, DoesNotCountWhatWasThereBefore) {
  const Memory before(std::malloc(kBlock));
  const HeapPeak peak;
  const Memory after(std::malloc(kBlock));
  ExpectAbout(peak.bytes(), kBlock);
}

TEST(HeapPeak, MayBeNested) {
  const HeapPeak outer;
  Memory(std::malloc(3 * kBlock)).reset();
  {
    const HeapPeak inner;
    Memory(std::malloc(kBlock)).reset();
    ExpectAbout(inner.bytes(), kBlock);
  }
  ExpectAbout(outer.bytes(), 3 * kBlock);
}

TEST(HeapPeak, CountsOtherThreads) {
  const HeapPeak peak;
  std::thread([] { Memory(std::malloc(10 * kBlock)).reset(); }).join();
  EXPECT_GE(peak.bytes(), 10 * kBlock);
}

TEST(CostBounds, AreThoseThatTheDocumentsState) {
  EXPECT_EQ(zuna_test::HeapBound(1000), 1'048'576U + 64'000U);
  EXPECT_EQ(zuna_test::CommandHeapBound(1000), 1'048'576U + 128'000U);
  EXPECT_EQ(zuna_test::PrintedBound(1000), 4096U + 64'000U);
}

}  // namespace
