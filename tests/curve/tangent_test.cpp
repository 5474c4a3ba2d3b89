// Handles, velocities and accelerations on both sides of a position.
#include "tests/support/data.h"
#include "tests/support/positions.h"
#include "tests/support/shapes.h"

namespace {

using support::bezier;
using Pos = GxBezierCurvePosition;
using Vec = GxVector<double>;

/// Three segments with corners at the joins, all derivatives different.
GxBezierCurve kinkedCurve(int closed) {
  GxBezierCurve curve = support::curveOf({bezier(0, 0, 10, 30, 40, 50, 60, 10),
                                          bezier(60, 10, 70, 90, 20, 80, 90, 60),
                                          bezier(90, 60, 95, 20, 40, -30, 0, 0)});
  curve.setStrictIsClosed(closed);
  return curve;
}

bool same(Vec const& a, Vec const& b) { return a.xval() == b.xval() && a.yval() == b.yval(); }

struct Side {
  int segment;
  double t;
};

/// A place as the end of what comes before it, and as the start of what follows.
Side endAt(double place) {
  int const segment = place == 0.0 ? 0 : static_cast<int>(std::ceil(place)) - 1;
  return {segment, place - segment};
}
Side startAt(double place) {
  int const segment = place == 3.0 ? 2 : static_cast<int>(place);
  return {segment, place - segment};
}

TEST(GxBezierCurveTangent, SidesAreChosenAtJoinsAndEnds) {
  // The position, closed, and the sides: in and out of both velocities, then of the acceleration.
  // Just below a join the way out of velocities is that of the same segment's start.
  for (auto const& row :
       support::table("1 0 1 1 1 1; 1.0004 0 1 1 1.0004 1.0004; 1.9996 0 2 1 1.9996 1.9996;"
                      "1.9994 0 1.9994 1.9994 1.9994 1.9994; 0 0 0 0 0 0; 0 1 3 0 3 0; 3 0 3 3 3 3;"
                      "0.0004 1 3 0 0.0004 0.0004; 3 1 3 0 3 0; 2.9996 0 3 3 2.9996 2.9996")) {
    SCOPED_TRACE(testing::Message() << row[0] << (row[1] != 0 ? " closed" : " open"));
    Pos const pos = support::at(row[0]);
    GxBezierCurve const curve = kinkedCurve(row[1] != 0);
    auto const velocity = [&](Side s) { return curve[s.segment].dValue(s.t); };
    auto const acceleration = [&](Side s) { return curve[s.segment].ddValue(s.t); };
    Vec in, out;
    ASSERT_EQ(0, curve.findVelocityVectors(pos, in, out));
    EXPECT_TRUE(same(in, velocity(endAt(row[2]))) && same(out, velocity(startAt(row[3]))));
    ASSERT_EQ(0, curve.getVelocityVectors(pos, in, out));
    EXPECT_TRUE(same(in, -velocity(endAt(row[2]))) && same(out, velocity(startAt(row[3]))));
    ASSERT_EQ(0, curve.getAccelerationVectors(pos, in, out));
    EXPECT_TRUE(same(in, -acceleration(endAt(row[4]))));
    EXPECT_TRUE(same(out, acceleration(startAt(row[5]))));
  }
}

TEST(GxBezierCurveTangent, OutsideTheCurveOnlyFindVelocityVectorsTouchesItsOutputs) {
  for (Pos const pos : {Pos(3, 0.001), Pos(3, 0.0004), Pos(-1, 0.5), Pos(-1, 0.9996)}) {
    int const code = pos == Pos(3, 0.0004) || pos == Pos(-1, 0.9996) ? 0 : -1;  // near an end
    GxBezierCurve const curve = kinkedCurve(0);
    Vec in(7, 8), out(7, 8);
    EXPECT_EQ(-1, curve.getAccelerationVectors(pos, in, out));
    EXPECT_TRUE(same(in, {7, 8}) && same(out, {7, 8}));
    EXPECT_EQ(code, curve.getVelocityVectors(pos, in, out));
    EXPECT_EQ(code != 0, same(in, {7, 8}) && same(out, {7, 8}));
    EXPECT_EQ(code, curve.findVelocityVectors(pos, in, out));
    EXPECT_EQ(code != 0, same(in, {0, 0}) && same(out, {0, 0}));
  }
}

TEST(GxBezierCurveTangent, ChordsStandInForHandlesThatVanish) {
  struct Case {
    GxBezier segment;
    Vec getIn, findIn, getOut, findOut;  // at its end, at its start
  };
  // The last two have handles of 3e-5: exactly compared they are some, within the tolerance none.
  Case const cases[] = {
      {bezier(0, 0, 0, 0, 30, 0, 30, 0), {-30, 0}, {30, 0}, {30, 0}, {30, 0}},
      {bezier(0, 0, 30, 0, 30, 0, 30, 0), {-30, 0}, {30, 0}, {90, 0}, {90, 0}},
      {bezier(0, 0, 0, 0, 0, 0, 30, 0), {-90, 0}, {90, 0}, {30, 0}, {30, 0}},
      // rveciana/svg-path-properties#169
      {bezier(0, 0, 0, 0, 50, 100, 100, 0), {-150, 300}, {150, -300}, {50, 100}, {50, 100}},
      {bezier(0, 0, 0x1p-15, 0, 20, 5, 30, 0), {-30, 15}, {30, -15}, {0x3p-15, 0}, {20, 5}},
      {bezier(30, 0, 20, 5, 0x1p-15, 0, 0, 0), {0x3p-15, 0}, {-20, -5}, {-30, 15}, {-30, 15}}};
  for (Case const& c : cases) {
    GxBezierCurve const curve = support::curveOf({c.segment});
    Vec in, out, unused;
    curve.getVelocityVectors({1, 0.0}, in, unused);
    curve.getVelocityVectors({0, 0.0}, unused, out);
    EXPECT_TRUE(same(in, c.getIn) && same(out, c.getOut)) << in.xval() << " " << out.xval();
    curve.findVelocityVectors({1, 0.0}, in, unused);
    curve.findVelocityVectors({0, 0.0}, unused, out);
    EXPECT_TRUE(same(in, c.findIn) && same(out, c.findOut)) << in.xval() << " " << out.xval();
  }
  // At a cusp the chords are those of the whole segment; the accelerations run along the curve.
  GxBezierCurve const cusp = support::curveOf({bezier(0, 0, 1, 1, 0, 1, 1, 0)});
  Vec in, out;
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
  GxBezierCurve curve = kinkedCurve(0);
  GxBezier left, right;
  curve[1].split(left, right, 0.25);
  GxCoord<double> const untouched(7, 8);
  struct Case {
    Pos pos;
    int closed;
    GxCoord<double> before, after;
  };
  Case const cases[] = {
      {{1, 0.25}, 0, left[2], right[1]},       {{1, 0.0}, 0, curve[0][2], curve[1][1]},
      {{0, 0.0}, 0, untouched, curve[0][1]},   {{0, 0.0}, 1, curve[2][2], curve[0][1]},
      {{3, 0.0}, 0, curve[2][2], curve[2][3]}, {{3, 0.0}, 1, curve[2][2], curve[0][1]},
      {{3, 0.1}, 1, untouched, untouched}};
  for (Case const& c : cases) {
    SCOPED_TRACE(support::text(c.pos) + (c.closed ? " closed" : " open"));
    curve.setStrictIsClosed(c.closed);
    GxCoord<double> point, before = untouched, after = untouched;
    ASSERT_EQ(c.after == untouched ? -1 : 0, curve.getTriple(c.pos, point, before, after));
    EXPECT_BITS(curve.locateCurvePosition(c.pos), point);
    EXPECT_BITS(c.before, before);
    EXPECT_BITS(c.after, after);
  }
}

}  // namespace
