// The curve as a container: values, segments, positions, whole-curve operations, measures.
#include "crv/crv.h"
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

#include <initializer_list>

#include <gtest/gtest.h>

namespace {

using Point = GxCoord<double>;
using Position = GxBezierCurvePosition;
using support::evenLine;

support::OpenCurve curveOf(std::initializer_list<GxBezier> segments) {
  support::OpenCurve curve;
  for (GxBezier const& s : segments) curve.getSegments().add(s);
  return curve;
}

TEST(GxBezierCurve, IsAValueWhoseFlagIsCopiedButNotCompared) {
  GxBezierCurve curve = curveOf({support::sShape(), evenLine(100, 100, 200, 100)});
  curve.setStrictIsClosed(7);
  GxBezierCurve assigned;
  assigned = curve;
  assigned = *&assigned;
  EXPECT_TRUE(assigned == curve && assigned.strictIsClosed() == 7);
  assigned.setStrictIsClosed(0);
  EXPECT_TRUE(assigned == curve);
  assigned(1)[2].xval() += 1e-9;
  EXPECT_TRUE(assigned != curve && !(assigned < curve) && !(assigned > curve));
  curve.setSegments(GxList<GxBezier>());
  EXPECT_TRUE(curve == GxBezierCurve() && curve.strictIsClosed() == 7);
}

TEST(GxBezierCurve, LocatesPositionsUpToTheEndAndElseTheOrigin) {
  GxBezierCurve const curve = curveOf({support::sShape(), evenLine(100, 100, 200, 100)});
  EXPECT_TRUE(curve.firstPos() == Position(0, 0.0) && curve.lastPos() == Position(2, 0.0));
  EXPECT_BITS(curve.locateCurvePosition(Position(0, 0.5)), Point(50, 50));
  EXPECT_BITS(curve.locateCurvePosition(curve.lastPos()), Point(200, 100));
  EXPECT_BITS(curve.locateCurvePosition(Position(2, 0.7)), Point(200, 100));
  EXPECT_BITS(curve.locateCurvePosition(Position(3, 0.0)), Point(0, 0));
  EXPECT_BITS(curve.locateCurvePosition(Position(-1, 0.5)), Point(0, 0));
  EXPECT_BITS(GxBezierCurve().locateCurvePosition(Position(0, 0.0)), Point(0, 0));
  EXPECT_EQ(curve.getSense(Position(0, 0.9), Position(1, 0.1)), 1);
  EXPECT_EQ(curve.getSense(Position(1, 0.1), Position(0, 0.9)), 2);
  EXPECT_EQ(curve.getSense(Position(1, 0.5), Position(1, 0.5 + 9e-10)), 0);
  EXPECT_EQ(curve.getSense(Position(1, 0.5), Position(1, 0.5 + 2e-9)), 1);
  EXPECT_EQ(curve.getSense(Position(1, 0.5), Position(1, 0.5 - 2e-9)), 2);
}

TEST(GxBezierCurve, MovesScalesAndMirrorsEveryControlPoint) {
  GxBezierCurve curve = curveOf({support::sShape(), evenLine(100, 100, 130, 70)});
  curve.moveCurve(GxVector<double>(1, -2));
  curve.resize(2, 3);
  curve.flip();
  EXPECT_BITS(curve[0], support::bezier(2, 6, 82, -414, 122, 126, 202, -294));
  EXPECT_BITS(curve[1], support::bezier(202, -294, 222, -264, 242, -234, 262, -204));
}

TEST(GxBezierCurve, IsCloseSnapsEndsThatMeet) {
  GxBezierCurve curve = curveOf({support::bezier(0, 0, 50, 80, 90, 80, 100, 0),
                                 support::bezier(100, 0, 90, -80, 50, -80, 0, 0.5)});
  EXPECT_EQ(curve.isClose(), 1) << "ends 0.5 apart meet";
  EXPECT_BITS(curve[0][0], Point(0, 0.25));
  EXPECT_BITS(curve[1][3], Point(0, 0.25));
  EXPECT_EQ(curve.strictIsClosed(), 0);
  curve(1)[3] = Point(0, 0.7500001);
  EXPECT_EQ(curve.isClose(), 0);
  EXPECT_BITS(curve[0][0], Point(0, 0.25)) << "ends that do not meet stay";
  EXPECT_EQ(GxBezierCurve().isClose(), 0);
}

TEST(GxBezierCurve, BoxesHoldEverySampleAndExtremesTouchThem) {
  GxBezierCurve curve = support::outline("roman-g-outer");
  Point low;
  Point high;
  ASSERT_EQ(curve.getMinMax(low, high), 0);
  double box[4];
  curve.getLocalBoundingBox(box[0], box[1], box[2], box[3]);
  EXPECT_TRUE(low == Point(box[0], box[1]) && high == Point(box[2], box[3]));
  for (int k = 0; k < 50 * static_cast<int>(curve.length()); ++k) {
    Point const p = curve.locateCurvePosition(Position(k / 50, k % 50 / 50.0));
    EXPECT_TRUE(isPointInBox(p, box[0], box[1], box[2], box[3], 1e-9)) << support::text(p);
  }
  double hull[4];
  curve.getBoundingBox(hull[0], hull[1], hull[2], hull[3]);
  EXPECT_TRUE(hull[0] <= box[0] && hull[1] <= box[1] && hull[2] >= box[2] && hull[3] >= box[3]);
  double t = 0.0;
  int segment = 0;
  ASSERT_EQ(curve.getCurveMaxY(t, segment), 0);
  EXPECT_NEAR(curve[segment].bValue(t).yval(), high.yval(), 1e-9);
  ASSERT_EQ(curve.getCurveMinY(t, segment), 0);
  EXPECT_NEAR(curve[segment].bValue(t).yval(), low.yval(), 1e-9);

  // Of equally high segments the first wins; an empty curve leaves the outputs alone.
  GxBezierCurve const roof =
      curveOf({evenLine(0, 0, 10, 5), evenLine(10, 5, 20, 0), evenLine(20, 0, 30, 5)});
  EXPECT_EQ(roof.getCurveMaxY(t, segment), 0);
  EXPECT_TRUE(segment == 0 && t == 1.0);
  EXPECT_EQ(GxBezierCurve().getCurveMinY(t, segment), -1);
  EXPECT_EQ(GxBezierCurve().getMinMax(low, low), -1);
  EXPECT_TRUE(segment == 0 && t == 1.0 && low == Point(box[0], box[1]));
  GxBezierCurve().getBoundingBox(hull[0], hull[1], hull[2], hull[3]);
  EXPECT_TRUE(hull[0] == 0.0 && hull[1] == 0.0 && hull[2] == 0.0 && hull[3] == 0.0);
}

TEST(GxBezierCurve, LengthIsTheSumAndALineIsExactlyParallel) {
  EXPECT_NEAR(curveOf({support::quarterArc(100), evenLine(0, 100, 0, 40)}).curveLength(),
              157.0796 + 60, 0.1);
  GxBezier const there = evenLine(0, 0, 96, 48);
  EXPECT_EQ(curveOf({there}).isALine(), 1);
  EXPECT_EQ(curveOf({there, evenLine(96, 48, 48, 24)}).isALine(), 1) << "turning back is straight";
  EXPECT_EQ(curveOf({there, evenLine(96, 48, 48, 24 + 1e-12)}).isALine(), 0);
  EXPECT_EQ(curveOf({there, support::sShape()}).isALine(), 0);
}

}  // namespace
