// Orientation, closing, the parallel curve, and the curve against an interval of x.
#include "tests/support/expect.h"

namespace {

using namespace support;

/// Twice the area within the polygon of sampled points, positive when it runs counter-clockwise.
double signedArea(GxBezierCurve const& curve) {
  double sum = 0.0;
  for (int k = 0; k < 20 * static_cast<int>(curve.length()); ++k) {
    Point const p = curve.locateCurvePosition({k / 20, k % 20 / 20.0});
    Point const q = curve.locateCurvePosition({(k + 1) / 20, (k + 1) % 20 / 20.0});
    sum += p.xval() * q.yval() - p.yval() * q.xval();
  }
  return sum;
}

TEST(GxBezierCurveOrientation, AgreesWithTheArea) {
  std::vector<GxBezierCurve> const curves{
      outline("math-infinity-outer"),
      outline("roman-g-outer"),
      outline("roman-o-inner"),
      polygon({9, 9, 9, 0, 0, 0, 0, 9, 9, 9}),
      polygon({5, 9, 0, 9, 0, 0, 9, 0, 9, 9, 5, 9}),
      polygon({0, 0, 5, 5, 2, 2})};  // flat tops, and a straight curve
  for (GxBezierCurve const& before : curves) {
    GxBezierCurve curve(before);
    for (int turn = 0; turn < 2; ++turn) {
      int valid = 0;
      double const area = signedArea(curve);
      EXPECT_EQ(area < 0, curve.isClockwise(valid) != 0);
      EXPECT_EQ(1, valid);
      EXPECT_EQ(0, curve.changeOrientation(area > 0));  // the other way round
    }
    EXPECT_TRUE(before == curve && before.strictIsClosed() == curve.strictIsClosed());
  }
  EXPECT_EQ(-1, GxBezierCurve().changeOrientation(1));
}

TEST(GxBezierCurveOffset, ACircleKeepsItsShape) {
  for (double const distance : {10.0, -10.0, 50.0, -300.0}) {
    GxBezierCurve curve = circle(100), negated(curve);
    curve.offset(distance, 1, 0);
    ASSERT_EQ(4u, curve.length());
    for (int i = 0; i < 4; ++i) EXPECT_BITS(curve[i][3], curve[(i + 1) % 4][0]);
    for (int k = 0; k < 32; ++k) {  // left of a counter-clockwise way is inside
      double const radius = curve[k / 8].bValue(k % 8 / 8.0).distance({0, 0});
      EXPECT_NEAR(std::fabs(100 - distance), radius, 1e-3 * std::fabs(distance) + 0.1);
    }
    negated.offset(-distance, 0, 0);
    EXPECT_EQ(curve, negated);
  }
}

}  // namespace
