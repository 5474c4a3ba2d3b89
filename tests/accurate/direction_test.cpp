#include "crv/accurate/direction.h"

#include "tests/support/expect.h"
#include "tests/support/shapes.h"

namespace {

using support::bezier;
using support::curveOf;
using support::kNaN;
using support::Position;
using support::Vector;

void expectDirections(GxBezierCurve const& curve, Position const& position, Vector const& in,
                      Vector const& out) {
  SCOPED_TRACE(support::text(position));
  auto const found = crv::directions(curve, position);
  EXPECT_NEAR((found.in - in).length(), 0, 1e-15);
  EXPECT_NEAR((found.out - out).length(), 0, 1e-15);
}

TEST(AccurateDirections, AreLimitsAtRetractedHandlesCuspsAndPoints) {
  double const k = 0.70710678118654752;
  auto const one = [](GxBezier const& s) { return curveOf({s}); };
  Vector const up(0.447213595499958, 0.894427190999916);
  GxBezierCurve const retracted = one(bezier(0, 0, 0, 0, 50, 100, 100, 0));
  expectDirections(retracted, Position(0, 0.0), up, up);
  GxBezierCurve const tiny = one(bezier(0, 0, 1e-30, 0, 50, 100, 100, 0));
  expectDirections(tiny, Position(0, 0.0), {1, 0}, {1, 0});
  expectDirections(one(bezier(0, 0, 1, 1, 0, 1, 1, 0)), Position(0, 0.5), {0, 1}, {0, -1});
  expectDirections(one(bezier(0, 0, 0, 0, 0, 0, 2, 2)), Position(1, 0.0), {k, k}, {k, k});

  // A corner with a point in it, and the seam.
  GxBezierCurve corner = curveOf({support::retractedLine(0, 0, 4, 0), support::pointLike(4, 0),
                                  support::evenLine(4, 0, 4, 4), support::evenLine(4, 4, 0, 0)});
  for (Position const& p : {Position(1, 0.0), Position(1, 0.5), Position(2, 0.0)}) {
    expectDirections(corner, p, {1, 0}, {0, 1});
  }
  expectDirections(corner, Position(0, 0.0), {1, 0}, {1, 0});
  expectDirections(corner, Position(4, 0.0), {-k, -k}, {-k, -k});
  corner.setStrictIsClosed(1);
  expectDirections(corner, Position(0, 0.0), {-k, -k}, {1, 0});
  expectDirections(corner, Position(4, 0.0), {-k, -k}, {1, 0});

  expectDirections(corner, Position(5, 0.0), {}, {});
  expectDirections(one(support::pointLike(1, 2)), Position(0, 0.5), {}, {});
  expectDirections(one(bezier(0, 0, kNaN, 0, 1, 1, 2, 2)), Position(0, 0.5), {}, {});
}

TEST(AccurateArea, IsTheIntegralWhereverTheOutlineLies) {
  GxBezierCurve square = support::polygon({0, 0, 3, 0, 3, 3, 0, 3});  // its last side is open
  EXPECT_EQ(crv::signedArea(square), 9.0);
  EXPECT_FALSE(crv::isClockwise(square));
  square.moveCurve(Vector(3 * 0x1p40, -3 * 0x1p41));
  EXPECT_EQ(crv::signedArea(square), 9.0);
  square.reverse();
  EXPECT_EQ(crv::signedArea(square), -9.0);
  EXPECT_TRUE(crv::isClockwise(square));
  // The area between the parabola y = 3 t (1 - t), x = t and its chord is negative, because it lies
  // to the right of the direction of travel.
  EXPECT_NEAR(crv::signedArea(curveOf({bezier(0, 0, 1. / 3, 1, 2. / 3, 1, 1, 0)})), -0.5, 1e-16);
  EXPECT_NEAR(crv::signedArea(support::circle(100)), 3.14160 * 1e4, 10);
  EXPECT_EQ(crv::signedArea(GxBezierCurve()), 0.0);
  EXPECT_TRUE(std::isnan(crv::signedArea(curveOf({bezier(0, 0, kNaN, 0, 1, 1, 2, 2)}))));
  EXPECT_FALSE(crv::isClockwise(curveOf({bezier(0, 0, kNaN, 0, 1, 1, 2, 2)})));
}

}  // namespace
