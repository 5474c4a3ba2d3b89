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

double xAt(GxBezierCurve const& curve, Position const& pos) {
  return curve.locateCurvePosition(pos).xval();
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

TEST(GxBezierCurveWalk, TheReferenceIsNotMovedFromSegmentToSegment) {
  GxBezierCurve const curve = along({0, 3, 7, 27});
  Position to;
  // A step of 8 has -2 left at 7, squared; a given point keeps its distance.
  for (auto const& row : table("12 9 12; 8 9 8")) {
    ASSERT_EQ(0, curve.findNextPos({0, 0.0}, to, row[0], 1, 0));
    EXPECT_NEAR(row[1], xAt(curve, to), 0.01);
    ASSERT_EQ(0, curve.findNextPosFromPoint({0.0, 0.0}, {0, 0.0}, to, row[0], 1));
    EXPECT_NEAR(row[2], xAt(curve, to), 0.01);
  }
  // From the end the first segment comes before the last, and 27 are gone before the search.
  EXPECT_EQ(-1, curve.findNextPos(curve.lastPos(), to, 1.0, 0, 0));
}

TEST(GxBezierCurveWalk, LimitsAndTheSeamDecideHowFarItGoes) {
  GxBezierCurve curve = along({0, 10, 20, 30, 0});
  // Closed, from, limit, distance, forward, and the x where it ends, or -1. On a closed curve the
  // end is not across the seam; on an open one a walk with a limit beyond the end goes on at the
  // start, and one with a limit behind ends with the curve.
  for (auto const& row :
       table("0 0.25 0.75 4 1 6.5; 0 0.25 1.5 14 1 -1; 0 2.5 0 12 0 13; 0 1.5 0.5 4 1 19;"
             "0 0.5 1.5 4 0 1; 1 3.9 1 5 1 2; 1 0.2 3 5 0 3; 1 3.9 4 5 1 -1; 1 1.5 1.5 1 1 -1;"
             "0 4 0 4 0 4; 0 1.5 9.5 16 1 26; 0 0.5 2147483646 1e9 1 -1; 1 1.5 1.5 1 0 -1")) {
    SCOPED_TRACE(testing::Message() << row[1] << " to " << row[2]);
    curve.setStrictIsClosed(row[0] != 0);
    Position to(77, 0.5);
    int const code = curve.findNextPos(at(row[1]), at(row[2]), to, row[3], row[4] != 0);
    ASSERT_EQ(code, row[5] < 0 ? -1 : 0);
    EXPECT_TRUE(code == 0 ? IS_EQUAL(row[5], xAt(curve, to), 0.05) : flat(to) == 77.5);
  }
}

TEST(GxBezierCurveWalk, ShortChordsAreCounted) {
  GxBezierCurve const curve = along({0, 1000});
  Position to, plain;
  // A tenth each; beyond 30, about three units, and beyond 20 of them the margin lets more in.
  for (auto const& row : table("10 10; 29 29; 31 31; 90 93; 123 129; -5 0")) {
    double consumed = 77.0;
    ASSERT_EQ(0, curve.findNextPos({0, 0.25}, to, row[0], 1, consumed, 1));
    EXPECT_NEAR(250 + row[1], xAt(curve, to), 0.5);
    EXPECT_NEAR(row[1], consumed, 0.5);
    ASSERT_EQ(0, curve.findNextPos({0, 0.25}, plain, row[0], 1, 1));
    EXPECT_EQ(to, plain);
  }
  // Three of 35/11 fit into the 10 that are left: the last position reached, and the way there.
  double consumed = 77.0;
  EXPECT_EQ(-1, curve.findNextPos({0, 0.99}, to, 35.0, 1, consumed, 1));
  EXPECT_NEAR(999.55, xAt(curve, to), 0.05);
  EXPECT_NEAR(9.55, consumed, 0.05);
}

TEST(GxBezierCurvePolyline, SpacingIsCarriedAcrossJoinsOrInModeOneEvenAndWithoutTheEnd) {
  // The mode and the step, the ends of the segments, the points. Carried: 2 of 3 missing at the
  // join, the join once, too short, so at the end, no length, a point. Even:
  // 2 are left, 2.5 are left, less than 1 is left, one interval, a point.
  for (char const* text :
       {"0 3; 0 10 20; 0 3 6 9 12 15 18 20", "0 4; 0 8 16; 0 4 8 12 16",
        "0 4; 0 10 10.5 11 20; 0 4 8 12 16 20", "0 4; 0 10 10.5; 0 4 8 10.5",
        "0 4; 0 10 10 20; 0 4 8 12 16 20", "0 4; 5 5 20; 9 13 17 20", "1 3; 0 11; 0 2.75 5.5 8.25",
        "1 3; 0 11.5; 0 3 6 9", "1 5; 0 10.5; 0 5", "1 5; 0 3 6; 0 3", "1 5; 0 0 8; 0 4"}) {
    SCOPED_TRACE(text);
    auto const rows = table(text);
    for (bool const adaptive : {false, true}) {
      GxList<Point> points;
      GxBezierCurve curve = along(rows[1]);
      if (adaptive && rows[0][0] != 0) break;
      if (adaptive) curve.makeCurveEx(rows[0][1], rows[0][1] / 2, 0.1, points);
      if (!adaptive) curve.makeCurve(rows[0][1], points, int(rows[0][0]));
      ASSERT_EQ(points.length(), rows[2].size());
      for (unsigned i = 0; i < points.length(); ++i) {
        EXPECT_NEAR(points[i].xval(), rows[2][i], 0.35);
      }
    }
  }
  // An interval that lacks a tenth or less stays at the join.
  for (double const join : {7.9, 7.8}) {
    GxList<Point> points;
    along({0, join, 20}).makeCurve(4, points, 0);
    EXPECT_EQ(points[2].xval() == join, join == 7.9) << points[2].xval();
  }
}

TEST(GxBezierCurvePolyline, EqualParameterStepsReplaceTheLastPointOfTheList) {
  std::list<Point> points{Point(7, 0), Point(8, 0)};
  along({0, 3, 9}).makeSegments(3, points);
  GxBezierCurve().makeSegments(3, points);  // leaves the list alone
  auto p = points.begin();
  ASSERT_EQ(points.size(), 8u);
  for (double const x : {7, 0, 1, 2, 3, 5, 7, 9}) EXPECT_NEAR_POINT(*p++, Point(x, 0), 1e-12);
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
