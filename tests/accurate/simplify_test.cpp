#include "crv/accurate/cut.h"
#include "crv/accurate/direction.h"
#include "crv/accurate/fit.h"
#include "tests/support/data.h"
#include "tests/support/positions.h"

#include <cmath>

namespace {

using namespace support;
using crv::Curve;
using crv::Position;
using crv::Simplified;

/// Checks every promise by dense samples, and returns the number of segments left.
unsigned long expectPromises(Curve const& curve, double tolerance) {
  Simplified const s = crv::simplify(curve, tolerance);
  EXPECT_LE(s.curve.length(), curve.length());
  EXPECT_LE(s.worstDistance, tolerance);
  EXPECT_EQ(s.curve.strictIsClosed(), curve.strictIsClosed());
  auto const n = static_cast<int>(curve.length()), m = static_cast<int>(s.curve.length());
  EXPECT_TRUE(sameBits(s.curve[0][0], curve[0][0]));
  EXPECT_TRUE(sameBits(s.curve[m - 1][3], curve[n - 1][3]));
  double last = 0.0;
  for (int i = 0; i < 32 * n; ++i) {
    Position const p(i / 32, (i % 32) / 32.0);
    Position there, back;
    EXPECT_EQ(s.map->mapPosition(there, p), 0);
    double const distance =
        curve[i / 32].bValue(p.getTValue()).distance(s.curve.locateCurvePosition(there));
    EXPECT_LE(distance, s.worstDistance + 1e-13 * (1.0 + std::fabs(curve[0][0].xval())));
    EXPECT_GE(flat(there), last);
    last = flat(there);
    bool const isCorner = p.getTValue() == 0.0 && i > 0 && [&] {
      crv::Directions const d = crv::directions(curve, p);
      return d.in * d.out < 0.99;
    }();
    EXPECT_TRUE(!isCorner || sameBits(curve[i / 32][0], s.curve.locateCurvePosition(there)));
  }
  last = 0.0;
  for (int i = 0; i < 32 * m; ++i) {
    Position const there(i / 32, (i % 32) / 32.0);
    Position p, again;
    EXPECT_EQ(s.map->inverseMapPosition(p, there), 0);
    EXPECT_GE(flat(p), last);
    last = flat(p);
    EXPECT_EQ(s.map->mapPosition(again, p), 0);
    EXPECT_LE(s.curve.locateCurvePosition(again).distance(s.curve.locateCurvePosition(there)),
              1e-11 * (1.0 + std::fabs(curve[0][0].xval())));
  }
  return s.curve.length();
}

TEST(AccurateSimplify, AddedJointsGoAwayAndCornersStay) {
  for (char const* name : {"roman-o-inner", "sans-k-thirds", "italic-f-thirds"}) {
    SCOPED_TRACE(name);
    Curve const letter = outline(name);
    Curve curve = letter;
    for (int k = static_cast<int>(letter.length()) - 1; k >= 0; --k) {
      for (double const t : {0.8, 0.5, 0.2}) curve = crv::withJoint(curve, Position(k, t)).curve;
    }
    for (double const tolerance : {1.0, 0.01, 1e-9}) {
      EXPECT_LE(expectPromises(curve, tolerance), letter.length());
    }
    for (double const tolerance : {1e-12, 1e-14}) expectPromises(curve, tolerance);
    curve.setStrictIsClosed(0);
    expectPromises(curve, 0.5);
  }
}

TEST(AccurateSimplify, FitsThatAreFinerThanNeededBecomeLean) {
  std::vector<Point> const samples = valuesOf(stroke("pen-sweeps"));
  Curve const fine = crv::fit(samples, {0.05, false, 0.0}).curve;
  unsigned long const coarse = crv::fit(samples, {0.5, false, 0.0}).curve.length();
  EXPECT_LE(static_cast<double>(expectPromises(fine, 0.5)), 1.1 * static_cast<double>(coarse));
}

TEST(AccurateSimplify, GapsCuspsPointsAndUnusableInputAreKeptApart) {
  Random random(4);
  for (int i = 0; i < 200; ++i) {
    Curve curve;
    Point last = random.gridPoint(4);
    for (int k = random.whole(1, 6); k > 0; --k) {
      if (random.whole(0, 4) == 0) last = random.gridPoint(4);
      Point const p = random.gridPoint(4), q = random.gridPoint(4), end = random.gridPoint(4);
      curve.getSegments().add(random.whole(0, 5) == 0 ? pointLike(last.xval(), last.yval())
                                                      : GxBezier(last, p, q, end));
      last = curve[-1][3];
    }
    curve.setStrictIsClosed(i % 2);
    SCOPED_TRACE(i);
    for (double const tolerance : {0.5, 1e-3}) expectPromises(curve, tolerance);
  }
  Curve const line = polygon({0, 0, 1, 0, 2, 0});
  EXPECT_EQ(expectPromises(line, 1e-6), 1u);
  for (double const bad : {0.0, -1.0, kNaN}) {
    Simplified const s = crv::simplify(line, bad);
    Position out;
    EXPECT_EQ(s.curve.length(), 0u);
    EXPECT_EQ(s.map->mapPosition(out, Position(0, 0.5)), -1);
  }
  EXPECT_EQ(crv::simplify(line, kInf).curve.length(), 1u);
  EXPECT_EQ(crv::simplify(polygon({0, 0, kNaN, 0}), 1.0).curve.length(), 0u);
  EXPECT_EQ(expectPromises(curveOf({pointLike(0, 0), pointLike(0, 0)}), 1.0), 2u);
}

}  // namespace
