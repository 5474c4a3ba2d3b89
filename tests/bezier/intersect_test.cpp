// Crossings of segments with segments and with lines, the first crossing, loops.
#include "crv/crv.h"
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

#include <cmath>
#include <ctime>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Point = GxCoord<double>;
using support::bezier;
using support::HardCase;
using support::OpenBezier;
using support::Random;

// A piece deviates from its chord by 2^-14, so that the points of a pair lie no farther apart than
// twice that.
constexpr double kPairDistance = 0x1p-13;

struct Pair {
  double t, u;
};

std::vector<Pair> pairsOf(GxList<double> const& t, GxList<double> const& u) {
  EXPECT_EQ(t.length(), u.length());
  std::vector<Pair> pairs;
  for (unsigned i = 0; i < t.length(); ++i) pairs.push_back({t[i], u[i]});
  return pairs;
}

std::vector<Pair> crossings(GxBezier a, GxBezier const& b) {
  GxList<double> t, u;
  int const found = a.findIntersections(b, t, u);
  EXPECT_EQ(found, t.length() > 0 ? 1 : 0);
  return pairsOf(t, u);
}

bool holds(std::vector<Pair> const& pairs, double t, double u, double tol) {
  for (Pair const& p : pairs) {
    if (std::fabs(p.t - t) <= tol && std::fabs(p.u - u) <= tol) return true;
  }
  return false;
}

/// Every pair is expected, and every expected one is there, whatever the order and the doubles.
void expectPairs(std::vector<Pair> const& pairs, std::vector<double> const& expected, double tol) {
  std::vector<Pair> wanted;
  for (std::size_t i = 0; i + 1 < expected.size(); i += 2) {
    wanted.push_back({expected[i], expected[i + 1]});
    EXPECT_TRUE(holds(pairs, expected[i], expected[i + 1], tol))
        << expected[i] << ", " << expected[i + 1] << " is missing";
  }
  for (Pair const& p : pairs) EXPECT_TRUE(holds(wanted, p.t, p.u, tol)) << p.t << ", " << p.u;
}

double sizeOf(GxBezier const& s) {
  double minX, minY, maxX, maxY;
  s.getConvexHull(minX, minY, maxX, maxY);
  return std::fmax(maxX - minX, maxY - minY);
}

double secondsOf(GxBezier a, GxBezier const& b, unsigned& count) {
  std::clock_t const start = std::clock();
  GxList<double> t, u;
  a.findIntersections(b, t, u);
  count = t.length();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// The crossings of two inscribed polylines that are clear: each chord's ends lie on either side of
/// the other chord's line, at least 1/1000 of the smaller segment's size away from it.
std::vector<Pair> clearCrossings(GxBezier const& a, GxBezier const& b) {
  constexpr int kChords = 64;
  double const clear = 1e-3 * std::fmin(sizeOf(a), sizeOf(b));
  std::vector<Pair> found;
  auto const side = [](Point const& p, Point const& q, Point const& r) {
    return (q - p).cross(r - p) / (q - p).length();
  };
  auto const apart = [clear](double d1, double d2) {
    return d1 * d2 < 0.0 && std::fmin(std::fabs(d1), std::fabs(d2)) > clear;
  };
  for (int i = 0; i < kChords; ++i) {
    Point const a0 = a.bValue(1.0 * i / kChords);
    Point const a1 = a.bValue((i + 1.0) / kChords);
    for (int j = 0; j < kChords; ++j) {
      Point const b0 = b.bValue(1.0 * j / kChords);
      Point const b1 = b.bValue((j + 1.0) / kChords);
      if (apart(side(a0, a1, b0), side(a0, a1, b1)) && apart(side(b0, b1, a0), side(b0, b1, a1))) {
        found.push_back({(i + 0.5) / kChords, (j + 0.5) / kChords});
      }
    }
  }
  return found;
}

/// What must hold of any two segments; returns the number of crossings.
std::size_t checkCrossings(GxBezier const& a, GxBezier const& b) {
  std::vector<Pair> const pairs = crossings(a, b);
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    EXPECT_NEAR_POINT(a.bValue(pairs[i].t), b.bValue(pairs[i].u), kPairDistance);
    EXPECT_TRUE(i == 0 || pairs[i].t <= pairs[i - 1].t);
  }
  if (GxBezier(a).isIntersect(b)) {
    for (Pair const& p : clearCrossings(a, b)) {
      EXPECT_TRUE(holds(pairs, p.t, p.u, 2.0 / 64)) << "missed at " << p.t << ", " << p.u;
    }
  }
  return pairs.size();
}

TEST(GxBezierIntersect, PairsLieOnBothSegmentsAndNoClearCrossingIsMissed) {
  char const* const names[] = {"bold-w-ends",   "italic-ampersand-outer-thirds",
                               "roman-g-outer", "roman-at-thirds",
                               "roman-o-inner", "roman-capital-s-thirds"};
  std::size_t found = 0;
  for (char const* const first : names) {
    std::vector<GxBezier> const b = support::segments(names[0]);
    for (GxBezier const& sa : support::segments(first)) {
      for (GxBezier const& sb : b) found += checkCrossings(sa, sb);
    }
  }
  EXPECT_GT(found, 100u);
  Random random(5);
  for (int i = 0; i < 300; ++i) checkCrossings(random.segment(100.0), random.segment(100.0));
}

TEST(GxBezierIntersect, HardCasesHaveExactlyTheirCrossings) {
  for (HardCase const& hard : support::hardCases("segments")) {
    SCOPED_TRACE(hard.source);
    GxBezier const a = support::segmentOf(hard.fields[0]);
    expectPairs(crossings(a, support::segmentOf(hard.fields[1])), hard.fields[2], 1e-4);
    checkCrossings(a, support::segmentOf(hard.fields[1]));
  }
}

TEST(GxBezierIntersect, EndsAndBoxesIncludeTheirBoundaries) {
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

TEST(GxBezierIntersect, ListsAreAppendedToAndSortedWithWhatTheyHeld) {
  GxBezier a = support::sShape();
  GxBezier const b = support::evenLine(0, 50, 100, 50);
  GxList<double> t, u;
  for (double x : {0.25, 2.0, -1.0}) {
    t.add(x);
    u.add(10.0 * x);
  }
  EXPECT_EQ(a.findIntersections(b, t, u), 1);
  std::vector<Pair> const pairs = pairsOf(t, u);
  ASSERT_GE(pairs.size(), 4u);
  EXPECT_EQ(pairs.front().u, 20.0);
  EXPECT_EQ(pairs.back().u, -10.0);
  EXPECT_TRUE(holds(pairs, 0.25, 2.5, 0.0));
  EXPECT_TRUE(holds(pairs, 0.5, 0.5, 1e-4));

  GxList<Point> points;
  EXPECT_EQ(a.findIntersections(support::evenLine(0, 500, 100, 500), points), 0);
  EXPECT_EQ(a.findIntersections(b, points), 1);
  EXPECT_NEAR_POINT(points[1], Point(50, 50), kPairDistance);

  // Entries that are not numbers have no place in the order, but an answer.
  GxList<double> odd, other;
  for (int i = 0; i < 40; ++i) odd.add(other.add(i % 3 ? i : std::nan("")));
  EXPECT_EQ(a.findIntersections(b, odd, other), 1);
}

TEST(GxBezierIntersect, TheRecursionServesPiecesAndAnyDepth) {
  OpenBezier a(support::evenLine(0, 0, 8, 8));
  GxBezier const b = support::evenLine(0, 8, 8, 0);
  int const most = std::numeric_limits<int>::max();
  int const depths[][2] = {{0, 0}, {-5, 3}, {3, 0}, {4, 6}, {most, 0}};
  for (auto const& depth : depths) {
    GxList<double> t, u;
    a.recursivelyIntersect(a, 2.0, 4.0, depth[0], b, 0.0, 0.5, depth[1], t, u);
    // At extreme depths the pieces are points, which do not cross.
    if (depth[0] < most) expectPairs(pairsOf(t, u), {3.0, 0.25}, 1e-9);
  }
}

TEST(GxBezierIntersect, AnySizeHasAnAnswerInTime) {
  double const inf = std::numeric_limits<double>::infinity();
  GxBezier s = support::sShape();
  unsigned count = 0;
  s.scale(1e4, 1e4);
  GxBezier const million = s;
  EXPECT_LT(secondsOf(million, million, count), 15.0);  // 0.2 s when optimised
  EXPECT_GT(count, 1000u);
  for (double const size : {1e30, 1e160, 1e-160}) {
    GxBezier a = support::sShape();
    GxBezier b = support::bezier(0, 50, 30, 60, 60, 40, 100, 50);
    a.scale(size, size);
    b.scale(size, size);
    for (Pair const& p : crossings(a, b)) {
      EXPECT_NEAR_POINT(a.bValue(p.t), b.bValue(p.u), 1e-7 * size);
    }
  }
  for (double const odd : {std::nan(""), inf, -inf}) {
    for (int i = 0; i < 4; ++i) {
      GxBezier a = support::sShape();
      a(i) = Point(1.0, odd);
      crossings(a, support::sShape());
      crossings(support::sShape(), a);
      crossings(a, a);
    }
  }
}

TEST(GxBezierIntersectFirst, EndOnEndDoesNotCount) {
  struct Case {
    GxBezier other;
    int found;
    double t, u;
  };
  Case const cases[] = {
      {support::bezier(100, 100, 120, 120, 130, 90, 140, 60), 0, -7.0, -8.0},  // end on start
      {support::evenLine(0, 0, 100, 100), 1, 0.5, 0.5},                        // both ends shared
      {support::evenLine(50, 50, 90, 30), 1, 0.5, 0.0},                        // end on inside
      {support::pointLike(50, 50), 0, -7.0, -8.0},
  };
  for (Case const& k : cases) {
    GxBezier s = support::sShape();
    GxBezier other = k.other;
    std::pair<double, double> result(-7.0, -8.0);
    ASSERT_EQ(s.findFirstIntersection(other, result, 0.1), k.found);
    EXPECT_NEAR(result.first, k.t, 0.01);
    EXPECT_NEAR(result.second, k.u, 0.01);
  }
}

TEST(GxBezierIntersectFirst, AgreesWithAllCrossings) {
  GxBezier const valley = support::bezier(60, 40, 60, -40, 30, -40, 30, 40);
  GxBezier hill = support::bezier(0, 0, 30, 20, 60, 20, 90, 0);
  for (int direction = 0; direction < 2; ++direction, hill.reverse()) {
    GxBezier other = valley;
    std::pair<double, double> result;
    ASSERT_EQ(hill.findFirstIntersection(other, result, 0.1), 1);
    Pair const first = crossings(hill, valley).back();
    EXPECT_NEAR(result.first, first.t, 0.01);
    EXPECT_NEAR(result.second, first.u, 0.01);
  }
  Random random(11);
  for (int i = 0; i < 300; ++i) {
    GxBezier a = random.segment(300.0);
    GxBezier b = random.segment(300.0);
    std::pair<double, double> result;
    int const found = a.findFirstIntersection(b, result, 0.1);
    double const apart = a.bValue(result.first).distance(b.bValue(result.second));
    EXPECT_TRUE(!found || apart < 2 * 0.708 + 1.0);
    EXPECT_TRUE(found || clearCrossings(a, b).empty());
  }
}

TEST(GxBezierIntersectLine, CrossingsLieOnBothAndEndsCount) {
  for (HardCase const& hard : support::hardCases("lines")) {
    SCOPED_TRACE(hard.source);
    std::vector<double> const& n = hard.fields[1];
    GxList<double> t, s;
    int const count = support::segmentOf(hard.fields[0])
                          .findYCStrongIntersection(Point(n[0], n[1]), Point(n[2], n[3]), t, s);
    EXPECT_EQ(count, static_cast<int>(hard.fields[2].size() / 2));
    expectPairs(pairsOf(t, s), hard.fields[2], 1e-8);
  }
  Random random(3);
  GxBezier const bow = support::bezier(0, 0, 0, 12, 12, 12, 12, 0);
  for (int i = 0; i < 600; ++i) {
    GxBezier const a = i % 2 ? random.segment(10.0) : random.gridSegment(3);
    Point const p = random.point(10.0);
    Point const q = random.point(10.0);
    GxList<double> t, s;
    a.findYCStrongIntersection(p, q, t, s);
    for (Pair const& k : pairsOf(t, s)) {
      EXPECT_NEAR_POINT(a.bValue(k.t), p + (q - p) * k.u, 1e-6);
    }
    EXPECT_TRUE(
        t.length() > 0 ||
        clearCrossings(a, support::evenLine(p.xval(), p.yval(), q.xval(), q.yval())).empty());
  }
  // The line's end on the curve (s = 1) counts; one just short of it does not, and a root just
  // outside the segment is its end. The count is that of the whole list.
  GxList<double> t, s;
  EXPECT_EQ(bow.findYCStrongIntersection(Point(6, 0), Point(6, 9), t, s), 1);
  EXPECT_EQ(bow.findYCStrongIntersection(Point(6, 0), Point(6, 8.999), t, s), 1);
  EXPECT_EQ(bow.findYCStrongIntersection(Point(-1, -1e-10), Point(1, -1e-10), t, s), 2);
  EXPECT_EQ(bow.findYCStrongIntersection(Point(3, 3), Point(3, 3), t, s), 0);
  expectPairs(pairsOf(t, s), {0.5, 1.0, 0.0, 0.5}, 0.0);
}

TEST(GxBezierIntersectLine, StraightSegmentsCrossOrOverlap) {
  struct Case {
    GxBezier segment;
    Point a, b;
    int result;
    std::vector<double> expected;
  };
  GxBezier const level = support::retractedLine(2, 0, 6, 0);
  double const quarter = 0.32635182233306964818;  // 3t^2 - 2t^3 = 1/4
  Case const cases[] = {
      {level, Point(3, -1), Point(3, 3), 1, {quarter, 0.25}},
      {level, Point(2, 0), Point(2, 5), 1, {0.0, 0.0}},
      {level, Point(2 - 1e-10, -1), Point(2 - 1e-10, 1), 1, {0.0, 0.5}},
      {level, Point(0, 1), Point(9, 1), 0, {}},
      {level, Point(0, 0), Point(8, 0), 1, {0.0, 0.25, 1.0, 0.75}},  // inside the line
      // Deliberate rule: the sign of a cross product that is nearly zero swaps the parameters.
      {level, Point(0, 0), Point(8, -1e-11), 1, {1.0, 0.25, 0.0, 0.75}},
      {level, Point(3, 0), Point(8, 0), 1, {quarter, 0.0, 1.0, 0.6}},
      {level, Point(7, 0), Point(9, 0), 0, {}},
      {support::pointLike(3, 0), Point(0, 0), Point(8, 0), 0, {}},
  };
  for (Case const& k : cases) {
    GxList<double> t, s;
    EXPECT_EQ(k.segment.findYCStrongIntersection(k.a, k.b, t, s), k.result);
    expectPairs(pairsOf(t, s), k.expected, 1e-9);
    EXPECT_EQ(k.segment.linearProcessing(k.a, k.b, t, s), k.result);
    EXPECT_EQ(t.length(), k.expected.size());
  }
  GxList<double> t, s;
  EXPECT_EQ(support::sShape().linearProcessing(Point(0, 50), Point(100, 50), t, s), 0);
}

TEST(GxBezierIntersectLine, RootsAgainstTheAxis) {
  struct Case {
    double y[4];
    double tol;
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
    std::vector<double> r(3, -7.0);
    intersectBezierWithXAxis(Point(0, k.y[0]), Point(1, k.y[1]), Point(2, k.y[2]), Point(3, k.y[3]),
                             count, r[0], r[1], r[2], k.tol);
    ASSERT_EQ(count, static_cast<int>(k.expected.size()));
    for (std::size_t i = 0; i < k.expected.size(); ++i) EXPECT_NEAR(r[i], k.expected[i], 1e-12);
    EXPECT_TRUE(count == 3 || r[2] == -7.0);
  }
}

TEST(GxBezierSelfIntersect, EveryLoopMeetsItselfAndNoneIsMissed) {
  for (HardCase const& hard : support::hardCases("loops")) {
    SCOPED_TRACE(hard.source);
    double t[2] = {};
    std::vector<double> const& expected = hard.fields[2];
    ASSERT_EQ(support::segmentOf(hard.fields[0]).isSelfIntersect(t[0], t[1]), !expected.empty());
    if (expected.empty()) continue;
    EXPECT_NEAR(std::fmin(t[0], t[1]), expected[0], 1e-8);
    EXPECT_NEAR(std::fmax(t[0], t[1]), expected[1], 1e-8);
  }
  Random random(17);
  int loops = 0;
  for (int i = 0; i < 500; ++i) {
    GxBezier s = random.segment(100.0);
    GxBezier first, second;
    s.split(first, second, 0.5);
    double t1 = 0.0, t2 = 0.0;
    int const found = s.isSelfIntersect(t1, t2);
    EXPECT_TRUE(!found || support::near(s.bValue(t1), s.bValue(t2), 1e-9));
    loops += found;
    // A loop through the middle is a clear crossing of the halves.
    EXPECT_TRUE(found || clearCrossings(first, second).empty());
  }
  EXPECT_GT(loops, 20);
}

TEST(GxBezierSelfIntersect, HandlesAndEndsDecideAndTheLoopIsCutOnce) {
  double t1 = -7.0, t2 = -7.0;
  GxBezier small = support::loop();
  small.scale(5e-4, 5e-4);
  EXPECT_EQ(small.isSelfIntersect(t1, t2), 0);  // handles of 0.09
  EXPECT_EQ(t1, -7.0);
  EXPECT_EQ(bezier(0, 0, 50, 50, -50, 50, 0.1, 0).isSelfIntersect(t1, t2), 1);  // closed
  EXPECT_EQ(t1, 0.0);
  EXPECT_EQ(t2, 1.0);
  GxList<GxBezier> pieces;
  support::sShape().cleanSelfIntersection(pieces);
  ASSERT_EQ(pieces.length(), 1u);
  EXPECT_BITS(pieces[0], support::sShape());
  support::loop().cleanSelfIntersection(pieces);
  ASSERT_EQ(pieces.length(), 3u);
  EXPECT_NEAR_POINT(pieces[1][3], support::loop().bValue(0.5), 1e-9);
  EXPECT_BITS(pieces[1][3], pieces[2][0]);
  EXPECT_EQ(pieces[1].isSelfIntersect(t1, t2), 0);
}

}  // namespace
