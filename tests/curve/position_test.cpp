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
  expectPosition(Position(2, 1.0), 3, 0.0);
  expectPosition(Position(0, -0.5), -1, 0.5);
  expectPosition(Position(4, -1.0), 3, 0.0);
  expectPosition(Position(4, -0.0), 4, -0.0);
  expectPosition(Position(4, -1e-300), 4, 0.0);
  expectPosition(Position(5, 0.25 - 0x1p30), 5 - (1L << 30), 0.25);
  expectPosition(Position(), -1, 0.0);
  expectPosition(GxBezierCurvePositionConstructor().constructPosition(3, 1.0), 4, 0.0);
  expectPosition(GxBezierCurvePositionConstructor().constructDirectPosition(3, 1.0), 3, 1.0);
}

TEST(GxBezierCurvePosition, CarriesWithTheBitsOfSingleStepsAndStoresWhatCannotBeCarried) {
  double const inf = std::numeric_limits<double>::infinity();
  for (double const t : {0x1p53, -0x1p53, 1e300, inf, -inf, inf - inf}) {
    expectPosition(Position(7, t), 7, t);
  }
  for (double const t : {0x1p53 - 1, 1 - 0x1p53}) EXPECT_EQ(Position(7, t).getTValue(), 0.0);
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
  for (int const sense : {0, 7}) EXPECT_EQ(Position::reverseSense(sense), sense);
  EXPECT_TRUE(Position::reverseSense(1) == 2 && Position::reverseSense(2) == 1);
  EXPECT_TRUE(Position::isCompatibleSense(0, 2) && Position::isCompatibleSense(7, 7));
  EXPECT_FALSE(Position::isCompatibleSense(1, 2));
}

}  // namespace
