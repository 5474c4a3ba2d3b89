// Objects of every class, each used by one thread, at once: what threads share inside the library,
// the lock of the counters and constant tables, shows neither in the results nor to a thread
// sanitizer.
#include "tests/operations/all.h"

#include <thread>

#include <gtest/gtest.h>

namespace {

using namespace support;

std::uint64_t resultsFor(std::uint64_t seed) {
  std::uint64_t hash = 0;
  for (Operation const& operation : allOperations()) {
    if (operation.traits & (kHasState | kSlow)) continue;
    for (std::uint64_t i = 0; i < 20; ++i) {
      World w(seed + 4 * i);
      brokenBy(operation, w);
      hash = hash * 31 + w.hash();
    }
  }
  return hash;
}

TEST(DistinctObjects, ThreadsGetWhatOneGetsAlone) {
  constexpr unsigned kThreads = 4;
  std::vector<std::uint64_t> together(kThreads);
  std::vector<std::thread> threads;
  for (unsigned i = 0; i < kThreads; ++i) {
    threads.emplace_back([&together, i] { together[i] = resultsFor(i); });
  }
  for (std::thread& thread : threads) thread.join();
  for (unsigned i = 0; i < kThreads; ++i) EXPECT_EQ(together[i], resultsFor(i)) << i;
  EXPECT_NE(together[0], together[1]);
}

}  // namespace
