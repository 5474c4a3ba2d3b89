// Polylines of whole curves.
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <iterator>
#include <list>

namespace {

using Point = GxCoord<double>;
using Positions = std::list<GxBezierCurvePosition>;

/// A straight curve along the x axis through these places.
GxBezierCurve along(std::vector<double> const& places) {
  std::vector<Point> vertices;
  for (double const x : places) vertices.emplace_back(x, 0.0);
  return support::polygonalCurve(vertices);
}

TEST(GxBezierCurvePolyline, SpacingIsCarriedAcrossJoinsOrInModeOneEvenAndWithoutTheEnd) {
  // The mode and the step, the ends of the segments, the points. Carried: 2 of 3 missing at the
  // join, the join once, too short, so at the end, no length, a point. Even: 2 are left, 2.5 are
  // left, less than 1 is left, one interval, a point.
  for (char const* text :
       {"0 3; 0 10 20; 0 3 6 9 12 15 18 20", "0 4; 0 8 16; 0 4 8 12 16",
        "0 4; 0 10 10.5 11 20; 0 4 8 12 16 20", "0 4; 0 10 10.5; 0 4 8 10.5",
        "0 4; 0 10 10 20; 0 4 8 12 16 20", "0 4; 5 5 20; 9 13 17 20", "1 3; 0 11; 0 2.75 5.5 8.25",
        "1 3; 0 11.5; 0 3 6 9", "1 5; 0 10.5; 0 5", "1 5; 0 3 6; 0 3", "1 5; 0 0 8; 0 4"}) {
    SCOPED_TRACE(text);
    auto const rows = support::table(text);
    GxBezierCurve curve = along(rows[1]);
    for (int const ex : {0, 1}) {
      GxList<Point> points;
      if (ex && rows[0][0] != 0) break;
      if (ex) curve.makeCurveEx(rows[0][1], rows[0][1] / 2, 0.1, points);
      if (!ex) curve.makeCurve(rows[0][1], points, int(rows[0][0]));
      ASSERT_EQ(points.length(), rows[2].size());
      for (unsigned i = 0; i < points.length(); ++i)
        EXPECT_NEAR(points[i].xval(), rows[2][i], 0.35);
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
  std::list<Point> points{Point(7, 7), Point(8, 8)};
  along({0, 3, 9}).makeSegments(3, points);
  GxBezierCurve().makeSegments(3, points);  // leaves the list alone
  std::list<Point> const expected{{7, 7}, {0, 0}, {1, 0}, {2, 0}, {3, 0}, {5, 0}, {7, 0}, {9, 0}};
  ASSERT_EQ(points.size(), expected.size());
  auto p = points.begin();
  for (Point const& q : expected) EXPECT_NEAR_POINT(*p++, q, 1e-12);
}

TEST(GxBezierCurvePolyline, HalvingStaysWithinToleranceOfEveryOutline) {
  for (char const* name : {"roman-g-outer", "bold-w-ends"}) {
    GxBezierCurve curve = support::outline(name);
    for (double const tolerance : {0.1, 5.0}) {
      SCOPED_TRACE(testing::Message() << name << ", tolerance " << tolerance);
      std::vector<Point> points(5);
      std::list<Point> list(3), located(2);
      Positions positions(1);
      curve.getPolyline(tolerance, points);
      curve.getPolyline(tolerance, list);
      curve.getPolyline(tolerance, located, positions, GxBezierPolylineCondition());
      EXPECT_TRUE(located == list && list == std::list<Point>(points.begin(), points.end()));
      ASSERT_EQ(positions.size(), points.size());
      EXPECT_TRUE(positions.front() == curve.firstPos() && positions.back() == curve.lastPos());
      auto at = positions.begin();
      for (std::size_t k = 1; k < points.size(); ++k) {
        auto const before = at++;
        EXPECT_NEAR_POINT(curve.locateCurvePosition(*at), points[k], 1e-9);
        EXPECT_TRUE(*before < *at) << "every join comes once";
        int const i = static_cast<int>(before->getSegmentNumber());
        double const end = at->getSegmentNumber() == i ? at->getTValue() : 1.0;
        for (double f = 0.125; f < 1.0; f += 0.125) {
          double const t = before->getTValue() + f * (end - before->getTValue());
          EXPECT_LE(distanceToLineSegment(points[k - 1], points[k], curve[i].bValue(t)), tolerance);
        }
      }
    }
  }
}

TEST(GxBezierCurvePolyline, TheCallersConditionDecidesWhereHalvingEnds) {
  struct EverythingIsALine : GxBezierPolylineCondition {
    int isALine(GxBezier const&, double) const override { return 1; }
    int isAPoint(GxBezier const& s, double) const override { return s[0] == s[3]; }
  };
  GxBezierCurve curve = along({0, 4, 4, 9});
  curve.getSegments().add(support::bezier(9, 0, 9, 90, 50, 90, 50, 0));
  std::list<Point> points;
  Positions positions;
  curve.getPolyline(0.1, points, positions, EverythingIsALine());
  EXPECT_TRUE(points == (std::list<Point>{{0, 0}, {4, 0}, {9, 0}, {50, 0}}));
  EXPECT_TRUE(positions == (Positions{{0, 0.0}, {1, 0.0}, {3, 0.0}, {4, 0.0}}));
}

}  // namespace
