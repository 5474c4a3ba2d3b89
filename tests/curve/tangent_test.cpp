// Handles, velocities and accelerations on both sides of a position.
#include "crv/crv.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

namespace {

using support::bezier;
using Pos = GxBezierCurvePosition;
using Vec = GxVector<double>;

/// Three segments with corners at the joins, all derivatives different.
GxBezierCurve kinkedCurve() {
  return support::curveOf({bezier(0, 0, 10, 30, 40, 50, 60, 10),
                           bezier(60, 10, 70, 90, 20, 80, 90, 60),
                           bezier(90, 60, 95, 20, 40, -30, 0, 0)});
}

struct Side {
  int segment;
  double t;
};

Pos direct(int segment, double t) {
  return GxBezierCurvePositionConstructor().constructDirectPosition(segment, t);
}

bool same(Vec const& a, Vec const& b) { return a.xval() == b.xval() && a.yval() == b.yval(); }

TEST(GxBezierCurveTangent, SidesAreChosenAtJoinsAndEnds) {
  struct Case {
    Pos pos;
    int closed;
    Side in, out;        // of both velocities
    Side accIn, accOut;  // of the acceleration
  };
  Case const cases[] = {
      {{1, 0.3}, 0, {1, 0.3}, {1, 0.3}, {1, 0.3}, {1, 0.3}},
      {{1, 0.0}, 0, {0, 1.0}, {1, 0.0}, {0, 1.0}, {1, 0.0}},
      // Just above a join; just below it the way out is that of the same segment's start.
      {{1, 0.0004}, 0, {0, 1.0}, {1, 0.0}, {1, 0.0004}, {1, 0.0004}},
      {{1, 0.9996}, 0, {1, 1.0}, {1, 0.0}, {1, 0.9996}, {1, 0.9996}},
      {{1, 0.9994}, 0, {1, 0.9994}, {1, 0.9994}, {1, 0.9994}, {1, 0.9994}},
      {direct(1, 1.0), 0, {1, 1.0}, {1, 0.0}, {1, 1.0}, {1, 1.0}},
      // The ends of an open and of a closed curve, and places beside them.
      {{0, 0.0}, 0, {0, 0.0}, {0, 0.0}, {0, 0.0}, {0, 0.0}},
      {{0, 0.0}, 1, {2, 1.0}, {0, 0.0}, {2, 1.0}, {0, 0.0}},
      {{0, 0.0004}, 1, {2, 1.0}, {0, 0.0}, {0, 0.0004}, {0, 0.0004}},
      {{3, 0.0}, 0, {2, 1.0}, {2, 1.0}, {2, 1.0}, {2, 1.0}},
      {{3, 0.0}, 1, {2, 1.0}, {0, 0.0}, {2, 1.0}, {0, 0.0}},
      {{2, 0.9996}, 0, {2, 1.0}, {2, 1.0}, {2, 0.9996}, {2, 0.9996}},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(support::text(c.pos) + (c.closed ? " closed" : " open"));
    GxBezierCurve curve = kinkedCurve();
    curve.setStrictIsClosed(c.closed);
    Vec in, out;
    ASSERT_EQ(0, curve.findVelocityVectors(c.pos, in, out));
    EXPECT_TRUE(same(in, curve[c.in.segment].dValue(c.in.t)));
    EXPECT_TRUE(same(out, curve[c.out.segment].dValue(c.out.t)));
    ASSERT_EQ(0, curve.getVelocityVectors(c.pos, in, out));
    EXPECT_TRUE(same(in, -curve[c.in.segment].dValue(c.in.t)));
    EXPECT_TRUE(same(out, curve[c.out.segment].dValue(c.out.t)));
    ASSERT_EQ(0, curve.getAccelerationVectors(c.pos, in, out));
    EXPECT_TRUE(same(in, -curve[c.accIn.segment].ddValue(c.accIn.t)));
    EXPECT_TRUE(same(out, curve[c.accOut.segment].ddValue(c.accOut.t)));
  }
}

TEST(GxBezierCurveTangent, OutsideTheCurveOnlyFindVelocityVectorsTouchesItsOutputs) {
  struct Case {
    GxBezierCurve curve;
    Pos pos;
    bool velocity;  // within the tolerance of an end
  };
  Case const cases[] = {{kinkedCurve(), {3, 0.001}, false},  {kinkedCurve(), {-1, 0.5}, false},
                        {kinkedCurve(), {4, 0.0}, false},    {kinkedCurve(), {3, 0.0004}, true},
                        {kinkedCurve(), {-1, 0.9996}, true}, {GxBezierCurve(), {0, 0.0}, false}};
  for (Case const& c : cases) {
    SCOPED_TRACE(support::text(c.pos));
    Vec const mark(7, 8);
    Vec in = mark;
    Vec out = mark;
    EXPECT_EQ(-1, c.curve.getAccelerationVectors(c.pos, in, out));
    EXPECT_TRUE(same(in, mark) && same(out, mark));
    EXPECT_EQ(c.velocity ? 0 : -1, c.curve.getVelocityVectors(c.pos, in, out));
    EXPECT_EQ(!c.velocity, same(in, mark) && same(out, mark));
    EXPECT_EQ(c.velocity ? 0 : -1, c.curve.findVelocityVectors(c.pos, in, out));
    EXPECT_EQ(!c.velocity, same(in, Vec(0, 0)) && same(out, Vec(0, 0)));
    GxCoord<double> point, before(7, 8), after(7, 8);
    EXPECT_EQ(-1, c.curve.getTriple(c.pos, point, before, after));
    EXPECT_BITS(c.curve.locateCurvePosition(c.pos), point);
    EXPECT_BITS(GxCoord<double>(7, 8), before);
  }
}

TEST(GxBezierCurveTangent, ChordsStandInForHandlesThatVanish) {
  struct Case {
    GxBezier segment;
    Vec getIn, getOut;    // at its end, reversed; at its start
    Vec findIn, findOut;  // both along the way
  };
  Case const cases[] = {
      {bezier(0, 0, 0, 0, 20, 5, 30, 0), {-30, 15}, {20, 5}, {30, -15}, {20, 5}},
      {bezier(0, 0, 10, 5, 30, 0, 30, 0), {-20, 5}, {30, 15}, {20, -5}, {30, 15}},
      {bezier(0, 0, 0, 0, 30, 0, 30, 0), {-30, 0}, {30, 0}, {30, 0}, {30, 0}},
      {bezier(0, 0, 30, 0, 30, 0, 30, 0), {-30, 0}, {90, 0}, {30, 0}, {90, 0}},
      {bezier(0, 0, 0, 0, 0, 0, 30, 0), {-90, 0}, {30, 0}, {90, 0}, {30, 0}},
      // rveciana/svg-path-properties#169
      {bezier(0, 0, 0, 0, 50, 100, 100, 0), {-150, 300}, {50, 100}, {150, -300}, {50, 100}},
      // Handles of 3e-5: exactly compared they are some, within the tolerance none.
      {bezier(0, 0, 0x1p-15, 0, 20, 5, 30, 0), {-30, 15}, {0x3p-15, 0}, {30, -15}, {20, 5}},
      {bezier(30, 0, 20, 5, 0x1p-15, 0, 0, 0), {0x3p-15, 0}, {-30, 15}, {-20, -5}, {-30, 15}},
  };
  for (Case const& c : cases) {
    GxBezierCurve const curve = support::curveOf({c.segment});
    Vec in, out, unused;
    curve.getVelocityVectors(curve.lastPos(), in, unused);
    curve.getVelocityVectors(curve.firstPos(), unused, out);
    EXPECT_TRUE(same(in, c.getIn) && same(out, c.getOut)) << in.xval() << " " << out.xval();
    curve.findVelocityVectors(curve.lastPos(), in, unused);
    curve.findVelocityVectors(curve.firstPos(), unused, out);
    EXPECT_TRUE(same(in, c.findIn) && same(out, c.findOut)) << in.xval() << " " << out.xval();
  }
  // At a cusp the chords are those of the whole segment; the accelerations run along the curve.
  GxBezierCurve const cusp = support::curveOf({bezier(0, 0, 1, 1, 0, 1, 1, 0)});
  Vec in(7, 8), out(7, 8);
  ASSERT_EQ(0, cusp.findVelocityVectors({0, 0.5}, in, out));
  EXPECT_TRUE(same(in, Vec(0, -1)) && same(out, Vec(0, 1)));
  ASSERT_EQ(0, cusp.getAccelerationVectors({0, 0.5}, in, out));
  EXPECT_TRUE(same(in, Vec(0, 6)) && same(out, Vec(0, -6)));
  // Only a segment without any handle has no acceleration.
  GxBezierCurve const straight = support::curveOf({support::retractedLine(0, 0, 30, 0)});
  ASSERT_EQ(0, straight.getAccelerationVectors({0, 0.25}, in, out));
  EXPECT_TRUE(same(in, Vec(0, 0)) && same(out, Vec(0, 0)));
}

TEST(GxBezierCurveTangent, TriplesAreTheHandlesOfACut) {
  GxBezierCurve curve = kinkedCurve();
  GxCoord<double> point, before, after;
  ASSERT_EQ(0, curve.getTriple({1, 0.25}, point, before, after));
  GxBezier left, right;
  curve[1].split(left, right, 0.25);
  EXPECT_BITS(curve[1].bValue(0.25), point);
  EXPECT_BITS(left[2], before);
  EXPECT_BITS(right[1], after);
  struct Case {
    Pos pos;
    int closed;
    GxCoord<double> before, after;
  };
  GxCoord<double> const untouched(7, 8);
  Case const cases[] = {{{1, 0.0}, 0, curve[0][2], curve[1][1]},
                        {{0, 0.0}, 0, untouched, curve[0][1]},
                        {{0, 0.0}, 1, curve[2][2], curve[0][1]},
                        {{3, 0.0}, 0, curve[2][2], curve[2][3]},
                        {{3, 0.0}, 1, curve[2][2], curve[0][1]}};
  for (Case const& c : cases) {
    SCOPED_TRACE(support::text(c.pos) + (c.closed ? " closed" : " open"));
    curve.setStrictIsClosed(c.closed);
    before = after = untouched;
    ASSERT_EQ(0, curve.getTriple(c.pos, point, before, after));
    EXPECT_BITS(c.before, before);
    EXPECT_BITS(c.after, after);
  }
}

}  // namespace
