// Memory that runs out: every operation that allocates is run with its first allocation failing,
// then its second, and so on until it ends without one that fails.
#include "tests/operations/all.h"

#include <array>
#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

namespace {

/// The counters of the operators below; the property tests run in one thread.
struct Memory {
  long live = 0;           // blocks not yet freed
  long untilFailure = -1;  // allocations still granted; negative: all of them
  bool failed = false;
  std::array<void*, 64> granted{};  // the last blocks granted while failing was armed
  std::size_t grants = 0;

  // Not inlined: beside a delete-expression, gcc takes malloc for a mistake.
  [[gnu::noinline]] void* allocate(std::size_t size) {
    if (support::worldsAtWork > 0) return count(std::malloc(size == 0 ? 1 : size));
    failed = failed || untilFailure == 0;
    void* const block = untilFailure == 0 ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) return nullptr;
    count(block);
    if (untilFailure > 0) {
      --untilFailure;
      granted[grants++ % granted.size()] = block;
    }
    return block;
  }
  void* count(void* block) {
    ++live;
    return block;
  }
  void* allocateOrThrow(std::size_t size) {
    if (void* const block = allocate(size)) return block;
    throw std::bad_alloc();
  }
  void free(void* block) {
    if (block != nullptr) --live;
    std::free(block);
  }
};

Memory theMemory;

}  // namespace

void* operator new(std::size_t n) { return theMemory.allocateOrThrow(n); }
void* operator new[](std::size_t n) { return theMemory.allocateOrThrow(n); }
void* operator new(std::size_t n, std::nothrow_t const&) noexcept { return theMemory.allocate(n); }
void* operator new[](std::size_t n, std::nothrow_t const& t) noexcept { return operator new(n, t); }
void operator delete(void* block) noexcept { theMemory.free(block); }
void operator delete[](void* block) noexcept { theMemory.free(block); }
void operator delete(void* block, std::size_t) noexcept { theMemory.free(block); }
void operator delete[](void* block, std::size_t) noexcept { theMemory.free(block); }
void operator delete(void* block, std::nothrow_t const&) noexcept { theMemory.free(block); }
void operator delete[](void* block, std::nothrow_t const&) noexcept { theMemory.free(block); }

namespace {

using namespace support;

/// Lets an operation fail in its n-th allocation, n from 0; true when it threw std::bad_alloc.
template <class Operation>
bool runsOut(Operation const& operation, long n) {
  bool threw = false;
  theMemory.failed = false;
  theMemory.grants = 0;
  theMemory.untilFailure = n;
  try {
    operation();
  } catch (std::bad_alloc const&) {
    threw = true;
  }
  theMemory.untilFailure = -1;
  return threw;
}

TEST(Allocation, WhatFailsChangesNothingAndLeaksNothing) {
  int failures = 0;
  for (Operation const& operation : allOperations()) {
    // This operation leaks its rows when memory runs out; the next test checks that.
    if (operation.name == std::string("initBlendArray")) continue;
    for (std::uint64_t seed = 0; seed < (operation.traits & kSlow ? 4 : 40); ++seed) {
      bool failed = true;
      for (long n = 0; failed && n < 60; ++n) {
        long const live = theMemory.live;
        std::string broken;
        {
          World w(seed);
          bool const threw = runsOut([&] { operation.run(w); }, n);
          failed = theMemory.failed;
          failures += failed;
          try {
            w.finish(threw);
          } catch (Broken const& promise) {
            broken = promise.what();
          }
        }
        EXPECT_EQ(broken, "") << operation.name << ", seed " << seed << ", allocation " << n;
        EXPECT_EQ(theMemory.live, live)
            << operation.name << " leaks, seed " << seed << ", allocation " << n;
      }
    }
  }
  EXPECT_GT(failures, 10000);
}

TEST(Allocation, EveryWayOfClosingChangesNothingWhenItFails) {
  for (Numbers const& row : table("14.2 14.2; 9.9 14.2; 14.2 9.9; 12 12")) {
    GxBezierCurve const before =
        polygon({0, 0, 100, 0, row[0], 80, row[0], -row[1]});  // crosses itself
    GxBezierCurve curve(before);
    EXPECT_TRUE(runsOut([&] { curve.makeNiceClosedCurve(); }, 0));
    EXPECT_TRUE(curve == before && curve.strictIsClosed() == 0) << row[0];
  }
}

TEST(Allocation, TurningAnOutlineLosesNoPartOfIt) {
  GxBezierCurve const letter = outline("roman-g-outer");
  double const length = GxBezierCurve(letter).curveLength();
  bool failed = true;
  for (long n = 0; failed; ++n) {
    GxBezierCurve curve(letter);
    runsOut([&] { arrangeBezierCurve(curve, Position(3, 0.5), Position(1, 0.4)); }, n);
    failed = theMemory.failed;
    EXPECT_NEAR(curve.curveLength(), length, 1e-4 * length);
  }
}

TEST(Allocation, ABlendTableThatRunsOutIsNull) {
  constexpr unsigned short kSteps = 9;
  for (long n = 0; n <= kSteps + 1; ++n) {
    long const live = theMemory.live;
    double** table = nullptr;
    EXPECT_FALSE(runsOut([&] { table = initBlendArray(kSteps); }, n));
    EXPECT_TRUE(theMemory.failed && table == nullptr);
    EXPECT_EQ(theMemory.live - live, n) << "the table and the rows made so far";
    for (std::size_t i = 0; i < theMemory.grants; ++i) theMemory.free(theMemory.granted[i]);
  }
}

TEST(Allocation, AMapWithoutMemoryIsANullHandle) {
  GxBezierCurve curve = outline("roman-o-inner");
  Position const a(0, 0.5), c(2, 0.5), end(8, 0.0);
  std::function<MapHandle()> const makers[] = {
      [&] { return constructIdentityPositionMap(); },
      [&] { return constructReversePositionMap(3); },
      [&] { return constructRotatePositionMap(1, 1, 3); },
      [&] { return constructSingletonPositionMap(a, curve); },
      [&] { return constructRangePositionMap(curve, 0, 1, 1, a, c, end); },
      [&] { return constructRangePositionMap(curve, 1, 1, 1, c, a, end); },
      [&] { return constructRangePositionMap(curve, 0, 1, 0, c, a, end); }};
  for (long n = 0; n < 2; ++n) {  // no map, no counter
    long const live = theMemory.live;
    for (auto const& make : makers) {
      MapHandle map;
      EXPECT_FALSE(runsOut([&] { map = make(); }, n));
      EXPECT_TRUE(theMemory.failed && map.isNull() && MapHandle(map) == map) << &make - makers;
    }
    EXPECT_EQ(theMemory.live, live);
  }
}

}  // namespace
