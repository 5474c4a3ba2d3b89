// Known answers of whole curves where an early version gave others.
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

}  // namespace
