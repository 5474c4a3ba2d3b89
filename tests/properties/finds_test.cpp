// What fuzzers found, each under the name of what it broke.
#include "crv/crv.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr int kLeastInt = std::numeric_limits<int>::min();

TEST(FuzzFinds, BinomialsOfNumbersFarApartOverflowedTheirDifference) {
  EXPECT_EQ(bico(55, kLeastInt), 0.0);
  EXPECT_TRUE(std::isnan(blendValue(0.5, kLeastInt, 3)));
}

}  // namespace
