// Runs every operation on inputs on which other libraries hung, crashed or failed: each call
// returns in time, with finite results that keep the promises.
#include "tests/operations/all.h"

#include <gtest/gtest.h>

namespace {

using namespace support;

TEST(HardCases, AnswerEveryQuestion) {
  std::vector<HardCase> cases;
  for (char const* const name : {"curves", "segments", "lines", "loops", "strokes"}) {
    for (HardCase const& hard : hardCases(name)) cases.push_back(hard);
  }
  ASSERT_GE(cases.size(), 150u);
  for (HardCase const& hard : cases) {
    SCOPED_TRACE(hard.source);
    for (Operation const& operation : allOperations()) {
      for (std::uint64_t seed = 0; seed < (operation.traits & kSlow ? 1 : 5); ++seed) {
        World w(seed, hard);
        EXPECT_EQ(brokenBy(operation, w), "") << seed;
      }
    }
  }
}

}  // namespace
