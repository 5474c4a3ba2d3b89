#include "crv/accurate/curveSearch.h"

#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <memory>

namespace {

using support::bezier;
using support::closed;
using support::curveOf;
using support::kNaN;
using support::Point;
using support::Position;

TEST(AccurateSearch, NearestIsThatOfTheWholeCurveWhichMayDie) {
  support::Random random(5);
  for (char const* name : {"italic-ampersand-outer-thirds", "roman-capital-s-thirds"}) {
    auto curve = std::make_unique<GxBezierCurve>(support::outline(name));
    GxBezierCurve const kept = *curve;
    crv::CurveSearch const search(*curve);
    curve.reset();
    for (int i = 0; i < 300; ++i) {
      Point const p = random.point(1200);
      auto const found = search.nearest(p);
      auto const expected = crv::nearest(kept, p);
      EXPECT_BITS(found->position, expected->position);
      EXPECT_BITS(found->distance, expected->distance);
      Point const q = random.point(1200);
      auto const met = search.contacts(p, q);
      auto const all = crv::contacts(kept, p, q);
      ASSERT_EQ(met.size(), all.size());
      for (std::size_t k = 0; k < met.size(); ++k) EXPECT_BITS(met[k].position, all[k].position);
    }
  }
}

TEST(AccurateSearch, WithinGivesEveryLocalMinimumOnce) {
  auto const positions = [](GxBezierCurve const& curve, Point const& p, double distance) {
    std::vector<Position> found;
    for (auto const& place : crv::CurveSearch(curve).within(p, distance)) {
      EXPECT_LE(place.distance, distance);
      found.push_back(place.position);
    }
    return found;
  };
  using Positions = std::vector<Position>;
  GxBezierCurve const square = support::polygon({0, 0, 6, 0, 6, 6, 0, 6, 0, 0});
  auto const sides = positions(square, Point(3, 2), 4);  // the square is open, its ends are far
  ASSERT_EQ(sides.size(), 4U);
  EXPECT_EQ(sides[3].getSegmentNumber(), 3);
  EXPECT_EQ(positions(square, Point(3, 2), 2.5).size(), 1U);
  EXPECT_EQ(positions(square, Point(7, 7), 2), Positions{Position(2, 0.0)});
  EXPECT_EQ(positions(square, Point(-1, -1), 2), (Positions{Position(0, 0.0), Position(4, 0.0)}));
  EXPECT_EQ(positions(closed(square), Point(-1, -1), 2), Positions{Position(0, 0.0)});
  // The end before a gap at the seam is the last position.
  GxBezierCurve const broken = closed(support::polygon({9, 9, 0, 3, 9, 3, 0, -1}));
  EXPECT_EQ(positions(broken, Point(-1, 0), 10),
            (Positions{Position(1, 0.0), Position(2, 1 - 0x1p-53)}));

  // Segments that are points have one minimum with their neighbours, and so has a curve that is a
  // point.
  GxBezierCurve const corner = curveOf({support::evenLine(0, 0, 6, 0), support::pointLike(6, 0),
                                        support::pointLike(6, 0), support::evenLine(6, 0, 6, 6)});
  EXPECT_EQ(positions(corner, Point(7, -1), 3), Positions{Position(1, 0.0)});
  GxBezierCurve const point = curveOf({GxBezier(), GxBezier()});
  EXPECT_EQ(positions(point, Point(0, 0), 0), Positions{Position(0, 0.0)});
  EXPECT_EQ(positions(closed(point), Point(0, 0), 0), Positions{Position(0, 0.0)});
  // The foot lies at a smooth joint and is reported once, however the distance is rounded on both
  // sides.
  GxBezierCurve const circle = closed(support::circle(100));
  for (int i = 1; i < 100; ++i) {
    EXPECT_EQ(positions(circle, Point(0, 90 + 0.3 * i), 20), Positions{Position(1, 0.0)});
    EXPECT_EQ(positions(circle, Point(90 + 0.3 * i, 0), 20), Positions{Position(0, 0.0)});
  }
}

TEST(AccurateSearch, UnusableInputFindsNothing) {
  crv::CurveSearch const search(support::circle(1));
  EXPECT_FALSE(search.nearest(Point(kNaN, 0)));
  EXPECT_TRUE(search.within(Point(0, 0), -1).empty());
  EXPECT_TRUE(search.within(Point(0, 0), kNaN).empty());
  for (auto const& curve : {GxBezierCurve(), curveOf({bezier(0, 0, kNaN, 0, 1, 1, 2, 2)})}) {
    EXPECT_FALSE(crv::CurveSearch(curve).nearest(Point(0, 0)));
    EXPECT_TRUE(crv::CurveSearch(curve).within(Point(0, 0), 1).empty());
  }
}

// The last 1e-11 lead away from the point by less than rounding.
TEST(AccurateSearch, AnEndWhereRoundingHidesTheMinimumCounts) {
  crv::CurveSearch const search(curveOf({bezier(
      3.3560762001283244, -56.197349598059958, 0.046329798974372408, -0.10035139203679755,
      0.046329798987732172, -0.10035139204284932, 0.0463297989521941, -0.10035139210627025)}));
  Point const p(-0.071362413017470747, -0.0021204527270819507);
  ASSERT_EQ(search.within(p, 0.2).size(), 1U);
  EXPECT_BITS(search.within(p, 0.2)[0].position, Position(1, 0.0));
  // The nearest point of a curve no larger than rounding errors is reported, too.
  double const x = -99993896.484375, y = x + 0x1p-25;
  auto const speck =
      closed(curveOf({bezier(x, x, x, x, x, y, x, y), bezier(x, y, y, y, y, y, y, y)}));
  Point const far(-100978210.44921871, -100993896.48437496);
  EXPECT_EQ(crv::CurveSearch(speck).within(far, 1e12).size(), 1U);
  // The curve returns to within 3.5e-9 of its start.
  Point const start(159328.52334604185, 34737.001424058602);
  crv::CurveSearch const hook(curveOf({{start,
                                        {159328.52352451414, 34737.00136261843},
                                        {159328.52339246758, 34737.001279313539},
                                        {66549.99594213668, 58584.788863731694}}}));
  ASSERT_FALSE(hook.within(start, 1e-6).empty());
  EXPECT_BITS(hook.within(start, 1e-6)[0].position, Position(0, 0.0));
  // The minimum lies 87 u S from the start, and is nearer to the point by 86 u S.
  crv::CurveSearch const bend(curveOf(
      {bezier(12003424.724521838, 22947739.67967207, 12003424.206006253, 22947744.813850429,
              28531106.263751484, -25985333.933395408, 7676219.7268284783, -12012684.205092143)}));
  Point const behind(18705456.7548097, 41949751.635660723);
  auto const lowest = bend.within(behind, 2.1e7);
  ASSERT_EQ(lowest.size(), 1U);
  EXPECT_BITS(lowest[0].position.getTValue(), bend.nearest(behind)->position.getTValue());
  // The minima of both segments lie at their joint, to rounding.
  crv::CurveSearch const joined(
      curveOf({bezier(2, 1, 0, 0, 0, 0, 0, -1e-82), bezier(0, -1e-82, 0, 1, -1, 2, -2, 2),
               support::evenLine(-2, 2, 2, 2)}));
  EXPECT_EQ(joined.within(Point(0, 0), 3).size(), 2U);
}

}  // namespace
