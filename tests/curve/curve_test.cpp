// Positions, and the curve as a container: values, whole-curve operations, measures.
#include "tests/support/data.h"
#include "tests/support/open.h"
#include "tests/support/positions.h"
#include "tests/support/shapes.h"

namespace {

using Point = GxCoord<double>;
using support::curveOf;
using support::evenLine;
using support::Position;
using support::rawPosition;

TEST(GxBezierCurvePosition, CarriesWithTheBitsOfSingleStepsAndStoresWhatCannotBeCarried) {
  for (double const t : {0x1p53, -0x1p53, 1e300, -HUGE_VAL, std::nan("")}) {
    EXPECT_BITS(Position(7, t), rawPosition(7, t));
  }
  EXPECT_EQ(Position(7, 1 - 0x1p53).getTValue(), 0.0);
  EXPECT_BITS(Position(5, 0.25 - 0x1p30), rawPosition(5 - (1 << 30), 0.25));
  EXPECT_BITS(GxBezierCurvePositionConstructor().constructPosition(3, 1.0), rawPosition(4, 0.0));
  support::Random random(1);
  for (int i = 0; i < 5000; ++i) {
    double const t = random.uniform(-1, 1) * (i % 3 == 0 ? 1e-17 : i % 3 == 1 ? 3.0 : 2000.0);
    int segment = 5;
    double u = i == 0 ? -0.0 : i < 5 ? i - 3 : t;
    Position const p(segment, u);
    for (; u < 0.0; --segment) u += 1.0;
    for (; u >= 1.0; ++segment) u -= 1.0;
    EXPECT_BITS(p, rawPosition(segment, u));
  }
}

TEST(GxBezierCurvePosition, ComparesFieldsExactlyAndSumsWithinATolerance) {
  Position const end = rawPosition(1, 1.0);
  Position const next(2, 0.0);
  EXPECT_TRUE(Position() < end && end < next && end <= next && next > end && next >= end);
  EXPECT_TRUE(end != next && !(end == next) && end.isEqual(next, 1e-9)) << "both are 2 as a number";
  Position const near(2, 0x1p-40);
  EXPECT_TRUE(next.isEqual(near, -1e-9) && !isEqual(next, near, -1e-9)) << "one takes magnitudes";
  EXPECT_FALSE(next.isEqual(near, 0x1p-40)) << "a difference on the tolerance is outside";
  for (int const sense : {0, 1, 2, 7}) {
    EXPECT_EQ(Position::reverseSense(sense), sense == 1 ? 2 : sense == 2 ? 1 : sense);
    EXPECT_EQ(Position::isCompatibleSense(1, sense), sense < 2);
  }
  GxBezierCurve const curve;
  EXPECT_EQ(curve.getSense({1, 0.5}, {1, 0.5 + 9e-10}), 0);
  EXPECT_EQ(curve.getSense({1, 0.5}, {1, 0.5 + 2e-9}), 1);
  EXPECT_EQ(curve.getSense({1, 0.5}, {1, 0.5 - 2e-9}), 2);
}

TEST(GxBezierCurve, IsAValueAndLocatesPositionsUpToTheEndAndElseTheOrigin) {
  GxBezierCurve curve = curveOf({support::sShape(), evenLine(100, 100, 200, 100)});
  EXPECT_BITS(curve.locateCurvePosition({0, 0.5}), Point(50, 50));
  EXPECT_BITS(curve.locateCurvePosition({2, 0.7}), Point(200, 100));
  EXPECT_BITS(curve.locateCurvePosition({3, 0.0}), Point(0, 0));
  EXPECT_BITS(curve.locateCurvePosition({-1, 0.5}), Point(0, 0));
  curve.setStrictIsClosed(7);
  GxBezierCurve copy = curve;
  EXPECT_EQ(copy.strictIsClosed(), 7);
  copy.setStrictIsClosed(0);
  EXPECT_TRUE(copy == curve) << "the flag is not compared";
  copy.moveCurve(GxVector<double>(1, -2));
  EXPECT_TRUE(copy != curve);
  copy.resize(2, 3);
  copy.flip();
  EXPECT_BITS(copy[0], support::bezier(2, 6, 82, -414, 122, 126, 202, -294));
}

TEST(GxBezierCurve, IsCloseSnapsEndsThatMeet) {
  GxBezierCurve curve = curveOf({evenLine(0, 0, 50, 80), evenLine(50, 80, 0, 0.5)});
  EXPECT_EQ(curve.isClose(), 1) << "ends 0.5 apart meet";
  EXPECT_BITS(curve[0][0], Point(0, 0.25));
  EXPECT_BITS(curve[1][3], Point(0, 0.25));
  EXPECT_EQ(curve.strictIsClosed(), 0);
  curve(1)[3] = Point(0, 0.7500001);
  EXPECT_EQ(curve.isClose(), 0);
  EXPECT_BITS(curve[0][0], Point(0, 0.25));
}

TEST(GxBezierCurve, BoxesHoldEverySampleAndExtremesTouchThem) {
  GxBezierCurve curve = support::outline("roman-g-outer");
  Point low, high, hullLow, hullHigh;
  ASSERT_EQ(curve.getMinMax(low, high), 0);
  curve.getBoundingBox(hullLow.xval(), hullLow.yval(), hullHigh.xval(), hullHigh.yval());
  EXPECT_TRUE(isPointInBox(low, hullLow.xval(), hullLow.yval(), high.xval(), high.yval(), 0));
  EXPECT_TRUE(isPointInBox(high, low.xval(), low.yval(), hullHigh.xval(), hullHigh.yval(), 0));
  for (int k = 0; k < 50 * static_cast<int>(curve.length()); ++k) {
    Point const p = curve.locateCurvePosition({k / 50, k % 50 / 50.0});
    EXPECT_TRUE(isPointInBox(p, low.xval(), low.yval(), high.xval(), high.yval(), 1e-9));
  }
  double t = 0.0;
  int segment = 0;
  ASSERT_EQ(curve.getCurveMinY(t, segment), 0);
  EXPECT_NEAR(curve[segment].bValue(t).yval(), low.yval(), 1e-9);
  // Of equally high segments the first wins; an empty curve leaves the outputs alone.
  GxBezierCurve const roof = support::polygonalCurve({{0, 0}, {10, 5}, {20, 0}, {30, 5}});
  EXPECT_EQ(roof.getCurveMaxY(t, segment), 0);
  EXPECT_EQ(GxBezierCurve().getCurveMinY(t, segment), -1);
  EXPECT_TRUE(segment == 0 && t == 1.0);
}

TEST(GxBezierCurve, LengthIsTheSumAndALineIsExactlyParallel) {
  EXPECT_NEAR(curveOf({support::quarterArc(100), evenLine(0, 100, 0, 40)}).curveLength(),
              157.0796 + 60, 0.1);
  for (double const off : {0.0, 1e-12}) {  // turning back is straight
    auto const line = curveOf({evenLine(0, 0, 96, 48), evenLine(96, 48, 48, 24 + off)});
    EXPECT_EQ(support::OpenCurve(line).isALine(), off == 0.0);
  }
}

}  // namespace
