// What fuzzers found, each under the name of what it broke.
#include "tests/support/positions.h"
#include "tests/support/shapes.h"

#include <cmath>
#include <ctime>
#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr int kLeastInt = std::numeric_limits<int>::min();

TEST(FuzzFinds, BinomialsOfNumbersFarApartOverflowedTheirDifference) {
  EXPECT_EQ(bico(55, kLeastInt), 0.0);
  EXPECT_TRUE(std::isnan(blendValue(0.5, kLeastInt, 3)));
}

/// Processor time, in ticks.
template <class Operation>
double timeOf(Operation const& operation) {
  std::clock_t const start = std::clock();
  operation();
  return static_cast<double>(std::clock() - start);
}

TEST(FuzzFinds, AWalkWithAFarLimitMeasuredHugeSegmentsTenTimesBeyondItsBudget) {
  // So far out a length never settles: each is measured with 655,350 points, 2^26 of which are 102.
  GxBezierCurve const curve =
      support::curveOf({support::pointLike(9e31, 9e31), support::pointLike(8e31, 9e31)});
  double const one = timeOf([&] {
                       for (int i = 0; i < 20; ++i) curve[0].length(0.0);
                     }) /
                     20;
  GxBezierCurvePosition const far(std::numeric_limits<int>::max(), 0.0);
  GxBezierCurvePosition to;
  double const walk =
      timeOf([&] { EXPECT_EQ(curve.findNextPos(far, support::at(1), to, 1e36, 0), -1); });
  EXPECT_LT(walk, 1000 * one);
}

}  // namespace
