// Areas: containment is compared with winding numbers of dense polygons, and the areas of union,
// intersection and difference with each other.
#include "crv/accurate/region.h"

#include "crv/accurate/curveContacts.h"
#include "crv/accurate/direction.h"
#include "crv/accurate/nearest.h"
#include "tests/support/cases.h"

#include <array>
#include <cmath>
#include <tuple>

#include <gtest/gtest.h>

namespace {

using namespace support;
using crv::Curve;
using crv::FillRule;
using crv::Position;
using crv::Region;
using crv::Segment;
using Curves = std::vector<Curve>;

/// The curve turned by a matrix (c, -s; s, c), moved, and run backwards if asked for.
Curve moved(Curve const& curve, double c, double s, double x, double y, bool isBackwards) {
  Curve result;
  int const n = static_cast<int>(curve.length());
  for (int i = 0; i < n; ++i) {
    Segment const& from = curve[isBackwards ? n - 1 - i : i];
    Segment to;
    for (int k = 0; k < 4; ++k) {
      Point const p = from[isBackwards ? 3 - k : k];
      to[k] = Point(c * p.xval() - s * p.yval() + x, s * p.xval() + c * p.yval() + y);
    }
    result.getSegments().add(to);
  }
  return closed(result);
}

Curve square(double x, double y, double size) {
  return closedPolygon({x, y, x + size, y, x + size, y + size, x, y + size});
}

/// The winding number by the angles from one point of a dense polygon to the next.
int turnsAround(Curves const& curves, Point const& p) {
  double angle = 0.0;
  for (Curve const& curve : curves) {
    auto const n = static_cast<int>(curve.length());
    std::vector<Point> points;
    for (int i = 0; i < n; ++i) {
      for (int k = 0; k <= 50; ++k) points.push_back(curve[i].bValue(k / 50.0));
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
      auto const v = points[i] - p, w = points[(i + 1) % points.size()] - p;
      angle += std::atan2(v.xval() * w.yval() - v.yval() * w.xval(),
                          v.xval() * w.xval() + v.yval() * w.yval());
    }
  }
  return static_cast<int>(std::lround(angle / 6.283185307179586));
}

double distanceOf(Curves const& curves, Point const& p) {
  double least = 1e300;
  for (Curve const& curve : curves) least = std::min(least, crv::nearest(curve, p)->distance);
  return least;
}

double areaOf(Region const& region) {
  double sum = 0.0;
  for (Curve const& curve : region.curves) sum += crv::signedArea(curve);
  return sum;
}

Segment partOf(Segment const& segment, double from, double to) {
  Segment before, rest, result, behind;
  segment.split(rest, behind, to);
  if (from == 0.0) return rest;
  rest.split(before, result, from / to);
  return result;
}

/// Closed curves that meet neither themselves nor, but for touching, each other.
void expectSimple(Region const& region) {
  for (std::size_t i = 0; i < region.curves.size(); ++i) {
    Curve const& curve = region.curves[i];
    int const n = static_cast<int>(curve.length());
    EXPECT_TRUE(curve.strictIsClosed());
    for (int k = 0; k < n; ++k) EXPECT_TRUE(curve[k][3] == curve[(k + 1) % n][0]);
    crv::CurveContacts const own = crv::selfContacts(curve);
    EXPECT_TRUE(own.points.empty() && own.overlaps.empty()) << "of curve " << i;
    for (std::size_t k = 0; k < i; ++k) {
      crv::CurveContacts const both = crv::contacts(curve, region.curves[k]);
      EXPECT_TRUE(both.overlaps.empty());
      for (auto const& c : both.points) EXPECT_EQ(c.kind, crv::ContactKind::touching);
    }
  }
}

/// Simple closed curves, each segment the stretch of its source.
void expectSound(Region const& region, Curves const& a, Curves const& b) {
  expectSimple(region);
  ASSERT_EQ(region.sources.size(), region.curves.size());
  for (std::size_t i = 0; i < region.curves.size(); ++i) {
    Curve const& curve = region.curves[i];
    int const n = static_cast<int>(curve.length());
    ASSERT_EQ(region.sources[i].size(), curve.length());
    for (int k = 0; k < n; ++k) {
      crv::Source const& source = region.sources[i][static_cast<std::size_t>(k)];
      Curve const& whole = (source.list == 0 ? a : b)[source.curve];
      int const segment = static_cast<int>(source.from.getSegmentNumber());
      bool const isWhole = source.to.getSegmentNumber() > segment;
      Segment const part =
          partOf(whole[segment], source.from.getTValue(), isWhole ? 1.0 : source.to.getTValue());
      for (int p = 0; p < 4; ++p) {
        EXPECT_NEAR(curve[k][p].xval(), part[source.backwards ? 3 - p : p].xval(), 1e-10);
        EXPECT_NEAR(curve[k][p].yval(), part[source.backwards ? 3 - p : p].yval(), 1e-10);
      }
    }
  }
}

/// Expects that the four operations contain the right points and that their areas add up.
void expectOperations(Curves const& a, Curves const& b, FillRule rule, Random& random) {
  Region const results[] = {crv::unite(a, b, rule), crv::intersect(a, b, rule),
                            crv::subtract(a, b, rule), crv::exclude(a, b, rule)};
  for (Region const& region : results) expectSound(region, a, b);
  double const areaA = crv::area(a, rule), areaB = crv::area(b, rule), size = areaA + areaB;
  double const both = areaOf(results[1]);
  EXPECT_NEAR(areaOf(results[0]), areaA + areaB - both, 1e-9 * size);
  EXPECT_NEAR(areaOf(results[2]), areaA - both, 1e-9 * size);
  EXPECT_NEAR(areaOf(results[3]), areaA + areaB - 2.0 * both, 1e-9 * size);
  for (int i = 0; i < 12; ++i) {
    Point const p(random.uniform(-300, 1200), random.uniform(-300, 1000));
    if (distanceOf(a, p) < 1.0 || distanceOf(b, p) < 1.0) continue;
    auto const isIn = [&](int winding) {
      return rule == FillRule::nonZero ? winding != 0 : winding % 2 != 0;
    };
    int const windingA = turnsAround(a, p);
    bool const isInA = isIn(windingA), isInB = isIn(turnsAround(b, p));
    EXPECT_EQ(crv::winding(a, p), windingA);
    EXPECT_EQ(crv::contains(a, p, rule), isInA);
    bool const expected[] = {isInA || isInB, isInA && isInB, isInA && !isInB, isInA != isInB};
    for (int k = 0; k < 4; ++k) EXPECT_EQ(turnsAround(results[k].curves, p), int(expected[k])) << k;
  }
}

TEST(Region, HoldsTheRightPlacesOfLetters) {
  Random random(14);
  char const* const names[] = {
      "bold-w-ends",     "italic-ampersand-outer-thirds", "italic-f-thirds", "math-infinity-outer",
      "roman-at-thirds", "roman-capital-s-thirds",        "roman-g-outer",   "sans-k-thirds"};
  for (int i = 0; i < 60; ++i) {
    SCOPED_TRACE(i);
    Curve const first = outline(names[random.whole(0, 7)]);
    Curve second = outline(names[random.whole(0, 7)]);
    double angle = random.uniform(0, 6.28), size = random.uniform(0.3, 1.5);
    double x = random.uniform(-200, 400), y = random.uniform(-200, 400);
    if (i % 6 == 0) second = first;
    // Some are not turned, so that edges share lines, and some are the same letter.
    if (i % 3 == 0) angle = 0.0, size = 1.0, x = std::floor(x / 100), y = i % 4 ? 0.0 : 1e-4;
    if (i % 12 == 0) x = y = 0.0;
    Curve const third = moved(second, size * std::cos(angle), size * std::sin(angle), x, y, i % 2);
    expectOperations({first}, {third, square(100, 100, 300)},
                     i % 5 ? FillRule::nonZero : FillRule::evenOdd, random);
  }
}

TEST(Region, IsSimpleWhereOutlinesNearlyCoincide) {
  Random random(5);
  for (int i = 0; i < 60; ++i) {
    SCOPED_TRACE(i);
    Curve const letter = outline(i % 2 ? "roman-at-thirds" : "roman-g-outer");
    double const apart = std::pow(10.0, random.uniform(-13.0, -7.5));
    bool const isTurned = i % 3 == 0, isWider = i % 3 == 1;
    double const x = random.uniform(-500, 500) * apart;
    double const y = random.uniform(-500, 500) * apart;
    Curves const a = {letter};
    Curves const b = {moved(letter, isWider ? 1.0 + apart : 1.0, isTurned ? apart : 0.0, x, y,
                            random.whole(0, 1) == 0)};
    Region const both = crv::intersect(a, b, FillRule::nonZero);
    Region const either = crv::exclude(a, b, FillRule::nonZero);
    for (Region const& region : {both, either}) expectSimple(region);
    Curves const there = {b[0], moved(b[0], 1.0, 0.0, 0.0, 0.0, true), b[0]};
    EXPECT_EQ(areaOf(crv::exclude(a, there, FillRule::nonZero)), areaOf(either)) << "and back";
    double const sum = crv::area(a, FillRule::nonZero) + crv::area(b, FillRule::nonZero);
    EXPECT_NEAR(areaOf(either), sum - 2.0 * areaOf(both), 1e-10 * sum);
  }
}

TEST(Region, OfKnownShapes) {
  struct {
    char const* what;
    Curves a, b;
    std::array<std::size_t, 4> curves;  // of unite, intersect, subtract, exclude
    std::array<double, 4> areas;
  } const rows[] = {
      {"apart", {square(0, 0, 1)}, {square(2, 0, 1)}, {2, 0, 1, 2}, {2, 0, 1, 2}},
      {"a shared edge", {square(0, 0, 1)}, {square(1, 0, 1)}, {1, 0, 1, 1}, {2, 0, 1, 2}},
      {"part of an edge", {square(0, 0, 2)}, {square(2, 0.5, 1)}, {1, 0, 1, 1}, {5, 0, 4, 5}},
      {"a shared corner", {square(0, 0, 1)}, {square(1, 1, 1)}, {2, 0, 1, 2}, {2, 0, 1, 2}},
      {"beside a chain of squares",
       {square(0, 0, 2), square(2, 2, 1), square(3, 3, 3), square(6, 0, 3)},
       {square(2.4, 0.9, 0.2)},
       {5, 0, 4, 5},
       {23.04, 0, 23, 23.04}},
      {"nested", {square(0, 0, 3)}, {square(1, 1, 1)}, {1, 1, 2, 2}, {9, 1, 8, 8}},
      {"nested, an edge shared", {square(0, 0, 3)}, {square(0, 1, 1)}, {1, 1, 1, 1}, {9, 1, 8, 8}},
      {"nested, a corner on an edge",
       {square(0, 0, 4)},
       {closedPolygon({0, 2, 1, 1, 2, 2, 1, 3})},
       {1, 1, 2, 2},
       {16, 2, 14, 14}},
      {"the same", {square(0, 0, 1)}, {square(0, 0, 1)}, {1, 1, 0, 0}, {1, 1, 0, 0}},
      {"a cross",
       {closedPolygon({0, 1, 3, 1, 3, 2, 0, 2})},
       {closedPolygon({1, 0, 2, 0, 2, 3, 1, 3})},
       {1, 1, 2, 4},
       {5, 1, 2, 4}},
      {"nothing", {square(0, 0, 1)}, {}, {1, 0, 1, 1}, {1, 0, 1, 1}},
      {"a spike", {closedPolygon({0, 0, 1, 0, 1, 1, 0, 1, 0, 2})}, {}, {1, 0, 1, 1}, {1, 0, 1, 1}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.what);
    FillRule const rule = FillRule::nonZero;
    Region const results[] = {crv::unite(row.a, row.b, rule), crv::intersect(row.a, row.b, rule),
                              crv::subtract(row.a, row.b, rule), crv::exclude(row.a, row.b, rule)};
    for (std::size_t i = 0; i < 4; ++i) {
      expectSound(results[i], row.a, row.b);
      EXPECT_EQ(results[i].curves.size(), row.curves[i]) << i;
      EXPECT_NEAR(areaOf(results[i]), row.areas[i], 1e-12) << i;
    }
  }
}

TEST(Region, FollowsTheRule) {
  // A pentagram: its middle is wound around twice.
  std::vector<double> corners;
  for (int i = 0; i < 5; ++i) {
    corners.push_back(std::cos(i * 2.5132741228718345));
    corners.push_back(std::sin(i * 2.5132741228718345));
  }
  Curves const star = {closedPolygon(corners)};
  EXPECT_EQ(crv::simplified(star, FillRule::nonZero).curves.size(), 1u);
  EXPECT_EQ(crv::simplified(star, FillRule::evenOdd).curves.size(), 5u);
  EXPECT_NEAR(crv::area(star, FillRule::nonZero), 1.1225699414489634, 1e-14);
  EXPECT_NEAR(crv::area(star, FillRule::evenOdd),
              1.1225699414489634 - 2.5 * 0.9510565162951535 * 0.14589803375031546, 1e-14);
  EXPECT_EQ(crv::winding(star, {0, 0}), 2);
  EXPECT_FALSE(crv::contains(star, {0, 0}, FillRule::evenOdd));
  EXPECT_EQ(crv::winding(star, star[0][0].bValue(0.5)), 2) << "the larger of both sides";
  EXPECT_EQ(crv::winding(star, star[0][0][0]), 1) << "in a corner";
  Curves const thereAndBack = {closed({evenLine(-1, -2, -2, 2), evenLine(-2, 2, -1, -2)})};
  EXPECT_EQ(crv::winding(thereAndBack, {-1.5, 0}), 0);
  EXPECT_EQ(crv::winding({star[0], closed({evenLine(0, 0, 0, 0)})}, {0, 0}), 2) << "at a point";
  EXPECT_TRUE(crv::contains(star, star[0][0].bValue(0.5), FillRule::evenOdd));

  // Points next to a circle and at the height of corners.
  for (HardCase const& hard : hardCases("curves")) {
    bool const isCircle = hard.source == "linebender/kurbo#593 ";
    if (!isCircle && hard.source != "nical/lyon#636 ") continue;
    std::vector<Point> const points = pointsOf(hard.fields[2]);
    ASSERT_EQ(points.size(), isCircle ? 1u : 4u);
    for (std::size_t i = 0; i < points.size(); ++i) {
      bool const isInside = i == 0 || i == 3;
      Curves const outline = {Curve(segmentsOf(hard.fields[0]))};
      EXPECT_EQ(crv::contains(outline, points[i], FillRule::nonZero), isInside) << hard.source << i;
    }
  }
}

TEST(Region, ClosesGaps) {
  Curves const open = {polygon({0, 0, 2, 0, 2, 2})};
  Region const region = crv::simplified(open, FillRule::nonZero);
  ASSERT_EQ(region.curves.size(), 1u);
  EXPECT_EQ(region.curves[0].length(), 3u);
  EXPECT_EQ(areaOf(region), 2.0);
  int closing = 0;
  for (auto const& source : region.sources[0])
    closing += source.list == static_cast<std::size_t>(-1);
  EXPECT_EQ(closing, 1);
  EXPECT_EQ(crv::winding(open, {1.5, 0.5}), 1);
  EXPECT_EQ(crv::winding(open, {0.5, 1.5}), 0);
}

/// Segments with control points on a small grid: cusps, turns back, shared stretches and edges that
/// leave a node in one direction abound.
Curve gridCurve(Random& random, int n, int size) {
  Curve curve;
  Point const start = random.gridPoint(size);
  Point last = start;
  for (int i = 0; i < n; ++i) {
    Segment s = random.gridSegment(size);
    s[0] = last;
    if (i == n - 1) s[3] = start;
    last = s[3];
    curve.getSegments().add(s);
  }
  return closed(curve);
}

TEST(Region, AddsUpWhereAllIsDegenerate) {
  Random random(3);
  for (int i = 0; i < 150; ++i) {
    SCOPED_TRACE(i);
    int const size = random.whole(1, 2), n = random.whole(2, 9);
    Curves const a = {gridCurve(random, n, size)};
    // Every third time the second curve is the first one, moved by about the resolution.
    Curves const b = {i % 3 ? gridCurve(random, n, size)
                            : moved(a[0], 1.0, 0.0, std::pow(0.1, i % 16), 0.0, i % 2 == 0)};
    FillRule const rule = i % 2 ? FillRule::nonZero : FillRule::evenOdd;
    double const both = areaOf(crv::intersect(a, b, rule));
    double const sum = crv::area(a, rule) + crv::area(b, rule);
    EXPECT_NEAR(areaOf(crv::unite(a, b, rule)), sum - both, 1e-9 * size * size);
    EXPECT_NEAR(areaOf(crv::exclude(a, b, rule)), sum - 2.0 * both, 1e-9 * size * size);
  }
}

TEST(Region, AddsUpOnInputsThatBrokeOtherLibraries) {
  for (std::string const file : {"curves", "segments"}) {
    for (HardCase const& row : hardCases(file)) {
      SCOPED_TRACE(row.source);
      Curves curves[2];
      double size = 0.0;
      for (std::size_t k = 0; k < 2; ++k) {
        std::vector<Segment> const segments = segmentsOf(row.fields[k]);
        if (segments.empty()) continue;
        curves[k].emplace_back();
        for (Segment const& segment : segments) {
          curves[k][0].getSegments().add(segment);
          for (int p = 0; p < 4; ++p) {
            size = std::max({size, std::fabs(segment[p].xval()), std::fabs(segment[p].yval())});
          }
        }
      }
      for (FillRule const rule : {FillRule::nonZero, FillRule::evenOdd}) {
        Region const both = crv::intersect(curves[0], curves[1], rule);
        Region const either = crv::unite(curves[0], curves[1], rule);
        expectSimple(both);
        expectSimple(either);
        double const sum = crv::area(curves[0], rule) + crv::area(curves[1], rule);
        EXPECT_NEAR(areaOf(both) + areaOf(either), sum, 1e-9 * size * size);
      }
    }
  }
}

/// A closed curve of segments with four points each.
Curve closedCurve(Numbers const& numbers) { return closed(curveOf(segmentsOf(numbers))); }

TEST(Region, HasTheRightAreaBesideCusps) {
  // The node beside the cusp of the second segment is 1e-15 before it, where handles point back.
  Curve const once = closedCurve(
      {1.0000000000000739, 1.0000000000000524, 0.99999999999990341, 6.6869422327727113e-15,
       3.1050266884267327e-14, -3.6046760994940995e-14, -2.0508356904610995e-14,
       0.99999999999996347, -2.0508356904610995e-14, 0.99999999999996347, 1.0000000000000766,
       -9.1604011878371248e-14, 7.2543479222804307e-14, 1.6206705989316111e-14, 1.0000000000000739,
       1.0000000000000524});
  // The last segment runs back on itself, and shares 4 resolutions with the end of the second one.
  Curve const spur =
      closedCurve({1.0000000000015725,      0.99999999999140099, 1.9999999999988964,
                   1.9999999999932496,      1.0000000000027922,  0.99999999999718625,
                   -3.6218450451269747e-12, 1.0000000000077123,  -3.6218450451269747e-12,
                   1.0000000000077123,      1.0000000000065707,  3.8327288767322896e-12,
                   2.0000000000078058,      0.99999999999206202, 0.99999999999334843,
                   0.99999999999051536,     0.99999999999334843, 0.99999999999051536,
                   1.0000000000025699,      0.99999999999328071, 9.5402001636102805e-12,
                   1.0000000000027045,      1.0000000000015725,  0.99999999999140099});
  for (FillRule const rule : {FillRule::nonZero, FillRule::evenOdd}) {
    EXPECT_NEAR(crv::area({once}, rule), -crv::signedArea(once), 1e-12) << "wound around once";
    EXPECT_NEAR(crv::area({spur}, rule), crv::signedArea(spur), 1e-11) << "wound around once";
  }
  // Branches that stay within the resolution of each other leave one point. A grid of 40,003 lines
  // finds the area 1.30446.
  Curve const branches =
      closedCurve({0.99999999999999389,     1.9999999999999905,      0.99999999999999745,
                   -5.1312674582004544e-15, 1.0000000000000078,      -2.8379756351932879e-15,
                   3.398987757973373e-15,   7.2171160485595494e-16,  3.398987757973373e-15,
                   7.2171160485595494e-16,  -1.2312783999368549e-15, 1.0000000000000093,
                   1.0000000000000078,      -2.6268593966960876e-16, 1.0000000000000053,
                   2.000000000000008,       1.0000000000000053,      2.000000000000008,
                   0.99999999999999345,     1.0000000000000044,      2.0000000000000022,
                   7.9897782439365987e-15,  1.9999999999999987,      2.0000000000000071,
                   1.9999999999999987,      2.0000000000000071,      1.0000000000000058,
                   2.0000000000000067,      1.0000000000000013,      -5.0560832023621124e-17,
                   0.99999999999999389,     1.9999999999999905});
  EXPECT_NEAR(crv::area({branches}, FillRule::nonZero), 1.30446, 1e-5);
}

TEST(Region, IsSimpleWhereSidesOfResultsNearlyTouch) {
  for (auto const& [curve, shift, isBackwards] :
       {std::tuple(closedCurve({0, 0, 0, 1, 1, 0, 0, 1, 0, 1, 0, 0, 1, 1, 0, 0}), 1e-5, true),
        std::tuple(closedCurve({0, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 1, 1, 0, 1}), 1e-8, false)}) {
    Curves const a = {curve}, b = {moved(curve, 1.0, 0.0, shift, 0.0, isBackwards)};
    for (FillRule const rule : {FillRule::nonZero, FillRule::evenOdd}) {
      expectSimple(crv::unite(a, b, rule));
      expectSimple(crv::intersect(a, b, rule));
    }
  }
  // Segments that turn back with a loop narrower than the resolution, and without one.
  for (Curve const& curve :
       {closedCurve({-0.53004069375673835, -0.12355531597592417, -2.1323283404030287,
                     0.75158770107922845, -0.70191307785218493, -0.029681461804831777,
                     -1.8296482181986033, 0.58626882345589615}),
        closedCurve({0.49257164069997805, 0.34447019617567798, 0.7700509874995799,
                     -0.044675669485063407, -0.89397300989101691, 2.2890045356366668,
                     -0.74490571557942942, 2.0799478185743703})}) {
    expectSimple(crv::simplified({curve}, FillRule::nonZero));
  }
  Curve const knot = closedCurve({2, 2, 2, 2, 0, 0, 1, 2, 1, 2, 2, 0, 2, 0, 2, 2,
                                  2, 2, 2, 1, 0, 1, 1, 0, 1, 0, 2, 1, 2, 1, 2, 2});
  Curve const horn = closedCurve({2, 2, 2, 2, 2, 2, 2, 0, 2, 0, 0, 2, 0, 1, 2, 2});
  expectSimple(crv::exclude({knot}, {horn}, FillRule::evenOdd));
  // The line at y = 1 is an inflection tangent of the first segment.
  Curve const drop = closedCurve({2, 0, 0, 2, 0, 0, 2, 0});
  Curve const wave = closedCurve({1, 0, 2, 2, 1, 0, 1, 2, 1, 2, 2, 0, 1, 2, 0, 1,
                                  0, 1, 1, 1, 2, 1, 2, 1, 2, 1, 1, 1, 2, 0, 1, 0});
  expectSimple(crv::unite({drop}, {wave}, FillRule::evenOdd));
}

TEST(Region, AnswersAlways) {
  Random random(2);
  double const values[] = {0, 1, 1, 2, 1e300, -1e-300, kNaN, kInf, 5e-324};
  for (int i = 0; i < 200; ++i) {
    Curves curves = {gridCurve(random, random.whole(1, 6), 3), gridCurve(random, 2, 3)};
    Segment& s = curves[0].getSegments()[0];
    s[random.whole(0, 3)] = Point(values[random.whole(0, 8)], 1);
    curves[1].setStrictIsClosed(0);
    Region const region = crv::simplified(curves, i % 2 ? FillRule::nonZero : FillRule::evenOdd);
    for (Curve const& curve : region.curves) {
      int const n = static_cast<int>(curve.length());
      for (int k = 0; k < n; ++k) EXPECT_TRUE(curve[k][3] == curve[(k + 1) % n][0]) << i;
    }
  }
  EXPECT_EQ(crv::winding({square(0, 0, 1)}, {kNaN, 0}), 0);
  EXPECT_TRUE(std::isnan(crv::area({square(0, 0, kInf)}, FillRule::nonZero)));
  EXPECT_EQ(crv::area({}, FillRule::nonZero), 0.0);
}

}  // namespace
