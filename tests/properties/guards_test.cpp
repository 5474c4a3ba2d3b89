// Guards, on both sides: inputs that end because of one, with the result that is promised, and the
// nearest ones that end without it. Most of them are rows of tests/data/known; here are those that
// need a condition, a depth, or the halves of what is halved.
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/positions.h"
#include "tests/support/shapes.h"

#include <cfloat>
#include <climits>
#include <list>

namespace {

using support::bezier;
using support::evenLine;
using support::kInf;
using support::kNaN;
using support::OpenBezier;
using support::Point;
using support::Position;
using support::rawPosition;
using Numbers = std::vector<double>;
using Points = std::vector<Point>;

template <class T>
void expectSame(std::vector<T> const& a, std::vector<T> const& b) {
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = 0; i < a.size(); ++i) ASSERT_TRUE(support::bitsMatch(a[i], b[i])) << i;
}

template <class T>
std::vector<T> joined(std::vector<T> a, std::vector<T> const& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

Numbers roots(Point const* w, int depth) {
  double found[64];
  return Numbers(found, found + OpenBezier().findRoots(w, 5, depth, found));
}

TEST(Guards, NearestPointKeepsTheRootsOfEveryFinitePolygonAndStopsHalvingAnyOther) {
  // Five turns through the values that become zero; the range of doubles, a thousand halvings; and
  // one that is never flat, halved to the level 64.
  Numbers const turning = {-3e-9, 27e-9, -63e-9, 63e-9, -27e-9, 3e-9};
  Numbers const wide = {0x1p-30, 0, DBL_MAX, DBL_MAX, 0, 0x1p-30};
  Numbers const endless = {1, kNaN, kNaN, kNaN, kNaN, kNaN};
  struct Case {
    Numbers const& y;
    int depth;
    std::size_t count;
  } const cases[] = {{turning, 0, 10},          {wide, 0, 4},
                     {endless, 64 - 4096, 1},   {endless, 64 - 4097, 0},
                     {endless, INT_MIN / 2, 0}, {endless, 64, 1}};
  for (Case const& c : cases) {
    Point w[6], left[6], right[6];
    for (int i = 0; i < 6; ++i) w[i] = Point(i * 0.2, c.y[static_cast<std::size_t>(i)]);
    OpenBezier().genericSplit(w, 5, 0.5, left, right);
    EXPECT_EQ(c.count, roots(w, c.depth).size());
    if (c.count == 0 || c.depth == 64) continue;
    expectSame(roots(w, c.depth), joined(roots(left, c.depth + 1), roots(right, c.depth + 1)));
  }
}

/// A part of a segment, to be halved depth times.
struct Part {
  GxBezier s;
  double lo, hi;
  int depth;

  std::vector<Part> halves() const {
    if (depth < 1) return {*this};
    GxBezier left, right;
    s.split(left, right, 0.5);
    return {{left, lo, (lo + hi) / 2, depth - 1}, {right, (lo + hi) / 2, hi, depth - 1}};
  }
};

/// The crossings of two parts, (t, u) each.
Points crossings(Part const& a, Part const& b) {
  GxList<double> t, u;
  Points pairs;
  OpenBezier(a.s).recursivelyIntersect(a.s, a.lo, a.hi, a.depth, b.s, b.lo, b.hi, b.depth, t, u);
  for (unsigned i = 0; i < t.length(); ++i) pairs.push_back(Point(t[i], u[i]));
  return pairs;
}

TEST(Guards, IntersectionsStopAtTheirDepthAndCountNoPairThatIsNotANumber) {
  Part const arc = {support::quarterArc(100), 0, 1, 15}, wave = {support::sShape(), 0, 1, 20};
  // Halved to the smallest double, then into itself and a point: twice as many at every level.
  Part deepest = {bezier(0, 0, 0x1p9, 0, 0x1p9, 0, 0x1p10, 0), 0, 0x1p100, 1100};
  Part const high = {support::retractedLine(0, -0x1p1022, 0, 0x1p1022), 0, 1, 0};
  struct Case {
    Part const &a, &b;
    std::size_t least;
  } const cases[] = {{arc, arc, 2}, {wave, arc, 1}, {deepest, high, 1}};
  for (Case const& c : cases) {
    Points halves;
    for (Part const& b : c.b.halves()) {
      for (Part a : c.a.halves()) {
        if (a.s.isIntersect(b.s)) halves = joined(halves, crossings(a, b));
      }
    }
    expectSame(halves, crossings(c.a, c.b));
    EXPECT_LE(c.least, halves.size());
  }
  Points const deep = crossings(deepest, high);
  ASSERT_FALSE(deep.empty());
  EXPECT_BITS(deep[0], Point(0x1p-983 - 0x1p-1000, 0.5));  // 17 times into itself
  deepest.depth = INT_MAX;
  expectSame(deep, crossings(deepest, high));
  // A line in the box of another segment is halved everywhere, and crossed at its very end: 25
  // times it makes one pair fewer than are looked at, and 26 times twice as many.
  Part line = {evenLine(0, 0, 8, 0), 0, 1, 25};
  Part const last = {bezier(8, -1, 0, -1, 0, 1, 8, 1), 0, 1, 0};
  expectSame({Point(1, 0.5)}, crossings(line, last));
  line.depth = 26;
  EXPECT_TRUE(crossings(line, last).empty());
  // A depth that is not finite: the chord. Chords that are not: none.
  GxList<double> t, u;
  GxBezier const up = evenLine(0, -4, 0, 4);
  EXPECT_EQ(0, bezier(kNaN, -9, -4, 0, 4, 1, 4, 9).findIntersections(up, t, u));
  EXPECT_EQ(1, bezier(-4, 0, 1e305, 0, -1e305, 8, 4, 0).findIntersections(up, t, u));
  EXPECT_TRUE(t.length() == 1 && t[0] == 0.5 && u[0] == 0.5);
}

/// Follows the pieces at the start, which lies in the origin, until one is as short as wanted.
struct TowardsStart : GxBezierPolylineCondition {
  explicit TowardsStart(double size) : size_(size) {}
  int isALine(GxBezier const& s, double) const override { return s[3].xval() <= size_; }
  int isAPoint(GxBezier const& s, double) const override { return s[0] != Point(0, 0); }
  double size_;
};

/// The points of a polyline by halving, (x, y) and (t, 0) each.
Points halved(GxBezier const& s, double tol, double t, int n, GxBezierPolylineCondition const& c) {
  std::list<Point> points;
  std::list<double> times;
  OpenBezier(s).makePolyline(tol, t, n, points, times, c);
  Points out;
  for (Point const& p : points) {
    out.insert(out.end(), {p, Point(times.front(), 0.0)});
    times.pop_front();
  }
  return out;
}

TEST(Guards, HalvingEndsAtItsDepthAndWhereNothingIsEverALine) {
  GxBezierPolylineCondition const own;
  TowardsStart const soon(3 * 0x1p-14), last(3 * 0x1p-1074);
  GxBezier const s = support::sShape(), line = evenLine(0, 0, 3 * 0x1p26, 0);
  double const a = 1.0 + 0x1p-52, b = 1.0 + 0x1p-51;  // the point between them is b
  struct Case {
    GxBezier s;
    double tol;
    GxBezierPolylineCondition const& condition;
    Points result;  // none: more than a hundred thousand points
  } const cases[] = {{s, 1e-8, own, {}},
                     {line, -0.0, own, {line[3], {1, 0}}},
                     {line, 1, soon, {{3 * 0x1p-14, 0}, {0x1p-40, 0}}},
                     {line, 1, last, {{3 * 0x1p-1074, 0}, {0, 0}}},
                     {bezier(a, a, b, a, b, b, b, b), 0, own, {{b, b}, {0, 0}}},
                     {bezier(0, 0, 1, kInf, 2, 0, 3, 0), 1, own, {{3, 0}, {1, 0}}}};
  for (Case const& c : cases) {
    SCOPED_TRACE(&c - cases);
    Points const whole = halved(c.s, c.tol, 0.0, 1, c.condition);
    if (!c.result.empty()) {
      expectSame(c.result, whole);
      continue;
    }
    GxBezier left, right;
    c.s.split(left, right, 0.5);
    EXPECT_LT(1e5, whole.size());
    expectSame(joined(halved(left, c.tol, 0.0, 2, own), halved(right, c.tol, 0.5, 2, own)), whole);
  }
}

/// Everything shorter than two units is a point, and nothing is a line.
struct ShortIsAPoint : GxBezierPolylineCondition {
  int isALine(GxBezier const&, double) const override { return 0; }
  int isAPoint(GxBezier const& s, double) const override { return s[3].xval() - s[0].xval() < 2.0; }
};

TEST(Guards, HalvingLooksAtSoManyPiecesThenTakesTheRestAsLines) {
  // Halved down to points, 2^25 units make one piece fewer than are looked at; of 2^26 units the
  // first half and the whole make as many, and the second half is left.
  EXPECT_TRUE(halved(evenLine(0, 0, 0x1p25, 0), 1, 0.0, 1, ShortIsAPoint()).empty());
  expectSame({{0x1p26, 0}, {1, 0}}, halved(evenLine(0, 0, 0x1p26, 0), 1, 0.0, 1, ShortIsAPoint()));
}

TEST(Guards, ShortChordsAreWalkedUntilTheirPointsAreUsedUp) {
  // Measuring a length takes 327,670 points, of which 2^28 are 819.2.
  GxBezierCurve const curve =
      support::curveOf({support::bezier(0, 0, 5e10, 0, 5e10, 1e10, 1e11, 1e10)});
  Position const from(0, 0.0);
  Position to, plain(from), next;
  EXPECT_EQ(-1, curve.findNextPos(from, to, 1e6, 1, 1));
  double const chord = 1e6 / std::trunc(1e6 / 3.0);
  int count = 0;
  for (; count < 1000 && !(plain == to); ++count, plain = next) {
    ASSERT_EQ(0, curve.findNextPos(plain, next, chord, 1, 0));
  }
  EXPECT_NEAR(count, 819.2, 1);
  // Points are counted, not guessed: near this end, which is a cusp, lengths take few.
  GxBezierCurve const cusp =
      support::curveOf({support::bezier(-6388600, 3162518, -6010237, 6388600, 639, 40, 639, 40)});
  EXPECT_EQ(0, cusp.findNextPos({0, 0.999}, to, 8e5, 0, 1));
}

}  // namespace
