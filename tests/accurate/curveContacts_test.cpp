// Contacts of curves: joints and seams are treated like any other point, and shared stretches
// continue across them.
#include "crv/accurate/curveContacts.h"

#include "crv/accurate/nearest.h"
#include "tests/support/data.h"
#include "tests/support/positions.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using crv::ContactKind;
using crv::contacts;
using crv::Curve;
using crv::CurveContacts;
using crv::Point;
using crv::Position;
using crv::Segment;
using crv::selfContacts;
using support::closed;
using support::closedPolygon;
using support::curveOf;
using support::flat;
using support::Numbers;
using support::polygon;

constexpr double kNearParameter = 1e-8;

/// The curves A and B of a hard case; closed where their ends meet, unless told otherwise.
struct Case {
  Curve a, b;
};

Case caseOf(std::string const& name, bool canBeClosed = true) {
  auto const curve = [&](std::string const& column) {
    auto const segments = support::segmentsOf(support::numbersIn({column})[0]);
    bool const meets = segments.size() > 1 && segments.front()[0] == segments.back()[3];
    return canBeClosed && meets ? closed(curveOf(segments)) : curveOf(segments);
  };
  for (std::string const& line : support::linesOf("hard_cases/curves")) {
    auto const parts = support::partsOf(std::istringstream(line + "| "), '|');
    if (parts[0] == name + " ") return {curve(parts[1]), curve(parts[2])};
  }
  ADD_FAILURE() << name << " is missing";
  return {};
}

/// Rows of: first, second, kind; positions as segment number plus t.
void expectPoints(CurveContacts const& found, std::vector<Numbers> const& rows) {
  ASSERT_EQ(found.points.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_NEAR(flat(found.points[i].first), rows[i][0], kNearParameter);
    EXPECT_NEAR(flat(found.points[i].second), rows[i][1], kNearParameter);
    EXPECT_EQ(int(found.points[i].kind), int(rows[i][2]));
  }
}

/// Rows of: from, to, otherFrom, otherTo; the sense follows from the last.
void expectOverlaps(CurveContacts const& found, std::vector<Numbers> const& rows) {
  ASSERT_EQ(found.overlaps.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    auto const& o = found.overlaps[i];
    EXPECT_NEAR(flat(o.from), rows[i][0], kNearParameter);
    EXPECT_NEAR(flat(o.to), rows[i][1], kNearParameter);
    EXPECT_NEAR(flat(o.otherFrom), rows[i][2], kNearParameter);
    EXPECT_NEAR(flat(o.otherTo), rows[i][3], kNearParameter);
    EXPECT_EQ(o.sameSense, rows[i][4] != 0.0);
  }
}

TEST(CurveContacts, AreThoseOfTheHardCases) {
  double const crossing = 0, touching = 1, end = 2;
  struct {
    char const* name;
    std::vector<Numbers> points, overlaps;
  } const rows[] = {
      {"paperjs/paper.js#1262", {{0, 0, end}, {1, 1, end}}, {}},
      {"paperjs/paper.js#1074", {{0, 0, crossing}, {4, 2, crossing}}, {}},
      {"paperjs/paper.js#648", {}, {{0, 4, 0, 4, 1}}},
      {"paperjs/paper.js overlapping circles", {{0, 3, crossing}, {1, 2, crossing}}, {}},
      {"hfutrell/BezierKit coincident", {}, {{0, 0.8, 1.0 / 3.0, 1, 1}}},
      {"hfutrell/BezierKit coincident, reversed", {}, {{0, 1, 1, 0, 0}}},
      {"hfutrell/BezierKit nearly coincident",
       {{0.7320382269, 0.372681927, crossing}, {1, 0, end}},
       {}},
      {"nical/lyon point on curve", {{0.123456789, 0, end}}, {}},
      {"google/skia same curve", {}, {{0, 1, 0, 1, 1}}},
      {"google/skia n0 overlapping arcs", {{1, 0, end}}, {}},
      {"google/skia coin1",
       {{0.5166976971, 0.1808970543, crossing},
        {0.5515764993, 0.5587797213, crossing},
        {0.5816679964, 0.8847910949, crossing}},
       {}},
      {"FlorisSteenkamp/FloBezier near miss", {}, {}},
      {"FlorisSteenkamp/FloBezier self-overlap", {{0, 0.5, end}, {1, 0, end}}, {}},
      {"dhermes/bezier curve_intersections.json #11", {{2.0 / 3.0, 1.0 / 3.0, touching}}, {}},
      {"dhermes/bezier curve_intersections.json #31", {{1.0 / 3.0, 0.5, touching}}, {}},
      // The two halves of a cubic with a loop.
      {"dhermes/bezier curve_intersections.json #33",
       {{1.0 - std::sqrt(5.0) / 3.0, std::sqrt(5.0) / 3.0, crossing}, {1, 0, end}},
       {}},
      // Two of the four crossings are 4e-9 apart, and all between them is within the resolution.
      {"dhermes/bezier curve_intersections.json #46",
       {{0.1729237817, 0.5520155862, touching},
        {0.666607752, 0.8877064436, crossing},
        {0.9725947699, 0.0082623841, crossing}},
       {}},
      {"dhermes/bezier curve_intersections.json #35", {{1, 0, end}}, {}},
      {"dhermes/bezier curve_intersections.json #44", {{0.25, 0, end}}, {}},
      {"Logicalshift/flo_curves#30", {}, {{2.0 / 3.0, 1, 1, 2.0 / 3.0, 0}}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.name);
    Case const c = caseOf(row.name);
    CurveContacts const found = contacts(c.a, c.b);
    expectPoints(found, row.points);
    expectOverlaps(found, row.overlaps);
  }
}

TEST(CurveContacts, OfACurveWithItselfAreThoseOfTheHardCases) {
  struct {
    char const* name;
    std::vector<Numbers> points;
  } const rows[] = {
      // Exact arithmetic finds these three; the first crosses at an angle of 6e-7, so that rounding
      // moves it by 2e-8 where it is small.
      {"paperjs/paper.js#1233",
       {{1.000273836, 3.999726148, 0}, {1.000569352, 4.003997908, 0}, {1.30837836, 5.44128041, 0}}},
      {"paperjs/paper.js#1233, 100 times as large",
       {{1.000273859, 3.999726171, 0}, {1.000569352, 4.003997938, 0}, {1.30837836, 5.44128041, 0}}},
      {"inkscape/lib2geom #46 missing",
       {{0.02292809296, 2.9405570146, 0}, {0.3513473514, 1.3833717773, 0}}},
      {"inkscape/lib2geom two kinks",
       {{0.04915609252, 1.9633440928, 0},
        {0.3072782894, 0.6961718168, 0},
        {1.255614594, 1.7032895156, 0}}},
      {"inkscape/lib2geom spider",
       {{0.1722209921, 1.5824402603, 0},
        {0.1992562765, 1.7632838701, 0},
        {0.3942682668, 1.7811730492, 0},
        {0.4411193916, 1.548269371, 0}}},
      {"inkscape/lib2geom cusp node", {}},
      {"inkscape/lib2geom node bowtie", {{2, 5, 0}}},
      {"inkscape/lib2geom lens", {}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.name);
    CurveContacts const found = selfContacts(caseOf(row.name).a);
    expectPoints(found, row.points);
    expectOverlaps(found, {});
  }
  expectPoints(selfContacts(caseOf("paperjs/paper.js#1263", false).a), {{0, 2, 2}});
  expectPoints(selfContacts(caseOf("paperjs/paper.js#1263").a), {});
  expectOverlaps(
      selfContacts(caseOf("HTD/FastBezier#2").a),
      {{0.125, 0.25, 0.5, 0.25, 0}, {0.125, 0.25, 0.5, 0.625, 1}, {0.25, 0.5, 0.625, 0.5, 0}});
  for (std::string const& row : support::linesOf("hard_cases/loops")) {
    if (row.empty() || row[0] == '#') continue;
    SCOPED_TRACE(row);
    auto const parts = support::partsOf(std::istringstream(row + "| "), '|');
    auto const n = support::numbersIn({parts.begin() + 1, parts.end()});
    std::vector<Numbers> expected;
    if (!n[2].empty()) expected.push_back({n[2][0], n[2][1], 0});
    expectPoints(selfContacts(curveOf({support::segmentOf(n[0])})), expected);
  }

  // Rounding turns this cusp into a loop that is three resolutions long and far narrower than one.
  Segment const cut = support::bezier(
      0.36110488137698155, 0.52850872661225168, 0.094633799571361255, 0.42594683472527667,
      0.30748574497316378, 0.6923576370785518, 0.99966071757981034, 0.00033924404933641098);
  expectPoints(selfContacts(curveOf({cut})), {});

  // The sides of this tip are within half a resolution of each other.
  expectOverlaps(selfContacts(curveOf({support::bezier(0, 0, 2, 0, -4, 0, -6, 1e-10)})),
                 {{0, 0.139620390, 0.292893219, 0.139620390, 0}});

  // These two cross at angles of 1e-10; the branches of the first stay within 11 resolutions of
  // each other all along the loop.
  struct {
    Segment segment;
    double t, u;
  } const narrow[] = {
      {support::bezier(-0.0356347939355115, -0.87981155858732452, -0.48511168690453371,
                       -0.13283718106757877, 0.023121914799992514, -0.97745785927697026,
                       -0.39651616899776609, -0.28007185074676699),
       0.38450327871765, 0.787276199585545},
      {support::bezier(0.48696349096073144, 0.51433379983422345, 0.97237644870121209,
                       0.69086728961163768, 1.3298867510832881, 0.82088553563560174,
                       0.55819866016438957, 0.54024038678203212),
       0.37317386, 0.76859455},
  };
  for (auto const& row : narrow) {
    CurveContacts const found = selfContacts(curveOf({row.segment}));
    ASSERT_EQ(found.points.size(), 1u);
    double const t = flat(found.points[0].first), u = flat(found.points[0].second);
    EXPECT_NEAR(t, row.t, 1e-5);
    EXPECT_NEAR(u, row.u, 1e-5);
    EXPECT_LT(row.segment.bValue(t).distance(row.segment.bValue(u)), 0x1p-47);
    EXPECT_EQ(found.points[0].kind, ContactKind::crossing);
  }
}

TEST(CurveContacts, RunOverJointsAndTheSeam) {
  Curve const square = closedPolygon({0, 0, 4, 0, 4, 4, 0, 4});
  struct {
    char const* name;
    Curve other;
    std::vector<Numbers> points, overlaps;
  } const rows[] = {
      {"itself, begun elsewhere", closedPolygon({4, 4, 0, 4, 0, 0, 4, 0}), {}, {{0, 4, 2, 2, 1}}},
      {"itself, reversed", closedPolygon({0, 0, 0, 4, 4, 4, 4, 0}), {}, {{0, 4, 4, 0, 0}}},
      {"a path over the seam", polygon({0, 2, 0, 0, 2, 0}), {}, {{3.5, 0.5, 0, 2, 1}}},
      {"a neighbour with a longer side",
       closedPolygon({4, -1, 6, -1, 6, 5, 4, 5}),
       {},
       {{1, 2, 3.0 + 5.0 / 6.0, 3.0 + 1.0 / 6.0, 0}}},
      {"around it twice",
       closedPolygon({0, 0, 4, 0, 4, 4, 0, 4, 0, 0, 4, 0, 4, 4, 0, 4}),
       {},
       {{0, 4, 0, 4, 1}, {0, 4, 4, 8, 1}}},
      {"through two corners", polygon({-1, -1, 5, 5}), {{0, 1.0 / 6.0, 0}, {2, 5.0 / 6.0, 0}}, {}},
      {"a corner on a side", polygon({6, 1, 4, 2, 6, 3}), {{1.5, 1, 1}}, {}},
      {"corner to corner", closedPolygon({4, 4, 6, 4, 6, 6}), {{2, 0, 1}}, {}},
      {"an end in a corner", polygon({4, 4, 6, 6}), {{2, 0, 2}}, {}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.name);
    CurveContacts const found = contacts(square, row.other);
    expectPoints(found, row.points);
    expectOverlaps(found, row.overlaps);
  }
  CurveContacts const spike = selfContacts(polygon({0, 0, 4, 0, 1, 0, 1, 3}));
  expectPoints(spike, {});
  expectOverlaps(spike, {{0.25, 1, 2, 1, 0}});
  Curve const pausing = polygon({0, 2, 0, 1, 0, 1, 0, 0, 2, 0});
  expectOverlaps(contacts(pausing, square), {{0, 4, 3.5, 0.5, 1}});
  CurveContacts const thorn = selfContacts(closedPolygon({0, 0, 4, 0, 4, 4, 0, 4, 0, 0, -1, -1}));
  expectPoints(thorn, {});
  expectOverlaps(thorn, {{4, 5, 6, 5, 0}});
  // The sides of this loop are within rounding from the seam to where they cross.
  Curve const tip = closed(curveOf({support::segmentOf(
      {-0.20115756414725419, -0.0075351508137037095, 0.23890704671866683, 0.23099302567328781,
       0.42597613716501448, 0.33239028970786832, -0.20115756414725419, -0.0075351508137037095})}));
  expectPoints(selfContacts(tip), {});

  // Both passes of a loop stay crossings where a joint divides it at its tip.
  for (double const size : {0.25, 0x1p-20}) {
    Segment head =
        support::segmentOf({3, -3 + 3 * size, -1, 3 + size, -1, -3 - size, 3, 3 - 3 * size});
    Curve const whole = curveOf({head});
    Segment tail;
    head.split(tail, 0.5);
    CurveContacts const found = contacts(whole, curveOf({head, tail}));
    double const pass = std::sqrt(size);
    expectPoints(found, {{0.5 - 0.5 * pass, 1 + pass, 0}, {0.5 + 0.5 * pass, 1 - pass, 0}});
    expectOverlaps(found, {{0, 1, 0, 2, 1}});
  }
  // Ends that overlap by 7 resolutions and continue each other smoothly hide no crossing elsewhere.
  Curve const before =
      curveOf({support::segmentOf({-0.79, 1.3, -1.93, 2.29, 0.54, -0.18, 0.115, -0.59})});
  Curve const behind = curveOf(
      {support::segmentOf({0.115000000018, -0.589999999983, -0.31, -1, -0.05, -0.46, -0.1, 0.56})});
  CurveContacts const joint = contacts(before, behind);
  ASSERT_GE(joint.points.size(), 1u);
  EXPECT_EQ(joint.points[0].kind, crv::ContactKind::crossing);
  // A side that runs back on itself and on.
  Segment const back = support::segmentOf({0, 0, 6, 0, 6, 0, 2, 0}),
                on = support::evenLine(2, 0, -2, 0);
  for (bool const isSwapped : {false, true}) {
    Curve const a = curveOf({back, on}), b = curveOf({back});
    EXPECT_EQ((isSwapped ? contacts(b, a) : contacts(a, b)).overlaps.size(), 2u);
  }
  // A shared stretch that is eight resolutions long is reported as a point.
  CurveContacts const brief = contacts(polygon({0, 0, 1, 0}), polygon({1 - 8e-12, 0, 1, 0}));
  EXPECT_EQ(brief.overlaps.size(), 0u);
  ASSERT_EQ(brief.points.size(), 1u);
  EXPECT_EQ(flat(brief.points[0].first), 1.0);
  // The kind is right at a resolution that is wide for the curves, too.
  CurveContacts const wide = contacts(closed({support::bezier(-15, 18, 9, -14, -6, -4, -15, 18)}),
                                      closed({support::bezier(8, 1, -1, -18, -15, 18, 8, 1)}), 0.1);
  ASSERT_EQ(wide.points.size(), 2u);
  for (auto const& c : wide.points) EXPECT_EQ(c.kind, ContactKind::crossing);
}

TEST(CurveContacts, WithALineAreInOrderAlongIt) {
  Curve const square = closedPolygon({0, 0, 4, 0, 4, 4, 0, 4});
  auto const found = contacts(square, Point(6, 6), Point(-2, -2));
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].along, 0.25);
  EXPECT_EQ(flat(found[0].position), 2.0);
  EXPECT_EQ(flat(found[1].position), 0.0);
  EXPECT_EQ(found[1].kind, ContactKind::crossing);
  auto const along = contacts(square, Point(-1, 0), Point(3, 0));
  ASSERT_EQ(along.size(), 2u);
  EXPECT_EQ(along[0].along, 0.25);
  EXPECT_EQ(along[1].along, 1.0);
  EXPECT_EQ(along[1].kind, ContactKind::touching);
  auto const tip = contacts(square, Point(2, 2), Point(2, 4));
  ASSERT_EQ(tip.size(), 1u);
  EXPECT_EQ(tip[0].kind, ContactKind::end);
  // Two ends and two turns.
  Curve const folded = curveOf({support::bezier(1, 0, 5, 0, -1, 0, 3, 0)});
  EXPECT_EQ(contacts(folded, Point(-4, 0), Point(4, 0)).size(), 4u);
  // Both sides of this corner are crossed within the resolution of each other.
  auto const corner =
      contacts(closedPolygon({0, 0, 4, 0, 4, 4}), Point(3.5e-12, -2), Point(3.5e-12, 2));
  ASSERT_EQ(corner.size(), 1u);
  EXPECT_EQ(corner[0].kind, ContactKind::touching);
}

/// The control points of a chain of segments, which can be moved without rounding.
using Points = std::vector<Point>;

Points randomPoints(std::mt19937& engine, bool isClosed) {
  Points points(3 * (1 + engine() % 4) + 1);
  for (Point& p : points) {
    int const x = int(engine() % 2001) - 1000;
    p = Point(x, int(engine() % 2001) - 1000);
  }
  if (isClosed) points.back() = points.front();
  return points;
}

Curve chainOf(Points const& p, bool isClosed, double factor = 1.0, double dx = 0.0,
              double dy = 0.0) {
  auto const at = [&](std::size_t i) {
    return Point(p[i].xval() * factor + dx, p[i].yval() * factor + dy);
  };
  std::vector<Segment> segments;
  for (std::size_t i = 0; i + 3 < p.size(); i += 3) {
    segments.push_back(Segment(at(i), at(i + 1), at(i + 2), at(i + 3)));
  }
  return isClosed ? closed(curveOf(segments)) : curveOf(segments);
}

/// Expects the same contacts in two results; placeOf and otherOf return the places of a contact of
/// the second result that correspond to the curves of the first.
template <class PlaceOf, class OtherOf>
void expectSame(CurveContacts const& expected, CurveContacts const& found, PlaceOf placeOf,
                OtherOf otherOf) {
  ASSERT_EQ(found.points.size(), expected.points.size());
  ASSERT_EQ(found.overlaps.size(), expected.overlaps.size());
  for (auto const& e : expected.points) {
    EXPECT_TRUE(std::any_of(found.points.begin(), found.points.end(), [&](auto const& c) {
      return std::fabs(placeOf(c) - flat(e.first)) < 1e-6 &&
             std::fabs(otherOf(c) - flat(e.second)) < 1e-6 && c.kind == e.kind;
    }));
  }
}

TEST(CurveContacts, AreTheSameSwappedReversedMovedAndScaled) {
  std::mt19937 engine(5);
  for (int i = 0; i < 300; ++i) {
    SCOPED_TRACE(i);
    bool const closed = i % 2 != 0;
    Points p = randomPoints(engine, closed), q = randomPoints(engine, false);
    if (i % 3 == 0) std::copy_n(p.begin(), 4, q.begin());  // a segment that both have
    Curve const a = chainOf(p, closed), b = chainOf(q, false);
    CurveContacts const found = contacts(a, b);
    auto const first = [](crv::CurveContact const& c) { return flat(c.first); };
    auto const second = [](crv::CurveContact const& c) { return flat(c.second); };
    expectSame(found, contacts(b, a), second, first);
    expectSame(found,
               contacts(chainOf(p, closed, 1.0, 2048, -777), chainOf(q, false, 1.0, 2048, -777)),
               first, second);
    CurveContacts const scaled = contacts(chainOf(p, closed, 0x1p-90), chainOf(q, false, 0x1p-90));
    ASSERT_EQ(scaled.points.size(), found.points.size());
    for (std::size_t k = 0; k < found.points.size(); ++k) {
      EXPECT_EQ(scaled.points[k].first, found.points[k].first);
      EXPECT_EQ(scaled.points[k].second, found.points[k].second);
      EXPECT_EQ(scaled.points[k].point.xval(), found.points[k].point.xval() * 0x1p-90);
    }
    std::reverse(p.begin(), p.end());
    double const n = double(a.length());
    auto const fromEnd = [&](crv::CurveContact const& c) {
      return closed && flat(c.first) == 0.0 ? 0.0 : n - flat(c.first);
    };
    expectSame(found, contacts(chainOf(p, closed), b), fromEnd, second);
  }
}

TEST(CurveContacts, LieAtTheirPositionsBesideGapsWithinTheResolution) {
  Curve gaping = polygon({0, 0, 4, 0});
  gaping.getSegments().add(polygon({4.75, 0, 10, 5})[0]);
  Curve const line = polygon({3.25, -3, 3.25, 6});
  CurveContacts const found = contacts(gaping, line, 1.0);
  ASSERT_EQ(found.points.size(), 1u);
  Point const place = gaping.locateCurvePosition(found.points[0].first);
  EXPECT_LE(place.distance(line.locateCurvePosition(found.points[0].second)), 1.0);
  // There is one contact for both sides of the gap, at the nearer side.
  for (double const x : {4.0, 4.75}) {
    Position const side = x == 4.0 ? Position(0, 1.0 - 0x1p-53) : Position(1, 0.0);
    CurveContacts const atGap = contacts(gaping, polygon({x, -3, x, 6}), 1.0);
    ASSERT_EQ(atGap.points.size(), 1u);
    EXPECT_EQ(atGap.points[0].first, side);
    auto const alongLine = contacts(gaping, Point(x, -3), Point(x, 6), 1.0);
    ASSERT_EQ(alongLine.size(), 1u);
    EXPECT_EQ(alongLine[0].position, side);
    EXPECT_EQ(crv::nearest(gaping, Point(x, 0))->position, side);
  }
}

TEST(CurveContacts, AnswerAnyInput) {
  Curve const empty, square = closedPolygon({0, 0, 4, 0, 4, 4, 0, 4});
  double const nan = std::numeric_limits<double>::quiet_NaN();
  for (Curve const& other :
       {empty, closedPolygon({nan, 0, 1, 1}), closedPolygon({1e300, 0, 1, 1})}) {
    EXPECT_TRUE(contacts(square, other).points.empty());
    EXPECT_TRUE(contacts(other, square).points.empty());
    EXPECT_TRUE(selfContacts(other).points.empty());
    EXPECT_TRUE(contacts(other, Point(1, -1), Point(1, 1)).empty());
  }
  EXPECT_TRUE(contacts(square, Point(nan, -1), Point(1, 1)).empty());
  EXPECT_EQ(contacts(square, Point(2, 0), Point(2, 0)).size(), 1u);
}

}  // namespace
