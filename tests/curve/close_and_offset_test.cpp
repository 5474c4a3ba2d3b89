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

using Close = int (GxBezierCurve::*)();

/// That closing one polygon makes another.
void expectClosed(Close close, Numbers const& open, Numbers const& closed, int result = 1) {
  SCOPED_TRACE(testing::PrintToString(open));
  GxBezierCurve curve = polygon(open);
  GxBezierCurve const expected = polygon(closed);
  EXPECT_EQ(result, (curve.*close)());
  EXPECT_EQ(expected.length() > 0, curve.strictIsClosed() != 0);
  EXPECT_EQ(curve.strictIsClosed(), (curve.*close)()) << "once closed, nothing is done";
  ASSERT_EQ(expected.length(), curve.length());
  for (int i = 0; i < static_cast<int>(curve.length()); ++i) {
    EXPECT_NEAR_POINT(expected[i][0], curve[i][0], 1e-6);
    EXPECT_NEAR_POINT(expected[i][3], curve[i][3], 1e-6);
  }
}

TEST(GxBezierCurveClosing, TheFlagIsSetAndEndsThatLieApartAreBridged) {
  for (Close const close : {&GxBezierCurve::makeClosedCurve, &GxBezierCurve::makeNiceClosedCurve}) {
    expectClosed(close, {0, 0, 30, 0, 30, 20}, {0, 0, 30, 0, 30, 20, 0, 0});
    expectClosed(close, {0, 0, 30, 0, 30, 30, 0, 0.11}, {0, 0, 30, 0, 30, 30, 0, 0.11, 0, 0});
    expectClosed(close, {0, 0, 30, 0, 30, 30, 0, 0.09}, {0, 0, 30, 0, 30, 30, 0, 0.09});
    // A line and a point enclose nothing.
    expectClosed(close, {0, 0, 30, 0}, {0, 0, 30, 0, 0, 0}, 0);
    expectClosed(close, {3, 4, 3, 4}, {3, 4, 3, 4}, 0);
    expectClosed(close, {}, {}, 0);
  }
}

TEST(GxBezierCurveClosing, NiceClosingTrimsEndsThatOverlap) {
  Close const close = &GxBezierCurve::makeNiceClosedCurve;
  // The last line crosses the first at x and runs on by y; which of the two are cut off there.
  for (Row const row : table("14.2 14.2 0 0; 9.9 14.2 0 1; 14.2 9.9 1 0; 10.1 10.1 1 1;"
                             "14.1 14.1 1 1; 12 19.9 1 1; 19.9 12 1 1; 12 20.1 0 0; 20.1 12 0 0")) {
    double const x = row[0], y = -row[1], start = row[2] * x, end = row[3] != 0 ? 0 : y;
    expectClosed(close, {0, 0, 100, 0, x, 80, x, y}, {start, 0, 100, 0, x, 80, x, end, start, 0});
  }
  // End points that are the nearest: of their own segments, and of whole segments that go.
  expectClosed(close, {0, 0, 100, 0, 50, 50, -5, -5}, {0, 0, 100, 0, 50, 50, 0, 0, 0, 0});
  expectClosed(close, {0, 0, 100, 0, -60, 10, -5, 1}, {0, 0, 100, 0, -60, 10, -5, 1, 0, 0});
  expectClosed(close, {0, 0, 100, 0, 3, 3, 5, 60}, {0, 0, 100, 0, 3, 3, 0, 0});
  expectClosed(close, {0, 60, 0, 3, 100, 0, 3, -3}, {3, -3, 0, 3, 100, 0, 3, -3});
  expectClosed(close, {0, 0, 0, 6, 100, 50, -10, 5, -4, 18}, {0, 6, 100, 50, -10, 5, 0, 6});
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

TEST(GxBezierCurveOffset, ModesAndSmallDistances) {
  // The distance, the mode, whether it cuts and whether it offsets.
  for (Row const row : table(
           "10 0 0 1; 10 -3 0 1; 10 1 1 1; 10 2 1 0; 0.4 2 1 0; 0.4 1 0 0; 10 3 0 0; -0.4 0 0 0")) {
    GxBezierCurve curve = curveOf({bezier(0, 0, 0, 100, 100, 100, 100, 0)});
    curve.offset(row[0], 1, int(row[1]));
    EXPECT_EQ(row[2], curve.length() > 1);
    EXPECT_EQ(row[3], curve[0][0] != Point(0, 0));
  }
}

TEST(GxBezierCurveOffset, BentSegmentsAreCutAtExtremesAcrossAChordThatFalls) {
  // The handles over a chord of 100 and the pieces: two extremes, a handle turned by 30.1 degrees
  // is bent, one that points back is not, the last extreme is before 0.9, the first beyond a tenth
  // of it.
  for (Row const row : table(R"(30 120 70 -120 3; 0 80 70 0 2; 30 17.3 70 0 1; 30 17.5 70 0 2;
            30 0 70 17.3 1; 30 0 70 17.5 2; -30 5 70 0 1; 0 0 70 60 2; 30 60 100 0 2;
            30 20 70 -116 3; 30 20 70 -122 2; 30 72 70 -20 3; 30 76 70 -20 2)")) {
    for (double const angle : {0.0, -0.7, 0.7}) {
      GxBezier s = bezier(0, 0, row[0], row[1], row[2], row[3], 100, 0);
      for (int k = 0; k < 4; ++k) s[k].rotate(angle, {0, 0});
      // A rising chord is turned up instead of level.
      Vector const level(std::cos(angle), -std::fabs(std::sin(angle)));
      GxBezierCurve curve = curveOf({s});
      curve.offset(0, 1, 2);
      int const n = static_cast<int>(curve.length());
      EXPECT_TRUE(n == row[4] || angle > 0) << n;
      EXPECT_TRUE(s[0] == curve[0][0] && s[3] == curve[n - 1][3]);
      for (int i = 1; i < n; ++i) {
        EXPECT_BITS(curve[i - 1][3], curve[i][0]);
        EXPECT_NEAR(0, level.cross(curve[i].dValue(0)), 1e-6);
      }
    }
  }
}

TEST(GxBezierCurveOffset, GapsAreSnappedBridgedOrRounded) {
  // The segments, which one was added, its handles, the distance; the lines: ends 1.9 and 2.1
  // apart, a sharp apex at the seam, where the lesser limit holds, and not, two lopsided corners.
  for (Row const row : table("3 2 0 0 -10  0 0 50 0 51.9 0 99 0; 4 1 0 0 -10  0 0 50 0 52.1 0 99 0;"
                             "6 5 10.9758 10.9758 -10  0 100 -25 0 -25 0 25 0 25 0 0 100;"
                             "6 1 11.3136 11.3136 -10  25 0 0 100 0 100 -25 0 -25 0 25 0;"
                             "4 1 20.0998 6.0299 -10  0 0 50 0 90 -5 90 60;"
                             "4 1 6.0299 20.0998 10  90 60 90 -5 50 0 0 0")) {
    GxBezierCurve curve;
    for (std::size_t i = 5; i < row.size(); i += 4) {
      curve.getSegments().add(evenLine(row[i], row[i + 1], row[i + 2], row[i + 3]));
    }
    curve.offset(row[4], 1, 0);
    ASSERT_EQ(row[0], curve.length());
    GxBezier const& added = curve[int(row[1])];
    int const n = int(row[0]);
    for (int i = 0; i < n; ++i) EXPECT_BITS(curve[i][3], curve[(i + 1) % n][0]);
    EXPECT_NEAR(row[2], added[0].distance(added[1]), 1e-4);
    EXPECT_NEAR(row[3], added[2].distance(added[3]), 1e-4);
  }
}

TEST(GxBezierCurveXRange, CodesAndTheFlagThatOutlivesACall) {
  GxBezierCurve const right = polygon({0, 0, 50, 5, 100, 0}), left = polygon({100, 0, 50, 5, 0, 0});
  GxBezierCurve const wrong = polygon({100, 0, 30, 5, 50, 0, 0, 0});
  // The interval, the code, and that of the curve reversed. A reversed curve that fails leaves its
  // mark on the next call, on any curve, and only there.
  for (Row const c : table("0 100 1 1; 80 20 1 1; 20 120 4 2; -20 80 2 4; -20 120 7 7")) {
    EXPECT_EQ(c[2], right.wellDefinedDetection(c[0], c[1]));
    EXPECT_EQ(c[3], left.wellDefinedDetection(c[0], c[1]));
    EXPECT_EQ(0, wrong.wellDefinedDetection(c[0], c[1]));
    EXPECT_EQ(0, GxBezierCurve().wellDefinedDetection(c[0], c[1]));
    EXPECT_EQ(c[3], right.wellDefinedDetection(c[0], c[1]));
    EXPECT_EQ(c[2], right.wellDefinedDetection(c[0], c[1]));
  }
  // Only segments after the first must run to the right.
  EXPECT_EQ(1, polygon({10, 0, 0, 5, 90, 0}).wellDefinedDetection(20, 80));
}

TEST(GxBezierCurveXRange, TheStartIsProlonged) {
  // The segment, x, the result and the point. The fourth runs upright: level instead; the last is a
  // point and leaves the output alone.
  for (Row const row : table("10 10 20 20 30 0 40 0 0 0 0 0; 10 10 20 20 30 0 40 0 30 1 30 30;"
                             "10 10 10 10 20 20 40 0 5 0 5 5; 10 10 10 20 20 20 40 0 5 0 5 10;"
                             "10 10 0 0 0 0 0 0 5 1 5 5; 10 10 10 10 10 10 10 10 5 -1 7 8")) {
    Point out(7, 8);
    EXPECT_EQ(row[9], curveOf({segmentOf(row)}).extendLine(out, row[8], 1e-9));
    EXPECT_NEAR_POINT(Point(row[10], row[11]), out, 1e-9);
  }
}

}  // namespace
