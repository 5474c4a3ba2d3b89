// Known answers of whole curves where an early version gave others.
#include "tests/support/data.h"
#include "tests/support/open.h"
#include "tests/support/positions.h"
#include "tests/support/shapes.h"

namespace {

using support::bezier;
using support::curveOf;
using Position = GxBezierCurvePosition;

TEST(GxBezierCurveMended, OnAnOpenCurveAWalkWithALimitBehindEndsWithTheCurve) {
  GxBezierCurve const path = support::polygon({0, 0, 30, 0, 30, 30, 0, 0});
  struct {
    Position from, limit;
    int forward;
    double t;
  } const rows[] = {{{1, 0.2}, {0, 0.5}, 1, 0.29996}, {{1, 0.8}, {2, 0.5}, 0, 0.70004}};
  for (auto const& row : rows) {
    Position to[2];
    EXPECT_EQ(0, path.findNextPos(row.from, row.limit, to[0], 3.0, row.forward));
    GxCoord<double> const p = path.locateCurvePosition(row.from);
    EXPECT_EQ(0, path.findNextPosFromPoint(p, row.from, row.limit, to[1], 3.0, row.forward));
    EXPECT_EQ(1, to[0].getSegmentNumber());
    EXPECT_NEAR(row.t, to[0].getTValue(), 1e-5);
    EXPECT_TRUE(isEqual(to[0], to[1], 0.001));
  }
  // The end of the curve holds no step, or lies behind, too.
  Position to(7, 0.5);
  EXPECT_EQ(-1, path.findNextPos({1, 0.2}, {0, 0.5}, to, 1e3, 1));
  EXPECT_EQ(-1, path.findNextPos({5, 0.2}, {4, 0.5}, to, 3.0, 1));
  EXPECT_EQ(Position(7, 0.5), to);
}

/// A hundred segments along the x axis, each waving by a height.
GxBezierCurve wave(double length, double height) {
  GxBezierCurve curve;
  for (int i = 0; i < 100; ++i) {
    curve.getSegments().add(bezier(length * i, 0, length * (i + 1 / 3.0), height,
                                   length * (i + 2 / 3.0), -height, length * (i + 1), 0));
  }
  return curve;
}

TEST(GxBezierCurveMended, ShortChordsTakeAQuarterOfABillionEvaluations) {
  Position to;
  EXPECT_EQ(0, wave(1e4, 1e4 / 3).findNextPos({0, 0.0}, to, 5e5, 1, 1));
  EXPECT_EQ(48, to.getSegmentNumber());
  EXPECT_NEAR(0.0755, to.getTValue(), 1e-4);
}

TEST(GxBezierCurveMended, EvaluationsThatMeetSubnormalNumbersCountTwentyfold) {
  double reached[2];
  for (int i : {0, 1}) {
    Position to;
    EXPECT_EQ(-1, wave(1e5, i * 1e-310).findNextPos({0, 0.0}, to, 1e7, 1, 1));
    reached[i] = support::flat(to);
  }
  EXPECT_NEAR(20.0, reached[0] / reached[1], 0.1);
}

TEST(GxBezierCurveMended, AFitOfOnePointIsASegmentThatIsAPoint) {
  GxList<GxCoord<double>> points;
  for (int i = 0; i < 5; ++i) points.add(GxCoord<double>(i, 2 * i));
  for (double const error : {4.0, 0.25, 0.0, -1.0}) {
    support::OpenCurve curve;
    curve.setStrictIsClosed(1);
    curve.bezierPolyFit(&points, 3, 3, {1, 0}, {-1, 0}, error);
    ASSERT_EQ(1u, curve.length());
    EXPECT_EQ(support::pointLike(3, 6), curve[0]);
    EXPECT_EQ(0, curve.strictIsClosed());
    curve.bezierPolyFit(&points, 5, 5, {1, 0}, {-1, 0}, error);
    EXPECT_EQ(1u, curve.length());
  }
}

TEST(GxBezierCurveMended, TheOffsetValueMovesTheExtremePlace) {
  GxBezierCurve circle = support::circle(100);
  GxBezierCurve square = support::polygon({0, 0, 30, 0, 30, 30, 0, 30, 0, 0});
  GxBezierCurve const rise = support::polygon({0, 0, 60, 80});
  double value = 7.0;
  EXPECT_EQ(-1, GxBezierCurve().calculateOffsetValue(value, {0, 1}, 9, 1));
  EXPECT_EQ(-1, circle.calculateOffsetValue(value, {0, 1e-10}, 9, 1));
  EXPECT_EQ(-1, rise.calculateOffsetValue(value, {3, 4}, 9, 1));  // its ends move across
  EXPECT_EQ(7.0, value);
  for (GxVector<double> const& v : {GxVector<double>(0.5, 0), {0, -3}, {0, 1}, {-2, 0}}) {
    for (int const outwards : {1, 0}) {
      for (GxBezierCurve* const curve : {&circle, &square}) {
        curve->setStrictIsClosed(1);
        ASSERT_EQ(0, curve->calculateOffsetValue(value, v, 9, outwards));
        EXPECT_NEAR(outwards ? -9 : 9, value, 1e-9);  // the outside is on the right
        curve->reverse();
        ASSERT_EQ(0, curve->calculateOffsetValue(value, v, 9, outwards));
        EXPECT_NEAR(outwards ? 9 : -9, value, 1e-9);
        curve->reverse();
      }
    }
  }
  // The end of a slope moves obliquely, so it moves farther.
  GxBezierCurve moved(rise);
  ASSERT_EQ(0, rise.calculateOffsetValue(value, {0, 1}, 9, 1));
  moved.offset(value, 1, 0);
  EXPECT_NEAR(89, moved[0][3].yval(), 1e-9);
}

TEST(GxBezierCurveMended, TolerancesHoldFromBothSides) {
  // Squared lengths of 4.8e-10 and 2e-9: a handle, and the direction of a line.
  for (bool const isShort : {true, false}) {
    double const h = isShort ? 2.2e-5 : 4.5e-5;
    GxVector<double> in, out;
    GxBezierCurve const curve = curveOf({bezier(0, 0, h, 0, 100, 100 - h, 100, 100)});
    ASSERT_EQ(0, curve.findVelocityVectors({0, 0.0}, in, out));
    EXPECT_NEAR(isShort ? 100.0 : 3 * h, out.xval(), 1e-9);
    ASSERT_EQ(0, curve.findVelocityVectors({1, 0.0}, in, out));
    EXPECT_NEAR(isShort ? 100.0 : 3 * h, in.yval(), 1e-4);

    Position to;
    GxBezierCurve const slope = support::polygon({0, 0, 10, 100});
    EXPECT_EQ(
        0, slope.findFirstGeometricLineIntersection({3, 80}, {0, h}, {0, 0.0}, {1, 0.0}, to, 1e-9));
    EXPECT_NEAR(isShort ? 0.8 : 0.3, to.getTValue(), 1e-9);
  }
}

/// The nearest point by trying the segments one by one: the first, the last, then the others.
GxCoord<double> plainNearest(GxBezierCurve const& curve, GxCoord<double> const& p) {
  int const last = static_cast<int>(curve.length()) - 1;
  GxCoord<double> best, nearest;
  curve[0].findNearestPoint(p, best);
  auto const consider = [&](int k) {
    curve[k].findNearestPoint(p, nearest);
    if (p.squaredDistance(nearest) < p.squaredDistance(best)) best = nearest;
  };
  consider(last);
  for (int k = 1; k < last && !(p.squaredDistance(best) < 0.5); ++k) consider(k);
  return best;
}

TEST(GxBezierCurveMended, ManySegmentsAreSearchedAsIfOneByOne) {
  GxList<GxCoord<double>> const points = support::stroke("island-sri-lanka");
  GxBezierCurve coast(&points, 0.5), mirrored(coast);
  ASSERT_LT(100u, coast.length());
  for (GxBezier& s : mirrored.getSegments()) {
    for (int i = 0; i < 4; ++i) s[i] = GxCoord<double>(s[i].yval(), s[i].xval());
  }
  GxList<GxCoord<double>> crossings, plainCrossings;
  coast.findIntersections(mirrored, crossings);
  for (GxBezier const& theirs : mirrored.getSegments()) {
    for (GxBezier& ours : coast.getSegments()) ours.findIntersections(theirs, plainCrossings);
  }
  EXPECT_LT(10u, crossings.length());
  EXPECT_EQ(plainCrossings, crossings);

  double least = coast[0][0].squaredDistance(mirrored[0][0]);
  for (GxBezier const& s : coast.getSegments()) {
    for (double t = 0.0; t < 1.05; t += 0.1) {
      GxCoord<double> const p = s.bValue(t), best = plainNearest(mirrored, p);
      GxCoord<double> nearest;
      mirrored.findNearestPoint(p, nearest);
      ASSERT_EQ(best, nearest);
      least = min(least, p.squaredDistance(best));
    }
  }
  EXPECT_EQ(least, coast.getMinSqDistance(mirrored));
}

}  // namespace
