// Polylines of whole curves.
#include "crv/crv.h"
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <list>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Point = GxCoord<double>;
using support::evenLine;

/// A straight curve along the x axis through these places.
GxBezierCurve along(std::initializer_list<double> places) {
  GxBezierCurve curve;
  for (auto to = places.begin() + 1; to != places.end(); ++to) {
    curve.getSegments().add(evenLine(to[-1], 0, *to, 0));
  }
  return curve;
}

void expectPlaces(GxList<Point> const& points, std::vector<double> const& expected) {
  std::vector<double> places;
  for (unsigned i = 0; i < points.length(); ++i) places.push_back(points[i].xval());
  ASSERT_EQ(places.size(), expected.size()) << testing::PrintToString(places);
  for (std::size_t i = 0; i < places.size(); ++i) EXPECT_NEAR(places[i], expected[i], 0.35) << i;
}

TEST(GxBezierCurvePolyline, SpacingIsCarriedAcrossJoinsOrInModeOneEvenAndWithoutTheEnd) {
  struct Case {
    GxBezierCurve curve;
    double step;
    int mode;
    std::vector<double> expected;
  };
  Case const cases[] = {
      {along({0, 10, 20}), 3, 0, {0, 3, 6, 9, 12, 15, 18, 20}},  // 2 of 3 are missing at the join
      {along({0, 8, 16}), 4, 0, {0, 4, 8, 12, 16}},              // the join is output once
      {along({0, 10, 10.5, 11, 20}), 4, 0, {0, 4, 8, 12, 16, 20}},  // too short to end a step
      {along({0, 10, 10.5}), 4, 0, {0, 4, 8, 10.5}},                // and the last: its end
      {along({0, 10, 10, 20}), 4, 0, {0, 4, 8, 12, 16, 20}},        // without length
      {along({5, 5, 20}), 4, 0, {9, 13, 17, 20}},    // a lone point counts as no step
      {along({0, 11}), 3, 1, {0, 2.75, 5.5, 8.25}},  // 2 are left: spaced anew, evenly
      {along({0, 11.5}), 3, 1, {0, 3, 6, 9}},        // 2.5 are left: near enough to the step
      {along({0, 10.5}), 5, 1, {0, 5}},              // less than 1 is left: merged
      {along({0, 3, 6}), 5, 1, {0, 3}},              // one interval: the start alone
      {along({0, 0, 8}), 5, 1, {0, 4}},              // a point: nothing
  };
  for (Case const& k : cases) {
    SCOPED_TRACE(testing::Message() << "step " << k.step << ", end " << k.expected.back());
    GxBezierCurve curve = k.curve;
    GxList<Point> points;
    curve.makeCurve(k.step, points, k.mode);
    expectPlaces(points, k.expected);
    points.empty();
    if (k.mode == 0) curve.makeCurveEx(k.step, k.step / 2, 0.1, points);
    if (k.mode == 0) expectPlaces(points, k.expected);
  }
}

TEST(GxBezierCurvePolyline, AnIntervalThatLacksATenthOrLessStaysAtTheJoin) {
  for (double const join : {7.9, 7.8}) {
    GxBezierCurve curve = along({0, join, 20});
    GxList<Point> points;
    curve.makeCurve(4, points, 0);
    EXPECT_EQ(points[2].xval() == join, join == 7.9) << points[2].xval();
  }
}

TEST(GxBezierCurvePolyline, EqualParameterStepsReplaceTheLastPointOfTheList) {
  GxBezierCurve curve = along({0, 3, 9});
  std::list<Point> points{Point(7, 7), Point(8, 8)};
  curve.makeSegments(3, points);
  std::list<Point> const expected{{7, 7}, {0, 0}, {1, 0}, {2, 0}, {3, 0}, {5, 0}, {7, 0}, {9, 0}};
  ASSERT_EQ(points.size(), expected.size());
  auto p = points.begin();
  for (Point const& q : expected) EXPECT_NEAR_POINT(*p++, q, 1e-12);
  GxBezierCurve().makeSegments(3, points);
  EXPECT_EQ(points.size(), expected.size()) << "an empty curve leaves the list alone";
}

TEST(GxBezierCurvePolyline, HalvingStaysWithinToleranceOfEveryOutline) {
  for (char const* name : {"roman-g-outer", "bold-w-ends"}) {
    GxBezierCurve curve = support::outline(name);
    for (double const tolerance : {0.1, 5.0}) {
      SCOPED_TRACE(testing::Message() << name << ", tolerance " << tolerance);
      std::vector<Point> points(5);
      std::list<Point> list(3);
      std::list<Point> located(2);
      std::list<GxBezierCurvePosition> positions(1);
      curve.getPolyline(tolerance, points);
      curve.getPolyline(tolerance, list);
      curve.getPolyline(tolerance, located, positions, GxBezierPolylineCondition());
      ASSERT_EQ(list.size(), points.size());
      ASSERT_EQ(located.size(), points.size());
      ASSERT_EQ(positions.size(), points.size());
      EXPECT_TRUE(positions.front() == curve.firstPos() && positions.back() == curve.lastPos());

      auto next = list.begin();
      auto at = positions.begin();
      for (std::size_t k = 0; k < points.size(); ++k, ++at) {
        EXPECT_BITS(*next++, points[k]);
        EXPECT_NEAR_POINT(curve.locateCurvePosition(*at), points[k], 1e-9);
        if (k == 0) continue;
        auto const before = std::prev(at);
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
  std::list<GxBezierCurvePosition> positions;
  curve.getPolyline(0.1, points, positions, EverythingIsALine());
  std::vector<Point> const expected{{0, 0}, {4, 0}, {9, 0}, {50, 0}};
  std::vector<GxBezierCurvePosition> const places{{0, 0.0}, {1, 0.0}, {3, 0.0}, {4, 0.0}};
  ASSERT_EQ(points.size(), 4u);
  EXPECT_TRUE(std::equal(points.begin(), points.end(), expected.begin()));
  ASSERT_EQ(positions.size(), 4u);
  EXPECT_TRUE(std::equal(positions.begin(), positions.end(), places.begin()));
}

}  // namespace
