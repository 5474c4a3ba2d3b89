#include "crv/accurate/walk.h"

#include "crv/accurate/arcLength.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

namespace {

using crv::Measure;
using crv::walk;
using support::bezier;
using support::curveOf;
using support::kInf;
using support::kNaN;
using support::Position;

GxBezierCurve closedCircle() { return support::closed(support::circle(100)); }

TEST(AccurateWalk, ByLengthTakesLapsAndEndsWhereAnOpenCurveDoes) {
  GxBezierCurve const circle = closedCircle();
  crv::CurveLengths const lengths(circle, 0);
  double const lap = lengths.total();
  Position const from(1, 0.25);
  for (double const way : {0.3, -0.3, 0.9, 2.5, -7.1}) {
    auto const to = walk(circle, from, way * lap, Measure::length, 1e-9);
    ASSERT_TRUE(to);
    double const walked = lengths.lengthAt(*to) - lengths.lengthAt(from) - way * lap;
    EXPECT_NEAR(walked - lap * std::round(walked / lap), 0, 1e-9 * (1 + std::fabs(way)));
  }
  GxBezierCurve const line = support::polygon({0, 0, 3, 0, 3, 4, 0, 0});
  EXPECT_BITS(*walk(line, Position(0, 0.0), 12, Measure::length, 0), Position(3, 0.0));
  EXPECT_BITS(*walk(line, Position(2, 0.0), -7, Measure::length, 0), Position(0, 0.0));
  EXPECT_BITS(*walk(line, Position(1, 0.0), 0, Measure::length, 0), Position(1, 0.0));
  EXPECT_FALSE(walk(line, Position(0, 0.0), 12.001, Measure::length, 1e-6));
}

TEST(AccurateWalk, ByChordFindsTheFirstPlaceAtTheDistance) {
  GxBezierCurve const circle = closedCircle();
  for (double const distance : {1e-6, 70.0, -70.0, 199.0}) {
    auto const to = walk(circle, Position(3, 0.9), distance, Measure::chord, 0);
    ASSERT_TRUE(to);
    auto const p = circle.locateCurvePosition(Position(3, 0.9));
    EXPECT_NEAR(circle.locateCurvePosition(*to).distance(p), std::fabs(distance), 1e-12);
    EXPECT_EQ(to->getSegmentNumber(), distance == 70 ? 0 : distance > 100 ? 1 : 3);
  }
  EXPECT_FALSE(walk(circle, Position(0, 0.0), 201, Measure::chord, 0));

  // Out and back: the first of three positions at a distance, and one that is only touched.
  GxBezierCurve const back = support::polygon({0, 0, 8, 0, 4, 0, 10, 0});
  EXPECT_EQ(walk(back, Position(0, 0.0), 6, Measure::chord, 0)->getSegmentNumber(), 0);
  EXPECT_BITS(*walk(back, Position(0, 0.0), 8, Measure::chord, 0), Position(1, 0.0));
  EXPECT_EQ(walk(back, Position(3, 0.0), -5, Measure::chord, 0)->getSegmentNumber(), 2);
  EXPECT_BITS(*walk(back, Position(0, 0.0), 10, Measure::chord, 0), Position(3, 0.0));
  EXPECT_FALSE(walk(back, Position(0, 0.0), -1, Measure::chord, 0));
}

TEST(AccurateWalk, WhatAsksForNothingGetsNothing) {
  GxBezierCurve const circle = closedCircle();
  for (Measure const measure : {Measure::length, Measure::chord}) {
    EXPECT_FALSE(walk(circle, Position(0, 0.0), kNaN, measure, 0));
    EXPECT_FALSE(walk(circle, Position(0, 0.0), kInf, measure, 0));
    EXPECT_FALSE(walk(circle, Position(4, 0.5), 1, measure, 0));
    EXPECT_FALSE(walk(circle, Position(), 1, measure, 0));
    EXPECT_FALSE(walk(GxBezierCurve(), Position(0, 0.0), 1, measure, 0));
    EXPECT_FALSE(
        walk(curveOf({bezier(0, 0, kNaN, 0, 1, 1, 2, 2)}), Position(0, 0.0), 1, measure, 0));
    EXPECT_FALSE(walk(curveOf({GxBezier()}), Position(0, 0.0), 1, measure, 0));
  }
  EXPECT_FALSE(walk(circle, Position(0, 0.0), 0, Measure::chord, 0));
}

}  // namespace
