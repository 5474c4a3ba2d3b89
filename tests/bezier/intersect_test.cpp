// Crossings of segments with segments and with lines, the first crossing, loops.
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

namespace {

using support::bezier;
using support::evenLine;
using support::Point;

// A piece deviates from its chord by 2^-14: the points of a pair lie within twice that.
constexpr double kPairDistance = 0x1p-13;

/// Pairs (t, u).
using Pairs = std::vector<Point>;

Pairs pairsOf(GxList<double> const& t, GxList<double> const& u) {
  EXPECT_EQ(t.length(), u.length());
  Pairs pairs;
  for (unsigned i = 0; i < t.length(); ++i) pairs.push_back(Point(t[i], u[i]));
  return pairs;
}

Pairs crossings(GxBezier a, GxBezier const& b) {
  GxList<double> t, u;
  int const found = a.findIntersections(b, t, u);
  EXPECT_EQ(found, t.length() > 0 ? 1 : 0);
  return pairsOf(t, u);
}

/// Every one of the pairs is among the others.
void expectAmong(Pairs const& pairs, Pairs const& others, double tol) {
  for (Point const& p : pairs) {
    double least = support::kInf;
    for (Point const& q : others) least = std::fmin(least, p.distance(q));
    EXPECT_LE(least, tol) << support::text(p);
  }
}

void expectPairs(Pairs const& pairs, std::vector<double> const& expected, double tol) {
  Pairs wanted;
  for (std::size_t i = 1; i < expected.size(); i += 2) {
    wanted.push_back(Point(expected[i - 1], expected[i]));
  }
  expectAmong(wanted, pairs, tol);
  expectAmong(pairs, wanted, tol);
}

double side(Point const& p, Point const& q, Point const& r) {
  return (q - p).cross(r - p) / (q - p).length();
}

/// The crossings of two inscribed polylines that are clear: each chord's ends lie on either side of
/// the other chord's line, at least 1/1000 of the segment's own extent away from it.
Pairs clearCrossings(GxBezier const& a, GxBezier const& b) {
  double const clear = 1e-3 * std::fmax(a[0].distance(a[1]) + a[1].distance(a[2]),
                                        b[0].distance(b[1]) + b[1].distance(b[2]));
  auto const apart = [clear](double d1, double d2) {
    return d1 * d2 < 0.0 && std::fmin(std::fabs(d1), std::fabs(d2)) > clear;
  };
  Pairs found;
  for (int k = 0; k < 64 * 64; ++k) {
    double const t = k / 64 / 64.0, u = k % 64 / 64.0;
    Point const a0 = a.bValue(t), a1 = a.bValue(t + 1 / 64.0);
    Point const b0 = b.bValue(u), b1 = b.bValue(u + 1 / 64.0);
    if (apart(side(a0, a1, b0), side(a0, a1, b1)) && apart(side(b0, b1, a0), side(b0, b1, a1))) {
      found.push_back(Point(t, u));
    }
  }
  return found;
}

/// What must hold of any two segments; returns their crossings.
Pairs checkedCrossings(GxBezier a, GxBezier b) {
  Pairs const pairs = crossings(a, b);
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    EXPECT_NEAR_POINT(a.bValue(pairs[i].xval()), b.bValue(pairs[i].yval()), kPairDistance);
    EXPECT_TRUE(i == 0 || pairs[i].xval() <= pairs[i - 1].xval());
  }
  Pairs const clear = clearCrossings(a, b);
  if (a.isIntersect(b)) expectAmong(clear, pairs, 3.0 / 64);
  std::pair<double, double> first;
  int const found = a.findFirstIntersection(b, first, 0.1);
  EXPECT_TRUE(found || clear.empty());
  EXPECT_TRUE(!found || a.bValue(first.first).distance(b.bValue(first.second)) < 2.5);
  return pairs;
}

TEST(GxBezierIntersect, PairsLieOnBothSegmentsAndNoClearCrossingIsMissed) {
  std::size_t found = 0;
  for (char const* const name : {"italic-ampersand-outer-thirds", "roman-capital-s-thirds"}) {
    for (GxBezier const& a : support::segments(name)) {
      for (GxBezier const& b : support::segments("bold-w-ends")) {
        found += checkedCrossings(a, b).size();
      }
    }
  }
  EXPECT_GT(found, 20u);
  support::Random random(5);
  for (int i = 0; i < 300; ++i) checkedCrossings(random.segment(300.0), random.segment(300.0));
}

TEST(GxBezierIntersect, HardCasesHaveExactlyTheirCrossings) {
  for (support::HardCase const& hard : support::hardCases("segments")) {
    SCOPED_TRACE(hard.source);
    GxBezier const a = support::segmentOf(hard.fields[0]);
    expectPairs(crossings(a, support::segmentOf(hard.fields[1])), hard.fields[2], 1e-4);
  }
  GxBezier level = support::retractedLine(0, 0, 8, 0);
  expectPairs(crossings(level, support::retractedLine(8, 0, 8, 5)), {1.0, 0.0}, 0.0);
  for (GxBezier const& other :
       {support::retractedLine(0, 1, 8, 1), support::retractedLine(2, 0, 6, 0),
        support::retractedLine(8, 0.5, 12, -0.5), support::pointLike(4, 0)}) {
    EXPECT_TRUE(crossings(level, other).empty());  // parallel, collinear, past the end, a point
  }
  EXPECT_EQ(level.isIntersect(support::retractedLine(8, 0, 9, 9)), 1);
  EXPECT_EQ(level.isIntersect(support::retractedLine(std::nextafter(8.0, 9.0), 0, 9, 9)), 0);
}

TEST(GxBezierIntersect, ListsAreAppendedToAndSortedWithWhatTheyHeldAndPiecesServed) {
  GxList<double> t, u;
  for (double x : {0.25, 2.0, -1.0}) t.add(x), u.add(10.0 * x);
  support::OpenBezier a(evenLine(0, 0, 8, 8));
  GxBezier const b = evenLine(0, 8, 8, 0);
  EXPECT_EQ(a.findIntersections(b, t, u), 1);
  EXPECT_EQ(pairsOf(t, u), (Pairs{{2, 20}, {0.5, 0.5}, {0.25, 2.5}, {-1, -10}}));
  for (int const depth : {0, -5, 3}) {
    GxList<double> t2, u2;
    a.recursivelyIntersect(a, 2.0, 4.0, depth, b, 0.0, 0.5, 6 - depth, t2, u2);
    expectPairs(pairsOf(t2, u2), {3.0, 0.25}, 1e-9);
  }
}

TEST(GxBezierIntersectFirst, EndOnEndDoesNotCountAndTheFirstIsFound) {
  GxBezier const s = support::sShape();
  GxBezier const valley = bezier(60, 40, 60, -40, 30, -40, 30, 40);
  GxBezier const hill = bezier(0, 0, 30, 20, 60, 20, 90, 0);
  Point const first = crossings(hill, valley).back();
  struct Case {
    GxBezier a, b;
    int found;
    Point tu;
  };
  Case const cases[] = {
      {s, bezier(100, 100, 120, 120, 130, 90, 140, 60), 0, Point(-7, -8)},  // end on start
      {s, evenLine(0, 0, 100, 100), 1, Point(0.5, 0.5)},                    // both ends shared
      {s, evenLine(50, 50, 90, 30), 1, Point(0.5, 0.0)},                    // end on inside
      {s, support::pointLike(50, 50), 0, Point(-7, -8)},
      {hill, valley, 1, first},
  };
  for (Case const& k : cases) {
    GxBezier other = k.b;
    std::pair<double, double> result(-7.0, -8.0);
    EXPECT_EQ(GxBezier(k.a).findFirstIntersection(other, result, 0.1), k.found);
    EXPECT_NEAR_POINT(Point(result.first, result.second), k.tu, 0.01);
  }
}

TEST(GxBezierIntersectLine, CrossingsLieOnBothAndEndsCount) {
  struct Case {
    GxBezier segment;
    Point a, b;
    std::vector<double> expected;
  };
  std::vector<Case> cases;
  for (support::HardCase const& hard : support::hardCases("lines")) {
    std::vector<double> const& n = hard.fields[1];
    cases.push_back(
        {support::segmentOf(hard.fields[0]), {n[0], n[1]}, {n[2], n[3]}, hard.fields[2]});
  }
  std::size_t const curved = cases.size();
  GxBezier const level = support::retractedLine(2, 0, 6, 0);
  double const quarter = 0.32635182233306964818;  // 3t^2 - 2t^3 = 1/4
  Case const straight[] = {
      {level, {3, -1}, {3, 3}, {quarter, 0.25}},
      {level, {2, 0}, {2, 5}, {0.0, 0.0}},
      {level, {2 - 1e-10, -1}, {2 - 1e-10, 1}, {0.0, 0.5}},
      {level, {0, 1}, {9, 1}, {}},
      {level, {0, 0}, {8, 0}, {0.0, 0.25, 1.0, 0.75}},  // inside the line
      // Deliberate rule: the sign of a cross product that is nearly zero swaps the parameters.
      {level, {0, 0}, {8, -1e-11}, {1.0, 0.25, 0.0, 0.75}},
      {level, {3, 0}, {8, 0}, {quarter, 0.0, 1.0, 0.6}},
      {level, {7, 0}, {9, 0}, {}},
      {support::pointLike(3, 0), {0, 0}, {8, 0}, {}},
  };
  cases.insert(cases.end(), std::begin(straight), std::end(straight));
  for (std::size_t i = 0; i < cases.size(); ++i) {
    Case const& k = cases[i];
    GxList<double> t, s, t2, s2;
    int const pairs = static_cast<int>(k.expected.size() / 2);
    EXPECT_EQ(k.segment.findYCStrongIntersection(k.a, k.b, t, s), i < curved ? pairs : pairs > 0);
    expectPairs(pairsOf(t, s), k.expected, 1e-8);
    EXPECT_EQ(k.segment.linearProcessing(k.a, k.b, t2, s2), i < curved ? 0 : pairs > 0) << i;
  }
  // The line's end on the curve (s = 1) counts; one just short of it does not, and a root just
  // outside the segment is its end. The count is that of the whole list.
  GxBezier const bow = bezier(0, 0, 0, 12, 12, 12, 12, 0);
  GxList<double> t, s;
  EXPECT_EQ(bow.findYCStrongIntersection(Point(6, 0), Point(6, 9), t, s), 1);
  EXPECT_EQ(bow.findYCStrongIntersection(Point(6, 0), Point(6, 8.999), t, s), 1);
  EXPECT_EQ(bow.findYCStrongIntersection(Point(-1, -1e-10), Point(1, -1e-10), t, s), 2);
  EXPECT_EQ(bow.findYCStrongIntersection(Point(3, 3), Point(3, 3), t, s), 0);
  expectPairs(pairsOf(t, s), {0.5, 1.0, 0.0, 0.5}, 0.0);
}

TEST(GxBezierIntersectLine, RootsAgainstTheAxis) {
  struct Case {
    double y[4], tol;
    std::vector<double> expected;
  };
  double const w = std::sqrt(7.5 / 46);
  Case const cases[] = {
      {{0, 0, 0, 0}, 1e-9, {0.0, 1.0}},        {{2, -7, 7, -2}, 1e-9, {0.5 - w, 0.5, 0.5 + w}},
      {{0.001, 0.334, 0.667, 1}, 0.01, {0.0}},  // the root at -0.001 counts as 0
      {{0.001, 0.334, 0.667, 1}, 1e-9, {}},    {{-1, -0.667, -0.334, -0.001}, 0.01, {1.0}},
  };
  for (Case const& k : cases) {
    int count = -1;
    double r[3];
    intersectBezierWithXAxis(Point(0, k.y[0]), Point(1, k.y[1]), Point(2, k.y[2]), Point(3, k.y[3]),
                             count, r[0], r[1], r[2], k.tol);
    ASSERT_EQ(count, static_cast<int>(k.expected.size()));
    for (std::size_t i = 0; i < k.expected.size(); ++i) EXPECT_NEAR(r[i], k.expected[i], 1e-12);
  }
}

TEST(GxBezierSelfIntersect, EveryLoopMeetsItselfNoneIsMissedAndItIsCutOnce) {
  double t[2] = {};
  for (support::HardCase const& hard : support::hardCases("loops")) {
    SCOPED_TRACE(hard.source);
    std::vector<double> const& expected = hard.fields[2];
    ASSERT_EQ(support::segmentOf(hard.fields[0]).isSelfIntersect(t[0], t[1]), !expected.empty());
    if (expected.empty()) continue;
    EXPECT_NEAR(std::fmin(t[0], t[1]), expected[0], 1e-8);
    EXPECT_NEAR(std::fmax(t[0], t[1]), expected[1], 1e-8);
  }
  GxBezier small = support::loop();
  small.scale(5e-4, 5e-4);
  EXPECT_EQ(small.isSelfIntersect(t[0], t[1]), 0);  // handles of 0.09
  EXPECT_EQ(bezier(0, 0, 50, 50, -50, 50, 0.1, 0).isSelfIntersect(t[0], t[1]), 1);  // closed
  EXPECT_TRUE(t[0] == 0.0 && t[1] == 1.0);
  GxList<GxBezier> pieces;
  support::sShape().cleanSelfIntersection(pieces);
  support::loop().cleanSelfIntersection(pieces);
  ASSERT_EQ(pieces.length(), 3u);
  EXPECT_BITS(pieces[0], support::sShape());
  EXPECT_NEAR_POINT(pieces[1][3], support::loop().bValue(0.5), 1e-9);
  EXPECT_BITS(pieces[1][3], pieces[2][0]);
  EXPECT_EQ(pieces[1].isSelfIntersect(t[0], t[1]), 0);
}

TEST(GxBezierIntersectLine, RandomCrossingsLieOnBothAndRandomLoopsMeetThemselves) {
  support::Random random(51);
  int met = 0;
  int loops = 0;
  for (int i = 0; i < 3000; ++i) {
    GxBezier segment = i % 4 ? random.segment(100) : random.gridSegment(5);
    Point const a = random.point(120);
    Point const b = random.point(120);
    GxList<double> t, s;
    segment.findYCStrongIntersection(a, b, t, s);
    for (Point const& pair : pairsOf(t, s)) {
      ASSERT_TRUE(support::near(segment.bValue(pair.xval()), a + (b - a) * pair.yval(), 1e-8));
      ++met;
    }
    double t1, t2;
    if (!segment.isSelfIntersect(t1, t2)) continue;
    ASSERT_TRUE(support::near(segment.bValue(t1), segment.bValue(t2), 1e-6));
    loops += t1 != t2;
  }
  EXPECT_GT(met, 500);
  EXPECT_GT(loops, 50);
}

}  // namespace
