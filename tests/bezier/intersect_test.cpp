// Crossings of segments with segments and with lines, the first crossing, loops.
#include "tests/support/expect.h"
#include "tests/support/open.h"

namespace {

using namespace support;

// A piece deviates from its chord by 2^-14: the points of a pair lie within twice that.
constexpr double kPairDistance = 0x1p-13;

using Pairs = Numbers;  // parameters of crossings: t, u, t, u, ...

Pairs pairsOf(GxList<double> const& t, GxList<double> const& u) {
  EXPECT_EQ(t.length(), u.length());
  Pairs pairs;
  for (unsigned i = 0; i < t.length(); ++i) pairs.insert(pairs.end(), {t[i], u[i]});
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
  for (std::size_t i = 0; i < pairs.size(); i += 2) {
    double least = kInf;
    for (std::size_t k = 0; k < others.size(); k += 2) {
      least = min(least, std::hypot(pairs[i] - others[k], pairs[i + 1] - others[k + 1]));
    }
    EXPECT_LE(least, tol) << pairs[i] << ' ' << pairs[i + 1];
  }
}

void expectPairs(Pairs const& pairs, Pairs const& expected, double tol) {
  expectAmong(pairs, expected, tol);
  expectAmong(expected, pairs, tol);
}

bool areClear(Vector const& v, Vector const& w) {
  return min(v.length(), w.length()) > 100.0 && std::fabs(v.normalize().cross(w.normalize())) > 0.2;
}

TEST(GxBezierIntersect, PairsLieOnBothSegmentsAndAKnownCrossingIsAmongThem) {
  Random random(5);
  GxBezierCurve const letter = outline("roman-capital-s-thirds");
  int clear = 0;
  for (int i = 0; i < 1000; ++i) {
    GxBezier a = i % 2 ? random.segment(300.0) : letter[i % static_cast<int>(letter.length())];
    GxBezier b = random.segment(300.0);
    double const t = random.uniform(0.02, 0.98), u = random.uniform(0.0, 1.0);
    Vector const shift = a.bValue(t) - b.bValue(u);
    for (int k = 0; k < 4; ++k) b(k) += shift;
    Pairs const pairs = crossings(a, b);
    for (std::size_t k = 0; k < pairs.size(); k += 2) {
      EXPECT_NEAR_POINT(a.bValue(pairs[k]), b.bValue(pairs[k + 1]), kPairDistance);
      EXPECT_TRUE(k == 0 || pairs[k] <= pairs[k - 2]) << "descending";
    }
    GxList<Point> points;
    EXPECT_EQ(a.findIntersections(b, points), !pairs.empty());
    EXPECT_EQ(2 * points.length(), pairs.size());
    if (!areClear(a.dValue(t), b.dValue(u))) continue;
    ++clear;
    expectAmong({t, u}, pairs, 1e-5);
    std::pair<double, double> first;
    EXPECT_EQ(a.findFirstIntersection(b, first, 0.1), 1);
    EXPECT_LT(a.bValue(first.first).distance(b.bValue(first.second)), 2.5);
  }
  EXPECT_GT(clear, 500);
}

TEST(GxBezierIntersect, HardCasesHaveExactlyTheirCrossings) {
  for (HardCase const& hard : hardCases("segments")) {
    SCOPED_TRACE(hard.source);
    GxBezier const a = segmentOf(hard.fields[0]);
    expectPairs(crossings(a, segmentOf(hard.fields[1])), hard.fields[2], 1e-4);
  }
  GxBezier level = retractedLine(0, 0, 8, 0);
  expectPairs(crossings(level, retractedLine(8, 0, 8, 5)), {1.0, 0.0}, 0.0);
  for (GxBezier const& other : {retractedLine(0, 1, 8, 1), retractedLine(2, 0, 6, 0),
                                retractedLine(8, 0.5, 12, -0.5), pointLike(4, 0)}) {
    EXPECT_TRUE(crossings(level, other).empty());  // parallel, collinear, past the end, a point
  }
  EXPECT_EQ(level.isIntersect(retractedLine(8, 0, 9, 9)), 1);
  EXPECT_EQ(level.isIntersect(retractedLine(std::nextafter(8.0, 9.0), 0, 9, 9)), 0);
}

TEST(GxBezierIntersect, ListsAreAppendedToAndSortedWithWhatTheyHeld) {
  GxList<double> t, u;
  for (double x : {0.25, 2.0, -1.0}) t.add(x), u.add(10.0 * x);
  EXPECT_EQ(evenLine(0, 0, 8, 8).findIntersections(evenLine(0, 8, 8, 0), t, u), 1);
  EXPECT_EQ(pairsOf(t, u), (Pairs{2, 20, 0.5, 0.5, 0.25, 2.5, -1, -10}));
  // What is not a number goes to the end; a list without its partner stays as it is.
  t.insert(support::kNaN, 0), u.insert(-10, 0);
  EXPECT_EQ(evenLine(0, 0, 8, 8).findIntersections(evenLine(0, 8, 8, 0), t, u), 1);
  EXPECT_TRUE(std::isnan(t[5]) && u[5] == -10 && t[4] == -1 && u[4] == -10);
  GxList<double> alone, none;
  alone.add(0.5);
  EXPECT_EQ(evenLine(0, 0, 8, 8).findIntersections(evenLine(9, 0, 9, 8), alone, none), 1);
  EXPECT_TRUE(alone.length() == 1 && none.length() == 0);
}

TEST(GxBezierIntersectFirst, EndOnEndDoesNotCountAndTheFirstIsFound) {
  Point const none(-7, -7);
  auto const first = [](GxBezier a, GxBezier b) {
    std::pair<double, double> result(-7.0, -7.0);
    int const found = a.findFirstIntersection(b, result, 0.1);
    EXPECT_EQ(found, result.first != -7.0);
    return Point(result.first, result.second);
  };
  GxBezier const s = sShape();
  EXPECT_BITS(first(s, bezier(100, 100, 120, 120, 130, 90, 140, 60)), none);  // end on start
  EXPECT_BITS(first(s, pointLike(50, 50)), none);
  EXPECT_NEAR_POINT(first(s, evenLine(0, 0, 100, 100)), Point(0.5, 0.5), 0.01);  // ends shared
  EXPECT_NEAR_POINT(first(s, evenLine(50, 50, 90, 30)), Point(0.5, 0), 0.01);    // end on inside
  GxBezier const valley = bezier(60, 40, 60, -40, 30, -40, 30, 40);
  GxBezier const hill = bezier(0, 0, 30, 20, 60, 20, 90, 0);
  Pairs const all = crossings(hill, valley);
  EXPECT_NEAR_POINT(first(hill, valley), Point(all[all.size() - 2], all.back()), 0.01);
  // Deliberate: parallel chords are taken to meet in the origin.
  EXPECT_NEAR_POINT(first(evenLine(-10, 0, 30, 0), evenLine(-20, 0, 20, 0)), Point(0.25, 0.5), .01);
  EXPECT_BITS(first(evenLine(-10, 1, 30, 1), evenLine(-20, 1, 20, 1)), none);
}

void expectLineCrossings(GxBezier const& s, Numbers const& line, Pairs const& expected,
                         bool straight) {
  Point const a(line[0], line[1]), b(line[2], line[3]);
  GxList<double> t, u, t2, u2;
  int const pairs = static_cast<int>(expected.size() / 2);
  EXPECT_EQ(s.findYCStrongIntersection(a, b, t, u), straight ? pairs > 0 : pairs);
  expectPairs(pairsOf(t, u), expected, 1e-8);
  EXPECT_EQ(s.linearProcessing(a, b, t2, u2), straight && pairs > 0);
  EXPECT_EQ(s.findYCStrongIntersection(a, b, t, u), straight ? pairs > 0 : 2 * pairs) << "in all";
}

TEST(GxBezierIntersectLine, CrossingsLieOnBothAndEndsCount) {
  for (HardCase const& hard : hardCases("lines")) {
    expectLineCrossings(segmentOf(hard.fields[0]), hard.fields[1], hard.fields[2], false);
  }
  // The line's ends | pairs. The last line stops short.
  for (Row const k : table("6 0 6 9  0.5 1;  -1 -1e-10 1 -1e-10  0 0.5;  6 0 6 8.999")) {
    GxBezier const bow = bezier(0, 0, 0, 12, 12, 12, 12, 0);
    expectLineCrossings(bow, k, {k.begin() + 4, k.end()}, false);
  }
  // 3t^2 - 2t^3 is a quarter at 0.326. Deliberate, before that: the sign of a cross product that is
  // nearly zero swaps the parameters.
  for (Row const k : table(R"(3 -1 3 3  0.32635182233306965 0.25; 2 0 2 5  0 0; 0 1 9 1;
            1.9999999999 -1 1.9999999999 1  0 0.5; 7 0 9 0; 0 0 8 0  0 0.25 1 0.75;
            0 0 8 -1e-11  1 0.25 0 0.75; 3 0 8 0  0.32635182233306965 0 1 0.6)")) {
    expectLineCrossings(retractedLine(2, 0, 6, 0), k, {k.begin() + 4, k.end()}, true);
  }
  expectLineCrossings(pointLike(3, 0), {0, 0, 8, 0}, {}, true);
  GxList<double> t = listOf<double>({0.5}), u = t;
  EXPECT_EQ(loop().findYCStrongIntersection(Point(3, 3), Point(3, 3), t, u), 0) << "no line";
}

TEST(GxBezierIntersectLine, RootsAgainstTheAxis) {
  // Heights, tolerance | roots: one at -0.001 counts as 0, one at 1.001 as 1.
  for (Row const k : table("0 0 0 0 1e-9  0 1;  0.001 0.334 0.667 1 1e-9;"
                           "0.001 0.334 0.667 1 0.01  0; -1 -0.667 -0.334 -0.001 0.01  1;"
                           "2 -7 7 -2 1e-9  0.09621357345637588 0.5 0.9037864265436242")) {
    int count = -1;
    double r[3];
    intersectBezierWithXAxis(Point(0, k[0]), Point(1, k[1]), Point(2, k[2]), Point(3, k[3]), count,
                             r[0], r[1], r[2], k[4]);
    ASSERT_EQ(static_cast<std::size_t>(count) + 5, k.size());
    for (std::size_t i = 5; i < k.size(); ++i) EXPECT_NEAR(r[i - 5], k[i], 1e-12);
  }
}

TEST(GxBezierSelfIntersect, EveryLoopMeetsItselfNoneIsMissedAndItIsCutOnce) {
  double t[2] = {};
  for (HardCase const& hard : hardCases("loops")) {
    SCOPED_TRACE(hard.source);
    Numbers const& expected = hard.fields[2];
    ASSERT_EQ(segmentOf(hard.fields[0]).isSelfIntersect(t[0], t[1]), !expected.empty());
    if (expected.empty()) continue;
    EXPECT_NEAR(min(t[0], t[1]), expected[0], 1e-8);
    EXPECT_NEAR(max(t[0], t[1]), expected[1], 1e-8);
  }
  GxBezier small = loop();
  small.scale(5e-4, 5e-4);
  EXPECT_EQ(small.isSelfIntersect(t[0], t[1]), 0);  // handles of 0.09
  EXPECT_EQ(bezier(0, 0, 50, 50, -50, 50, 0.1, 0).isSelfIntersect(t[0], t[1]), 1);  // closed
  EXPECT_TRUE(t[0] == 0.0 && t[1] == 1.0);
  GxList<GxBezier> pieces;
  sShape().cleanSelfIntersection(pieces);
  loop().cleanSelfIntersection(pieces);
  ASSERT_EQ(pieces.length(), 3u);
  EXPECT_BITS(pieces[0], sShape());
  EXPECT_NEAR_POINT(pieces[1][3], loop().bValue(0.5), 1e-9);
  EXPECT_BITS(pieces[1][3], pieces[2][0]);
}

TEST(GxBezierIntersectLine, RandomCrossingsLieOnBothAndRandomLoopsMeetThemselves) {
  Random random(51);
  int loops = 0;
  for (int i = 0; i < 3000; ++i) {
    GxBezier segment = i % 4 ? random.segment(100) : random.gridSegment(5);
    double const known = random.uniform(0.0, 1.0);
    Vector const v = random.point(120) - random.point(120);
    Point const a = segment.bValue(known) + v * -0.25;
    GxList<double> t, s;
    segment.findYCStrongIntersection(a, a + v, t, s);
    Pairs const pairs = pairsOf(t, s);
    for (std::size_t k = 0; k < pairs.size(); k += 2) {
      ASSERT_NEAR_POINT(segment.bValue(pairs[k]), a + v * pairs[k + 1], 1e-8);
    }
    if (areClear(segment.dValue(known), v)) expectAmong({known, 0.25}, pairs, 1e-9);
    double t1, t2;
    if (!segment.isSelfIntersect(t1, t2)) continue;
    ASSERT_NEAR_POINT(segment.bValue(t1), segment.bValue(t2), 1e-6);
    ASSERT_TRUE(0.0 <= min(t1, t2) && max(t1, t2) <= 1.0);
    loops += t1 != t2;
  }
  EXPECT_GT(loops, 50);
}

}  // namespace
