// Positions: normalisation, order, senses.
#include "crv/crv.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

using Position = GxBezierCurvePosition;

void expectPosition(Position const& p, long segment, double t) {
  EXPECT_EQ(p.getSegmentNumber(), segment) << support::text(p);
  EXPECT_BITS(p.getTValue(), t);
}

TEST(GxBezierCurvePosition, CarriesWholeNumbersToTheSegment) {
  struct Case {
    int segment;
    double t;
    long expectedSegment;
    double expectedT;
  };
  Case const cases[] = {
      {2, 1.0, 3, 0.0},
      {2, -0.25, 1, 0.75},
      {0, 2.5, 2, 0.5},
      {0, -0.5, -1, 0.5},
      {4, -1.0, 3, 0.0},
      {4, -3.5, 0, 0.5},
      {4, 0.0, 4, 0.0},
      {4, -0.0, 4, -0.0},
      {4, 0.9999999999, 4, 0.9999999999},
      {4, -1e-300, 4, 0.0},
      {5, 0x1p30 + 0.5, (1L << 30) + 5, 0.5},
      {5, 0.25 - 0x1p30, 5 - (1L << 30), 0.25},
  };
  for (Case const& k : cases) {
    expectPosition(Position(k.segment, k.t), k.expectedSegment, k.expectedT);
  }
  expectPosition(Position(), -1, 0.0);
  expectPosition(GxBezierCurvePositionConstructor().constructPosition(3, 1.0), 4, 0.0);
  expectPosition(GxBezierCurvePositionConstructor().constructDirectPosition(3, 1.0), 3, 1.0);
}

TEST(GxBezierCurvePosition, StoresWhatCannotBeCarriedAsGiven) {
  double const inf = std::numeric_limits<double>::infinity();
  for (double const t : {0x1p53, -0x1p53, 1e300, -1e300, inf, -inf, inf - inf}) {
    expectPosition(Position(7, t), 7, t);
  }
  EXPECT_EQ(Position(7, 0x1p53 - 1).getTValue(), 0.0) << "just carried";
  EXPECT_EQ(Position(7, 1 - 0x1p53).getTValue(), 0.0) << "just carried";
}

TEST(GxBezierCurvePosition, CarriesWithTheBitsOfSingleSteps) {
  support::Random random(1);
  for (int i = 0; i < 20000; ++i) {
    double const t = random.uniform(-1, 1) * (i % 3 == 0 ? 1e-17 : i % 3 == 1 ? 3.0 : 2000.0);
    long segment = 5;
    double u = t;
    for (; u < 0.0; --segment) u += 1.0;
    for (; u >= 1.0; ++segment) u -= 1.0;
    expectPosition(Position(5, t), segment, u);
  }
}

TEST(GxBezierCurvePosition, ComparesFieldsExactlyAndSumsWithinATolerance) {
  GxBezierCurvePositionConstructor const make;
  Position const end = make.constructDirectPosition(1, 1.0);
  Position const next(2, 0.0);
  EXPECT_TRUE(end < next && end <= next && !(end > next) && !(end >= next) && end != next);
  EXPECT_TRUE(next > end && next >= end && next >= next && next <= next && next == next);
  EXPECT_TRUE(Position() < Position(0, 0.0));
  EXPECT_TRUE(end.isEqual(next, 1e-9)) << "both are 2 as one number";

  Position const p(1, 0.5);
  Position const q(1, 0.5 + 0x1p-40);
  EXPECT_FALSE(p == q);
  EXPECT_TRUE(p.isEqual(q, -1e-9) && isEqual(p, q, 1e-9));
  EXPECT_FALSE(isEqual(p, q, -1e-9)) << "only the method takes the tolerance's magnitude";
  EXPECT_FALSE(p.isEqual(q, 0x1p-40)) << "a difference on the tolerance is outside";
  EXPECT_FALSE(p.isEqual(p, 0.0));
}

TEST(GxBezierCurvePosition, SensesReverseAndAgree) {
  int const reversed[][2] = {{1, 2}, {2, 1}, {0, 0}, {7, 7}, {-1, -1}};
  for (auto const& r : reversed) EXPECT_EQ(Position::reverseSense(r[0]), r[1]);
  int const compatible[][3] = {{0, 2, 1}, {1, 0, 1}, {2, 2, 1}, {1, 2, 0}, {7, 7, 1}, {7, 1, 0}};
  for (auto const& c : compatible) EXPECT_EQ(Position::isCompatibleSense(c[0], c[1]), c[2]);
}

}  // namespace
