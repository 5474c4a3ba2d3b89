// Guards, on both sides: inputs that end because of one, with the result that is promised, and the
// nearest ones that end without it, whose bits are those of the plain steps: written out here, or
// taken once by hand before the operation goes on with the halves, out of reach of its guards.
// Those of positions, maps, splitting and the blend table are, for the most part, with their rooms.
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

TEST(Guards, RootsOfCubicsAreFoundOverTheWholeRangeOfDoubles) {
  for (int const e : {0, 30, 100, 300}) {
    double roots[3];
    ASSERT_EQ(1, cubicRoots(1.0, 0.0, 0.0, -std::ldexp(1.0, -3 * e), roots));
    EXPECT_BITS(std::ldexp(1.0, -e), roots[0]);
  }
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

TEST(Guards, TheFirstIntersectionIsFoundBeyondBillionsOfPairsOfChords) {
  GxBezier a = bezier(0, 0, 300, 100, 600, -100, 900, 0);
  GxBezier b = bezier(880, -40, 884, -10, 876, 9, 880, 40);
  GxList<double> t, u;
  std::pair<double, double> found;
  EXPECT_EQ(1, a.findFirstIntersection(b, found, 1e-8));  // 150,000 chords and 33,000
  ASSERT_EQ(1, a.findIntersections(b, t, u));
  EXPECT_NEAR_POINT(Point(t[0], u[0]), Point(found.first, found.second), 1e-6);
}

Points plainChords(GxBezier const& s, double chord, double startT) {
  Points out = {s.bValue(startT)};
  double const step = (1.0 - startT) * chord / s.length(startT);
  if (step >= 1.0) return {out[0], s[3]};
  for (double t = startT, next; t < 1.0; t = next) {
    double lo = t, hi = 1.0;
    next = s.splitAtFixedLengthAfter(chord, 0, lo, hi, t);
    if (next == lo) next = min(lo + step, 1.0);
    out.push_back(s.bValue(next));
  }
  return out;
}

TEST(Guards, ChordsStopWhereTheParameterDoesNotGrow) {
  GxBezier const s = support::sShape(), half = bezier(0, 0, 1, kInf, 2, 0, 3, 0);
  GxBezier const wide = evenLine(0, 0, 1e18, 0);  // whose points lie 111 apart near its end
  struct Case {
    GxBezier const& s;
    double chord, startT;
    bool stops;  // which the plain steps do not
  } const cases[] = {{s, 7, 0, false},
                     {s, 7, -2, false},
                     {s, 0, 0, false},
                     {s, -0.05, 0, false},
                     {s, 900, 0, false},
                     {wide, 60, 1 - 0x1p-40, false},
                     {wide, 50, 1 - 0x1p-40, true},
                     {wide, kNaN, 0.5, true},
                     {half, 1, 0.5, true}};
  for (Case const& c : cases) {
    SCOPED_TRACE(&c - cases);
    GxList<Point> one, two;
    c.s.makeSegment(c.chord, one, c.startT);
    c.s.makeSegmentEx(c.chord, c.chord / 2, 9, two, c.startT);
    Points const start = {c.s.bValue(c.startT)};
    expectSame(c.stops ? start : plainChords(c.s, c.chord, c.startT), support::valuesOf(one));
    EXPECT_EQ(c.stops, two.length() == 1);
  }
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

/// The plain search from the near end of a bracket towards its far end.
double plainSearch(GxBezier const& s, double d, int steps, double& near, double& far, double anchor,
                   double end) {
  Point const p = s.bValue(anchor);
  for (; end == 1.0 ? near < far : far < near; ++steps) {
    double const middle = (near + far) * 0.5, reach = s.bValue(far).distance(p);
    if (std::fabs(reach - d) < 0.1 || (far == end && reach < d)) return far;
    double const excess = s.bValue(middle).distance(p) - d;
    if (std::fabs(excess) <= 0.1 || steps > 15) return middle;
    (excess <= 0.0 ? near : far) = middle;
  }
  return near;
}

TEST(Guards, SearchesAtADistanceEndWhereTheirBracketCannotBeHalved) {
  support::Random random(61);
  for (int i = 0; i < 60; ++i) {
    double const size = i % 2 ? 1e18 : 100.0, d = random.uniform(0.0, size);
    double const t = random.uniform(0.0, 1.0);
    GxBezier const s = random.segment(size);
    for (int const steps : {0, 14, 16, -40, -3000, INT_MIN}) {
      double lo[] = {t, t, 0, 0}, hi[] = {1, 1, t, t};
      EXPECT_BITS(plainSearch(s, d, max(steps, -3000), lo[0], hi[0], t, 1.0),
                  s.splitAtFixedLengthAfter(d, steps, lo[1], hi[1], t));
      EXPECT_BITS(plainSearch(s, d, max(steps, -3000), hi[2], lo[2], t, 0.0),
                  s.splitAtFixedLengthBefore(d, steps, lo[3], hi[3], t));
      EXPECT_TRUE(lo[0] == lo[1] && hi[0] == hi[1] && lo[2] == lo[3] && hi[2] == hi[3]);
    }
  }
}

TEST(Guards, OrientationIsReadWhereALevelTopEndsOrNot) {
  for (int const n : {1, 2, 9, 200}) {
    GxBezierCurve top;
    for (int i = 0; i < n; ++i) {  // level, but no lines: the handles run beyond the ends
      top.getSegments().add(bezier(30 * i, 0, 30 * i - 10, 0, 30 * i + 40, 0, 30 * i + 30, 0));
    }
    int valid = 7;
    EXPECT_EQ(0, top.isClockwise(valid));
    EXPECT_EQ(0, valid);
    top.getSegments().add(evenLine(30 * n, 0, 0, -50));
    top.getSegments().add(evenLine(0, -50, -30, 0));
    top.getSegments().add(bezier(-30, 0, -40, 0, -9, 0, 0, 0));
    EXPECT_EQ(1, top.isClockwise(valid));
    EXPECT_EQ(1, valid);
  }
}

TEST(Guards, LineIntersectionsStartOnTheCurveOrNowhere) {
  GxBezierCurve const cup = support::polygon({0, 30, 0, 0, 30, 0, 30, 30}), none;
  // From, aim, and where the line through both ends is met: nowhere else.
  for (auto const& row : support::table("0 9 0; 2 9 3; 3 0 3; 2.75 0 0; 3 9 -1; 4 0 -1; -1 9 -1;"
                                        "2147483647 0 -1; -2147483648 9 -1")) {
    for (auto const search : {&GxBezierCurve::findFirstGeometricLineIntersection,
                              &GxBezierCurve::findFirstGeometricLineIntersectionEx}) {
      Position const from = support::at(row[0]), towards = support::at(row[1]);
      Position at[] = {support::at(-1), support::at(-1)};
      EXPECT_EQ(min(row[2], 0.0), (cup.*search)({9, 30}, {1, 0}, from, towards, at[0], 1e-9));
      EXPECT_BITS(support::at(row[2]), at[0]);
      EXPECT_EQ(-1, (none.*search)({9, 30}, {1, 0}, from, towards, at[1], 1e-9));
      EXPECT_BITS(support::at(-1), at[1]);
    }
  }
}

/// The plain walk, from a point where that is given.
int plainWalk(GxBezierCurve const& curve, Position const& from, Position const& limit, Position& to,
              double d, double& used, int forward, Point const* p) {
  long const n = static_cast<long>(curve.length());
  double start = from.getTValue();
  for (long i = from.getSegmentNumber();; i += forward ? 1 : -1, start = forward ? 0.0 : 1.0) {
    int const k = static_cast<int>((i % n + n) % n);
    bool const isLast = i == limit.getSegmentNumber();
    double const far = isLast ? limit.getTValue() : forward;
    double t = 0.0;
    int const code = p != nullptr ? curve[k].findNextPosFromPoint(t, start, far, *p, d * d, forward)
                                  : curve[k].findNextPos(t, start, far, d * d, forward, used);
    if (code == 0) to = Position(k, t);
    if (code == 0 || isLast) return code;
    if (p == nullptr) d -= curve.locateCurvePosition(from).distance(curve[k][forward ? 3 : 0]);
  }
}

TEST(Guards, WalksGoAroundAsLongAsAStepCanBeFound) {
  GxBezierCurve const unit = support::curveOf({evenLine(0, 0, 1, 0)}), circle = support::circle(3);
  // On the circle, from, limit, distance, and whether the plain walk ends; backwards, the limit is
  // the start.
  for (auto const& row : support::table(
           "0 0.25 2147483647 1e300 0; 0 0.25 2147483647 -3 0; 0 0 20000.75 9000.5 1;"
           "0 0 20000.75 9e9 1; 0 0 9000.5 7 1; 1 0.5 9.5 2.5 1; 1 1.5 2147483647 40000 1")) {
    GxBezierCurve const& curve = row[0] != 0 ? circle : unit;
    for (int const forward : {1, 0}) {
      SCOPED_TRACE(testing::Message() << row[2] << " " << row[3] << " " << forward);
      Position const from = support::at(row[forward ? 1 : 2]);
      Position const limit = support::at(row[forward ? 2 : 1]);
      Position to[2], plain;
      double used = 0.25, plainUsed = 0.25;
      int const code = curve.findNextPos(from, limit, to[0], row[3], used, forward);
      EXPECT_EQ(code, curve.findNextPos(from, limit, to[1], row[3], forward));
      bool const ends = row[4] != 0;
      EXPECT_EQ(code,
                ends ? plainWalk(curve, from, limit, plain, row[3], plainUsed, forward, {}) : -1);
      EXPECT_TRUE(!ends || support::bitsMatch(plainUsed, used));
      EXPECT_BITS(plain, to[0]);
      EXPECT_BITS(plain, to[1]);
    }
  }
  // Every lap takes 1 off the distance and counts for 24 evaluations at least.
  Position near, far;
  ASSERT_EQ(0, unit.findNextPos({0, 0.0}, {INT_MAX, 0.5}, near, 9000.5, 1));
  EXPECT_EQ(0, unit.findNextPos({0, 0.0}, {INT_MAX, 0.5}, far, 11184800.5, 1));
  EXPECT_BITS(near, far);
  EXPECT_EQ(-1, unit.findNextPos({0, 0.0}, {INT_MAX, 0.5}, far, 11184820.5, 1));
  // From a point all whole turns are alike, but those of the first and the last segment are none.
  GxBezierCurve const lines = support::polygon({0, 0, 10, 0, 10, 9});
  for (double const limit : {0.5, 3.5, 4.5, 1000.5, 1001.5, 2147483645.5, 2147483646.5}) {
    for (double const d : {0.3, 0.9}) {
      double const plainLimit = limit < 9999 ? limit : 1000 + std::fmod(limit, 2);
      Position const from(0, d < 0.5 ? 0.0 : 0.5);
      Position to, plain;
      Point const p(1, 0);
      double unused;
      EXPECT_EQ(plainWalk(lines, from, support::at(plainLimit), plain, d, unused, 1, &p),
                lines.findNextPosFromPoint(p, from, support::at(limit), to, d, 1));
      EXPECT_BITS(plain, to);
    }
  }
}

TEST(Guards, ShortChordsAreCountedBeyondTheRangeOfIntAndBelowThatOfDoubles) {
  GxBezierCurve const line = support::curveOf({evenLine(0, 0, 100, 0)});
  for (double const d : {60.0, 3 * 0x1p20, 3 * 0x1p40, 3 * 0x1p1000, 5e-324, 5e-323}) {
    for (double const t : {0.25, 1.0}) {
      // All counts give the same chords, of 3, up to the end.
      double const plainD = std::fmin(d, 3 * 0x1p20);
      double const chord = d > 30 ? plainD / static_cast<int>(plainD * (1.0 / 3.0)) : d * 0.1;
      Position plain(0, t), to, next;
      int code = 0;
      for (double way = chord; way < plainD * 1.05; way += chord, plain = next) {
        code = line.findNextPos(plain, next, chord, 1, 0);
        if (code != 0 || chord == 0.0) break;
      }
      EXPECT_EQ(code, line.findNextPos({0, t}, to, d, 1, 1));
      EXPECT_BITS(plain, to);
    }
  }
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

TEST(Guards, ListsAreUsableWhenEmptyAndTakeEveryIndex) {
  for (int const index : {INT_MIN, -1, 0, 1, INT_MAX}) {
    GxList<double> list;
    for (double const v : {1.0, 2.0, 3.0}) list.add(v);
    list.remove(index);
    EXPECT_EQ(list.find(1 + max(index, 0) % 3), -1);
    for (int i = 0; i < 3; ++i) list.remove(index);
    EXPECT_EQ(0, list.first() + list.next() + list.prev());
    EXPECT_EQ(9.0, list.insert(9, index));
    EXPECT_EQ(Numbers{9}, support::valuesOf(list));
  }
}

TEST(Guards, PositionsAreHeldInTheRangeOfInt) {
  for (int const beyond : {-1, 0, 1, 7}) {
    Position const p(INT_MAX - 1, 1.0 + beyond);
    int const held = INT_MAX + min(beyond, 0);
    EXPECT_BITS(snapToAnchor(p, 1e-9), rawPosition(held, 0.0));
    EXPECT_EQ(diff({0, 0.0}, p, 1, 4).first, held);
  }
  for (int const k : {INT_MIN, -9, 0, 9, INT_MAX}) {
    auto const map = constructRotatePositionMap(1, k, INT_MAX);
    int const there = static_cast<int>((2LL * INT_MAX - 1 + k) % INT_MAX);
    EXPECT_BITS(rawPosition(there, 0.5), support::forth(map, {INT_MAX - 1, 0.5}).at);
  }
}

TEST(Guards, AClosedCurveIsRotatedModuloItsSegments) {
  for (double const k : {-9.0, 0.0, 3.0, 4.0, 1001.0, 2147483647.0, 0x1p52 + 2}) {
    GxBezierCurve curve = support::circle(100), plain = curve;
    for (double i = 0; i < (k < 2000 ? k : std::fmod(k, 4)); ++i) plain.getSegments().move(0, 3);
    arrangeBezierCurve(curve, Position(0, k), Position(0, k));
    EXPECT_EQ(plain, curve) << k;
  }
}

}  // namespace
