// Walking along a curve, and polylines of whole curves.
#include "tests/support/expect.h"
#include "tests/support/positions.h"
#include "tests/support/shapes.h"

#include <list>

namespace {

using support::at;
using support::flat;
using support::polygon;
using support::table;
using Point = GxCoord<double>;
using Position = GxBezierCurvePosition;

/// A straight curve along the x axis through these places.
GxBezierCurve along(std::vector<double> const& places) {
  std::vector<double> points;
  for (double const x : places) points.insert(points.end(), {x, 0.0});
  return polygon(points);
}

TEST(GxBezierCurveWalk, StepsAlongACoastLandAtTheirDistanceAndAddUp) {
  GxList<Point> const points = support::stroke("island-sulawesi");
  GxBezierCurve coast(&points, 2.0);
  for (int const forward : {1, 0}) {
    Position pos = forward ? coast.firstPos() : coast.lastPos();
    Position const end = forward ? coast.lastPos() : coast.firstPos();
    Position to;
    double sum = 0.0;
    for (double used; coast.findNextPos(pos, to, 1.0, forward, used, 0) == 0; pos = to) {
      sum += used;
      if (pos.getSegmentNumber() != to.getSegmentNumber()) continue;
      Point const from = coast.locateCurvePosition(pos);  // a step leaves a hundredth, squared
      ASSERT_NEAR(1.0, from.squaredDistance(coast.locateCurvePosition(to)), 0.0100001);
    }
    // A form with a limit adds to the sum, here all that is left.
    EXPECT_EQ(-1, coast.findNextPos(pos, end, to, 1e9, sum, forward));
    EXPECT_NEAR(coast.curveLength(), sum, 1.0);
  }
}

TEST(GxBezierCurvePolyline, TheCallersConditionDecidesWhereHalvingEnds) {
  struct EverythingIsALine : GxBezierPolylineCondition {
    int isALine(GxBezier const&, double) const override { return 1; }
    int isAPoint(GxBezier const& s, double) const override { return s[0] == s[3]; }
  };
  GxBezierCurve curve = along({0, 4, 4, 9});
  curve.getSegments().add(support::bezier(9, 0, 9, 90, 50, 90, 50, 0));
  std::list<Point> points(2);
  std::list<Position> positions(1);
  curve.getPolyline(0.1, points, positions, EverythingIsALine());
  EXPECT_TRUE(points == (std::list<Point>{{0, 0}, {4, 0}, {9, 0}, {50, 0}}));
  EXPECT_TRUE(positions == (std::list<Position>{{0, 0.0}, {1, 0.0}, {3, 0.0}, {4, 0.0}}));
  // Other forms, and the default one, agree.
  std::vector<Point> row(5);
  std::list<Point> list(3);
  curve.getPolyline(0.1, row);
  curve.getPolyline(0.1, list);
  curve.getPolyline(0.1, points, positions, GxBezierPolylineCondition());
  EXPECT_TRUE(points == list && list == std::list<Point>(row.begin(), row.end()));
  ASSERT_TRUE(points.size() == positions.size() && points.size() > 9);
  auto p = points.begin();
  for (Position const& pos : positions) EXPECT_BITS(curve.locateCurvePosition(pos), *p++);
}

}  // namespace
